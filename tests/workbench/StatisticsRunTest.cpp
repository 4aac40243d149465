#include "workbench/StatisticsRun.h"

#include "WorkbenchFixture.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Error.h"
#include "workbench/Offers.h"
#include "workbench/ScoreQuery.h"

namespace {

using namespace Qt::StringLiterals;

class StatisticsRun : public WorkbenchTest
{
protected:
    bool run(const std::optional<QString>& item)
    {
        return workbench::runReport({exams, item}, context, grid);
    }

    void analyze(const QStringList& selected, const QString& current)
    {
        workbench::runAnalysis(
            {selected, current}, context, [this]() -> auto& { return application; }, progress);
    }

    void countOnly(const QStringList& categories)
    {
        library.scores.settings.CategoryFilter = workbench::categoryCondition(categories);
    }

    QStringList exams{u"期中"_s};

    statistics::ReportContext context{library.scores};
    grid::FlexGrid grid;
    excel::Application application;
    runtime::NoProgress progress;
};

TEST_F(StatisticsRun, AsksForAnExamThenForAnItem)
{
    exams.clear();
    EXPECT_FALSE(run(u"考试人数"_s));
    exams = {u"期中"_s};
    EXPECT_FALSE(run(std::nullopt));
    EXPECT_EQ(library.dialogs.shown, (QStringList{u"没有选择考试，请选择考试继续。"_s,
                                                  u"没有选择统计项目，请选择统计项目 后继续。"_s}));
}

TEST_F(StatisticsRun, EveryItemOfTheMenuGivesItsReport)
{
    const std::map<QString, QString> titles{
        {u"高分段、低分段"_s, u"文科 高、低分段"_s},
        {u"各科优秀率"_s, u"文科各科优秀率"_s},
        {u"各科良好率"_s, u"文科各科优秀率"_s},
        {u"各科及格率"_s, u"文科各科优秀率"_s},
        {u"各科差生率"_s, u"文科各科优秀率"_s},
        {u"各科平均分"_s, u"文科各科平均分"_s},
        {u"各科最高分"_s, u"文科各科最高分"_s},
        {u"各科最低分"_s, u"文科各科最低分"_s},
        {u"各科标准差"_s, u"文科 各科标准差"_s},
        {u"各分数段人数"_s, u"文科  语文各分数段人数"_s},
        {u"总分上线人数"_s, u"文科总分上线人数"_s},
        {u"各名次段均分"_s, u"文科  各名次段均分"_s},
        {u"各名次段人数"_s, u"文科  语文各名次段人数"_s},
        {u"历次各名次段人数对比"_s, u"文科  语文各名次段人数"_s},
        {u"考试人数"_s, u"文科考试人数"_s},
        {u"历次考试进入年级前x名人数 "_s, u"文科  语文  1次考试进入年级前50,100,200名人数"_s},
        {u"历次总分上线人数"_s, u"文科总分上线人数"_s},
    };
    const QStringList items = workbench::statisticsItems(library.scores);
    for (const QString& item : items) {
        ASSERT_TRUE(titles.contains(item)) << item.toStdString();
        EXPECT_TRUE(run(item));
        EXPECT_EQ(grid.TextMatrix(0, 1), titles.at(item)) << item.toStdString();
    }
    EXPECT_EQ(items.size(), qsizetype(titles.size()));
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(StatisticsRun, ItemThatIsNoneOfTheButtonsDoesNothing)
{
    grid.setTextMatrix(0, 0, u"早先"_s);
    for (const QString& item : {u"历次考试进入年级前x名人数"_s, u"高分段"_s, u"别的"_s})
        EXPECT_TRUE(run(item));
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
}

TEST_F(StatisticsRun, CoversAllClassesOfTheChosenCategories)
{
    library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 60}});
    library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 60}});
    countOnly({u"1"_s, u"2"_s});
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(5, 1), u"1/0/1"_s);
    EXPECT_EQ(grid.TextMatrix(6, 1), u"1/0/1"_s);
    countOnly({u"2"_s});
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(5, 1), u"0/0/0"_s);
    EXPECT_EQ(grid.TextMatrix(6, 1), u"1/0/1"_s);
}

TEST_F(StatisticsRun, EveryRateReadsTheSettingOfTheExcellentOne)
{
    library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 0}});
    run(u"各科优秀率"_s);
    const QString excellent = grid::gridText(grid);
    for (const QString& item : {u"各科良好率"_s, u"各科及格率"_s, u"各科差生率"_s}) {
        run(item);
        EXPECT_EQ(grid::gridText(grid), excellent) << item.toStdString();
    }
}

TEST_F(StatisticsRun, ARateThatRunsAsAnotherIsNotedAndOfferedAsItself)
{
    for (const QString& item : {u"各科良好率"_s, u"各科及格率"_s, u"各科差生率"_s}) {
        const auto notes = workbench::reportNotes({exams, item});
        ASSERT_EQ(notes.size(), 1u) << item.toStdString();
        EXPECT_EQ(notes[0].text, u"“执行统计”对“%1”给出的是“各科优秀率”的表。"_s.arg(item));
        EXPECT_EQ(notes[0].offer, u"统计“%1”"_s.arg(item));
        EXPECT_TRUE(workbench::reportNotes(notes[0].instead).empty());
        EXPECT_TRUE(workbench::runReport(notes[0].instead, context, grid));
        EXPECT_EQ(grid.TextMatrix(0, 0), u"文科"_s + item);
    }
}

TEST_F(StatisticsRun, ARateAsItselfReadsItsOwnSetting)
{
    library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 120}});
    const auto goodOnes = [&](workbench::RateTable rates) {
        workbench::runReport({exams, u"各科良好率"_s, rates}, context, grid);
        return grid.TextMatrix(7, 1);
    };
    EXPECT_EQ(goodOnes(workbench::RateTable::Excellent), u"0"_s);
    EXPECT_EQ(goodOnes(workbench::RateTable::Chosen), u"1"_s);
}

TEST_F(StatisticsRun, SeveralExamsWhoseFullMarksAddUpAreNotedAndOfferedOneByOne)
{
    exams = {u"期中"_s, u"期末"_s};
    library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 150}});
    for (const QString& item : {u"高分段、低分段"_s, u"各科优秀率"_s}) {
        const auto notes = workbench::reportNotes({exams, item});
        ASSERT_EQ(notes.size(), 1u) << item.toStdString();
        EXPECT_EQ(notes[0].text, u"选了 2 次考试，分数线按这几次满分相加的和计算。"_s);
        EXPECT_EQ(notes[0].offer, u"逐次考试统计"_s);
        EXPECT_TRUE(workbench::reportNotes(notes[0].instead).empty());
        workbench::runReport({exams, item}, context, grid);
        EXPECT_EQ(grid.TextMatrix(8, 2), u"0"_s);
        workbench::runReport(notes[0].instead, context, grid);
        EXPECT_EQ(grid.TextMatrix(0, 0), u"期中"_s);
        EXPECT_EQ(grid.TextMatrix(10, 0), u"期末"_s);
        EXPECT_EQ(grid.Rows(), 20);
        EXPECT_EQ(grid.TextMatrix(8, 1), u"1"_s) << grid::gridText(grid).toStdString();
    }
}

TEST_F(StatisticsRun, BothNotesCanHoldAndEachOfferKeepsTheOther)
{
    exams = {u"期中"_s, u"期末"_s};
    const auto notes = workbench::reportNotes({exams, u"各科及格率"_s});
    ASSERT_EQ(notes.size(), 2u);
    for (const workbench::ReportNote& note : notes)
        EXPECT_EQ(workbench::reportNotes(note.instead).size(), 1u);
    const auto last = workbench::reportNotes(notes[0].instead);
    workbench::runReport(last[0].instead, context, grid);
    EXPECT_EQ(grid.TextMatrix(1, 0), u"文科各科及格率"_s);
}

TEST_F(StatisticsRun, WhatIsAsItSaysHasNoNote)
{
    exams = {u"期中"_s, u"期末"_s};
    for (const QString& item : workbench::statisticsItems(library.scores)) {
        const bool expected = item.endsWith(u'率') || item == u"高分段、低分段";
        EXPECT_EQ(!workbench::reportNotes({exams, item}).empty(), expected) << item.toStdString();
    }
    EXPECT_TRUE(workbench::reportNotes({{u"期中"_s}, u"各科优秀率"_s}).empty());
    EXPECT_TRUE(workbench::reportNotes({exams, std::nullopt}).empty());
}

TEST_F(StatisticsRun, AnItemThatLacksTheBlankOfItsNameDoesNothingAndIsOfferedByIt)
{
    const QString item = u"历次考试进入年级前x名人数"_s;
    run(item);
    EXPECT_EQ(grid.Rows(), 2);
    const auto notes = workbench::reportNotes({exams, item});
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].text,
              u"“%1”的末尾少了或多了空格，“执行统计”认不出它，没有统计。"_s.arg(item));
    EXPECT_EQ(notes[0].offer, u"统计“%1”"_s.arg(item));
    EXPECT_TRUE(workbench::reportNotes(notes[0].instead).empty());
    run(*notes[0].instead.item);
    EXPECT_GT(grid.Rows(), 2);
    EXPECT_TRUE(workbench::reportNotes({exams, u"别的"_s}).empty());
}

TEST_F(StatisticsRun, ExamsGoToTheReportInTheOrderOfTheList)
{
    exams = {u"期中"_s, u"期末"_s};
    run(u"历次总分上线人数"_s);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"期中"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"期末"_s);
    library.dialogs.expect(u"只对期末  进行统计"_s, runtime::Answer::Cancel);
    run(u"考试人数"_s);
}

TEST_F(StatisticsRun, GridIsShownWhateverTheItemWas)
{
    for (const QString& item : {u"考试人数"_s, u"别的"_s}) {
        grid.Visible = false;
        run(item);
        EXPECT_TRUE(grid.Visible);
    }
    grid.Visible = false;
    run(std::nullopt);
    EXPECT_FALSE(grid.Visible);
}

TEST_F(StatisticsRun, FiguresAreThoseOfTheMomentOfEachRun)
{
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(6, 1), u"0/0/0"_s);
    library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 60}});
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(6, 1), u"1/0/1"_s);
}

TEST_F(StatisticsRun, AnalysisRefusesSeveralExams)
{
    analyze({u"期中"_s, u"期末"_s}, u"期中"_s);
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"当前操作只针对一次考试，请选择  一次考试后  进行  综合分析。"_s});
    EXPECT_EQ(application.Workbooks().Count(), 0);
}

TEST_F(StatisticsRun, AnalysisTakesTheCurrentExamSelectedOrNot)
{
    analyze({}, u"期末"_s);
    EXPECT_EQ(application.Workbooks().Item(1).Worksheets().Item(1).Name(),
              u"期末原始分和名次(文)"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList{u"综合分析完毕！"_s});
}

TEST_F(StatisticsRun, AnAnalysisWithoutASpreadsheetIsTold)
{
    workbench::runAnalysis(
        {exams, u"期中"_s}, context,
        []() -> excel::Application& { throw runtime::Error(u"没有电子表格。"_s); }, progress);
    EXPECT_EQ(library.dialogs.failures,
              QStringList{u"没有电子表格。 - Private Sub Command2_Click/FormKaoShi"_s});
}

} // namespace
