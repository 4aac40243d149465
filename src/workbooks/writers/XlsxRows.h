#pragma once

#include <string>
#include <vector>

#include <QString>

#include <xlsxwriter.h>

#include "workbooks/model/SheetGeometry.h"
#include "workbooks/writers/ScratchText.h"
#include "workbooks/writers/SharedTexts.h"

namespace excel {

/// The rows of a sheet as they stand in its file. The library would build a tree of all cells and
/// print them one by one at the end. Rows come from top to bottom, their cells from left to right.
/// A `style` is the number of a format in the file, 0 for none.
class XlsxRows
{
public:
    XlsxRows(lxw_worksheet* target, SharedTexts& texts);

    /// Begins a row; one without cells is left out.
    void beginRow(int row);
    /// Begins a row that has a height of its own or is hidden; the height of all rows is not
    /// written.
    void beginRow(int row, double height, RowState state);
    void addBlank(int column, int style);
    void addNumber(int column, int style, double number);
    void addTruth(int column, int style, bool truth);
    void addText(int column, int style, const QString& text);

    /// All rows; nothing can be added any more.
    ScratchText take();

private:
    struct RowHead
    {
        int row;
        double height;
        RowState state;
        bool isSet;
        size_t cells; // where they begin in m_cells
    };

    void start(const RowHead& head);
    void noteUse(int row, int column);
    void beginCell(int column, int style, const char* rest);
    void endBlock();
    std::string rowTag(const RowHead& head, const std::string& spans) const;
    const std::string& letters(int column);

    lxw_worksheet* m_target;
    SharedTexts& m_texts;
    std::vector<std::string> m_letters; // of the columns
    ScratchText m_rows;
    // Rows in hand, 16 at most: they have their first and last columns in common.
    std::vector<RowHead> m_heads;
    std::string m_cells;
    std::string m_rowNumber;
    int m_firstColumn = 0; // 0 as long as there is no cell
    int m_lastColumn = 0;
};

} // namespace excel
