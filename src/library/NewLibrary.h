#pragma once

#include <QStringList>

#include "library/ScoreLibrary.h"

namespace library {

/// Subjects and total formulas that a new library is offered, from the text files of data/.
struct NewLibraryLists
{
    QStringList subjects;
    /// Names of totals and their formulas, in step.
    QStringList totals;
    QStringList formulas;
};

/// "新建成绩库": makes libraries of the subjects that a user chooses.
class NewLibrary
{
public:
    explicit NewLibrary(ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    NewLibraryLists lists;

    /// Loads the lists from 科目.txt and 总分公式.txt; a file that is missing leaves its lists.
    void init();

    /// "total=formula" of the last formula line of that name, or "".
    QString formulaLine(const QString& subject) const;

    /// True if a subject is selected; otherwise the message that asks for one.
    static bool checkSelected(const QStringList& subjects);

    /// Takes `path` as LibPath and makes the library there, after asking if the file exists. False
    /// if nothing was made: no subject, no path (silently), or refused.
    bool createAsked(const QStringList& subjects, const QString& path);

    /// Makes the library at LibPath and opens it: the template with the columns of the subjects, in
    /// the order given. A statement that is refused is shown and the next one runs. The library
    /// takes its name when it is whole; where it cannot be made, that is shown, and a file that
    /// stands there is as it was and is opened. False then.
    bool create(const QStringList& subjects);

private:
    void makeFile(const QStringList& subjects) const;

    ScoreLibrary& m_library;
};

} // namespace library
