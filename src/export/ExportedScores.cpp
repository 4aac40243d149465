#include "export/ExportedScores.h"

#include "platform/database/Error.h"
#include "platform/database/SqlPieces.h"

namespace exporting {

using namespace Qt::StringLiterals;
using runtime::Value;

ExportedStudent currentStudent(database::Recordset& students)
{
    const auto field = [&](const QString& name) { return students.Fields(name).Value(); };
    return {qint64(field(u"ID"_s).toDouble()), field(u"班级"_s), field(u"学号"_s).text(),
            field(u"姓名"_s).text(), field(u"科类"_s).text()};
}

QString StudentScores::firstStream() const
{
    if (m_rows.empty())
        throw database::Error(database::Failure::Sql, database::noCurrentRow());
    return m_rows.front().front().text();
}

const Value& StudentScores::value(int row, int column) const
{
    if (!m_missing[column].isEmpty())
        throw database::Error(database::Failure::Sql, database::noSuchColumn(m_missing[column]));
    return m_rows[size_t(row)][size_t(column) + 1];
}

ExportedScores::ExportedScores(database::Connection& connection, const QStringList& exams,
                               const QStringList& columns)
    : m_conn(connection), m_values(exams.begin(), exams.end()), m_columns(columns)
{
    m_values.emplace_back(); // of the student
}

QStringList ExportedScores::readNames()
{
    const database::TableColumns& known = m_conn.columns(u"成绩表"_s);
    QStringList names{u"科类"_s};
    m_empty.m_missing.clear();
    for (const QString& column : m_columns) {
        const bool isThere = known.find(column) >= 0;
        m_empty.m_missing.append(isThere ? QString() : column);
        // What stands in the place of a missing column is never looked at.
        names.append(isThere ? column : names.first());
    }
    return names;
}

void ExportedScores::prepare()
{
    const QStringList names = readNames();
    const int exams = int(m_values.size()) - 1;
    m_statement.emplace(
        m_conn,
        database::sqlWith(u"select %1 from 成绩表 where 考试名称 in (%2) and id=%3 "
                          "order by 考试编号, rowid"_s,
                          {database::SqlPiece::names(names), database::SqlPiece::places(1, exams),
                           database::SqlPiece::places(exams + 1, 1)}));
    m_types.clear();
    for (int column = 0; column < m_statement->columnCount(); ++column)
        m_types.push_back(
            database::ColumnType::fromDeclaration(m_statement->columnDeclaration(column)));
}

StudentScores ExportedScores::of(qint64 student)
{
    if (!m_statement)
        prepare();
    m_values.back() = student;
    m_statement->bindQuoted(m_values);
    StudentScores scores = m_empty;
    while (m_statement->step()) {
        StudentScores::Row& row = scores.m_rows.emplace_back();
        row.reserve(m_types.size());
        for (const database::ColumnType& type : m_types)
            row.push_back(m_statement->value(int(row.size()), type));
    }
    return scores;
}

} // namespace exporting
