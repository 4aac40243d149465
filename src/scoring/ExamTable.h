#pragma once

#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace scoring {

/// One numeric column of an ExamTable: the number of each row, NULL marked apart.
class TableColumn
{
public:
    explicit TableColumn(const database::Column& column) : m_column(column) {}

    const QString& name() const { return m_column.name; }
    bool isNull(size_t row) const { return m_nulls[row] != 0; }
    /// 0 for NULL.
    double value(size_t row) const { return m_values[row]; }
    /// True for a value of 0 or more; NULL is none.
    bool taken(size_t row) const { return !m_nulls[row] && m_values[row] >= 0; }
    /// True for a negative value.
    bool absent(size_t row) const { return m_values[row] < 0; }

    /// Keeps the number as the column's type does: the nearest 32-bit float, or the whole number
    /// half to even.
    void set(size_t row, double number);
    void setNull(size_t row);
    /// True once a value was set that differs from what was read.
    bool changed() const { return m_changed; }

private:
    friend class ExamTable;

    double stored(double number) const;
    void store(size_t row, double number, bool null);

    database::Column m_column;
    std::vector<double> m_values;
    std::vector<char> m_nulls;
    bool m_changed = false;
    std::vector<char>* m_changedRows = nullptr;
};

/// How much of an exam a table reads.
struct TableScope
{
    /// A condition with " and " in front, or empty.
    QString filter;
    /// The columns wanted, as far as they are numeric; none stands for all.
    QStringList columns;
};

/// The rows of one exam and stream, read once into typed columns, in row order. Reports and scoring
/// compute on it; scoring writes it back.
class ExamTable
{
public:
    /// Reads the numeric columns of 成绩表. Throws database::Error.
    ExamTable(database::Connection& connection, const QString& exam, const QString& stream,
              const TableScope& scope = {});
    ExamTable(const ExamTable&) = delete;
    ExamTable& operator=(const ExamTable&) = delete;

    size_t rowCount() const { return m_rowIds.size(); }
    /// Class number of each row; NaN for NULL.
    const std::vector<double>& classes() const { return m_classes; }
    /// nullptr if 成绩表 has no such numeric column; names ignore case.
    TableColumn* column(const QString& name);
    const TableColumn* column(const QString& name) const;

    /// Writes what was changed, each changed row once. Throws database::Error.
    void write();

private:
    void chooseColumns(const QStringList& wanted);
    void read(const QString& exam, const QString& stream, const QString& filter);
    void sortByRowId();
    database::Statement& writer(const std::vector<const TableColumn*>& columns);

    database::Connection& m_conn;
    std::vector<qint64> m_rowIds;
    std::vector<double> m_classes;
    std::vector<TableColumn> m_columns;
    std::vector<char> m_changedRows;
    QHash<QString, int> m_positions;
};

} // namespace scoring
