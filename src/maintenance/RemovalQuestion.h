#pragma once

#include <QStringList>

namespace maintenance {

/// Asks whether what bears these names is really to be removed. `question` ends where the names,
/// a line each, follow from the last to the first.
bool isRemovalConfirmed(const QString& question, const QStringList& names);

} // namespace maintenance
