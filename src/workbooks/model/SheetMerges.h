#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "workbooks/model/CellRange.h"

namespace excel {

/// The merged blocks of a sheet.
class SheetMerges
{
public:
    /// For readers: adds a block without looking for older ones. Throws runtime::Error outside the
    /// grid.
    void add(const CellRange& block);
    /// Makes a block one cell; those that it touches grow together with it into the smallest block
    /// that holds them all. A block of one cell stays as it is.
    void unite(const CellRange& block);
    /// The block that `unite` would make of this one.
    CellRange grown(CellRange block) const;
    /// Takes the blocks apart that this one touches.
    void split(const CellRange& block);
    void clear();

    bool isEmpty() const { return m_blocks.empty(); }
    /// As they were set; those of a damaged file may overlap.
    std::vector<CellRange> all() const;
    /// Blocks that do not overlap and have more than one cell, from top to bottom: of those in each
    /// other's way, the upper one stays, of two in one row the left one.
    const std::vector<CellRange>& settled() const;
    /// The one of them that holds a cell; null if none does. Valid until the next change.
    const CellRange* at(int row, int column) const;

private:
    struct Block
    {
        std::size_t number; // in the order of adding
        CellRange cells;
    };
    using Blocks = std::multimap<int, Block>; // by first row

    Blocks::const_iterator firstNear(const CellRange& block) const;
    std::vector<CellRange> computeSettled() const;

    Blocks m_blocks;
    std::size_t m_added = 0;
    int m_mostRows = 0; // of any block
    mutable std::vector<CellRange> m_settled;
    mutable bool m_isSettled = true;
};

} // namespace excel
