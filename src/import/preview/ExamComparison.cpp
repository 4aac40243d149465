#include "import/preview/ExamComparison.h"

#include "import/preview/SheetEntry.h"
#include "platform/database/Error.h"
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

bool ExamComparison::take(int sheetRow, const ScoredStudent& student, RowName name)
{
    m_onSheet.emplace(student.classNumber, student.number);
    // The original rule looks first rows up by name, which an apostrophe foils.
    if (m_target == ScoreTarget::FirstRows && student.name.contains(u'\''))
        return false;
    m_sheetRows[rowOf(student, name)] = sheetRow;
    return true;
}

qint64 ExamComparison::rowOf(const ScoredStudent& student, RowName name)
{
    if (m_target == ScoreTarget::ExamRows) {
        qint64 row = m_examRows.find(student);
        if (row == 0)
            row = -qint64(m_sheetRows.size()) - 1;
        m_examRows.set(row, student);
        return row;
    }
    const std::optional<FirstRow> first = firstRowOf(m_library.Conn, m_exam, student, name);
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
    std::map<int, const Stored*> bySheetRow;
    for (const auto& [row, sheetRow] : m_sheetRows) {
        const auto stored = rows.find(row);
        if (!m_otherExams.contains(row))
            bySheetRow[sheetRow] = stored == rows.end() ? nullptr : &stored->second;
    }
    for (const auto& [sheetRow, stored] : bySheetRow) {
        if (stored != nullptr)
            compare(sheetRow, *stored, preview);
        else
            preview.add(sheetEntry(PreviewKind::NewInExam, m_sheet, sheetRow,
                                   u"这次考试里还没有他的成绩，会新增一条。"_s));
    }
    if (stream)
        tellMissing(rows, *stream, preview);
}

void ExamComparison::compare(int sheetRow, const Stored& stored, Preview& preview)
{
    const database::TableColumns& columns = m_library.Conn.columns(u"成绩表"_s);
    for (size_t i = 0; i < m_subjects.size(); ++i) {
        const ImportSubject& subject = m_subjects[i];
        const ScoreCell cell = m_cells.read(m_sheet.Cells(sheetRow, subject.KMColumn), 0);
        const database::Column& column = columns.at(columns.find(subject.KMName));
        Value score = stored.scores[i];
        QString remark;
        try {
            score = column.type.converted(storedScore(cell.text), column.name);
        } catch (const database::Error& error) {
            remark = error.description();
        }
        if (remark.isEmpty() && score.isNull() == stored.scores[i].isNull()
            && Val(score) == Val(stored.scores[i])) {
            ++preview.unchanged;
            continue;
        }
        PreviewEntry entry = sheetEntry(PreviewKind::Changed, m_sheet, sheetRow, remark);
        entry.subject = subject.KMName;
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
