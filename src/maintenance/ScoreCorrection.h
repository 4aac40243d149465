#pragma once

#include <optional>

#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// "修改成绩": one score of one student in one exam, as it stands in 成绩表.
class ScoreCorrection
{
public:
    /// Whose score of what, as it was typed or chosen.
    struct Place
    {
        QString exam;
        QString classNumber;
        QString number;
        QString subject;
    };

    struct Shown
    {
        QString name;
        QString score;
    };

    /// Refused: the score is none that fits, or the user took it back. NotFound: the exam has no
    /// row of that class and number, of which nothing is said. Failed: the library could not be
    /// read or written.
    enum class Result { Refused, NotFound, Failed, Stored };

    explicit ScoreCorrection(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// Name and score of the student; both empty where the exam has no row of him. Nothing as long
    /// as class or number are empty.
    std::optional<Shown> ShowCJ(const Place& place) const;

    /// Stores a score from 0 to the subject's full mark (compared as 32-bit floats), and says so. A
    /// text without a number is asked about: it can be stored as absent, or as 0.
    Result save(const Place& place, const QString& score);

    /// Asks, then computes the exam anew. False if the user does not want to, or cancelled it.
    bool finish(const QString& exam, runtime::Progress& progress);

private:
    /// False, after a message, for a score outside of what the subject allows.
    bool isAllowed(const Place& place, double score);
    Result store(const Place& place, double score);

    library::ScoreLibrary& m_library;
};

} // namespace maintenance
