#include "oldlibraries/AskedConversion.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <numeric>

#include <QFile>
#include <QFileInfo>

#include "oldlibraries/ConversionNote.h"
#include "oldlibraries/OldDatabase.h"
#include "oldlibraries/OldFileError.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/FoldedFailures.h"
#include "platform/runtime/Trap.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using Existing = ConversionRequest::Existing;

namespace {

const runtime::Trap trap{" - Sub Convert/OldLibraries"};

enum { Convert, Cancel };

bool isWritable(const QString& folder)
{
    return faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK, AT_EACCESS) == 0;
}

/// Why the new library cannot have the suggested name; "" if it can.
QString hindrance(const QString& suggested)
{
    const QFileInfo file(suggested);
    // A link that leads nowhere takes the name, too.
    if (file.exists() || file.isSymLink())
        return u"“%1”已经有了，接下来请另取一个名称。"_s.arg(file.fileName());
    if (QFile::encodeName(file.fileName()).size() > NAME_MAX)
        return u"旧的名称太长，加不上“（转换）”，接下来请另取一个名称。"_s;
    if (!isWritable(file.path()))
        return u"旧成绩库的文件夹不能写入，接下来请另选一个文件夹。"_s;
    return {};
}

bool isConversionWanted(const QString& oldPath, const QString& suggested)
{
    const QString why = hindrance(suggested);
    const QString place =
        why.isEmpty() ? u"新的放在它旁边，名称是“%1”。"_s.arg(QFileInfo(suggested).fileName())
                      : why;
    const QString text =
        u"这是旧格式的成绩库，要转换成新的成绩库才能打开。\n\n旧的“%1”保持原样。\n%2"_s;
    return runtime::choose({.text = text.arg(QFileInfo(oldPath).fileName(), place),
                            .buttons = {u"转换"_s, u"取消"_s},
                            .safe = Cancel})
           == Convert;
}

/// "" for a file without one; nothing if the user gave up.
std::optional<QString> askForPassword(const QString& oldPath)
{
    const OldDatabase old(oldPath);
    if (!old.hasPassword())
        return QString();
    QString question = u"这个文件设有密码，输入密码才能转换："_s;
    for (;;) {
        std::optional<QString> typed = runtime::askPassword(question);
        if (!typed || old.isPassword(*typed))
            return typed;
        question = u"密码不对。这个文件设有密码，请再输入一次："_s;
    }
}

bool areMissingRowsAccepted(const QString& sentence)
{
    return runtime::choose({.text = sentence
                                    + u"\n\n请先找找有没有完好的备份。照样转换，读到的行都转入，"
                                      "少了的不再能找回，报告里会写明。"_s,
                            .buttons = {u"照样转换"_s, u"取消"_s},
                            .safe = Cancel})
           == Convert;
}

/// Asks before a library is converted of which rows are missing.
std::optional<ConversionReport> convertOrAsk(ConversionRequest request, runtime::Progress& progress)
{
    try {
        return convert(request, progress);
    } catch (const OldFileError& error) {
        if (error.failure() != OldFileFailure::RowsMissing)
            throw;
        if (!areMissingRowsAccepted(error.description()))
            return std::nullopt;
    }
    request.missingRows = ConversionRequest::MissingRows::Accept;
    return convert(request, progress);
}

/// Fills in where the new library goes; false if the user gave up.
bool askForTarget(ConversionRequest& request)
{
    request.newPath = suggestedPath(request.oldPath);
    if (hindrance(request.newPath).isEmpty())
        return true;
    for (;;) {
        request.newPath = runtime::ShowFileDialog(u"成绩库|*.CJK"_s, runtime::FileMode::Save);
        if (request.newPath.isEmpty())
            return false;
        request.existing = QFileInfo::exists(request.newPath) ? Existing::Replace : Existing::Keep;
        const QString refusal = targetRefusal(request);
        if (refusal.isEmpty())
            return true;
        runtime::warn(refusal + u"请另取一个名称。"_s);
    }
}

} // namespace

std::optional<ConversionRequest> askForConversion(const QString& oldPath,
                                                  const database::Connection& open,
                                                  const runtime::AppPaths& paths)
{
    if (!isConversionWanted(oldPath, suggestedPath(oldPath)))
        return std::nullopt;
    runtime::removeLeftOvers(oldPath);
    std::optional<QString> password;
    if (!trap([&] { password = askForPassword(oldPath); }) || !password)
        return std::nullopt;
    ConversionRequest request;
    request.oldPath = oldPath;
    request.templateFile = paths.templateFile();
    request.password = *password;
    request.openPath = open.path();
    return askForTarget(request) ? std::optional(request) : std::nullopt;
}

std::optional<ConversionReport> convertAsked(const ConversionRequest& request,
                                             const runtime::AppPaths& paths,
                                             runtime::Progress& progress)
{
    std::optional<ConversionReport> report;
    trap([&] {
        const ConversionNote note(paths, request.newPath);
        report = convertOrAsk(request, progress);
    });
    return report;
}

bool isReportWanted(const ConversionReport& report)
{
    using runtime::countText;
    const qint64 rows = std::accumulate(
        report.tables.begin(), report.tables.end(), qint64(0),
        [](qint64 sum, const ConversionReport::Table& table) { return sum + table.rows; });
    const QString found = report.findings.empty() ? u"没有发现需要说明的值。"_s
                                                  : u"有 %1 处需要您看一看，写在报告里。"_s.arg(
                                                      countText(qint64(report.findings.size())));
    const QString text = u"转换完成：%1 个表，共 %2 行。%3\n\n现在打开的是新的成绩库：\n%4"_s;
    enum { Read, Close };
    return runtime::choose({.text = text.arg(countText(qint64(report.tables.size())),
                                             countText(rows), found, report.newPath),
                            .buttons = {u"查看报告"_s, u"关闭"_s},
                            .safe = Close})
           == Read;
}

} // namespace oldlibraries
