#pragma once

#include <vector>

#include <QString>

#include "library/ScoreLibrary.h"
#include "platform/database/Recordset.h"

namespace library {

/// A formula of 总分公式 that names subjects which the library lacks.
struct FormulaTrim
{
    QString total;
    QString formula;
    /// What is left of it; a formula of which nothing is left stays as it is.
    QString trimmed;
};

/// Opens the row of 总分公式 that holds the formula which exams to come get for a total; at its end
/// where there is none.
void openFormula(database::Recordset& rows, const QString& total, database::Connection& conn);

/// The formulas of the library's totals that name subjects which it lacks. Throws database::Error.
std::vector<FormulaTrim> formulasToTrim(ScoreLibrary& scoreLibrary);

/// Offers to cut the subjects that a new library lacks out of its formulas, if there are any.
void offerFormulaTrim(ScoreLibrary& scoreLibrary);

} // namespace library
