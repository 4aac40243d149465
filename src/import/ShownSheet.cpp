#include "import/ShownSheet.h"

#include <algorithm>

#include <QHash>

namespace importing {

using namespace Qt::StringLiterals;

namespace {

/// The code of the control for cells whose texts begin at the left.
constexpr int leftAligned = 1;
constexpr int twipsPerLetter = 110;
constexpr int leastWidth = 1300;
constexpr int mostWidth = 3000;
constexpr int choiceHeight = 330;
/// The longest texts of a column stand among the first rows.
constexpr int rowsMeasured = 40;

/// Why a row is left out, by its number.
using Fates = QHash<int, QString>;

Fates fatesOf(const tidy::Proposal& proposal, const tidy::SheetProposal& sheet)
{
    Fates fates;
    for (const tidy::Remark& remark : proposal.remarks) {
        if (remark.isLeftOut && remark.sheet == sheet.name)
            fates.insert(remark.row, u"没有取"_s);
    }
    for (const tidy::LeftOutRows& rows : sheet.leftOut) {
        for (int row = rows.first; row <= rows.last && row <= sheet.lastRow; ++row)
            fates.insert(row, rows.reason);
    }
    return fates;
}

QString shownText(const excel::Worksheet& sheet, int row, int column)
{
    return sheet.Cells(row, column).text().left(ShownSheet::mostLetters).simplified();
}

/// Wide letters count twice.
int lettersOf(const QString& text)
{
    int letters = 0;
    for (const QChar letter : text)
        letters += letter.unicode() < 0x1100 ? 1 : 2;
    return letters;
}

/// A title is wider than the column that it begins in.
void setWidths(ShownSheet& shown)
{
    grid::FlexGrid& grid = shown.grid;
    for (int col = 0; col < grid.Cols(); ++col) {
        int letters = 0;
        for (int row = 0; row < std::min(grid.Rows(), rowsMeasured); ++row) {
            if (col < ShownSheet::FirstColumn || !shown.isLeftOut[size_t(row)])
                letters = std::max(letters, lettersOf(grid.TextMatrix(row, col)));
        }
        const int least = col < ShownSheet::FirstColumn ? 0 : leastWidth;
        grid.setColWidth(col, std::clamp(letters * twipsPerLetter, least, mostWidth));
    }
}

void addRow(ShownSheet& shown, const excel::Worksheet& sheet, int row, const Fates& fates)
{
    const int at = shown.grid.Rows();
    shown.grid.setRows(at + 1);
    shown.rows.push_back(row);
    shown.isLeftOut.push_back(fates.contains(row));
    shown.grid.setTextMatrix(at, ShownSheet::RowNumberColumn, QString::number(row));
    shown.grid.setTextMatrix(at, ShownSheet::FateColumn, fates.value(row));
    int col = ShownSheet::FirstColumn;
    for (const int column : shown.columns)
        shown.grid.setTextMatrix(at, col++, shownText(sheet, row, column));
}

} // namespace

ShownSheet shownSheet(const excel::Worksheet& sheet, const tidy::Proposal& proposal,
                      const tidy::SheetProposal& sheetProposal)
{
    ShownSheet shown;
    for (const tidy::ColumnProposal& column : sheetProposal.columns)
        shown.columns.push_back(column.column);
    shown.rows = {0};
    shown.isLeftOut = {false};
    shown.grid.setRows(1);
    shown.grid.setCols(ShownSheet::FirstColumn + int(shown.columns.size()));
    shown.grid.FixedCols = ShownSheet::FirstColumn;
    shown.grid.setColAlignment(-1, leftAligned);
    shown.grid.setRowHeight(0, choiceHeight);
    shown.grid.setTextMatrix(0, ShownSheet::RowNumberColumn, u"行"_s);
    shown.grid.setTextMatrix(0, ShownSheet::FateColumn, u"不取的原因"_s);
    const Fates fates = fatesOf(proposal, sheetProposal);
    for (int row = 1; row <= sheetProposal.lastRow; ++row) {
        if (row <= ShownSheet::firstRows
            || (fates.contains(row) && shown.grid.Rows() <= ShownSheet::mostRows))
            addRow(shown, sheet, row, fates);
    }
    setWidths(shown);
    return shown;
}

} // namespace importing
