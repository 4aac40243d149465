#include "export/ScoreExport.h"

#include <algorithm>

#include "export/ExportTrap.h"
#include "export/StudentBlock.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"

namespace exporting {

using namespace Qt::StringLiterals;

namespace {

/// TextKH as a number of rows; more than a sheet has make no difference.
int blankRowsOf(const QString& text)
{
    const double rows = runtime::Int(std::abs(runtime::Val(text)));
    return int(std::min(rows, double(excel::lastGridRow)));
}

class ScoreExport
{
public:
    ScoreExport(library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request,
                runtime::Progress& progress)
        : m_library(scoreLibrary),
          m_request(request),
          m_progress(progress),
          m_figures(scoreLibrary),
          m_blankRows(blankRowsOf(request.blankRows))
    {
    }

    /// True if all is chosen that the export needs; otherwise its message was shown.
    bool prepare();
    /// Fills a new workbook; true unless it was cancelled.
    bool fill(excel::Application& application);
    void tellEnd(ExportEnd end) const;
    excel::Workbook& book() { return m_sheets->book(); }

private:
    bool isAllChosen() const;
    void openStudents();
    bool nextStudent();
    void exportStudent(const ExportedStudent& student);
    StudentScores scoresOf(const ExportedStudent& student);
    void findPlace(const StudentScores& scores);
    void beginNextSheet();
    void tellMissingColumn() const;

    library::ScoreLibrary& m_library;
    const ScoreExportRequest& m_request;
    runtime::Progress& m_progress;
    ExportFigures m_figures;
    int m_blankRows;
    database::Recordset m_students;
    std::optional<BlockColumns> m_columns;
    std::optional<ExportedScores> m_scores;
    std::optional<StudentBlock::Run> m_run;
    std::optional<ExportSheets> m_sheets;
    int m_row = 1;              // r
    int m_pageBegin = 1;        // of the page that is being filled
    std::optional<int> m_total; // students; nothing if they could not be read
    QString m_gone;             // what of the request is not there
    int m_done = 0;
    int m_overfull = 0;
};

bool ScoreExport::isAllChosen() const
{
    const QString missing = missingChoice(m_request);
    if (!missing.isEmpty())
        runtime::MsgBox(missing);
    return missing.isEmpty();
}

void ScoreExport::openStudents()
{
    exportTrap([&] {
        const QString any =
            m_library.settings.GetSouSuoChuan(m_request.classes.join(u','), u","_s, u"班级"_s,
                                              library::Joiner::Or, library::Quote::None);
        const database::SqlPiece classes = database::SqlPiece::condition(u"("_s + any + u")"_s);
        m_students.Open(
            database::sqlWith(u"select * from 信息表 where %1 order by 班级,学号"_s, {classes}),
            m_library.Conn);
    });
}

bool ScoreExport::prepare()
{
    if (!isAllChosen())
        return false;
    openStudents();
    m_columns.emplace(ZDYxs(m_library, m_request));
    exportTrap([&] { m_gone = goneNote(m_library, m_request); });
    const QString missing = missingTotal(m_request);
    if (!missing.isEmpty())
        runtime::MsgBox(missing);
    return missing.isEmpty();
}

/// Without one of the two columns the charts have no data, which is told once.
void ScoreExport::tellMissingColumn() const
{
    const bool draws = m_request.layout == BlockLayout::RankChart;
    if (draws && !m_columns->haveChartData())
        runtime::Trap(" - Sub HuiTu/FormDaoChu")
            .fail(u"导出的列里没有“考试名称”或“总分年名”，图里没有数据。"_s);
}

bool ScoreExport::fill(excel::Application& application)
{
    application.setScreenUpdating(false);
    m_sheets.emplace(application);
    m_scores.emplace(m_library.Conn, m_request.exams, m_columns->names);
    m_run.emplace(StudentBlock::Run{m_library, m_request, *m_columns, m_figures});
    exportTrap([&] { m_total = int(m_students.RecordCount()); });
    const int total = m_total.value_or(0);
    if (total > 0)
        tellMissingColumn();
    while (m_done < total && !m_progress.cancelled()) {
        exportTrap([&] {
            const ExportedStudent student = currentStudent(m_students);
            m_progress.report(u"正在导出成绩... "_s + student.name, m_done, total);
            exportStudent(student);
        });
        exportTrap([&] { m_students.MoveNext(); });
        ++m_done;
    }
    m_progress.finish();
    return m_done == total;
}

StudentScores ScoreExport::scoresOf(const ExportedStudent& student)
{
    StudentScores scores;
    exportTrap([&] { scores = m_scores->of(student.id); });
    return scores;
}

void ScoreExport::exportStudent(const ExportedStudent& student)
{
    const StudentScores scores = scoresOf(student);
    findPlace(scores);
    StudentBlock block(*m_run, m_sheets->sheet(), student, scores, m_row);
    block.writeRows();
    if (m_request.layout == BlockLayout::BlankRows) {
        m_row = std::min(block.lastRow() + m_blankRows + 1, excel::lastGridRow + 1);
        return;
    }
    if (!block.drawChart())
        ++m_overfull;
    m_row += ExportSheets::pageRows;
}

/// Goes to the next page or sheet where the student's rows call for it.
void ScoreExport::findPlace(const StudentScores& scores)
{
    if (m_request.layout == BlockLayout::RankChart) {
        if (m_sheets->isFull())
            beginNextSheet();
        return;
    }
    if (!m_request.keepBlocksTogether)
        return;
    const int end = m_row + StudentBlock::rowsOf(m_request, scores);
    if (end > m_pageBegin + ExportSheets::pageRows && m_row > m_pageBegin) {
        if (m_sheets->isFull())
            beginNextSheet();
        else
            exportTrap([&] { m_sheets->sheet().addPageBreak(m_row); });
        m_pageBegin = m_row;
    }
    // A student who fills more than a page.
    while (m_row + StudentBlock::rowsOf(m_request, scores) > m_pageBegin + ExportSheets::pageRows)
        m_pageBegin += ExportSheets::pageRows;
}

void ScoreExport::beginNextSheet()
{
    exportTrap([&] { m_sheets->beginNext(); });
    m_row = 1;
}

void ScoreExport::tellEnd(ExportEnd end) const
{
    if (!m_gone.isEmpty())
        runtime::MsgBox(m_gone);
    if (m_overfull > 0)
        runtime::MsgBox(u"有 %1 页放不下成绩和图。请减少考试后重新导出。"_s.arg(m_overfull));
    if (end == ExportEnd::Cancelled) {
        runtime::MsgBox(u"导出已取消，已经写入的 %1 名学生留在表格里。"_s.arg(m_done));
        return;
    }
    if (m_total == 0)
        runtime::MsgBox(u"所选的班级没有学生，表格是空的。"_s);
    runtime::MsgBox(u"成绩导出完毕！"_s);
}

} // namespace

ScoreExportResult exportScores(library::ScoreLibrary& scoreLibrary,
                               const ScoreExportRequest& request, excel::Applications& applications,
                               runtime::Progress& progress,
                               const std::function<void(RunningText)>& tellRunning)
{
    std::optional<database::ReadBatch> reading(scoreLibrary.Conn);
    ScoreExport run(scoreLibrary, request, progress);
    if (!run.prepare())
        return {};
    tellRunning(RunningText::Shown);
    excel::Application& application = excel::OpenExcel(applications);
    const ExportEnd end = run.fill(application) ? ExportEnd::Finished : ExportEnd::Cancelled;
    reading.reset();
    run.tellEnd(end);
    tellRunning(RunningText::Hidden);
    // The window comes last, lest the screen of the closing text stands before it.
    application.setScreenUpdating(true);
    exportTrap([&] { application.setVisible(true); });
    exportTrap([&] { run.book().Worksheets().Item(1).Activate(); });
    return {end, &run.book()};
}

} // namespace exporting
