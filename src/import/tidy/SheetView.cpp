#include "import/tidy/SheetView.h"

#include <algorithm>
#include <cmath>

namespace tidy {

using runtime::Value;

namespace {

/// Whole numbers below this are exact.
constexpr double exactNumbers = 1e15;

bool isBlankText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.isSpace(); });
}

/// Headings that go over several columns without being merged: an upper one counts for the columns
/// behind it that have a lower one alone.
void spreadUpper(std::vector<HeadingCell>& headings)
{
    for (size_t place = 1; place < headings.size(); ++place) {
        HeadingCell& heading = headings[place];
        if (heading.upper.isEmpty() && !heading.lower.isEmpty()
            && !headings[place - 1].lower.isEmpty())
            heading.upper = headings[place - 1].upper;
    }
}

} // namespace

QString cellText(const Value& cell)
{
    if (cell.kind() == Value::Kind::Double) {
        const double number = cell.toDouble();
        constexpr double mostDigits = 1e18;
        if (std::fabs(number) >= exactNumbers && std::fabs(number) < mostDigits)
            return QString::number(qint64(number));
    }
    return cell.text().trimmed();
}

bool hasLostDigits(const Value& cell)
{
    return cell.isNumber() && std::fabs(cell.toDouble()) >= exactNumbers;
}

SheetView::SheetView(const excel::Worksheet& sheet)
    : m_sheet(sheet),
      m_lastRow(std::min({sheet.table().lastRow(), LastRow})),
      m_lastColumn(std::min({sheet.table().lastColumn(), LastColumn})),
      m_headBlocks(size_t(HeadRows) * LastColumn)
{
    int number = 0;
    for (const excel::CellRange& block : sheet.merges().settled())
        noteBlock(block, ++number);
}

void SheetView::noteBlock(const excel::CellRange& block, int number)
{
    const int lastRow = std::min(block.lastRow, HeadRows);
    const int lastColumn = std::min(block.lastColumn, LastColumn);
    for (int row = block.firstRow; row <= lastRow; ++row) {
        for (int column = block.firstColumn; column <= lastColumn; ++column)
            m_headBlocks[size_t((row - 1) * LastColumn + column - 1)] = number;
    }
}

const excel::CellRange* SheetView::blockAt(int row, int column) const
{
    if (row > HeadRows || column > LastColumn)
        return m_sheet.merges().at(row, column);
    const int number = m_headBlocks[size_t((row - 1) * LastColumn + column - 1)];
    return number > 0 ? &m_sheet.merges().settled()[size_t(number - 1)] : nullptr;
}

std::vector<FilledCell> SheetView::cells(int row) const
{
    std::vector<FilledCell> filled;
    const excel::Row* found = m_sheet.table().row(row);
    if (found == nullptr)
        return filled;
    filled.reserve(found->cells.size());
    for (const excel::Cell& cell : found->cells) {
        if (cell.column() > LastColumn)
            break;
        if (cell.isNull())
            continue;
        Value value = cell.value();
        if (value.kind() != Value::Kind::Text || !isBlankText(value.text()))
            filled.push_back({cell.column(), std::move(value)});
    }
    return filled;
}

/// A reader leaves an empty cell without a format for such a formula, and nowhere else.
std::vector<int> SheetView::columnsWithoutResult(int row) const
{
    std::vector<int> columns;
    const excel::Row* found = m_sheet.table().row(row);
    if (found == nullptr)
        return columns;
    for (const excel::Cell& cell : found->cells) {
        if (cell.isNull() && cell.format() == 0 && cell.column() <= LastColumn)
            columns.push_back(cell.column());
    }
    return columns;
}

QString SheetView::shownText(int row, int column) const
{
    const excel::CellRange* block = blockAt(row, column);
    return block != nullptr ? text(block->firstRow, block->firstColumn) : text(row, column);
}

HeadingCell SheetView::headingOf(int first, int count, int column) const
{
    const QString upper = shownText(first, column);
    if (count < 2)
        return {upper, {}};
    const excel::CellRange* block = blockAt(first, column);
    if (block != nullptr && block->contains(first + 1, column))
        return {upper, {}};
    return {upper, shownText(first + 1, column)};
}

std::vector<HeadingCell> SheetView::headings(int first, int count) const
{
    std::vector<HeadingCell> headings;
    headings.reserve(size_t(m_lastColumn));
    for (int column = 1; column <= m_lastColumn; ++column)
        headings.push_back(headingOf(first, count, column));
    if (count > 1)
        spreadUpper(headings);
    return headings;
}

} // namespace tidy
