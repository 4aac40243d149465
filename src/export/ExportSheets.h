#pragma once

#include "workbooks/model/Application.h"

namespace exporting {

/// The workbook of one export: the sheet that is being filled, and a further one of the same layout
/// where a sheet can take no more page breaks.
class ExportSheets
{
public:
    /// Rows of a printed page.
    static constexpr int pageRows = 31;

    /// Adds a workbook to the application and lays its first sheet out.
    explicit ExportSheets(excel::Application& application);

    excel::Workbook& book() { return m_book; }
    excel::Worksheet& sheet() { return *m_sheet; }
    /// True if the sheet can take no more page breaks.
    bool isFull() const;
    /// Goes on with the next sheet.
    void beginNext();

private:
    void layOut();

    excel::Workbook& m_book;
    int m_number = 1; // of the sheet in the workbook
    excel::Worksheet* m_sheet;
};

} // namespace exporting
