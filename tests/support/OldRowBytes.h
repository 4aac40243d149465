#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "oldlibraries/OldTable.h"
#include "platform/runtime/Value.h"

namespace support {

/// How texts are stored.
enum class OldTextForm {
    Plain,      ///< two bytes a character
    Compressed, ///< one byte a character where all of a text's characters allow it
    Mixed       ///< stretches of one and of two bytes, where the characters allow it
};

/// The bytes of a text as a row or a memo holds them.
QByteArray oldText(const QString& text, OldTextForm form);

/// The bytes of a value that is no text, memo or long binary. Dates are moments or days since
/// 1899-12-30, a Decimal is a number or a text with all its decimals, a Guid a text.
QByteArray oldValue(const oldlibraries::OldColumn& column, const runtime::Value& value);

/// Bytes that a value of a column takes in the fixed part of a row.
int oldFixedSize(const oldlibraries::OldColumn& column);

/// What a row holds of one column.
struct OldPart
{
    const oldlibraries::OldColumn* column = nullptr;
    bool isNull = false;
    /// Of a Boolean. Others have bytes.
    bool isTrue = false;
    QByteArray bytes = {};
};

/// Sizes of a row of a table as it is now.
struct OldRowShape
{
    /// Columns that the table ever had, and those of changing length among them.
    int columns = 0;
    int variableColumns = 0;
    /// Bytes.
    int fixedSize = 0;
};

/// The bytes of a row.
QByteArray oldRow(const OldRowShape& shape, const std::vector<OldPart>& parts);

} // namespace support
