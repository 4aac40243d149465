#include "platform/runtime/FileNames.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::fileNameFrom;
using runtime::freeFileName;

TEST(FileNames, HoldNoSignOfAFolderOrPattern)
{
    EXPECT_EQ(fileNameFrom(u"../a\\b:c*d?e\"f<g>h|i"_s), u".._a_b_c_d_e_f_g_h_i"_s);
}

TEST(FileNames, HoldNoControlCharacterAndNoMarkOfDirection)
{
    EXPECT_EQ(fileNameFrom(u"a\nb\tc\x7f"_s + QChar(0x202E) + u"d"_s), u"a_b_c__d"_s);
}

TEST(FileNames, ThatAreHarmlessStayAsTheyAre)
{
    EXPECT_EQ(fileNameFrom(u"1班05号O'Neil -- 王五.png"_s), u"1班05号O'Neil -- 王五.png"_s);
}

TEST(FileNames, ThatAreTakenGetASignAheadOfTheirEnding)
{
    EXPECT_EQ(freeFileName(u"a.png"_s, {}), u"a.png"_s);
    EXPECT_EQ(freeFileName(u"a.png"_s, {u"a.png"_s}), u"a_.png"_s);
    EXPECT_EQ(freeFileName(u"a.png"_s, {u"A.PNG"_s, u"a_.png"_s}), u"a__.png"_s);
}

} // namespace
