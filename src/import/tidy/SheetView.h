#pragma once

#include <vector>

#include <QHash>
#include <QString>

#include "import/tidy/Proposal.h"
#include "workbooks/model/Worksheet.h"

namespace tidy {

/// A cell's content as text; a whole number with all its digits.
QString cellText(const runtime::Value& cell);
/// A number of 16 digits or more, of which a spreadsheet keeps 15.
bool hasLostDigits(const runtime::Value& cell);

struct FilledCell
{
    int column = 0;
    runtime::Value value;
};

/// The headings of one column in both rows; `lower` is empty where there is one row, or one cell.
struct HeadingCell
{
    QString upper;
    QString lower;

    /// Both as one text.
    QString joined() const { return upper + lower; }
    bool isEmpty() const { return upper.isEmpty() && lower.isEmpty(); }
};

/// A sheet as far as an import can look at it: its cells that hold more than blanks, and the texts
/// of merged cells wherever they are shown. The sheet must outlive it.
class SheetView
{
public:
    /// As far as an import looks.
    static constexpr int LastColumn = 255;
    /// Rows of one sheet that are looked at.
    static constexpr int LastRow = 70000;

    explicit SheetView(const excel::Worksheet& sheet);

    const excel::Worksheet& sheet() const { return m_sheet; }
    int lastRow() const { return m_lastRow; }
    int lastColumn() const { return m_lastColumn; }
    /// True if the sheet goes on behind LastRow or LastColumn.
    bool isCutBelow() const { return m_sheet.lastUsedRow() > LastRow; }
    bool isCutAside() const { return m_sheet.lastUsedColumn() > LastColumn; }

    /// The cells of a row with a content, ascending.
    std::vector<FilledCell> cells(int row) const;
    runtime::Value value(int row, int column) const { return m_sheet.table().value(row, column); }
    QString text(int row, int column) const { return cellText(value(row, column)); }
    /// The columns of a row with formulas whose results the file does not hold, ascending.
    std::vector<int> columnsWithoutResult(int row) const;
    /// The text of a cell, or of the merged block that it belongs to.
    QString shownText(int row, int column) const;
    /// The merged block that holds a cell; null if none does.
    const excel::CellRange* blockAt(int row, int column) const;
    /// The row behind `row` that may hold something.
    int nextRow(int row) const { return m_sheet.table().nextRow(row + 1); }

    /// The headings of columns 1 to lastColumn(), from place 0.
    std::vector<HeadingCell> headings(int first, int count) const;

private:
    /// Rows whose blocks are known beforehand: a sheet may have very many of them.
    static constexpr int HeadRows = 100;

    void noteBlock(const excel::CellRange& block, int number);
    HeadingCell headingOf(int first, int count, int column) const;

    const excel::Worksheet& m_sheet;
    int m_lastRow;
    int m_lastColumn;
    /// Number of the block that covers a cell of the head rows, from 1; 0 for none.
    std::vector<int> m_headBlocks;
};

} // namespace tidy
