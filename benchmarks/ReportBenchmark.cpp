// The statistics of one exam in an open library that bench_scoring made.
//
//   bench_report tables LIBRARY EXAM          twelve reports, the exam read once for all of them;
//                                             prints milliseconds, and those of the slowest alone
//   bench_report analyze LIBRARY EXAM FOLDER  the comprehensive analysis, its workbooks saved

#include <cstdio>
#include <cstring>

#include <QDir>
#include <QElapsedTimer>

#include "benchmarks/Support.h"
#include "statistics/ComprehensiveAnalysis.h"
#include "statistics/NamedReports.h"

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
        if (count == 5 && std::strcmp(arguments[1], "analyze") == 0)
            return analyze(scores, exam, QString::fromLocal8Bit(arguments[4]));
    }
    std::fprintf(stderr, "usage: bench_report tables LIBRARY EXAM | analyze LIBRARY EXAM FOLDER\n");
    return 2;
}
