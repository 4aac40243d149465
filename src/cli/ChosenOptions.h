#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "cli/Session.h"
#include "workbench/ScoreQuery.h"

namespace cli {

/// The exams that --exam names; without it the first of the library, as on the workbench. Throws
/// UsageError.
QStringList chosenExams(const Session& session);

/// The categories that --categories names; without it all. Throws UsageError.
QStringList chosenCategories(const Session& session);

/// The class numbers that --classes names; without it those of the stream, or all for AllStreams.
/// Throws UsageError, also for a stream that the library does not have.
QStringList chosenClasses(const Session& session, const QString& stream);

/// The sort keys that --order names, as in "总分:desc". Throws UsageError for more than
/// MostSortKeys of them, and for a column that 成绩表 does not have.
std::vector<workbench::SortKey> chosenOrder(const Session& session);

} // namespace cli
