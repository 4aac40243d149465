#include "library/ColumnNames.h"
#include "platform/runtime/Numbers.h"
#include "statistics/LineTable.h"
#include "statistics/RankBand.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;
using runtime::Trap;

namespace {

/// A report with a block for each item and the rank bands across.
struct RankReport
{
    const Trap& trap;
    /// The setting with the bands.
    QString setting;
    /// Stands behind the item in the title.
    QString title;
};

void fillExam(Block& block, ExamFigures& figures, int line, const QString& item,
              const std::vector<RankBand>& bands)
{
    std::vector<ExamFigures::ClassFigure> students;
    students.reserve(bands.size());
    for (const RankBand& band : bands)
        students.push_back(figures.figure(Aggregate::Count, library::gradeRankColumn(item),
                                          band.condition(item, figures)));
    for (size_t b = 0; b < bands.size(); ++b)
        block.note(line, int(b), 0, students[b].meaning());
    block.eachClass(line, figures.exam(), [&](int j, double classNumber) {
        for (size_t b = 0; b < bands.size(); ++b) {
            if (const auto count = students[b](classNumber))
                block.set(j, line, int(b), 0, doubleText(*count));
        }
    });
}

void fillStream(ReportContext& context, ReportFrame& frame, int stream, const QStringList& items,
                const std::vector<RankBand>& bands, const RankReport& report)
{
    for (const QString& item : items) {
        Block block =
            frame.examBlock(stream,
                            {.title = frame.streamTitle(stream, u"科  "_s, item + report.title),
                             .items = int(bands.size())},
                            MergedNames::Classes);
        block.headNames(1);
        for (size_t b = 0; b < bands.size(); ++b)
            block.head(1, int(b), 0, bands[b].name() + u"名"_s);
        for (int e = 0; e < frame.examCount(); ++e) {
            ExamFigures figures(context, frame.exams()[e], frame.stream(stream), report.trap);
            fillExam(block, figures, e, item, bands);
        }
        frame.finish(stream, block, 2);
    }
}

void runRankReport(ReportContext& context, const QString& exams, grid::FlexGrid& grid,
                   Transfer transfer, const RankReport& report)
{
    ReportFrame frame(context, grid, exams, transfer, report.trap);
    frame.clear(1);
    const LineTable lines = FenLiNumTJ(context.library.catalogue.Streams, report.setting,
                                       context.library.settings.GetSZ(report.setting));
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QStringList items = context.library.catalogue.GetKSKMZF(exams, frame.stream(i)).names;
        const QStringList& entries = lines[size_t(i)];
        fillStream(context, frame, i, items, {entries.begin(), entries.end()}, report);
    }
    frame.setWidths({.all = 900});
}

} // namespace

void TJGMCDRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJGMCDRS/Mdl_MDB"};
    const QString title = u"各名次段人数"_s;
    runRankReport(context, exams, grid, transfer, {trap, title, title});
}

void TJLCKSQxM(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJLCKSQxM/Mdl_MDB"};
    const QString setting = u"历次考试进入年级前x名人数"_s;
    const QString title = u"  "_s + QString::number(library::examNames(exams).size())
                          + u"次考试进入年级前"_s + context.library.settings.GetSZ(setting)
                          + u"名人数"_s;
    runRankReport(context, exams, grid, transfer, {trap, setting, title});
}

} // namespace statistics
