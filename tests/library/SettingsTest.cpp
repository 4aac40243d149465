#include "library/Settings.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class SettingsStore : public testing::Test
{
protected:
    library::Settings& settings() { return test.scores.settings; }

    void setCategories(const QString& value)
    {
        test.execute(
            u"update 设置表 set 设置='%1' where 名称='参与统计的学生类别代码'"_s.arg(value));
        settings().GetTJLB();
    }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(SettingsStore, ASettingIsFoundByItsNameAndAnUnknownOneIsEmpty)
{
    EXPECT_EQ(settings().GetSZ(u"T分"_s), u"10z+50"_s);
    EXPECT_EQ(settings().GetSZJR(u"各科优秀率"_s), u"是"_s);
    EXPECT_EQ(settings().GetSZ(u"没有"_s), u""_s);
    EXPECT_EQ(settings().GetSZJR(u"没有"_s), u""_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(SettingsStore, AnApostropheInANameIsTheEnginesError)
{
    EXPECT_EQ(settings().GetSZ(u"a'b"_s), u""_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Function GetSZ/Mdl_MDB"_s));
}

TEST_F(SettingsStore, TheItemWithATrailingBlankIsReadWithAndWithoutIt)
{
    EXPECT_EQ(settings().GetSZ(u"历次考试进入年级前x名人数"_s), u"50,100,200"_s);
    EXPECT_EQ(settings().GetSZ(u"历次考试进入年级前x名人数 "_s), u"50,100,200"_s);
}

TEST_F(SettingsStore, ConditionsOfASubjectBelongToTheirStream)
{
    test.execute(u"insert into 详细设置表 values('高分段','文','语文','>=','90','<','100')"_s);
    EXPECT_EQ(settings().GetXXSZ(u"高分段"_s, u"文"_s, u"语文"_s), u"语文>=90 and 语文<100"_s);
    EXPECT_EQ(settings().GetXXSZ(u"高分段"_s, u"理"_s, u"语文"_s), u""_s);
}

TEST_F(SettingsStore, CategoriesBecomeAFilter)
{
    const std::pair<QString, QString> cases[] = {
        {u"(全部)"_s, u""_s},
        {u""_s, u""_s},
        {u"2"_s, u" and (类别代码=2)"_s},
        {u"1,3"_s, u" and (类别代码=1 or 类别代码=3)"_s},
    };
    for (const auto& [value, filter] : cases) {
        setCategories(value);
        EXPECT_EQ(settings().CategoryFilter, filter) << value.toStdString();
    }
}

TEST_F(SettingsStore, TheCategoriesAreReadBackFromTheirFilter)
{
    for (const QString& codes : {u"2"_s, u"1,12.5"_s, u"1,x y,3"_s}) {
        setCategories(codes);
        EXPECT_EQ(library::categoriesIn(settings().CategoryFilter).join(u','), codes);
    }
    setCategories(u"(全部)"_s);
    EXPECT_EQ(library::categoriesIn(settings().CategoryFilter), QStringList());
}

TEST_F(SettingsStore, ASearchTextIsJoinedAndQuotedAsAsked)
{
    using library::Joiner;
    using library::Quote;
    EXPECT_EQ(settings().GetSouSuoChuan(u"甲,乙"_s, u","_s, u"姓名"_s, Joiner::Or, Quote::Single),
              u"姓名='甲' or 姓名='乙'"_s);
    EXPECT_EQ(settings().GetSouSuoChuan(u"1;2"_s, u";"_s, u"班级"_s, Joiner::And, Quote::None),
              u"班级=1 And 班级=2"_s);
    EXPECT_EQ(settings().GetSouSuoChuan(u""_s, u","_s, u"班级"_s, Joiner::Or, Quote::None), u""_s);
}

TEST_F(SettingsStore, AStoredSelectionKeepsItsOrderAndDropsColumnsThatAreGone)
{
    test.execute(u"insert into 自定义显示表 values('T分全','语文T分,体育,班级')"_s);
    EXPECT_EQ(settings().GetZDYXS(u"T分全"_s), (QStringList{u"语文T分"_s, u"班级"_s}));
    EXPECT_EQ(settings().GetZDYXS(u"T分理"_s), QStringList());
}

TEST_F(SettingsStore, ASelectionIsReadFromAnOlderTableWithoutAKeyToo)
{
    test.execute(u"drop table 自定义显示表"_s);
    test.execute(
        u"create table 自定义显示表(项目名称 text(50) collate nocase, 显示项目 Memo TEXT)"_s);
    test.execute(u"insert into 自定义显示表 values('T分全','语文T分')"_s);
    test.execute(u"insert into 自定义显示表 values('T分全','班级')"_s);
    test.scores.OpenDB();
    EXPECT_EQ(settings().GetZDYXS(u"T分全"_s), QStringList{u"语文T分"_s});
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

} // namespace
