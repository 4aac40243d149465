#include "workbooks/writers/XlsxRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace excel {

namespace {

constexpr int rowsOfABlock = 16;
constexpr int certainDigits = 16;
constexpr double largestWhole = 1e15;

int blockOf(int row)
{
    return (row - 1) / rowsOfABlock;
}

template <class... Format> void append(std::string& text, const Format&... number)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number...);
    text.append(digits.data(), end.ptr);
}

/// A number as "%.16G" prints it.
void appendNumber(std::string& text, double number)
{
    const bool isWhole = std::floor(number) == number && std::abs(number) < largestWhole;
    if (isWhole && (number != 0 || !std::signbit(number)))
        return append(text, qint64(number));
    const size_t begin = text.size();
    append(text, number, std::chars_format::general, certainDigits);
    std::replace(text.begin() + std::ptrdiff_t(begin), text.end(), 'e', 'E');
}

} // namespace

XlsxRows::XlsxRows(lxw_worksheet* target, SharedTexts& texts) : m_target(target), m_texts(texts) {}

const std::string& XlsxRows::letters(int column)
{
    while (m_letters.size() < size_t(column))
        m_letters.push_back(columnName(int(m_letters.size()) + 1).toStdString());
    return m_letters[size_t(column - 1)];
}

void XlsxRows::beginRow(int row)
{
    start({row, m_target->default_row_height, RowState::Shown, false, 0});
}

void XlsxRows::beginRow(int row, double height, RowState state)
{
    start({row, height, state, true, 0});
    noteUse(row, m_target->dim_colmin == LXW_COL_MAX ? 1 : m_target->dim_colmin + 1);
}

void XlsxRows::start(const RowHead& head)
{
    if (!m_heads.empty() && blockOf(m_heads.back().row) != blockOf(head.row))
        endBlock();
    m_heads.push_back(head);
    m_heads.back().cells = m_cells.size();
    m_rowNumber = std::to_string(head.row);
}

/// Counts a cell to those that the sheet uses.
void XlsxRows::noteUse(int row, int column)
{
    m_target->dim_rowmin = std::min(m_target->dim_rowmin, lxw_row_t(row - 1));
    m_target->dim_rowmax = std::max(m_target->dim_rowmax, lxw_row_t(row - 1));
    m_target->dim_colmin = std::min(m_target->dim_colmin, lxw_col_t(column - 1));
    m_target->dim_colmax = std::max(m_target->dim_colmax, lxw_col_t(column - 1));
}

/// Begins the element of a cell; `rest` follows its style.
void XlsxRows::beginCell(int column, int style, const char* rest)
{
    m_cells += "<c r=\"";
    m_cells += letters(column);
    m_cells += m_rowNumber;
    if (style != 0) {
        m_cells += "\" s=\"";
        append(m_cells, style);
    }
    m_cells += rest;
    m_firstColumn = m_firstColumn == 0 ? column : std::min(m_firstColumn, column);
    m_lastColumn = std::max(m_lastColumn, column);
    noteUse(m_heads.back().row, column);
}

void XlsxRows::addBlank(int column, int style)
{
    beginCell(column, style, "\"/>");
}

void XlsxRows::addNumber(int column, int style, double number)
{
    beginCell(column, style, R"("><v>)");
    appendNumber(m_cells, number);
    m_cells += "</v></c>";
}

void XlsxRows::addTruth(int column, int style, bool truth)
{
    beginCell(column, style, truth ? R"(" t="b"><v>1</v></c>)" : R"(" t="b"><v>0</v></c>)");
}

void XlsxRows::addText(int column, int style, const QString& text)
{
    beginCell(column, style, R"(" t="s"><v>)");
    append(m_cells, m_texts.numberOf(text));
    m_cells += "</v></c>";
}

/// The begin of a row's tag.
std::string XlsxRows::rowTag(const RowHead& head, const std::string& spans) const
{
    std::string tag = R"(<row r=")" + std::to_string(head.row) + R"(" spans=")" + spans + '"';
    const bool hasHeight = head.height != m_target->default_row_height;
    if (hasHeight) {
        tag += R"( ht=")";
        appendNumber(tag, head.height);
        tag += '"';
    }
    if (head.state == RowState::Hidden)
        tag += R"( hidden="1")";
    if (hasHeight)
        tag += R"( customHeight="1")";
    return tag;
}

void XlsxRows::endBlock()
{
    const std::string spans = std::to_string(m_firstColumn) + ':' + std::to_string(m_lastColumn);
    for (size_t i = 0; i < m_heads.size(); ++i) {
        const RowHead& head = m_heads[i];
        const size_t end = i + 1 < m_heads.size() ? m_heads[i + 1].cells : m_cells.size();
        const bool isEmpty = end == head.cells;
        if (isEmpty && !head.isSet)
            continue;
        m_rows.append(rowTag(head, isEmpty ? "1:1" : spans));
        m_rows.append(isEmpty ? "/>" : ">");
        if (isEmpty)
            continue;
        m_rows.append(std::string_view(m_cells).substr(head.cells, end - head.cells));
        m_rows.append("</row>");
    }
    m_heads.clear();
    m_cells.clear();
    m_firstColumn = 0;
    m_lastColumn = 0;
}

ScratchText XlsxRows::take()
{
    endBlock();
    return std::move(m_rows);
}

} // namespace excel
