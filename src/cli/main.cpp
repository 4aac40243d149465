#include <algorithm>
#include <csignal>
#include <new>

#include <QCoreApplication>

#include "cli/Command.h"
#include "individual/paint/PaintingApplication.h"
#include "oldlibraries/ConversionNote.h"
#include "platform/runtime/QuietLibraries.h"

namespace {

using namespace Qt::StringLiterals;
using namespace cli;

QString helpForAll()
{
    QString help = u"云杉学业册命令行\n\n"_s;
    for (const Command& command : commands())
        help += QString::fromUtf16(command.help) + u'\n';
    return help
           + u"yunshan-cli COMMAND --help 显示一条命令的用法。\n"
             "退出码：0 完成，1 出错或没有完成，2 用法不正确。\n"_s;
}

Exit runCommand(const Command& command, const QStringList& rest)
{
    const Arguments arguments(rest, command.syntax);
    CliDialogs dialogs;
    library::ScoreLibrary scores(runtime::AppPaths::locate(QCoreApplication::applicationDirPath()));
    oldlibraries::removeLeftOvers(scores.paths());
    Session session{arguments, dialogs, scores};
    return command.run(session);
}

Exit runProgram(QStringList arguments)
{
    const QString name = arguments.isEmpty() ? QString() : arguments.takeFirst();
    if (name == "--help"_L1 || name == "help"_L1) {
        printResult(helpForAll());
        return Exit::Done;
    }
    const Command* command = findCommand(name);
    if (!command) {
        printError(name.isEmpty() ? u"缺少命令。"_s : u"不认识的命令：%1"_s.arg(name));
        printError(helpForAll());
        return Exit::Usage;
    }
    if (arguments.contains("--help"_L1)) {
        printResult(QString::fromUtf16(command->help));
        return Exit::Done;
    }
    try {
        return runCommand(*command, arguments);
    } catch (const UsageError& error) {
        printError(error.description());
        printError(QString::fromUtf16(command->help));
        return Exit::Usage;
    }
}

/// Whether the command paints, so that the program needs fonts.
bool isToPaint(const QStringList& arguments)
{
    const Command* command = findCommand(arguments.value(0));
    return command && std::any_of(arguments.begin(), arguments.end(), [&](const QString& argument) {
               const QString name = argument.section(u'=', 0, 0);
               return name.startsWith("--"_L1) && command->paintingOptions.contains(name.mid(2));
           });
}

int run(const QStringList& arguments)
{
    try {
        return int(runProgram(arguments));
    } catch (const std::bad_alloc&) {
        printError(u"内存不足。"_s);
        return int(Exit::Error);
    } catch (const std::exception& error) {
        printError(QString::fromUtf8(error.what()));
        return int(Exit::Error);
    }
}

int runPainting(char* program, const QStringList& arguments)
{
    const individual::PaintingApplication application(program);
    if (!individual::PaintingApplication::hasChineseGlyphs())
        printError(u"No Chinese font is installed. Please install fonts-noto-cjk."_s);
    return run(arguments);
}

} // namespace

int main(int argc, char** argv)
{
    // A reader that goes away (`| head`) must not break off an import in the middle.
    std::signal(SIGPIPE, SIG_IGN);
    // A limit on the size of files is an error of the write, as a full disk is.
    std::signal(SIGXFSZ, SIG_IGN);
    runtime::quietQt();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (isToPaint(arguments))
        return runPainting(argv[0], arguments);
    const QCoreApplication application(argc, argv);
    return run(arguments);
}
