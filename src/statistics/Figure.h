#pragma once

#include <vector>

#include "statistics/Condition.h"

namespace statistics {

/// What sort of figure a cell holds.
enum class FigureKind {
    None,       ///< nothing that students stand behind
    Rows,       ///< how many rows meet the condition
    Values,     ///< how many of those have a value in the column
    Share,      ///< those rows as a percentage of the class's students
    Attendance, ///< how many sat, were absent, and have a value at all
    Average,    ///< of the column, over the rows that meet the condition; so the next three
    Maximum,
    Minimum,
    Deviation,
    Rank ///< of the class, by its average, among the classes
};

/// What a figure was reckoned on: the rows that a report read, to which a text or infinity among
/// the marks is no mark, or single statements, to which it is what the engine takes it for.
enum class ReckonedOn { Rows, Engine };

/// What the cells of one line and column of a block stand for in all classes.
struct Meaning
{
    FigureKind kind = FigureKind::None;
    QString exam;
    /// The column that is counted, aggregated or compared, by which the students are sorted.
    QString column;
    /// The text of the condition that the rows meet.
    QString condition;
    /// Where a rank stands for the averages in another column of the item, that column.
    int rankedPart = 0;
    ReckonedOn on = ReckonedOn::Rows;

    Meaning as(FigureKind other) const;
};

/// A class with its average as the table shows it, "" for none.
struct ComparedClass
{
    double number;
    QString average;
};

/// What one cell of a report stands for: some rows of one exam, stream and class, and what was
/// reckoned of them.
struct Figure
{
    FigureKind kind = FigureKind::None;
    QString exam;
    QString stream;
    double classNumber = 0;
    QString column;
    Condition condition;
    /// The category filter that was in force, with " and" in front; "" for none.
    QString filter;
    ReckonedOn on = ReckonedOn::Rows;
    /// What the cell shows.
    QString shown;
    /// Of a rank: the classes in the order of the table.
    std::vector<ComparedClass> compared = {};

    /// Rows without a value in the column are not counted in.
    bool needsValue() const { return kind != FigureKind::Rows && kind != FigureKind::Share; }
};

// Who sat and who was absent, by one rule: 考试人数 counts by it.

/// A student who sat the exam in this column.
Condition sittingCondition(const QString& column);
/// A student who was absent.
Condition absentCondition(const QString& column);
/// The same of a mark; NaN is neither.
bool isSitting(double mark);
bool isAbsent(double mark);

} // namespace statistics
