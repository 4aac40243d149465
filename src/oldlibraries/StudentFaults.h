#pragma once

#include <vector>

#include <QSet>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

/// Adds what is wrong with the students of 信息表, and gives their IDs. Throws database::Error.
QSet<qint64> findStudentFaults(database::Connection& library, std::vector<Finding>& findings);

/// A student as the report names him, of the values 班级, 学号 and 姓名 from the column `first` on:
/// "3 班 5 号 张三".
QString studentText(const database::Statement& rows, int first);

} // namespace oldlibraries
