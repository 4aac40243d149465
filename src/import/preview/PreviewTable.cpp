#include "import/preview/PreviewTable.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/Numbers.h"
#include "platform/runtime/OneLine.h"
#include "workbooks/model/Workbook.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

const QStringList headings = {u"类别"_s, u"行"_s,   u"班级"_s,   u"学号"_s, u"姓名"_s,
                              u"项目"_s, u"原来"_s, u"导入后"_s, u"说明"_s};
/// Of the columns, in characters.
constexpr int widths[] = {13, 5, 6, 6, 10, 9, 10, 10, 70};

QString rowText(const PreviewEntry& entry)
{
    return entry.row > 0 ? QString::number(entry.row) : QString();
}

QStringList cellsOf(const PreviewEntry& entry)
{
    return {kindName(entry.kind), rowText(entry), entry.classNumber, entry.number, entry.name,
            entry.subject,        entry.before,   entry.after,       entry.remark};
}

/// What a cell is sorted by.
struct SortKey
{
    enum class Kind { Number, Text, Empty };

    Kind kind = Kind::Empty;
    double number = 0;
    QString text;
};

SortKey keyOf(const PreviewEntry& entry, int column)
{
    if (column == 0)
        return {SortKey::Kind::Number, double(entry.kind), {}};
    const QString text = cellsOf(entry).at(column);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return {SortKey::Kind::Number, number, {}};
    return {text.isEmpty() ? SortKey::Kind::Empty : SortKey::Kind::Text, 0, text};
}

bool isBefore(const SortKey& a, const SortKey& b, Qt::SortOrder order)
{
    if (a.kind != b.kind)
        return a.kind < b.kind;
    const bool descending = order == Qt::DescendingOrder;
    if (a.kind == SortKey::Kind::Number)
        return descending ? a.number > b.number : a.number < b.number;
    const int compared = a.text.compare(b.text, Qt::CaseInsensitive);
    return descending ? compared > 0 : compared < 0;
}

} // namespace

PreviewTable::PreviewTable(Preview preview) : m_preview(std::move(preview))
{
    show({});
}

void PreviewTable::show(std::optional<PreviewKind> kind)
{
    m_kind = kind;
    order();
    fill();
}

void PreviewTable::sort(int column)
{
    const bool isTurned = m_column == column && m_order == Qt::AscendingOrder;
    m_order = isTurned ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_column = column;
    order();
    fill();
}

void PreviewTable::order()
{
    m_shown.clear();
    for (const PreviewKind kind : previewKinds()) {
        if (m_kind && m_kind != kind)
            continue;
        for (const PreviewEntry& entry : m_preview.entries(kind))
            m_shown.push_back(&entry);
    }
    if (!m_column)
        return;
    std::vector<std::pair<SortKey, const PreviewEntry*>> keyed;
    keyed.reserve(m_shown.size());
    for (const PreviewEntry* entry : m_shown)
        keyed.emplace_back(keyOf(*entry, *m_column), entry);
    std::stable_sort(keyed.begin(), keyed.end(), [this](const auto& a, const auto& b) {
        return isBefore(a.first, b.first, m_order);
    });
    std::transform(keyed.begin(), keyed.end(), m_shown.begin(),
                   [](const auto& one) { return one.second; });
}

void PreviewTable::fill()
{
    const std::map<int, int> dragged = grid.colWidths();
    const int current = grid.Col;
    grid = grid::FlexGrid();
    grid.Col = grid.ColSel = current;
    grid.FixedCols = 0;
    grid.setRows(int(m_shown.size()) + 1);
    grid.setCols(int(headings.size()));
    constexpr int twips = 100; // of a character
    constexpr int left = 1;
    grid.setColAlignment(-1, left);
    for (int column = 0; column < grid.Cols(); ++column) {
        const auto width = dragged.find(column);
        grid.setColWidth(column, width == dragged.end() ? widths[column] * twips : width->second);
        const QString arrow = m_column != column              ? u""_s
                              : m_order == Qt::AscendingOrder ? u" ▲"_s
                                                              : u" ▼"_s;
        grid.setTextMatrix(0, column, headings[column] + arrow);
    }
    int row = 0;
    for (const PreviewEntry* entry : m_shown) {
        ++row;
        int column = 0;
        for (const QString& text : cellsOf(*entry))
            grid.setTextMatrix(row, column++, runtime::headOnOneLine(text));
    }
}

namespace {

/// A text that is a number goes to a sheet as one if the sheet shows it as it stands.
runtime::Value sheetValue(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    const bool isKept = isNumber && std::isfinite(number) && runtime::doubleText(number) == text;
    return isKept ? runtime::Value(number) : runtime::Value(text);
}

bool holdsNumbers(int column, PreviewKind kind)
{
    constexpr int row = 2;
    constexpr int number = 4;
    constexpr int before = 7;
    constexpr int after = 8;
    const bool isOfScores = kind == PreviewKind::Changed || kind == PreviewKind::BadCell
                            || kind == PreviewKind::TextCell;
    return (column >= row && column <= number)
           || (isOfScores && (column == before || column == after));
}

void setSheetRow(excel::Worksheet& sheet, int row, const PreviewEntry& entry)
{
    int column = 0;
    for (const QString& text : cellsOf(entry)) {
        ++column;
        if (!text.isEmpty())
            sheet.setCell(row, column,
                          holdsNumbers(column, entry.kind) ? sheetValue(text)
                                                           : runtime::Value(text));
    }
}

/// What stands ahead of the entries.
QStringList headLines(const Preview& preview)
{
    QStringList lines{preview.title};
    if (!preview.warning.isEmpty())
        lines.append(preview.warning);
    return lines + QStringList{preview.headline()} + preview.notes;
}

} // namespace

void PreviewTable::save(const QString& path) const
{
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"预览"_s);
    int row = 0;
    for (const QString& line : headLines(m_preview))
        sheet.setCell(++row, 1, line);
    row += 2;
    for (int column = 1; column <= int(headings.size()); ++column) {
        sheet.setCell(row, column, headings[column - 1]);
        sheet.setColumnWidth(column, column, widths[column - 1]);
    }
    sheet.Range(row, 1, row, int(headings.size())).setFontBold(true);
    for (const PreviewEntry* entry : m_shown)
        setSheetRow(sheet, ++row, *entry);
    book.SaveAs(path);
}

} // namespace importing
