#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include "platform/database/Recordset.h"
#include "platform/database/Statement.h"

namespace exporting {

/// A student of the chosen classes.
struct ExportedStudent
{
    qint64 id = 0;
    runtime::Value classNumber;
    QString number;
    QString name;
    QString stream;
};

/// The student on whose row a recordset over 信息表 stands. Throws database::Error.
ExportedStudent currentStudent(database::Recordset& students);

/// A student's rows in the chosen exams, by 考试编号.
class StudentScores
{
public:
    int count() const { return int(m_rows.size()); }
    /// 科类 of the first row. Throws database::Error if there is none.
    QString firstStream() const;
    /// The value of a column, both counted from 0. Throws database::Error for a column that 成绩表
    /// does not have.
    const runtime::Value& value(int row, int column) const;

private:
    friend class ExportedScores;

    /// The values that were read, 科类 in front of them.
    using Row = std::vector<runtime::Value>;

    QStringList m_missing; // by column: its name where 成绩表 has none of that name
    std::vector<Row> m_rows;
};

/// Reads the rows of one student after the other by one statement.
class ExportedScores
{
public:
    ExportedScores(database::Connection& connection, const QStringList& exams,
                   const QStringList& columns);

    /// Throws database::Error, also for an exam with an apostrophe in its name.
    StudentScores of(qint64 student);

private:
    void prepare();
    /// What the statement reads: 科类, then the columns.
    QStringList readNames();

    database::Connection& m_conn;
    std::vector<runtime::Value> m_values; // the exams, then the student
    QStringList m_columns;
    StudentScores m_empty;
    std::vector<database::ColumnType> m_types;
    std::optional<database::Statement> m_statement;
};

} // namespace exporting
