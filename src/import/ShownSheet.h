#pragma once

#include <vector>

#include "import/tidy/Proposal.h"
#include "platform/grid/FlexGrid.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// A sheet that is to be tidied as its screen shows it: the first rows, and of the others those
/// that are left out.
struct ShownSheet
{
    static constexpr int RowNumberColumn = 0;
    static constexpr int FateColumn = 1;
    /// The first column of the sheet.
    static constexpr int FirstColumn = 2;
    /// So many rows are shown whatever becomes of them.
    static constexpr int firstRows = 200;
    static constexpr int mostRows = 1000;
    /// A cell shows no more letters.
    static constexpr int mostLetters = 60;

    /// Row 0 leaves room for the choices; the fixed columns hold the row's number and what becomes
    /// of it, which is nothing for a row that is taken.
    grid::FlexGrid grid;
    /// The sheet's row of each row of the grid; 0 for row 0.
    std::vector<int> rows;
    /// The sheet's column of each column from FirstColumn on.
    std::vector<int> columns;
    /// Whether the row of the grid is left out.
    std::vector<bool> isLeftOut;
};

ShownSheet shownSheet(const excel::Worksheet& sheet, const tidy::Proposal& proposal,
                      const tidy::SheetProposal& sheetProposal);

} // namespace importing
