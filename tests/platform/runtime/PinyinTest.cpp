#include "platform/runtime/Pinyin.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace runtime {
namespace {

using namespace Qt::StringLiterals;

struct Name
{
    const char16_t* name;
    const char16_t* letters;
    const char16_t* initials;
};

TEST(Pinyin, SpellsNamesWithTheirSurnamesRight)
{
    const Name names[] = {{u"王芳", u"wangfang", u"wf"},        {u"曾国藩", u"zengguofan", u"zgf"},
                          {u"单雄信", u"shanxiongxin", u"sxx"}, {u"单", u"shan", u"s"},
                          {u"仇英", u"qiuying", u"qy"},         {u"解珍", u"xiezhen", u"xz"},
                          {u"区长", u"ouchang", u"oc"},         {u"万俟卨", u"moqixie", u"mqx"},
                          {u"尉迟恭", u"yuchigong", u"ycg"},    {u"欧阳修", u"ouyangxiu", u"oyx"}};
    Pinyin pinyin;
    for (const Name& expected : names) {
        const Spelling spelling = pinyin.spell(QString::fromUtf16(expected.name));
        EXPECT_EQ(spelling.letters, QString::fromUtf16(expected.letters));
        EXPECT_EQ(spelling.initials, QString::fromUtf16(expected.initials));
    }
}

TEST(Pinyin, ASurnameInsideANameIsAnOrdinaryCharacter)
{
    EXPECT_EQ(Pinyin().spell(u"刘单"_s).letters, u"liudan"_s);
}

TEST(Pinyin, TheUmlautCountsAsU)
{
    EXPECT_EQ(Pinyin().spell(u"吕布"_s).letters, u"lubu"_s);
    EXPECT_EQ(Pinyin::folded(u"Lvbu"_s), u"lubu"_s);
    EXPECT_EQ(Pinyin::folded(u"lü bu"_s), u"lubu"_s);
    EXPECT_EQ(Pinyin::folded(u"xi'an"_s), u"xian"_s);
}

TEST(Pinyin, OtherNamesKeepTheirLetters)
{
    const Name names[] = {{u"Ann Lee", u"annlee", u"al"},
                          {u"𠮷田", u"𠮷tian", u"𠮷t"},
                          {u"王-1", u"wang-1", u"w"},
                          {u"  ", u"", u""},
                          {u"", u"", u""},
                          {u"O'Neil--", u"oneil--", u"o"}};
    Pinyin pinyin;
    for (const Name& expected : names) {
        const Spelling spelling = pinyin.spell(QString::fromUtf16(expected.name));
        EXPECT_EQ(spelling.letters, QString::fromUtf16(expected.letters));
        EXPECT_EQ(spelling.initials, QString::fromUtf16(expected.initials));
    }
}

TEST(Pinyin, AnEndlessNameIsSpelledToo)
{
    EXPECT_EQ(Pinyin().spell(QString(10000, u'王')).initials.size(), 10000);
}

} // namespace
} // namespace runtime
