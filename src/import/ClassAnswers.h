#pragma once

#include <unordered_map>

#include "library/ScoreLibrary.h"

namespace importing {

/// GetLeiBie and GetBJKL of the students, asked once for a class that has students: its first
/// student stays the first while names are only added. A class without students is asked every
/// time, with its message.
class ClassAnswers
{
public:
    explicit ClassAnswers(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// To be called when students may have changed otherwise.
    void forget();

    bool hasStudents(double classNumber);
    runtime::Value GetLeiBie(double classNumber);
    runtime::Value GetBJKL(double classNumber);

private:
    library::ScoreLibrary& m_library;
    std::unordered_map<double, runtime::Value> m_categories;
    std::unordered_map<double, runtime::Value> m_streams;
};

} // namespace importing
