#pragma once

#include <vector>

#include <QStyleOptionViewItem>

#include "platform/grid/GridSpans.h"

class QPainter;

namespace grid {

class FlexGridView;

/// Draws the fixed cells of a view over the scrolled ones: above, at the left, and in the corner
/// over both.
class FixedCellsPainter
{
public:
    /// `spans` are the merged blocks among the fixed cells; `option` is what all cells share.
    FixedCellsPainter(const FlexGridView& view, const std::vector<GridSpan>& spans,
                      const QStyleOptionViewItem& option)
        : m_view(view), m_spans(spans), m_option(option)
    {
    }

    void paint(QPainter& painter) const;

private:
    struct Lines;

    void paintPart(QPainter& painter, const Lines& lines) const;
    void paintCell(QPainter& painter, int row, int col) const;

    const FlexGridView& m_view;
    const std::vector<GridSpan>& m_spans;
    const QStyleOptionViewItem& m_option;
};

} // namespace grid
