#pragma once

#include "platform/runtime/Trap.h"

namespace exporting {

/// The trap of the export and of all its parts but the chart.
inline const runtime::Trap exportTrap{" - Private Sub Command1_Click/FormDaoChu"};

} // namespace exporting
