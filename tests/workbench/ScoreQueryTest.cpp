#include "workbench/ScoreQuery.h"

#include "WorkbenchFixture.h"

using namespace Qt::StringLiterals;
using workbench::rowsSql;
using workbench::SortDirection;

namespace {

using RowChoice = WorkbenchTest;

TEST_F(RowChoice, IsAStatementToTheBlank)
{
    EXPECT_EQ(
        rowsSql({{u"A"_s, u"B"_s},
                 {u"1"_s, u"2"_s},
                 {u"1"_s},
                 {{u"总分"_s, SortDirection::Descending}, {u"班级"_s}}}),
        u"select * from 成绩表 where  ( 考试名称='A' or  考试名称='B') and ( 班级=1 or  班级=2)"
        " and (类别代码=1) order by 总分 DESC,班级 ASC"_s);
}

TEST_F(RowChoice, WithoutAnExamOrAClassAsksForOne)
{
    EXPECT_EQ(rowsSql({{}, {u"1"_s}, {}, {}}), u"请选择 考试名称！"_s);
    EXPECT_EQ(rowsSql({{u"A"_s}, {}, {}, {}}), u"请选择 要导出成绩的 班级！\""_s);
}

TEST_F(RowChoice, WithoutACategoryHasNoConditionOnIt)
{
    EXPECT_EQ(workbench::categoryCondition({}), QString());
    EXPECT_EQ(workbench::categoryCondition({u"1"_s, u"2.5"_s}),
              u" and (类别代码=1 or 类别代码=2.5)"_s);
    EXPECT_EQ(rowsSql({{u"A"_s}, {u"3"_s}, {}, {}}),
              u"select * from 成绩表 where  ( 考试名称='A') and ( 班级=3)"_s);
}

TEST_F(RowChoice, IsAStatementThatTheLibraryRuns)
{
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}});
    library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 120}});
    library.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 110}});
    QString sql = rowsSql({{u"期中"_s},
                           {u"1"_s, u"2"_s, u"3"_s},
                           {u"1"_s, u"2"_s},
                           {{u"语文"_s, SortDirection::Descending}}});
    EXPECT_EQ(library.rows(sql.replace(u"select *"_s, u"select 姓名"_s)), u"钱二 / 赵一"_s);
}

} // namespace
