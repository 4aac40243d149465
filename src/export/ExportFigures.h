#pragma once

#include <array>
#include <map>

#include "library/ScoreLibrary.h"

namespace exporting {

/// Averages and head counts, asked for once for all students of a class or a grade. A question that
/// fails is asked again each time, so that each of its failures is told.
class ExportFigures
{
public:
    explicit ExportFigures(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// GetBJPJF.
    double classAverage(const QString& exam, const QString& column, const QString& stream,
                        const runtime::Value& classNumber);
    /// GetPJF.
    double gradeAverage(const QString& exam, const QString& column, const QString& stream);
    /// GetZRS of the whole stream.
    qint64 headCount(const QString& stream);

private:
    /// Exam, column, stream, class.
    using Question = std::array<QString, 4>;

    template <class Ask> double answer(const Question& question, const Ask& ask);
    bool canBeAsked(const Question& question);

    library::ScoreLibrary& m_library;
    std::map<Question, double> m_answers;
};

} // namespace exporting
