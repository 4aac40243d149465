#pragma once

#include <vector>

#include <QString>

#include "platform/database/Connection.h"

namespace library {

/// A student as trees show him: 学号 directly followed by 姓名.
struct StudentNode
{
    qint64 id = 0;
    QString number;
    QString name;

    QString text() const { return number + name; }
};

/// A class as trees show it, such as "1班", with its students in the order of the table.
struct ClassNode
{
    QString text;
    std::vector<StudentNode> students;
};

using StudentTree = std::vector<ClassNode>;

/// All classes in ascending order. A student without a class stands under no class, and "班" alone
/// tells that there is one. Throws database::Error.
StudentTree readStudentTree(database::Connection& connection);

} // namespace library
