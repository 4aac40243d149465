#include <QFileInfo>

#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "library/LibraryShape.h"
#include "oldlibraries/Conversion.h"
#include "oldlibraries/ConversionNote.h"
#include "oldlibraries/OldFileError.h"
#include "oldlibraries/ReportForms.h"
#include "platform/database/FileIdentity.h"
#include "platform/runtime/UnfinishedFile.h"

namespace cli {

using namespace Qt::StringLiterals;
using oldlibraries::ConversionReport;
using oldlibraries::ConversionRequest;
using oldlibraries::OldFileError;
using oldlibraries::OldFileFailure;

namespace {

/// Throws Error for a new file that must not be, with --force or without.
void checkTarget(const ConversionRequest& request)
{
    if (const QString refusal = oldlibraries::targetRefusal(request); !refusal.isEmpty())
        throw runtime::Error(refusal);
}

/// Throws Error for a new file that must not be.
ConversionRequest conversionRequest(const Session& session)
{
    const Arguments& arguments = session.arguments;
    ConversionRequest request;
    request.oldPath = arguments.path(0);
    request.newPath = arguments.positionals().size() > 1
                          ? arguments.path(1)
                          : oldlibraries::suggestedPath(request.oldPath);
    request.templateFile = session.scores.paths().templateFile();
    request.password = arguments.value(u"password"_s);
    if (arguments.has(u"force"_s))
        request.existing = ConversionRequest::Existing::Replace;
    if (arguments.has(u"accept-missing-rows"_s))
        request.missingRows = ConversionRequest::MissingRows::Accept;
    checkTarget(request);
    refuseExisting(session, request.newPath);
    return request;
}

/// The file that --report names; "" without it. Throws UsageError if it is the new library, Error
/// if it must not be replaced.
QString reportPath(const Session& session, const ConversionRequest& request)
{
    if (!session.arguments.has(u"report"_s))
        return {};
    ConversionRequest instead = request;
    instead.newPath = QFileInfo(session.arguments.value(u"report"_s)).absoluteFilePath();
    if (database::isSamePlace(instead.newPath, request.newPath))
        throw UsageError(u"--report 不能是新成绩库的文件。"_s);
    checkTarget(instead);
    QString path = chosenFile(session, u"report"_s);
    // A report that cannot be written is told before the long work, not after it.
    const runtime::UnfinishedFile attempt(path);
    return path;
}

/// Whether the file is what the other commands open.
bool isPresentLibrary(const QString& path)
{
    try {
        database::Connection().Open(path, library::libraryShape());
        return true;
    } catch (const runtime::Error&) {
        return false;
    }
}

/// What is wrong with the old file, and what the command line offers against it.
QString sentence(const OldFileError& error, const Arguments& arguments)
{
    const QString path = arguments.path(0);
    if (error.failure() == OldFileFailure::Password && arguments.has(u"password"_s))
        return u"--password 给出的密码不对，%1 没有转换。"_s.arg(path);
    if (error.failure() == OldFileFailure::Password)
        return u"%1 有密码，请用 --password 给出。"_s.arg(path);
    if (error.failure() == OldFileFailure::RowsMissing)
        return error.description() + u"读到的要照样转换，请加 --accept-missing-rows。"_s;
    if (error.failure() == OldFileFailure::Foreign && isPresentLibrary(path))
        return u"%1 是现在的格式，不需要转换。"_s.arg(path);
    if (error.failure() == OldFileFailure::Missing && path.contains(QChar::ReplacementCharacter))
        return u"%1 的名称里有不是 UTF-8 编码的字，请先给文件改名。"_s.arg(path);
    return error.description();
}

std::optional<ConversionReport> converted(const Session& session, const ConversionRequest& request)
{
    CliProgress progress;
    const oldlibraries::ConversionNote note(session.scores.paths(), request.newPath);
    try {
        return oldlibraries::convert(request, progress);
    } catch (const OldFileError& error) {
        throw runtime::Error(sentence(error, session.arguments));
    }
}

void tell(const ConversionReport& report, const QString& reportFile)
{
    QStringList tables;
    for (const ConversionReport::Table& table : report.tables)
        tables.append(u"%1 %2 行"_s.arg(table.name, QString::number(table.rows)));
    printError(
        u"转换完成，共 %1 个表：%2。"_s.arg(QString::number(tables.size()), tables.join(u'，')));
    printError(u"总分、标准分和名次原样转入；要重新计算，请用 yunshan-cli score。"_s);
    if (report.findings.empty())
        return;
    const QString found = reportFile.isEmpty()
                              ? u"有 %1 项需要说明；转换时加上 --report FILE 可以存下来。"_s
                              : u"有 %1 项需要说明，在用 --report 存的报告里。"_s;
    printError(found.arg(report.findings.size()));
}

} // namespace

Exit runConvert(Session& session)
{
    const ConversionRequest request = conversionRequest(session);
    const QString reportFile = reportPath(session, request);
    runtime::removeLeftOvers(request.newPath);
    const std::optional<ConversionReport> report = converted(session, request);
    if (!report)
        return Exit::Error;
    tell(*report, reportFile);
    printResult(report->newPath + u'\n');
    if (!reportFile.isEmpty())
        oldlibraries::saveReport(*report, reportFile);
    return session.result();
}

} // namespace cli
