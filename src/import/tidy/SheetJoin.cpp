#include "import/tidy/SheetJoin.h"

#include <algorithm>

#include "import/tidy/Scores.h"
#include "platform/runtime/Numbers.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Value;

namespace {

bool isBlank(const Value& cell)
{
    return cell.isNull() || (cell.kind() == Value::Kind::Text && cell.text().trimmed().isEmpty());
}

bool areEqual(const Value& a, const Value& b)
{
    const ScoreCell one = scoreIn(a);
    const ScoreCell other = scoreIn(b);
    return one.kind == other.kind && one.number == other.number && one.text == other.text;
}

Value cellOf(const SourceRow& part, const QString& column, const SheetReadings& sheets)
{
    const SheetReading& sheet = sheets[size_t(part.sheet)];
    const int number = sheet.columnNamed(column);
    return number > 0 ? sheet.view().value(part.row, number) : Value();
}

} // namespace

Value contentOf(const ResultRow& row, const QString& column, const SheetReadings& sheets)
{
    for (const SourceRow* part : row.parts) {
        Value cell = cellOf(*part, column, sheets);
        if (!isBlank(cell))
            return cell;
    }
    return {};
}

void SheetJoin::Overlap::add(const StudentRow& student)
{
    if (++rows == 1)
        first = u"%1班%2号%3"_s.arg(doubleText(student.classNumber), doubleText(student.number),
                                    student.name);
}

QString SheetJoin::nameOf(int sheet) const
{
    return m_sheets[size_t(sheet)].proposal().name;
}

/// Whether the two rows of one sheet say the same.
bool SheetJoin::areAlike(const SourceRow& one, const StudentRow& student) const
{
    const SheetReading& sheet = m_sheets[size_t(one.sheet)];
    const std::vector<ColumnProposal>& columns = sheet.proposal().columns;
    return std::all_of(columns.begin(), columns.end(), [&](const ColumnProposal& column) {
        if (column.use.field == Field::Leave)
            return true;
        const Value former = sheet.view().value(one.row, column.column);
        const Value cell = sheet.view().value(student.source.row, column.column);
        return isBlank(former) == isBlank(cell) && areEqual(former, cell);
    });
}

template <class Said>
bool SheetJoin::anyShared(const ResultRow& row, const StudentRow& student, Said&& said) const
{
    const std::vector<ColumnProposal>& columns =
        m_sheets[size_t(student.source.sheet)].proposal().columns;
    return std::any_of(columns.begin(), columns.end(), [&](const ColumnProposal& column) {
        const QString& subject = column.use.name;
        return column.use.field == Field::Subject
               && std::any_of(row.parts.begin(), row.parts.end(),
                              [&](const SourceRow* part) {
                                  return m_sheets[size_t(part->sheet)].columnNamed(subject) > 0;
                              })
               && said(contentOf(row, subject, m_sheets),
                       cellOf(student.source, subject, m_sheets));
    });
}

void SheetJoin::joinTo(ResultRow& row, StudentRow& student)
{
    const auto isEither = [](const Value&, const Value&) { return true; };
    const auto areDifferent = [](const Value& former, const Value& cell) {
        return !isBlank(former) && !isBlank(cell) && !areEqual(former, cell);
    };
    const auto isOneBlank = [](const Value& former, const Value& cell) {
        return isBlank(former) != isBlank(cell);
    };
    if (anyShared(row, student, isEither)) {
        const SheetPair sheets{row.parts.front()->sheet, student.source.sheet};
        const bool isContradiction = anyShared(row, student, areDifferent);
        (isContradiction ? m_contradicting : m_agreeing)[sheets].add(student);
        if (!isContradiction && anyShared(row, student, isOneBlank))
            m_filled[sheets].add(student);
    }
    row.parts.push_back(&student.source);
}

void SheetJoin::add(StudentRow& student)
{
    const auto known = m_rowOf.constFind({student.classNumber, student.number});
    if (known == m_rowOf.constEnd()) {
        m_rowOf.insert({student.classNumber, student.number}, m_rows.size());
        m_rows.push_back({&student, {&student.source}});
        return;
    }
    ResultRow& row = m_rows[*known];
    const auto onSheet =
        std::find_if(row.parts.begin(), row.parts.end(),
                     [&](const SourceRow* part) { return part->sheet == student.source.sheet; });
    const bool isOnSheet = onSheet != row.parts.end();
    if (isOnSheet && areAlike(**onSheet, student))
        noteTwice(student, **onSheet, u"内容相同，只取一次。"_s);
    else if (isOnSheet || m_goal == Goal::StudentList || !fits(row, student))
        ask(student, isOnSheet ? **onSheet : *row.parts.front(), *row.student);
    else
        joinTo(row, student);
}

/// A sheet without names says nothing against those of another.
bool SheetJoin::fits(ResultRow& row, const StudentRow& student)
{
    if (row.student->name.isEmpty())
        row.student = &student;
    return student.name.isEmpty() || row.student->name == student.name;
}

void SheetJoin::noteTwice(StudentRow& student, const SourceRow& other, const QString& what) const
{
    student.remarks.push_back({.kind = RemarkKind::Twice,
                               .row = student.source.row,
                               .text = u"和“%1”第 %2 行是同一个班级和学号，%3"_s.arg(
                                   nameOf(other.sheet), QString::number(other.row), what)});
}

void SheetJoin::ask(StudentRow& student, const SourceRow& other, const StudentRow& former)
{
    noteTwice(student, other, u"内容不同。"_s);
    if (++m_twice.rows > 1)
        return;
    m_twice.first = u"“%1”第 %2 行%5和“%3”第 %4 行%6"_s.arg(
        nameOf(other.sheet), QString::number(other.row), nameOf(student.source.sheet),
        QString::number(student.source.row), former.name, student.name);
}

QStringList SheetJoin::questions() const
{
    QStringList all;
    for (const auto& [sheets, overlap] : m_contradicting)
        all.append(u"“%1”和“%2”里有 %3 名相同的学生成绩不同（如%4），请确定用哪一张数据表。"_s.arg(
            nameOf(sheets.first), nameOf(sheets.second), QString::number(overlap.rows),
            overlap.first));
    if (m_twice.rows > 0)
        all.append(u"有 %1 行的班级和学号和别的行相同，内容不同（如%2），请确定用哪一行。"_s.arg(
            QString::number(m_twice.rows), m_twice.first));
    return all;
}

QStringList SheetJoin::warnings() const
{
    QStringList all;
    for (const auto& [sheets, overlap] : m_agreeing) {
        const auto filled = m_filled.find(sheets);
        const QString said =
            filled == m_filled.end()
                ? u"成绩也相同，只取一次。"_s
                : u"其中 %1 名的空白用另一张表的成绩填上（如%2），其余成绩相同。"_s.arg(
                    QString::number(filled->second.rows), filled->second.first);
        all.append(u"“%1”和“%2”里有 %3 名相同的学生，%4"_s.arg(
            nameOf(sheets.first), nameOf(sheets.second), QString::number(overlap.rows), said));
    }
    return all;
}

} // namespace tidy
