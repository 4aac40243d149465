#include "platform/grid/GridFind.h"

#include <algorithm>

#include "platform/grid/GridSpans.h"

namespace grid {

namespace {

/// Whether a cell shows its text as part of a merged block that begins elsewhere.
bool isCovered(const CellPlace& place, const std::vector<GridSpan>& spans)
{
    return std::any_of(spans.begin(), spans.end(), [&place](const GridSpan& span) {
        const bool isInside = place.row >= span.row && place.row < span.row + span.rows
                              && place.col >= span.col && place.col < span.col + span.cols;
        return isInside && place != CellPlace{span.row, span.col};
    });
}

} // namespace

std::optional<CellPlace> findCell(const FlexGrid& grid, const std::optional<CellPlace>& from,
                                  const QString& text, Qt::SortOrder direction)
{
    const qsizetype cols = grid.Cols();
    const qsizetype cells = grid.Rows() * cols;
    if (text.isEmpty() || cells == 0)
        return std::nullopt;
    const qsizetype step = direction == Qt::AscendingOrder ? 1 : cells - 1;
    const std::vector<GridSpan> spans = gridSpans(grid);
    qsizetype at = from ? from->row * cols + from->col : cells - 1;
    for (qsizetype i = 0; i < cells; ++i) {
        at = (at + step) % cells;
        const CellPlace place{int(at / cols), int(at % cols)};
        if (grid.ColWidth(place.col) != 0
            && grid.TextMatrix(place.row, place.col).contains(text, Qt::CaseInsensitive)
            && !isCovered(place, spans))
            return place;
    }
    return std::nullopt;
}

} // namespace grid
