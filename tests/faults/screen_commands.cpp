// Commands that the program offers on its screens alone, for tests from outside:
//
// screen_commands compact LIB         压缩数据库 with the library open
// screen_commands compact-named LIB   the same with the library named only
// screen_commands totals LIB EXAM…    计算总分
// screen_commands refuse-classes LIB BOOK   重新分班 up to the counts, which are answered by 取消
//
// Ends with 1 if an error was shown.

#include <QCoreApplication>
#include <QFileInfo>

#include "cli/CliDialogs.h"
#include "cli/CliProgress.h"
#include "import/ReclassImport.h"
#include "library/ScoreLibrary.h"
#include "shell/LibraryFile.h"
#include "workbench/TotalsRun.h"

namespace {

using namespace Qt::StringLiterals;

void refuseClasses(library::ScoreLibrary& scores, const QString& book, cli::CliProgress& progress)
{
    importing::Applications applications;
    importing::WorkbookIntake intake(applications, importing::classChangeSheet);
    intake.browse(QFileInfo(book).absoluteFilePath());
    importing::ReclassImport(scores, intake, progress)
        .run(intake.sheetNames().value(0), importing::Backup::SwitchedOff);
}

/// False if there is no such command, or no library that opens.
bool run(library::ScoreLibrary& scores, const QStringList& arguments)
{
    const QString& command = arguments[1];
    cli::CliProgress progress;
    scores.LibPath = QFileInfo(arguments[2]).absoluteFilePath();
    if (command == "compact-named"_L1) {
        shell::compactLibrary(scores, u"2024-05-06"_s, progress);
        return true;
    }
    scores.OpenDB();
    if (!scores.Conn.isOpen())
        return false;
    if (command == "compact"_L1) {
        shell::compactLibrary(scores, u"2024-05-06"_s, progress);
        return true;
    }
    if (command == "refuse-classes"_L1) {
        refuseClasses(scores, arguments.value(3), progress);
        return true;
    }
    scoring::Scoring scoring(scores);
    workbench::computeTotals(arguments.mid(3), scoring, progress);
    return command == "totals"_L1;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    cli::CliDialogs dialogs;
    library::ScoreLibrary scores(runtime::AppPaths::locate(QCoreApplication::applicationDirPath()));
    return run(scores, arguments) && !dialogs.errorShown() ? 0 : 1;
}
