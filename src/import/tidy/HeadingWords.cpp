#include "import/tidy/HeadingWords.h"

#include <algorithm>

#include <QRegularExpression>

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

const QString passedOver = u"不取用"_s;

/// The subjects that schools have, whether a library has them or not.
const QStringList& usualSubjects()
{
    static const QStringList names{u"语文"_s,     u"数学"_s,     u"英语"_s, u"物理"_s,
                                   u"化学"_s,     u"生物"_s,     u"政治"_s, u"历史"_s,
                                   u"地理"_s,     u"体育"_s,     u"音乐"_s, u"美术"_s,
                                   u"信息技术"_s, u"通用技术"_s, u"文综"_s, u"理综"_s};
    return names;
}

/// What stands beside the name of a subject, as headings are folded, with the full mark or without.
ScoreKind kindOf(const QString& heading)
{
    static const QRegularExpression fullMark(u"^[/:]?(满分)?[/:]?\\d+分?$"_s);
    static const QRegularExpression fullMarkBehind(u"(?<=[分绩])[/:]?(满分)?[/:]?\\d{2,3}分?$"_s);
    static const QRegularExpression raw(
        u"^(原始|卷面|实得|考试)?(分数|得分|成绩|分|原分)$|^原始$|^卷面$"_s);
    static const QRegularExpression assigned(u"赋分|等级分|转换|折算|折合|加权"_s);
    static const QRegularExpression beside(
        u"名次|名$|^次$|[校级班年段排]次$|排名|排序|位次|排$|段|标准分|[zt]分|客观|主观|选择|填空|"
        u"非选|题|等级|"
        "平均|均分|最高|最低|率$|进退|升降|状态|备注|[ab]卷|听力|作文|笔试|口试|差"_s);
    static const QRegularExpression now(u"^(本次|这次)(考试)?(分数|得分|成绩|分)?$"_s);
    static const QRegularExpression former(u"^(上|前|上一|前一)次(考试)?(分数|得分|成绩|分)?$"_s);
    const QString rest = QString(heading).remove(fullMarkBehind);
    if (former.match(rest).hasMatch())
        return ScoreKind::Former;
    if (rest.isEmpty() || fullMark.match(heading).hasMatch() || now.match(rest).hasMatch())
        return ScoreKind::Bare;
    if (raw.match(rest).hasMatch())
        return ScoreKind::Raw;
    if (assigned.match(rest).hasMatch())
        return ScoreKind::Assigned;
    if (rest == u"总分"_s || rest == u"总成绩"_s)
        return ScoreKind::Whole;
    return beside.match(rest).hasMatch() ? ScoreKind::Beside : ScoreKind::None;
}

/// Where a student sits for a subject, who teaches it, how often it was done: 语文考场, 历史组号.
bool isBesideSubject(const QString& rest)
{
    static const QRegularExpression words(
        u"(考场|座位|座)[号次]?$|^(分|学习)?(小)?组[别号]?$|次数$|编号$|"
        "(老师|教师)(姓名|工号|代码)?$"_s);
    return words.match(rest).hasMatch();
}

} // namespace

HeadingWords::HeadingWords(Goal goal, const Sources& sources)
    : m_goal(goal), m_sources(sources), m_uses(possibleUses(goal, sources.roster))
{
    for (const QString& subject : usualSubjects()) {
        for (const QString& word : sources.aliases.namesOf(subject))
            m_subjectsOf.insert(folded(word), {});
    }
    for (const QString& subject : sources.roster.subjects())
        addSubject(subject);
    m_words = m_subjectsOf.keys();
    std::sort(m_words.begin(), m_words.end(), [](const QString& a, const QString& b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    });
}

bool HeadingWords::offers(const ColumnUse& use) const
{
    return std::find(m_uses.begin(), m_uses.end(), use) != m_uses.end();
}

void HeadingWords::addSubject(const QString& subject)
{
    for (const QString& word : m_sources.aliases.namesOf(subject))
        addWord(folded(word), subject);
}

/// A word that is the name of a subject means that one alone.
void HeadingWords::addWord(const QString& word, const QString& subject)
{
    if (word.isEmpty())
        return;
    QStringList& subjects = m_subjectsOf[word];
    const auto isWord = [&](const QString& name) { return folded(name) == word; };
    if (isWord(subject))
        subjects = QStringList{subject};
    else if (std::none_of(subjects.begin(), subjects.end(), isWord))
        subjects.append(subject);
}

ColumnUse HeadingWords::useOf(const QString& name) const
{
    static const QHash<QString, Field> fields{
        {u"班级"_s, Field::Class},          {u"学号"_s, Field::Number},
        {u"姓名"_s, Field::Name},           {u"考号"_s, Field::ExamNumber},
        {u"学籍号"_s, Field::SchoolNumber}, {u"科类"_s, Field::Stream}};
    const auto field = fields.constFind(name);
    if (field != fields.constEnd())
        return {*field, {}};
    if (m_goal == Goal::StudentList && Roster::studentColumns().contains(name))
        return {Field::StudentColumn, name};
    return {};
}

HeadingMeaning HeadingWords::readAsKey(const QString& heading) const
{
    QString name = m_sources.aliases.nameOf(heading);
    const bool isExact = name.isEmpty() || folded(name) == folded(heading);
    if (name.isEmpty())
        name = heading;
    const ColumnUse use = useOf(name);
    const bool isPassedOver = name == passedOver || Roster::studentColumns().contains(name);
    if (use.field == Field::Leave && !isPassedOver)
        return {};
    return {.use = use, .isKnown = true, .isExact = isExact};
}

HeadingMeaning HeadingWords::subjectOf(const QString& word, ScoreKind score) const
{
    HeadingMeaning meaning{.score = score, .isKnown = true};
    const QStringList subjects = m_subjectsOf.value(word);
    if (subjects.isEmpty())
        meaning.missingSubject = word;
    else if (subjects.size() == 1)
        meaning.use = {Field::Subject, subjects.first()};
    else
        meaning.choices = subjects;
    if (score == ScoreKind::Beside)
        meaning.use = {};
    meaning.isExact = subjects.size() == 1 && folded(subjects.first()) == word;
    return meaning;
}

HeadingMeaning HeadingWords::readAsSubject(const QString& heading) const
{
    if (m_subjectsOf.contains(heading))
        return subjectOf(heading, ScoreKind::Bare);
    for (const QString& word : m_words) {
        // A single letter may end any word: 分数 is no 数.
        const bool ahead = heading.startsWith(word);
        if (!ahead && (word.size() < 2 || !heading.endsWith(word)))
            continue;
        const QString rest =
            ahead ? heading.mid(word.size()) : heading.left(heading.size() - word.size());
        const ScoreKind found = kindOf(rest);
        const ScoreKind kind =
            found == ScoreKind::None && ahead && isBesideSubject(rest) ? ScoreKind::Beside : found;
        if (kind != ScoreKind::None)
            return subjectOf(word, kind);
    }
    return {};
}

HeadingMeaning HeadingWords::read(const QString& heading) const
{
    if (heading.isEmpty())
        return {};
    HeadingMeaning meaning = readAsKey(heading);
    if (!meaning.isKnown && m_goal == Goal::ExamScores) {
        meaning = readAsSubject(heading);
        if (!meaning.isKnown && kindOf(heading) == ScoreKind::Raw)
            return {.score = ScoreKind::OfSheet, .isKnown = true};
        const bool isBeside = kindOf(heading) == ScoreKind::Beside || heading.endsWith(u"总分"_s);
        if (!meaning.isKnown && isBeside)
            return {.score = ScoreKind::Beside, .isKnown = true};
    }
    return meaning;
}

/// A heading of two rows is read as one. Where that says nothing, an upper one such as 总分 counts
/// for all below it, and otherwise the lower one, as below 学生信息; a mark alone belongs to a
/// subject that nobody knows.
HeadingMeaning HeadingWords::meaning(const HeadingCell& heading) const
{
    HeadingMeaning whole = read(folded(heading.joined()));
    if (heading.lower.isEmpty() || heading.upper.isEmpty() || whole.isKnown)
        return whole;
    HeadingMeaning upper = read(folded(heading.upper));
    if (upper.isKnown && upper.use.field == Field::Leave && upper.score != ScoreKind::OfSheet)
        return upper;
    HeadingMeaning lower = read(folded(heading.lower));
    return lower.score == ScoreKind::OfSheet ? whole : lower;
}

QString HeadingWords::subjectIn(const QString& text) const
{
    // Streams, and what a list of students is called.
    static const QRegularExpression others(
        u"(物理|历史)(科?类|方向|组合)|(学生|考生|班级|基本|成绩)信息|信息(表|及|统计)"_s);
    const QString all = folded(text).remove(others);
    QString found;
    for (const QString& word : m_words) {
        const QStringList subjects = m_subjectsOf.value(word);
        if (word.size() < 2 || subjects.size() != 1 || !all.contains(word))
            continue;
        if (!found.isEmpty() && found != subjects.first())
            return {};
        found = subjects.first();
    }
    return found;
}

} // namespace tidy
