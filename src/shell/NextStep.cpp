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

bool hasRow(Connection& conn, const QString& sql, const std::vector<runtime::Value>& values = {})
{
    Statement statement(conn, sql);
    statement.bind(values);
    return statement.step();
}

/// Whether a rank stands anywhere in the exam.
bool isScored(library::ScoreLibrary& scoreLibrary, const QString& exam)
{
    const QString sql = u"select 1 from 成绩表 where 考试名称=? and [%1] is not null limit 1"_s;
    for (const QString& column : scoreLibrary.catalogue.AllColumns) {
        const auto rank = database::SqlPiece::name(library::gradeRankColumn(column));
        if (hasRow(scoreLibrary.Conn, database::sqlWith(sql, {rank}), {exam}))
            return true;
    }
    return false;
}

Step stepOf(library::ScoreLibrary& scoreLibrary)
{
    const QStringList& exams = scoreLibrary.catalogue.ExamList;
    if (exams.size() > 1)
        return Step::Done;
    if (exams.size() == 1)
        return isScored(scoreLibrary, exams.first()) ? Step::Done : Step::Totals;
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
