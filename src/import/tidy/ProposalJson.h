#pragma once

#include <QJsonObject>

#include "import/tidy/Proposal.h"

namespace tidy {

/// A proposal as JSON, for programs: "decided", "questions", "warnings", "counts", "sheets" with
/// their columns and left-out rows, "classes", "marks" and "remarks". Rows and columns count
/// from 1.
QJsonObject proposalJson(const Proposal& proposal);

} // namespace tidy
