#pragma once

namespace importing {

/// Which rows of 成绩表 an import of scores writes.
enum class ScoreTarget {
    NewRows,   ///< a new exam: one more row for each student
    FirstRows, ///< each student's first row, from whichever exam it stems
    ExamRows   ///< the rows of the exam alone, and a new one for a student who has none
};

} // namespace importing
