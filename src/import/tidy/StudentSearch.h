#pragma once

#include <optional>

#include "import/tidy/RowReading.h"

namespace tidy {

/// A row with the student that it is of.
struct StudentRow
{
    SourceRow source;
    double classNumber = 0;
    double number = 0;
    QString name;
    /// Class and number are known, so that the row can be written.
    bool isWhole = false;
    /// The library knows class and number.
    bool isKnown = false;
    /// The row was found by something else than class and number.
    bool isFound = false;
    bool hasOtherName = false;
    std::vector<Remark> remarks = {};
};

/// A name without blanks inside, if it is Chinese, and around it.
QString cleanName(const QString& name);

/// Finds out who the rows of a workbook are.
class StudentSearch
{
public:
    StudentSearch(Goal goal, const Roster& roster) : m_goal(goal), m_roster(roster) {}

    /// `classNumber` is the class of the row, nothing if it is not known.
    StudentRow find(const SourceRow& source, std::optional<double> classNumber) const;

private:
    void findByNumber(StudentRow& row) const;
    void tellUnknown(StudentRow& row) const;
    void findOtherwise(StudentRow& row, std::optional<double> classNumber) const;
    bool findByKey(StudentRow& row, Field key, std::optional<double> classNumber) const;
    void findByName(StudentRow& row, double classNumber) const;
    bool takeOnly(StudentRow& row, const Roster::Found& found, const QString& by) const;
    static void take(StudentRow& row, const RosterStudent& student);
    void explain(StudentRow& row, std::optional<double> classNumber) const;

    Goal m_goal;
    const Roster& m_roster;
};

} // namespace tidy
