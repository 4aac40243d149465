#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "platform/runtime/FileNames.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "workbooks/model/BookJson.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

QString fileName(const QString& exam, const QString& stream)
{
    return runtime::fileNameFrom(exam + u"综合分析("_s + stream + u").xlsx"_s);
}

using Books = std::map<QString, excel::Workbook*>;

Books booksOf(const statistics::ReportContext& context)
{
    Books books;
    const QStringList& streams = context.library.catalogue.Streams;
    for (int i = 0; i < streams.size(); ++i) {
        if (excel::Workbook* book = context.streamSlots[size_t(i)].ReportBook)
            books[streams[i]] = book;
    }
    return books;
}

/// The file of each stream's workbook.
using Paths = std::map<QString, QString>;

Paths pathsOf(QStringList streams, const QString& exam, const QDir& folder)
{
    Paths paths;
    QStringList taken;
    streams.sort();
    for (const QString& stream : std::as_const(streams)) {
        // Streams can differ in nothing but signs that were replaced.
        const QString path =
            runtime::freeFileName(folder.absoluteFilePath(fileName(exam, stream)), taken);
        taken.append(path);
        paths[stream] = path;
    }
    return paths;
}

QStringList save(const Books& books, const Paths& paths)
{
    QStringList saved;
    for (const auto& [stream, book] : books) {
        const QString& path = paths.at(stream);
        if (!QDir().mkpath(QFileInfo(path).path()))
            throw runtime::Error(u"不能建立文件夹“%1”。"_s.arg(QFileInfo(path).path()));
        book->SaveAs(path);
        saved.append(path);
    }
    return saved;
}

QString lines(const QStringList& paths)
{
    return paths.isEmpty() ? QString() : paths.join(u'\n') + u'\n';
}

QString content(const Books& books)
{
    QJsonObject object;
    for (const auto& [stream, book] : books)
        object.insert(stream, excel::bookJson(*book));
    return QString::fromUtf8(
               QJsonDocument(QJsonObject{{u"books"_s, object}}).toJson(QJsonDocument::Compact))
           + u'\n';
}

} // namespace

Exit runAnalyze(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"paths"_s, u"json"_s});
    const QString exam = arguments.value(u"exam"_s);
    if (exam.isEmpty())
        throw missingOption(u"exam"_s);
    if (!arguments.has(u"out"_s) && format != "json"_L1)
        throw missingOption(u"out"_s);
    if (!session.openLibrary())
        return Exit::Error;
    session.requireExams({exam});
    const QDir folder(QDir::current().absoluteFilePath(arguments.value(u"out"_s)));
    const Paths paths = pathsOf(session.scores.catalogue.Streams, exam, folder);
    const bool saving = arguments.has(u"out"_s);
    for (const auto& [stream, path] : paths) {
        if (saving)
            refuseOutput(session, path);
    }
    statistics::ReportContext context(session.scores);
    excel::Application application;
    CliProgress progress;
    statistics::ZHFX(context, exam, application, progress);
    const Books books = booksOf(context);
    const QStringList saved = saving ? save(books, paths) : QStringList();
    printResult(format == "json"_L1 ? content(books) : lines(saved));
    return session.result();
}

} // namespace cli
