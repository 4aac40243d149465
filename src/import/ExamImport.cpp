#include "import/ExamImport.h"

#include <optional>

#include <QFileInfo>

#include "import/ExamSheet.h"
#include "import/ExamWriter.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"
#include "scoring/Scoring.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::MsgBox;
using runtime::Trap;

namespace {

const Trap trap{" - Private Sub Command1_Click/FormDaoRu"};

constexpr int firstSubjectColumn = 4;

/// Asks a guard; one that cannot read the library stops the import.
template <class Guard> bool passes(Guard&& guard)
{
    bool passed = false;
    return trap([&] { passed = guard(); }) && passed;
}

} // namespace

ExamImport::ExamImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                       ImportState& state, ImportQuestions& questions, runtime::Progress& progress)
    : m_library(scoreLibrary),
      m_intake(intake),
      m_state(state),
      m_questions(questions),
      m_progress(progress),
      m_classes(scoreLibrary),
      m_students(scoreLibrary.Conn),
      m_guards(scoreLibrary, m_classes, m_students)
{
}

ImportResult ExamImport::run(const ExamImportRequest& request)
{
    m_classes.forget();
    m_students.forget();
    if (!library::hasRoomForBackup(m_library, request.backup) || !prepare(request))
        return ImportResult::Stopped;
    const library::BackupBeforeWrite copying(m_library, m_progress, request.backup,
                                             library::Occasion::examImport(request.examName));
    if (!takeRows(request.newStudents))
        return ImportResult::Stopped;
    m_sheet = nullptr;
    if (m_state.ErrorCount > 0)
        m_questions.errorList(m_state);
    if (!writeExam())
        return ImportResult::Stopped;
    finish(request.afterwards);
    return ImportResult::Finished;
}

bool ExamImport::prepare(const ExamImportRequest& request)
{
    if (!QFileInfo(request.workbookPath).isFile() || !m_intake.checkWorkbookOpen()
        || !checkExamName(request))
        return false;
    m_state.ExamName = request.examName;
    if (!openSheet(request.sheetName) || !passGuards(request))
        return false;
    m_questions.fullMarks(m_state, m_stream + u"科："_s + m_state.ExamName);
    return trap([&] { sizeGrids(); });
}

bool ExamImport::checkExamName(const ExamImportRequest& request) const
{
    if (!passes([&] { return m_guards.isUsableName(request.examName); }))
        return false;
    if (request.examChoice == ExamChoice::Typed)
        return passes([&] { return m_guards.mayStayUnlisted(request.examName); });
    const QString question =
        u"确实要将数据到入 "_s + request.examName + u" 吗？原有数据将被新数据替换！"_s;
    return MsgBox(question, u"提示"_s, Buttons::OkCancel) == Answer::Ok;
}

bool ExamImport::openSheet(const QString& sheetName)
{
    std::optional<ExamSheet> found = openExamSheet(m_intake, m_library.catalogue, sheetName);
    m_sheet = found ? found->sheet : nullptr;
    // A sheet with other headings leaves the errors of the former import to be corrected.
    if (found)
        m_state.KMImport = std::move(found->subjects);
    return found && !m_state.KMImport.empty();
}

bool ExamImport::passGuards(const ExamImportRequest& request)
{
    const SheetRows rows(*m_sheet);
    noteEnd(rows);
    return passes([&] { return m_guards.giveStreams(rows, request.streamOfNewClasses); })
           && takeStream() && passes([&] { return m_guards.mayReadTexts(rows, m_state.KMImport); })
           && passes([&] { return settleTarget(rows, request.examChoice); });
}

bool ExamImport::settleTarget(const SheetRows& rows, ExamChoice examChoice)
{
    m_target = ScoreTarget::NewRows;
    if (examChoice == ExamChoice::Typed)
        return m_guards.mayRepeat(rows, m_state.ExamName);
    const std::optional<ScoreTarget> target =
        m_guards.overwrittenRows(rows, m_state.ExamName, m_stream);
    m_target = target.value_or(m_target);
    return target.has_value();
}

/// The class of the first row stands for the whole sheet.
bool ExamImport::takeStream()
{
    return trap([&] {
        const runtime::Phase phase;
        m_stream = m_classes.streamOf(m_sheet->Cells(SheetRows::First, 1)).text();
    });
}

void ExamImport::noteEnd(const SheetRows& rows)
{
    m_endNotice.clear();
    const size_t left = rows.rowsLeft(m_state.KMImport).size();
    if (left > 0)
        m_endNotice =
            rows.whyItEnds()
            + u"，导入到此为止，从第 %1 行起有内容的 %2 行没有导入。"_s.arg(rows.end()).arg(left);
}

void ExamImport::sizeGrids()
{
    grid::FlexGrid& staging = m_state.MFGData;
    grid::FlexGrid& errors = m_state.errors;
    staging = grid::FlexGrid();
    staging.setCols(firstSubjectColumn - 1 + int(m_state.KMImport.size()));
    staging.setRows(1);
    errors = grid::FlexGrid();
    errors.setCols(7);
    int column = 0;
    for (; column < firstSubjectColumn - 1; ++column) {
        const QString heading = m_sheet->Cells(1, column + 1).text();
        staging.setTextMatrix(0, column, heading);
        errors.setTextMatrix(0, column, heading);
    }
    for (const ImportSubject& subject : m_state.KMImport)
        staging.setTextMatrix(0, column++, subject.KMName);
    errors.setTextMatrix(0, 3, u"科目"_s);
    errors.setTextMatrix(0, 4, u"成绩"_s);
    errors.setTextMatrix(0, 5, u"错误原因"_s);
    errors.setColWidth(6, 0);
    m_state.ErrorCount = 0;
    m_state.badCells.clear();
    m_state.studentIds = {0};
}

bool ExamImport::takeRows(NewStudents newStudents)
{
    SheetPass::Outcome outcome = SheetPass::Outcome::Cancelled;
    return trap([&] {
               IntakeBatch batch(m_library.Conn);
               // Others can have written while the guards asked.
               m_students.forgetIfOutdated();
               m_classes.forget();
               m_dataVersion = m_library.Conn.dataVersion();
               outcome = passSheet(batch, newStudents);
               // What was answered stays, however the pass ended.
               batch.commit();
           })
           && outcome != SheetPass::Outcome::Cancelled;
}

SheetPass::Outcome ExamImport::passSheet(IntakeBatch& batch, NewStudents newStudents)
{
    StudentMatch students(m_library, m_classes, m_students, batch);
    SheetPass pass(*m_sheet, m_state, students, newStudents);
    const int rows = m_sheet->lastUsedRow() - 1;
    SheetPass::Outcome outcome = SheetPass::Outcome::Continue;
    for (int row = SheetRows::First; outcome == SheetPass::Outcome::Continue; ++row) {
        m_progress.report(TakingRows, row - SheetRows::First, rows);
        outcome = m_progress.cancelled() ? SheetPass::Outcome::Cancelled : pass.takeRow(row);
    }
    return outcome;
}

bool ExamImport::writeExam()
{
    bool complete = false;
    return trap([&] {
               database::WriteBatch batch(m_library.Conn);
               complete = writeRows();
               if (complete)
                   batch.commit();
           })
           && complete;
}

bool ExamImport::writeRows()
{
    rematchStudents();
    ExamWriter writer(m_library, m_classes, m_state, m_target);
    writer.writeExamRow(m_stream);
    writer.beginScores();
    const int rows = m_state.MFGData.Rows();
    for (int row = 1; row < rows; ++row) {
        m_progress.report(TakingRows, row, rows);
        if (m_progress.cancelled())
            return false;
        writer.writeScoreRow(row);
    }
    return true;
}

/// Others can write while a question waits or the list of errors stands open.
void ExamImport::rematchStudents()
{
    if (m_library.Conn.dataVersion() == m_dataVersion)
        return;
    m_classes.forget();
    m_students.forget();
    for (int row = 1; row < m_state.MFGData.Rows(); ++row) {
        const QString& number = m_state.MFGData.TextMatrix(row, 1);
        const KnownStudents::Student* student =
            number.isEmpty() ? nullptr
                             : m_students.find(runtime::Val(m_state.MFGData.TextMatrix(row, 0)),
                                               runtime::Val(number));
        m_state.studentIds[size_t(row)] = student == nullptr ? 0 : student->id;
    }
}

void ExamImport::finish(Afterwards afterwards)
{
    trap([&] {
        const runtime::Phase phase;
        m_library.catalogue.GetKSXX();
    });
    const QString ranking = u"导入完成，计算排名..."_s;
    m_progress.report(ranking, 0, 0);
    if (afterwards == Afterwards::Score) {
        runtime::PartProgress progress(m_progress, [&](const QString&, int done, int total) {
            m_progress.report(ranking, done, total);
        });
        scoring::Scoring(m_library).score(m_state.ExamName, progress);
    }
    trap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    m_progress.finish();
    if (!m_endNotice.isEmpty())
        MsgBox(m_endNotice);
    MsgBox(u"导入完成！"_s);
}

} // namespace importing
