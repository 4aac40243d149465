#pragma once

#include <initializer_list>
#include <map>
#include <utility>

#include <QTemporaryDir>

#include "library/ScoreLibrary.h"
#include "support/ScriptedDialogs.h"

namespace support {

/// A name and a number or text, as columns of a row are given in tests.
using NamedValues = std::initializer_list<std::pair<QString, runtime::Value>>;

/// A new library in a folder of its own that goes when the test ends, with the given subjects and
/// totals, open, and with scripted dialogs in force.
class TestLibrary
{
public:
    explicit TestLibrary(const QStringList& subjects);

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    runtime::AppPaths paths;
    library::ScoreLibrary scores;

    /// A path in the test's folder.
    QString file(const QString& name) const { return folder.filePath(name); }

    /// Adds a row to 信息表 and gives its ID.
    qint64 addStudent(double classNumber, double number, const QString& name, const QString& stream,
                      double category = 1);

    /// Adds a row to 考试名称表: full marks of subjects (numbers), formulas of totals (texts).
    void addExam(const QString& exam, const QString& stream, int number, NamedValues columns);

    /// Adds a row to 成绩表 for a student, whose name, stream, category and ID are looked up by
    /// class and number.
    void addScores(const QString& exam, double classNumber, double number, NamedValues columns);

    /// Runs a statement without rows.
    void execute(const QString& sql);

    /// The rows of a statement as text: values joined by "|", rows by " / "; NULL is "NULL".
    QString rows(const QString& sql);

    /// Loads streams, exams and classes anew.
    void reload();

    /// A new AppPath folder with the shipped data files and the template.
    static runtime::AppPaths makeAppFolder(const QString& folder);
};

} // namespace support
