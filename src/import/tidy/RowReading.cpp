#include "import/tidy/RowReading.h"

#include <algorithm>

#include <QRegularExpression>

#include "import/tidy/ClassNames.h"

namespace tidy {

using namespace Qt::StringLiterals;

/// What a row holds, counted.
struct RowReading::Filled
{
    std::vector<FilledCell> cells;
    /// Of them, those with scores or further items of the student.
    int content = 0;
};

namespace {

/// A text that names a row of figures, such as 平均分 or 及格人数.
bool isSummaryWord(const QString& text)
{
    static const QRegularExpression words(
        u"^(合计|总计|小计|总和|平均|均值|最高|最低|满分|人数|方差|标准差|离差|中位数|众数|全距)"
        "|(平均分|平均|均分|最高分|最低分|合计|总计|小计|人数|标准差|及格率|优秀率|合格率|良好率|"
        "低分率|高分率|优良率|满分)$"_s);
    return words.match(folded(text)).hasMatch();
}

/// A sentence of remarks rather than a name.
bool isNoteText(const QString& text)
{
    static const QRegularExpression note(
        u"[:：。；，,]|^(注|备注|说明|附注|制表|审核|填表|统计|班主任|教务|打印|日期|时间|页)|第.*页"_s);
    constexpr int longestName = 20;
    return text.size() > longestName || note.match(text).hasMatch();
}

QString reasonOf(RowKind kind)
{
    switch (kind) {
    case RowKind::Title:
        return u"标题行"_s;
    case RowKind::Heading:
        return u"表头"_s;
    case RowKind::Blank:
        return u"空行"_s;
    case RowKind::Summary:
        return u"合计、平均一类的行"_s;
    case RowKind::RepeatedHeading:
        return u"重复的表头"_s;
    case RowKind::Note:
        return u"说明文字"_s;
    case RowKind::NotFound:
        return u"没有姓名和号码的行"_s;
    case RowKind::Student:
        break;
    }
    return {};
}

QString joinedTexts(const std::vector<FilledCell>& cells)
{
    QString all;
    for (const FilledCell& cell : cells)
        all += cellText(cell.value) + u' ';
    return all;
}

bool isNumberText(const QString& text)
{
    static const QRegularExpression number(u"^\\d+号?$"_s);
    return number.match(folded(text)).hasMatch();
}

bool hasDigit(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isDigit(); });
}

} // namespace

QString classInTitles(const SheetView& view, const HeadingRows& heading)
{
    for (int row = 1; row < heading.first; row = view.nextRow(row)) {
        QString found = classIn(joinedTexts(view.cells(row)));
        if (!found.isEmpty())
            return found;
    }
    return {};
}

RowReading::RowReading(const SheetView& view, SheetProposal& sheet, int sheetNumber,
                       const Aliases& aliases)
    : m_view(view),
      m_sheet(sheet),
      m_sheetNumber(sheetNumber),
      m_aliases(aliases),
      m_headings(view.headings(sheet.heading.first, sheet.heading.count)),
      m_classColumn(sheet.columnOf(Field::Class)),
      m_numberColumn(sheet.columnOf(Field::Number)),
      m_nameColumn(sheet.columnOf(Field::Name)),
      m_examNumberColumn(sheet.columnOf(Field::ExamNumber)),
      m_schoolNumberColumn(sheet.columnOf(Field::SchoolNumber))
{
    for (const ColumnProposal& column : sheet.columns) {
        if (column.use.field == Field::Subject || column.use.field == Field::StudentColumn)
            m_contentColumns.push_back(column.column);
    }
}

SourceRow RowReading::studentOf(int row) const
{
    const auto text = [&](int column) { return column > 0 ? m_view.text(row, column) : QString(); };
    return {m_sheetNumber,
            row,
            text(m_classColumn),
            text(m_numberColumn),
            text(m_nameColumn),
            text(m_examNumberColumn),
            text(m_schoolNumberColumn)};
}

bool RowReading::isRepeatedHeading(const std::vector<FilledCell>& cells) const
{
    int equal = 0;
    for (const FilledCell& cell : cells) {
        if (size_t(cell.column) > m_headings.size()
            || cell.value.kind() != runtime::Value::Kind::Text)
            continue;
        const HeadingCell& heading = m_headings[size_t(cell.column) - 1];
        const QString text = folded(cell.value.text());
        equal += text == folded(heading.upper) || text == folded(heading.lower) ? 1 : 0;
    }
    return equal >= 2 && equal * 2 > int(cells.size());
}

/// A row with one or two cells is rarely a student.
RowKind RowReading::kindOfFew(const SourceRow& student, const Filled& filled) const
{
    const bool isNamed = !student.name.isEmpty() && !isNoteText(student.name);
    const bool hasNumber =
        std::any_of(filled.cells.begin(), filled.cells.end(),
                    [](const FilledCell& cell) { return isNumberText(cellText(cell.value)); });
    if (isNamed
        && (filled.cells.size() == 1 || hasNumber || !student.classText.isEmpty()
            || filled.content > 0))
        return RowKind::Student;
    if (filled.content > 0 && hasDigit(student.number))
        return RowKind::Student;
    return classIn(joinedTexts(filled.cells)).isEmpty() ? RowKind::Note : RowKind::Title;
}

RowKind RowReading::kindOf(const SourceRow& student, const Filled& filled) const
{
    if (filled.cells.empty())
        return RowKind::Blank;
    if (isRepeatedHeading(filled.cells))
        return RowKind::RepeatedHeading;
    const bool isWhole = isNumberText(student.number) && !student.name.isEmpty();
    const QString first = cellText(filled.cells.front().value);
    const bool isSummary = isSummaryWord(first) || isSummaryWord(student.name)
                           || isSummaryWord(student.classText) || isSummaryWord(student.number);
    if (isSummary && (!isWhole || isSummaryWord(student.name)))
        return RowKind::Summary;
    if (filled.cells.size() <= 2)
        return kindOfFew(student, filled);
    const bool isNobody = student.name.isEmpty() && !hasDigit(student.number)
                          && student.examNumber.isEmpty() && student.schoolNumber.isEmpty();
    if (!isNobody)
        return RowKind::Student;
    return filled.content > 0 ? RowKind::NotFound : RowKind::Note;
}

std::optional<Taking> RowReading::chosen(int row) const
{
    const auto found = std::find_if(m_sheet.rowChoices.begin(), m_sheet.rowChoices.end(),
                                    [row](const RowChoice& choice) { return choice.row == row; });
    return found == m_sheet.rowChoices.end() ? std::nullopt : std::optional(found->taking);
}

void RowReading::leaveOut(int row, RowKind kind, const QString& reason)
{
    std::vector<LeftOutRows>& all = m_sheet.leftOut;
    if (!all.empty() && all.back().last == row - 1 && all.back().kind == kind
        && all.back().reason == reason)
        all.back().last = row;
    else
        all.push_back({row, row, kind, reason});
}

void RowReading::noteGap(int from, int to)
{
    if (from > to)
        return;
    leaveOut(from, RowKind::Blank, reasonOf(RowKind::Blank));
    m_sheet.leftOut.back().last = to;
}

void RowReading::leaveOutHead()
{
    for (int row = 1; row <= m_sheet.heading.last(); ++row) {
        const RowKind kind = row >= m_sheet.heading.first ? RowKind::Heading
                             : m_view.cells(row).empty()  ? RowKind::Blank
                                                          : RowKind::Title;
        leaveOut(row, kind, reasonOf(kind));
    }
}

QString RowReading::classFor(const SourceRow& student) const
{
    switch (m_sheet.classSource.from) {
    case ClassFrom::Column:
        return student.classText;
    case ClassFrom::TitleRows:
        return m_titleClass;
    case ClassFrom::SheetName:
    case ClassFrom::FileName:
        return m_sheet.classSource.text;
    case ClassFrom::Nowhere:
        break;
    }
    return {};
}

/// A class that is merged over its rows stands in the first of them alone.
void RowReading::spreadClasses(std::vector<SourceRow>& rows) const
{
    if (m_classColumn == 0 || m_sheet.classSource.from != ClassFrom::Column)
        return;
    for (const excel::CellRange& block : m_view.sheet().merges().settled()) {
        if (block.firstColumn > m_classColumn || block.lastColumn < m_classColumn)
            continue;
        const QString text = m_view.text(block.firstRow, block.firstColumn);
        auto row =
            std::lower_bound(rows.begin(), rows.end(), block.firstRow,
                             [](const SourceRow& one, int wanted) { return one.row < wanted; });
        for (; row != rows.end() && row->row <= block.lastRow; ++row) {
            if (row->classText.isEmpty())
                row->classText = text;
        }
    }
}

std::vector<SourceRow> RowReading::read()
{
    m_sheet.leftOut.clear();
    m_titleClass = m_sheet.classSource.text;
    leaveOutHead();
    std::vector<SourceRow> rows;
    int expected = m_sheet.heading.last() + 1;
    for (int row = expected; row <= m_view.lastRow(); row = m_view.nextRow(row)) {
        noteGap(expected, row - 1);
        expected = row + 1;
        SourceRow student = studentOf(row);
        Filled filled{m_view.cells(row)};
        for (const FilledCell& cell : filled.cells)
            filled.content +=
                std::binary_search(m_contentColumns.begin(), m_contentColumns.end(), cell.column)
                    ? 1
                    : 0;
        const RowKind kind = kindOf(student, filled);
        const std::optional<Taking> choice = chosen(row);
        if (kind == RowKind::Title && !choice)
            m_titleClass = classIn(joinedTexts(filled.cells));
        student.classText = classFor(student);
        if (choice == Taking::LeaveOut)
            leaveOut(row, RowKind::Note, u"您选择不导入"_s);
        else if (kind == RowKind::Student || choice == Taking::Take)
            rows.push_back(std::move(student));
        else
            leaveOut(row, kind, reasonOf(kind));
    }
    noteGap(expected, m_view.lastRow());
    spreadClasses(rows);
    return rows;
}

} // namespace tidy
