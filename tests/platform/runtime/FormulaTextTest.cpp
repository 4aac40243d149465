#include "platform/runtime/FormulaText.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

using namespace Qt::StringLiterals;

TEST(FormulaText, BeginsWithASignThatStartsFormulas)
{
    for (const QString& text : {u"=1+1"_s, u"+86"_s, u"-张三"_s, u"@王五"_s, u" =A1"_s, u"\t-a"_s,
                                u"＝1"_s, u"－李四"_s, u"-"_s, u"-1.2.3"_s, u"-1-2"_s, u"-."_s})
        EXPECT_TRUE(runtime::looksLikeFormula(text)) << text.toStdString();
    for (const QString& text :
         {u""_s, u" "_s, u"-1"_s, u"-85.5"_s, u"张=三"_s, u"1+1"_s, u"a@b"_s, u"0805"_s})
        EXPECT_FALSE(runtime::looksLikeFormula(text)) << text.toStdString();
}
