#include "workbench/Browse.h"

#include "WorkbenchFixture.h"
#include "library/ColumnNames.h"
#include "platform/grid/GridText.h"
#include "workbench/Offers.h"
#include "workbench/ScoreQuery.h"

using namespace Qt::StringLiterals;
using grid::FlexGrid;
using grid::gridText;

namespace {

class BrowseTest : public WorkbenchTest
{
protected:
    BrowseTest()
    {
        library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100.5}, {u"语文年名"_s, 1}});
        library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, -1}, {u"语文年名"_s, -1}});
    }

    void show(const QStringList& items, const QString& sql)
    {
        workbench::ShowKSCJmain(library.scores, sql, items, grid, progress);
    }

    void storeDisplay(const QString& name, const QString& items)
    {
        library.execute(u"insert into 自定义显示表 (项目名称, 显示项目) values ('%1', '%2')"_s.arg(
            name, items));
    }

    QStringList itemsOf(const QString& family, const QString& stream = library::AllStreams)
    {
        const QStringList items = workbench::MKzdyxs(library.scores, family, stream);
        EXPECT_EQ(library.scores.settings.DisplayItems, items);
        return items;
    }

    /// All rows of the first exam, as the workbench begins.
    workbench::BrowseRequest request() const { return request({u"期中"_s}); }

    workbench::BrowseRequest request(const QStringList& exams) const
    {
        const workbench::RowChoice rows{exams, {u"1"_s, u"2"_s, u"3"_s}, {u"1"_s, u"2"_s}, {}};
        return {rows, raw, library::AllStreams, workbench::rowsSql(rows)};
    }

    void expectFailures(int count, const QString& ending)
    {
        ASSERT_EQ(library.dialogs.failures.size(), count)
            << library.dialogs.failures.join(u'\n').toStdString();
        for (const QString& failure : library.dialogs.failures)
            EXPECT_TRUE(failure.endsWith(ending)) << failure.toStdString();
    }

    FlexGrid grid;
    runtime::NoProgress progress;
    const QString tag = u" - Sub ShowKSCJmain/FormKaoShi"_s;
    const QString raw = u"原始分和名次"_s;
    const QString all = u"select * from 成绩表"_s;
    const QStringList head{u"班级"_s, u"学号"_s, u"姓名"_s, u"考试名称"_s};
};

TEST_F(BrowseTest, RawScoresComeWithGradeRanksAndTotalsAlsoWithClassRanks)
{
    EXPECT_EQ(itemsOf(raw), head
                                + QStringList({u"语文"_s, u"语文年名"_s, u"数学"_s, u"数学年名"_s,
                                               u"总分"_s, u"总分年名"_s, u"总分班名"_s}));
}

TEST_F(BrowseTest, ZScoresComeWithoutRanks)
{
    EXPECT_EQ(itemsOf(u"Z分"_s), head + QStringList({u"语文Z分"_s, u"数学Z分"_s, u"总分Z分"_s}));
}

TEST_F(BrowseTest, TScoresComeWithTheRankOfTotals)
{
    EXPECT_EQ(itemsOf(u"T分"_s),
              head + QStringList({u"语文T分"_s, u"数学T分"_s, u"总分T分"_s, u"总分T分年名"_s}));
}

TEST_F(BrowseTest, AStoredListOfTheFamilyAndStreamWins)
{
    storeDisplay(u"原始分和名次全"_s, u"姓名,总分"_s);
    storeDisplay(u"T分文"_s, u"语文T分,没有了,姓名"_s);
    EXPECT_EQ(itemsOf(raw), (QStringList{u"姓名"_s, u"总分"_s}));
    EXPECT_EQ(itemsOf(u"T分"_s, u"文"_s), (QStringList{u"语文T分"_s, u"姓名"_s}));
}

TEST_F(BrowseTest, AStoredListOfWhichNoNameExistsCountsAsNone)
{
    storeDisplay(u"Z分全"_s, u"物理,化学"_s);
    const QStringList items = itemsOf(u"Z分"_s);
    EXPECT_EQ(items.first(), u"班级"_s);
    EXPECT_EQ(items.size(), 7);
}

TEST_F(BrowseTest, RowsShowTheFieldsAsTheyAre)
{
    show({u"班级"_s, u"姓名"_s, u"语文"_s, u"语文年名"_s, u"数学"_s}, all);
    EXPECT_EQ(gridText(grid), u"班级\t姓名\t语文\t语名\t数学\n"
                              "1\t赵一\t100.5\t1\t\n"
                              "2\t孙三\t-1\t-1\t\n"_s);
    EXPECT_TRUE(grid.Redraw);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(BrowseTest, NoMatchingRowGivesTheHeadingRowAlone)
{
    show({u"姓名"_s, u"总分"_s}, all + u" where 班级=99"_s);
    EXPECT_EQ(gridText(grid), u"姓名\t总分\n"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(BrowseTest, HeadingsOfGradeRanksAreTheFirstCharacterAndMing)
{
    EXPECT_EQ(workbench::browseHeading(u"语文年名"_s), u"语名"_s);
    EXPECT_EQ(workbench::browseHeading(u"总分年名"_s), u"总名"_s);
    EXPECT_EQ(workbench::browseHeading(u"总分T分年名"_s), u"总名"_s);
    EXPECT_EQ(workbench::browseHeading(u"总分班名"_s), u"总分班名"_s);
    EXPECT_EQ(workbench::browseHeading(u"语文"_s), u"语文"_s);
    EXPECT_EQ(workbench::browseHeading(u"名"_s), u"名"_s);
}

TEST_F(BrowseTest, WidthsAreMultiplesOfOneCharacterInTheGridsFont)
{
    const QStringList shown{u"姓名"_s, u"考试名称"_s, u"总分"_s, u"总分年名"_s, u"语文"_s};
    show(shown, all);
    QList<int> widths;
    for (int col = 0; col < grid.Cols(); ++col)
        widths.append(grid.ColWidth(col));
    EXPECT_EQ(widths, (QList<int>{864, 864, 648, 432, 432}));
    grid.FontSize = 10.55;
    show(shown, all);
    EXPECT_EQ(grid.ColWidth(0), 1013);
}

TEST_F(BrowseTest, MergingAndFixedRowsStayAsTheLastReportLeftThem)
{
    grid.setRows(4);
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    grid.MergeCells = 2;
    grid.FixedRows = 0;
    show({u"姓名"_s, u"总分"_s}, all);
    EXPECT_TRUE(grid.MergeRow(0));
    EXPECT_TRUE(grid.MergeCol(0));
    EXPECT_EQ(grid.MergeCells, 2);
    EXPECT_EQ(grid.FixedRows, 0);
}

TEST_F(BrowseTest, HeightsAlignmentsAndWrappingOfTheLastReportGo)
{
    grid.setRows(4);
    grid.setRowHeight(-1, 500);
    grid.setRowHeight(1, 4 * FlexGrid::DefaultRowHeight);
    grid.setColAlignment(-1, 4);
    grid.setColAlignment(1, 7);
    grid.WordWrap = true;
    show({u"姓名"_s, u"总分"_s, u"语文"_s}, all);
    for (int row = 0; row < grid.Rows(); ++row)
        EXPECT_EQ(grid.RowHeight(row), FlexGrid::DefaultRowHeight) << row;
    for (int col = 0; col < grid.Cols(); ++col)
        EXPECT_EQ(grid.ColAlignment(col), FlexGrid::DefaultColAlignment) << col;
    EXPECT_FALSE(grid.WordWrap);
}

TEST_F(BrowseTest, AMissingFieldCostsAMessageForEachRowAndTheOtherCellsStand)
{
    show({u"姓名"_s, u"数学"_s, u"语文"_s}, u"select 姓名, 语文 from 成绩表"_s);
    EXPECT_EQ(gridText(grid), u"姓名\t数学\t语文\n赵一\t\t100.5\n孙三\t\t-1\n"_s);
    expectFailures(2, tag);
    EXPECT_EQ(library.dialogs.failures.first(), u"没有名为“数学”的列。"_s + tag);
}

TEST_F(BrowseTest, TwoMissingFieldsCostTwoMessagesForEachRow)
{
    show({u"姓名"_s, u"语文"_s}, u"select 班级 from 成绩表"_s);
    EXPECT_EQ(gridText(grid), u"姓名\t语文\n\t\n\t\n"_s);
    expectFailures(4, tag);
}

TEST_F(BrowseTest, AFailingStatementIsShownAndTheFormerRowsStayUnderNewHeadings)
{
    show({u"姓名"_s, u"语文"_s}, all);
    show({u"姓名"_s, u"数学"_s}, u"select * from 没有这张表"_s);
    // Opening, counting for the number of rows, and counting for the walk over them.
    expectFailures(3, tag);
    EXPECT_EQ(gridText(grid), u"姓名\t数学\n赵一\t100.5\n孙三\t-1\n"_s);
    EXPECT_TRUE(grid.Redraw);
}

TEST_F(BrowseTest, AStatementWithoutRowsIsRunAndThenThereIsNothingToShow)
{
    library.dialogs.expect(u"会改动成绩库里的 1 行"_s, u"执行"_s);
    show({u"姓名"_s}, u"update 成绩表 set 语文=60 where 班级=1"_s);
    expectFailures(2, tag);
    EXPECT_EQ(library.rows(u"select 语文 from 成绩表"_s), u"60 / -1"_s);
    EXPECT_EQ(grid.Rows(), 2);
}

TEST_F(BrowseTest, ATypedStatementCannotLeaveTheLibrary)
{
    show({u"姓名"_s}, u"attach database '"_s + library.file(u"x.db"_s) + u"' as x"_s);
    expectFailures(3, tag);
    show({u"姓名"_s}, u"select * from 成绩表; delete from 成绩表"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 6);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表"_s), u"2"_s);
}

TEST_F(BrowseTest, AnEmptyTextFailsLikeAnyOther)
{
    show({u"姓名"_s}, QString());
    EXPECT_FALSE(library.dialogs.failures.isEmpty());
    EXPECT_TRUE(grid.Redraw);
}

TEST_F(BrowseTest, AnExamMustBeChosen)
{
    workbench::BrowseRequest nothing = request();
    nothing.rows.exams.clear();
    grid.Visible = false;
    EXPECT_FALSE(workbench::browse(library.scores, nothing, grid, progress));
    EXPECT_EQ(library.dialogs.shown, QStringList{u"没有选择考试，请选择考试继续。"_s});
    EXPECT_FALSE(grid.Visible);
    EXPECT_EQ(grid.Cols(), 2);
}

TEST_F(BrowseTest, FillsAndShowsTheGrid)
{
    grid.Visible = false;
    EXPECT_TRUE(workbench::browse(library.scores, request(), grid, progress));
    EXPECT_TRUE(grid.Visible);
    EXPECT_EQ(grid.Cols(), 11);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.TextMatrix(1, 2), u"赵一"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(BrowseTest, ThePromptForAClassIsRunAsAStatementAndFails)
{
    workbench::BrowseRequest prompted = request();
    prompted.rows.classes.clear();
    prompted.sql = workbench::rowsSql(prompted.rows);
    EXPECT_TRUE(workbench::browse(library.scores, prompted, grid, progress));
    expectFailures(3, tag);
}

TEST_F(BrowseTest, WithoutACopyAWantedStatementLeavesLibraryAndGrid)
{
    struct Cancelled : runtime::NoProgress
    {
        bool cancelled() const override { return true; }
    } cancelled;
    workbench::BrowseRequest typed = request();
    typed.sql = u"delete from 成绩表"_s;
    grid.setTextMatrix(0, 0, u"早先"_s);
    library.dialogs.expect(u"会改动成绩库里的 2 行"_s, u"执行"_s);
    EXPECT_FALSE(workbench::browse(library.scores, typed, grid, cancelled));
    EXPECT_EQ(library.dialogs.failures,
              QStringList{u"备份没有成功，语句没有执行：备份没有做完就取消了。"_s + tag});
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表"_s), u"2"_s);
}

TEST_F(BrowseTest, AStatementThatTheUserDoesNotWantLeavesLibraryAndGrid)
{
    workbench::BrowseRequest typed = request();
    typed.sql = u"delete from 成绩表"_s;
    grid.setTextMatrix(0, 0, u"早先"_s);
    grid.Visible = false;
    library.dialogs.expect(u"会改动成绩库里的 2 行"_s, u"取消"_s);
    EXPECT_FALSE(workbench::browse(library.scores, typed, grid, progress));
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
    EXPECT_FALSE(grid.Visible);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表"_s), u"2"_s);
    EXPECT_EQ(library.dialogs.failures, QStringList());
}

TEST_F(BrowseTest, AnExamsNameIsNeverReadAsAPartOfTheStatement)
{
    for (const QString& name : {u"x' or ''='"_s, u"'"_s, u"O'Brien"_s}) {
        SCOPED_TRACE(name.toStdString());
        library.dialogs.failures.clear();
        grid = {};
        EXPECT_TRUE(workbench::browse(library.scores, request({name}), grid, progress));
        expectFailures(3, tag);
        EXPECT_TRUE(library.dialogs.failures.first().contains(u"单引号"_s));
        EXPECT_EQ(grid.Rows(), 2);
        EXPECT_EQ(grid.TextMatrix(1, 2), QString());
    }
    for (const QString& name : {u"2024--2025"_s, u"a/*b*/"_s, u"]"_s, u"%"_s, u"?"_s}) {
        library.addScores(name, 2, 1, {{u"语文"_s, 77}});
        EXPECT_TRUE(workbench::browse(library.scores, request({name}), grid, progress));
        EXPECT_EQ(grid.Rows(), 2);
        EXPECT_EQ(grid.TextMatrix(1, 4), u"77"_s) << name.toStdString();
    }
}

TEST_F(BrowseTest, AnOvertypedStatementIsShownUnderTheSameColumns)
{
    workbench::BrowseRequest typed = request();
    typed.sql = u"select * from 成绩表 where 语文>0"_s;
    EXPECT_TRUE(workbench::browse(library.scores, typed, grid, progress));
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.TextMatrix(0, 5), u"语名"_s);
    EXPECT_EQ(grid.TextMatrix(1, 4), u"100.5"_s);
}

} // namespace
