#pragma once

#include <set>

#include <QStringList>

namespace excel {

/// What a file may hold that is not read, and so is gone once the workbook is saved.
enum class Loss {
    Formulas,
    Looks,
    Shapes,
    OtherSheets,
    Macros,
    Comments,
    ConditionalFormats,
    Validations,
    Links,
    Panes,
    Printing
};

using Losses = std::set<Loss>;

/// What these are, in words for the user, in the order above.
QStringList lossNames(const Losses& losses);

} // namespace excel
