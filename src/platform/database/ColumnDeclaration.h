#pragma once

#include <vector>

#include <QStringList>

namespace database {

class Connection;

/// A column as the statement declares it that makes its table.
struct ColumnDeclaration
{
    enum class Key {
        None,
        Unique,    ///< the engine refuses a value twice
        AutoNumber ///< the row id, of which none is given twice
    };

    QString name;
    /// As ColumnType reads it: "text(50)", "Double REAL".
    QString type;
    /// How texts compare; "" for byte by byte.
    QString collation = {};
    /// As SQL writes it; "" for none.
    QString defaultValue = {};
    Key key = Key::None;
};

/// The columns of a table in order; empty if there is no such table. Throws Error.
std::vector<ColumnDeclaration> columnDeclarations(Connection& connection, const QString& table);

/// The names of columns in order.
QStringList columnNames(const std::vector<ColumnDeclaration>& columns);
/// Those of a table; empty if there is no such table. Throws Error.
QStringList columnNames(Connection& connection, const QString& table);

/// The column of that name, whatever its case; null for none.
const ColumnDeclaration* findColumn(const std::vector<ColumnDeclaration>& columns,
                                    const QString& name);

/// The column that numbers the rows by itself; null for none.
const ColumnDeclaration* numberColumn(const std::vector<ColumnDeclaration>& columns);

/// Makes a table. Throws Error, also for a name that no statement can hold.
void createTable(Connection& connection, const QString& table,
                 const std::vector<ColumnDeclaration>& columns);

/// Adds a column behind the others; rows that stand have its default. Throws Error, also for one
/// that numbers the rows or refuses values, which a table gets only when it is made.
void addColumn(Connection& connection, const QString& table, const ColumnDeclaration& column);

} // namespace database
