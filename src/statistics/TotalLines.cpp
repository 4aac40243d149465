#include "library/ColumnNames.h"
#include "statistics/ExamFigures.h"
#include "statistics/LineTable.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap linesTrap{" - Sub TJZFSXRS/Mdl_MDB"};
const QString linesTitle = u"总分上线人数"_s;

void fillExam(Block& block, ExamFigures& figures, int line, const QStringList& scoreLines)
{
    block.eachClass(line, figures.exam(), [](int, double) {});
    for (int t = 0; t < scoreLines.size(); ++t) {
        const ExamFigures::ClassFigure students =
            figures.figure(Aggregate::Count, library::GrandTotal,
                           Condition(library::GrandTotal + u">="_s + scoreLines[t]));
        block.note(line, t, 0, students.meaning());
        block.eachClass(line, figures.exam(), [&](int j, double classNumber) {
            if (const auto count = students(classNumber))
                block.set(j, line, t, 0, figureText(*count));
        });
    }
}

} // namespace

void TJZFSXRS(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    ReportFrame frame(context, grid, exams, transfer, linesTrap);
    grid.FixedRows = 0;
    frame.clear();
    const LineTable lines = FenLiNumTJ(context.library.catalogue.Streams, linesTitle,
                                       context.library.settings.GetSZ(linesTitle));
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QStringList& scoreLines = lines[size_t(i)];
        // Without lines the first data column is there all the same.
        Block block = frame.examBlock(i, {.title = frame.streamTitle(i, u"科"_s, linesTitle),
                                          .items = std::max(1, int(scoreLines.size()))});
        block.headNames(1);
        for (int t = 0; t < scoreLines.size(); ++t)
            block.head(1, t, 0, scoreLines[t] + u"线"_s);
        for (int e = 0; e < frame.examCount(); ++e) {
            ExamFigures figures(context, frame.exams()[e], frame.stream(i), linesTrap);
            fillExam(block, figures, e, scoreLines);
        }
        frame.finish(i, block);
    }
    frame.setWidths({.all = 1100});
}

} // namespace statistics
