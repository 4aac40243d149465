#pragma once

#include <vector>

#include "cli/Session.h"

namespace cli {

/// One command of the program.
struct Command
{
    const char16_t* name = nullptr;
    Syntax syntax;
    const char16_t* help = nullptr;
    Exit (*run)(Session&) = nullptr;
    /// Options with which the command paints, so that the program needs fonts.
    QStringList paintingOptions = {};
};

// The commands, a source each.

Exit runNew(Session& session);
Exit runConvert(Session& session);
Exit runImportStudents(Session& session);
Exit runImportExam(Session& session);
Exit runReclass(Session& session);
Exit runTidy(Session& session);
Exit runScore(Session& session);
Exit runBrowse(Session& session);
Exit runReport(Session& session);
Exit runAnalyze(Session& session);
Exit runExport(Session& session);
Exit runInfo(Session& session);
Exit runStudent(Session& session);
Exit runRecord(Session& session);
Exit runPhotos(Session& session);
Exit runClassCharts(Session& session);
Exit runCorrect(Session& session);
Exit runDeleteSubjects(Session& session);
Exit runDeleteExams(Session& session);
Exit runRemoveExams(Session& session);
Exit runMoveStudent(Session& session);
Exit runSettings(Session& session);
Exit runTeachers(Session& session);
Exit runSetStreams(Session& session);
Exit runBackups(Session& session);
Exit runRestore(Session& session);

/// All commands, in the order of the help text.
const std::vector<Command>& commands();

/// The command of that name; null if there is none.
const Command* findCommand(const QString& name);

} // namespace cli
