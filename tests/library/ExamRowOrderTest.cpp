#include "library/Catalogue.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

TEST(AnExamWithTwoRowsOfAStream, AnswersByTheFirstRowWhereNoOrderIsAsked)
{
    TestLibrary test({u"语文"_s, u"总分"_s});
    test.addExam(u"期中"_s, u"理"_s, 2, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文+语文"_s}});
    test.reload();
    EXPECT_EQ(test.scores.catalogue.getKMMF(u"期中"_s, u"理"_s, u"语文"_s), 150);
    EXPECT_EQ(test.scores.catalogue.GetZFMF(u"期中"_s, u"理"_s, u"总分"_s), 150);
    EXPECT_EQ(test.scores.catalogue.GetZFKMGS(u"期中"_s, u"理"_s), QStringList{u"语文"_s});
    EXPECT_EQ(test.scores.catalogue.GetKSKM(u"期中"_s, u"理"_s).marks, std::vector<double>{100});
}

} // namespace
