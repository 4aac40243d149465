#pragma once

#include <vector>

#include <QHash>
#include <QString>

#include "platform/database/ColumnType.h"

namespace database {

/// A column of a table, in the table's order.
struct Column
{
    QString name;
    ColumnType type;
};

/// The columns of a table, found by name without regard to case.
class TableColumns
{
public:
    void append(const Column& column);
    int count() const { return int(m_columns.size()); }
    const Column& at(int position) const { return m_columns.at(size_t(position)); }
    /// Position from 0, or -1.
    int find(const QString& name) const;
    /// The rows are known by numbers of the engine, as they are in nearly every table; false where
    /// there is no table.
    bool hasRowIds() const { return m_hasRowIds; }
    void setHasRowIds(bool has) { m_hasRowIds = has; }
    auto begin() const { return m_columns.begin(); }
    auto end() const { return m_columns.end(); }

private:
    std::vector<Column> m_columns;
    bool m_hasRowIds = false;
    QHash<QString, int> m_exact;
    QHash<QString, int> m_folded;
};

} // namespace database
