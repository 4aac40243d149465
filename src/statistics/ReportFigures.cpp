#include "statistics/ReportFigures.h"

#include <algorithm>
#include <set>

namespace statistics {

Meaning* BlockFigures::meaning(int line, int item, int part)
{
    const bool inside =
        line >= 0 && line < rowsPerClass && item >= 0 && item < items && part < columnsPerItem;
    return inside ? &meanings[(size_t(line) * size_t(items) + size_t(item)) * size_t(columnsPerItem)
                              + size_t(part)]
                  : nullptr;
}

const Meaning* BlockFigures::meaningAt(int line, int col) const
{
    const size_t columns = size_t(items) * size_t(columnsPerItem);
    const bool inside = col >= firstColumn && size_t(col - firstColumn) < columns;
    return inside ? &meanings[size_t(line) * columns + size_t(col - firstColumn)] : nullptr;
}

BlockFigures& ReportFigures::add(BlockFigures block, grid::FlexGrid& grid, int firstRow)
{
    block.meanings.resize(size_t(block.rowsPerClass) * size_t(block.items)
                          * size_t(block.columnsPerItem));
    const int first = m_next;
    // A block without rows has a number of its own too.
    m_next += std::max(1, block.rows());
    for (int row = 0; row < block.rows(); ++row)
        grid.setRowData(firstRow + row, first + row);
    return m_blocks[first] = std::move(block);
}

std::optional<ReportFigures::Place> ReportFigures::placeOf(const grid::FlexGrid& grid,
                                                           int row) const
{
    const int number = grid.RowData(row);
    auto block = m_blocks.upper_bound(number);
    if (number == 0 || block == m_blocks.begin())
        return std::nullopt;
    --block;
    const int offset = number - block->first;
    if (offset >= block->second.rows())
        return std::nullopt;
    return Place{&block->second, offset / block->second.rowsPerClass,
                 offset % block->second.rowsPerClass};
}

std::optional<Figure> ReportFigures::at(const grid::FlexGrid& grid, int row, int col) const
{
    const bool inside = row >= 0 && row < grid.Rows() && col >= 0 && col < grid.Cols();
    const std::optional<Place> place = inside ? placeOf(grid, row) : std::nullopt;
    const Meaning* meaning = place ? place->block->meaningAt(place->line, col) : nullptr;
    if (!meaning || meaning->kind == FigureKind::None || grid.TextMatrix(row, col).isEmpty())
        return std::nullopt;
    const BlockFigures& block = *place->block;
    Figure figure{.kind = meaning->kind,
                  .exam = meaning->exam,
                  .stream = block.stream,
                  .classNumber = block.classes[size_t(place->classIndex)].number,
                  .column = meaning->column,
                  .condition =
                      meaning->condition.isEmpty() ? Condition() : Condition(meaning->condition),
                  .filter = block.filter,
                  .on = meaning->on,
                  .shown = grid.TextMatrix(row, col)};
    if (figure.kind == FigureKind::Rank) {
        const int part = (col - block.firstColumn) % block.columnsPerItem;
        figure.compared = compared(grid, *place, col - part + meaning->rankedPart);
    }
    return figure;
}

std::vector<ComparedClass> ReportFigures::compared(const grid::FlexGrid& grid, const Place& place,
                                                   int col) const
{
    std::vector<ComparedClass> classes;
    for (int row = 0; row < grid.Rows(); ++row) {
        const std::optional<Place> other = placeOf(grid, row);
        if (other && other->block == place.block && other->line == place.line)
            classes.push_back({place.block->classes[size_t(other->classIndex)].number,
                               grid.TextMatrix(row, col)});
    }
    return classes;
}

void ReportFigures::keepOnly(const grid::FlexGrid& grid)
{
    std::set<const BlockFigures*> kept;
    for (int row = 0; row < grid.Rows(); ++row) {
        if (const std::optional<Place> place = placeOf(grid, row))
            kept.insert(place->block);
    }
    std::erase_if(m_blocks, [&kept](const auto& entry) { return !kept.contains(&entry.second); });
}

} // namespace statistics
