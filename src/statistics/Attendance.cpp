#include "platform/runtime/Numbers.h"
#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap trap{" - Sub TJKSRS/Mdl_MDB"};

/// Sitting, absent, all.
using Counts = std::array<Condition, 3>;

QString attendance(ExamFigures& figures, const QString& item, double classNumber,
                   const Counts& conditions)
{
    QStringList counts;
    for (const Condition& condition : conditions)
        counts.append(runtime::doubleText(
            figures.figure(Aggregate::Count, item, classNumber, condition).value_or(0)));
    return counts.join(u'/');
}

} // namespace

void TJKSRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    if (!useLastExam(exams))
        return;
    ReportFrame frame(context, grid, exams, transfer, trap);
    grid.FixedRows = 0;
    frame.clear();
    for (int i = 0; i < frame.streamCount(); ++i) {
        context.library.catalogue.GetKSKMZF(exams, frame.stream(i));
        const QStringList items = context.library.catalogue.ExamColumns.names;
        Block block(
            grid, frame.classes(i),
            {.title = frame.streamTitle(i, u"科"_s, u"考试人数"_s), .items = int(items.size())});
        grid.WordWrap = true;
        grid.setRowHeight(block.titleRow() + 1, 4 * grid.RowHeight(block.titleRow()));
        block.headNames(1);
        ExamFigures figures(context, exams, frame.stream(i), trap);
        for (int k = 0; k < items.size(); ++k) {
            block.head(1, k, 0, items[k] + u"\n参试/缺考/总计"_s);
            const Counts counts{Condition(items[k] + u">=0"_s), Condition(items[k] + u"<0"_s),
                                Condition()};
            block.eachClass(0, exams, [&](int j, double classNumber) {
                block.set(j, 0, k, 0, attendance(figures, items[k], classNumber, counts));
            });
        }
        frame.finish(i, block);
    }
    frame.setWidths({.all = 1100});
}

} // namespace statistics
