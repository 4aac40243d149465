#pragma once

#include <optional>

#include "workbooks/model/Loss.h"
#include "workbooks/model/Worksheet.h"
#include "workbooks/readers/XlsGlobals.h"

namespace excel {

/// Fills a sheet from the records between its BOF and its EOF.
class XlsSheetReader
{
public:
    XlsSheetReader(Worksheet& sheet, const XlsGlobals& globals, Budget& budget)
        : m_sheet(sheet), m_globals(globals), m_budget(budget)
    {
    }

    /// Reads from behind the sheet's BOF. `filterRange` is the block of an automatic filter.
    void read(XlsStream& stream, const std::optional<CellRange>& filterRange);

    Losses losses;

private:
    void take(const XlsRecord& record);
    void takeCell(const XlsRecord& record);
    void takeFormula(const XlsRecord& record);
    void takeMultipleRk(const XlsRecord& record);
    void takeRow(const XlsRecord& record);
    void takeColumns(const XlsRecord& record);
    void takeMerged(const XlsRecord& record);
    void noteLoss(const XlsRecord& record);
    void add(int row, int column, const runtime::Value& value);

    Worksheet& m_sheet;
    const XlsGlobals& m_globals;
    Budget& m_budget;
    bool m_filtered = false;
    // Place of a formula whose text stands in a later record.
    int m_textRow = -1;
    int m_textColumn = -1;
};

} // namespace excel
