#include "platform/grid/GridText.h"

#include <QJsonArray>

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Text.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

QString cellText(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s);
    return runtime::forTerminal(text.replace(u'\n', u'⏎').replace(u'\t', u' '));
}

QJsonArray numbers(const std::set<int>& lines)
{
    QJsonArray array;
    for (const int line : lines)
        array.append(line);
    return array;
}

QJsonArray texts(const FlexGrid& grid)
{
    QJsonArray rows;
    for (int row = 0; row < grid.Rows(); ++row) {
        QJsonArray cells;
        for (int col = 0; col < grid.Cols(); ++col)
            cells.append(grid.TextMatrix(row, col));
        rows.append(cells);
    }
    return rows;
}

QJsonObject widths(const FlexGrid& grid)
{
    QJsonObject object;
    for (const auto& [col, twips] : grid.colWidths())
        object.insert(QString::number(col), twips);
    return object;
}

} // namespace

QString gridText(const FlexGrid& grid)
{
    QString text;
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int col = 0; col < grid.Cols(); ++col) {
            if (col > 0)
                text += u'\t';
            text += cellText(grid.TextMatrix(row, col));
        }
        text += u'\n';
    }
    return text;
}

QJsonObject gridJson(const FlexGrid& grid)
{
    return {{u"Rows"_s, grid.Rows()},
            {u"Cols"_s, grid.Cols()},
            {u"FixedRows"_s, grid.FixedRows},
            {u"MergeRow"_s, numbers(grid.mergeRows())},
            {u"MergeCol"_s, numbers(grid.mergeCols())},
            {u"TextMatrix"_s, texts(grid)},
            {u"ColWidth"_s, widths(grid)}};
}

} // namespace grid
