#pragma once

#include <QStringList>

#include "platform/grid/FlexGrid.h"

namespace grid {

/// Fills the first cells of a row. Throws runtime::Error for a cell outside the grid.
inline void setRow(FlexGrid& grid, int row, const QStringList& texts)
{
    int col = 0;
    for (const QString& text : texts)
        grid.setTextMatrix(row, col++, text);
}

} // namespace grid
