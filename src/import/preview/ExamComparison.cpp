#include "import/preview/ExamComparison.h"

#include "import/preview/ColumnFit.h"
#include "import/preview/SheetEntry.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Val;
using runtime::Value;

namespace {

QString shownScore(const Value& score)
{
    if (score.isNull())
        return {};
    return Val(score) == storedScore(u"缺考"_s) ? u"缺考"_s : score.text();
}

/// A text that counts as a number is not that number yet.
bool isSameScore(const Value& a, const Value& b)
{
    return a.isNull() == b.isNull() && a.isNumber() == b.isNumber()
           && (a.isNumber() ? Val(a) == Val(b) : a.text() == b.text());
}

} // namespace

ExamComparison::ExamComparison(library::ScoreLibrary& scoreLibrary, const excel::Worksheet& sheet,
                               const QString& exam, ScoreTarget target,
                               const std::vector<ImportSubject>& subjects)
    : m_library(scoreLibrary),
      m_sheet(sheet),
      m_exam(exam),
      m_target(target),
      m_subjects(subjects),
      m_examRows(scoreLibrary.Conn, exam)
{
}

bool ExamComparison::canLookUp(const QString& name) const
{
    // The original rule looks first rows up by name, which an apostrophe foils.
    return m_target != ScoreTarget::FirstRows || !name.contains(u'\'');
}

void ExamComparison::take(int sheetRow, const ScoredStudent& student, std::optional<RowName> name)
{
    m_onSheet.emplace(student.classNumber, student.number);
    if (canLookUp(student.name))
        m_sheetRows[rowOf(student, name)].push_back(sheetRow);
}

qint64 ExamComparison::rowOf(const ScoredStudent& student, std::optional<RowName> name)
{
    if (m_target == ScoreTarget::ExamRows) {
        qint64 row = m_examRows.find(student);
        if (row == 0)
            row = -qint64(m_sheetRows.size()) - 1;
        m_examRows.set(row, student);
        return row;
    }
    const std::optional<FirstRow> first =
        name ? firstRowOf(m_library.Conn, m_exam, student, *name) : std::nullopt;
    if (!first)
        return newRow(student);
    if (!first->isOfThisExam)
        m_otherExams.insert(first->row);
    return first->row;
}

/// A further row of the sheet finds the one that the former has written.
qint64 ExamComparison::newRow(const ScoredStudent& student)
{
    const auto number = -qint64(m_newRows.size()) - 1;
    return m_newRows.emplace(std::tuple(student.classNumber, student.number, student.name), number)
        .first->second;
}

std::map<qint64, ExamComparison::Stored> ExamComparison::storedRows() const
{
    QStringList subjects;
    for (const ImportSubject& subject : m_subjects)
        subjects.append(subject.KMName);
    database::Statement rows(
        m_library.Conn,
        database::sqlWith(u"select rowid, 班级, 学号, 姓名, 科类%1 from 成绩表 where 考试名称=?"_s,
                          {database::SqlPiece::moreNames(subjects)}));
    rows.bind({m_exam});
    std::map<qint64, Stored> found;
    while (rows.step()) {
        Stored& stored = found[rows.integer(0)];
        stored.student = {Val(rows.value(1)), Val(rows.value(2)), rows.text(3)};
        stored.stream = rows.text(4);
        for (int column = 5; column < rows.columnCount(); ++column)
            stored.scores.push_back(rows.value(
                column, database::ColumnType::fromDeclaration(rows.columnDeclaration(column))));
    }
    return found;
}

void ExamComparison::tell(const std::optional<QString>& stream, Preview& preview)
{
    const std::map<qint64, Stored> rows = storedRows();
    std::map<int, qint64> byLastRow;
    for (const auto& [row, sheetRows] : m_sheetRows) {
        if (!m_otherExams.contains(row))
            byLastRow[sheetRows.back()] = row;
    }
    for (const auto& [sheetRow, row] : byLastRow) {
        const auto stored = rows.find(row);
        if (stored != rows.end())
            compare(m_sheetRows.at(row), stored->second, preview);
        else
            preview.add(sheetEntry(PreviewKind::NewInExam, m_sheet, sheetRow,
                                   u"这次考试里还没有他的成绩，会新增一条。"_s));
    }
    if (stream)
        tellMissing(rows, *stream, preview);
}

std::pair<int, Value> ExamComparison::lastStored(const std::vector<int>& sheetRows,
                                                 const ImportSubject& subject,
                                                 const database::Column& column)
{
    for (size_t i = sheetRows.size(); i > 0; --i) {
        const int row = sheetRows[i - 1];
        const ScoreCell cell = m_cells.read(m_sheet.Cells(row, subject.KMColumn), 0);
        ColumnFit fit = fitInto(column, storedScore(cell.text));
        if (fit.refusal.isEmpty())
            return {row, std::move(fit.stored)};
    }
    return {};
}

void ExamComparison::compare(const std::vector<int>& sheetRows, const Stored& stored,
                             Preview& preview)
{
    const database::TableColumns& columns = m_library.Conn.columns(u"成绩表"_s);
    for (size_t i = 0; i < m_subjects.size(); ++i) {
        const QString& subject = m_subjects[i].KMName;
        const auto [sheetRow, score] =
            lastStored(sheetRows, m_subjects[i], columns.at(columns.find(subject)));
        if (sheetRow == 0 || isSameScore(score, stored.scores[i])) {
            ++preview.unchanged;
            continue;
        }
        PreviewEntry entry = sheetEntry(PreviewKind::Changed, m_sheet, sheetRow, {});
        entry.subject = subject;
        entry.before = shownScore(stored.scores[i]);
        entry.after = shownScore(score);
        preview.add(std::move(entry));
    }
}

void ExamComparison::tellMissing(const std::map<qint64, Stored>& rows, const QString& stream,
                                 Preview& preview) const
{
    int others = 0;
    for (const auto& [row, stored] : rows) {
        const ScoredStudent& student = stored.student;
        if (m_sheetRows.contains(row) || m_onSheet.contains({student.classNumber, student.number}))
            continue;
        if (stored.stream == stream)
            preview.add({PreviewKind::Missing,
                         0,
                         runtime::doubleText(student.classNumber),
                         runtime::doubleText(student.number),
                         student.name,
                         {},
                         {},
                         {},
                         u"有这次考试的成绩，表里没有他；他的成绩保持不变。"_s});
        else
            ++others;
    }
    if (others > 0)
        preview.notes.append(
            u"这次考试里还有别的科类 %1 人的成绩，不在这张表的范围里，保持不变。"_s.arg(others));
}

} // namespace importing
