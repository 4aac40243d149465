#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "workbooks/model/BookJson.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// What stands in no file name is replaced.
QString fileName(const QString& exam, const QString& stream)
{
    static const QRegularExpression refused(u"[\\\\/:*?\"<>|\\x00-\\x1f]"_s);
    return QString(exam + u"综合分析("_s + stream + u").xlsx"_s).replace(refused, u"_"_s);
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

QStringList save(const Books& books, const QString& exam, const QString& folder)
{
    if (!QDir().mkpath(folder))
        throw runtime::Error(u"不能建立文件夹“%1”。"_s.arg(folder));
    QStringList paths;
    for (const auto& [stream, book] : books) {
        QString path = QDir(folder).absoluteFilePath(fileName(exam, stream));
        // Streams can differ in nothing but signs that were replaced.
        while (paths.contains(path))
            path.insert(path.lastIndexOf(u'.'), u'_');
        book->SaveAs(path);
        paths.append(path);
    }
    return paths;
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
    statistics::ReportContext context(session.scores);
    excel::Application application;
    CliProgress progress;
    statistics::ZHFX(context, exam, application, progress);
    const Books books = booksOf(context);
    QStringList paths;
    if (arguments.has(u"out"_s))
        paths = save(books, exam, QDir::current().absoluteFilePath(arguments.value(u"out"_s)));
    printResult(format == "json"_L1 ? content(books) : lines(paths));
    return session.result();
}

} // namespace cli
