#pragma once

#include "cli/Arguments.h"
#include "cli/CliDialogs.h"
#include "library/ScoreLibrary.h"

namespace cli {

/// What the program ends with.
enum class Exit {
    Done = 0,  ///< the command did what was asked
    Error = 1, ///< a message box with an error would have been shown, or the command stopped early
    Usage = 2  ///< the command line is wrong, or names something that the library does not have
};

/// The error of a command that needs an option and was given none, or an empty one.
UsageError missingOption(const QString& name);

/// What a command works with.
struct Session
{
    const Arguments& arguments;
    CliDialogs& dialogs;
    library::ScoreLibrary& scores;

    /// The library that the first positional names. Throws UsageError for one of the old format.
    QString libraryPath() const;

    /// Opens the library that the first positional names. False after the message if that failed;
    /// throws UsageError for one of the old engine.
    bool openLibrary();

    /// Throws UsageError for the first name that is not in the list of exams of the open library.
    void requireExams(const QStringList& exams) const;

    /// Error if an error was shown, Done otherwise.
    Exit result() const;
};

} // namespace cli
