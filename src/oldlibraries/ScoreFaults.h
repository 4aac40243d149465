#pragma once

#include <vector>

#include <QSet>

#include "oldlibraries/ConversionReport.h"
#include "oldlibraries/ExamFaults.h"
#include "platform/database/Connection.h"

namespace oldlibraries {

/// Adds what is wrong with the rows of 成绩表, and gives the exams that have scores. `students` are
/// the IDs of 信息表. Throws database::Error.
QSet<ExamKey> findScoreFaults(database::Connection& library, const ListedExams& exams,
                              const QSet<qint64>& students, std::vector<Finding>& findings);

} // namespace oldlibraries
