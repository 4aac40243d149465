#pragma once

#include <vector>

#include <QString>

#include "library/ScoreLibrary.h"

namespace library {

/// A formula of 总分公式 that names subjects which the library lacks.
struct FormulaTrim
{
    QString total;
    QString formula;
    /// What is left of it; a formula of which nothing is left stays as it is.
    QString trimmed;
};

/// The formulas of the library's totals that name subjects which it lacks. Throws database::Error.
std::vector<FormulaTrim> formulasToTrim(ScoreLibrary& scoreLibrary);

/// Offers to cut the subjects that a new library lacks out of its formulas, if there are any.
void offerFormulaTrim(ScoreLibrary& scoreLibrary);

} // namespace library
