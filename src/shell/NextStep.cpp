#include "shell/NextStep.h"

#include "library/ColumnNames.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Error.h"

namespace shell {

using namespace Qt::StringLiterals;
using database::Connection;
using database::Statement;

namespace {

bool hasRow(Connection& conn, const QString& sql)
{
    return Statement(conn, sql).step();
}

/// Whether a rank stands anywhere in an exam.
bool isScored(library::ScoreLibrary& scoreLibrary)
{
    QStringList ranks;
    for (const QString& column : scoreLibrary.catalogue.AllColumns)
        ranks.append(library::gradeRankColumn(column));
    if (ranks.isEmpty())
        return false;
    // One look at each row, since a library whose exams all wait is looked through to its end.
    return hasRow(
        scoreLibrary.Conn,
        database::sqlWith(u"select 1 from 成绩表 where coalesce(%1,null) is not null limit 1"_s,
                          {database::SqlPiece::names(ranks)}));
}

Step stepOf(library::ScoreLibrary& scoreLibrary)
{
    if (!scoreLibrary.catalogue.ExamList.isEmpty())
        return isScored(scoreLibrary) ? Step::Done : Step::Totals;
    const bool hasStudents = hasRow(scoreLibrary.Conn, u"select 1 from 信息表 limit 1"_s);
    return hasStudents ? Step::Exam : Step::Students;
}

} // namespace

Step nextStep(library::ScoreLibrary& scoreLibrary)
{
    if (!scoreLibrary.Conn.isOpen())
        return Step::NewLibrary;
    try {
        return stepOf(scoreLibrary);
    } catch (const runtime::Error&) {
        return Step::Done;
    }
}

} // namespace shell
