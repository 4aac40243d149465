// Scoring one exam until the commit returns.
//
//   bench_scoring make STUDENTS LIBRARY [EXAMS]   a library of 40 (or EXAMS) scored exams and the
//                                                 pending one
//   bench_scoring run LIBRARY                     scores the pending exam; prints milliseconds and
//                                                 peak memory
//
// A run writes to the library that it is given: pass a fresh copy.

#include <cstdio>
#include <cstring>
#include <random>

#include <QElapsedTimer>

#include "benchmarks/Support.h"
#include "library/NewLibrary.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "scoring/Scoring.h"

namespace {

using namespace Qt::StringLiterals;

constexpr int usualExams = 40;
constexpr int studentsInClass = 60;
const QString pendingExam = u"待算考试"_s;

const QStringList subjects{u"语文"_s, u"数学"_s, u"英语"_s, u"物理"_s, u"化学"_s,
                           u"生物"_s, u"政治"_s, u"历史"_s, u"地理"_s};
const QStringList totals{u"总分"_s, u"三科总分"_s};

double fullMark(qsizetype subject)
{
    return subject < 3 ? 150 : 100;
}

/// Two fifths of the classes are 文.
QString streamOf(int classNumber, int classes)
{
    return classNumber <= classes * 2 / 5 ? u"文"_s : u"理"_s;
}

void addStudents(database::Connection& conn, int students)
{
    database::Statement& insert =
        conn.prepared(u"insert into 信息表(班级,学号,姓名,科类,类别代码) values(?,?,?,?,1)"_s);
    const int classes = students / studentsInClass;
    for (int i = 0; i < students; ++i) {
        const int classNumber = i / studentsInClass + 1;
        insert.bind({classNumber, i % studentsInClass + 1, u"学生%1"_s.arg(i),
                     streamOf(classNumber, classes)});
        insert.run();
    }
}

void addExam(database::Connection& conn, const QString& exam, int number)
{
    for (const QString& stream : {u"文"_s, u"理"_s}) {
        QStringList marks;
        for (qsizetype i = 0; i < subjects.size(); ++i)
            marks.append(QString::number(fullMark(i)));
        conn.Execute(u"insert into 考试名称表(考试名称,科类,考试编号,%1) values('%2','%3',%4,%5,"
                     "'%6','语文+数学+英语')"_s.arg((subjects + totals).join(u','), exam, stream)
                         .arg(number)
                         .arg(marks.join(u','), subjects.join(u'+')));
    }
}

/// Half marks around two thirds of the full mark; 2 % of the papers are absences.
double score(std::mt19937& random, qsizetype subject)
{
    if (random() % 50 == 0)
        return -1;
    std::normal_distribution<double> around(0.63, 0.15);
    const double mark = std::round(around(random) * fullMark(subject) * 2) / 2;
    return std::clamp(mark, 0.0, fullMark(subject));
}

void addScores(database::Connection& conn, const QString& exam, int number, std::mt19937& random)
{
    database::Statement& students =
        conn.prepared(u"select ID, 班级, 学号, 姓名, 科类 from 信息表 order by rowid"_s);
    database::Statement& insert = conn.prepared(
        u"insert into 成绩表(id,班级,学号,姓名,科类,类别代码,考试名称,考试编号,%1) "
        "values(?,?,?,?,?,1,?,?%2)"_s.arg(subjects.join(u','), u",?"_s.repeated(subjects.size())));
    students.reset();
    while (students.step()) {
        std::vector<runtime::Value> row;
        for (int i = 0; i < 5; ++i)
            row.push_back(students.value(i));
        row.emplace_back(exam);
        row.emplace_back(number);
        for (qsizetype i = 0; i < subjects.size(); ++i)
            row.emplace_back(score(random, i));
        insert.bind(row);
        insert.run();
    }
}

int make(const runtime::AppPaths& paths, int students, const QString& path, int scoredExams)
{
    library::ScoreLibrary scores(paths);
    scores.LibPath = path;
    library::NewLibrary(scores).create(subjects + totals);
    std::mt19937 random(20240901);
    {
        database::WriteBatch batch(scores.Conn);
        addStudents(scores.Conn, students);
        for (int exam = 1; exam <= scoredExams + 1; ++exam) {
            const QString name = exam > scoredExams ? pendingExam : u"第%1次考试"_s.arg(exam, 2);
            addExam(scores.Conn, name, exam);
            addScores(scores.Conn, name, exam, random);
        }
        batch.commit();
    }
    scores.OpenDB();
    scoring::Scoring scoring(scores);
    runtime::NoProgress progress;
    for (const QString& exam : std::as_const(scores.catalogue.ExamList)) {
        if (exam != pendingExam && !scoring.score(exam, progress))
            return 1;
    }
    return 0;
}

/// True if every student of the pending exam has its ranks.
bool isScored(database::Connection& conn)
{
    database::Statement& open = conn.prepared(
        u"select count(*), sum(总分年名 is null or 语文Z分 is null) from 成绩表 where 考试名称=?"_s);
    open.bind({pendingExam});
    return open.step() && open.integer(0) > 0 && open.integer(1) == 0;
}

int run(const runtime::AppPaths& paths, const QString& path)
{
    QElapsedTimer timer;
    timer.start();
    library::ScoreLibrary scores(paths);
    scores.LibPath = path;
    scores.OpenDB();
    const double opened = double(timer.nsecsElapsed()) / 1e6;
    runtime::NoProgress progress;
    const bool done = scoring::Scoring(scores).score(pendingExam, progress);
    const double total = double(timer.nsecsElapsed()) / 1e6;
    std::printf("open=%.2f total=%.2f peak_mb=%.1f\n", opened, total, benchmark::peakMemory());
    return done && isScored(scores.Conn) ? 0 : 1;
}

} // namespace

int main(int count, char* arguments[])
{
    benchmark::PrintedDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    if ((count == 4 || count == 5) && std::strcmp(arguments[1], "make") == 0)
        return make(paths, QByteArray(arguments[2]).toInt(), QString::fromLocal8Bit(arguments[3]),
                    count == 5 ? QByteArray(arguments[4]).toInt() : usualExams);
    if (count == 3 && std::strcmp(arguments[1], "run") == 0)
        return run(paths, QString::fromLocal8Bit(arguments[2]));
    std::fprintf(
        stderr, "usage: bench_scoring make STUDENTS LIBRARY [EXAMS] | bench_scoring run LIBRARY\n");
    return 2;
}
