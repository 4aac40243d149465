#include "TidyFixture.h"

namespace tidy {
namespace {

TEST(FoldedTexts, IgnoreBlanksBracketsWidthAndCase)
{
    for (const QString& text :
         {u"语文(赋分)"_s, u" 语 文（赋分）"_s, u"【语文】赋分"_s, u"语\n文　〔赋分〕"_s})
        EXPECT_EQ(folded(text), u"语文赋分"_s);
    EXPECT_EQ(folded(u"ＮＵＬＬ"_s), u"null"_s);
}

TEST(AliasFile, HasSeveralNamesOfOneThingInALine)
{
    const Aliases aliases({u"# 说明"_s, u""_s, u"姓名=学生姓名、考生姓名  名字"_s});
    EXPECT_EQ(aliases.nameOf(u"考生 姓名"_s), u"姓名"_s);
    EXPECT_EQ(aliases.nameOf(u"姓名"_s), u"姓名"_s);
    EXPECT_EQ(aliases.nameOf(u"学号"_s), u""_s);
    EXPECT_EQ(aliases.namesOf(u"名字"_s),
              (QStringList{u"姓名"_s, u"学生姓名"_s, u"考生姓名"_s, u"名字"_s}));
    EXPECT_EQ(aliases.namesOf(u"学号"_s), QStringList{u"学号"_s});
    EXPECT_EQ(aliases.complaints(), QStringList());
}

TEST(AliasFile, TellsBrokenLinesByTheirNumbers)
{
    const Aliases aliases({u"姓名 名字"_s, u"英语=外语"_s, u"=外语"_s, u"日语=外语"_s});
    EXPECT_EQ(aliases.complaints().join(u'\n'),
              u"别名.txt 第 1 行没有用上：应该写成“名称=别名 别名”。\n"
              "别名.txt 第 3 行没有用上：应该写成“名称=别名 别名”。\n"
              "别名.txt 第 4 行的“外语”已经是“英语”的别名，没有用上。"_s);
    EXPECT_EQ(aliases.nameOf(u"外语"_s), u"英语"_s);
}

TEST(AliasFile, AsShippedHasNoBrokenLineAndTheUsualNames)
{
    EXPECT_EQ(shippedAliases().complaints(), QStringList());
    const std::pair<QString, QString> names[] = {
        {u"准考证号"_s, u"考号"_s},   {u"班别"_s, u"班级"_s},   {u"外语"_s, u"英语"_s},
        {u"道德与法治"_s, u"政治"_s}, {u"免考"_s, u"缺考"_s},   {u"—"_s, u"缺考"_s},
        {u"null"_s, u"缺考"_s},       {u"序号"_s, u"不取用"_s}, {u"出生日期"_s, u"出生时间"_s}};
    for (const auto& [alias, name] : names)
        EXPECT_EQ(shippedAliases().nameOf(alias), name);
}

} // namespace
} // namespace tidy
