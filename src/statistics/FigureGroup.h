#pragma once

#include <optional>

#include "platform/database/Connection.h"
#include "platform/runtime/Value.h"
#include "statistics/Figure.h"

namespace statistics {

/// A statement that gives students, with its values.
struct StudentSql
{
    QString sql;
    std::vector<runtime::Value> values;

    /// The statement with its values in their places, as a user may run it.
    QString asTyped() const;
};

/// The rows behind a figure, chosen by the very condition that the figure was reckoned with and
/// sorted by its column: the best first. Of 考试人数 these are all rows of the class. Throws
/// database::Error for a column or condition that no statement can hold.
StudentSql rowsBehind(const Figure& figure);

/// Where the row of a student stands who has none behind a figure.
enum class ScoreElsewhere { None = 0, OtherClass = 1, OtherCategory = 2 };

/// The students of the figure's class and categories today who have no row behind it: number,
/// name, and as a number ScoreElsewhere. For 考试人数.
StudentSql studentsWithoutRow(const Figure& figure);

/// What a row behind a figure tells of one student.
struct StudentMark
{
    QString name;
    /// Nothing for NULL.
    std::optional<double> mark;
};

/// The rows behind a figure in numbers, as the library has them now.
struct FigureGroup
{
    /// With a value in the figure's column or without, as rowsBehind() gives them.
    int rows = 0;
    /// Of each row, in the same order.
    std::vector<std::optional<double>> marks;
    int sitting = 0;
    int absent = 0;
    /// In the class, but not in the group.
    int otherAbsent = 0;
    int otherWithout = 0;
    /// Students of the class today, and those of them whom the category filter lets through.
    int students = 0;
    int chosenStudents = 0;
    /// The two ends of those who sat, with all who share them.
    std::vector<StudentMark> highest;
    std::vector<StudentMark> lowest;
    /// What the cell would show now. Of a rank, what the average would be.
    QString now;
    /// Of a rank: Figure::compared as the averages would be now.
    std::vector<ComparedClass> comparedNow;
};

/// Reads it. Throws database::Error.
FigureGroup readGroup(database::Connection& connection, const Figure& figure);

} // namespace statistics
