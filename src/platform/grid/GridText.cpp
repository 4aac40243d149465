#include "platform/grid/FlexGrid.h"

namespace grid {

namespace {

QString cellText(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return text.replace(u'\n', u'⏎').replace(u'\t', u' ');
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

} // namespace grid
