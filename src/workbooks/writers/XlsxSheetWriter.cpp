#include "workbooks/writers/XlsxSheetWriter.h"

#include <algorithm>
#include <cmath>

#include <QLocale>

#include "platform/runtime/FormulaText.h"
#include "workbooks/model/ColumnWidth.h"
#include "workbooks/model/DayNumber.h"
#include "workbooks/model/Points.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;
using runtime::Value;

// The library walks through every cell of a merge.
constexpr qint64 mostMergedCells = 20'000'000;
static_assert(Worksheet::mostPageBreaks <= LXW_BREAKS_MAX);

lxw_row_t rowIndex(int row)
{
    return lxw_row_t(row - 1);
}

lxw_col_t columnIndex(int column)
{
    return lxw_col_t(column - 1);
}

/// All columns of the grid: those with sizes of their own and, of the standard width, the others.
std::vector<ColumnRange> withOthers(const std::vector<ColumnRange>& ranges)
{
    std::vector<ColumnRange> columns;
    const auto fillTo = [&columns](int last) {
        const int first = columns.empty() ? 1 : columns.back().last + 1;
        if (first <= last)
            columns.push_back({first, last, SheetGeometry::standardColumnWidth, false});
    };
    for (const ColumnRange& range : ranges) {
        fillTo(range.first - 1);
        columns.push_back(range);
    }
    fillTo(lastGridColumn);
    return columns;
}

/// The merges without those that would take too long.
std::vector<CellRange> writableMerges(const Worksheet& sheet)
{
    std::vector<CellRange> merges = sheet.merges().settled();
    qint64 left = mostMergedCells;
    std::erase_if(merges, [&left](const CellRange& merge) {
        const qint64 cells =
            qint64(merge.lastRow - merge.firstRow + 1) * (merge.lastColumn - merge.firstColumn + 1);
        if (cells > left)
            return true;
        left -= cells;
        return false;
    });
    return merges;
}

std::string columnTag(const ColumnRange& range, int style)
{
    const QByteArray width =
        QByteArray::number(fileWidth(range.width), 'g', QLocale::FloatingPointShortest);
    std::string tag = "<col min=\"" + std::to_string(range.first) + "\" max=\""
                      + std::to_string(range.last) + "\" width=\"" + width.toStdString() + '"';
    if (style != 0)
        tag += " style=\"" + std::to_string(style) + '"';
    if (range.hidden)
        tag += " hidden=\"1\"";
    return tag + " customWidth=\"1\"/>";
}

/// As a double, a Single such as 89.7 has digits of its own no more.
double withOwnDigits(const Value& single)
{
    const double number = single.toDouble();
    return std::isfinite(number) && number != std::floor(number) ? single.text().toDouble()
                                                                 : number;
}

/// Days as files count them, who take 1900 for a leap year; nothing for what they have no day for.
std::optional<double> fileDays(const QDateTime& moment)
{
    constexpr int lastOf1899 = 1;
    constexpr int lastBeforeLeapDay = 60;
    const qint64 day = dayZero().daysTo(moment.date());
    if (!moment.isValid() || day < 0 || day == lastOf1899)
        return std::nullopt;
    const double days =
        double(QDateTime(dayZero(), QTime(0, 0), Qt::UTC).secsTo(moment)) / secondsPerDay;
    return day > lastOf1899 && day <= lastBeforeLeapDay ? days - 1 : days;
}

} // namespace

XlsxSheetWriter::XlsxSheetWriter(const Worksheet& sheet, lxw_worksheet* target,
                                 XlsxFormats& formats, SharedTexts& texts)
    : m_sheet(sheet), m_target(target), m_formats(formats, sheet.formats()), m_rows(target, texts)
{
}

SheetContent XlsxSheetWriter::write()
{
    worksheet_set_default_row(m_target, SheetGeometry::standardRowHeight, LXW_FALSE);
    SheetContent content;
    content.columns = columns();
    writePage();
    writeMerges();
    writeRows();
    if (const std::optional<CellRange> filter = m_sheet.autoFilter())
        worksheet_autofilter(m_target, rowIndex(filter->firstRow), columnIndex(filter->firstColumn),
                             rowIndex(filter->lastRow), columnIndex(filter->lastColumn));
    content.rows = m_rows.take();
    return content;
}

std::string XlsxSheetWriter::columns()
{
    std::vector<ColumnRange> ranges = m_sheet.geometry().columns();
    int style = 0;
    if (m_formats.ofColumns() != nullptr) {
        ranges = withOthers(ranges);
        style = m_formats.styleOf(0);
    }
    if (ranges.empty())
        return {};
    std::string text = "<cols>";
    for (const ColumnRange& range : ranges)
        text += columnTag(range, style);
    return text + "</cols>";
}

void XlsxSheetWriter::writePage()
{
    const PageLayout& page = m_sheet.PageSetup();
    worksheet_set_paper(m_target, uint8_t(page.PaperSize));
    if (page.Orientation == Orientation::Landscape)
        worksheet_set_landscape(m_target);
    worksheet_set_margins(m_target, page.LeftMargin / pointsPerInch,
                          page.RightMargin / pointsPerInch, page.TopMargin / pointsPerInch,
                          page.BottomMargin / pointsPerInch);
    std::vector<lxw_row_t> breaks;
    for (const int row : m_sheet.pageBreaks())
        breaks.push_back(rowIndex(row));
    breaks.push_back(0);
    if (breaks.size() > 1)
        worksheet_set_h_pagebreaks(m_target, breaks.data());
}

void XlsxSheetWriter::writeMerges()
{
    for (const CellRange& merge : writableMerges(m_sheet))
        worksheet_merge_range(m_target, rowIndex(merge.firstRow), columnIndex(merge.firstColumn),
                              rowIndex(merge.lastRow), columnIndex(merge.lastColumn), "", nullptr);
}

void XlsxSheetWriter::writeRows()
{
    const CellTable& table = m_sheet.table();
    for (int row = table.nextRow(1); row <= table.rowLimit(); row = table.nextRow(row + 1)) {
        beginRow(row, *table.row(row));
        for (const Cell& cell : table.row(row)->cells)
            writeCell(cell);
    }
}

void XlsxSheetWriter::beginRow(int row, const Row& content)
{
    const double height = m_sheet.geometry().shownRowHeight(row);
    if (height > 0 && height == SheetGeometry::standardRowHeight)
        m_rows.beginRow(row);
    else if (height > 0)
        m_rows.beginRow(row, height, RowState::Shown);
    else
        m_rows.beginRow(
            row, content.height > 0 ? double(content.height) : SheetGeometry::standardRowHeight,
            RowState::Hidden);
}

void XlsxSheetWriter::writeCell(const Cell& cell)
{
    switch (cell.kind()) {
    case Value::Kind::Null:
    case Value::Kind::Binary:
        writeBlank(cell);
        break;
    case Value::Kind::Single:
        writeNumber(cell, withOwnDigits(cell.value()));
        break;
    case Value::Kind::Integer:
    case Value::Kind::Double:
        writeNumber(cell, cell.value().toDouble());
        break;
    case Value::Kind::Boolean:
        m_rows.addTruth(cell.column(), m_formats.styleOf(cell.format()),
                        cell.value().toDouble() != 0);
        break;
    case Value::Kind::Date:
        writeDate(cell);
        break;
    case Value::Kind::Text:
    case Value::Kind::Error:
        writeText(cell, cell.value().text());
        break;
    }
}

void XlsxSheetWriter::writeBlank(const Cell& cell)
{
    if (!m_formats.isPlain(cell.format()))
        m_rows.addBlank(cell.column(), m_formats.styleOf(cell.format()));
}

void XlsxSheetWriter::writeNumber(const Cell& cell, double number)
{
    if (std::isfinite(number))
        m_rows.addNumber(cell.column(), m_formats.styleOf(cell.format()), number);
    else
        writeText(cell, u"#NUM!"_s);
}

void XlsxSheetWriter::writeDate(const Cell& cell)
{
    const std::optional<double> days = fileDays(cell.value().toDateTime());
    if (!days) {
        writeText(cell, cell.value().text());
        return;
    }
    NumberKind kind = *days < 1 ? NumberKind::Time : NumberKind::Moment;
    if (kind == NumberKind::Moment && *days == std::floor(*days))
        kind = NumberKind::Day;
    m_rows.addNumber(cell.column(), m_formats.styleOf(cell.format(), kind), *days);
}

void XlsxSheetWriter::writeText(const Cell& cell, const QString& text)
{
    if (text.isEmpty())
        return writeBlank(cell);
    const NumberKind kind =
        runtime::looksLikeFormula(text) ? NumberKind::Text : NumberKind::General;
    m_rows.addText(cell.column(), m_formats.styleOf(cell.format(), kind), text);
}

} // namespace excel
