#include "export/ExportSheets.h"

#include "export/ExportTrap.h"

namespace exporting {

namespace {

constexpr double inchesOfOneCentimetre = 0.393700787401575;

void setWidths(excel::Worksheet& sheet)
{
    exportTrap([&] { sheet.setColumnWidth(1, 35, 4); });
    exportTrap([&] { sheet.setColumnWidth(1, 1, 7.5); });
    exportTrap([&] { sheet.setColumnWidth(4, 4, 5.75); });
    exportTrap([&] { sheet.setColumnWidth(7, 7, 5.25); });
}

void setPage(excel::PageLayout& page)
{
    const double margin = excel::Application::InchesToPoints(inchesOfOneCentimetre);
    page.LeftMargin = page.RightMargin = page.TopMargin = page.BottomMargin = margin;
    page.Orientation = excel::Orientation::Landscape;
    page.PaperSize = excel::paper::b5;
}

} // namespace

ExportSheets::ExportSheets(excel::Application& application)
    : m_book(application.Workbooks().Add()), m_sheet(&m_book.Worksheets().Item(m_number))
{
    layOut();
}

void ExportSheets::layOut()
{
    setWidths(*m_sheet);
    exportTrap([&] {
        m_sheet->Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center);
        m_sheet->Cells().setVerticalAlignment(excel::VerticalAlignment::Center);
    });
    exportTrap([&] { setPage(m_sheet->PageSetup()); });
}

bool ExportSheets::isFull() const
{
    bool full = false;
    exportTrap(
        [&] { full = int(m_sheet->pageBreaks().size()) >= excel::Worksheet::mostPageBreaks; });
    return full;
}

void ExportSheets::beginNext()
{
    const excel::Workbook::SheetList sheets = m_book.Worksheets();
    ++m_number;
    m_sheet = m_number <= sheets.Count() ? &sheets.Item(m_number)
                                         : &sheets.Add(excel::Beside::After, *m_sheet);
    layOut();
}

} // namespace exporting
