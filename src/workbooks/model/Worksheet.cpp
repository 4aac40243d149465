#include "workbooks/model/Worksheet.h"

#include <algorithm>

#include "platform/runtime/Error.h"
#include "workbooks/model/CellText.h"
#include "workbooks/model/Workbook.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

void checkName(const QString& name)
{
    const auto refuse = [&name](const QString& reason) {
        throw runtime::Error(u"不能把工作表命名为“"_s + name + u"”："_s + reason);
    };
    if (name.isEmpty())
        refuse(u"名称不能为空。"_s);
    if (name.size() > Worksheet::longestName)
        refuse(u"名称最多 31 个字符。"_s);
    if (std::any_of(name.begin(), name.end(),
                    [](QChar letter) { return u":\\/?*[]"_s.contains(letter); }))
        refuse(u"名称不能含有 : \\ / ? * [ ] 中的字符。"_s);
    if (name.startsWith(u'\'') || name.endsWith(u'\''))
        refuse(u"名称不能以单引号开头或结尾。"_s);
}

} // namespace

Worksheet::Worksheet(Workbook& book, QString name)
    : m_book(&book),
      m_changes(book.m_changes),
      m_name(std::move(name)),
      m_geometry(m_cells, m_formats, m_merges, m_changes)
{
}

void Worksheet::refuseClosed()
{
    throw runtime::Error(u"工作簿已经关闭。"_s);
}

void Worksheet::refuseGone() const
{
    if (m_deleted)
        throw runtime::Error(u"工作表已经删除。"_s);
    refuseClosed();
}

void Worksheet::close()
{
    m_book = nullptr;
    m_cells.clear();
    m_merges.clear();
    m_geometry.clear();
    m_drawings.clear();
}

const QString& Worksheet::Name() const
{
    check();
    return m_name;
}

void Worksheet::setName(const QString& name)
{
    check();
    checkName(name);
    const bool isOwn = name.compare(m_name, Qt::CaseInsensitive) == 0;
    if (!isOwn && m_book->hasSheet(name))
        throw runtime::Error(u"不能把工作表命名为“%1”：已有同名的工作表。"_s.arg(name));
    m_name = name;
    m_changes.note();
}

void Worksheet::Delete()
{
    check();
    m_book->remove(*this);
    m_deleted = true;
    close();
}

void Worksheet::setCell(int row, int column, const runtime::Value& value)
{
    check(row, column);
    m_cells.set(row, column, value);
    m_geometry.rowChanged(row);
    m_changes.note();
}

void Worksheet::setCellText(int row, int column, const QString& text)
{
    setCell(row, column, cellFromText(text));
    if (text.contains(u'\n'))
        Range(row, column, row, column).setWrapText(true);
}

SheetRange Worksheet::Range(int row, int column, int otherRow, int otherColumn)
{
    return Range({std::min(row, otherRow), std::min(column, otherColumn), std::max(row, otherRow),
                  std::max(column, otherColumn)});
}

SheetRange Worksheet::Range(const CellRange& block)
{
    check(block.firstRow, block.firstColumn);
    check(block.lastRow, block.lastColumn);
    return {*this, block};
}

const CellFormat& Worksheet::format(int row, int column) const
{
    check(row, column);
    return m_formats.format(m_cells.format(row, column));
}

PageLayout& Worksheet::PageSetup()
{
    check();
    m_changes.note();
    return m_page;
}

const PageLayout& Worksheet::PageSetup() const
{
    check();
    return m_page;
}

void Worksheet::addPageBreak(int row)
{
    check(row, 1);
    const auto place = std::lower_bound(m_pageBreaks.begin(), m_pageBreaks.end(), row);
    if (row == 1 || (place != m_pageBreaks.end() && *place == row))
        return;
    if (m_pageBreaks.size() >= size_t(mostPageBreaks))
        throw runtime::Error(
            u"一个工作表最多有 %1 个分页符，不能在第 %2 行之上再加。"_s.arg(mostPageBreaks)
                .arg(row));
    m_pageBreaks.insert(place, row);
    m_changes.note();
}

const std::vector<int>& Worksheet::pageBreaks() const
{
    check();
    return m_pageBreaks;
}

template <class Kind, class... Arguments> Kind& Worksheet::draw(Arguments&&... arguments)
{
    check();
    m_drawings.emplace_back(std::in_place_type<Kind>, std::forward<Arguments>(arguments)...,
                            m_changes);
    m_changes.note();
    return std::get<Kind>(m_drawings.back());
}

Picture& Worksheet::insertPicture(const QString& path)
{
    check();
    return draw<Picture>(readPicture(path));
}

Chart& Worksheet::addChart(const QRectF& place)
{
    return draw<Chart>(place);
}

DrawnLine& Worksheet::addLine(const QPointF& from, const QPointF& to)
{
    return draw<DrawnLine>(from, to);
}

TextLabel& Worksheet::addLabel(const QRectF& place)
{
    return draw<TextLabel>(place);
}

const Drawings& Worksheet::drawings() const
{
    check();
    return m_drawings;
}

Shape& Worksheet::Shapes(int number)
{
    check();
    if (number < 1 || number > int(m_drawings.size()))
        throw runtime::Error(u"工作表中没有第 %1 个图形。"_s.arg(number));
    return shapeOf(m_drawings[size_t(number - 1)]);
}

bool Worksheet::AutoFilterMode() const
{
    check();
    return m_autoFilter.has_value();
}

std::optional<CellRange> Worksheet::autoFilter() const
{
    check();
    return m_autoFilter;
}

void Worksheet::AutoFilter()
{
    check();
    if (!m_autoFilter)
        return;
    const int end = std::min(m_autoFilter->lastRow, m_cells.rowLimit());
    for (int row = m_cells.nextRow(m_autoFilter->firstRow + 1); row <= end;
         row = m_cells.nextRow(row + 1))
        m_cells.makeRow(row).hidden = false;
    m_geometry.rowChanged(m_autoFilter->firstRow);
    m_autoFilter.reset();
    m_changes.note();
}

void Worksheet::setAutoFilter(const CellRange& range)
{
    check(range.firstRow, range.firstColumn);
    m_autoFilter = range;
}

void Worksheet::Activate()
{
    check();
    m_book->setActiveSheet(*this);
}

int Worksheet::lastUsedRow() const
{
    check();
    return std::max(1, m_cells.lastRow());
}

int Worksheet::lastUsedColumn() const
{
    check();
    return std::max(1, m_cells.lastColumn());
}

void Worksheet::setColumnWidth(int first, int last, double width)
{
    geometry().setColumnWidth(first, last, width);
}

void Worksheet::setRowHeight(int row, double points)
{
    geometry().setRowHeight(row, points);
}

void Worksheet::setRowState(int row, RowState state)
{
    geometry().setRowState(row, state);
}

CellTable& Worksheet::table()
{
    m_geometry.rowChanged(1);
    return m_cells;
}

const SheetMerges& Worksheet::merges() const
{
    check();
    return m_merges;
}

SheetMerges& Worksheet::merges()
{
    check();
    return m_merges;
}

const SheetGeometry& Worksheet::geometry() const
{
    check();
    return m_geometry;
}

SheetGeometry& Worksheet::geometry()
{
    check();
    return m_geometry;
}

Visibility Worksheet::visibility() const
{
    check();
    return m_visibility;
}

void Worksheet::setVisibility(Visibility visibility)
{
    check();
    m_visibility = visibility;
    m_changes.note();
}

} // namespace excel
