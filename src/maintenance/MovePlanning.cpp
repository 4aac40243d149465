#include <algorithm>
#include <map>
#include <set>

#include "library/Students.h"
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

/// Who is the first of his class in 信息表, with what imports take for the class's.
struct FirstStudent
{
    const RosterStudent* student = nullptr;
    QString stream;
    QString category;
};

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
    /// Those of whom imports take stream and category of a class, by class.
    using FirstStudents = std::map<double, FirstStudent>;

    void add(const StudentMove& move, size_t index);
    void keep(PlannedStudent one);
    PlannedStudent planned(const StudentMove& move, size_t index, qint64 id) const;
    /// Nothing for a student who will be at none.
    std::optional<StudentPlace> placeAfter(const RosterStudent& student) const;
    Occupants occupants() const;
    void send(PlannedStudent& one, const std::optional<StudentPlace>& to, StreamAfter after) const;
    void sendTo(PlannedStudent& one, const RosterStudent& first, StreamAfter after) const;
    void checkPlace(PlannedStudent& one, const Occupants& there) const;
    void checkScores(PlannedStudent& one) const;
    static void noteScores(PlannedStudent& one);
    FirstStudents firstStudents() const;
    void noteFirstStudents();
    void noteFirst(double classNumber, const FirstStudent& before, const FirstStudent& after);
    QStringList staleExams() const;

    database::Connection& m_connection;
    SchoolRoster m_roster;
    std::vector<PlannedStudent> m_students;
    /// Where they stand in m_students, by ID.
    std::map<qint64, size_t> m_changes;
    /// The rows of 成绩表 that leave their places.
    std::set<qint64> m_leavingRows;
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
    if (one.scores == EarlierScores::GoAlong) {
        for (const EarlierScore& score : one.earlier)
            m_leavingRows.insert(score.row);
    }
    m_students.push_back(std::move(one));
}

PlannedStudent Planning::planned(const StudentMove& move, size_t index, qint64 id) const
{
    PlannedStudent one;
    one.move = index;
    one.kind = move.kind;
    one.scores = move.scores;
    one.student.id = id;
    if (const RosterStudent* known = m_roster.find(id))
        one.student = *known;
    else
        one.conflicts.append(u"成绩库里已经没有这名学生了。"_s);
    one.streamAfter = one.student.stream;
    one.categoryAfter = one.student.category;
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
    if (one.student.classOf() == to->classNumber)
        return;
    if (const RosterStudent* first = m_roster.firstOf(to->classNumber))
        sendTo(one, *first, after);
    else
        one.notes.append(u"成绩库里还没有 %1 班。"_s.arg(runtime::doubleText(to->classNumber)));
}

/// Into a class that has students.
void Planning::sendTo(PlannedStudent& one, const RosterStudent& first, StreamAfter after) const
{
    const QString classAfter = runtime::doubleText(one.to->classNumber);
    const auto change = [&](const QString& what, const QString& before, const QString& ofClass) {
        const bool isOther = !ofClass.isEmpty() && ofClass != before;
        if (isOther && after == StreamAfter::Kept)
            one.notes.append(
                u"%1 班的%2是“%3”，他仍是“%4”。"_s.arg(classAfter, what, ofClass, before));
        else if (isOther)
            one.notes.append(u"%1由“%2”改为“%3”。"_s.arg(what, before, ofClass));
        return isOther && after == StreamAfter::OfNewClass;
    };
    if (change(u"科类"_s, one.student.stream, first.stream))
        one.streamAfter = first.stream;
    if (change(u"类别代码"_s, one.student.category.text(), first.category.text()))
        one.categoryAfter = first.category;
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
        one.conflicts.append(text.arg(shownName(other.name), one.to->text()));
    }
}

/// Two rows of an exam at one place could not be told apart when scores are corrected.
void Planning::checkScores(PlannedStudent& one) const
{
    if (!one.to || one.scores == EarlierScores::Stay)
        return;
    database::Statement& rows = m_connection.prepared(
        u"select rowid, 考试名称 from 成绩表 where 班级=? and 学号=? order by rowid"_s);
    rows.bind({one.to->classNumber, one.to->number});
    std::set<QString> taken;
    while (rows.step()) {
        const bool isHis =
            std::ranges::find(one.earlier, rows.text(1), &EarlierScore::exam) != one.earlier.end();
        if (isHis && !m_leavingRows.contains(rows.integer(0)))
            taken.insert(rows.text(1));
    }
    if (!taken.empty())
        one.conflicts.append(
            u"%1 在 %2 里已经有别人的成绩，他的成绩不能一起改过去，请换一个学号。"_s.arg(
                one.to->text(), shownExams(inOrder(m_connection, std::move(taken)))));
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

/// As they will be after the changes.
Planning::FirstStudents Planning::firstStudents() const
{
    FirstStudents found;
    for (const RosterStudent& student : m_roster.students()) {
        const auto change = m_changes.find(student.id);
        if (change == m_changes.end()) {
            if (const std::optional<double> there = student.classOf())
                found.try_emplace(*there,
                                  FirstStudent{&student, student.stream, student.category.text()});
            continue;
        }
        const PlannedStudent& one = m_students[change->second];
        if (one.to)
            found.try_emplace(one.to->classNumber,
                              FirstStudent{&student, one.streamAfter, one.categoryAfter.text()});
    }
    return found;
}

/// Imports would give the class another stream or category without a word.
void Planning::noteFirstStudents()
{
    for (const auto& [classNumber, after] : firstStudents()) {
        if (const RosterStudent* first = m_roster.firstOf(classNumber))
            noteFirst(classNumber, {first, first->stream, first->category.text()}, after);
    }
}

/// Whoever becomes the first by the changes is told of, or else he who was it and goes.
void Planning::noteFirst(double classNumber, const FirstStudent& before, const FirstStudent& after)
{
    const auto change = m_changes.contains(after.student->id) ? m_changes.find(after.student->id)
                                                              : m_changes.find(before.student->id);
    const auto note = [&](const QString& what, const QString& was, const QString& will) {
        if (was != will && change != m_changes.end())
            m_students[change->second].notes.append(
                u"%1 班名单里的第一名学生将是“%2”，以后导入时 %1 班的%3由“%4”变为“%5”。"_s.arg(
                    runtime::doubleText(classNumber), shownName(after.student->name), what, was,
                    will));
    };
    note(u"科类"_s, before.stream, after.stream);
    note(u"类别代码"_s, before.category, after.category);
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
        checkScores(one);
        noteScores(one);
    }
    noteFirstStudents();
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
    const double highest = Planning(connection, moves).highestNumber(classNumber);
    return library::freeNumber(connection, classNumber, highest);
}

} // namespace maintenance
