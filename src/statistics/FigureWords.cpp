#include "statistics/FigureWords.h"

#include <algorithm>
#include <span>

#include "library/ColumnNames.h"
#include "library/Settings.h"
#include "platform/runtime/Numbers.h"
#include "statistics/ExamFigures.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

/// A name as a sentence has room for it.
QString named(const QString& name)
{
    constexpr qsizetype most = 40;
    const QString simple = name.left(4 * most).simplified();
    return simple.size() <= most ? simple : simple.left(most) + u"……"_s;
}

QString columnWords(const QString& column)
{
    constexpr int suffix = 2;
    return library::isGradeRankColumn(column) ? named(column.chopped(suffix)) + u"年级名次"_s
                                              : named(column);
}

QString markWords(const Comparison& comparison)
{
    if (comparison.number == 0 && comparison.op == Operator::GreaterOrEqual)
        return u"不缺考"_s;
    if (comparison.number == 0 && comparison.op == Operator::Less)
        return u"缺考"_s;
    const QString mark = doubleText(comparison.number) + u" 分"_s;
    switch (comparison.op) {
    case Operator::Less:
        return u"低于 "_s + mark;
    case Operator::LessOrEqual:
        return u"不高于 "_s + mark;
    case Operator::Greater:
        return u"高于 "_s + mark;
    case Operator::GreaterOrEqual:
        return u"不低于 "_s + mark;
    case Operator::Equal:
        break;
    }
    return u"等于 "_s + mark;
}

/// The last ones of more than a grade has begin before the first; -1 stands for who was absent.
QString fromRankWords(double rank)
{
    if (rank > 0)
        return u"在第 %1 名及以后"_s.arg(doubleText(rank));
    return rank > -1 ? u"不限（所有参试的）"_s : u"不限（所有参试的和缺考的）"_s;
}

QString rankWords(const Comparison& comparison)
{
    const QString rank = doubleText(comparison.number);
    switch (comparison.op) {
    case Operator::Less:
        return u"在第 %1 名之前"_s.arg(rank);
    case Operator::LessOrEqual:
        return u"在前 %1 名"_s.arg(rank);
    case Operator::Greater:
        return u"在第 %1 名之后"_s.arg(rank);
    case Operator::GreaterOrEqual:
        return fromRankWords(comparison.number);
    case Operator::Equal:
        break;
    }
    return u"是第 %1 名"_s.arg(rank);
}

bool isAnyRank(const Comparison& comparison)
{
    return library::isGradeRankColumn(comparison.column) && comparison.op == Operator::Greater
           && comparison.number == 0;
}

/// Comparisons of one column that follow one another, said of it together.
QStringList partsOf(const Condition& condition)
{
    QStringList parts;
    QString column;
    for (const Comparison& comparison : condition.comparisons()) {
        // Who is among the first ones has a rank.
        if (comparison.column == column && isAnyRank(comparison))
            continue;
        const QString words = library::isGradeRankColumn(comparison.column) ? rankWords(comparison)
                                                                            : markWords(comparison);
        if (comparison.column == column)
            parts.last() += u'、' + words;
        else
            parts.append(columnWords(comparison.column) + words);
        column = comparison.column;
    }
    return parts;
}

QString place(const Figure& figure)
{
    return u"%1，%2科，%3 班："_s.arg(named(figure.exam), named(figure.stream),
                                      doubleText(figure.classNumber));
}

QString kindWord(FigureKind kind)
{
    switch (kind) {
    case FigureKind::Maximum:
        return u"最高分"_s;
    case FigureKind::Minimum:
        return u"最低分"_s;
    case FigureKind::Deviation:
        return u"标准差"_s;
    case FigureKind::None:
    case FigureKind::Rows:
    case FigureKind::Values:
    case FigureKind::Share:
    case FigureKind::Attendance:
    case FigureKind::Average:
    case FigureKind::Rank:
        break;
    }
    return u"平均分"_s;
}

/// "语文不低于 0 分的学生的"; "" where all count.
QString ofWhom(const Figure& figure)
{
    return figure.condition.isNone() ? QString() : conditionWords(figure.condition) + u"的学生的"_s;
}

QString countSentence(const Figure& figure, const FigureGroup& group)
{
    const QString which = figure.condition.isNone() ? u"有"_s + columnWords(figure.column)
                                                    : conditionWords(figure.condition);
    const QString share =
        group.students == 0
            ? QString()
            : u"（全班 %1 人的 %2%）"_s.arg(doubleText(group.students),
                                            figureText(group.rows * 100.0 / group.students));
    return place(figure) + which + u"的学生，共 "_s + doubleText(group.rows) + u" 人"_s + share
           + u'。';
}

QString attendanceSentence(const Figure& figure, const FigureGroup& group)
{
    return place(figure) + named(figure.column)
           + u"参试 %1 人，缺考 %2 人，总计 %3 人。"_s.arg(group.sitting)
                 .arg(group.absent)
                 .arg(group.sitting + group.absent);
}

QString aggregateSentence(const Figure& figure, const FigureGroup& group)
{
    return place(figure) + ofWhom(figure) + named(figure.column) + kindWord(figure.kind) + u' '
           + (group.now.isEmpty() ? u"没有"_s : group.now) + u"，按 %1 人计算。"_s.arg(group.rows);
}

std::vector<ComparedClass> withAverage(const Figure& figure)
{
    std::vector<ComparedClass> classes = figure.compared;
    std::erase_if(classes, [](const ComparedClass& one) { return one.average.isEmpty(); });
    return classes;
}

/// What the table shows for the figure's class.
QString averageOf(const Figure& figure)
{
    const auto own = std::find_if(
        figure.compared.begin(), figure.compared.end(),
        [&figure](const ComparedClass& one) { return one.number == figure.classNumber; });
    return own == figure.compared.end() ? QString() : own->average;
}

QString rankSentence(const Figure& figure, const FigureGroup& group)
{
    const QString begin = place(figure) + ofWhom(figure) + named(figure.column)
                          + u"平均分 %1（%2 人），"_s.arg(group.now, doubleText(group.rows));
    const QString classes = doubleText(double(withAverage(figure).size()));
    // What has no average counts as 0, and one such place stands behind every list of classes.
    if (runtime::Val(averageOf(figure)) < 0)
        return begin
               + u"表格里的名次是 %1：没有平均分的按 0 分算，排在它前面，至少占一个名次。"
                 "有平均分的班共 %2 个。"_s.arg(figure.shown, classes);
    return begin + u"在 %1 个有平均分的班里排第 %2。"_s.arg(classes, figure.shown);
}

QString endWords(const QString& which, const std::vector<StudentMark>& end)
{
    constexpr size_t most = 3;
    QStringList names;
    for (const StudentMark& student : end) {
        if (size_t(names.size()) < most)
            names.append(named(student.name));
    }
    const QString more = end.size() > most ? u" 等 %1 人"_s.arg(end.size()) : QString();
    return which + u' ' + figureText(*end.front().mark) + u" 分："_s + names.join(u'、') + more;
}

void addAbsence(QStringList& sentences, const FigureGroup& group)
{
    const int without = group.otherWithout;
    if (group.absent > 0)
        sentences.append(u"缺考 %1 人，按 -1 分算在内。"_s.arg(group.absent));
    if (group.otherAbsent > 0)
        sentences.append(u"缺考 %1 人，没有算在内。"_s.arg(group.otherAbsent));
    if (without > 0)
        sentences.append(u"没有成绩 %1 人，没有算在内。"_s.arg(without));
    if (!group.highest.empty())
        sentences.append(endWords(u"算在内的考生里，最高"_s, group.highest) + u'；'
                         + endWords(u"最低"_s, group.lowest) + u'。');
}

/// The classes from the best average on.
QString orderWords(const Figure& figure)
{
    std::vector<ComparedClass> classes = withAverage(figure);
    std::stable_sort(classes.begin(), classes.end(),
                     [](const ComparedClass& a, const ComparedClass& b) {
                         return runtime::Val(a.average) > runtime::Val(b.average);
                     });
    constexpr size_t most = 40;
    QStringList words;
    for (const ComparedClass& one : std::span(classes).first(std::min(most, classes.size())))
        words.append(doubleText(one.number) + u" 班 "_s + one.average);
    return u"各班平均分从高到低："_s + words.join(u'，')
           + (classes.size() > most ? u"……"_s : u"。"_s);
}

void addAttendance(QStringList& sentences, const Figure& figure, const FigureGroup& group)
{
    const int without = group.rows - group.sitting - group.absent;
    if (without > 0)
        sentences.append(u"没有这一科成绩的 %1 人，不在这三个数里。"_s.arg(without));
    const QString chosen =
        figure.filter.isEmpty() ? QString() : u"，选中的类别 %1 人"_s.arg(group.chosenStudents);
    sentences.append(
        u"今天的名单上全班 %1 人%2，在这里没有成绩的列在最后。"_s.arg(group.students).arg(chosen));
}

bool isCount(FigureKind kind)
{
    return kind == FigureKind::Rows || kind == FigureKind::Values || kind == FigureKind::Share;
}

QString emptyAs(const QString& text)
{
    return text.isEmpty() ? u"空"_s : text;
}

/// Of the other classes of a rank, the first whose average is another one now.
QString otherChange(const Figure& figure, const FigureGroup& group)
{
    for (size_t i = 0; i < group.comparedNow.size(); ++i) {
        const ComparedClass& then = figure.compared[i];
        const QString& now = group.comparedNow[i].average;
        if (then.average != now)
            return u"成绩库在统计之后改过：%1 班的平均分在表格里是 %2，现在是 %3，"
                   "名次可能不同了。请重新统计。"_s.arg(doubleText(then.number),
                                                        emptyAs(then.average), emptyAs(now));
    }
    return {};
}

} // namespace

QString conditionWords(const Condition& condition)
{
    return condition.isSimple() ? partsOf(condition).join(u"，"_s)
                                : u"符合条件“%1”"_s.arg(named(condition.text()));
}

QString filterSentence(const QString& filter)
{
    return filter.isEmpty()
               ? u"不限类别。"_s
               : u"只算类别代码为 %1 的学生。"_s.arg(library::categoriesIn(filter).join(u'、'));
}

QString figureSentence(const Figure& figure, const FigureGroup& group)
{
    switch (figure.kind) {
    case FigureKind::None:
        break;
    case FigureKind::Rows:
    case FigureKind::Values:
    case FigureKind::Share:
        return countSentence(figure, group);
    case FigureKind::Attendance:
        return attendanceSentence(figure, group);
    case FigureKind::Rank:
        return rankSentence(figure, group);
    case FigureKind::Average:
    case FigureKind::Maximum:
    case FigureKind::Minimum:
    case FigureKind::Deviation:
        return aggregateSentence(figure, group);
    }
    return {};
}

QString figureDetails(const Figure& figure, const FigureGroup& group)
{
    QStringList sentences;
    if (figure.kind == FigureKind::Attendance)
        addAttendance(sentences, figure, group);
    else if (!isCount(figure.kind))
        addAbsence(sentences, group);
    else if (group.absent > 0)
        sentences.append(u"其中缺考 %1 人。"_s.arg(group.absent));
    if (figure.kind == FigureKind::Rank)
        sentences.append(orderWords(figure));
    if (!figure.filter.isEmpty())
        sentences.append(filterSentence(figure.filter));
    return sentences.join(QString());
}

QString figureChange(const Figure& figure, const FigureGroup& group)
{
    const QString shown = figure.kind == FigureKind::Rank ? averageOf(figure) : figure.shown;
    if (shown == group.now)
        return otherChange(figure, group);
    return u"成绩库在统计之后改过：表格里是 %1，现在是 %2。名单按现在的成绩库列出，请重新统计。"_s
        .arg(shown, emptyAs(group.now));
}

QString attendanceWord(std::optional<double> mark)
{
    if (!mark)
        return u"没有这一科的成绩"_s;
    return isAbsent(*mark) ? u"缺考"_s : u"参试"_s;
}

QString elsewhereWord(ScoreElsewhere place)
{
    switch (place) {
    case ScoreElsewhere::OtherClass:
        return u"成绩记在别的班或科类"_s;
    case ScoreElsewhere::OtherCategory:
        return u"成绩记在别的类别"_s;
    case ScoreElsewhere::None:
        break;
    }
    return u"没有这次考试的成绩"_s;
}

} // namespace statistics
