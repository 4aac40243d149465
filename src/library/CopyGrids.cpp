#include "library/CopyGrids.h"

#include <QFileInfo>

#include "platform/grid/GridRow.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

constexpr int left = 1;

/// Headings and so many rows below them, of which the first is the current one.
grid::FlexGrid gridWith(size_t rows, const QStringList& headings)
{
    grid::FlexGrid grid;
    grid.FixedCols = 0;
    grid.setRows(int(rows) + 1);
    grid.setCols(int(headings.size()));
    grid.setColAlignment(-1, left);
    grid::setRow(grid, 0, headings);
    return grid;
}

} // namespace

grid::FlexGrid copiesGrid(const std::vector<LibraryCopy>& copies)
{
    const QStringList headings{u"序号"_s, u"时间"_s, u"在哪一步之前"_s, u"大小"_s, u"文件"_s};
    grid::FlexGrid grid = gridWith(copies.size(), headings);
    // In twips.
    int col = 0;
    for (const int width : {600, 2400, 3600, 1200, 3600})
        grid.setColWidth(col++, width);
    int row = 0;
    for (const LibraryCopy& copy : copies) {
        ++row;
        grid::setRow(grid, row,
                     {QString::number(row), timeText(copy.time), copy.occasionText(),
                      sizeText(copy.size), QFileInfo(copy.path).fileName()});
    }
    return grid;
}

grid::FlexGrid differencesGrid(const std::vector<DifferenceLine>& lines, Details details)
{
    QStringList texts;
    for (const DifferenceLine& line : lines) {
        texts.append(line.text);
        if (details == Details::Hidden)
            continue;
        for (const QString& name : line.details)
            texts.append(u"　　"_s + name);
    }
    grid::FlexGrid grid = gridWith(size_t(texts.size()), {u"恢复这份备份会怎样"_s});
    for (qsizetype i = 0; i < texts.size(); ++i)
        grid.setTextMatrix(int(i) + 1, 0, texts[i]);
    return grid;
}

} // namespace library
