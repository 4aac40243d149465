#include "library/StudentTree.h"

#include <map>

#include "platform/database/ReadBatch.h"
#include "platform/database/Statement.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

/// Where each class stands in the tree.
using ClassPlaces = std::map<double, size_t>;

ClassPlaces addClasses(StudentTree& tree, database::Connection& connection)
{
    ClassPlaces places;
    database::Statement& classes =
        connection.prepared(u"select distinct 班级 from 信息表 order by 班级"_s);
    const auto type = database::ColumnType::fromDeclaration(u"Double"_s);
    for (classes.reset(); classes.step();) {
        if (!classes.isNull(0))
            places.emplace(classes.number(0), tree.size());
        tree.push_back({classes.value(0, type).text() + u"班"_s, {}});
    }
    return places;
}

} // namespace

StudentTree readStudentTree(database::Connection& connection)
{
    const database::ReadBatch reading(connection);
    StudentTree tree;
    const ClassPlaces places = addClasses(tree, connection);
    database::Statement& students =
        connection.prepared(u"select 班级, ID, 学号, 姓名 from 信息表 order by rowid"_s);
    const auto number = database::ColumnType::fromDeclaration(u"Double"_s);
    for (students.reset(); students.step();) {
        const auto place = places.find(students.number(0));
        if (!students.isNull(0) && place != places.end())
            tree[place->second].students.push_back(
                {students.integer(1), students.value(2, number).text(), students.text(3)});
    }
    return tree;
}

} // namespace library
