#include "library/CopyGrids.h"

#include <QFileInfo>

#include "platform/grid/GridRow.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

constexpr int left = 1;

grid::FlexGrid gridWith(int cols)
{
    grid::FlexGrid grid;
    grid.FixedCols = 0;
    grid.setRows(1);
    grid.setCols(cols);
    grid.setColAlignment(-1, left);
    return grid;
}

} // namespace

grid::FlexGrid copiesGrid(const std::vector<LibraryCopy>& copies)
{
    const QStringList headings{u"序号"_s, u"时间"_s, u"在哪一步之前"_s, u"大小"_s, u"文件"_s};
    grid::FlexGrid grid = gridWith(int(headings.size()));
    grid::setRow(grid, 0, headings);
    // In twips.
    int col = 0;
    for (const int width : {600, 2400, 3600, 1200, 3600})
        grid.setColWidth(col++, width);
    for (const LibraryCopy& copy : copies) {
        const int row = grid.Rows();
        grid.setRows(row + 1);
        grid::setRow(grid, row,
                     {QString::number(row), timeText(copy.time), copy.occasionText(),
                      sizeText(copy.size), QFileInfo(copy.path).fileName()});
    }
    return grid;
}

grid::FlexGrid differencesGrid(const std::vector<DifferenceLine>& lines, Details details)
{
    grid::FlexGrid grid = gridWith(1);
    grid::setRow(grid, 0, {u"恢复这份备份会怎样"_s});
    const auto add = [&](const QString& text) {
        grid.setRows(grid.Rows() + 1);
        grid.setTextMatrix(grid.Rows() - 1, 0, text);
    };
    for (const DifferenceLine& line : lines) {
        add(line.text);
        if (details == Details::Hidden)
            continue;
        for (const QString& name : line.details)
            add(u"　　"_s + name);
    }
    return grid;
}

} // namespace library
