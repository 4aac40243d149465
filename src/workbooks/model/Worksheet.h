#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "platform/runtime/Value.h"
#include "workbooks/model/CellTable.h"
#include "workbooks/model/Drawings.h"
#include "workbooks/model/FormatTable.h"
#include "workbooks/model/PageLayout.h"
#include "workbooks/model/SheetGeometry.h"
#include "workbooks/model/SheetMerges.h"
#include "workbooks/model/SheetRange.h"

namespace excel {

class Workbook;

enum class Visibility { Visible, Hidden, VeryHidden };

/// One sheet of an open workbook, put together of its cells, formats, merges, geometry and
/// drawings. Every call throws runtime::Error once the sheet was deleted or its workbook closed.
/// Rows and columns count from 1. Dates are what the clock on the wall shows, in UTC; a time
/// without a day stands on `dayZero`.
class Worksheet
{
public:
    Worksheet(Workbook& book, QString name);
    Worksheet(const Worksheet&) = delete;
    Worksheet& operator=(const Worksheet&) = delete;

    const QString& Name() const;
    /// Throws runtime::Error for a name that no sheet can have: empty, longer than 31 characters,
    /// with one of : \ / ? * [ ] or an apostrophe at an end, or that of another sheet (ignoring
    /// case). The sheet keeps its name then.
    void setName(const QString& name);
    static constexpr int longestName = 31;

    /// Brings the sheet forward in its workbook.
    void Activate();
    /// Takes the sheet out of its workbook. Throws runtime::Error for the last visible one.
    void Delete();

    Visibility visibility() const;
    void setVisibility(Visibility visibility);

    /// The content of one cell, Null if it is empty. Throws runtime::Error outside the grid.
    runtime::Value Cells(int row, int column) const
    {
        check(row, column);
        return m_cells.value(row, column);
    }
    /// Fills a cell; Null empties it. Throws runtime::Error outside the grid.
    void setCell(int row, int column, const runtime::Value& value);
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

    /// Row and column of the last used cell; 1 on an empty sheet. Emptying cells does not bring
    /// them back.
    int lastUsedRow() const;
    int lastUsedColumn() const;

    /// In characters of the default font, 0 hides; throws runtime::Error outside 0 to 255.
    void setColumnWidth(int first, int last, double width);
    /// In points; throws runtime::Error outside 0 to 409.
    void setRowHeight(int row, double points);
    void setRowState(int row, RowState state);

    PageLayout& PageSetup();
    const PageLayout& PageSetup() const;
    /// Breaks pages above this row. Throws runtime::Error beyond `mostPageBreaks`.
    void addPageBreak(int row);
    /// As many as programs for spreadsheets take on a sheet.
    static constexpr int mostPageBreaks = 1023;
    /// Rows that begin a page, ascending.
    const std::vector<int>& pageBreaks() const;

    /// Puts a picture file at the sheet's corner. Throws runtime::Error as `readPicture` does.
    Picture& insertPicture(const QString& path);
    // Places and sizes are in points from the sheet's corner.
    Chart& addChart(const QRectF& place);
    DrawnLine& addLine(const QPointF& from, const QPointF& to);
    TextLabel& addLabel(const QRectF& place);
    const Drawings& drawings() const;
    /// A drawing, counted from 1 in the order of their making. Throws runtime::Error if there is no
    /// such one.
    Shape& Shapes(int number);

    /// True while an automatic filter is on.
    bool AutoFilterMode() const;
    /// The block that it works on.
    std::optional<CellRange> autoFilter() const;
    /// Switches the automatic filter off and shows the rows that it hid. Without one: nothing, and
    /// no change of the workbook.
    void AutoFilter();
    /// For readers: switches an automatic filter on over `range`, its headings included; hides
    /// nothing itself.
    void setAutoFilter(const CellRange& range);

    // The parts of the sheet. Cells and formats answer also when its workbook was closed: no cell
    // has a content then.

    const CellTable& table() const { return m_cells; }
    /// For readers.
    CellTable& table();
    const FormatTable& formats() const { return m_formats; }
    const SheetMerges& merges() const;
    SheetMerges& merges();
    const SheetGeometry& geometry() const;
    SheetGeometry& geometry();

private:
    friend class Workbook;
    friend class SheetRange;

    void check() const
    {
        if (m_book == nullptr)
            refuseGone();
    }
    template <class Kind, class... Arguments> Kind& draw(Arguments&&... arguments);
    void check(int row, int column) const
    {
        check();
        checkCell(row, column);
    }
    [[noreturn]] static void refuseClosed();
    [[noreturn]] void refuseGone() const;
    void close();

    Workbook* m_book; // null once the workbook was closed or the sheet deleted
    Changes& m_changes;
    bool m_deleted = false;
    QString m_name;
    Visibility m_visibility = Visibility::Visible;
    CellTable m_cells;
    FormatTable m_formats;
    SheetMerges m_merges;
    SheetGeometry m_geometry;
    Drawings m_drawings;
    PageLayout m_page;
    std::vector<int> m_pageBreaks;
    std::optional<CellRange> m_autoFilter;
};

} // namespace excel
