#include "statistics/FigureGroup.h"

#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/ComparedNumber.h"
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

/// The condition of the rows with " and" in front.
SqlPiece rowCondition(const Figure& figure)
{
    if (figure.kind == FigureKind::Attendance)
        return SqlPiece::condition({});
    QString condition;
    if (!figure.condition.isNone())
        condition = u" and "_s + figure.condition.sqlText();
    if (figure.needsValue())
        condition += u" and "_s + SqlPiece::names({figure.column}).text() + u" is not null"_s;
    return SqlPiece::condition(condition);
}

std::vector<runtime::Value> placeOf(const Figure& figure)
{
    return {figure.exam, figure.stream, figure.classNumber};
}

/// The values of the first row; 0 for NULL.
std::vector<int> counts(database::Connection& connection, const QString& sql,
                        const std::vector<runtime::Value>& values)
{
    database::Recordset rows;
    rows.Open(sql, values, connection);
    std::vector<int> numbers;
    for (int field = 0; field < rows.fieldCount(); ++field)
        numbers.push_back(int(runtime::Val(rows.Fields(field).Value())));
    return numbers;
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
    default:
        return Aggregate::Count;
    }
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
    if (!student.mark)
        return;
    tally.add(*student.mark);
    if (runtime::roundedToCompare(*student.mark) < 0) {
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
    database::Recordset rows;
    rows.Open(behind.sql, behind.values, connection);
    const database::FieldByName name(rows, u"姓名"_s);
    const database::FieldByName column(rows, figure.column);
    for (; !rows.Eof(); rows.MoveNext()) {
        const runtime::Value mark = column.in(rows).Value();
        takeRow(group, tally,
                {name.in(rows).Value().text(),
                 mark.isNull() ? std::nullopt : std::optional(mark.toDouble())});
    }
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
    default: {
        const std::optional<double> result = tally.result();
        return result ? figureText(*result) : QString();
    }
    }
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
    // The best rank is the lowest, and the best mark the highest.
    const QString sql =
        library::isGradeRankColumn(figure.column)
            ? database::sqlWith(u"select * from 成绩表 where 考试名称=? and 科类=? and 班级=?%1%2 "
                                "order by %3,学号"_s,
                                pieces)
            : database::sqlWith(u"select * from 成绩表 where 考试名称=? and 科类=? and 班级=?%1%2 "
                                "order by %3 DESC,学号"_s,
                                pieces);
    return {sql, placeOf(figure)};
}

StudentSql studentsWithoutRow(const Figure& figure)
{
    return {
        database::sqlWith(
            u"select 学号,姓名,(select count(*) from 成绩表 where 考试名称=?1 and "
            "成绩表.id=信息表.ID) from 信息表 where 班级=?3 and not exists (select 1 from 成绩表 "
            "where 考试名称=?1 and 科类=?2 and 班级=?3 and 成绩表.id=信息表.ID)%1 order by 学号"_s,
            {SqlPiece::condition(figure.filter)}),
        placeOf(figure)};
}

FigureGroup readGroup(database::Connection& connection, const Figure& figure)
{
    FigureGroup group;
    Tally tally(aggregateOf(figure.kind));
    readRows(connection, figure, group, tally);
    const std::vector<int> others = counts(
        connection,
        database::sqlWith(u"select sum(round(%1,4)<0),sum(%1 is null) from 成绩表 where "
                          "考试名称=? and 科类=? and 班级=?%2"_s,
                          {SqlPiece::names({figure.column}), SqlPiece::condition(figure.filter)}),
        placeOf(figure));
    group.otherAbsent = others.at(0) - group.absent;
    group.otherWithout = others.at(1) - (group.rows - group.sitting - group.absent);
    group.students =
        counts(connection, u"select count(*) from 信息表 where 班级=?"_s, {figure.classNumber})
            .at(0);
    group.now = nowOf(figure, group, tally);
    return group;
}

} // namespace statistics
