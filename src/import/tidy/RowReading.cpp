#include "import/tidy/RowReading.h"

#include <algorithm>

#include <QRegularExpression>

#include "import/tidy/ClassNames.h"
#include "import/tidy/Scores.h"

namespace tidy {

using namespace Qt::StringLiterals;

/// What a row holds, counted.
struct RowReading::Filled
{
    std::vector<FilledCell> cells;
    /// Of them, those with scores or further items of the student.
    int content = 0;
    /// Of those, the numbers, and the largest of them.
    int scores = 0;
    double largest = 0;
};

namespace {

/// A text that names a row of figures, such as 平均分 or 及格人数.
bool isSummaryWord(const QString& text)
{
    static const QRegularExpression words(
        u"^(合计|总计|小计|总和|平均|均值|最高|最低|满分|人数|方差|标准差|离差|中位数|众数|全距)"
        "|(平均分|平均|均分|最高分|最低分|合计|总计|小计|人数|标准差|及格率|优秀率|合格率|良好率|"
        "低分率|高分率|优良率|得分率|满分|难度|区分度)$"
        "|^(及格|合格|优秀|优分|优良|良好|低分|高分|参考|实考|应考|缺考|到考|过线|上线|达线)"
        "(生|学生)?(数|率|人次|比例)$"_s);
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
                       const HeadingWords& words)
    : m_view(view),
      m_sheet(sheet),
      m_sheetNumber(sheetNumber),
      m_words(words),
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

/// A heading that stands where the headings of the sheet say something else.
bool RowReading::hasOtherMeaning(const FilledCell& cell) const
{
    const HeadingCell heading = size_t(cell.column) <= m_headings.size()
                                    ? m_headings[size_t(cell.column) - 1]
                                    : HeadingCell();
    const QString text = folded(cell.value.text());
    if (text == folded(heading.upper) || text == folded(heading.lower)
        || text == folded(heading.joined()))
        return false;
    const HeadingMeaning one = m_words.meaning({cell.value.text(), {}});
    const HeadingMeaning other = m_words.meaning(heading);
    return one.use != other.use || one.score != other.score
           || one.missingSubject != other.missingSubject || one.choices != other.choices;
}

bool RowReading::isOtherHeading(const std::vector<FilledCell>& cells) const
{
    int known = 0;
    bool namesStudents = false;
    bool isOther = false;
    for (const FilledCell& cell : cells) {
        if (cell.value.kind() != runtime::Value::Kind::Text)
            return false;
        const HeadingMeaning meaning = m_words.meaning({cell.value.text(), {}});
        known += meaning.isKnown ? 1 : 0;
        namesStudents = namesStudents || meaning.use.field == Field::Name
                        || meaning.use.field == Field::Number
                        || meaning.use.field == Field::ExamNumber;
        isOther = isOther || hasOtherMeaning(cell);
    }
    return isOther && namesStudents && known * 2 > int(cells.size()) && known > 1;
}

/// Headings in several rows follow each other; a table above has students in between.
void RowReading::findOtherHeadingAbove()
{
    int heading = 0;
    for (int row = 1; row < m_sheet.heading.first; row = m_view.nextRow(row)) {
        const std::vector<FilledCell> cells = m_view.cells(row);
        const bool hasNumber = std::any_of(cells.begin(), cells.end(), [](const FilledCell& cell) {
            return isNumberText(cellText(cell.value));
        });
        if (heading > 0 && hasNumber)
            m_otherHeading = heading;
        else if (cells.size() > 1 && isOtherHeading(cells))
            heading = row;
    }
}

/// A class in a row that is no student's, such as 班级：2班 beside the name of the teacher.
bool RowReading::isClassTitle(const SourceRow& student, const Filled& filled) const
{
    std::vector<FilledCell> others = filled.cells;
    std::erase_if(others, [this](const FilledCell& cell) { return cell.column == m_classColumn; });
    const bool isNamed =
        !student.name.isEmpty() && !isNoteText(student.name) && classIn(student.name).isEmpty();
    return !isNamed && !isNumberText(student.number) && !classIn(joinedTexts(others)).isEmpty()
           && (filled.scores == 0 || !classIn(student.number).isEmpty());
}

/// A count of students in the column of their numbers, with sums beside it.
bool RowReading::isUnnamedSum(const SourceRow& student, const Filled& filled) const
{
    constexpr double largestMark = 1000;
    if (m_nameColumn == 0 || m_named == 0 || !student.name.isEmpty() || filled.scores == 0
        || !isNumberText(student.number))
        return false;
    return filled.largest > largestMark || student.number.toInt() == m_named;
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
    if (isOtherHeading(filled.cells))
        return RowKind::Heading;
    if (isRepeatedHeading(filled.cells))
        return RowKind::RepeatedHeading;
    const bool isWhole = isNumberText(student.number) && !student.name.isEmpty();
    const QString first = cellText(filled.cells.front().value);
    const bool isSummary = isSummaryWord(first) || isSummaryWord(student.name)
                           || isSummaryWord(student.classText) || isSummaryWord(student.number);
    if (isSummary && (!isWhole || isSummaryWord(student.name)))
        return RowKind::Summary;
    if (isClassTitle(student, filled))
        return RowKind::Title;
    if (isUnnamedSum(student, filled))
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

RowReading::Filled RowReading::filledOf(int row) const
{
    Filled filled{m_view.cells(row)};
    for (const FilledCell& cell : filled.cells) {
        if (!std::binary_search(m_contentColumns.begin(), m_contentColumns.end(), cell.column))
            continue;
        ++filled.content;
        const ScoreCell score = scoreIn(cell.value);
        if (score.kind != ScoreCell::Kind::Number)
            continue;
        ++filled.scores;
        filled.largest = std::max(filled.largest, score.number);
    }
    return filled;
}

void RowReading::beginClass(const QString& name, int row)
{
    const ClassSource& source = m_sheet.classSource;
    const bool isOfName = source.from == ClassFrom::SheetName || source.from == ClassFrom::FileName;
    const std::optional<ClassName> titled = className(name);
    const std::optional<ClassName> named = className(source.text);
    if (isOfName && source.decidedBy == DecidedBy::Program && titled && m_otherClassTitle == 0
        && (!named || named->number != titled->number))
        m_otherClassTitle = row;
    m_titleClass = name;
    m_named = 0;
}

/// Scores that are neither a student's nor said to be sums are told with the rows left out.
void RowReading::noteNobody(SourceRow student, RowKind kind, std::vector<SourceRow>& rows) const
{
    const bool isSum = kind == RowKind::Summary && student.name.isEmpty()
                       && isNumberText(student.number) && !isSummaryWord(student.classText);
    if (kind != RowKind::NotFound && !isSum)
        return;
    student.whyNobody = isSum ? u"没有姓名，像是合计的行。"_s : u"没有姓名和号码。"_s;
    rows.push_back(std::move(student));
}

std::vector<SourceRow> RowReading::read()
{
    m_sheet.leftOut.clear();
    m_titleClass = m_sheet.classSource.text;
    findOtherHeadingAbove();
    leaveOutHead();
    std::vector<SourceRow> rows;
    int expected = m_sheet.heading.last() + 1;
    for (int row = expected; row <= m_view.lastRow(); row = m_view.nextRow(row)) {
        noteGap(expected, row - 1);
        expected = row + 1;
        SourceRow student = studentOf(row);
        const Filled filled = filledOf(row);
        const RowKind kind = kindOf(student, filled);
        const std::optional<Taking> choice = chosen(row);
        if (kind == RowKind::Title && !choice)
            beginClass(classIn(joinedTexts(filled.cells)), row);
        if (kind == RowKind::Heading && m_otherHeading == 0)
            m_otherHeading = row;
        student.classText = classFor(student);
        if (kind == RowKind::Student)
            ++m_named;
        else if (filled.scores > 0 && !choice)
            noteNobody(student, kind, rows);
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
