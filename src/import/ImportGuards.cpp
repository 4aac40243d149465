#include "import/ImportGuards.h"

#include <algorithm>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

/// Names and texts that a box lists before it says how many there are.
constexpr qsizetype listedAtMost = 10;

const QString cancel = u"取消"_s;

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

void refuse(const QString& text)
{
    runtime::MsgBox(text, u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical);
}

} // namespace

ImportGuards::ImportGuards(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                           KnownStudents& students)
    : m_classes(classes), m_findings(scoreLibrary, classes, students)
{
}

bool ImportGuards::isUsableName(const QString& exam) const
{
    const QString fault = exam.isEmpty() ? u"请输入考试名称！"_s : m_findings.nameFault(exam);
    if (!fault.isEmpty())
        refuse(fault);
    return fault.isEmpty();
}

bool ImportGuards::mayStayUnlisted(const QString& exam) const
{
    const QString reason = m_findings.whyUnlisted(exam);
    return reason.isEmpty() || agrees(reason, u"仍然导入"_s);
}

bool ImportGuards::giveStreams(const SheetRows& rows, const QString& chosen)
{
    m_classes.giveStream({}, {});
    const std::vector<double> empty = m_findings.classesWithoutStudents(rows);
    if (empty.empty())
        return true;
    const QString stream = m_findings.streamOfNewClasses(chosen);
    if (!stream.isEmpty()) {
        m_classes.giveStream(empty, stream);
        return true;
    }
    const QStringList known = m_findings.streams();
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
    const size_t repeated = m_findings.repeatedRows(rows, exam).size();
    return repeated == 0
           || agrees(u"考试“%1”里已有这些学生的成绩，再次导入会使 %2 人的成绩重复。"_s.arg(
                         exam, QString::number(repeated)),
                     u"继续"_s);
}

std::optional<ScoreTarget> ImportGuards::overwrittenRows(const SheetRows& rows, const QString& exam,
                                                         const QString& stream)
{
    QStringList costs;
    const std::vector<ExamFindings::Overwritten> lost = m_findings.overwrittenRows(rows, exam);
    QStringList exams;
    for (const ExamFindings::Overwritten& one : lost)
        exams.append(one.exam);
    exams.removeDuplicates();
    if (!lost.empty())
        costs.append(u"将覆盖 %1 名学生其他考试（%2）的成绩。"_s.arg(QString::number(lost.size()),
                                                                     listed(exams, u"次"_s)));
    if (const QString sentence = m_findings.wrongExamRow(exam, stream); !sentence.isEmpty())
        costs.append(sentence);
    if (costs.isEmpty())
        return ScoreTarget::FirstRows;
    const int button = runtime::choose(
        {.text = costs.join(u'\n')
                 + u"\n\n[按原规则导入]改写每名学生在成绩库里的第一条成绩，它就成为这次考试的成绩；"
                   "满分和总分公式写到这次考试的第一行\n"
                   "[只更新本考试]只改写考试“%1”的成绩，没有的学生新增一条；"
                   "满分和总分公式写到%2的考试行"_s.arg(exam, namedStream(stream)),
         .buttons = {u"按原规则导入"_s, u"只更新本考试"_s, cancel},
         .safe = 2,
         .title = u"提示"_s});
    if (button == 2)
        return std::nullopt;
    return button == 0 ? ScoreTarget::FirstRows : ScoreTarget::ExamRows;
}

} // namespace importing
