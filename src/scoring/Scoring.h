#pragma once

#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace scoring {

class ExamTables;

/// The derived columns of an exam: Z and T scores, totals, ranks, each stream by itself. Every
/// routine reads the exam once, and writes it once in one batch.
class Scoring
{
public:
    explicit Scoring(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// Z and T scores of all subjects of the exam.
    void Zfen(const QString& exam);
    /// Totals with their weighted Z and T scores.
    void JiSuanZF(const QString& exam);
    /// Grade and class ranks of all columns.
    void PanNJBjMC(const QString& exam);
    /// Ranks of one group: class 0 is the grade.
    void PaiMC(const QString& exam, const QString& stream, double classNumber);

    /// Zfen, JiSuanZF and PanNJBjMC in this order. A step, or a stream of it, that fails is shown
    /// in a message and does not keep the next ones from running; what was computed is written at
    /// the end. False if one failed, or if the run was cancelled. A run that was cancelled, or
    /// whose file could not be read or written, leaves the exam as it was.
    bool score(const QString& exam, runtime::Progress& progress);

private:
    /// False if a step failed, or if the run was cancelled.
    bool runSteps(ExamTables& tables, runtime::Progress& progress);

    library::ScoreLibrary& m_library;
};

} // namespace scoring
