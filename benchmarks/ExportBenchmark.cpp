// The score export of all students of a library that `bench_scoring make STUDENTS LIBRARY 6` made,
// over its first six exams, ten columns wide, with names, both averages and borders.
//
//   bench_export LIBRARY FILE         fills and saves the workbook; prints milliseconds and peak
//   bench_export LIBRARY FILE chart   the same with a chart for each student

#include <cstdio>

#include <QElapsedTimer>

#include "benchmarks/Support.h"
#include "export/ScoreExport.h"

namespace {

using namespace Qt::StringLiterals;

constexpr int exams = 6;

double elapsed(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

exporting::ScoreExportRequest requestFor(const library::Catalogue& catalogue)
{
    exporting::ScoreExportRequest request;
    request.exams = catalogue.ExamList.mid(0, exams);
    request.subjects = QStringList{u"语文"_s, u"总分"_s};
    for (const std::vector<library::ClassEntry>& stream : catalogue.ClassTable) {
        for (const library::ClassEntry& entry : stream)
            request.classes.append(QString::number(entry.number));
    }
    request.infoRow = true;
    request.classAverage = request.gradeAverage = {true, request.exams.first(), true};
    request.columns =
        QStringList{u"考试名称"_s, u"语文"_s,     u"语文年名"_s, u"数学"_s, u"数学年名"_s,
                    u"英语"_s,     u"英语年名"_s, u"物理"_s,     u"总分"_s, u"总分年名"_s};
    return request;
}

int exportAll(library::ScoreLibrary& scores, const QString& file, exporting::BlockLayout layout)
{
    exporting::ScoreExportRequest request = requestFor(scores.catalogue);
    request.layout = layout;
    excel::Applications applications;
    runtime::NoProgress progress;
    QElapsedTimer timer;
    timer.start();
    const exporting::ScoreExportResult result =
        exporting::exportScores(scores, request, applications, progress);
    const double filled = elapsed(timer);
    if (result.end != exporting::ExportEnd::Finished)
        return 1;
    result.book->SaveAs(file);
    std::printf("filled=%.1f saved=%.1f peak_mb=%.1f\n", filled, elapsed(timer) - filled,
                benchmark::peakMemory());
    return 0;
}

} // namespace

int main(int count, char* arguments[])
{
    benchmark::PrintedDialogs dialogs;
    if (count == 3 || count == 4) {
        library::ScoreLibrary scores(benchmark::programPaths(arguments[0]));
        scores.LibPath = QString::fromLocal8Bit(arguments[1]);
        scores.OpenDB();
        return exportAll(scores, QString::fromLocal8Bit(arguments[2]),
                         count == 4 ? exporting::BlockLayout::RankChart
                                    : exporting::BlockLayout::BlankRows);
    }
    std::fprintf(stderr, "usage: bench_export LIBRARY FILE [chart]\n");
    return 2;
}
