#pragma once

#include "cli/Arguments.h"
#include "cli/CliDialogs.h"
#include "cli/Exit.h"
#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"

namespace cli {

/// What a command works with.
struct Session
{
    const Arguments& arguments;
    CliDialogs& dialogs;
    library::ScoreLibrary& scores;

    /// Opens the library that the first positional names. False after the message if that failed.
    bool openLibrary();

    /// Throws UsageError for the first name that is not in the list of exams of the open library.
    void requireExams(const QStringList& exams) const;

    /// Error if an error was shown, Done otherwise.
    Exit result() const;
};

/// Prints a grid as tab-separated text ("tsv") or as the JSON object that all grids are printed as,
/// with the SQL text that filled it and the messages shown.
void printGrid(const Session& session, const grid::FlexGrid& grid, const QString& sql,
               const QString& format);

/// One command of the program.
struct Command
{
    const char16_t* name = nullptr;
    Syntax syntax;
    const char16_t* help = nullptr;
    Exit (*run)(Session&) = nullptr;
};

Exit runNew(Session& session);
Exit runImportStudents(Session& session);
Exit runImportExam(Session& session);
Exit runScore(Session& session);
Exit runBrowse(Session& session);
Exit runReport(Session& session);
Exit runAnalyze(Session& session);
Exit runInfo(Session& session);

/// All commands, in the order of the help text.
const std::vector<Command>& commands();

} // namespace cli
