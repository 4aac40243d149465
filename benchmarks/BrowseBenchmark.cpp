// Browsing 12,000 rows of 100 columns into a grid, and opening a library of 60 exams of 3,000
// students with their photos. Medians of five; exit code 1 if a goal is missed.
//
//   bench_browse                 both
//   bench_browse LIBRARY EXAM    all columns of one exam of a library; prints milliseconds

#include <cstdio>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "library/NewLibrary.h"
#include "platform/database/Recordset.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"
#include "workbench/Browse.h"
#include "workbench/Offers.h"
#include "workbench/ScoreQuery.h"

using namespace Qt::StringLiterals;

namespace {

struct Size
{
    int students;
    int exams;
    int photoBytes;
};

QString examName(int exam)
{
    return u"第%1次考试"_s.arg(exam);
}

/// Fills a table by one prepared statement; `values` gives the columns of a row.
template <class Values>
void fill(database::Connection& connection, const QString& table, const QStringList& columns,
          int rows, Values&& values)
{
    const QString marks = QStringList(columns.size(), u"?"_s).join(u',');
    database::Statement& insert = connection.prepared(
        u"insert into %1 ([%2]) values (%3)"_s.arg(table, columns.join(u"],["_s), marks));
    for (int row = 0; row < rows; ++row) {
        insert.bind(values(row));
        insert.step();
    }
}

std::vector<runtime::Value> studentRow(int student, const QByteArray& photo)
{
    return {student + 1,      student / 50 + 1,
            student % 50 + 1, u"学生%1"_s.arg(student),
            u"理"_s,          1,
            u"照片.jpg"_s,    photo};
}

/// Every column of 成绩表 behind the named ones gets a number of its own.
std::vector<runtime::Value> scoreRow(int student, const QString& exam, int numbers)
{
    std::vector<runtime::Value> row{
        student + 1, student / 50 + 1, student % 50 + 1, u"学生%1"_s.arg(student), u"理"_s, 1,
        exam};
    for (int i = 0; i < numbers; ++i)
        row.emplace_back(i % 5 == 0 ? (student * 7 + i) % 300 / 2.0
                                    : double((student * 13 + i) % 3000));
    return row;
}

QStringList numberColumns(database::Connection& connection, const QStringList& named)
{
    database::Recordset rows;
    rows.Open(u"select * from 成绩表"_s, connection);
    QStringList columns;
    for (int i = 0; i < rows.fieldCount(); ++i) {
        const QString name = rows.Fields(i).Name();
        if (!named.contains(name, Qt::CaseInsensitive) && name != u"备注")
            columns.append(name);
    }
    return columns;
}

void fillLibrary(database::Connection& connection, const Size& size)
{
    database::WriteBatch batch(connection);
    const QByteArray photo(size.photoBytes, 'x');
    fill(connection, u"信息表"_s,
         {u"ID"_s, u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s, u"类别代码"_s, u"照片名"_s,
          u"照片"_s},
         size.students, [&](int student) { return studentRow(student, photo); });
    const QStringList named{u"id"_s,   u"班级"_s,     u"学号"_s,    u"姓名"_s,
                            u"科类"_s, u"类别代码"_s, u"考试名称"_s};
    const QStringList numbers = numberColumns(connection, named);
    for (int exam = 1; exam <= size.exams; ++exam) {
        fill(connection, u"考试名称表"_s, {u"考试名称"_s, u"科类"_s, u"考试编号"_s}, 1, [&](int) {
            return std::vector<runtime::Value>{examName(exam), u"理"_s, exam};
        });
        fill(connection, u"成绩表"_s, named + numbers, size.students,
             [&](int student) { return scoreRow(student, examName(exam), int(numbers.size())); });
    }
    batch.commit();
}

QStringList subjects(int count)
{
    QStringList names;
    for (int i = 1; i <= count; ++i)
        names.append(u"科目%1"_s.arg(i));
    return names << u"总分"_s;
}

template <class Work> double medianSeconds(Work&& work)
{
    std::vector<double> seconds;
    for (int round = 0; round < 5; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        seconds.push_back(double(timer.nsecsElapsed()) / 1e9);
    }
    return benchmark::median(seconds);
}

/// Prints the figure; 1 if the goal is missed.
int judged(const char* what, double seconds, double goal)
{
    std::printf("%-60s %.3f s (goal %.1f s)\n", what, seconds, goal);
    return seconds < goal ? 0 : 1;
}

int browse(const runtime::AppPaths& paths)
{
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    scores.LibPath = folder.filePath(u"浏览.CJK"_s);
    library::NewLibrary(scores).create(subjects(20));
    fillLibrary(scores.Conn, {12000, 1, 0});
    scores.OpenDB();
    const QString sql = workbench::rowsSql({scores.catalogue.ExamList,
                                            workbench::classes(scores.catalogue),
                                            workbench::categories(scores),
                                            {}});
    const QStringList items =
        QStringList{u"班级"_s, u"学号"_s, u"姓名"_s, u"考试名称"_s}
        + numberColumns(scores.Conn, {u"id"_s, u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s,
                                      u"类别代码"_s, u"考试名称"_s})
              .mid(0, 96);
    grid::FlexGrid grid;
    runtime::NoProgress progress;
    const double seconds =
        medianSeconds([&] { workbench::ShowKSCJmain(scores, sql, items, grid, progress); });
    if (grid.Rows() != 12001 || grid.Cols() != 100 || grid.TextMatrix(12000, 99).isEmpty())
        return 1;
    return judged("browse 12,000 rows x 100 columns", seconds, 1.0);
}

int open(const runtime::AppPaths& paths)
{
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    scores.LibPath = folder.filePath(u"大库.CJK"_s);
    library::NewLibrary(scores).create(subjects(9));
    fillLibrary(scores.Conn, {3000, 60, 100 * 1024});
    QStringList classes;
    const double seconds = medianSeconds([&] {
        scores.OpenDB();
        classes = workbench::classes(scores.catalogue);
        workbench::sortColumns(scores);
        workbench::statisticsItems(scores);
        workbench::categories(scores);
    });
    if (scores.catalogue.ExamList.size() != 60 || classes.size() != 60)
        return 1;
    return judged("open 60 exams x 3,000 students with 3,000 photos of 100 KB", seconds, 0.3);
}

int browseExam(const runtime::AppPaths& paths, const QString& path, const QString& exam)
{
    library::ScoreLibrary scores(paths);
    scores.LibPath = path;
    scores.OpenDB();
    const QStringList items = numberColumns(scores.Conn, {});
    grid::FlexGrid grid;
    runtime::NoProgress progress;
    const double seconds = medianSeconds([&] {
        const QString sql = workbench::rowsSql(
            {{exam}, workbench::classes(scores.catalogue), workbench::categories(scores), {}});
        workbench::ShowKSCJmain(scores, sql, items, grid, progress);
    });
    std::printf("rows=%d total=%.2f\n", grid.Rows() - 1, seconds * 1000);
    return grid.Rows() > 1 ? 0 : 1;
}

} // namespace

int main(int count, char* arguments[])
{
    benchmark::PrintedDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(arguments[0]);
    if (count == 3)
        return browseExam(paths, QString::fromLocal8Bit(arguments[1]),
                          QString::fromLocal8Bit(arguments[2]));
    return browse(paths) | open(paths);
}
