#include "import/tidy/SheetReading.h"

#include <algorithm>

#include <QRegularExpression>

#include "import/tidy/ClassNames.h"
#include "import/tidy/ColumnReading.h"
#include "import/tidy/HeadingSearch.h"
#include "import/tidy/Scores.h"

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

QString titlesOf(const SheetView& view, int firstHeading)
{
    constexpr int mostTitles = 20;
    QString titles;
    const int end = std::min(firstHeading, mostTitles);
    for (int row = 1; row < end; row = view.nextRow(row)) {
        for (const FilledCell& cell : view.cells(row))
            titles += cellText(cell.value) + u' ';
    }
    return titles.trimmed();
}

} // namespace

QString streamIn(const QString& text)
{
    static const QStringList arts{u"文"_s, u"文科"_s, u"文史"_s, u"文史类"_s};
    static const QStringList science{u"理"_s, u"理科"_s, u"理工"_s, u"理工类"_s};
    const QString plain = folded(text);
    return arts.contains(plain) ? u"文"_s : science.contains(plain) ? u"理"_s : text.trimmed();
}

SheetReading::SheetReading(const excel::Worksheet& sheet, int number, Proposal& proposal,
                           const HeadingWords& words, const Aliases& aliases)
    : m_view(sheet),
      m_proposal(proposal),
      m_sheet(proposal.sheets[size_t(number)]),
      m_number(number),
      m_words(words),
      m_aliases(aliases)
{
    m_sheet.lastRow = m_view.lastRow();
    m_sheet.leftOut.clear();
    m_sheet.students = 0;
    if (m_sheet.heading.decidedBy == DecidedBy::Program)
        m_sheet.heading = findHeading(m_view, m_words);
    if (m_sheet.heading.first < 1 || m_sheet.heading.last() > m_view.lastRow())
        m_sheet.heading.count = 0;
    findGrade();
    if (m_sheet.heading.areFound())
        readRows();
    else
        m_sheet.columns.clear();
    takeOrLeave();
}

void SheetReading::findGrade()
{
    const QString titles = titlesOf(m_view, m_sheet.heading.first);
    for (const QString& text : {titles, m_sheet.name, m_proposal.fileName}) {
        m_grade = gradeIn(text);
        if (!m_grade.isEmpty())
            return;
    }
}

void SheetReading::readRows()
{
    const QStringList names{m_sheet.name, titlesOf(m_view, m_sheet.heading.first),
                            m_proposal.fileName};
    readColumns(m_sheet, m_view, m_words, m_proposal.goal, names);
    findClassSource();
    RowReading reading(m_view, m_sheet, m_number, m_words);
    m_rows = reading.read();
    forgetCutNumbers();
    if (reading.otherHeading() > 0)
        m_questions.append(
            u"数据表“%1”第 %2 行是另一个表头，各列和第 %3 行的表头不同，请先把两个表分到两张数据表里。"_s
                .arg(m_sheet.name, QString::number(reading.otherHeading()),
                     QString::number(m_sheet.heading.first)));
    if (reading.otherClassTitle() > 0)
        m_questions.append(
            u"数据表“%1”第 %2 行的标题写着另一个班，请确定班级用标题里的还是表名或文件名里的。"_s
                .arg(m_sheet.name, QString::number(reading.otherClassTitle())));
    openNamedColumns();
    openTextColumns();
    openStreams();
    noteColumns();
    askForResults();
}

/// A number that lost its last digits may be that of another student, and names nobody.
void SheetReading::forgetCutNumbers()
{
    const int examNumbers = m_sheet.columnOf(Field::ExamNumber);
    const int schoolNumbers = m_sheet.columnOf(Field::SchoolNumber);
    for (SourceRow& row : m_rows) {
        if (examNumbers > 0 && hasLostDigits(m_view.value(row.row, examNumbers)))
            row.examNumber.clear();
        if (schoolNumbers > 0 && hasLostDigits(m_view.value(row.row, schoolNumbers)))
            row.schoolNumber.clear();
    }
}

/// A text that names no class is kept whole: the user says which class it means.
QString SheetReading::chosenClassText(ClassFrom from) const
{
    const auto either = [](const QString& text, const QString& whole) {
        return text.isEmpty() ? whole : text;
    };
    if (from == ClassFrom::SheetName)
        return either(classInName(m_sheet.name), m_sheet.name);
    if (from == ClassFrom::FileName)
        return either(classIn(m_proposal.fileName), m_proposal.fileName);
    return either(classInTitles(m_view, m_sheet.heading), titlesOf(m_view, m_sheet.heading.first));
}

void SheetReading::findClassSource()
{
    ClassSource& source = m_sheet.classSource;
    const QString title = classInTitles(m_view, m_sheet.heading);
    const QString name = classInName(m_sheet.name);
    const QString file = classIn(m_proposal.fileName);
    if (source.decidedBy != DecidedBy::Program) {
        source.text = chosenClassText(source.from);
        return;
    }
    if (m_sheet.columnOf(Field::Class) > 0)
        source = {ClassFrom::Column};
    else if (!title.isEmpty())
        source = {ClassFrom::TitleRows, title};
    else if (!name.isEmpty())
        source = {ClassFrom::SheetName, name};
    else
        source = {file.isEmpty() ? ClassFrom::Nowhere : ClassFrom::FileName, file};
    if (source.from == ClassFrom::TitleRows)
        checkClassSources(title, name);
}

/// A title that was copied from another class's sheet must not decide by itself.
void SheetReading::checkClassSources(const QString& title, const QString& name)
{
    const std::optional<ClassName> ofTitle = className(title);
    const std::optional<ClassName> ofName = className(name);
    if (!ofTitle || !ofName
        || (ofTitle->number == ofName->number && !areOfDifferentKinds(*ofTitle, *ofName)))
        return;
    m_questions.append(u"数据表“%1”的标题里写着“%2”，请确定班级用标题里的还是表名里的。"_s.arg(
        m_sheet.name, title));
}

/// How many of the first cells of a column are scores, and how many are other texts.
struct SheetReading::Contents
{
    int scores = 0;
    int others = 0;
};

SheetReading::Contents SheetReading::contentsOf(int column) const
{
    constexpr size_t looked = 300;
    Contents contents;
    for (size_t place = 0; place < std::min(m_rows.size(), looked); ++place) {
        const ScoreCell cell = scoreIn(m_view.value(m_rows[place].row, column));
        const bool isOther = cell.kind == ScoreCell::Kind::Mark && !cell.text.isEmpty()
                             && cell.number >= 0 && m_aliases.nameOf(cell.text).isEmpty();
        contents.others += isOther ? 1 : 0;
        contents.scores += cell.kind == ScoreCell::Kind::Number ? 1 : 0;
    }
    return contents;
}

bool SheetReading::isUnknown(const ColumnProposal& column, const HeadingCell& heading) const
{
    return !heading.isEmpty() && column.use.field == Field::Leave
           && column.decidedBy == DecidedBy::Program && !m_words.meaning(heading).isKnown;
}

/// Numbers below a subject's name with something beside it, such as 语文（含附加）, where the
/// subject has no other column.
void SheetReading::openNamedColumns()
{
    if (m_proposal.goal == Goal::StudentList)
        return;
    QStringList taken;
    for (const ColumnProposal& column : m_sheet.columns)
        taken.append(column.use.name);
    const std::vector<HeadingCell> headings =
        m_view.headings(m_sheet.heading.first, m_sheet.heading.count);
    for (ColumnProposal& column : m_sheet.columns) {
        const QString subject = m_words.subjectIn(column.heading);
        if (subject.isEmpty() || taken.contains(subject)
            || !isUnknown(column, headings[size_t(column.column) - 1]))
            continue;
        const Contents contents = contentsOf(column.column);
        if (contents.scores <= contents.others)
            continue;
        column.use = {Field::Subject, subject};
        column.isOpen = true;
        column.reason = u"可能是“%1”的成绩，请选择。"_s.arg(subject);
        m_namedColumns.push_back(column.column);
    }
}

void SheetReading::openTextColumns()
{
    for (ColumnProposal& column : m_sheet.columns) {
        if (column.use.field != Field::Subject || column.decidedBy == DecidedBy::User
            || column.isOpen)
            continue;
        const Contents contents = contentsOf(column.column);
        if (contents.others <= contents.scores)
            continue;
        column.isOpen = true;
        column.reason = u"这一列大多不是数字。"_s;
    }
}

/// A library knows two streams, and a list of students may have other words.
void SheetReading::openStreams()
{
    ColumnProposal* column = nullptr;
    for (ColumnProposal& one : m_sheet.columns) {
        if (one.use.field == Field::Stream && one.decidedBy != DecidedBy::User && !one.isOpen)
            column = &one;
    }
    if (m_proposal.goal != Goal::StudentList || column == nullptr)
        return;
    const auto other = std::find_if(m_rows.begin(), m_rows.end(), [&](const SourceRow& row) {
        const QString stream = streamIn(m_view.text(row.row, column->column));
        return !stream.isEmpty() && stream != u"文"_s && stream != u"理"_s;
    });
    if (other == m_rows.end())
        return;
    column->isOpen = true;
    column->reason =
        u"第 %1 行是“%2”，成绩库的科类是文或理，请选择这一列不导入，或者改好再整理。"_s.arg(
            QString::number(other->row), m_view.text(other->row, column->column));
}

void SheetReading::noteColumns()
{
    for (const ColumnProposal& column : m_sheet.columns) {
        if (!column.use.name.isEmpty())
            m_columnOf.insert(column.use.name, column.column);
        if (m_proposal.goal == Goal::StudentList
            && (column.use.field == Field::SchoolNumber || column.use.field == Field::Stream))
            m_columnOf.insert(fieldText(column.use.field), column.column);
    }
}

/// Whether what a row lacks would be missing in the result.
bool SheetReading::isRead(int row, const std::vector<int>& withoutResult) const
{
    const LeftOutRows* leftOut = m_sheet.leftOutAt(row);
    if (leftOut == nullptr || leftOut->kind == RowKind::NotFound
        || (row >= m_sheet.heading.first && row <= m_sheet.heading.last()))
        return true;
    return leftOut->kind == RowKind::Blank
           && std::any_of(withoutResult.begin(), withoutResult.end(), [this](int place) {
                  const ColumnProposal* column = m_sheet.column(place);
                  return column != nullptr && column->use.field != Field::Leave
                         && column->use.name.isEmpty();
              });
}

/// Formulas whose results are needed, and the columns that they stand in.
struct SheetReading::LostResults
{
    int count = 0;
    QStringList columns;
};

void SheetReading::countLost(int row, const std::vector<int>& places, LostResults& lost) const
{
    for (const int place : places) {
        const ColumnProposal* column = m_sheet.column(place);
        if (column == nullptr)
            continue;
        const bool isUnsettled =
            row <= m_sheet.heading.last() && column->decidedBy == DecidedBy::Program;
        if (column->use.field == Field::Leave && !isUnsettled)
            continue;
        ++lost.count;
        const QString name = column->heading.isEmpty() ? excel::columnName(place) + u" 列"_s
                                                       : u"“%1”"_s.arg(column->heading);
        if (!lost.columns.contains(name))
            lost.columns.append(name);
    }
}

/// A formula without a result would count as an empty cell, and its student as absent.
void SheetReading::askForResults()
{
    LostResults lost;
    for (int row = m_sheet.heading.first; row <= m_view.lastRow(); row = m_view.nextRow(row)) {
        const std::vector<int> places = m_view.columnsWithoutResult(row);
        if (!places.empty() && isRead(row, places))
            countLost(row, places, lost);
    }
    m_lacksResults = lost.count > 0;
    if (m_lacksResults)
        m_questions.append(
            u"数据表“%1”的%2里有 %3 个公式没有结果，不知道是什么内容。请用电子表格打开原来的文件，"
            "保存一次，再整理；不用的列请选择不导入。"_s.arg(m_sheet.name, lost.columns.join(u'、'),
                                                             QString::number(lost.count)));
}

QString SheetReading::whyNot() const
{
    if (m_view.lastRow() == 0)
        return u"空的数据表。"_s;
    if (!m_sheet.heading.areFound())
        return u"没有找到表头。"_s;
    const bool hasScores = std::any_of(
        m_sheet.columns.begin(), m_sheet.columns.end(), [](const ColumnProposal& column) {
            return column.use.field == Field::Subject || column.isOpen;
        });
    if (m_proposal.goal == Goal::ExamScores && !hasScores)
        return u"没有科目的成绩。"_s;
    if (m_rows.empty())
        return m_lacksResults ? u"公式没有结果，请用电子表格打开原来的文件，保存一次，再整理。"_s
                              : u"表头下面没有学生。"_s;
    return m_view.sheet().visibility() == excel::Visibility::Visible ? QString()
                                                                     : u"隐藏的数据表。"_s;
}

void SheetReading::takeOrLeave()
{
    m_sheet.reason = whyNot();
    if (m_sheet.takingDecidedBy == DecidedBy::Program)
        m_sheet.taking = m_sheet.reason.isEmpty() ? Taking::Take : Taking::LeaveOut;
    else if (m_sheet.taking == Taking::LeaveOut)
        m_sheet.reason = u"您选择不用这张数据表。"_s;
    if (m_sheet.taking == Taking::LeaveOut) {
        m_rows.clear();
        m_questions.clear();
        return;
    }
    if (m_rows.empty())
        m_questions.append(u"数据表“%1”不能用：%2"_s.arg(m_sheet.name, m_sheet.reason));
    else
        m_sheet.reason.clear();
    noteUntakenColumns();
    noteAssigned();
    noteOtherLanguages();
    noteShownZeros();
    noteCuts();
}

bool SheetReading::hasPlainScores() const
{
    return m_sheet.taking == Taking::Take
           && std::any_of(m_sheet.columns.begin(), m_sheet.columns.end(),
                          [](const ColumnProposal& column) {
                              return column.use.field == Field::Subject && !column.isOpen;
                          });
}

bool SheetReading::isDoubtful() const
{
    const auto isNamed = [this](const ColumnProposal& column) {
        return std::find(m_namedColumns.begin(), m_namedColumns.end(), column.column)
               != m_namedColumns.end();
    };
    return m_sheet.taking == Taking::Take && m_sheet.takingDecidedBy == DecidedBy::Program
           && !m_namedColumns.empty()
           && std::all_of(
               m_sheet.columns.begin(), m_sheet.columns.end(), [&](const ColumnProposal& column) {
                   return isNamed(column) || (column.use.field != Field::Subject && !column.isOpen);
               });
}

void SheetReading::leaveDoubtful()
{
    const QString heading = m_sheet.column(m_namedColumns.front())->heading;
    m_sheet.taking = Taking::LeaveOut;
    m_sheet.reason = u"“%1”一类的列不像成绩，这些学生的成绩在别的数据表里。"_s.arg(heading);
    m_rows.clear();
    m_questions.clear();
    m_warnings.clear();
}

QString SheetReading::untakenText(const ColumnProposal& column, const HeadingCell& heading) const
{
    QString text = missingSubjectText(column, m_words, heading);
    if (!text.isEmpty() || !isUnknown(column, heading))
        return text;
    if (m_proposal.goal == Goal::StudentList)
        return u"“%1”一列的表头不认识，没有导入。"_s.arg(column.heading);
    const Contents contents = contentsOf(column.column);
    return contents.scores > contents.others
               ? u"“%1”一列是数字，表头不认识，没有导入。"_s.arg(column.heading)
               : QString();
}

void SheetReading::noteUntakenColumns()
{
    if (!m_sheet.heading.areFound())
        return;
    const std::vector<HeadingCell> headings =
        m_view.headings(m_sheet.heading.first, m_sheet.heading.count);
    for (const ColumnProposal& column : m_sheet.columns) {
        const QString text = untakenText(column, headings[size_t(column.column) - 1]);
        if (!text.isEmpty())
            m_warnings.append(text);
    }
}

/// Assigned marks alone are taken, which nobody sees from the subject's name.
void SheetReading::noteAssigned()
{
    if (!m_sheet.heading.areFound())
        return;
    const std::vector<HeadingCell> headings =
        m_view.headings(m_sheet.heading.first, m_sheet.heading.count);
    QString names;
    for (const ColumnProposal& column : m_sheet.columns) {
        const ScoreKind score = m_words.meaning(headings[size_t(column.column) - 1]).score;
        if (score == ScoreKind::Assigned && column.use.field == Field::Subject && !column.isOpen
            && column.decidedBy == DecidedBy::Program)
            names += u"“%1”"_s.arg(column.use.name);
    }
    if (!names.isEmpty())
        m_warnings.append(u"%1只有赋分，没有原始分，用的是赋分。"_s.arg(names));
}

/// Who learns 日语 has a blank 英语, which counts as absent.
void SheetReading::noteOtherLanguages()
{
    static const QRegularExpression other(u"日语|俄语|法语|德语|西班牙语|西语|韩语|小语种"_s);
    const QString english = u"英语"_s;
    const int place = columnNamed(english);
    if (place == 0)
        return;
    for (const ColumnProposal& column : m_sheet.columns) {
        if (!other.match(folded(column.heading)).hasMatch())
            continue;
        const auto count = std::count_if(m_rows.begin(), m_rows.end(), [&](const SourceRow& row) {
            return m_view.text(row.row, place).isEmpty()
                   && !m_view.text(row.row, column.column).isEmpty();
        });
        if (count > 0)
            m_warnings.append(u"有 %1 名学生在“%2”一列有内容，%3是空白：他们的%3按缺考。"_s.arg(
                QString::number(count), column.heading, english));
    }
}

/// Zeros at the head of a number are made by its format alone, which is not read.
void SheetReading::noteShownZeros()
{
    if (m_proposal.goal != Goal::StudentList)
        return;
    for (const ColumnProposal& column : m_sheet.columns) {
        if (column.use.field != Field::SchoolNumber && column.use.name != u"身份证"_s)
            continue;
        const auto count = std::count_if(m_rows.begin(), m_rows.end(), [&](const SourceRow& row) {
            const runtime::Value cell = m_view.value(row.row, column.column);
            return cell.isNumber() && !hasLostDigits(cell);
        });
        if (count > 0)
            m_warnings.append(u"“%1”一列有 %2 个号码是数字，表里显示在前面的 0 没有写进去。"
                              "号码前面有 0 的，请在原来的表里把这一列设为文本，重新填写。"_s.arg(
                                  column.heading, QString::number(count)));
    }
}

void SheetReading::noteCuts()
{
    if (m_view.isCutBelow())
        m_questions.append(u"数据表“%1”有 %2 行，超过了能整理的 %3 行。"_s.arg(
            m_sheet.name, QString::number(m_view.sheet().lastUsedRow()),
            QString::number(SheetView::LastRow)));
    if (m_view.isCutAside())
        m_warnings.append(u"数据表“%1”第 %2 列以后的内容没有看。"_s.arg(
            m_sheet.name, QString::number(SheetView::LastColumn)));
}

} // namespace tidy
