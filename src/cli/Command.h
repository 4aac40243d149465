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
};

// The commands, a source each.

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
