#include "statistics/FigureGroup.h"

#include <cmath>

#include "library/ColumnNames.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "statistics/ExamFigures.h"

namespace statistics {

using namespace Qt::StringLiterals;
using database::SqlPiece;

namespace {

QString literal(const runtime::Value& value)
{
    if (value.kind() != runtime::Value::Kind::Text)
        return value.text();
    return u'\'' + value.text().replace(u'\'', u"''"_s) + u'\'';
}

/// The columns in which the rows of a figure have a number.
QStringList numberColumns(const Figure& figure)
{
    QStringList columns;
    for (const Comparison& comparison : figure.condition.comparisons())
        columns.append(comparison.column);
    if (figure.needsValue())
        columns.append(figure.column);
    columns.removeDuplicates();
    return columns;
}

/// To the engine every text is above all numbers, and rounded it is 0.
QString isNumber(const QString& column)
{
    const QString name = SqlPiece::names({column}).text();
    return u" and "_s + name + u">-9e999 and "_s + name + u"<9e999"_s;
}

QString hasValue(const Figure& figure)
{
    QString condition;
    if (figure.on == ReckonedOn::Rows) {
        for (const QString& column : numberColumns(figure))
            condition += isNumber(column);
    } else if (figure.needsValue()) {
        condition = u" and "_s + SqlPiece::names({figure.column}).text() + u" is not null"_s;
    }
    return condition;
}

/// The condition of the rows with " and" in front.
SqlPiece rowCondition(const Figure& figure)
{
    if (figure.kind == FigureKind::Attendance)
        return SqlPiece::condition({});
    QString condition;
    if (!figure.condition.isNone())
        condition = u" and "_s + figure.condition.sqlText();
    return SqlPiece::condition(condition + hasValue(figure));
}

std::vector<runtime::Value> placeOf(const Figure& figure)
{
    return {figure.exam, figure.stream, figure.classNumber};
}

/// The value of a column as the figure was reckoned with it.
std::optional<double> markIn(const database::Statement& rows, int column, ReckonedOn on)
{
    double number = rows.number(column);
    if (on == ReckonedOn::Rows)
        rows.readNumbers(column, {&number, 1});
    return rows.isNull(column) || std::isnan(number) ? std::nullopt : std::optional(number);
}

int columnOf(const database::Statement& rows, const QString& name)
{
    int column = 0;
    while (column + 1 < rows.columnCount()
           && rows.columnName(column).compare(name, Qt::CaseInsensitive) != 0)
        ++column;
    return column;
}

Aggregate aggregateOf(FigureKind kind)
{
    switch (kind) {
    case FigureKind::Average:
    case FigureKind::Rank:
        return Aggregate::Average;
    case FigureKind::Maximum:
        return Aggregate::Maximum;
    case FigureKind::Minimum:
        return Aggregate::Minimum;
    case FigureKind::Deviation:
        return Aggregate::Deviation;
    case FigureKind::None:
    case FigureKind::Rows:
    case FigureKind::Values:
    case FigureKind::Share:
    case FigureKind::Attendance:
        break;
    }
    return Aggregate::Count;
}

/// Takes the student among the ends where he stands there.
void takeEnds(FigureGroup& group, const StudentMark& student)
{
    const auto take = [&student](std::vector<StudentMark>& end, bool isBeyond) {
        if (end.empty() || isBeyond)
            end = {student};
        else if (end.front().mark == student.mark)
            end.push_back(student);
    };
    const double mark = *student.mark;
    take(group.highest, !group.highest.empty() && mark > *group.highest.front().mark);
    take(group.lowest, !group.lowest.empty() && mark < *group.lowest.front().mark);
}

void takeRow(FigureGroup& group, Tally& tally, const StudentMark& student)
{
    ++group.rows;
    group.marks.push_back(student.mark);
    if (!student.mark)
        return;
    tally.add(*student.mark);
    if (isAbsent(*student.mark)) {
        ++group.absent;
        return;
    }
    ++group.sitting;
    takeEnds(group, student);
}

void readRows(database::Connection& connection, const Figure& figure, FigureGroup& group,
              Tally& tally)
{
    const StudentSql behind = rowsBehind(figure);
    database::Statement rows(connection, behind.sql);
    rows.bind(behind.values);
    const int name = columnOf(rows, u"姓名"_s);
    const int column = columnOf(rows, figure.column);
    while (rows.step())
        takeRow(group, tally, {rows.text(name), markIn(rows, column, figure.on)});
}

/// Those of the class who are not in the group.
void countOthers(database::Connection& connection, const Figure& figure, FigureGroup& group)
{
    database::Statement rows(
        connection,
        database::sqlWith(u"select %1 from 成绩表 where 考试名称=? and 科类=? and 班级=?%2"_s,
                          {SqlPiece::names({figure.column}), SqlPiece::condition(figure.filter)}));
    rows.bind(placeOf(figure));
    group.otherAbsent = -group.absent;
    group.otherWithout = group.sitting + group.absent - group.rows;
    while (rows.step()) {
        const std::optional<double> mark = markIn(rows, 0, figure.on);
        group.otherAbsent += mark && isAbsent(*mark);
        group.otherWithout += !mark;
    }
}

int studentsOf(database::Connection& connection, double classNumber, const QString& filter)
{
    database::Statement count(connection,
                              database::sqlWith(u"select count(*) from 信息表 where 班级=?%1"_s,
                                                {SqlPiece::condition(filter)}));
    count.bind({classNumber});
    return count.step() ? int(count.number(0)) : 0;
}

QString nowOf(const Figure& figure, const FigureGroup& group, const Tally& tally)
{
    using runtime::doubleText;
    switch (figure.kind) {
    case FigureKind::Rows:
    case FigureKind::Values:
        return doubleText(group.rows);
    case FigureKind::Share:
        return group.students == 0 ? QString() : figureText(group.rows * 100.0 / group.students);
    case FigureKind::Attendance:
        return doubleText(group.sitting) + u'/' + doubleText(group.absent) + u'/'
               + doubleText(group.sitting + group.absent);
    case FigureKind::None:
    case FigureKind::Average:
    case FigureKind::Maximum:
    case FigureKind::Minimum:
    case FigureKind::Deviation:
    case FigureKind::Rank:
        break;
    }
    const std::optional<double> result = tally.result();
    return result ? figureText(*result) : QString();
}

/// The averages of all classes of a rank.
std::vector<ComparedClass> averagesNow(database::Connection& connection, const Figure& figure)
{
    std::vector<ComparedClass> classes;
    Figure average = figure;
    average.kind = FigureKind::Average;
    for (const ComparedClass& one : figure.compared) {
        average.classNumber = one.number;
        FigureGroup group;
        Tally tally(Aggregate::Average);
        readRows(connection, average, group, tally);
        classes.push_back({one.number, nowOf(average, group, tally)});
    }
    return classes;
}

} // namespace

QString StudentSql::asTyped() const
{
    // The values stand ahead of all names and conditions.
    QStringList parts;
    QStringView rest = sql;
    for (const runtime::Value& value : values) {
        const qsizetype place = rest.indexOf(u'?');
        parts << rest.left(place).toString() << literal(value);
        rest = rest.mid(place + 1);
    }
    return parts.join(QString()) + rest.toString();
}

StudentSql rowsBehind(const Figure& figure)
{
    const std::vector<SqlPiece> pieces{rowCondition(figure), SqlPiece::condition(figure.filter),
                                       SqlPiece::names({figure.column})};
    // The best rank is the lowest, but who was absent has none; the best mark is the highest.
    const QString sql =
        library::isGradeRankColumn(figure.column)
            ? database::sqlWith(u"select * from 成绩表 where 考试名称=? and 科类=? and 班级=?%1%2 "
                                "order by %3<0,%3,学号"_s,
                                pieces)
            : database::sqlWith(u"select * from 成绩表 where 考试名称=? and 科类=? and 班级=?%1%2 "
                                "order by %3 DESC,学号"_s,
                                pieces);
    return {sql, placeOf(figure)};
}

StudentSql studentsWithoutRow(const Figure& figure)
{
    // A student who was entered after the scores has no number in their rows. A row in the place of
    // the figure that is not behind it is of a category that was not chosen.
    return {
        database::sqlWith(
            u"select 学号,姓名,(select max(case when 科类=?2 and 班级=?3 then 2 else 1 end) from "
            "成绩表 where 考试名称=?1 and "
            "(成绩表.id=信息表.ID or (ifnull(成绩表.id,0)=0 and 成绩表.班级=信息表.班级 and "
            "成绩表.学号=信息表.学号))) from 信息表 where 班级=?3 and not exists (select 1 from "
            "成绩表 where 考试名称=?1 and 科类=?2 and 班级=?3 and (成绩表.id=信息表.ID or "
            "(ifnull(成绩表.id,0)=0 and 成绩表.学号=信息表.学号))%1)%1 order by 学号"_s,
            {SqlPiece::condition(figure.filter)}),
        placeOf(figure)};
}

FigureGroup readGroup(database::Connection& connection, const Figure& figure)
{
    FigureGroup group;
    Tally tally(aggregateOf(figure.kind));
    readRows(connection, figure, group, tally);
    countOthers(connection, figure, group);
    group.students = studentsOf(connection, figure.classNumber, {});
    group.chosenStudents = studentsOf(connection, figure.classNumber, figure.filter);
    group.now = nowOf(figure, group, tally);
    if (figure.kind == FigureKind::Rank)
        group.comparedNow = averagesNow(connection, figure);
    return group;
}

} // namespace statistics
