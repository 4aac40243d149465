#pragma once

#include <map>
#include <optional>
#include <vector>

#include "maintenance/StudentMove.h"
#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"

namespace maintenance {

/// A student as 信息表 has him.
struct RosterStudent
{
    qint64 id = 0;
    runtime::Value classNumber;
    runtime::Value number;
    QString name;
    QString stream;
    /// 类别代码.
    runtime::Value category;

    /// Nothing if his class or number is no number.
    std::optional<StudentPlace> place() const;
    /// Nothing if his class is no number.
    std::optional<double> classOf() const;
    /// "王芳（3 班 12 号）".
    QString text() const;
    friend bool operator==(const RosterStudent&, const RosterStudent&) = default;
};

/// All students of a library in table order.
class SchoolRoster
{
public:
    /// Throws database::Error.
    explicit SchoolRoster(database::Connection& connection);

    const std::vector<RosterStudent>& students() const { return m_students; }
    /// Null if there is none of that ID.
    const RosterStudent* find(qint64 id) const;
    /// The class's first student, whose stream and category imports take for the class's; null for
    /// a class without students.
    const RosterStudent* firstOf(double classNumber) const;

private:
    std::vector<RosterStudent> m_students;
    std::map<qint64, size_t> m_places;
};

} // namespace maintenance
