#include "workbench/TypedStatement.h"

#include "library/LibraryBackup.h"
#include "platform/database/Sql.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FoldedFailures.h"
#include "platform/runtime/Trap.h"

namespace workbench {

using namespace Qt::StringLiterals;

namespace {

/// Runs the statement and takes it back: how many rows it changes.
int rowsChangedBy(database::Connection& conn, database::Statement& statement)
{
    const database::WriteBatch takenBack(conn);
    return statement.run();
}

QString whatChanges(database::Connection& conn, const database::SqlText& sql,
                    database::Statement& statement)
{
    if (sql.changesSchema())
        return u"这条语句会改变成绩库的表和列："_s;
    return u"这条语句会改动成绩库里的 %1 行："_s.arg(
        runtime::countText(rowsChangedBy(conn, statement)));
}

/// So much of a statement as a box has room for.
QString shown(const QString& sql)
{
    constexpr qsizetype most = 300;
    return sql.size() <= most ? sql : sql.left(most) + u"……"_s;
}

bool isCopied(const QString& libraryPath, const QString& sql, runtime::Progress& progress)
{
    const runtime::Trap trap{" - Sub ShowKSCJmain/FormKaoShi"};
    try {
        library::backUpLibrary(libraryPath, QDateTime::currentDateTime(), {u"执行语句 "_s + sql},
                               progress);
        return true;
    } catch (const runtime::Error& error) {
        trap.fail(u"备份没有成功，语句没有执行："_s + error.description());
        return false;
    }
}

} // namespace

bool mayRun(library::ScoreLibrary& scoreLibrary, const QString& sql, runtime::Progress& progress)
{
    const database::SqlText text(sql);
    database::Statement statement(scoreLibrary.Conn, text.engineText(), database::Trust::User);
    if (statement.readsOnly())
        return true;
    const QString question = whatChanges(scoreLibrary.Conn, text, statement) + u"\n\n"_s
                             + shown(sql) + u"\n\n执行前会备份成绩库。是否执行？"_s;
    const int pressed = runtime::choose(
        {.text = question, .buttons = {u"执行"_s, u"取消"_s}, .safe = 1, .title = u"修改成绩库"_s});
    return pressed == 0 && isCopied(scoreLibrary.Conn.path(), sql, progress);
}

StoppableStatements::StoppableStatements(database::Connection& connection,
                                         runtime::Progress& progress)
    : m_connection(connection), m_former(connection.userLimits())
{
    database::UserLimits limits = m_former;
    limits.isStopped = [&progress] {
        progress.report(u"浏览成绩..."_s, 0, 0);
        return progress.cancelled();
    };
    connection.setUserLimits(limits);
}

StoppableStatements::~StoppableStatements()
{
    m_connection.setUserLimits(m_former);
}

} // namespace workbench
