#include "import/ClassChanges.h"

#include <cmath>
#include <utility>

#include <QHash>
#include <QSet>
#include <QStringList>

#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Value;
using Found = ClassChange::Found;
using Place = std::pair<double, double>;

namespace {

struct TableRow
{
    qint64 id;
    Value newClass;
    Value newNumber;
    Value name;
};

/// By class and number; of equal ones the first row.
using TableRows = QHash<Place, TableRow>;

TableRows readRows(database::Connection& connection, int& count)
{
    TableRows found;
    database::Statement& rows = connection.prepared(
        u"select 班级, 学号, ID, 新班级, 新学号, 姓名 from 分班表 order by rowid"_s);
    rows.reset();
    while (rows.step()) {
        ++count;
        const Place place(rows.number(0), rows.number(1));
        if (!rows.isNull(0) && !rows.isNull(1) && !found.contains(place))
            found.insert(place, {rows.integer(2), rows.value(3), rows.value(4), rows.value(5)});
    }
    return found;
}

Found foundBy(const ClassChange& student, const TableRow& row)
{
    if (row.name.text() != student.name)
        return Found::OtherName;
    return row.newClass.isNull() || row.newNumber.isNull() ? Found::WithoutPlace : Found::SameName;
}

Place placeAfter(const ClassChange& student)
{
    if (student.found == Found::SameName)
        return {student.newClass.toDouble(), student.newNumber.toDouble()};
    return {student.classNumber, student.number};
}

} // namespace

ClassChanges::ClassChanges(database::Connection& connection)
{
    readStudents(connection);
    findRows(connection);
    for (const ClassChange& student : students)
        count(student);
    countSharing();
    countScores(connection);
}

void ClassChanges::readStudents(database::Connection& connection)
{
    database::Statement& rows =
        connection.prepared(u"select ID, 班级, 学号, 姓名 from 信息表 order by rowid"_s);
    rows.reset();
    while (rows.step()) {
        const Value classNumber = rows.value(1);
        const Value number = rows.value(2);
        ClassChange& student = students.emplace_back();
        student.id = rows.integer(0);
        student.name = rows.text(3);
        if (!classNumber.isNumber() || !number.isNumber()) {
            student.found = Found::WithoutNumber;
            continue;
        }
        student.classNumber = runtime::Val(classNumber);
        student.number = runtime::Val(number);
    }
}

void ClassChanges::findRows(database::Connection& connection)
{
    const TableRows rows = readRows(connection, counts.rows);
    QSet<qint64> used;
    for (ClassChange& student : students) {
        const auto row = rows.constFind({student.classNumber, student.number});
        if (student.found == Found::WithoutNumber || row == rows.constEnd())
            continue;
        student.found = foundBy(student, *row);
        student.row = row->id;
        student.newClass = row->newClass;
        student.newNumber = row->newNumber;
        student.newName = row->name;
        used.insert(row->id);
    }
    counts.unusedRows = counts.rows - int(used.size());
}

void ClassChanges::count(const ClassChange& student)
{
    counts.moved += student.found == Found::SameName;
    counts.toZero += student.found == Found::SameName
                     && (student.newClass.toDouble() == 0 || student.newNumber.toDouble() == 0);
    counts.otherNames += student.found == Found::OtherName;
    counts.emptyNames += student.found == Found::OtherName && student.newName.text().isEmpty();
    counts.missing += student.found == Found::Nowhere;
    counts.withoutPlace += student.found == Found::WithoutPlace;
    counts.withoutNumber += student.found == Found::WithoutNumber;
}

/// As if everyone stayed who is not moved.
void ClassChanges::countSharing()
{
    QHash<Place, int> there;
    for (const ClassChange& student : students) {
        if (student.found != Found::WithoutNumber)
            ++there[placeAfter(student)];
    }
    for (const ClassChange& student : students)
        counts.sharing += student.found == Found::SameName && there[placeAfter(student)] > 1;
}

void ClassChanges::countScores(database::Connection& connection)
{
    database::Statement& rows =
        connection.prepared(u"select count(*), count(*) filter (where id is null or id not in "
                            "(select ID from 信息表 where 班级=?1 and 学号=?2)) "
                            "from 成绩表 where 班级=?1 and 学号=?2"_s);
    QHash<Place, int> missing;
    for (const ClassChange& student : students) {
        if (student.found == Found::Nowhere)
            ++missing[Place(student.classNumber, student.number)];
    }
    for (auto it = missing.cbegin(); it != missing.cend(); ++it) {
        const Place& place = it.key();
        counts.twins += *it > 1 ? *it : 0;
        rows.bind({place.first, place.second});
        rows.step();
        counts.scores += rows.integer(0);
        counts.scoresOfOthers += rows.integer(1);
    }
    rows.finish();
}

QString ClassChangeCounts::question() const
{
    QStringList lines{u"分班表有 %1 行，其中 %2 行没有用到。"_s.arg(rows).arg(unusedRows),
                      u"移到新班级和新学号：%1 人"_s.arg(moved),
                      u"姓名不一致，要问是否改名，都留在原班：%1 人"_s.arg(otherNames),
                      u"分班表中没有，要问是否删除：%1 人"_s.arg(missing)};
    const auto add = [&lines](qint64 number, const QString& text) {
        if (number > 0)
            lines.append(text.arg(number));
    };
    add(scores, u"　　全部删除会连同他们现在的班级和学号名下的成绩 %1 条一并删去"_s);
    add(scoresOfOthers, u"　　这些成绩中有 %1 条是别人以前的成绩"_s);
    add(twins, u"注意：%1 人与别人同班同号，删除其中一人会连同另一人的成绩一并删去"_s);
    add(emptyNames, u"注意：%1 人在表格中没有姓名，改名会把姓名清空"_s);
    add(toZero, u"注意：%1 人的新班级或新学号是 0（空单元格和文字都按 0 计）"_s);
    add(sharing, u"注意：%1 人移动以后和别人的班级、学号相同（谁也不删除时）"_s);
    add(withoutPlace, u"注意：%1 人的新班级或新学号是错误值，留在原班"_s);
    add(withoutNumber, u"注意：%1 人在成绩库中没有班级或学号，不能分班"_s);
    lines.append(u"\n继续：问完以后一次写入。\n取消：学生和成绩都不改动。"_s);
    return lines.join(u'\n');
}

} // namespace importing
