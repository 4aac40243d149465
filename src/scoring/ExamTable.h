#pragma once

#include <cmath>
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
    bool isNull(size_t row) const { return m_cells[row] != Cell::Number; }
    /// 0 for NULL.
    double value(size_t row) const { return m_values[row]; }
    /// True for a value of 0 or more; NULL is none.
    bool taken(size_t row) const { return !isNull(row) && m_values[row] >= 0; }
    /// True for a negative value.
    bool absent(size_t row) const { return m_values[row] < 0; }

    /// Keeps the number as the column's type does: the nearest 32-bit float, or the whole number
    /// half to even; what is no number as NULL.
    void set(size_t row, double number)
    {
        if (std::isnan(number))
            setNull(row);
        else
            store(row, stored(number), Cell::Number);
    }
    void setNull(size_t row) { store(row, 0, Cell::Null); }

private:
    friend class ExamTable;

    enum class Cell : char { Number, Null, Unread };

    double stored(double number) const
    {
        switch (m_column.type.kind) {
        case database::ColumnType::Kind::Single:
            return double(float(number));
        case database::ColumnType::Kind::Double:
            return number;
        default:
            return std::nearbyint(number);
        }
    }

    void store(size_t row, double number, Cell cell)
    {
        if (m_values[row] == number && m_cells[row] == cell)
            return;
        m_values[row] = number;
        m_cells[row] = cell;
        m_changed = true;
        (*m_changedRows)[row] = 1;
    }

    void append(double number);
    /// What was read of a row that nobody has set since. NaN stands for NULL.
    void fill(size_t row, double number);
    bool hasUnread() const;

    database::Column m_column;
    std::vector<double> m_values;
    std::vector<Cell> m_cells;
    /// A value was set that differs from what was read.
    bool m_changed = false;
    std::vector<char>* m_changedRows = nullptr;
};

/// How much of an exam a table reads.
struct TableScope
{
    /// A condition with " and " in front, or empty.
    QString filter;
    /// The columns to be read at once, as far as they are numeric; none stands for all.
    QStringList columns;
    /// The other numeric columns: not there, or read when a value of theirs is asked for.
    enum class Others { LeftOut, ReadWhenAskedFor } others = Others::LeftOut;
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
    /// nullptr if 成绩表 has no such numeric column; names ignore case. Throws database::Error.
    TableColumn* column(const QString& name);
    /// As column(), but only for setting values: those in the file need not be read for it.
    TableColumn* resultColumn(const QString& name);
    /// As column(), of a table that has read all its columns.
    const TableColumn* column(const QString& name) const;

    /// Writes what was changed, each changed row once. Throws database::Error.
    void write();

private:
    int position(const QString& name) const;
    void chooseColumns(const TableScope& scope);
    void read(const QString& exam, const QString& stream, const QString& filter);
    void sortByRowId();
    void readRest(const std::vector<TableColumn*>& columns);
    std::vector<TableColumn*> changedColumns();
    database::Statement& writer(const std::vector<TableColumn*>& columns);
    void writeRows(database::Statement& statement, const std::vector<TableColumn*>& columns);

    database::Connection& m_conn;
    std::vector<qint64> m_rowIds;
    std::vector<double> m_classes;
    std::vector<TableColumn> m_columns;
    /// So many of m_columns, from the first one on, were read at once.
    size_t m_readAtOnce = 0;
    std::vector<char> m_changedRows;
    QHash<QString, int> m_positions;
};

} // namespace scoring
