#pragma once

#include <vector>

#include <QString>

#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// What a column of the old engine holds.
enum class OldType {
    Boolean,
    Byte,
    Integer, ///< 16 bits
    Long,
    Currency, ///< four decimals
    Single,
    Double,
    DateTime,
    Binary,
    Text,
    LongBinary,
    Memo,
    Guid,
    Decimal
};

struct OldColumn
{
    QString name;
    OldType type = OldType::Text;
    /// Characters of a Text, bytes of a Binary.
    int length = 0;
    /// Decimals of a Decimal.
    int scale = 0;
    bool isAutoNumber = false;
    /// False for a type that nobody knows, whose bytes are given as those of a Binary.
    bool isKnownType = true;

    /// Number among all columns that the table ever had; a row stored before the column came knows
    /// fewer of them.
    int number = 0;
    /// Its bytes stand at a fixed place of the row, or where the row itself says.
    bool isFixed = false;
    /// The byte in the fixed part of a row, or the number among its parts of changing length.
    int place = 0;
    /// Bytes at a fixed place; 0 for all other columns, and for Boolean, which takes none.
    int fixedSize = 0;
};

/// Bytes that a value of this type takes; 0 where that differs from value to value, and for
/// Boolean.
int sizeOf(OldType type);

/// The definition of one table.
struct OldTable
{
    QString name;
    /// In the order in which they came.
    std::vector<OldColumn> columns;
    /// Rows as the definition counts them.
    quint32 rowCount = 0;
    /// The number given last by a column that numbers by itself; 0 for none.
    qint32 lastAutoNumber = 0;

    quint32 definitionPage = 0;
    /// Where it is written which pages hold rows.
    RowPlace usedPages;

    /// The column of that name, case ignored, or -1.
    int find(const QString& columnName) const;
};

/// True if the page is one of a table's definition.
bool isDefinitionPage(const QByteArray& page);

/// Reads the definition that begins on a page. Throws OldFileError.
OldTable readTable(PageFile& file, quint32 definitionPage, const QString& name);

} // namespace oldlibraries
