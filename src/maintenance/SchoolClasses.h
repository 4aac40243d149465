#pragma once

#include <QStringList>

#include "platform/database/Connection.h"

namespace maintenance {

/// The classes that 信息表 has students of, as texts in ascending order of their numbers; that of
/// students without a class is empty and comes first. Throws database::Error.
QStringList classesOfStudents(database::Connection& connection);

} // namespace maintenance
