#pragma once

#include <unordered_map>
#include <vector>

#include "library/ScoreLibrary.h"

namespace importing {

/// GetLeiBie and GetBJKL of the students, asked once for a class that has students: its first
/// student stays the first while names are only added. A class without students is asked every
/// time, with its message, unless it was given a stream.
class ClassAnswers
{
public:
    explicit ClassAnswers(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// To be called when students may have changed otherwise.
    void forget();

    /// What GetBJKL says of these classes as long as they have no students; replaces what was given
    /// before.
    void giveStream(const std::vector<double>& classes, const QString& stream);

    bool hasStudents(double classNumber);
    /// The class has students, or was given a stream.
    bool hasStream(double classNumber);
    runtime::Value GetLeiBie(double classNumber);
    runtime::Value GetBJKL(double classNumber);
    /// Whether streamOf has an answer without a message.
    bool knowsStreamOf(const runtime::Value& classCell);
    /// GetBJKL of a class as its cell has it: one such as 1班 is none.
    runtime::Value streamOf(const runtime::Value& classCell);

private:
    bool hasStudentsOf(const runtime::Value& classCell);

    library::ScoreLibrary& m_library;
    std::unordered_map<double, runtime::Value> m_categories;
    std::unordered_map<double, runtime::Value> m_streams;
    std::unordered_map<double, runtime::Value> m_given;
};

} // namespace importing
