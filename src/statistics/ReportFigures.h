#pragma once

#include <map>
#include <optional>
#include <vector>

#include "library/Catalogue.h"
#include "platform/grid/FlexGrid.h"
#include "statistics/Figure.h"

namespace statistics {

/// What the cells of one block stand for: a meaning for each line and column, which all classes
/// share.
struct BlockFigures
{
    QString stream = {};
    /// The category filter under which the block is filled.
    QString filter = {};
    std::vector<library::ClassEntry> classes;
    int rowsPerClass = 1;
    int firstColumn = 1;
    int columnsPerItem = 1;
    int items = 0;
    /// Line by line, item by item, column by column.
    std::vector<Meaning> meanings = {};

    /// Nothing for a place that the block does not have.
    Meaning* meaning(int line, int item, int part);
    const Meaning* meaningAt(int line, int col) const;
    int rows() const { return int(classes.size()) * rowsPerClass; }
};

/// What the cells of the reports in a grid stand for, as the reports said while they filled it. The
/// rows of the grid carry numbers (RowData) by which they are found again, wherever they stand.
class ReportFigures
{
public:
    /// Numbers the rows of a block from `firstRow` on. What is given back notes the meanings of its
    /// cells, and lives until keepOnly() finds the block gone.
    BlockFigures& add(BlockFigures block, grid::FlexGrid& grid, int firstRow);

    /// What a cell of the grid stands for. Nothing for names, headings, empty cells and rows that
    /// no report filled.
    std::optional<Figure> at(const grid::FlexGrid& grid, int row, int col) const;

    /// Forgets the blocks of which the grid has no row any more.
    void keepOnly(const grid::FlexGrid& grid);

private:
    /// A row of a block by its class and its line, each counted from 0.
    struct Place
    {
        const BlockFigures* block;
        int classIndex;
        int line;
    };

    std::optional<Place> placeOf(const grid::FlexGrid& grid, int row) const;
    std::vector<ComparedClass> compared(const grid::FlexGrid& grid, const Place& place,
                                        int col) const;

    /// By the number of the block's first row.
    std::map<int, BlockFigures> m_blocks;
    /// No number is given twice: a grid may still hold rows of an earlier report.
    int m_next = 1;
};

} // namespace statistics
