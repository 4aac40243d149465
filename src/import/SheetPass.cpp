#include "import/SheetPass.h"

#include "import/SheetRows.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::doubleText;

namespace {

constexpr int firstScoreColumn = 3;

} // namespace

SheetPass::SheetPass(const excel::Worksheet& sheet, ImportState& state, StudentMatch& students,
                     NewStudents newStudents)
    : m_sheet(sheet), m_state(state), m_students(students), m_newStudents(newStudents)
{
}

SheetPass::Outcome SheetPass::takeRow(int row)
{
    if (row > SheetRows::Last || isEmptyCell(m_sheet.Cells(row, 2)))
        return Outcome::EndOfSheet;
    grid::FlexGrid& staging = m_state.MFGData;
    staging.setRows(row);
    const auto [classNumber, number, name] = studentIn(m_sheet, row);
    const QString libraryName = m_students.TestStuName(classNumber, number, name, m_newStudents);
    const qint64 id = m_students.matchedId();
    if (!nameAccepted(libraryName, classNumber, number, name))
        return Outcome::Cancelled;
    const QStringList student{m_scores.textOf(classNumber), m_scores.textOf(number), name};
    for (int col = 0; col < firstScoreColumn; ++col)
        staging.setTextMatrix(row - 1, col, student[col]);
    // A row can be dropped by this name.
    const bool dropped = libraryName == "-1"_L1;
    if (dropped)
        staging.setTextMatrix(row - 1, 1, {});
    m_state.studentIds.push_back(dropped ? 0 : id);
    judgeScores(row, student);
    return Outcome::Continue;
}

bool SheetPass::nameAccepted(const QString& libraryName, double classNumber, double number,
                             const QString& name)
{
    if (libraryName.isEmpty() || libraryName == "-1"_L1)
        return true;
    const Answer answer = m_students.askNameMismatch(classNumber, number, name, libraryName);
    if (answer == Answer::Yes)
        m_students.SetStuName(classNumber, number, name);
    return answer != Answer::Cancel;
}

void SheetPass::judgeScores(int row, const QStringList& student)
{
    int column = firstScoreColumn;
    for (const ImportSubject& subject : m_state.KMImport) {
        const ScoreCell cell = m_scores.read(m_sheet.Cells(row, subject.KMColumn), subject.KMFull);
        if (!cell.fault.isEmpty()) {
            noteBadScore(student, subject, cell);
            m_state.badCells.push_back({row - 1, column});
        }
        m_state.MFGData.setTextMatrix(row - 1, column++, cell.text);
    }
}

void SheetPass::noteBadScore(const QStringList& student, const ImportSubject& subject,
                             const ScoreCell& cell)
{
    m_state.ErrorCount += 1;
    const int row = int(m_state.ErrorCount);
    grid::FlexGrid& errors = m_state.errors;
    errors.setRows(row + 1);
    int column = 0;
    for (const QString& text :
         student + QStringList{subject.KMName, doubleText(cell.score), cell.fault})
        errors.setTextMatrix(row, column++, text);
}

} // namespace importing
