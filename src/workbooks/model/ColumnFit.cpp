#include "workbooks/model/ColumnFit.h"

#include <algorithm>

#include "workbooks/model/TextWidth.h"

namespace excel {

namespace {

constexpr double widestColumn = 255;

/// Of the longest line, in characters of the default font.
double neededWidth(const QString& text, double fontSize)
{
    int cells = 0;
    for (const QStringView line : QStringView(text).split(u'\n'))
        cells = std::max(cells, characterCells(line));
    return std::min(widestColumn, cells * fontSize / CellFormat::defaultFontSize);
}

bool isMergedOverColumns(const Worksheet& sheet, int row, int column)
{
    const CellRange* merge = sheet.merges().at(row, column);
    return merge != nullptr && merge->firstColumn != merge->lastColumn;
}

/// By column, 0 for one without contents.
std::vector<double> neededWidths(const Worksheet& sheet)
{
    std::vector<double> widths(size_t(sheet.lastUsedColumn()));
    const CellTable& table = sheet.table();
    for (int row = table.nextRow(1); row <= table.rowLimit(); row = table.nextRow(row + 1)) {
        for (const Cell& cell : table.row(row)->cells) {
            if (cell.isNull() || isMergedOverColumns(sheet, row, cell.column()))
                continue;
            double& width = widths[size_t(cell.column() - 1)];
            width = std::max(width, neededWidth(cell.value().text(),
                                                sheet.formats().format(cell.format()).fontSize));
        }
    }
    return widths;
}

} // namespace

void autoFitColumns(Worksheet& sheet)
{
    int column = 0;
    for (const double width : neededWidths(sheet)) {
        ++column;
        if (width > 0 && sheet.geometry().shownColumnWidth(column) > 0)
            sheet.setColumnWidth(column, column, width);
    }
}

} // namespace excel
