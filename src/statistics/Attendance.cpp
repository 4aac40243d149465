#include "platform/runtime/Numbers.h"
#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap attendanceTrap{" - Sub TJKSRS/Mdl_MDB"};

/// Sitting, absent, all.
using Counts = std::array<ExamFigures::ClassFigure, 3>;

QString attendance(const Counts& counts, double classNumber)
{
    QStringList texts;
    for (const ExamFigures::ClassFigure& count : counts)
        texts.append(runtime::doubleText(count(classNumber).value_or(0)));
    return texts.join(u'/');
}

} // namespace

void TJKSRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    if (!useLastExam(exams))
        return;
    ReportFrame frame(context, grid, exams, transfer, attendanceTrap);
    grid.FixedRows = 0;
    frame.clear();
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QStringList items = context.library.catalogue.GetKSKMZF(exams, frame.stream(i)).names;
        Block block = frame.block(
            i, {.title = frame.streamTitle(i, u"科"_s, u"考试人数"_s), .items = int(items.size())});
        grid.WordWrap = true;
        grid.setRowHeight(block.titleRow() + 1, 4 * grid.RowHeight(block.titleRow()));
        block.headNames(1);
        ExamFigures figures(context, exams, frame.stream(i), attendanceTrap);
        for (int k = 0; k < items.size(); ++k) {
            block.head(1, k, 0, items[k] + u"\n参试/缺考/总计"_s);
            const Counts counts{
                figures.figure(Aggregate::Count, items[k], sittingCondition(items[k])),
                figures.figure(Aggregate::Count, items[k], absentCondition(items[k])),
                figures.figure(Aggregate::Count, items[k])};
            block.note(0, k, 0, counts.back().meaning().as(FigureKind::Attendance));
            block.eachClass(0, exams, [&](int j, double classNumber) {
                block.set(j, 0, k, 0, attendance(counts, classNumber));
            });
        }
        frame.finish(i, block);
    }
    frame.setWidths({.all = 1100});
}

} // namespace statistics
