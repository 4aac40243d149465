#include "import/tidy/Questions.h"

#include <algorithm>
#include <map>

#include "workbooks/model/CellRange.h"

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

/// Things of one kind that are named one by one.
constexpr int mostListed = 5;
/// Rows that an import reads at most.
constexpr int mostStudents = 65554;

bool isTaken(const SheetProposal& sheet)
{
    return sheet.taking == Taking::Take;
}

QStringList aboutSheets(const Proposal& proposal)
{
    if (std::any_of(proposal.sheets.begin(), proposal.sheets.end(), isTaken))
        return {};
    QStringList reasons;
    for (const SheetProposal& sheet : proposal.sheets) {
        if (reasons.size() < mostListed)
            reasons.append(u"“%1”：%2"_s.arg(sheet.name, sheet.reason));
    }
    return {u"没有可以导入的数据表。"_s + reasons.join(QString())};
}

QStringList aboutColumns(const Proposal& proposal)
{
    QStringList all;
    QStringList told;
    for (const SheetProposal& sheet : proposal.sheets) {
        if (!isTaken(sheet))
            continue;
        for (const ColumnProposal& column : sheet.columns) {
            const QString key = QString::number(column.column) + u' ' + column.heading;
            if (!column.isOpen || told.contains(key))
                continue;
            told.append(key);
            all.append(u"数据表“%1”的 %2 列“%3”：%4"_s.arg(
                sheet.name, excel::columnName(column.column), column.heading, column.reason));
        }
    }
    return all;
}

bool canFindStudents(const SheetProposal& sheet, const ReadState& state)
{
    const auto has = [&](Field field) { return sheet.columnOf(field) > 0; };
    const bool hasClass = sheet.classSource.from != ClassFrom::Nowhere;
    if (hasClass && has(Field::Number))
        return state.proposal.goal == Goal::ExamScores || has(Field::Name);
    return state.proposal.goal == Goal::ExamScores && state.roster.hasStudents()
           && (has(Field::ExamNumber) || has(Field::SchoolNumber)
               || (hasClass && has(Field::Name)));
}

QString whatIsMissing(const SheetProposal& sheet, const ReadState& state)
{
    QStringList missing;
    if (sheet.classSource.from == ClassFrom::Nowhere)
        missing.append(u"班级"_s);
    if (sheet.columnOf(Field::Number) == 0)
        missing.append(u"学号"_s);
    if (sheet.columnOf(Field::Name) == 0)
        missing.append(u"姓名"_s);
    QString text = u"数据表“%1”里没有%2，不知道各行是谁。"_s.arg(sheet.name, missing.join(u'和'));
    if (state.proposal.goal == Goal::ExamScores && !state.roster.hasStudents())
        text += u"打开有学生名单的成绩库，可以按班级和姓名查找学生。"_s;
    return text;
}

QStringList aboutKeys(const ReadState& state)
{
    QStringList all;
    for (const SheetProposal& sheet : state.proposal.sheets) {
        const bool isOpen = std::any_of(
            sheet.columns.begin(), sheet.columns.end(), [](const ColumnProposal& column) {
                return column.isOpen && column.use.field != Field::Subject;
            });
        if (isTaken(sheet) && sheet.heading.areFound() && !isOpen && !canFindStudents(sheet, state))
            all.append(whatIsMissing(sheet, state));
    }
    return all;
}

QStringList aboutSubjects(const ReadState& state)
{
    QStringList all;
    if (state.proposal.goal == Goal::StudentList)
        return all;
    for (const SheetProposal& sheet : state.proposal.sheets) {
        const bool hasSubject = std::any_of(
            sheet.columns.begin(), sheet.columns.end(), [](const ColumnProposal& column) {
                return column.use.field == Field::Subject || column.isOpen;
            });
        if (isTaken(sheet) && sheet.heading.areFound() && !hasSubject)
            all.append(u"数据表“%1”里没有科目的成绩。"_s.arg(sheet.name));
    }
    return all;
}

/// One sentence about all that is open of a kind, with the first ones by name.
QStringList joined(const QString& question, const QStringList& named, int count)
{
    if (count == 0)
        return {};
    return {question.arg(QString::number(count), named.join(u'、'),
                         count > named.size() ? u" 等"_s : QString())};
}

QStringList aboutClasses(const Proposal& proposal)
{
    QStringList named;
    int count = 0;
    for (const ClassReading& reading : proposal.classes) {
        if (reading.isOpen && ++count <= mostListed)
            named.append(u"“%1”（%2）"_s.arg(reading.text, reading.reason));
    }
    return joined(u"有 %1 种班级的写法不能确定是哪个班：%2%3。"_s, named, count);
}

/// The students of a sheet, and those of them without a class.
struct SheetGaps
{
    void add(const StudentRow& student);

    int all = 0;
    int without = 0;
    /// Of those, the ones below a class that stands in a single row.
    int below = 0;
    QString before = {};
    bool isFirst = false;
};

void SheetGaps::add(const StudentRow& student)
{
    const QString& text = student.source.classText;
    const bool isWithout = !student.isWhole && text.isEmpty();
    ++all;
    if (!text.isEmpty())
        isFirst = text != before;
    without += isWithout ? 1 : 0;
    below += isWithout && isFirst ? 1 : 0;
    before = text;
}

/// A class that is written in the first of its rows alone would cost the others. Other gaps are
/// listed row by row.
QStringList aboutRowsWithoutClass(const ReadState& state)
{
    std::vector<SheetGaps> onSheet(state.proposal.sheets.size());
    for (const StudentRow& student : state.students) {
        if (student.source.whyNobody.isEmpty())
            onSheet[size_t(student.source.sheet)].add(student);
    }
    QStringList all;
    for (size_t place = 0; place < onSheet.size(); ++place) {
        const SheetProposal& sheet = state.proposal.sheets[place];
        const SheetGaps& gaps = onSheet[place];
        if (sheet.classSource.from != ClassFrom::Column || gaps.below == 0
            || gaps.below * 2 < gaps.all)
            continue;
        all.append(u"数据表“%1”的 %2 名学生里有 %3 名没有班级。"
                   "班级只写在每班第一行的，请在原来的表里给每一行填上班级，再整理。"_s.arg(
                       sheet.name, QString::number(gaps.all), QString::number(gaps.without)));
    }
    return all;
}

QStringList aboutMarks(const Proposal& proposal)
{
    QStringList named;
    int count = 0;
    for (const Mark& mark : proposal.marks) {
        if (mark.isOpen && ++count <= mostListed)
            named.append(u"“%1”（%2 处）"_s.arg(mark.text, QString::number(mark.count)));
    }
    return joined(u"成绩里有 %1 种文字不知道是什么意思：%2%3。"_s, named, count);
}

/// Whether the user himself said which column holds the numbers.
bool isNumberChosen(const Proposal& proposal)
{
    return std::any_of(
        proposal.sheets.begin(), proposal.sheets.end(), [](const SheetProposal& sheet) {
            const ColumnProposal* column = sheet.column(sheet.columnOf(Field::Number));
            return column != nullptr && column->decidedBy == DecidedBy::User;
        });
}

/// How many rows of a class on a sheet were looked up by class and number.
struct Looked
{
    int rows = 0;
    /// Where the library has another name, or the same one at another number.
    int wrong = 0;
};

/// By sheet and class: a whole class may be another one of the same number.
std::map<std::pair<int, double>, Looked> lookedUp(const ReadState& state)
{
    std::map<std::pair<int, double>, Looked> all;
    for (const StudentRow& row : state.students) {
        if (!row.isWhole || row.isFound)
            continue;
        Looked& looked = all[{row.source.sheet, row.classNumber}];
        ++looked.rows;
        const bool isElsewhere =
            !row.isKnown && !state.roster.named(row.classNumber, row.name).empty();
        looked.wrong += row.hasOtherName || isElsewhere ? 1 : 0;
    }
    return all;
}

/// Numbers of another kind than those of the library, or of another class, would put scores on
/// other students.
QStringList aboutNumbers(const ReadState& state)
{
    if (state.proposal.goal == Goal::StudentList || !state.roster.hasStudents()
        || isNumberChosen(state.proposal))
        return {};
    Looked doubtful;
    for (const auto& [place, looked] : lookedUp(state)) {
        if (looked.wrong == 0 || looked.wrong * 2 < looked.rows)
            continue;
        doubtful.rows += looked.rows;
        doubtful.wrong += looked.wrong;
    }
    if (doubtful.wrong == 0)
        return {};
    return {
        u"按“班级”和“学号”有 %1 人（共 %2 人）的姓名和成绩库里的不同，这些班级或学号可能不是"
        "成绩库里的。不用“学号”一列，就按班级和姓名查找；确实是学号，请指定这一列是“学号”。"_s.arg(
            QString::number(doubtful.wrong), QString::number(doubtful.rows))};
}

QStringList aboutSize(const Proposal& proposal)
{
    if (proposal.counts.students <= mostStudents)
        return {};
    return {u"一共有 %1 名学生，超过了导入能接受的 %2 行。"_s.arg(
        QString::number(proposal.counts.students), QString::number(mostStudents))};
}

QStringList aboutNobody(const ReadState& state, const QStringList& others)
{
    if (!others.isEmpty() || state.proposal.counts.students > 0)
        return {};
    QStringList rows;
    if (state.proposal.counts.leftOut > 0)
        rows.append(u"%1 行学生都没有找到班级和学号"_s.arg(state.proposal.counts.leftOut));
    if (state.proposal.counts.nobody > 0)
        rows.append(nobodyText(state.proposal));
    return {u"没有一名学生能写进整理好的表：%1。"_s.arg(rows.join(u'，'))};
}

} // namespace

QStringList openQuestions(const ReadState& state)
{
    QStringList all = aboutSheets(state.proposal) + aboutColumns(state.proposal);
    for (const SheetReading& sheet : state.sheets)
        all += sheet.questions();
    all += aboutKeys(state) + aboutSubjects(state) + aboutClasses(state.proposal)
           + aboutRowsWithoutClass(state) + aboutMarks(state.proposal) + aboutNumbers(state)
           + state.joinQuestions + aboutSize(state.proposal);
    return all + aboutNobody(state, all);
}

} // namespace tidy
