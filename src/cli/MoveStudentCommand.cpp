#include "cli/ChosenOptions.h"
#include "cli/ChosenStudent.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "maintenance/StudentMoves.h"
#include "platform/database/Statement.h"

namespace cli {

using namespace Qt::StringLiterals;
using maintenance::EarlierScores;
using maintenance::StreamAfter;
using maintenance::StudentMove;
using maintenance::StudentMoves;
using maintenance::StudentPlace;

namespace {

/// The one student of a place. Throws UsageError for none and for several, of whom none is guessed.
qint64 onlyStudent(const Session& session, const StudentPlace& place)
{
    database::Statement& rows =
        session.scores.Conn.prepared(u"select ID from 信息表 where 班级=? and 学号=?"_s);
    rows.bind({place.classNumber, place.number});
    std::vector<qint64> ids;
    while (rows.step())
        ids.push_back(rows.integer(0));
    if (ids.empty())
        throw UsageError(u"成绩库里没有 %1的学生。"_s.arg(place.text()));
    if (ids.size() > 1)
        throw UsageError(
            u"%1有 %2 名学生，请用 --id 指定。"_s.arg(place.text(), QString::number(ids.size())));
    return ids.front();
}

/// The student of "5/12". Throws UsageError.
qint64 otherStudent(const Session& session)
{
    const QString text = session.arguments.value(u"swap"_s);
    const QStringList parts = text.split(u'/');
    bool isClass = false;
    bool isNumber = false;
    const StudentPlace place{parts.value(0).toDouble(&isClass), parts.value(1).toDouble(&isNumber)};
    if (parts.size() != 2 || !isClass || !isNumber)
        throw UsageError(u"选项 --swap 的值应为 班级/学号：%1"_s.arg(text));
    return onlyStudent(session, place);
}

qint64 movedStudent(const Session& session)
{
    const Arguments& arguments = session.arguments;
    if (arguments.has(u"id"_s))
        return chosenStudent(session);
    return onlyStudent(session,
                       {chosenNumber(arguments, u"class"_s), chosenNumber(arguments, u"number"_s)});
}

/// Throws UsageError unless one change is asked for.
void checkChange(const Arguments& arguments)
{
    const int changes = int(arguments.has(u"to-class"_s)) + int(arguments.has(u"swap"_s))
                        + int(arguments.has(u"remove"_s));
    if (changes != 1)
        throw UsageError(u"--to-class、--swap、--remove 要给出其中一个。"_s);
    if (arguments.has(u"to-number"_s) && !arguments.has(u"to-class"_s))
        throw missingOption(u"to-class"_s);
}

StudentPlace chosenPlace(const Session& session, StudentMoves& moves)
{
    const Arguments& arguments = session.arguments;
    StudentPlace place{.classNumber = chosenNumber(arguments, u"to-class"_s)};
    place.number = arguments.has(u"to-number"_s) ? chosenNumber(arguments, u"to-number"_s)
                                                 : moves.freeNumber(place.classNumber);
    return place;
}

StudentMove chosenMove(const Session& session, StudentMoves& moves)
{
    const Arguments& arguments = session.arguments;
    StudentMove move{.id = movedStudent(session)};
    if (arguments.has(u"with-scores"_s))
        move.scores = EarlierScores::GoAlong;
    if (arguments.has(u"keep-stream"_s))
        move.stream = StreamAfter::Kept;
    if (arguments.has(u"to-class"_s)) {
        move.to = chosenPlace(session, moves);
    } else if (arguments.has(u"swap"_s)) {
        move.kind = StudentMove::Kind::Swap;
        move.other = otherStudent(session);
    } else {
        move.kind = StudentMove::Kind::Remove;
    }
    return move;
}

} // namespace

Exit runMoveStudent(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    checkStudent(arguments);
    checkChange(arguments);
    if (arguments.has(u"yes"_s))
        session.dialogs.answer(u"要执行这些调整吗"_s, u"执行"_s);
    if (arguments.has(u"rescore"_s))
        session.dialogs.answer(u"现在重新计算吗"_s, u"现在计算"_s);
    if (!session.openLibrary())
        return Exit::Error;
    StudentMoves moves(session.scores);
    moves.add(chosenMove(session, moves));
    printGrid(session, maintenance::planGrid(moves.plan()), {}, format);
    CliProgress progress;
    const StudentMoves::Result result = moves.run(progress, chosenBackup(arguments));
    return result == StudentMoves::Result::Done ? session.result() : Exit::Error;
}

} // namespace cli
