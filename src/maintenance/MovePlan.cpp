#include "maintenance/MovePlan.h"

#include <algorithm>

#include "maintenance/QuotedText.h"
#include "platform/grid/GridRow.h"
#include "platform/runtime/Numbers.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

/// How many students and rows of 成绩表 a plan changes.
struct Counts
{
    int moved = 0;
    int removed = 0;
    qsizetype movedScores = 0;
    qsizetype removedScores = 0;
    qsizetype scoresLeft = 0;

    void add(const PlannedStudent& one)
    {
        (one.to ? moved : removed) += 1;
        const auto rows = qsizetype(one.earlier.size());
        if (one.scores == EarlierScores::GoAlong)
            (one.to ? movedScores : removedScores) += rows;
        else
            scoresLeft += rows;
    }
};

QString scoresText(const PlannedStudent& one)
{
    if (one.earlier.empty())
        return u"没有"_s;
    const QString text = one.scores == EarlierScores::Stay ? u"%1 条，不改动"_s
                         : one.to                          ? u"%1 条，一起改"_s
                                                           : u"%1 条，一起删去"_s;
    return text.arg(one.earlier.size());
}

QString placeText(const PlannedStudent& one)
{
    if (one.to)
        return one.to->text();
    return one.kind == StudentMove::Kind::Remove ? u"删除"_s : u"不能交换"_s;
}

QString streamText(const PlannedStudent& one)
{
    if (!one.to || one.streamAfter == one.student.stream)
        return one.student.stream;
    return one.student.stream + u" → "_s + one.streamAfter;
}

QStringList gridRow(const PlannedStudent& one)
{
    const std::optional<StudentPlace> here = one.student.place();
    return {shownName(one.student.name),
            here ? here->text() : u"没有班级或学号"_s,
            placeText(one),
            streamText(one),
            scoresText(one),
            (one.conflicts + one.notes).join(u' ')};
}

} // namespace

bool PlannedStudent::makesStale(const EarlierScore& score) const
{
    if (scores == EarlierScores::Stay)
        return false;
    return !to || !score.classNumber.isNumber()
           || runtime::Val(score.classNumber) != to->classNumber;
}

bool MovePlan::isPossible() const
{
    return std::all_of(students.begin(), students.end(),
                       [](const PlannedStudent& one) { return one.conflicts.isEmpty(); });
}

QString MovePlan::text() const
{
    Counts counts;
    for (const PlannedStudent& one : students)
        counts.add(one);
    QStringList lines;
    const auto add = [&lines](qsizetype number, const QString& text) {
        if (number > 0)
            lines.append(text.arg(number));
    };
    add(counts.moved, u"改班级或学号：%1 人"_s);
    add(counts.removed, u"从学生名单里删除：%1 人"_s);
    add(counts.movedScores, u"一起改的以前的成绩：%1 条"_s);
    add(counts.removedScores, u"一起删去的以前的成绩：%1 条"_s);
    add(counts.scoresLeft, u"不改动的以前的成绩：%1 条"_s);
    return lines.join(u'\n');
}

grid::FlexGrid planGrid(const MovePlan& plan)
{
    constexpr int columns = 6;
    grid::FlexGrid grid;
    grid.FixedCols = 0;
    grid.setCols(columns);
    grid.setRows(int(plan.students.size()) + 1);
    grid::setRow(grid, 0,
                 {u"学生"_s, u"现在"_s, u"调整为"_s, u"科类"_s, u"以前的成绩"_s, u"说明"_s});
    for (size_t i = 0; i < plan.students.size(); ++i)
        grid::setRow(grid, int(i) + 1, gridRow(plan.students[i]));
    grid.setColAlignment(-1, 1);
    constexpr int twipsOfACharacter = 120;
    constexpr int widths[columns] = {12, 16, 16, 10, 18, 30};
    for (int col = 0; col < columns; ++col)
        grid.setColWidth(col, widths[col] * twipsOfACharacter);
    return grid;
}

} // namespace maintenance
