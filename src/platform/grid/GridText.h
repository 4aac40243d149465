#pragma once

#include <QJsonObject>
#include <QString>

namespace grid {

class FlexGrid;

/// The grid as text, cells separated by tabs, each row ended by a line break; within a cell a line
/// break shows as "⏎" and a tab as a blank. For tests and for the command line.
QString gridText(const FlexGrid& grid);

/// The grid as an object with the members "Rows", "Cols", "FixedRows", "MergeRow" and "MergeCol"
/// (ascending numbers of the marked ones), "TextMatrix" (rows of texts) and "ColWidth" (twips by
/// column number, as they were set; "-1" is the width of all others).
QJsonObject gridJson(const FlexGrid& grid);

} // namespace grid
