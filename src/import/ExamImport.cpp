#include "import/ExamImport.h"

#include <optional>

#include <QFileInfo>

#include "import/ExamWriter.h"
#include "import/SheetPass.h"
#include "library/LibraryBackup.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Trap.h"
#include "scoring/Scoring.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::Icon;
using runtime::MsgBox;
using runtime::Trap;

namespace {

const Trap trap{" - Private Sub Command1_Click/FormDaoRu"};

/// Rows that are looked at; a sheet ends earlier at the first empty number.
constexpr int lastRow = 65555;
constexpr int firstSubjectColumn = 4;

} // namespace

ExamImport::ExamImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                       ImportState& state, ImportQuestions& questions, runtime::Progress& progress)
    : m_library(scoreLibrary),
      m_intake(intake),
      m_state(state),
      m_questions(questions),
      m_progress(progress),
      m_classes(scoreLibrary),
      m_students(scoreLibrary.Conn)
{
}

ImportResult ExamImport::run(const ExamImportRequest& request)
{
    m_classes.forget();
    m_students.forget();
    if (!prepare(request))
        return ImportResult::Stopped;
    std::optional<library::BackupBeforeWrite> backup;
    if (request.backup == Backup::Make)
        backup.emplace(m_library, m_progress);
    if (!takeRows(request.newStudents))
        return ImportResult::Stopped;
    m_sheet = nullptr;
    if (m_state.ErrorCount > 0)
        m_questions.errorList(m_state);
    if (!writeExam(request.examChoice))
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
    m_sheet = m_intake.openSheet(request.sheetName);
    if (m_sheet == nullptr)
        return false;
    if (!trap([&] { findSubjects(); }))
        return false;
    if (m_state.KMImport.empty()) {
        MsgBox(u"没有找到科目，程序退出！"_s, u"错误"_s, Buttons::Ok, Icon::Critical);
        return false;
    }
    // The class of the first row stands for the whole sheet.
    trap([&] { m_stream = m_library.students.GetBJKL(m_sheet->Cells(2, 1)).text(); });
    m_questions.fullMarks(m_state, m_stream + u"科："_s + m_state.ExamName);
    return trap([&] { sizeGrids(); });
}

bool ExamImport::checkExamName(const ExamImportRequest& request) const
{
    if (request.examName.isEmpty()) {
        MsgBox(u"请输入考试名称！"_s, u"错误"_s, Buttons::Ok, Icon::Critical);
        return false;
    }
    if (request.examChoice == ExamChoice::Typed)
        return true;
    const QString question =
        u"确实要将数据到入 "_s + request.examName + u" 吗？原有数据将被新数据替换！"_s;
    return MsgBox(question, u"提示"_s, Buttons::OkCancel) == Answer::Ok;
}

void ExamImport::findSubjects()
{
    m_state.KMImport.clear();
    for (int column = firstSubjectColumn; column <= LastColumn; ++column) {
        const QString heading = m_sheet->Cells(1, column).text();
        if (m_library.catalogue.isKeMu(heading))
            m_state.KMImport.push_back({heading, 0, short(column)});
    }
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
}

bool ExamImport::takeRows(NewStudents newStudents)
{
    std::optional<IntakeBatch> batch;
    if (!trap([&] { batch.emplace(m_library.Conn); }))
        return false;
    StudentMatch students(m_library, m_classes, m_students, *batch);
    SheetPass pass(*m_sheet, m_state, students, newStudents);
    SheetPass::Outcome outcome = SheetPass::Outcome::Continue;
    const bool read = trap([&] {
        const int rows = m_sheet->lastUsedRow() - 1;
        for (int row = 2; row <= lastRow && outcome == SheetPass::Outcome::Continue; ++row) {
            m_progress.report(TakingRows, row - 2, rows);
            outcome = m_progress.cancelled() ? SheetPass::Outcome::Cancelled : pass.takeRow(row);
            if (!batch->isUsable())
                return;
        }
    });
    // What was answered stays, however the pass ended.
    const bool written = batch->isUsable() && trap([&] { batch->commit(); });
    return read && written && outcome != SheetPass::Outcome::Cancelled;
}

bool ExamImport::writeExam(ExamChoice examChoice)
{
    bool complete = false;
    trap([&] {
        database::WriteBatch batch(m_library.Conn);
        // Others can write while the list of errors stands open.
        m_students.forgetIfOutdated();
        ExamWriter writer(m_library, m_classes, m_students, m_state, examChoice);
        writer.writeExamRow(m_stream);
        if (m_library.Conn.batchBroken())
            return;
        writer.beginScores();
        const int rows = m_state.MFGData.Rows();
        for (int row = 1; row < rows; ++row) {
            m_progress.report(TakingRows, row, rows);
            if (m_progress.cancelled())
                return;
            writer.writeScoreRow(row);
            if (m_library.Conn.batchBroken())
                return;
        }
        batch.commit();
        complete = true;
    });
    return complete;
}

void ExamImport::finish(Afterwards afterwards)
{
    m_library.catalogue.GetKSXX();
    const QString ranking = u"导入完成，计算排名..."_s;
    m_progress.report(ranking, 0, 0);
    if (afterwards == Afterwards::Score) {
        runtime::PartProgress progress(m_progress, [&](const QString&, int done, int total) {
            m_progress.report(ranking, done, total);
        });
        scoring::Scoring(m_library).score(m_state.ExamName, progress);
    }
    m_library.catalogue.GetKeLei();
    m_library.catalogue.GetKSXX();
    m_library.notifyChanged();
    m_progress.finish();
    MsgBox(u"导入完成！"_s);
}

} // namespace importing
