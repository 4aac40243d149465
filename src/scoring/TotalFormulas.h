#pragma once

#include <optional>

#include "library/ScoreLibrary.h"

namespace scoring {

/// Why a formula cannot be saved: a term of it is none of the columns. "" if it can.
QString formulaFault(const QString& formula, const QStringList& columns);

/// "总分公式": the formulas of the totals, exam by exam. A formula
/// is names of columns joined by "+"; saving one computes nothing.
class TotalFormulas
{
public:
    explicit TotalFormulas(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// One entry a row of 考试名称表, so an exam of two streams stands twice.
    QStringList exams;
    QStringList totals;
    QStringList subjects;

    /// Fills the three lists.
    void load();

    /// The formula that the exam's first row holds for the total; nothing, after a message, if it
    /// cannot be read.
    std::optional<QString> ShowGS(const QString& exam, const QString& total) const;

    /// Writes the formula into every row of the exams, whatever the stream. A term that is no
    /// column of the library is refused with a message, and nothing is saved; without an exam, and
    /// for a text that the column cannot hold, the engine's refusal is shown.
    void save(const QStringList& chosenExams, const QString& total, const QString& formula);

private:
    bool checkTerms(const QString& formula) const;

    library::ScoreLibrary& m_library;
};

} // namespace scoring
