#pragma once

#include <vector>

#include "workbooks/model/Worksheet.h"
#include "workbooks/writers/XlsxFormats.h"

namespace excel {

/// Writes one sheet into a file in the making.
class XlsxSheetWriter
{
public:
    XlsxSheetWriter(const Worksheet& sheet, lxw_worksheet* target, XlsxFormats& formats);

    void write();

private:
    void writeColumns();
    void writePage();
    void writeMerges();
    void writeRows();
    void writeRowSize(int row, const Row& content);
    void writeCell(int row, const Cell& cell);
    void writeDate(int row, const Cell& cell);
    void writeNumber(int row, const Cell& cell, double number);
    void writeText(int row, const Cell& cell, const QString& text);
    void writePictures();
    void openMergesOf(int row);
    bool isCovered(int row, int column) const;

    const Worksheet& m_sheet;
    lxw_worksheet* m_target;
    SheetFormats m_formats;
    std::vector<CellRange> m_merges;
    size_t m_nextMerge = 0;
    std::vector<CellRange> m_openMerges; // that reach the row in hand
};

} // namespace excel
