#pragma once

#include <vector>

#include <QStringList>

class QMimeData;

namespace widgets {

/// Cells for a spreadsheet, row by row: separated by tabs, each row ended by CRLF; a cell with a
/// break, a tab or a quotation mark stands in quotation marks.
QString tabbedText(const std::vector<QStringList>& rows);

/// The same as an HTML table. Numbers that a spreadsheet would shorten (0805, 19 digits) and texts
/// that it would take for formulas (=1+1, -张三) are marked as texts.
QString htmlTable(const std::vector<QStringList>& rows);

/// Both forms for the clipboard; the caller owns them.
QMimeData* cellsForClipboard(const std::vector<QStringList>& rows);

} // namespace widgets
