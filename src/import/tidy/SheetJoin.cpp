#include "import/tidy/SheetJoin.h"

#include <algorithm>

#include "import/tidy/Scores.h"

namespace tidy {

using namespace Qt::StringLiterals;
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

QString SheetJoin::nameOf(int sheet) const
{
    return m_sheets[size_t(sheet)].proposal().name;
}

bool SheetJoin::contradicts(const ResultRow& row, const StudentRow& student) const
{
    const std::vector<ColumnProposal>& columns =
        m_sheets[size_t(student.source.sheet)].proposal().columns;
    return std::any_of(columns.begin(), columns.end(), [&](const ColumnProposal& column) {
        if (column.use.field != Field::Subject)
            return false;
        const Value former = contentOf(row, column.use.name, m_sheets);
        const Value cell = cellOf(student.source, column.use.name, m_sheets);
        return !isBlank(former) && !isBlank(cell) && !areEqual(former, cell);
    });
}

bool SheetJoin::sharesColumns(const ResultRow& row, int sheet) const
{
    const std::vector<ColumnProposal>& columns = m_sheets[size_t(sheet)].proposal().columns;
    return std::any_of(columns.begin(), columns.end(), [&](const ColumnProposal& column) {
        return column.use.field == Field::Subject
               && std::any_of(row.parts.begin(), row.parts.end(), [&](const SourceRow* part) {
                      return m_sheets[size_t(part->sheet)].columnNamed(column.use.name) > 0;
                  });
    });
}

void SheetJoin::joinTo(ResultRow& row, StudentRow& student)
{
    const int sheet = student.source.sheet;
    const SourceRow& first = *row.parts.front();
    const bool isShared = sharesColumns(row, sheet);
    const bool isContradiction = isShared && contradicts(row, student);
    if (isShared) {
        Overlap& overlap = (isContradiction ? m_contradicting : m_equal)[{first.sheet, sheet}];
        if (++overlap.rows == 1)
            overlap.first = u"%1班%2号%3"_s.arg(QString::number(student.classNumber),
                                                QString::number(student.number), student.name);
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
    const SourceRow& other = *row.parts.front();
    const bool isOnSheet =
        std::any_of(row.parts.begin(), row.parts.end(),
                    [&](const SourceRow* part) { return part->sheet == student.source.sheet; });
    if (m_goal == Goal::ExamScores && !isOnSheet && row.student->name == student.name) {
        joinTo(row, student);
        return;
    }
    student.remarks.push_back({.kind = RemarkKind::Twice,
                               .row = student.source.row,
                               .text = u"和“%1”第 %2 行是同一个班级和学号。"_s.arg(
                                   nameOf(other.sheet), QString::number(other.row))});
    m_rows.push_back({&student, {&student.source}});
}

QStringList SheetJoin::questions() const
{
    QStringList all;
    for (const auto& [sheets, overlap] : m_contradicting)
        all.append(u"“%1”和“%2”里有 %3 名相同的学生成绩不同（如%4），请确定用哪一张数据表。"_s.arg(
            nameOf(sheets.first), nameOf(sheets.second), QString::number(overlap.rows),
            overlap.first));
    return all;
}

QStringList SheetJoin::warnings() const
{
    QStringList all;
    for (const auto& [sheets, overlap] : m_equal)
        all.append(u"“%1”和“%2”里有 %3 名相同的学生，成绩也相同，只取一次。"_s.arg(
            nameOf(sheets.first), nameOf(sheets.second), QString::number(overlap.rows)));
    return all;
}

} // namespace tidy
