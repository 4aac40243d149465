#pragma once

#include <vector>

#include <QDateTime>
#include <QStringList>

namespace library {

/// What a copy of a library is made ahead of.
struct Occasion
{
    enum class Kind { Change, ExamImport, StudentImport, Restore };

    /// In a user's words, as in "删除科目 语文、数学"; shown on one line.
    QString text;
    Kind kind = Kind::Change;
    /// The exam of an ExamImport.
    QString exam = {};
    /// What that exam was renamed to since, the latest last. A library may have it by any of its
    /// names: one that was restored has an earlier one.
    QStringList laterNames = {};

    static Occasion examImport(const QString& exam);
    static Occasion studentImport();
    static Occasion restoring();
    /// Going back to the state before an import.
    static Occasion undoing(const Occasion& import);
    bool isImport() const { return kind == Kind::ExamImport || kind == Kind::StudentImport; }
    /// All names of the exam, the latest first.
    QStringList examNames() const;
    friend bool operator==(const Occasion&, const Occasion&) = default;
};

/// An occasion and when it was. A library that has not changed between two occasions has one copy
/// for both.
struct NotedOccasion
{
    QDateTime time;
    Occasion occasion;
    /// An import whose copy was restored, as earlier versions noted it.
    bool isUndone = false;

    friend bool operator==(const NotedOccasion&, const NotedOccasion&) = default;
};

/// That a copy took the place of the library. Any copy of that library may hold it.
struct NotedRestore
{
    /// That of the occasion for which the library was copied before.
    QDateTime time;
    /// Of when the restored copy was; not valid where that is not known.
    QDateTime restored;
    /// False for one that was broken off ahead of the replacement, or right behind it.
    bool isDone = false;

    friend bool operator==(const NotedRestore&, const NotedRestore&) = default;
};

/// The file beside a copy that holds its occasions and restores: COPY.json.
QString occasionFile(const QString& copy);

/// The file beside the copy of a damaged library that holds what a broken write left: COPY-journal.
QString journalOfCopy(const QString& copy);

/// Adds an occasion to those of a copy, of which the newest 20 are kept. A copy is as good without:
/// failing is no error.
void noteOccasion(const QString& copy, const NotedOccasion& occasion);

/// Adds a name to the imports of an exam that a copy was made ahead of. Failing is no error.
void renameNotedExam(const QString& copy, const QString& exam, const QString& name);

/// Adds restores to those that a copy holds, of which the newest 100 are kept. One of the same time
/// is replaced, unless it is done. Failing is no error.
void noteRestores(const QString& copy, const std::vector<NotedRestore>& restores);

/// The occasions of a copy, the oldest first. Empty without the file, or if that is none of ours.
std::vector<NotedOccasion> notedOccasions(const QString& copy);

/// The restores that a copy holds, the oldest first. Empty where there are none.
std::vector<NotedRestore> notedRestores(const QString& copy);

} // namespace library
