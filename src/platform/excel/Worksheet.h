#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "platform/excel/CellTable.h"
#include "platform/runtime/Value.h"

namespace excel {

class Workbook;

enum class Visibility { Visible, Hidden, VeryHidden };
enum class RowState { Shown, Hidden };

/// A block of cells, both corners included.
struct CellRange
{
    int firstRow = 1;
    int firstColumn = 1;
    int lastRow = 1;
    int lastColumn = 1;

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

/// Neighbouring columns with the same properties; the width is in characters of the default font.
struct ColumnRange
{
    int first = 1;
    int last = 1;
    double width = 0;
    bool hidden = false;
};

/// One sheet of an open workbook. Rows and columns count from 1. Dates are what the clock on the
/// wall shows, in UTC; a time without a day stands on 1899-12-30. Every call throws runtime::Error
/// once the workbook was closed.
class Worksheet
{
public:
    Worksheet(Workbook& book, QString name) : m_book(&book), m_name(std::move(name)) {}
    Worksheet(const Worksheet&) = delete;
    Worksheet& operator=(const Worksheet&) = delete;

    const QString& Name() const;
    void setName(const QString& name);

    /// The content of one cell, Null if it is empty. Throws runtime::Error outside the grid.
    const runtime::Value& Cells(int row, int column) const
    {
        check(row, column);
        return m_cells.value(row, column);
    }
    /// Fills a cell; Null empties it. Throws runtime::Error outside the grid.
    void setCell(int row, int column, runtime::Value value);

    /// True while an automatic filter is on.
    bool AutoFilterMode() const;
    /// Switches the automatic filter off and shows the rows that it hid. Without one: nothing.
    void AutoFilter();
    /// Switches an automatic filter on over `range`, its headings included; hides nothing itself.
    void setAutoFilter(const CellRange& range);

    /// Brings the sheet forward in its workbook.
    void Activate();

    /// Row and column of the last used cell; 1 on an empty sheet. Emptying cells does not bring
    /// them back.
    int lastUsedRow() const;
    int lastUsedColumn() const;

    const std::vector<CellRange>& mergedRanges() const;
    void merge(const CellRange& range);

    bool isRowHidden(int row) const;
    void setRowState(int row, RowState state);
    /// In points; Row::defaultHeight if it was never set.
    double rowHeight(int row) const;
    void setRowHeight(int row, double points);

    /// Columns with a width of their own or hidden, as they were set.
    const std::vector<ColumnRange>& columns() const;
    void addColumns(const ColumnRange& columns);

    Visibility visibility() const;
    void setVisibility(Visibility visibility);

    /// The cells themselves, for readers and writers.
    CellTable& table() { return m_cells; }
    const CellTable& table() const { return m_cells; }

private:
    friend class Workbook;

    void check() const
    {
        if (m_book == nullptr)
            refuseClosed();
    }
    void check(int row, int column) const
    {
        check();
        if (row < 1 || row > lastGridRow || column < 1 || column > lastGridColumn)
            refusePlace(row, column);
    }
    [[noreturn]] static void refuseClosed();
    [[noreturn]] static void refusePlace(int row, int column);
    void close();

    Workbook* m_book; // null once the workbook was closed
    QString m_name;
    CellTable m_cells;
    std::optional<CellRange> m_autoFilter;
    std::vector<CellRange> m_merged;
    std::vector<ColumnRange> m_columns;
    Visibility m_visibility = Visibility::Visible;
};

} // namespace excel
