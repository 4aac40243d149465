#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "workbooks/model/Cell.h"
#include "workbooks/model/CellRange.h"

namespace excel {

struct Row
{
    /// Height of a row in points that nobody set.
    static constexpr float defaultHeight = -1;

    std::vector<Cell> cells; // ascending by column
    float height = defaultHeight;
    bool hidden = false;
};

/// The filled cells of a sheet and its row properties. Rows stand in pages that exist only where
/// something is, so that a lone cell at the far end of the grid costs next to nothing.
class CellTable
{
public:
    /// The cell's content, Null if it is empty.
    runtime::Value value(int row, int column) const;

    /// Null empties the cell; its format stays.
    void set(int row, int column, const runtime::Value& value);

    /// Number of the cell's format, 0 if it has none of its own.
    int format(int row, int column) const;

    /// Gives the cells of a block new formats; `next` tells the new number for the one before.
    void changeFormats(const CellRange& block, const std::function<int(int)>& next);

    /// For readers: adds a cell without looking for an older one; `settle` must follow the last.
    void append(int row, int column, const runtime::Value& value);

    /// For readers: the list that `appendShared` takes from, to be given once and ahead of it.
    void share(TextList texts) { m_store.share(std::move(texts)); }

    /// As `append`; the text is one of the shared list, which saves keeping it again.
    void appendShared(int row, int column, const QString& text);

    /// Brings cells that were appended out of order into order; the last one of a place stays.
    void settle();

    /// A cell that counts as used without a content, such as a formula that has no result.
    void markUsed(int row, int column);

    /// The row, or null if nothing is in it.
    const Row* row(int number) const;
    Row& makeRow(int number);

    /// True if the next `makeRow` of this number has to make a page.
    bool lacksPageFor(int row) const;

    /// The largest row and column that were ever used, 0 if there is none.
    int lastRow() const { return m_lastRow; }
    int lastColumn() const { return m_lastColumn; }

    /// This row or the first one behind it that may hold something, `rowLimit() + 1` if none does.
    int nextRow(int row) const;

    /// No row behind this one exists.
    int rowLimit() const { return int(m_pages.size()) * rowsPerPage; }

    void clear();

private:
    const Cell* find(int row, int column) const;
    void clearValue(int row, int column);
    Cell& appendCell(int row, int column);

    static constexpr int rowsPerPage = 256;
    using Page = std::array<Row, rowsPerPage>;

    CellStore m_store;
    std::vector<std::unique_ptr<Page>> m_pages;
    int m_lastRow = 0;
    int m_lastColumn = 0;
    size_t m_lastRowSize = 0; // of the row that got a cell last
    bool m_disordered = false;
};

} // namespace excel
