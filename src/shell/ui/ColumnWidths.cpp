#include "shell/ui/ColumnWidths.h"

#include <QHash>
#include <QSettings>

namespace shell {

using namespace Qt::StringLiterals;

namespace {

/// A name for each column. A slash would be a group of the settings file.
QStringList columnNames(const grid::FlexGrid& grid)
{
    QStringList names;
    QHash<QString, int> seen;
    for (int col = 0; col < grid.Cols() && grid.Rows() > 0; ++col) {
        const QString heading = QString(grid.TextMatrix(0, col)).replace(u'/', u'|');
        names.append(heading + u'#' + QString::number(seen[heading]++));
    }
    return names;
}

const QString group = u"columns"_s;

} // namespace

void keepWidth(const grid::FlexGrid& grid, int col)
{
    QSettings settings;
    settings.beginGroup(group);
    settings.setValue(columnNames(grid).value(col), grid.ColWidth(col));
}

void restoreWidths(grid::FlexGrid& grid)
{
    QSettings settings;
    settings.beginGroup(group);
    if (settings.childKeys().isEmpty())
        return;
    const QStringList names = columnNames(grid);
    for (int col = 0; col < names.size(); ++col) {
        const int width = settings.value(names[col]).toInt();
        if (width > 0)
            grid.setColWidth(col, width);
    }
}

} // namespace shell
