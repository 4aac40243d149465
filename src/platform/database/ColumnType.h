#pragma once

#include <QString>

#include "platform/runtime/Value.h"

namespace database {

/// The type of a column, as the declaration in the file says it.
struct ColumnType
{
    enum class Kind { Single, Double, Long, Integer, Boolean, Text, Memo, Binary };

    Kind kind = Kind::Memo;
    /// The most characters of a Text column.
    int length = 255;

    bool isText() const { return kind == Kind::Text || kind == Kind::Memo; }
    bool isNumeric() const { return kind <= Kind::Integer; }

    /// Reads a declaration such as "Single REAL", "text(50)", "number", "Long INTEGER"; one that
    /// says nothing known is taken for a memo.
    static ColumnType fromDeclaration(const QString& declaration);

    /// The value as the column keeps it: the nearest 32-bit float for Single, half to even for
    /// whole numbers. Throws Error (Failure::Value) if it does not fit: a text that is no number, a
    /// number outside the range, a text too long. Null fits every column.
    runtime::Value converted(const runtime::Value& value, const QString& columnName) const;
};

} // namespace database
