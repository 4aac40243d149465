#pragma once

#include "cli/Session.h"
#include "workbench/RowChoice.h"

namespace cli {

/// Those of `offered` that are wanted, in the order offered. Throws UsageError, naming `kind`, for
/// one that is not offered.
QStringList chosen(const QStringList& offered, const QStringList& wanted, const QString& kind);

/// The exams that --exam names; without it the first of the library, as on the workbench. Throws
/// UsageError.
QStringList chosenExams(const Session& session);

/// The categories that --categories names; without it all. Throws UsageError.
QStringList chosenCategories(const Session& session);

} // namespace cli
