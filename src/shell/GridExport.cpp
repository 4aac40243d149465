#include "shell/GridExport.h"

#include "platform/runtime/Trap.h"
#include "workbooks/model/GridToSheet.h"

namespace shell {

void copyGridToWorkbook(const grid::FlexGrid& grid, excel::Application& application)
{
    const runtime::Trap trap{" - Private Sub mMfgToXls_Click/FormMain"};
    trap([&] {
        excel::Worksheet& sheet = application.Workbooks().Add().Worksheets().Item(1);
        sheet.Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center);
        int row = 1;
        excel::GridBlockToSheet(
            grid, &sheet, row,
            {.firstRow = 0, .lastRow = grid.Rows() - 1, .firstCol = 0, .lastCol = grid.Cols() - 1});
        application.setVisible(true);
    });
}

} // namespace shell
