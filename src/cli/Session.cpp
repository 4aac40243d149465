#include "cli/Session.h"

#include "oldlibraries/FileHeader.h"
#include "platform/database/Statement.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// True for an exam of the library that the list of exams passes over.
bool standsUnlisted(database::Connection& conn, const QString& exam)
{
    database::Statement& row =
        conn.prepared(u"select 1 from 考试名称表 where 考试名称=? collate binary"_s);
    row.bind({exam});
    const bool found = row.step();
    row.finish();
    return found;
}

} // namespace

UsageError missingOption(const QString& name)
{
    return UsageError(u"缺少选项 --%1。"_s.arg(name));
}

QString Session::libraryPath() const
{
    QString path = arguments.path(0);
    if (oldlibraries::isOldLibrary(path))
        throw UsageError(u"%1 是旧格式的成绩库，请先用 yunshan-cli convert 转换。"_s.arg(path));
    return path;
}

bool Session::openLibrary()
{
    scores.LibPath = libraryPath();
    scores.OpenDB();
    return scores.Conn.isOpen();
}

void Session::requireExams(const QStringList& exams) const
{
    for (const QString& exam : exams) {
        if (scores.catalogue.ExamList.contains(exam))
            continue;
        throw UsageError(
            standsUnlisted(scores.Conn, exam)
                ? u"考试“%1”的名称包含在另一次考试的名称里，考试列表中没有它。"_s.arg(exam)
                : u"成绩库里没有考试“%1”。"_s.arg(exam));
    }
}

Exit Session::result() const
{
    return dialogs.errorShown() ? Exit::Error : Exit::Done;
}

} // namespace cli
