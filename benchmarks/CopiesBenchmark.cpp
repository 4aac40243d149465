// Comparing a library of 60 exams of 3,000 students, all columns filled, with a copy of it that
// differs, and restoring the copy. Medians of five; exit code 1 if comparing takes a second.
//
//   bench_copies

#include <cstdio>
#include <ctime>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "library/CopyDifferences.h"
#include "library/LibraryRestore.h"
#include "library/NewLibrary.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int exams = 60;
constexpr int rounds = 5;
constexpr double goal = 1000;

const QStringList subjects{u"语文"_s, u"数学"_s, u"英语"_s, u"物理"_s, u"化学"_s,
                           u"生物"_s, u"政治"_s, u"历史"_s, u"地理"_s, u"总分"_s};

QString examName(int exam)
{
    return u"第%1次考试"_s.arg(exam);
}

void fillStudents(database::Connection& connection)
{
    database::Statement& insert =
        connection.prepared(u"insert into 信息表 (班级,学号,姓名,科类) values (?,?,?,'理')"_s);
    for (int student = 0; student < students; ++student) {
        insert.bind({student / 50 + 1, student % 50 + 1, u"学生%1"_s.arg(student)});
        insert.step();
    }
}

/// Every column behind the named ones gets a number of its own.
void fillScores(database::Connection& connection)
{
    QStringList names;
    for (const database::Column& column : connection.columns(u"成绩表"_s)) {
        if (column.type.isNumeric() && column.name != "id"_L1)
            names.append(column.name);
    }
    const auto count = int(names.size());
    database::Statement insert(connection,
                               database::sqlWith(u"insert into 成绩表 (id,考试名称,姓名,科类%1) "
                                                 "values (?1,?2,?3,'理',%2)"_s,
                                                 {database::SqlPiece::moreNames(names),
                                                  database::SqlPiece::places(4, count)}));
    for (int row = 0; row < students * exams; ++row) {
        const int student = row % students;
        std::vector<runtime::Value> values{student + 1, examName(row / students),
                                           u"学生%1"_s.arg(student)};
        for (int i = 0; i < count; ++i)
            values.emplace_back((row * 7 + i * 13) % 1500 / 10.0);
        insert.bind(values);
        insert.step();
    }
}

void fill(database::Connection& connection)
{
    database::WriteBatch batch(connection);
    fillStudents(connection);
    for (int exam = 0; exam < exams; ++exam) {
        database::Statement& insert =
            connection.prepared(u"insert into 考试名称表 (考试名称,科类) values (?,'理')"_s);
        insert.bind({examName(exam)});
        insert.step();
    }
    fillScores(connection);
    batch.commit();
}

double compared(library::ScoreLibrary& scores, const QString& copy)
{
    std::vector<double> times;
    runtime::NoProgress progress;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t begun = std::clock();
        const auto found = library::compareWithCopy(scores.Conn, copy, progress);
        times.push_back(benchmark::milliseconds(timer));
        // On a busy machine the processor's time says more.
        std::printf("  %zu exams differ, %zu students moved; %.0f ms of the processor\n",
                    found->examsChanged.size(), found->studentsMoved.size(),
                    double(std::clock() - begun) * 1000 / CLOCKS_PER_SEC);
    }
    return benchmark::median(times);
}

} // namespace

int main(int, char** argv)
{
    const benchmark::PrintedDialogs dialogs;
    const QTemporaryDir folder;
    library::ScoreLibrary scores(benchmark::programPaths(argv[0]));
    scores.LibPath = folder.filePath(u"大库.CJK"_s);
    library::NewLibrary(scores).create(subjects);
    scores.OpenDB();
    fill(scores.Conn);
    runtime::NoProgress progress;
    const QString copy = library::backUpLibrary(scores.LibPath, QDateTime::currentDateTime(),
                                                {u"重新分班"_s}, progress);
    scores.Conn.Execute(u"update 成绩表 set 语文=语文+1 where 考试名称='第7次考试'"_s);
    scores.Conn.Execute(u"update 信息表 set 班级=99 where 班级=1"_s);
    std::printf("library of %.0f MB\n", double(QFileInfo(copy).size()) / 1e6);
    const double comparing = compared(scores, copy);
    QElapsedTimer timer;
    timer.start();
    library::restoreLibrary(scores, scores.LibPath, copy, {u"恢复备份"_s}, progress);
    std::printf("comparing %.0f ms (goal %.0f), restoring %.0f ms, peak %.0f MB\n", comparing, goal,
                benchmark::milliseconds(timer), benchmark::peakMemory());
    return comparing < goal ? 0 : 1;
}
