#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "cli/Session.h"
#include "individual/ChartRanks.h"
#include "library/LibraryBackup.h"
#include "workbench/ScoreQuery.h"

namespace cli {

/// The exams that --exam names; without it the first of the library, as on the workbench. Throws
/// UsageError.
QStringList chosenExams(const Session& session);

/// The subjects and totals that --subjects names, in the library's order. Throws UsageError.
QStringList chosenSubjects(const Session& session);

/// The categories that --categories names; without it all. Throws UsageError.
QStringList chosenCategories(const Session& session);

/// The class numbers that --classes names; without it those of the stream, or all for AllStreams.
/// Throws UsageError, also for a stream that the library does not have.
QStringList chosenClasses(const Session& session, const QString& stream);

/// The class that --class names. Throws UsageError for one that has no students.
double chosenClass(const Session& session);

/// The sort keys that --order names, as in "总分:desc". Throws UsageError for more than
/// MostSortKeys of them, and for a column that 成绩表 does not have.
std::vector<workbench::SortKey> chosenOrder(const Session& session);

/// The subjects and totals that --columns names, in the library's order, with the colours of their
/// lines; without it the first alone. Throws UsageError.
std::vector<individual::TickedColumn> chosenTicks(const Session& session);

/// The ranks that --rank names, 年名 without it. Throws UsageError.
individual::RankKind chosenRanks(const Session& session);

/// The value of an option as a number. Throws UsageError for one that is none.
double chosenNumber(const Arguments& arguments, const QString& option);

/// A dated copy, unless --no-backup is given.
library::Backup chosenBackup(const Arguments& arguments);

/// Throws Error if a file of this name exists and --force is not given, or is the open library.
void refuseExisting(const Session& session, const QString& path);

/// The same for a file that becomes no library: besides, no score library is replaced by it,
/// whether it is open or not, of the present format or the old one.
void refuseOutput(const Session& session, const QString& path);

/// The full path of the file that an option names; "" without the option. Throws Error as
/// refuseOutput does.
QString chosenFile(const Session& session, const QString& option);

} // namespace cli
