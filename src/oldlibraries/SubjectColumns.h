#pragma once

#include <vector>

#include <QStringList>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// The columns that a subject or total has in 成绩表, in the order in which they are made.
QStringList scoreColumns(const QString& subject);
bool isTotal(const QString& column);

/// The subjects and totals of a library: the columns of 考试名称表 behind the first five.
QStringList subjectsOf(database::Connection& library);

/// Adds to 成绩表 and 教师表 the columns that they lack of the subjects and totals. Throws
/// database::Error.
void addSubjectColumns(database::Connection& library, std::vector<Finding>& findings);

/// Adds to the findings which subjects 成绩表 and 教师表 have that 考试名称表 does not. Throws
/// database::Error.
void findUnknownSubjects(database::Connection& library, std::vector<Finding>& findings);

} // namespace oldlibraries
