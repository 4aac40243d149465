#pragma once

#include "cli/Command.h"
#include "workbench/Selection.h"

namespace cli {

/// Selects exactly these items. Throws UsageError, naming `kind`, for one that is not in the list.
void selectOnly(workbench::ChoiceList& list, const QStringList& texts, const QString& kind);

/// Selects what --exam and --categories name, where they are given.
void chooseExamsAndCategories(workbench::Selection& selection, const Session& session);

} // namespace cli
