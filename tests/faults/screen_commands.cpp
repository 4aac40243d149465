// Commands that the program offers on its screens alone, for tests from outside:
//
// screen_commands compact LIB         压缩数据库 with the library open
// screen_commands compact-named LIB   the same with the library named only
// screen_commands totals LIB EXAM…    计算总分
// screen_commands refuse-classes LIB BOOK   重新分班 up to the counts, which are answered by 取消
// screen_commands rename-exam LIB EXAM NAME SUBJECT MARK   考试信息: a name, and a full mark of
// each stream screen_commands add-subject LIB NAME [FORMULA]      添加科目 screen_commands
// add-student LIB CLASS NUMBER NAME   添加学生
//
// Ends with 1 if an error was shown.

#include <QCoreApplication>
#include <QFileInfo>

#include "cli/CliDialogs.h"
#include "cli/CliProgress.h"
#include "import/ReclassImport.h"
#include "library/ScoreLibrary.h"
#include "maintenance/ExamDetails.h"
#include "maintenance/StudentAddition.h"
#include "maintenance/SubjectAddition.h"
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

/// False if it was not saved.
bool renameExam(library::ScoreLibrary& scores, const QStringList& arguments,
                cli::CliProgress& progress)
{
    maintenance::ExamDetails details(scores);
    if (!details.load(arguments.value(3)))
        return false;
    details.name = arguments.value(4);
    for (int row = 1; row < details.items.Rows(); ++row) {
        if (details.items.TextMatrix(row, 0) != arguments.value(5) + u" 满分"_s)
            continue;
        for (int col = 2; col < details.items.Cols(); col += 2)
            details.items.setTextMatrix(row, col, arguments.value(6));
    }
    return details.save(progress, library::Backup::Make) != maintenance::DetailsSave::NotSaved;
}

bool addSubject(library::ScoreLibrary& scores, const QStringList& arguments,
                cli::CliProgress& progress)
{
    return maintenance::SubjectAddition(scores).run({arguments.value(3), arguments.value(4)},
                                                    progress, library::Backup::Make);
}

bool addStudent(library::ScoreLibrary& scores, const QStringList& arguments)
{
    return maintenance::StudentAddition(scores)
        .add({arguments.value(3), arguments.value(4), arguments.value(5), {}, {}})
        .has_value();
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
    if (command == "rename-exam"_L1)
        return renameExam(scores, arguments, progress);
    if (command == "add-subject"_L1)
        return addSubject(scores, arguments, progress);
    if (command == "add-student"_L1)
        return addStudent(scores, arguments);
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
