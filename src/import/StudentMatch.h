#pragma once

#include "import/ClassAnswers.h"
#include "import/IntakeBatch.h"
#include "import/KnownStudents.h"
#include "platform/database/Recordset.h"

namespace importing {

/// What is done with a student of the sheet whom the library does not know.
enum class NewStudents { Ask, Add };

/// The question which of a student's two names counts.
QString nameMismatchText(double classNumber, double number, const QString& sheetName,
                         const QString& libraryName);

/// Finds the students of a sheet in 信息表 by class and number; adds and renames them.
class StudentMatch
{
public:
    /// `known` learns of every student who is added. The batch is the one that is open while names
    /// come in; it pauses for questions.
    StudentMatch(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes, KnownStudents& known,
                 IntakeBatch& batch);

    /// The library's name of the student if it is another one than `name`; empty for the same name,
    /// for an added student and for a refused one. Throws Error if what is pending cannot be
    /// written before a question.
    QString TestStuName(double classNumber, double number, const QString& name,
                        NewStudents newStudents);

    /// ID of the student whom the latest TestStuName found or added; 0 for a refused one.
    qint64 matchedId() const { return m_matchedId; }

    /// Writes the name to the student and to all rows of 成绩表 with that class and number.
    void SetStuName(double classNumber, double number, const QString& name);

    /// Asks what to do about two names of one student: Yes, No or Cancel. Throws Error if what is
    /// pending cannot be written before.
    runtime::Answer askNameMismatch(double classNumber, double number, const QString& sheetName,
                                    const QString& libraryName);

private:
    runtime::Answer ask(const QString& text, const QString& title, runtime::Buttons buttons);
    bool mayAdd(double classNumber, double number, const QString& name, NewStudents newStudents);
    void add(double classNumber, double number, const QString& name);

    library::ScoreLibrary& m_library;
    ClassAnswers& m_classes;
    KnownStudents& m_known;
    IntakeBatch& m_batch;
    database::Recordset m_newStudents;
    qint64 m_matchedId = 0;
};

} // namespace importing
