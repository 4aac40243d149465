#pragma once

#include "import/ClassAnswers.h"
#include "import/ImportGuards.h"
#include "import/ImportQuestions.h"
#include "import/KnownStudents.h"
#include "import/SheetPass.h"
#include "import/WorkbookIntake.h"
#include "platform/runtime/Progress.h"

namespace importing {

/// Where the exam's name comes from. A typed name is a new exam, even if one of that name exists:
/// this is how an exam comes to have a row for each stream.
enum class ExamChoice { PickedFromList, Typed };

/// "导入后计算总分".
enum class Afterwards { Score, LeaveUnscored };

/// What is to be imported, and how.
struct ExamImportRequest
{
    QString workbookPath;
    QString sheetName;
    QString examName;
    ExamChoice examChoice = ExamChoice::Typed;
    NewStudents newStudents = NewStudents::Ask;
    Afterwards afterwards = Afterwards::LeaveUnscored;
    Backup backup = Backup::Make;
    /// The stream of classes that have no student yet; empty to ask for it.
    QString streamOfNewClasses = {};
};

/// Takes one sheet of exam results into the library.
class ExamImport
{
public:
    ExamImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake, ImportState& state,
               ImportQuestions& questions, runtime::Progress& progress);

    /// The whole import. When it stops, students and names that were taken in so far stay.
    ImportResult run(const ExamImportRequest& request);

private:
    bool prepare(const ExamImportRequest& request);
    bool checkExamName(const ExamImportRequest& request) const;
    bool openSheet(const QString& sheetName);
    /// What the sheet holds and the library would lose; settles stream and target.
    bool passGuards(const ExamImportRequest& request);
    bool settleTarget(const SheetRows& rows, ExamChoice examChoice);
    bool takeStream();
    void noteEnd(const SheetRows& rows);
    void sizeGrids();
    /// The first pass: matches the students, judges the scores, fills the staging grid.
    bool takeRows(NewStudents newStudents);
    SheetPass::Outcome passSheet(IntakeBatch& batch, NewStudents newStudents);
    bool writeExam();
    bool writeRows();
    void rematchStudents();
    void finish(Afterwards afterwards);

    library::ScoreLibrary& m_library;
    WorkbookIntake& m_intake;
    ImportState& m_state;
    ImportQuestions& m_questions;
    runtime::Progress& m_progress;
    ClassAnswers m_classes;
    KnownStudents m_students;
    ImportGuards m_guards;
    excel::Worksheet* m_sheet = nullptr;
    QString m_stream;
    ScoreTarget m_target = ScoreTarget::NewRows;
    /// That of the library when the first student was matched.
    qint64 m_dataVersion = 0;
    /// Says which rows of the sheet were not taken; empty if all were.
    QString m_endNotice;
};

} // namespace importing
