#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include "maintenance/SchoolRoster.h"
#include "platform/grid/FlexGrid.h"

namespace maintenance {

/// A row of 成绩表 as it is.
struct EarlierScore
{
    qint64 row = 0;
    QString exam;
    runtime::Value classNumber;
    QString stream;

    friend bool operator==(const EarlierScore&, const EarlierScore&) = default;
};

/// What becomes of one student.
struct PlannedStudent
{
    /// Which of the changes that are wanted it stems from, counted from 0.
    size_t move = 0;
    StudentMove::Kind kind = StudentMove::Kind::Move;
    RosterStudent student;
    /// Nothing if he is removed, or cannot change places.
    std::optional<StudentPlace> to;
    QString streamAfter;
    runtime::Value categoryAfter;
    EarlierScores scores = EarlierScores::Stay;
    std::vector<EarlierScore> earlier;
    /// Why it cannot be done.
    QStringList conflicts;
    /// What a user should know.
    QStringList notes;

    /// True if the row's ranks in the class, or those of others, are of before the change.
    bool makesStale(const EarlierScore& score) const;
    friend bool operator==(const PlannedStudent&, const PlannedStudent&) = default;
};

/// What all changes together make of the library, with nothing written yet.
struct MovePlan
{
    std::vector<PlannedStudent> students;
    /// The exams whose ranks will be those of before, in the order of their numbers.
    QStringList staleExams;

    bool isPossible() const;
    /// The counts in the words of the question ahead of the changes.
    QString text() const;
    friend bool operator==(const MovePlan&, const MovePlan&) = default;
};

/// All changes take place at once: a place that its student leaves is free. Reads one state of the
/// file. Throws database::Error.
MovePlan planMoves(database::Connection& connection, const std::vector<StudentMove>& moves);

/// The number to offer in the class, behind the highest one that it will have after the changes, as
/// library::freeNumber. Throws database::Error.
double freeNumber(database::Connection& connection, const std::vector<StudentMove>& moves,
                  double classNumber);

/// A row for each student: 学生, 现在, 调整为, 科类, 以前的成绩, 说明.
grid::FlexGrid planGrid(const MovePlan& plan);

} // namespace maintenance
