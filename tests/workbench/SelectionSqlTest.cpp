#include "WorkbenchFixture.h"

using namespace Qt::StringLiterals;

namespace {

class ScTJ : public WorkbenchTest
{
protected:
    void sortBy(size_t key, const QString& column, int direction)
    {
        selection.Combo1[key].text = column;
        selection.Combo2[key].ListIndex = direction;
    }

    const QString& filter() const { return library.scores.settings.CategoryFilter; }
};

TEST_F(ScTJ, WritesTheStatementToTheBlank)
{
    selection.ListKSMC.clear();
    selection.ListKSMC.add(u"A"_s, workbench::Selected::Yes);
    selection.ListKSMC.add(u"B"_s, workbench::Selected::Yes);
    select(selection.ListFW, {u"1"_s, u"2"_s});
    select(selection.ListLB, {u"1"_s});
    sortBy(0, u"总分"_s, 1);
    selection.scTJ();
    EXPECT_EQ(
        selection.Text1,
        u"select * from 成绩表 where  ( 考试名称='A' or  考试名称='B') and ( 班级=1 or  班级=2)"
        " and (类别代码=1) order by 总分 DESC"_s);
    EXPECT_EQ(selection.examCondition, u" ( 考试名称='A' or  考试名称='B')"_s);
    EXPECT_EQ(selection.classCondition, u" and ( 班级=1 or  班级=2)"_s);
    EXPECT_EQ(filter(), u" and (类别代码=1)"_s);
}

TEST_F(ScTJ, StandsInTheTextBoxOnceTheLibraryIsShown)
{
    EXPECT_EQ(selection.Text1,
              u"select * from 成绩表 where  ( 考试名称='期中')"
              " and ( 班级=1 or  班级=2 or  班级=3) and (类别代码=1 or 类别代码=2)"_s);
}

TEST_F(ScTJ, TakesTheSortKeysInTurnAndSkipsThoseNotChosen)
{
    sortBy(0, u"班级"_s, 0);
    sortBy(1, u"请选择项目"_s, 1);
    sortBy(2, QString(), 1);
    sortBy(3, u"总分"_s, 1);
    selection.scTJ();
    EXPECT_TRUE(selection.Text1.endsWith(u") order by 班级 ASC,总分 DESC"_s))
        << selection.Text1.toStdString();
}

TEST_F(ScTJ, WithoutAnExamAsksForOneAndLeavesTheFilter)
{
    library.scores.settings.CategoryFilter = u"former"_s;
    select(selection.ListKSMC, {});
    selection.scTJ();
    EXPECT_EQ(selection.Text1, u"请选择 考试名称！"_s);
    EXPECT_EQ(filter(), u"former"_s);
}

TEST_F(ScTJ, WithoutAClassAsksForOneWithAQuotationMarkAndStoresTheFilter)
{
    select(selection.ListFW, {});
    select(selection.ListLB, {u"2"_s});
    selection.scTJ();
    EXPECT_EQ(selection.Text1, u"请选择 要导出成绩的 班级！\""_s);
    EXPECT_EQ(filter(), u" and (类别代码=2)"_s);
}

TEST_F(ScTJ, WithoutACategoryHasNoConditionOnIt)
{
    select(selection.ListLB, {});
    selection.scTJ();
    EXPECT_EQ(filter(), QString());
    EXPECT_TRUE(selection.Text1.endsWith(u" and ( 班级=1 or  班级=2 or  班级=3)"_s));
}

TEST_F(ScTJ, IsAStatementThatTheLibraryRuns)
{
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}});
    library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 120}});
    library.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 110}});
    sortBy(0, u"语文"_s, 1);
    selection.scTJ();
    QString sql = selection.Text1;
    EXPECT_EQ(library.rows(sql.replace(u"select *"_s, u"select 姓名"_s)), u"钱二 / 赵一"_s);
}

} // namespace
