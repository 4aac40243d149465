#pragma once

class QPoint;

namespace grid {

class FlexGridView;
class GridGeometry;

/// Dragging the right edge of a column, in the fixed rows, to another width, which the grid holds
/// then.
class ColumnDrag
{
public:
    ColumnDrag(FlexGridView& view, const GridGeometry& geometry)
        : m_view(view), m_geometry(geometry)
    {
    }

    /// The column whose right edge is under the mouse; -1 for none.
    int edgeAt(const QPoint& place) const;

    /// Takes hold of the edge under the mouse. False if there is none.
    bool start(const QPoint& place);
    bool isActive() const { return m_col >= 0; }
    void moveTo(int x);
    /// Lets go. The column that was dragged; -1 for none.
    int finish();

private:
    FlexGridView& m_view;
    const GridGeometry& m_geometry;
    int m_col = -1;
};

} // namespace grid
