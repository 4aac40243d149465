#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "maintenance/MovePlan.h"
#include "maintenance/QuotedText.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using Kind = StudentMove::Kind;

namespace {

/// The rows with his ID, and those without any that have his class, number and name.
std::vector<EarlierScore> scoresOf(database::Connection& connection, const RosterStudent& student)
{
    database::Statement& rows = connection.prepared(
        u"select rowid, 考试名称, 班级, 科类 from 成绩表 where id=?1 or (班级=?2 and 学号=?3 and "
        "ifnull(id, 0)=0 and 姓名=?4) order by rowid"_s);
    rows.bind({student.id, student.classNumber, student.number, student.name});
    std::vector<EarlierScore> found;
    while (rows.step())
        found.push_back({rows.integer(0), rows.text(1), rows.value(2), rows.text(3)});
    return found;
}

/// Those of the exams that 考试名称表 has, by their numbers, then the others.
QStringList inOrder(database::Connection& connection, std::set<QString> exams)
{
    QStringList ordered;
    database::Statement& rows =
        connection.prepared(u"select 考试名称 from 考试名称表 order by 考试编号, rowid"_s);
    rows.reset();
    while (rows.step()) {
        if (exams.erase(rows.text(0)) > 0)
            ordered.append(rows.text(0));
    }
    for (const QString& exam : exams)
        ordered.append(exam);
    return ordered;
}

/// Makes a plan of changes over one state of the library.
class Planning
{
public:
    Planning(database::Connection& connection, const std::vector<StudentMove>& moves)
        : m_connection(connection), m_roster(connection)
    {
        for (size_t i = 0; i < moves.size(); ++i)
            add(moves[i], i);
    }

    MovePlan plan();
    double highestNumber(double classNumber) const;

private:
    /// Who will be at a place.
    using Occupants = std::multimap<StudentPlace, const RosterStudent*>;

    void add(const StudentMove& move, size_t index);
    void keep(PlannedStudent one);
    PlannedStudent planned(const StudentMove& move, size_t index, qint64 id) const;
    /// Nothing for a student who will be at none.
    std::optional<StudentPlace> placeAfter(const RosterStudent& student) const;
    Occupants occupants() const;
    void send(PlannedStudent& one, const std::optional<StudentPlace>& to, StreamAfter after) const;
    void checkPlace(PlannedStudent& one, const Occupants& there) const;
    static void noteScores(PlannedStudent& one);
    QStringList staleExams() const;

    database::Connection& m_connection;
    SchoolRoster m_roster;
    std::vector<PlannedStudent> m_students;
    /// Where they stand in m_students, by ID.
    std::map<qint64, size_t> m_changes;
};

void Planning::add(const StudentMove& move, size_t index)
{
    PlannedStudent first = planned(move, index, move.id);
    if (move.kind == Kind::Move)
        send(first, move.to, move.stream);
    if (move.kind != Kind::Swap)
        return keep(std::move(first));
    PlannedStudent second = planned(move, index, move.other);
    send(first, second.student.place(), move.stream);
    send(second, first.student.place(), move.stream);
    keep(std::move(first));
    keep(std::move(second));
}

void Planning::keep(PlannedStudent one)
{
    m_changes.emplace(one.student.id, m_students.size());
    m_students.push_back(std::move(one));
}

PlannedStudent Planning::planned(const StudentMove& move, size_t index, qint64 id) const
{
    PlannedStudent one;
    one.move = index;
    one.scores = move.scores;
    one.student.id = id;
    if (const RosterStudent* known = m_roster.find(id))
        one.student = *known;
    else
        one.conflicts.append(u"成绩库里已经没有这名学生了。"_s);
    one.streamAfter = one.student.stream;
    one.earlier = scoresOf(m_connection, one.student);
    return one;
}

void Planning::send(PlannedStudent& one, const std::optional<StudentPlace>& to,
                    StreamAfter after) const
{
    one.to = to;
    if (!to) {
        one.conflicts.append(u"两人都要有班级和学号才能交换。"_s);
        return;
    }
    const QString classAfter = runtime::doubleText(to->classNumber);
    if (!m_roster.hasClass(to->classNumber))
        one.notes.append(u"成绩库里还没有 %1 班。"_s.arg(classAfter));
    const QString stream = m_roster.streamOf(to->classNumber).value_or(one.student.stream);
    if (stream == one.student.stream)
        return;
    if (after == StreamAfter::Kept) {
        one.notes.append(
            u"%1 班的科类是“%2”，他仍是“%3”。"_s.arg(classAfter, stream, one.student.stream));
    } else {
        one.notes.append(u"科类由“%1”改为“%2”。"_s.arg(one.student.stream, stream));
        one.streamAfter = stream;
    }
}

std::optional<StudentPlace> Planning::placeAfter(const RosterStudent& student) const
{
    const auto change = m_changes.find(student.id);
    return change != m_changes.end() ? m_students[change->second].to : student.place();
}

Planning::Occupants Planning::occupants() const
{
    Occupants there;
    for (const RosterStudent& student : m_roster.students()) {
        if (const std::optional<StudentPlace> place = placeAfter(student))
            there.emplace(*place, &student);
    }
    return there;
}

void Planning::checkPlace(PlannedStudent& one, const Occupants& there) const
{
    if (!one.to)
        return;
    if (one.to == one.student.place() && one.scores == EarlierScores::Stay)
        one.conflicts.append(u"他现在就在 %1。"_s.arg(one.to->text()));
    const auto [first, last] = there.equal_range(*one.to);
    for (auto it = first; it != last; ++it) {
        const RosterStudent& other = *it->second;
        if (other.id == one.student.id)
            continue;
        const QString text =
            m_changes.contains(other.id) ? u"“%1”也要到 %2。"_s : u"%2 已经是“%1”。"_s;
        one.conflicts.append(text.arg(quoted(other.name.simplified()), one.to->text()));
    }
}

/// What earlier scores do that go along into a class of another stream, or stay without a student.
void Planning::noteScores(PlannedStudent& one)
{
    const bool stays = one.scores == EarlierScores::Stay;
    if (!one.to && stays && !one.earlier.empty())
        one.notes.append(u"以前的成绩留下，那些考试的名次和统计里还有他。"_s);
    if (!one.to || stays)
        return;
    const auto others =
        std::count_if(one.earlier.begin(), one.earlier.end(),
                      [&](const EarlierScore& score) { return score.stream != one.streamAfter; });
    if (others > 0)
        one.notes.append(u"以前的成绩里有 %1 条不是科类“%2”的，按班统计时不在新班里。"_s.arg(
            QString::number(others), one.streamAfter));
}

QStringList Planning::staleExams() const
{
    std::set<QString> exams;
    for (const PlannedStudent& one : m_students) {
        for (const EarlierScore& score : one.earlier) {
            if (one.makesStale(score))
                exams.insert(score.exam);
        }
    }
    return inOrder(m_connection, std::move(exams));
}

MovePlan Planning::plan()
{
    const Occupants there = occupants();
    for (PlannedStudent& one : m_students) {
        checkPlace(one, there);
        noteScores(one);
    }
    return {.students = m_students, .staleExams = staleExams()};
}

double Planning::highestNumber(double classNumber) const
{
    double highest = 0;
    for (const auto& [place, student] : occupants()) {
        if (place.classNumber == classNumber)
            highest = std::max(highest, place.number);
    }
    return highest;
}

} // namespace

MovePlan planMoves(database::Connection& connection, const std::vector<StudentMove>& moves)
{
    const database::ReadBatch reading(connection);
    return Planning(connection, moves).plan();
}

double freeNumber(database::Connection& connection, const std::vector<StudentMove>& moves,
                  double classNumber)
{
    const database::ReadBatch reading(connection);
    return std::floor(Planning(connection, moves).highestNumber(classNumber)) + 1;
}

} // namespace maintenance
