#include "workbooks/model/BookJson.h"

#include <map>

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
    // An object takes many names fast only if they come in its order.
    std::map<QString, QString> texts;
    for (int row = 1; row <= sheet.lastUsedRow(); ++row) {
        for (int column = 1; column <= sheet.lastUsedColumn(); ++column) {
            QString text = sheet.Cells(row, column).text();
            if (!text.isEmpty())
                texts[QString::number(row) + u',' + QString::number(column)] = std::move(text);
        }
    }
    QJsonObject cells;
    for (const auto& [place, text] : texts)
        cells.insert(place, text);
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

QJsonObject widthsJson(const SheetGeometry& geometry)
{
    QJsonObject widths;
    for (const ColumnRange& columns : geometry.columns()) {
        for (int column = columns.first; column <= columns.last; ++column)
            widths.insert(QString::number(column), geometry.shownColumnWidth(column));
    }
    return widths;
}

QJsonObject pageJson(const PageLayout& page)
{
    return {{u"orientation"_s, int(page.Orientation)},
            {u"paper"_s, page.PaperSize},
            {u"margins"_s,
             QJsonArray{page.LeftMargin, page.RightMargin, page.TopMargin, page.BottomMargin}}};
}

/// The cells that a place covers; one that ends at an edge covers none behind it.
CellRange coveredCells(const SheetGeometry& geometry, const QRectF& place)
{
    constexpr double withinEdge = 0.01;
    return {geometry.rowAt(place.top() + withinEdge), geometry.columnAt(place.left() + withinEdge),
            geometry.rowAt(place.bottom() - withinEdge),
            geometry.columnAt(place.right() - withinEdge)};
}

QJsonArray cellListJson(const CellRange& block)
{
    QJsonArray cells;
    for (int row = block.firstRow; row <= block.lastRow; ++row) {
        for (int column = block.firstColumn; column <= block.lastColumn; ++column)
            cells.append(QJsonArray{row, column});
    }
    return cells;
}

QJsonValue boundJson(const std::optional<double>& bound)
{
    return bound ? QJsonValue(*bound) : QJsonValue();
}

QJsonObject chartJson(const Worksheet& sheet, const Chart& chart)
{
    const chart::LineChart& design = chart.design();
    const std::optional<ChartSource>& source = chart.source();
    return {{u"frame"_s, blockJson(coveredCells(sheet.geometry(), chart.place()))},
            {u"left"_s, chart.Left()},
            {u"top"_s, chart.Top()},
            {u"title"_s, design.title},
            {u"valueTitle"_s, design.axis.title},
            {u"reversed"_s, design.axis.growth == chart::Growth::Downward},
            {u"min"_s, boundJson(design.axis.minimum)},
            {u"max"_s, boundJson(design.axis.maximum)},
            {u"dataLabels"_s, design.hasDataLabels},
            {u"categories"_s, source ? cellListJson(source->categories) : QJsonArray()},
            {u"values"_s, source ? cellListJson(source->values) : QJsonArray()},
            {u"inside"_s, QJsonObject{{u"left"_s, chart.InsideLeft()},
                                      {u"top"_s, chart.InsideTop()},
                                      {u"width"_s, chart.InsideWidth()},
                                      {u"height"_s, chart.InsideHeight()}}}};
}

QJsonObject shapeJson(const DrawnLine& line)
{
    const QLineF ends = line.ends();
    return {{u"kind"_s, u"line"_s},      {u"x1"_s, ends.x1()}, {u"y1"_s, ends.y1()},
            {u"x2"_s, ends.x2()},        {u"y2"_s, ends.y2()}, {u"dash"_s, int(line.dashStyle())},
            {u"weight"_s, line.weight()}};
}

QJsonObject shapeJson(const TextLabel& label)
{
    return {{u"kind"_s, u"label"_s}, {u"x"_s, label.Left()},   {u"y"_s, label.Top()},
            {u"w"_s, label.Width()}, {u"h"_s, label.Height()}, {u"text"_s, label.text()}};
}

/// Adds charts and shapes; pictures are not told.
void addDrawings(QJsonObject& object, const Worksheet& sheet)
{
    QJsonArray charts;
    QJsonArray shapes;
    for (const Drawing& drawing : sheet.drawings()) {
        if (const auto* chart = std::get_if<Chart>(&drawing))
            charts.append(chartJson(sheet, *chart));
        else if (const auto* line = std::get_if<DrawnLine>(&drawing))
            shapes.append(shapeJson(*line));
        else if (const auto* label = std::get_if<TextLabel>(&drawing))
            shapes.append(shapeJson(*label));
    }
    object.insert(u"charts"_s, charts);
    object.insert(u"shapes"_s, shapes);
}

QJsonObject sheetJson(const Worksheet& sheet, BookDetail detail)
{
    QJsonArray merges;
    for (const CellRange& merge : sheet.merges().settled())
        merges.append(blockJson(merge));
    QJsonObject object{
        {u"cells"_s, cellsJson(sheet)}, {u"merges"_s, merges}, {u"borders"_s, bordersJson(sheet)}};
    if (detail == BookDetail::Cells)
        return object;
    QJsonArray breaks;
    for (const int row : sheet.pageBreaks())
        breaks.append(row);
    object.insert(u"widths"_s, widthsJson(sheet.geometry()));
    object.insert(u"breaks"_s, breaks);
    object.insert(u"page"_s, pageJson(sheet.PageSetup()));
    addDrawings(object, sheet);
    return object;
}

} // namespace

QJsonObject bookJson(Workbook& book, BookDetail detail)
{
    QJsonArray names;
    QJsonObject content;
    for (const Worksheet* sheet : book.sheets()) {
        names.append(sheet->Name());
        content.insert(sheet->Name(), sheetJson(*sheet, detail));
    }
    return {{u"sheets"_s, names}, {u"content"_s, content}};
}

} // namespace excel
