#pragma once

#include <QStringList>

namespace maintenance {

/// A formula as it is meant where it is typed: what an input method for Chinese makes of "+" is one
/// too, and blanks are none of it.
QString normalFormula(QString typed);

/// Why a formula cannot be kept that is typed for a total; "" if it can. Terms are subjects among
/// the columns: a total has no full mark to weigh its Z and T by, which every scoring would tell.
QString typedFormulaFault(const QString& formula, const QStringList& columns);

} // namespace maintenance
