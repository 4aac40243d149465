#include "import/ImportGuards.h"

#include <algorithm>
#include <set>

#include "platform/database/ReadBatch.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Val;

namespace {

/// As many as 考试名称 holds.
constexpr qsizetype longestName = 50;
/// Names and texts that a box lists before it says how many there are.
constexpr qsizetype listedAtMost = 10;

const QString cancel = u"取消"_s;

/// Reads what a question tells, from one state of the file.
template <class Reading> void read(database::Connection& connection, Reading&& reading)
{
    const runtime::Phase phase;
    const database::ReadBatch state(connection);
    reading();
}

/// "期初、月考", and of many names the first ones and their number.
QString listed(const QStringList& names, const QString& unit)
{
    const QString shown = names.mid(0, listedAtMost).join(u'、');
    return names.size() > listedAtMost
               ? u"%1 等 %2 %3"_s.arg(shown, QString::number(names.size()), unit)
               : shown;
}

bool agrees(const QString& text, const QString& goOn)
{
    const int button =
        runtime::choose({.text = text, .buttons = {goOn, cancel}, .safe = 1, .title = u"提示"_s});
    return button == 0;
}

bool isControl(QChar letter)
{
    const QChar::Category category = letter.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
           || category == QChar::Separator_Paragraph;
}

/// Why no exam can have this name beside the known ones; empty if it can.
QString nameFault(const QString& exam, const QStringList& known)
{
    if (exam.size() > longestName)
        return u"考试名称最多 %1 个字，现在有 %2 个字。"_s.arg(longestName).arg(exam.size());
    if (std::any_of(exam.begin(), exam.end(), isControl))
        return u"考试名称里不能有换行、制表符等控制字符。"_s;
    // The name of an exam that is there was given already.
    if (known.contains(exam))
        return {};
    for (const QString& other : known) {
        if (other.compare(exam, Qt::CaseInsensitive) == 0)
            return u"已有考试“%1”，与“%2”只有字母的大小写不同，请换一个名称。"_s.arg(other, exam);
    }
    return {};
}

} // namespace

ImportGuards::ImportGuards(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                           KnownStudents& students)
    : m_library(scoreLibrary), m_classes(classes), m_students(students)
{
}

/// The first values of the rows of a statement, none twice.
QStringList ImportGuards::namesOf(const QString& sql) const
{
    QStringList names;
    read(m_library.Conn, [&] {
        database::Recordset rows;
        for (rows.Open(sql, m_library.Conn); !rows.Eof(); rows.MoveNext())
            names.append(rows.Fields(0).Value().text());
    });
    names.removeDuplicates();
    return names;
}

bool ImportGuards::isUsableName(const QString& exam) const
{
    const QString fault = nameFault(exam, namesOf(u"select 考试名称 from 考试名称表"_s));
    if (!fault.isEmpty())
        runtime::MsgBox(fault, u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical);
    return fault.isEmpty();
}

bool ImportGuards::mayStayUnlisted(const QString& exam) const
{
    // The list asks whether a name stands anywhere in those before it, and a new exam comes last.
    const QStringList known = namesOf(u"select 考试名称 from 考试名称表 order by 考试编号"_s);
    QString seen;
    QString hiding;
    for (const QString& other : known) {
        if (seen.contains(other) && !seen.isEmpty())
            continue;
        if (other == exam)
            return true;
        seen += other + u',';
        if (hiding.isEmpty() && other.contains(exam))
            hiding = other;
    }
    if (!seen.contains(exam))
        return true;
    const QString where = hiding.isEmpty() ? u"已有的考试名称连起来含有“%1”"_s.arg(exam)
                                           : u"“%1”是已有考试“%2”的一部分"_s.arg(exam, hiding);
    return agrees(where
                      + u"，导入以后考试列表里看不到它，也就不能浏览和统计。\n"
                        "请换一个不被别的考试名称包含的名称。"_s,
                  u"仍然导入"_s);
}

std::vector<double> ImportGuards::classesWithoutStudents(const SheetRows& rows) const
{
    std::vector<double> empty;
    read(m_library.Conn, [&] {
        for (const double classNumber : rows.classes()) {
            if (!m_classes.hasStudents(classNumber))
                empty.push_back(classNumber);
        }
    });
    return empty;
}

/// The streams of the library's students.
QStringList ImportGuards::streams() const
{
    QStringList found = namesOf(u"select distinct 科类 from 信息表"_s);
    found.removeAll(QString());
    return found;
}

bool ImportGuards::giveStreams(const SheetRows& rows, const QString& chosen)
{
    m_classes.giveStream({}, {});
    const std::vector<double> empty = classesWithoutStudents(rows);
    if (empty.empty())
        return true;
    const QStringList known = streams();
    if (!chosen.isEmpty() || known.size() == 1) {
        m_classes.giveStream(empty, known.size() == 1 ? known[0] : chosen);
        return true;
    }
    const QString none = u"留空"_s;
    QStringList numbers;
    for (const double classNumber : empty)
        numbers.append(runtime::doubleText(classNumber));
    const QStringList buttons =
        (known.size() == 2 ? known : QStringList{u"文"_s, u"理"_s}) + QStringList{none, cancel};
    const QString& pressed = buttons[runtime::choose(
        {.text = u"班级 %1 还没有学生，科类设为："_s.arg(listed(numbers, u"个班"_s)),
         .buttons = buttons,
         .safe = int(buttons.size()) - 1,
         .title = u"提示"_s})];
    if (pressed != none && pressed != cancel)
        m_classes.giveStream(empty, pressed);
    return pressed != cancel;
}

namespace {

/// "abc（2）、请假（1）", the most frequent first.
QString countedTexts(const TextCounts& counts)
{
    QStringList texts = counts.keys();
    std::sort(texts.begin(), texts.end(), [&](const QString& a, const QString& b) {
        return std::pair(-counts[a], a) < std::pair(-counts[b], b);
    });
    constexpr qsizetype longestShown = 20;
    QStringList shown;
    for (const QString& text : std::as_const(texts)) {
        QString cut = text.size() > longestShown ? text.left(longestShown) + u'…' : text;
        if (text.trimmed() != text)
            cut = u'“' + cut + u'”';
        shown.append(u"%1（%2）"_s.arg(cut, QString::number(counts[text])));
    }
    return listed(shown, u"种"_s);
}

/// “文”科
QString named(const QString& stream)
{
    return stream.isEmpty() ? u"没有科类"_s : u"“%1”科"_s.arg(stream);
}

int cells(const TextCounts& counts)
{
    int all = 0;
    for (const int count : counts)
        all += count;
    return all;
}

} // namespace

bool ImportGuards::mayReadTexts(const SheetRows& rows,
                                const std::vector<ImportSubject>& subjects) const
{
    const OddTexts odd = rows.oddTexts(subjects);
    const int count = cells(odd.withoutNumber) + cells(odd.withNumber);
    if (count == 0)
        return true;
    QString text = u"有 %1 个单元格的文字既不是缺考也不是作弊，"_s.arg(count);
    if (!odd.withoutNumber.isEmpty())
        text += u"按 0 分计："_s + countedTexts(odd.withoutNumber);
    if (!odd.withoutNumber.isEmpty() && !odd.withNumber.isEmpty())
        text += u"；"_s;
    if (!odd.withNumber.isEmpty())
        text += u"按开头的数字计："_s + countedTexts(odd.withNumber);
    return agrees(text, u"继续"_s);
}

bool ImportGuards::mayRepeat(const SheetRows& rows, const QString& exam) const
{
    std::set<std::pair<double, double>> repeated;
    read(m_library.Conn, [&] {
        std::set<std::pair<double, double>> present;
        database::Statement& scores =
            m_library.Conn.prepared(u"select 班级, 学号 from 成绩表 where 考试名称=?"_s);
        scores.bind({exam});
        while (scores.step())
            present.emplace(Val(scores.value(0)), Val(scores.value(1)));
        if (present.empty())
            return;
        for (const SheetStudent& student : rows.students()) {
            if (const std::pair key(student.classNumber, student.number); present.contains(key))
                repeated.insert(key);
        }
    });
    return repeated.empty()
           || agrees(u"考试“%1”里已有这些学生的成绩，再次导入会使 %2 人的成绩重复。"_s.arg(
                         exam, QString::number(repeated.size())),
                     u"继续"_s);
}

ImportGuards::Overwritten ImportGuards::overwrittenBy(const SheetRows& rows, const QString& exam)
{
    Overwritten found;
    read(m_library.Conn, [&] {
        // A student of another name in the library may be renamed on the way, and is found then.
        database::Statement& firstRow = m_library.Conn.prepared(
            u"select 考试名称, 考试名称 is ? from 成绩表 "
            "where 班级=? and 学号=? and (姓名=? or ?) order by rowid limit 1"_s);
        std::set<std::pair<double, double>> counted;
        for (const SheetStudent& student : rows.students()) {
            const KnownStudents::Student* known =
                m_students.find(student.classNumber, student.number);
            firstRow.bind({exam, student.classNumber, student.number, student.name,
                           known != nullptr && known->name != student.name ? 1 : 0});
            if (!firstRow.step() || firstRow.integer(1) != 0)
                continue;
            if (counted.emplace(student.classNumber, student.number).second)
                found.exams.append(firstRow.text(0).isEmpty() ? u"没有名称的考试"_s
                                                              : firstRow.text(0));
        }
        firstRow.finish();
        found.students = int(counted.size());
    });
    found.exams.removeDuplicates();
    return found;
}

/// Where the original rule puts full marks and formulas: the exam's first row, whichever its
/// stream. Empty if that is the sheet's own.
QString ImportGuards::wrongExamRow(const QString& exam, const QString& stream) const
{
    QString sentence;
    read(m_library.Conn, [&] {
        database::Statement& firstRow = m_library.Conn.prepared(
            u"select 科类 from 考试名称表 where 考试名称=? order by 考试编号, rowid limit 1"_s);
        firstRow.bind({exam});
        if (firstRow.step() && firstRow.text(0) != stream)
            sentence = u"满分和总分公式会写到%1的考试行，不是%2的。"_s.arg(named(firstRow.text(0)),
                                                                           named(stream));
        firstRow.finish();
    });
    return sentence;
}

std::optional<ScoreTarget> ImportGuards::overwrittenRows(const SheetRows& rows, const QString& exam,
                                                         const QString& stream)
{
    QStringList costs;
    const Overwritten lost = overwrittenBy(rows, exam);
    if (lost.students > 0)
        costs.append(u"将覆盖 %1 名学生其他考试（%2）的成绩。"_s.arg(QString::number(lost.students),
                                                                     listed(lost.exams, u"次"_s)));
    if (const QString sentence = wrongExamRow(exam, stream); !sentence.isEmpty())
        costs.append(sentence);
    if (costs.isEmpty())
        return ScoreTarget::FirstRows;
    const int button = runtime::choose(
        {.text = costs.join(u'\n')
                 + u"\n\n[按原规则导入]改写每名学生在成绩库里的第一条成绩，它就成为这次考试的成绩；"
                   "满分和总分公式写到这次考试的第一行\n"
                   "[只更新本考试]只改写考试“%1”的成绩，没有的学生新增一条；"
                   "满分和总分公式写到%2的考试行"_s.arg(exam, named(stream)),
         .buttons = {u"按原规则导入"_s, u"只更新本考试"_s, cancel},
         .safe = 2,
         .title = u"提示"_s});
    if (button == 2)
        return std::nullopt;
    return button == 0 ? ScoreTarget::FirstRows : ScoreTarget::ExamRows;
}

} // namespace importing
