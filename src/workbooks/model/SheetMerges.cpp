#include "workbooks/model/SheetMerges.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace excel {

namespace {

CellRange around(const CellRange& a, const CellRange& b)
{
    return {std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
            std::max(a.lastRow, b.lastRow), std::max(a.lastColumn, b.lastColumn)};
}

/// Blocks that were accepted, by their first column; each stays until it ends above the row in
/// hand, so that no two of them have a column in common.
class OpenMerges
{
public:
    /// False if it is in the way of an earlier one. They come with their first rows ascending.
    bool take(const CellRange& merge)
    {
        auto place = m_open.upper_bound(merge.lastColumn);
        while (place != m_open.begin()) {
            const auto before = std::prev(place);
            if (before->second.lastColumn < merge.firstColumn)
                break;
            if (before->second.lastRow >= merge.firstRow)
                return false;
            place = m_open.erase(before);
        }
        m_open[merge.firstColumn] = merge;
        return true;
    }

private:
    std::map<int, CellRange> m_open;
};

} // namespace

void SheetMerges::add(const CellRange& block)
{
    checkCell(block.firstRow, block.firstColumn);
    checkCell(block.lastRow, block.lastColumn);
    m_blocks.emplace(block.firstRow, Block{m_added++, block});
    m_mostRows = std::max(m_mostRows, block.lastRow - block.firstRow + 1);
    m_isSettled = false;
}

/// The first block, in the order of rows, that could touch this one.
SheetMerges::Blocks::const_iterator SheetMerges::firstNear(const CellRange& block) const
{
    return m_blocks.upper_bound(block.firstRow - m_mostRows);
}

CellRange SheetMerges::grown(CellRange block) const
{
    for (CellRange before{}; before != block;) {
        before = block;
        const auto end = m_blocks.upper_bound(before.lastRow);
        for (auto near = firstNear(before); near != end; ++near) {
            if (near->second.cells.touches(block))
                block = around(block, near->second.cells);
        }
    }
    return block;
}

void SheetMerges::unite(const CellRange& block)
{
    const CellRange all = grown(block);
    split(all);
    if (!all.isOneCell())
        add(all);
}

void SheetMerges::split(const CellRange& block)
{
    const auto end = m_blocks.upper_bound(block.lastRow);
    for (auto near = firstNear(block); near != end;)
        near = near->second.cells.touches(block) ? m_blocks.erase(near) : std::next(near);
    m_isSettled = false;
}

void SheetMerges::clear()
{
    *this = SheetMerges();
}

std::vector<CellRange> SheetMerges::all() const
{
    std::vector<Block> blocks;
    for (const auto& [row, block] : m_blocks)
        blocks.push_back(block);
    std::sort(blocks.begin(), blocks.end(),
              [](const Block& a, const Block& b) { return a.number < b.number; });
    std::vector<CellRange> cells;
    cells.reserve(blocks.size());
    for (const Block& block : blocks)
        cells.push_back(block.cells);
    return cells;
}

const std::vector<CellRange>& SheetMerges::settled() const
{
    if (!std::exchange(m_isSettled, true))
        m_settled = computeSettled();
    return m_settled;
}

const CellRange* SheetMerges::at(int row, int column) const
{
    const std::vector<CellRange>& merges = settled();
    const auto isAbove = [](const CellRange& merge, int first) { return merge.firstRow < first; };
    const auto near = std::lower_bound(merges.begin(), merges.end(), row + 1 - m_mostRows, isAbove);
    const auto end = std::lower_bound(near, merges.end(), row + 1, isAbove);
    const auto found = std::find_if(
        near, end, [&](const CellRange& merge) { return merge.contains(row, column); });
    return found == end ? nullptr : &*found;
}

std::vector<CellRange> SheetMerges::computeSettled() const
{
    std::vector<CellRange> merges = all();
    const auto isHigher = [](const CellRange& a, const CellRange& b) {
        return std::pair(a.firstRow, a.firstColumn) < std::pair(b.firstRow, b.firstColumn);
    };
    std::stable_sort(merges.begin(), merges.end(), isHigher);
    OpenMerges open;
    std::erase_if(merges,
                  [&](const CellRange& merge) { return merge.isOneCell() || !open.take(merge); });
    return merges;
}

} // namespace excel
