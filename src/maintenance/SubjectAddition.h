#pragma once

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// A subject or total that a library gets.
struct NewSubject
{
    QString name;
    /// Of a total: what it adds up in the exams that are imported from now on.
    QString formula = {};
};

/// "添加科目": gives the library a subject or total, with all columns derived of it.
class SubjectAddition
{
public:
    explicit SubjectAddition(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// The formula that 总分公式 holds for a total; "" for none, and where it cannot be read.
    QString knownFormula(const QString& total) const;

    /// Adds the columns behind those that are there, and the formula of a total. Refused by a
    /// message: a name that no column can have or that a column has, and a formula of other terms
    /// than subjects of the library. A total without a formula waits for one. False then, and if it
    /// failed; nothing has changed. Tells the library's followers when it is done.
    bool run(const NewSubject& typed, runtime::Progress& progress, library::Backup backup);

    /// What the user has to do before the subject or total counts.
    static QString nextSteps(const NewSubject& added);

private:
    QString faultOf(const NewSubject& subject) const;
    void add(const NewSubject& subject) const;
    void storeFormula(const NewSubject& total) const;

    library::ScoreLibrary& m_library;
};

} // namespace maintenance
