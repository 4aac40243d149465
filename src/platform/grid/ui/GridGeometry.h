#pragma once

#include <QModelIndex>
#include <QPoint>
#include <QRect>

class QHeaderView;
class QTableView;

namespace grid {

class FlexGrid;

/// Where the cells of a grid stand in the viewport of its view: the fixed rows and columns stay at
/// the edges, the others scroll beneath them.
class GridGeometry
{
public:
    GridGeometry(const QTableView& view, const FlexGrid& grid) : m_view(view), m_grid(grid) {}

    /// The size of the fixed rows and columns.
    QSize fixedSize() const;
    /// The part of the viewport in which a cell of this row and column can be seen.
    QRect shownPart(int row, int col) const;
    /// The left edge of a column.
    int columnStart(int col) const;

    /// The place at which the table would show the same cell if the fixed ones scrolled with it.
    QPoint unscrolled(const QPoint& place) const;
    /// How far a cell stands from where the table would show it if the fixed ones scrolled with it.
    QPoint stay(const QModelIndex& index) const;

private:
    const QTableView& m_view;
    const FlexGrid& m_grid;
};

/// The next line in the direction of `step`, 1 or -1, that is not hidden and not before `first`;
/// the line itself at the end.
int nextShown(const QHeaderView* header, int line, int step, int first);

} // namespace grid
