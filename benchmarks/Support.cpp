#include "benchmarks/Support.h"

#include <algorithm>
#include <cstdio>

#include <sys/resource.h>

#include <QFileInfo>

namespace benchmark {

using namespace Qt::StringLiterals;

using runtime::Answer;
using runtime::Buttons;

Answer PrintedDialogs::message(const QString& text, const QString&, Buttons buttons, runtime::Icon)
{
    if (text != u"导入完成！"_s && text != u"导出完成！"_s)
        failure(text);
    return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
}

void PrintedDialogs::failure(const QString& text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

runtime::AppPaths programPaths(const char* program)
{
    return runtime::AppPaths(QFileInfo(QString::fromLocal8Bit(program)).absolutePath());
}

double milliseconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double peakMemory()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

} // namespace benchmark
