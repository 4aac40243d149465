#include "library/ColumnNames.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

TEST(ColumnNames, SayWhatAColumnTellsOfItsSubject)
{
    EXPECT_EQ(library::gradeRankColumn(u"语文"_s), u"语文年名"_s);
    EXPECT_EQ(library::classRankColumn(u"语文"_s), u"语文班名"_s);
    EXPECT_EQ(library::zScoreColumn(u"语文"_s), u"语文Z分"_s);
    EXPECT_EQ(library::tScoreColumn(u"语文"_s), u"语文T分"_s);
    EXPECT_EQ(library::tRankColumn(u"总分"_s), u"总分T分年名"_s);
}

TEST(ColumnNames, TellTotalsAndGradeRanksByTheirLastTwoCharacters)
{
    EXPECT_TRUE(library::isTotal(u"总分"_s));
    EXPECT_TRUE(library::isTotal(u"文科总分"_s));
    EXPECT_FALSE(library::isTotal(u"总分年名"_s));
    EXPECT_FALSE(library::isTotal(u"分"_s));
    EXPECT_TRUE(library::isGradeRankColumn(u"语文年名"_s));
    EXPECT_TRUE(library::isGradeRankColumn(u"总分T分年名"_s));
    EXPECT_FALSE(library::isGradeRankColumn(u"语文班名"_s));
}

} // namespace
