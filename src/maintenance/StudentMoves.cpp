#include "maintenance/StudentMoves.h"

#include <algorithm>
#include <cmath>

#include "maintenance/QuotedText.h"
#include "maintenance/Refusal.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "scoring/Scoring.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using Kind = StudentMove::Kind;

namespace {

const runtime::Trap movesTrap{" - Sub MoveStudents/Maintenance"};

/// Numbers of classes and students: whole and positive, and few enough digits to be shown whole.
bool isNumber(double number)
{
    constexpr double tooLarge = 1e15;
    return number >= 1 && number < tooLarge && number == std::floor(number);
}

/// Writes what a plan says about students, one at a time, and counts it. The caller holds the
/// batch.
class MoveWriter
{
public:
    explicit MoveWriter(database::Connection& connection)
        : m_place(connection.prepared(u"update 信息表 set 班级=?, 学号=?, 科类=ifnull(?, 科类), "
                                      "类别代码=ifnull(?, 类别代码) where ID=?"_s)),
          m_removal(connection.prepared(u"delete from 信息表 where ID=?"_s)),
          m_scorePlace(connection.prepared(u"update 成绩表 set 班级=?, 学号=? where rowid=?"_s)),
          m_scoreRemoval(connection.prepared(u"delete from 成绩表 where rowid=?"_s))
    {
    }

    void write(const PlannedStudent& one)
    {
        const qint64 id = one.student.id;
        if (one.to)
            run(m_place,
                {one.to->classNumber, one.to->number, changed(one.student.stream, one.streamAfter),
                 changed(one.student.category, one.categoryAfter), id});
        else
            run(m_removal, {id});
        if (one.scores == EarlierScores::Stay)
            return;
        for (const EarlierScore& score : one.earlier) {
            if (one.to)
                run(m_scorePlace, {one.to->classNumber, one.to->number, score.row});
            else
                run(m_scoreRemoval, {score.row});
        }
    }

private:
    /// Null for what stays as it is.
    static runtime::Value changed(const runtime::Value& before, const runtime::Value& after)
    {
        return before == after ? runtime::Value() : after;
    }

    static void run(database::Statement& statement, const std::vector<runtime::Value>& values)
    {
        statement.bind(values);
        statement.run();
    }

    database::Statement& m_place;
    database::Statement& m_removal;
    database::Statement& m_scorePlace;
    database::Statement& m_scoreRemoval;
};

library::Occasion occasionOfMoves(const MovePlan& plan)
{
    const size_t count = plan.students.size();
    const QString others = count > 1 ? u"等 %1 人"_s.arg(count) : QString();
    return {.text = u"学生调整 "_s + shownName(plan.students.front().student.name) + others};
}

} // namespace

void StudentMoves::add(const StudentMove& move)
{
    if (move.kind == Kind::Move && !(isNumber(move.to.classNumber) && isNumber(move.to.number)))
        throw Refusal(u"班级和学号要是从 1 起的整数。"_s);
    if (move.kind == Kind::Swap && move.id == move.other)
        throw Refusal(u"请选择另一名学生来交换。"_s);
    if (isPartOfOne(move.id) || (move.kind == Kind::Swap && isPartOfOne(move.other)))
        throw Refusal(u"这名学生已经有一项调整了，请先撤回那一项。"_s);
    m_moves.push_back(move);
}

void StudentMoves::takeBack(size_t move)
{
    if (move < m_moves.size())
        m_moves.erase(m_moves.begin() + qsizetype(move));
}

bool StudentMoves::isPartOfOne(qint64 id) const
{
    return std::any_of(m_moves.begin(), m_moves.end(), [id](const StudentMove& move) {
        return move.id == id || (move.kind == Kind::Swap && move.other == id);
    });
}

double StudentMoves::freeNumber(double classNumber)
{
    return maintenance::freeNumber(m_library.Conn, m_moves, classNumber);
}

StudentMoves::Result StudentMoves::run(runtime::Progress& progress, library::Backup backup)
{
    if (m_moves.empty()) {
        runtime::warn(u"还没有要执行的调整。"_s);
        return Result::Declined;
    }
    if (!library::hasRoomForBackup(m_library, backup))
        return Result::Stopped;
    MovePlan asked;
    if (!movesTrap([&] { asked = plan(); }))
        return Result::Stopped;
    if (!isWanted(asked, backup))
        return Result::Declined;
    bool isDone = false;
    {
        const library::BackupBeforeWrite copy(m_library, progress, backup, occasionOfMoves(asked));
        unlessRefused(movesTrap, [&] { isDone = write(asked, progress); });
    }
    progress.finish();
    if (!isDone)
        return Result::Stopped;
    m_moves.clear();
    movesTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
    tell(asked, progress);
    return Result::Done;
}

bool StudentMoves::isWanted(const MovePlan& plan, library::Backup backup) const
{
    if (!plan.isPossible()) {
        QStringList lines;
        for (const PlannedStudent& one : plan.students) {
            for (const QString& conflict : one.conflicts)
                lines.append(one.student.text() + u"："_s + conflict);
        }
        runtime::warn(u"这些调整还不能执行：\n\n"_s + lines.join(u'\n'));
        return false;
    }
    const QString copy = backup == library::Backup::Make ? u"执行前会在成绩库旁边留一份备份。"_s
                                                         : u"这次不留备份，执行后不可恢复。"_s;
    const runtime::Choice choice{.text =
                                     u"要执行这些调整吗？\n\n"_s + plan.text() + u"\n\n"_s + copy,
                                 .buttons = {u"执行"_s, u"取消"_s},
                                 .safe = 1,
                                 .title = u"学生调整"_s};
    return runtime::choose(choice) != choice.safe;
}

bool StudentMoves::write(const MovePlan& asked, runtime::Progress& progress)
{
    database::WriteBatch batch(m_library.Conn);
    if (!(plan() == asked))
        throw Refusal(u"回答问题期间成绩库有改动，什么也没有写入。请再看一遍调整。"_s);
    MoveWriter writer(m_library.Conn);
    int done = 0;
    for (const PlannedStudent& one : asked.students) {
        progress.report(u"学生调整..."_s, done++, int(asked.students.size()));
        if (progress.cancelled())
            return false;
        writer.write(one);
    }
    batch.commit();
    return true;
}

void StudentMoves::tell(const MovePlan& done, runtime::Progress& progress)
{
    const QString text = u"调整完毕。\n\n"_s + done.text();
    if (done.staleExams.isEmpty()) {
        runtime::MsgBox(text);
        return;
    }
    const runtime::Choice choice{
        .text = text
                + u"\n\n这些考试的名次和总分还是调整以前算的：%1。\n现在重新计算吗？"_s.arg(
                    shownExams(done.staleExams)),
        .buttons = {u"现在计算"_s, u"以后再算"_s},
        .safe = 1,
        .title = u"学生调整"_s};
    if (runtime::choose(choice) != choice.safe)
        score(done.staleExams, progress);
}

void StudentMoves::score(const QStringList& exams, runtime::Progress& progress)
{
    scoring::Scoring scoring(m_library);
    for (int i = 0; i < exams.size() && !progress.cancelled(); ++i) {
        runtime::PartProgress one(progress, [&](const QString& text, int, int) {
            progress.report(text, i, int(exams.size()));
        });
        scoring.score(exams[i], one);
    }
    progress.finish();
}

} // namespace maintenance
