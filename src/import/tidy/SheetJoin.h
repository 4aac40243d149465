#pragma once

#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "import/tidy/SheetReading.h"
#include "import/tidy/StudentSearch.h"

namespace tidy {

using SheetReadings = std::deque<SheetReading>;

/// A student of the result with the rows that his content comes from.
struct ResultRow
{
    const StudentRow* student = nullptr;
    std::vector<const SourceRow*> parts;
};

/// What stands below a column for a student: the first of his rows that has something there.
runtime::Value contentOf(const ResultRow& row, const QString& column, const SheetReadings& sheets);

/// Puts the rows of all sheets together. A student of an exam who stands on several sheets becomes
/// one row where these do not contradict each other.
class SheetJoin
{
public:
    SheetJoin(Goal goal, const SheetReadings& sheets) : m_goal(goal), m_sheets(sheets) {}

    /// `student` must outlive it. Adds a remark to it if he stands on another row, too.
    void add(StudentRow& student);

    const std::vector<ResultRow>& rows() const { return m_rows; }
    /// For each two sheets that contradict each other.
    QStringList questions() const;
    /// For each two sheets with the same students.
    QStringList warnings() const;

private:
    using SheetPair = std::pair<int, int>;

    struct Overlap
    {
        void add(const StudentRow& student);

        int rows = 0;
        QString first = {};
    };

    /// Whether `said` of what the row has so far and what the student's sheet has holds for a
    /// subject of both.
    template <class Said>
    bool anyShared(const ResultRow& row, const StudentRow& student, Said&& said) const;
    QString nameOf(int sheet) const;
    bool areAlike(const SourceRow& one, const StudentRow& student) const;
    static bool fits(ResultRow& row, const StudentRow& student);
    void noteTwice(StudentRow& student, const SourceRow& other, const QString& what) const;
    void ask(StudentRow& student, const SourceRow& other, const StudentRow& former);
    void joinTo(ResultRow& row, StudentRow& student);

    Goal m_goal;
    const SheetReadings& m_sheets;
    std::vector<ResultRow> m_rows;
    QHash<std::pair<double, double>, size_t> m_rowOf;
    /// Rows that are another row's student and say something else.
    Overlap m_twice;
    std::map<SheetPair, Overlap> m_contradicting;
    std::map<SheetPair, Overlap> m_agreeing;
    /// Of those that agree: one sheet has a score where the other is blank.
    std::map<SheetPair, Overlap> m_filled;
};

} // namespace tidy
