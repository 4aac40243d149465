#include "statistics/LineTable.h"
#include "statistics/RankBand.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap averagesTrap{" - Sub TJGKGMCDJF/Mdl_MDB"};
const QString title = u"各名次段均分"_s;
const QStringList parts{u"人数"_s, u"平均分"_s, u"名次"_s};
constexpr int countPart = 0;
constexpr int averagePart = 1;
constexpr int averageRankPart = 2;

void fillBand(Block& block, ExamFigures& figures, int line, int item, const QString& name,
              const RankBand& band)
{
    const Condition within = band.condition(name, figures);
    const Condition taken(name + u">=0 and "_s + within.text());
    const ExamFigures::ClassFigure students = figures.figure(Aggregate::Count, name, within);
    const ExamFigures::ClassFigure mean = figures.figure(Aggregate::Average, name, taken);
    block.note(line, item, countPart, students.meaning());
    block.note(line, item, averagePart, mean.meaning());
    block.eachClass(line, band.name(), [&](int j, double classNumber) {
        if (const auto count = students(classNumber))
            block.set(j, line, item, countPart, figureText(*count));
        if (const auto average = mean(classNumber))
            block.set(j, line, item, averagePart, figureText(*average));
    });
}

} // namespace

void TJGKGMCDJF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    if (!useLastExam(exams))
        return;
    ReportFrame frame(context, grid, exams, transfer, averagesTrap);
    const LineTable lines =
        FenLiNumTJ(context.library.catalogue.Streams, title, context.library.settings.GetSZ(title));
    frame.clear();
    grid.FixedRows = 0;
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QStringList items = context.library.catalogue.GetKSKMZF(exams, frame.stream(i)).names;
        const QStringList& bands = lines[size_t(i)];
        Block block = frame.block(i, {.title = frame.streamTitle(i, u"科  "_s, title),
                                      .headingRows = 2,
                                      .rowsPerClass = int(bands.size()),
                                      .firstColumn = 2,
                                      .columnsPerItem = int(parts.size()),
                                      .items = int(items.size())});
        frame.mergeNames(MergedNames::ClassesAndSecond);
        block.headItems(items, parts, u"名次段"_s);
        ExamFigures figures(context, exams, frame.stream(i), averagesTrap);
        for (int b = 0; b < bands.size(); ++b) {
            for (int k = 0; k < items.size(); ++k)
                fillBand(block, figures, b, k, items[k], RankBand(bands[b]));
        }
        for (int k = 0; k < items.size(); ++k) {
            for (int b = 0; b < bands.size(); ++b)
                block.rankClasses(b, k, averagePart, averageRankPart);
        }
        frame.finish(i, block);
    }
    frame.setWidths({.all = 750, .classes = 1100, .exams = 900});
}

} // namespace statistics
