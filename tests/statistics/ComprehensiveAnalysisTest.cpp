#include "statistics/ComprehensiveAnalysis.h"

#include <QRegularExpression>

#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::AnalysisResult;
using statistics::ZHFX;

const QString done = u"综合分析完毕！"_s;

/// Says 取消 after a number of reports.
class CancelAfter : public runtime::Progress
{
public:
    explicit CancelAfter(int reports) : m_left(reports) {}
    void report(const QString& text, int part, int total) override
    {
        texts.append(u"%1 %2/%3"_s.arg(text).arg(part).arg(total));
        --m_left;
    }
    void finish() override { texts.append(u"end"_s); }
    bool cancelled() const override { return m_left < 0; }

    QStringList texts;

private:
    int m_left;
};

/// Does something at one of the reports, as a user does who cannot wait.
class DisturbAt : public runtime::NoProgress
{
public:
    DisturbAt(int report, std::function<void()> disturb)
        : m_left(report), m_disturb(std::move(disturb))
    {
    }
    void report(const QString&, int, int) override
    {
        if (m_left-- == 0)
            m_disturb();
    }

private:
    int m_left;
    std::function<void()> m_disturb;
};

class ComprehensiveAnalysis : public ReportTest
{
protected:
    ComprehensiveAnalysis() { library.execute(u"update 设置表 set 加入综合分析='否'"_s); }

    void join(const QString& name)
    {
        library.execute(u"update 设置表 set 加入综合分析='是' where 名称='"_s + name + u"'"_s);
    }

    AnalysisResult run() { return ZHFX(context, u"期中"_s, application, progress); }

    excel::Worksheet& sheet(int book, int number)
    {
        return application.Workbooks().Item(book).Worksheets().Item(number);
    }

    QStringList sheetNames(int book)
    {
        QStringList names;
        for (const excel::Worksheet* s : application.Workbooks().Item(book).sheets())
            names.append(s->Name());
        return names;
    }

    /// Texts of column 1 that begin a block, with their rows.
    QString titles(const excel::Worksheet& s)
    {
        QStringList found;
        for (int row = 1; row <= s.lastUsedRow(); ++row) {
            const QString text = s.Cells(row, 2).text();
            if (s.Cells(row, 1).text() == text && !text.isEmpty())
                found.append(u"%1:%2"_s.arg(row).arg(text));
        }
        return found.join(u' ');
    }

    QString cells(const excel::Worksheet& s, int row, int columns)
    {
        QStringList texts;
        for (int column = 1; column <= columns; ++column)
            texts.append(s.Cells(row, column).text());
        return texts.join(u'|');
    }

    excel::Application application;
    CancelAfter progress{1000};
};

TEST_F(ComprehensiveAnalysis, WithoutReportsFillsTheTwoStudentSheets)
{
    EXPECT_EQ(run(), AnalysisResult::Finished);
    EXPECT_EQ(library.dialogs.shown, QStringList{done});
    ASSERT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(sheetNames(1), (QStringList{u"期中原始分和名次(理)"_s, u"期中T分(理)"_s,
                                          u"考试分析"_s, u"对比分析"_s}));
    EXPECT_EQ(cells(sheet(1, 1), 1, 9),
              u"班级|学号|姓名|语文|数学|总分|语文年名|数学年名|总分年名"_s);
    EXPECT_EQ(cells(sheet(1, 1), 2, 7), u"1|1|甲|90|40|130|1"_s);
    EXPECT_EQ(cells(sheet(1, 1), 4, 7), u"1|3|丙|缺考|30|30|缺考"_s);
    EXPECT_EQ(cells(sheet(1, 1), 5, 3), u"2|1|丁"_s);
    EXPECT_EQ(cells(sheet(1, 2), 1, 7), u"班级|学号|姓名|语文T分|数学T分|总分T分|总分T分年名"_s);
    EXPECT_EQ(sheet(1, 3).lastUsedRow(), 1);
    EXPECT_EQ(sheet(1, 4).lastUsedRow(), 1);
    EXPECT_EQ(sheet(1, 4).format(9, 9).horizontalAlignment, excel::HorizontalAlignment::Center);
    EXPECT_TRUE(application.Visible());
    EXPECT_FALSE(application.Workbooks().Item(1).Saved());
}

TEST_F(ComprehensiveAnalysis, StandardScoresKeepMinusOne)
{
    library.execute(u"update 成绩表 set 总分T分年名=-1"_s);
    run();
    EXPECT_EQ(sheet(1, 2).Cells(2, 7).text(), u"-1"_s);
}

TEST_F(ComprehensiveAnalysis, OwnChoiceOfColumnsReplacesTheDefaultOfItsStream)
{
    addSecondStream();
    library.execute(u"insert into 自定义显示表 values('原始分和名次文','姓名,没有,语文')"_s);
    run();
    EXPECT_EQ(cells(sheet(1, 1), 1, 3), u"姓名|语文|"_s);
    EXPECT_EQ(cells(sheet(2, 1), 1, 4), u"班级|学号|姓名|语文"_s);
}

TEST_F(ComprehensiveAnalysis, SubjectThatTheStreamDidNotSitIsLeftOut)
{
    addSecondStream();
    run();
    EXPECT_EQ(cells(sheet(1, 1), 1, 6), u"班级|学号|姓名|语文|语文年名|"_s);
}

TEST_F(ComprehensiveAnalysis, ReportsFollowInTheirOrderOneRowApart)
{
    for (const QString& name : {u"各科最低分"_s, u"考试人数"_s, u"高分段"_s})
        join(name);
    run();
    EXPECT_EQ(titles(sheet(1, 3)), u"1:考试人数 6:理科 高、低分段 12:各科最低分"_s);
}

TEST_F(ComprehensiveAnalysis, BlocksOfAnItemStandThreeRowsApart)
{
    join(u"各名次段人数"_s);
    run();
    EXPECT_EQ(titles(sheet(1, 3)), u"1:语文各名次段人数 8:数学各名次段人数 15:总分各名次段人数"_s);
}

TEST_F(ComprehensiveAnalysis, PassRateIsNeverTaken)
{
    join(u"各科及格率"_s);
    join(u"各科良好率"_s);
    run();
    EXPECT_EQ(titles(sheet(1, 3)), u"1:各科良好率"_s);
}

TEST_F(ComprehensiveAnalysis, SecondPassPutsTheFirstStreamOnItsLastSheet)
{
    addSecondStream();
    join(u"各科最低分"_s);
    run();
    ASSERT_EQ(application.Workbooks().Count(), 2);
    // First pass: 文 on its sheet 3, 理 has no sheet yet. Second pass: 文 goes to its last sheet.
    EXPECT_EQ(titles(sheet(1, 3)), u"1:文科各科最低分"_s);
    EXPECT_EQ(titles(sheet(1, 4)), u"1:文科各科最低分"_s);
    EXPECT_EQ(titles(sheet(2, 3)), u"1:理科各科最低分"_s);
    EXPECT_EQ(titles(sheet(2, 4)), QString());
}

TEST_F(ComprehensiveAnalysis, RowsRunOnBelowTheComparisonsInTheSecondPass)
{
    addSecondStream();
    set(u"进行对比分析的考试"_s, u"期中"_s);
    set(u"总分上线人数"_s, u"80"_s);
    join(u"各科最低分"_s);
    join(u"历次总分上线人数"_s);
    library.execute(u"ALTER TABLE 考试名称表 DROP COLUMN 数学"_s);
    library.reload();
    run();
    EXPECT_EQ(titles(sheet(1, 4)), u"1:文科总分上线人数 5:文科各科最低分 9:文科总分上线人数"_s);
    EXPECT_EQ(titles(sheet(2, 4)), u"1:理科总分上线人数"_s);
}

TEST_F(ComprehensiveAnalysis, SecondRunBeginsWithEmptySlots)
{
    addSecondStream();
    join(u"各科最低分"_s);
    run();
    const int rows = sheet(1, 4).lastUsedRow();
    run();
    EXPECT_EQ(application.Workbooks().Count(), 4);
    EXPECT_EQ(sheet(1, 4).lastUsedRow(), rows);
    // The second stream's sheet of the first run gets nothing in the second run's first pass.
    EXPECT_EQ(titles(sheet(2, 4)), QString());
    EXPECT_EQ(titles(sheet(3, 3)), u"1:文科各科最低分"_s);
}

TEST_F(ComprehensiveAnalysis, ComparesAllExamsOrThoseOfTheSetting)
{
    addExam(u"期末"_s, 2);
    library.reload();
    join(u"历次总分上线人数"_s);
    set(u"总分上线人数"_s, u"80"_s);
    run();
    EXPECT_EQ(sheet(1, 4).Cells(3, 2).text(), u"期中"_s);
    EXPECT_EQ(sheet(1, 4).Cells(4, 2).text(), u"期末"_s);
    set(u"进行对比分析的考试"_s, u"期末,没有这次"_s);
    run();
    EXPECT_EQ(cells(sheet(2, 4), 3, 3), u"1班|期末|0"_s);
    EXPECT_EQ(cells(sheet(2, 4), 4, 3), u"1班|没有这次|0"_s);
}

TEST_F(ComprehensiveAnalysis, HistoryIsFoundByItsNameWithoutTheBlank)
{
    join(u"历次考试进入年级前x名人数"_s);
    set(u"历次考试进入年级前x名人数"_s, u"2"_s);
    run();
    EXPECT_TRUE(titles(sheet(1, 4)).startsWith(u"1:语文  1次考试进入年级前2名人数"_s));
}

TEST_F(ComprehensiveAnalysis, WithoutComparedExamsOnlyHeadingsStand)
{
    join(u"历次总分上线人数"_s);
    set(u"总分上线人数"_s, u"80"_s);
    set(u"进行对比分析的考试"_s, u""_s);
    run();
    EXPECT_EQ(titles(sheet(1, 4)), u"1:总分上线人数"_s);
    EXPECT_EQ(sheet(1, 4).lastUsedRow(), 2);
}

TEST_F(ComprehensiveAnalysis, OwnChoiceOfStandardScoresIsFoundByItsStream)
{
    library.execute(u"insert into 自定义显示表 values('T分理','姓名,语文')"_s);
    run();
    EXPECT_EQ(cells(sheet(1, 2), 1, 3), u"姓名|语文|"_s);
    EXPECT_EQ(cells(sheet(1, 2), 4, 2), u"丙|-1"_s);
}

TEST_F(ComprehensiveAnalysis, AllReportsStandInTheirOrder)
{
    library.execute(u"update 设置表 set 加入综合分析='是'"_s);
    library.execute(u"update 考试名称表 set 数学=null, 总分=null"_s);
    library.reload();
    run();
    static const QRegularExpression rows(u"\\d+:"_s);
    EXPECT_EQ(titles(sheet(1, 3)).remove(rows),
              u"考试人数 理科 高、低分段 各科优秀率 各科良好率 各科差生率 各科最低分 各科标准差 "
              "语文各分数段人数 语文各名次段人数 总分上线人数 各名次段均分"_s);
    EXPECT_EQ(sheet(1, 3).Cells(sheet(1, 3).lastUsedRow(), 1).text(), u"2班"_s);
    EXPECT_EQ(titles(sheet(1, 4)).remove(rows),
              u"语文各名次段人数 语文  1次考试进入年级前50,100,200名人数 总分上线人数"_s);
}

TEST_F(ComprehensiveAnalysis, BlocksAreMergedAndBordered)
{
    set(u"各科平均分"_s, u""_s);
    join(u"各科最低分"_s);
    run();
    QStringList merges;
    for (const excel::CellRange& m : sheet(1, 3).merges().all())
        merges.append(
            u"%1,%2-%3,%4"_s.arg(m.firstRow).arg(m.firstColumn).arg(m.lastRow).arg(m.lastColumn));
    EXPECT_EQ(merges, QStringList{u"1,1-1,3"_s});
    EXPECT_EQ(sheet(1, 3).format(4, 3).borders.top, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet(1, 3).format(5, 1).borders.top, excel::LineStyle::None);
}

TEST_F(ComprehensiveAnalysis, CategoriesComeFromTheSettingNotFromTheList)
{
    library.execute(u"update 成绩表 set 类别代码=2 where 姓名='甲'"_s);
    set(u"参与统计的学生类别代码"_s, u"2"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=1)"_s;
    run();
    EXPECT_EQ(sheet(1, 1).lastUsedRow(), 2);
    EXPECT_EQ(library.scores.settings.CategoryFilter, u" and (类别代码=2)"_s);
}

TEST_F(ComprehensiveAnalysis, NameTooLongForASheetIsShownAndTheSheetKeepsItsOwn)
{
    const QString exam = u"很长"_s.repeated(14);
    library.addExam(exam, u"理"_s, 2, {{u"语文"_s, 100}});
    library.reload();
    ZHFX(context, exam, application, progress);
    EXPECT_EQ(sheetNames(1).first(), u"Sheet1"_s);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub ZHFX/Mdl_MDB"_s));
    EXPECT_EQ(library.dialogs.shown.last(), done);
}

TEST_F(ComprehensiveAnalysis, NameThatNoSheetMayHaveIsShownAndTheSheetKeepsItsOwn)
{
    const QString exam = u"高一[期中]"_s;
    library.addExam(exam, u"理"_s, 2, {{u"语文"_s, 100}});
    library.reload();
    ZHFX(context, exam, application, progress);
    EXPECT_EQ(sheetNames(1), QStringList({u"Sheet1"_s, u"Sheet2"_s, u"考试分析"_s, u"对比分析"_s}));
    ASSERT_EQ(library.dialogs.failures.size(), 2);
    EXPECT_TRUE(library.dialogs.failures[1].endsWith(u" - Sub ZHFX/Mdl_MDB"_s));
}

TEST_F(ComprehensiveAnalysis, CancelledRunLeavesWhatWasFilledWithoutTheClosingMessage)
{
    CancelAfter two(2);
    EXPECT_EQ(ZHFX(context, u"期中"_s, application, two), AnalysisResult::Cancelled);
    EXPECT_EQ(library.dialogs.shown, QStringList());
    EXPECT_EQ(two.texts[0], u"综合分析：理科 原始分和名次 0/18"_s);
    EXPECT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(sheet(1, 1).lastUsedRow(), 5);
    EXPECT_TRUE(application.Visible());
}

TEST_F(ComprehensiveAnalysis, WorkbooksAreHeldBackUntilTheyAreFilled)
{
    bool shownEarly = false;
    DisturbAt second(1, [&] { shownEarly = application.ScreenUpdating(); });
    ZHFX(context, u"期中"_s, application, second);
    EXPECT_FALSE(shownEarly);
    EXPECT_TRUE(application.ScreenUpdating());
}

TEST_F(ComprehensiveAnalysis, ProgressEndsAheadOfTheClosingMessage)
{
    /// Notes how many messages there were when the work ended.
    class EndNoted : public runtime::NoProgress
    {
    public:
        explicit EndNoted(const QStringList& shown) : m_shown(shown) {}
        void finish() override { messagesAtEnd = int(m_shown.size()); }
        int messagesAtEnd = -1;

    private:
        const QStringList& m_shown;
    } ending(library.dialogs.shown);
    ZHFX(context, u"期中"_s, application, ending);
    EXPECT_EQ(ending.messagesAtEnd, 0);
    EXPECT_EQ(library.dialogs.shown, QStringList{done});
}

TEST_F(ComprehensiveAnalysis, LastSheetIsInFrontAndAllAreCentred)
{
    run();
    EXPECT_EQ(application.Workbooks().Item(1).activeSheet().Name(), u"对比分析"_s);
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(sheet(1, number).format(9, 9).horizontalAlignment,
                  excel::HorizontalAlignment::Center)
            << number;
}

TEST_F(ComprehensiveAnalysis, WorkbookClosedWhileItsStudentsAreWrittenIsTold)
{
    DisturbAt first(0, [this] { application.Workbooks().Item(1).Close(); });
    EXPECT_EQ(ZHFX(context, u"期中"_s, application, first), AnalysisResult::Finished);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    for (const QString& failure : std::as_const(library.dialogs.failures))
        EXPECT_EQ(failure, u"工作簿已经关闭。 - Sub ZHFX/Mdl_MDB"_s);
    EXPECT_EQ(library.dialogs.shown.last(), done);
}

TEST_F(ComprehensiveAnalysis, WorkbookClosedWhileReportsAreCopiedIsToldAtTheNextSheet)
{
    library.execute(u"update 设置表 set 加入综合分析='是'"_s);
    DisturbAt report(6, [this] { application.Workbooks().Item(1).Close(); });
    EXPECT_EQ(ZHFX(context, u"期中"_s, application, report), AnalysisResult::Finished);
    EXPECT_EQ(library.dialogs.failures, QStringList(2, u"工作簿已经关闭。 - Sub ZHFX/Mdl_MDB"_s));
    EXPECT_EQ(library.dialogs.shown.last(), done);
}

TEST_F(ComprehensiveAnalysis, WorkbookOfTheFirstStreamClosedLeavesTheOtherWhole)
{
    addSecondStream();
    join(u"各科最低分"_s);
    DisturbAt second(20, [this] { application.Workbooks().Item(1).Close(); });
    EXPECT_EQ(ZHFX(context, u"期中"_s, application, second), AnalysisResult::Finished);
    EXPECT_EQ(titles(sheet(1, 3)), u"1:理科各科最低分"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList{done});
}

TEST_F(ComprehensiveAnalysis, SheetTakenAwayIsToldAndTheRunGoesOn)
{
    join(u"各科最低分"_s);
    DisturbAt first(0, [this] { sheet(1, 1).Delete(); });
    EXPECT_EQ(ZHFX(context, u"期中"_s, application, first), AnalysisResult::Finished);
    ASSERT_FALSE(library.dialogs.failures.isEmpty());
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub ZHFX/Mdl_MDB"_s));
    EXPECT_EQ(library.dialogs.shown.last(), done);
}

TEST_F(ComprehensiveAnalysis, LibraryWithoutStreamsGivesNoWorkbook)
{
    library.execute(u"delete from 信息表"_s);
    library.reload();
    EXPECT_EQ(run(), AnalysisResult::Finished);
    EXPECT_EQ(application.Workbooks().Count(), 0);
    EXPECT_EQ(library.dialogs.shown.last(), done);
}

} // namespace
