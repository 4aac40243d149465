#pragma once

#include "workbooks/model/Worksheet.h"
#include "workbooks/writers/XlsxFormats.h"
#include "workbooks/writers/XlsxPackage.h"
#include "workbooks/writers/XlsxRows.h"

namespace excel {

/// Writes one sheet into a file in the making.
class XlsxSheetWriter
{
public:
    XlsxSheetWriter(const Worksheet& sheet, lxw_worksheet* target, XlsxFormats& formats,
                    SharedTexts& texts);

    /// Writes all but the columns and rows, which it gives.
    SheetContent write();

private:
    std::string columns();
    void writePage();
    void writeMerges();
    void writeRows();
    void beginRow(int row, const Row& content);
    void writeCell(const Cell& cell);
    void writeBlank(const Cell& cell);
    void writeDate(const Cell& cell);
    void writeNumber(const Cell& cell, double number);
    void writeText(const Cell& cell, const QString& text);

    const Worksheet& m_sheet;
    lxw_worksheet* m_target;
    SheetFormats m_formats;
    XlsxRows m_rows;
};

} // namespace excel
