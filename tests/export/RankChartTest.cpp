#include "export/RankChart.h"

#include "ExportFixture.h"
#include "platform/chart/ChartLayout.h"

using namespace Qt::StringLiterals;
using exporting::BlockLayout;

namespace {

/// All that was drawn on a sheet.
struct Drawn
{
    std::vector<const excel::Chart*> charts;
    std::vector<const excel::DrawnLine*> lines;
    std::vector<const excel::TextLabel*> labels;

    explicit Drawn(const excel::Worksheet& sheet)
    {
        for (const excel::Drawing& drawing : sheet.drawings()) {
            if (const auto* chart = std::get_if<excel::Chart>(&drawing))
                charts.push_back(chart);
            if (const auto* line = std::get_if<excel::DrawnLine>(&drawing))
                lines.push_back(line);
            if (const auto* label = std::get_if<excel::TextLabel>(&drawing))
                labels.push_back(label);
        }
    }
};

class RankChart : public ExportFixture
{
protected:
    RankChart()
    {
        request.layout = BlockLayout::RankChart;
        for (int number = 1; number <= 4; ++number)
            test.addStudent(5, number, u"同学"_s, u"理"_s);
    }

    excel::CellRange frame(const excel::Chart& chart)
    {
        const excel::SheetGeometry& cells = sheet().geometry();
        constexpr double inside = 0.01;
        return {cells.rowAt(chart.Top() + inside), cells.columnAt(chart.Left() + inside),
                cells.rowAt(chart.Top() + chart.Height() - inside),
                cells.columnAt(chart.Left() + chart.Width() - inside)};
    }
};

const QString noData =
    u"导出的列里没有“考试名称”或“总分年名”，图里没有数据。 - Sub HuiTu/FormDaoChu"_s;

TEST_F(RankChart, FillsThePageBelowTheRowsOfEachStudent)
{
    run();
    const Drawn drawn(sheet());
    ASSERT_EQ(drawn.charts.size(), 2U);
    EXPECT_EQ(frame(*drawn.charts[0]), (excel::CellRange{4, 1, 30, 12}));
    EXPECT_EQ(frame(*drawn.charts[1]), (excel::CellRange{35, 1, 61, 12}));
    EXPECT_EQ(sheet().pageBreaks(), (std::vector<int>{31, 62}));
    EXPECT_EQ(cell(32, 1), u"考试名称"_s);
    EXPECT_EQ(cell(33, 4), u"乙"_s);
}

TEST_F(RankChart, ShowsTheRanksOfTheExamsFromOneToTheHeadCount)
{
    run();
    const excel::Chart& chart = *Drawn(sheet()).charts[1];
    const chart::LineChart& design = chart.design();
    EXPECT_EQ(design.title, u"乙排名分析(共6人)"_s);
    EXPECT_EQ(design.titleSize, 12);
    EXPECT_EQ(design.axis.title, u"名次"_s);
    EXPECT_EQ(design.axis.titleSize, 15);
    EXPECT_EQ(design.axis.minimum, 1.0);
    EXPECT_EQ(design.axis.maximum, 6.0);
    EXPECT_EQ(design.axis.growth, chart::Growth::Downward);
    EXPECT_TRUE(design.hasMarkers);
    EXPECT_TRUE(design.hasDataLabels);
    EXPECT_EQ(chart.source(), (excel::ChartSource{{33, 1, 34, 1}, {33, 8, 34, 8}}));
}

TEST_F(RankChart, TheTitleHasTheNameAsItStands)
{
    test.execute(u"update 信息表 set 姓名='%2%1' where 姓名='甲'"_s);
    run();
    EXPECT_EQ(Drawn(sheet()).charts[0]->design().title, u"%2%1排名分析(共6人)"_s);
}

TEST_F(RankChart, ALineAndALabelStandAtTheAverageRank)
{
    run();
    const Drawn drawn(sheet());
    ASSERT_EQ(drawn.lines.size(), 2U);
    ASSERT_EQ(drawn.labels.size(), 2U);
    const excel::Chart& chart = *drawn.charts[0];
    const double x = chart.Left() + 3 + chart.InsideLeft();
    const double y = chart.Top() + 3 + chart.InsideTop() + 1.5 * chart.InsideHeight() / 6;
    const excel::DrawnLine& line = *drawn.lines[0];
    EXPECT_EQ(line.ends(), QLineF(x, y, x + chart.InsideWidth(), y));
    EXPECT_EQ(line.dashStyle(), excel::DashStyle::Dash);
    EXPECT_EQ(line.weight(), 1);
    EXPECT_EQ(line.color(), 0);
    EXPECT_EQ(drawn.labels[0]->place(), QRectF(x + chart.InsideWidth(), y, 20, 12));
    EXPECT_EQ(drawn.labels[0]->text(), u"平均1.5"_s);
    // The absence of the second student is no rank.
    EXPECT_EQ(drawn.labels[1]->text(), u"平均1"_s);
}

TEST_F(RankChart, TheAverageRankHasTwoPlacesRoundedHalfToEven)
{
    test.addScores(u"期中"_s, 5, 1, {{u"总分年名"_s, 1}});
    test.addScores(u"期末"_s, 5, 1, {{u"总分年名"_s, 2}});
    test.addExam(u"月考"_s, u"理"_s, 3, {{u"语文"_s, 100}});
    test.addScores(u"月考"_s, 5, 1, {{u"总分年名"_s, 2}});
    request.exams.append(u"月考"_s);
    request.classes = QStringList{u"5"_s};
    run();
    EXPECT_EQ(Drawn(sheet()).labels[0]->text(), u"平均1.67"_s);
}

TEST_F(RankChart, OfOneExamHasASinglePoint)
{
    request.exams = QStringList{u"期末"_s};
    run();
    EXPECT_EQ(Drawn(sheet()).charts[0]->source(), (excel::ChartSource{{2, 1, 2, 1}, {2, 8, 2, 8}}));
}

TEST_F(RankChart, IsTwelveToTwentyColumnsWide)
{
    request.columns = QStringList{u"考试名称"_s, u"总分年名"_s};
    run();
    EXPECT_EQ(frame(*Drawn(sheet()).charts[0]).lastColumn, 12);
    QStringList many{u"考试名称"_s, u"总分年名"_s};
    while (many.size() < 15)
        many.append(u"语文"_s);
    request.columns = many;
    run();
    EXPECT_EQ(frame(*Drawn(sheet()).charts[0]).lastColumn, 15);
    while (many.size() < 25)
        many.append(u"语文"_s);
    request.columns = many;
    run();
    EXPECT_EQ(frame(*Drawn(sheet()).charts[0]).lastColumn, 20);
}

TEST_F(RankChart, WithoutARankAboveZeroTheLineLiesOnThePlotsTopEdge)
{
    test.execute(u"update 成绩表 set 总分年名=-1"_s);
    run();
    const Drawn drawn(sheet());
    EXPECT_EQ(drawn.lines[0]->ends().y1(),
              drawn.charts[0]->Top() + 3 + drawn.charts[0]->InsideTop());
    EXPECT_EQ(drawn.labels[0]->text(), u"平均0"_s);
}

TEST_F(RankChart, TheAverageBeginsAnewForEachStudent)
{
    test.execute(u"update 成绩表 set 总分年名=-1 where 姓名='乙'"_s);
    run();
    EXPECT_EQ(Drawn(sheet()).labels[1]->text(), u"平均0"_s);
}

TEST_F(RankChart, AStudentWithoutRowsHasTheHeadCountOfTheOneBefore)
{
    test.addStudent(1, 3, u"丁"_s, u"理"_s);
    run();
    const Drawn drawn(sheet());
    ASSERT_EQ(drawn.charts.size(), 3U);
    EXPECT_EQ(drawn.charts[2]->design().title, u"丁排名分析(共7人)"_s);
    EXPECT_EQ(drawn.labels[2]->text(), u"平均0"_s);
    EXPECT_EQ(drawn.charts[2]->source(), std::nullopt) << "there is no row to show";
    EXPECT_EQ(exportFailures(), QStringList{u"没有当前记录。"_s});
}

TEST_F(RankChart, WithoutAHeadCountTheDivisionFailsAndThereAreNoShapes)
{
    request.classes = QStringList{u"2"_s};
    run();
    const Drawn drawn(sheet());
    ASSERT_EQ(drawn.charts.size(), 1U);
    EXPECT_EQ(drawn.charts[0]->design().title, u"丙排名分析(共0人)"_s);
    EXPECT_EQ(drawn.charts[0]->design().axis.maximum, 0.0);
    EXPECT_TRUE(drawn.lines.empty());
    EXPECT_TRUE(drawn.labels.empty());
    EXPECT_EQ(test.dialogs.failures,
              (QStringList{u"没有当前记录。 - Private Sub Command1_Click/FormDaoChu"_s,
                           u"除数为零。 - Sub HuiTu/FormDaoChu"_s}));
}

TEST_F(RankChart, OfAGradeOfOneKeepsTheNumber)
{
    test.addScores(u"期中"_s, 2, 1, {{u"总分年名"_s, 1}});
    request.classes = QStringList{u"2"_s};
    run();
    EXPECT_EQ(Drawn(sheet()).charts[0]->design().axis.maximum, 1.0);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩导出完毕！"_s});
}

TEST_F(RankChart, OfATotalNamedOtherwiseHasNoData)
{
    test.execute(u"alter table 考试名称表 add column 理综总分 Memo"_s);
    test.execute(u"alter table 成绩表 add column 理综总分 Single"_s);
    test.execute(u"alter table 成绩表 add column 理综总分年名 Long"_s);
    request.subjects = QStringList{u"理综总分"_s};
    run();
    const Drawn drawn(sheet());
    ASSERT_EQ(drawn.charts.size(), 2U);
    EXPECT_EQ(drawn.charts[0]->source(), std::nullopt);
    EXPECT_EQ(drawn.charts[0]->design().title, u"甲排名分析(共6人)"_s);
    EXPECT_EQ(drawn.labels[0]->text(), u"平均0"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{noData});
}

TEST_F(RankChart, OfASavedListWithoutTheExamHasNoData)
{
    request.columns = QStringList{u"姓名"_s, u"总分年名"_s};
    run();
    const Drawn drawn(sheet());
    EXPECT_EQ(drawn.charts[1]->source(), std::nullopt);
    EXPECT_EQ(drawn.labels[0]->text(), u"平均0"_s);
    EXPECT_EQ(test.dialogs.failures, QStringList{noData});
}

TEST_F(RankChart, OnAPageThatTheRowsFillItsFrameIsPutInOrderAndThePageIsTold)
{
    // The heading, 29 exams: the frame would end in the row above its top.
    for (int number = 3; number <= 29; ++number) {
        const QString exam = u"考试%1"_s.arg(number);
        test.addExam(exam, u"理"_s, number, {{u"语文"_s, 100}});
        test.addScores(exam, 1, 1, {{u"总分年名"_s, number}});
        request.exams.append(exam);
    }
    run();
    const Drawn drawn(sheet());
    EXPECT_EQ(frame(*drawn.charts[0]), (excel::CellRange{30, 1, 31, 12}));
    EXPECT_EQ(cell(32, 1), u"考试名称"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"有 1 页放不下成绩和图。请减少考试后重新导出。"_s,
                                               u"成绩导出完毕！"_s}));
}

TEST_F(RankChart, APageWithoutRoomForThePlotIsTold)
{
    const auto examsUpTo = [&](int last) {
        for (int number = int(request.exams.size()) + 1; number <= last; ++number) {
            const QString exam = u"考试%1"_s.arg(number);
            test.addExam(exam, u"理"_s, number, {{u"语文"_s, 100}});
            test.addScores(exam, 1, 1, {{u"总分年名"_s, number}});
            request.exams.append(exam);
        }
        test.dialogs.shown.clear();
        run();
        return test.dialogs.shown.first();
    };
    EXPECT_EQ(examsUpTo(23), u"成绩导出完毕！"_s);
    EXPECT_EQ(examsUpTo(24), u"有 1 页放不下成绩和图。请减少考试后重新导出。"_s);
}

TEST(HuiTu, AFrameBeyondTheSheetDrawsNothingAfterItsMessage)
{
    support::ScriptedDialogs dialogs;
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"一"_s);
    exporting::RankChart chart;
    chart.chartTop = excel::lastGridRow;
    chart.chartRows = 5;
    HuiTu(sheet, chart);
    EXPECT_TRUE(sheet.drawings().empty());
    EXPECT_EQ(dialogs.failures,
              QStringList{u"工作表中没有第 1048580 行第 12 列的单元格。 - Sub HuiTu/FormDaoChu"_s});
}

} // namespace
