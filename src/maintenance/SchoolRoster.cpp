#include "maintenance/SchoolRoster.h"

#include <algorithm>

#include "maintenance/QuotedText.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"

namespace maintenance {

using namespace Qt::StringLiterals;

QString StudentPlace::text() const
{
    return u"%1 班 %2 号"_s.arg(runtime::doubleText(classNumber), runtime::doubleText(number));
}

std::optional<StudentPlace> RosterStudent::place() const
{
    if (!classNumber.isNumber() || !number.isNumber())
        return std::nullopt;
    return StudentPlace{runtime::Val(classNumber), runtime::Val(number)};
}

std::optional<double> RosterStudent::classOf() const
{
    return classNumber.isNumber() ? std::optional(runtime::Val(classNumber)) : std::nullopt;
}

QString RosterStudent::text() const
{
    const std::optional<StudentPlace> here = place();
    return u"%1（%2）"_s.arg(shownName(name), here ? here->text() : u"没有班级或学号"_s);
}

SchoolRoster::SchoolRoster(database::Connection& connection)
{
    database::Statement& rows = connection.prepared(
        u"select ID, 班级, 学号, 姓名, 科类, 类别代码 from 信息表 order by rowid"_s);
    rows.reset();
    while (rows.step()) {
        m_places.emplace(rows.integer(0), m_students.size());
        m_students.push_back({.id = rows.integer(0),
                              .classNumber = rows.value(1),
                              .number = rows.value(2),
                              .name = rows.text(3),
                              .stream = rows.text(4),
                              .category = rows.value(5)});
    }
}

const RosterStudent* SchoolRoster::find(qint64 id) const
{
    const auto found = m_places.find(id);
    return found == m_places.end() ? nullptr : &m_students[found->second];
}

const RosterStudent* SchoolRoster::firstOf(double classNumber) const
{
    const auto first = std::ranges::find(m_students, classNumber, &RosterStudent::classOf);
    return first == m_students.end() ? nullptr : &*first;
}

} // namespace maintenance
