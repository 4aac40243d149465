// Choosing another student of 3,000, with 12 and with 60 exams and all 12 columns ticked, up to the
// painted chart, beside asking for each point by itself; and the PDF file of a class of 60.
// Medians; exit code 1 if a goal is missed.

#include <cstdio>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "benchmarks/Support.h"
#include "individual/ChartColors.h"
#include "individual/paint/ClassCharts.h"
#include "individual/paint/PaintingApplication.h"
#include "individual/paint/RankChartPainter.h"
#include "library/ColumnNames.h"
#include "library/NewLibrary.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/database/WriteBatch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int students = 3000;
constexpr int ofAClass = 60;
constexpr int rounds = 31;
constexpr double dotsPerTwip = 96.0 / 1440;

using Row = std::vector<runtime::Value>;

void insertRow(database::Connection& conn, const QString& table, const QStringList& columns,
               const Row& row)
{
    database::Statement& insert = conn.prepared(
        database::sqlWith(u"insert into %1 (%2) values (%3)"_s,
                          {database::SqlPiece::name(table), database::SqlPiece::names(columns),
                           database::SqlPiece::places(1, int(columns.size()))}));
    insert.bind(row);
    insert.run();
}

QStringList scoreColumns(const QStringList& subjects)
{
    QStringList columns;
    for (const QString& subject : subjects)
        columns << subject << library::gradeRankColumn(subject) << library::classRankColumn(subject)
                << library::zScoreColumn(subject) << library::tScoreColumn(subject);
    return columns;
}

void fill(database::Connection& conn, int exams, const QStringList& subjects)
{
    database::WriteBatch batch(conn);
    const QStringList numbers = scoreColumns(subjects);
    for (int exam = 1; exam <= exams; ++exam)
        insertRow(conn, u"考试名称表"_s, {u"考试名称"_s, u"科类"_s, u"考试编号"_s},
                  {u"第%1次"_s.arg(exam), u"理"_s, exam});
    for (int student = 0; student < students; ++student) {
        const Row place{student + 1, student / ofAClass + 1, student % ofAClass + 1,
                        u"学生%1"_s.arg(student), u"理"_s};
        const QStringList columns{u"id"_s, u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s};
        insertRow(conn, u"信息表"_s, columns, place);
        for (int exam = 1; exam <= exams; ++exam) {
            Row row = place;
            row.insert(row.end(), {u"第%1次"_s.arg(exam), exam});
            for (int i = 0; i < numbers.size(); ++i)
                row.emplace_back((student * 13 + exam * 7 + i) % students + 1);
            insertRow(conn, u"成绩表"_s,
                      columns + QStringList{u"考试名称"_s, u"考试编号"_s} + numbers, row);
        }
    }
    batch.commit();
}

template <class Work> double medianMilliseconds(int count, const Work& work)
{
    std::vector<double> times;
    for (int round = 0; round < count; ++round) {
        QElapsedTimer timer;
        timer.start();
        work(round * 37 % students + 1);
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return benchmark::median(times);
}

int judged(const char* what, double milliseconds, double goal)
{
    std::printf("%-52s %8.2f ms (goal %.0f ms)\n", what, milliseconds, goal);
    return milliseconds < goal ? 0 : 1;
}

std::vector<individual::TickedColumn> allColumns(library::ScoreLibrary& scores)
{
    individual::ChartColors colors(scores);
    colors.load();
    std::vector<individual::TickedColumn> ticked;
    for (const QString& column : scores.catalogue.AllColumns)
        ticked.push_back({column, colors.color(int(ticked.size()) + 1)});
    return ticked;
}

/// What a click on a student costs below the screen.
void choose(library::ScoreLibrary& scores, individual::StudentExams& student, qint64 id,
            const std::vector<individual::TickedColumn>& ticked, QImage& surface)
{
    const QString title = individual::studentTitle(scores, id);
    student.ShowGeRenCJ(id);
    individual::RankChartRequest request =
        individual::readRanks(scores, student, ticked, individual::RankKind::Grade);
    request.width = surface.width() / dotsPerTwip;
    request.height = surface.height() / dotsPerTwip;
    const individual::RankChart chart = individual::rankChart(request);
    surface.fill(Qt::white);
    QPainter painter(&surface);
    individual::RankChartPainter(chart, dotsPerTwip, QGuiApplication::font()).paint(painter);
}

/// The ranks as two statements a point.
void askEachPoint(library::ScoreLibrary& scores, qint64 id,
                  const std::vector<individual::TickedColumn>& ticked)
{
    for (const individual::TickedColumn& column : ticked) {
        for (const QString& exam : std::as_const(scores.catalogue.ExamList)) {
            scores.students.GetMC(exam, library::gradeRankColumn(column.name), id);
            scores.students.GetZRS(u"理"_s, 0);
        }
    }
}

int measure(const runtime::AppPaths& paths, int exams, double goal)
{
    const QTemporaryDir folder;
    library::ScoreLibrary scores(paths);
    scores.LibPath = folder.filePath(u"个人.CJK"_s);
    const QStringList subjects{u"语文"_s, u"数学"_s, u"英语"_s,     u"物理"_s,
                               u"化学"_s, u"生物"_s, u"政治"_s,     u"历史"_s,
                               u"地理"_s, u"文综"_s, u"理科总分"_s, u"总分"_s};
    library::NewLibrary(scores).create(subjects);
    fill(scores.Conn, exams, subjects);
    scores.OpenDB();
    const std::vector<individual::TickedColumn> ticked = allColumns(scores);
    individual::StudentExams student(scores);
    QImage surface(1200, 500, QImage::Format_RGB32);
    std::printf("%d exams, %zu columns ticked\n", exams, ticked.size());
    const double chosen = medianMilliseconds(
        rounds, [&](qint64 id) { choose(scores, student, id, ticked, surface); });
    const double asked =
        medianMilliseconds(3, [&](qint64 id) { askEachPoint(scores, id, ticked); });
    std::printf("%-52s %8.2f ms\n", "  ranks asked for point by point", asked);
    int missed = judged("  another student, painted", chosen, goal);
    const individual::ClassChartsRequest request{7, ticked, individual::RankKind::Grade};
    runtime::NoProgress progress;
    missed +=
        judged("  PDF of a class of 60",
               medianMilliseconds(3,
                                  [&](qint64) {
                                      individual::exportClassCharts(
                                          scores, request, folder.filePath(u"班.pdf"_s), progress);
                                  }),
               2000);
    return missed;
}

} // namespace

int main(int, char** argv)
{
    const individual::PaintingApplication application(argv[0]);
    const benchmark::PrintedDialogs dialogs;
    const runtime::AppPaths paths = benchmark::programPaths(argv[0]);
    return measure(paths, 12, 16) + measure(paths, 60, 50) > 0 ? 1 : 0;
}
