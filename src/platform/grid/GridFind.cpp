#include "platform/grid/GridFind.h"

namespace grid {

std::optional<CellPlace> findCell(const FlexGrid& grid, const std::optional<CellPlace>& from,
                                  const QString& text, Qt::SortOrder direction)
{
    const qsizetype cols = grid.Cols();
    const qsizetype cells = grid.Rows() * cols;
    if (text.isEmpty() || cells == 0)
        return std::nullopt;
    const qsizetype step = direction == Qt::AscendingOrder ? 1 : cells - 1;
    qsizetype at = from ? from->row * cols + from->col : cells - 1;
    for (qsizetype i = 0; i < cells; ++i) {
        at = (at + step) % cells;
        const CellPlace place{int(at / cols), int(at % cols)};
        if (grid.ColWidth(place.col) != 0
            && grid.TextMatrix(place.row, place.col).contains(text, Qt::CaseInsensitive))
            return place;
    }
    return std::nullopt;
}

} // namespace grid
