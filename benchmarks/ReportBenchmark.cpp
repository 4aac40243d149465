// The statistics of one exam in an open library that bench_scoring made.
//
//   bench_report tables LIBRARY EXAM          twelve reports, the exam read once for all of them;
//                                             prints milliseconds, and those of the slowest alone
//   bench_report figures LIBRARY EXAM         every list behind a figure of the twelve reports;
//                                             prints how many, milliseconds of one, of the slowest
//   bench_report analyze LIBRARY EXAM FOLDER  the comprehensive analysis, its workbooks saved

#include <cstdio>
#include <cstring>

#include <QDir>
#include <QElapsedTimer>

#include "benchmarks/Support.h"
#include "library/ColumnNames.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "statistics/NamedReports.h"
#include "workbench/Browse.h"
#include "workbench/FigureList.h"

namespace {

using namespace Qt::StringLiterals;

const QStringList names{u"考试人数"_s,     u"高分段"_s,       u"各科优秀率"_s,
                        u"各科平均分"_s,   u"各科最高分"_s,   u"各科最低分"_s,
                        u"各科标准差"_s,   u"各分数段人数"_s, u"总分上线人数"_s,
                        u"各名次段人数"_s, u"各名次段均分"_s, u"历次考试进入年级前x名人数"_s};

double elapsed(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

int tables(library::ScoreLibrary& scores, const QString& exam)
{
    statistics::ReportContext context(scores);
    double slowest = 0;
    QElapsedTimer all;
    all.start();
    for (const QString& name : names) {
        QElapsedTimer timer;
        timer.start();
        grid::FlexGrid grid;
        QString exams = exam;
        statistics::namedReport(name)(context, exams, grid, statistics::Transfer::GridOnly);
        if (grid.Rows() < 3)
            return 1;
        slowest = std::max(slowest, elapsed(timer));
    }
    std::printf("total=%.2f slowest=%.2f\n", elapsed(all), slowest);
    return 0;
}

/// Times of all lists behind the grid's figures.
struct ListTimes
{
    int lists = 0;
    double sum = 0;
    double slowest = 0;
};

void list(library::ScoreLibrary& scores, const statistics::Figure& figure,
          const QStringList& columns, ListTimes& times)
{
    QElapsedTimer timer;
    timer.start();
    workbench::listStudents(scores, figure, columns);
    const double time = elapsed(timer);
    ++times.lists;
    times.sum += time;
    times.slowest = std::max(times.slowest, time);
}

int figures(library::ScoreLibrary& scores, const QString& exam)
{
    statistics::ReportContext context(scores);
    const QStringList columns =
        workbench::shownColumns(scores, library::ScoreFamily, library::AllStreams);
    ListTimes times;
    for (const QString& name : names) {
        grid::FlexGrid grid;
        QString exams = exam;
        statistics::namedReport(name)(context, exams, grid, statistics::Transfer::GridOnly);
        for (int row = 0; row < grid.Rows(); ++row) {
            for (int col = 0; col < grid.Cols(); ++col) {
                if (const auto figure = context.figures.at(grid, row, col))
                    list(scores, *figure, columns, times);
            }
        }
    }
    std::printf("lists=%d mean=%.3f slowest=%.3f\n", times.lists, times.sum / times.lists,
                times.slowest);
    return times.lists > 0 ? 0 : 1;
}

int analyze(library::ScoreLibrary& scores, const QString& exam, const QString& folder)
{
    statistics::ReportContext context(scores);
    excel::Application application;
    runtime::NoProgress progress;
    QElapsedTimer timer;
    timer.start();
    statistics::ZHFX(context, exam, application, progress);
    const double filled = elapsed(timer);
    for (int i = 1; i <= application.Workbooks().Count(); ++i)
        application.Workbooks().Item(i).SaveAs(QDir(folder).filePath(u"%1.xlsx"_s.arg(i)));
    std::printf("filled=%.1f total=%.1f peak_mb=%.1f\n", filled, elapsed(timer),
                benchmark::peakMemory());
    return application.Workbooks().Count() == 2 ? 0 : 1;
}

} // namespace

int main(int count, char* arguments[])
{
    benchmark::PrintedDialogs dialogs;
    if (count >= 4) {
        library::ScoreLibrary scores(benchmark::programPaths(arguments[0]));
        scores.LibPath = QString::fromLocal8Bit(arguments[2]);
        scores.OpenDB();
        const QString exam = QString::fromLocal8Bit(arguments[3]);
        if (count == 4 && std::strcmp(arguments[1], "tables") == 0)
            return tables(scores, exam);
        if (count == 4 && std::strcmp(arguments[1], "figures") == 0)
            return figures(scores, exam);
        if (count == 5 && std::strcmp(arguments[1], "analyze") == 0)
            return analyze(scores, exam, QString::fromLocal8Bit(arguments[4]));
    }
    std::fprintf(stderr,
                 "usage: bench_report tables|figures LIBRARY EXAM | analyze LIBRARY EXAM FOLDER\n");
    return 2;
}
