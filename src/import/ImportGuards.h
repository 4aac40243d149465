#pragma once

#include <optional>

#include "import/ExamFindings.h"

namespace importing {

/// What an import of scores asks ahead of its first write, where it would cost what the user may
/// not expect to lose. What is told is counted in the library and on the sheet; nothing is asked
/// where nothing is at stake, and the safe answer ends the import. All of it throws
/// runtime::Error if the library cannot be read.
class ImportGuards
{
public:
    /// `classes` learns the streams that are chosen.
    ImportGuards(library::ScoreLibrary& scoreLibrary, ClassAnswers& classes,
                 KnownStudents& students);

    /// False, after a message, for no name, one that no row can hold, or a new one that differs
    /// from another exam's in case only.
    bool isUsableName(const QString& exam) const;

    /// A new exam whose name the list of exams will pass over. False: the import is given up.
    bool mayStayUnlisted(const QString& exam) const;

    /// Gives the classes of the sheet that have no student the library's only stream, or if it has
    /// several `chosen`, or else the one that the user names. False: the import is given up.
    bool giveStreams(const SheetRows& rows, const QString& chosen);

    /// Texts that will be stored as numbers. False: the import is given up.
    bool mayReadTexts(const SheetRows& rows, const std::vector<ImportSubject>& subjects) const;

    /// Scores that students of the sheet have in this exam already. False: the import is given up.
    bool mayRepeat(const SheetRows& rows, const QString& exam) const;

    /// Which rows a sheet of that stream overwrites for an exam picked from the list. Nothing: the
    /// import is given up.
    std::optional<ScoreTarget> overwrittenRows(const SheetRows& rows, const QString& exam,
                                               const QString& stream);

private:
    ClassAnswers& m_classes;
    ExamFindings m_findings;
};

} // namespace importing
