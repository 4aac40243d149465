#include "platform/grid/MoveRows.h"

#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

/// The texts of one row, and the row that they go to.
struct MovingRow
{
    int place = 0;
    std::vector<QString> texts;
};

/// The rows from 1 on, by their numbers; row 0 holds the headings and is no part of it.
class RowTable
{
public:
    explicit RowTable(const FlexGrid& grid)
    {
        for (int row = 1; row < grid.Rows(); ++row) {
            MovingRow& moving = m_rows.emplace_back();
            moving.place = row;
            for (int col = 0; col < grid.Cols(); ++col)
                moving.texts.push_back(grid.TextMatrix(row, col));
        }
    }

    int last() const { return int(m_rows.size()); }

    MovingRow& row(int number)
    {
        if (number < 1 || number > last())
            throw runtime::Error(u"第 %1 行在表格之外。"_s.arg(number));
        return m_rows[size_t(number - 1)];
    }

private:
    std::vector<MovingRow> m_rows;
};

void shift(RowTable& table, int firstRow, int lastRow, int distance, const runtime::Trap& trap)
{
    for (int row = firstRow; row <= lastRow; ++row)
        trap([&] { table.row(row).place = row + distance; });
}

void writeBack(RowTable& table, FlexGrid& grid, const runtime::Trap& trap)
{
    for (int row = 1; row <= table.last(); ++row) {
        const MovingRow& moving = table.row(row);
        if (moving.place == row)
            continue;
        for (int col = 0; col < grid.Cols(); ++col)
            trap([&] { grid.setTextMatrix(moving.place, col, moving.texts[size_t(col)]); });
    }
}

} // namespace

void MoveMFGData(FlexGrid& grid, int& firstRow, int& lastRow, int offset)
{
    const runtime::Trap trap{" - Sub MoveMFGData/MDLMsFlexGrid"};
    int& first = firstRow <= lastRow ? firstRow : lastRow;
    int& last = firstRow <= lastRow ? lastRow : firstRow;
    if ((first == 1 && offset > 0) || (last == grid.Rows() - 1 && offset < 0))
        return;
    RowTable table(grid);
    const int height = last - first + 1;
    shift(table, first, last, -offset, trap);
    if (offset > 0)
        shift(table, first - offset, first - 1, height, trap);
    else
        shift(table, last + 1, last - offset, -height, trap);
    writeBack(table, grid, trap);
    first -= offset;
    last -= offset;
}

} // namespace grid
