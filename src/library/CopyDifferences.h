#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include "library/CopyOccasion.h"
#include "platform/database/Connection.h"
#include "platform/runtime/Progress.h"

namespace library {

/// What an exam has now that a copy has otherwise.
struct ExamDifference
{
    QString exam;
    /// Single scores of subjects that are not the same.
    qint64 scores = 0;
    /// Rows of students that only the library, or only the copy, has.
    qint64 rowsAdded = 0;
    qint64 rowsGone = 0;
    /// Further rows that differ in totals, ranks, classes or names.
    qint64 otherRows = 0;
    /// Full marks, formulas or the place in the list.
    bool isDescribedOtherwise = false;

    bool any() const
    {
        return scores + rowsAdded + rowsGone + otherRows > 0 || isDescribedOtherwise;
    }
};

/// A student as a list shows one.
struct StudentLabel
{
    double classNumber = 0;
    double number = 0;
    QString name;

    /// "3 班 12 号 张三".
    QString text() const;
};

struct StudentDifference
{
    StudentLabel now;
    StudentLabel before;
};

/// What a library has otherwise than a copy of it; "added" is what only the library has.
struct CopyDifferences
{
    QStringList examsAdded;
    QStringList examsGone;
    std::vector<ExamDifference> examsChanged;
    std::vector<StudentLabel> studentsAdded;
    std::vector<StudentLabel> studentsGone;
    /// Class or number; one that got another name too stands in both lists.
    std::vector<StudentDifference> studentsMoved;
    std::vector<StudentDifference> studentsRenamed;
    /// The rest of their records. Photos differ by their lengths.
    std::vector<StudentDifference> studentsChanged;
    QStringList subjectsAdded;
    QStringList subjectsGone;
    /// What else differs, in a user's words: 教师名单, 分析设置.
    QStringList others;

    bool any() const;
};

/// Compares the open library with a copy, which stays as it is. Nothing if it was cancelled. Throws
/// Error, also where the copy is no sound library.
std::optional<CopyDifferences> compareWithCopy(database::Connection& library, const QString& copy,
                                               runtime::Progress& progress);

/// The differences as an import brings them about, later work on the same exam and list included,
/// and the rest.
struct SplitDifferences
{
    CopyDifferences ofImport;
    CopyDifferences others;
};
SplitDifferences splitByImport(const CopyDifferences& differences, const Occasion& import);

/// A sentence about what becomes of the library when the copy is restored, and the names behind it.
struct DifferenceLine
{
    QString text;
    QStringList details;
};
std::vector<DifferenceLine> differenceLines(const CopyDifferences& differences);

/// The sentence where there is no line.
QString noDifferenceText();

} // namespace library
