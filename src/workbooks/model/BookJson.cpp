#include "workbooks/model/BookJson.h"

#include <QJsonArray>

namespace excel {

using namespace Qt::StringLiterals;

namespace {

QJsonArray blockJson(const CellRange& block)
{
    return {block.firstRow, block.firstColumn, block.lastRow, block.lastColumn};
}

QJsonObject cellsJson(const Worksheet& sheet)
{
    QJsonObject cells;
    for (int row = 1; row <= sheet.lastUsedRow(); ++row) {
        for (int column = 1; column <= sheet.lastUsedColumn(); ++column) {
            const QString text = sheet.Cells(row, column).text();
            if (!text.isEmpty())
                cells.insert(QString::number(row) + u',' + QString::number(column), text);
        }
    }
    return cells;
}

bool hasBorder(const Worksheet& sheet, int row, int column)
{
    return sheet.format(row, column).borders.top == LineStyle::Continuous;
}

/// Bordered blocks of neighbouring rows that begin in column 1.
QJsonArray bordersJson(const Worksheet& sheet)
{
    QJsonArray borders;
    for (int row = 1; row <= sheet.lastUsedRow(); ++row) {
        if (!hasBorder(sheet, row, 1))
            continue;
        CellRange block{row, 1, row, 1};
        while (hasBorder(sheet, row, block.lastColumn + 1))
            ++block.lastColumn;
        while (hasBorder(sheet, block.lastRow + 1, 1))
            ++block.lastRow;
        borders.append(blockJson(block));
        row = block.lastRow;
    }
    return borders;
}

QJsonObject sheetJson(const Worksheet& sheet)
{
    QJsonArray merges;
    for (const CellRange& merge : sheet.merges().settled())
        merges.append(blockJson(merge));
    return {
        {u"cells"_s, cellsJson(sheet)}, {u"merges"_s, merges}, {u"borders"_s, bordersJson(sheet)}};
}

} // namespace

QJsonObject bookJson(Workbook& book)
{
    QJsonArray names;
    QJsonObject content;
    for (const Worksheet* sheet : book.sheets()) {
        names.append(sheet->Name());
        content.insert(sheet->Name(), sheetJson(*sheet));
    }
    return {{u"sheets"_s, names}, {u"content"_s, content}};
}

} // namespace excel
