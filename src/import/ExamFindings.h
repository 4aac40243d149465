#pragma once

#include <vector>

#include "import/ClassAnswers.h"
#include "import/KnownStudents.h"
#include "import/ScoreRows.h"
#include "import/SheetRows.h"

namespace importing {

/// What an import of scores would cost, counted in the library and on the sheet. Asks nothing and
/// writes nothing. All of it throws runtime::Error if the library cannot be read.
class ExamFindings
{
public:
    ExamFindings(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                 KnownStudents& students)
        : m_library(scoreLibrary), m_classes(classes), m_students(students)
    {
    }

    /// Why no exam can have this name; empty if it can.
    QString nameFault(const QString& exam) const;

    /// Why the list of exams will pass over a new exam of that name; empty if it will not.
    QString whyUnlisted(const QString& exam) const;

    /// The classes of the sheet that have no student.
    std::vector<double> classesWithoutStudents(const SheetRows& rows) const;
    /// The streams of the library's students.
    QStringList streams() const;

    /// The stream that classes without students get: the library's only one, or else `chosen`.
    /// Empty if the user is to name it.
    QString streamOfNewClasses(const QString& chosen) const;

    /// Rows of the sheet whose class and number have scores in the exam already; each student
    /// once.
    std::vector<int> repeatedRows(const SheetRows& rows, const QString& exam) const;

    /// A row of the sheet, and the exam whose scores it would overwrite.
    struct Overwritten
    {
        int sheetRow = 0;
        QString exam;
    };
    /// Rows of the sheet whose student has his first row in another exam; each student once.
    std::vector<Overwritten> overwrittenRows(const SheetRows& rows, const QString& exam) const;

    /// Where the original rule puts full marks and formulas, if that is another stream's row than
    /// the sheet's; empty otherwise.
    QString wrongExamRow(const QString& exam, const QString& stream) const;

private:
    QStringList namesOf(const QString& sql) const;

    library::ScoreLibrary& m_library;
    ClassAnswers& m_classes;
    KnownStudents& m_students;
};

/// Under which name a student's rows are looked for ahead of an import: he may be renamed on the
/// way, and is found then. Null for one whom the library does not know.
RowName rowNameOf(const KnownStudents::Student* known, const QString& sheetName);

/// “文”科, or 没有科类.
QString namedStream(const QString& stream);

} // namespace importing
