#pragma once

#include <QStringList>

#include "platform/database/Connection.h"

namespace maintenance {

/// The classes that 信息表 has students of, as texts in ascending order of their numbers; that of
/// students without a class is empty and comes first. Throws database::Error.
QStringList classesOfStudents(database::Connection& connection);

/// The number of such a class, for a condition. Throws database::Error for students without a
/// class, whose number it would lack, and for a class that is no number.
double classNumber(const QString& className);

} // namespace maintenance
