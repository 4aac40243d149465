#pragma once

#include <deque>
#include <optional>
#include <vector>

#include <QString>

#include "platform/runtime/Value.h"
#include "workbooks/model/CellFormat.h"
#include "workbooks/model/CellTable.h"
#include "workbooks/model/PageLayout.h"
#include "workbooks/model/Picture.h"
#include "workbooks/model/SheetRange.h"

namespace excel {

class Workbook;

enum class Visibility { Visible, Hidden, VeryHidden };
enum class RowState { Shown, Hidden };

/// Neighbouring columns with the same properties; the width is in characters of the default font, 0
/// for the standard one.
struct ColumnRange
{
    int first = 1;
    int last = 1;
    double width = 0;
    bool hidden = false;
};

/// One sheet of an open workbook. Every call throws runtime::Error once the sheet was deleted or
/// its workbook closed. Rows and columns count from 1. Dates are what the clock on the wall shows,
/// in UTC; a time without a day stands on 1899-12-30.
class Worksheet
{
public:
    Worksheet(Workbook& book, QString name) : m_book(&book), m_name(std::move(name)) {}
    Worksheet(const Worksheet&) = delete;
    Worksheet& operator=(const Worksheet&) = delete;

    const QString& Name() const;
    /// Throws runtime::Error for a name that no sheet can have: empty, longer than 31 characters,
    /// with one of : \ / ? * [ ] or an apostrophe at an end, or that of another sheet (ignoring
    /// case). The sheet keeps its name then.
    void setName(const QString& name);
    static constexpr int longestName = 31;

    /// Takes the sheet out of its workbook. Throws runtime::Error for the last visible one.
    void Delete();

    /// The content of one cell, Null if it is empty. Throws runtime::Error outside the grid.
    const runtime::Value& Cells(int row, int column) const
    {
        check(row, column);
        return m_cells.value(row, column);
    }
    /// Fills a cell; Null empties it. Throws runtime::Error outside the grid.
    void setCell(int row, int column, runtime::Value value);
    /// Fills a cell as `cellFromText` tells; a text of several lines gets wrapped. Throws
    /// runtime::Error outside the grid.
    void setCellText(int row, int column, const QString& text);

    /// All cells of the grid.
    SheetRange Cells() { return {*this, wholeGrid}; }
    /// Any two opposite corners; throws runtime::Error if one is outside the grid.
    SheetRange Range(int row, int column, int otherRow, int otherColumn);
    SheetRange Range(const CellRange& block);

    /// How a cell looks.
    const CellFormat& format(int row, int column) const;
    const FormatTable& formats() const { return m_formats; }

    PageLayout& PageSetup();
    const PageLayout& PageSetup() const;

    /// Breaks pages above this row.
    void addPageBreak(int row);
    /// Rows that begin a page, ascending.
    const std::vector<int>& pageBreaks() const;

    /// Puts a picture file at the sheet's corner. Throws runtime::Error as `readPicture` does.
    Picture& insertPicture(const QString& path);
    const std::deque<Picture>& pictures() const;

    /// True while an automatic filter is on.
    bool AutoFilterMode() const;
    /// The block that it works on.
    std::optional<CellRange> autoFilter() const;
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

    /// As they were set; the merges of a damaged file may overlap, see `settledMerges`.
    const std::vector<CellRange>& mergedRanges() const;
    /// For readers: adds a merge without looking for older ones.
    void merge(const CellRange& range);
    /// Merges that do not overlap and have more than one cell, from top to bottom: of those in each
    /// other's way, the upper one stays, of two in one row the left one.
    std::vector<CellRange> settledMerges() const;

    bool isRowHidden(int row) const;
    void setRowState(int row, RowState state);
    /// In points; Row::defaultHeight if it was never set.
    double rowHeight(int row) const;
    void setRowHeight(int row, double points);
    /// In points: the height that was set, else what the cells of the row need, 0 for a hidden row.
    double shownRowHeight(int row) const;
    /// Upper edge of a row, in points from the sheet's top.
    double rowTop(int row) const;
    /// Height of a row without content, in points.
    static constexpr double standardRowHeight = 13.5;

    /// Columns with a width of their own or hidden, as they were set.
    const std::vector<ColumnRange>& columns() const;
    void addColumns(const ColumnRange& columns);
    /// In characters of the default font, 0 hides; throws runtime::Error outside 0 to 255.
    void setColumnWidth(int first, int last, double width);
    /// Width of a column, standardColumnWidth if it was never set, 0 if it is hidden.
    double shownColumnWidth(int column) const;
    static constexpr double standardColumnWidth = 8.38;
    /// Left edge of a column, in points from the sheet's left.
    double columnLeft(int column) const;

    Visibility visibility() const;
    void setVisibility(Visibility visibility);

    /// The cells themselves, for readers and writers.
    CellTable& table() { return m_cells; }
    const CellTable& table() const { return m_cells; }

private:
    friend class Workbook;
    friend class SheetRange;

    void check() const
    {
        if (m_book == nullptr)
            refuseGone();
    }
    void check(int row, int column) const
    {
        check();
        if (row < 1 || row > lastGridRow || column < 1 || column > lastGridColumn)
            refusePlace(row, column);
    }
    void checkBlock(const CellRange& block) const;
    [[noreturn]] static void refuseClosed();
    [[noreturn]] void refuseGone() const;
    [[noreturn]] static void refusePlace(int row, int column);
    void close();
    /// Notes that the workbook is no longer as it was saved.
    void changed();

    Workbook* m_book; // null once the workbook was closed or the sheet deleted
    bool m_deleted = false;
    QString m_name;
    CellTable m_cells;
    FormatTable m_formats;
    PageLayout m_page;
    std::vector<int> m_pageBreaks;
    std::deque<Picture> m_pictures; // their owner may hold references
    std::optional<CellRange> m_autoFilter;
    std::vector<CellRange> m_merged;
    std::vector<ColumnRange> m_columns;
    Visibility m_visibility = Visibility::Visible;
};

} // namespace excel
