// A grid of 20,000 rows and 120 columns on the screen: showing it, refreshing it, and the frames of
// scrolling through it, each the median of many. Exit code 1 if a frame misses its goal.

#include <cstdio>

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>

#include "benchmarks/Support.h"
#include "platform/grid/ui/FlexGridView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int Rows = 20000;
constexpr int Cols = 120;
constexpr int Frames = 200;
constexpr double FrameGoalMs = 16;

/// A title, a heading, and classes of fifty rows each as one block.
void fill(grid::FlexGrid& grid)
{
    grid.setRows(Rows);
    grid.setCols(Cols);
    grid.FixedRows = 2;
    grid.FixedCols = 1;
    grid.MergeCells = 2;
    grid.setMergeRow(0, true);
    grid.setMergeCol(0, true);
    for (int row = 0; row < Rows; ++row) {
        for (int col = 0; col < Cols; ++col) {
            if (row == 0)
                grid.setTextMatrix(row, col, u"成绩统计"_s);
            else if (col == 0)
                grid.setTextMatrix(row, col, u"%1班"_s.arg(row / 50 + 1));
            else
                grid.setTextMatrix(row, col, QString::number((row * 7 + col * 13) % 1500 / 10.0));
        }
    }
}

double milliseconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

template <class Step> int frames(const char* what, grid::FlexGridView& view, Step&& step)
{
    std::vector<double> times;
    for (int frame = 0; frame < Frames; ++frame) {
        QElapsedTimer timer;
        timer.start();
        step(frame);
        view.viewport()->repaint();
        times.push_back(milliseconds(timer));
    }
    const double worst = *std::max_element(times.begin(), times.end());
    const double median = benchmark::median(times);
    std::printf("%-60s %.2f ms, worst %.2f ms (goal %.0f ms)\n", what, median, worst, FrameGoalMs);
    return median <= FrameGoalMs ? 0 : 1;
}

template <class Work> void once(const char* what, Work&& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    std::printf("%-60s %.1f ms\n", what, milliseconds(timer));
}

} // namespace

int main(int count, char* arguments[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    grid::FlexGrid grid;
    fill(grid);
    grid::FlexGridView view(grid);
    view.resize(1200, 760);
    once("show 20,000 rows x 120 columns", [&] {
        view.show();
        QApplication::processEvents();
    });
    once("refresh it", [&] {
        view.refresh();
        view.viewport()->repaint();
    });
    once("select all", [&] {
        view.selectAll();
        view.viewport()->repaint();
    });
    view.select(2, 1, 2, 1);
    const int down = frames("scroll down, a frame", view,
                            [&](int frame) { view.verticalScrollBar()->setValue(frame * 97); });
    const int across = frames("scroll across, a frame", view,
                              [&](int frame) { view.horizontalScrollBar()->setValue(frame * 31); });
    return down | across;
}
