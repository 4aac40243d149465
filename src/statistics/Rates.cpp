#include "platform/runtime/Numbers.h"
#include "statistics/BandSetting.h"
#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap ratesTrap{" - Sub TJGK4l/Mdl_MDB"};

/// Fills the cells of one exam: how many are in the band, and their share of the class.
void fillExam(ReportContext& context, Block& block, const QString& title, const QString& stream,
              const library::ColumnMarks& subjects, const QString& exam, int line)
{
    ExamFigures figures(context, exam, stream, ratesTrap);
    BandSetting band(context, title, stream, subjects, ratesTrap);
    for (int k = 0; k < subjects.count(); ++k) {
        const ExamFigures::ClassFigure students = figures.rowCount(band.of(k), subjects.names[k]);
        block.note(line, k, 0, students.meaning());
        block.note(line, k, 1, students.meaning().as(FigureKind::Share));
        block.eachClass(line, exam, [&](int j, double classNumber) {
            const auto count = students(classNumber);
            if (!count)
                return;
            block.set(j, line, k, 0, runtime::doubleText(*count));
            if (block.students(j) == 0)
                ratesTrap.fail(u"除数为零。"_s);
            else
                block.set(j, line, k, 1, figureText(*count * 100 / block.students(j)));
        });
    }
}

} // namespace

void TJGK4l(ReportContext& context, QString& exams, const QString& title, grid::FlexGrid& grid,
            Transfer transfer)
{
    ReportFrame frame(context, grid, exams, transfer, ratesTrap);
    frame.clear();
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QString& stream = frame.stream(i);
        const library::ColumnMarks subjects = context.library.catalogue.GetKSKM(exams, stream);
        Block block = frame.examBlock(i, {.title = frame.streamTitle(i, u"科"_s, title),
                                          .headingRows = 2,
                                          .columnsPerItem = 2,
                                          .items = subjects.count()});
        frame.fixHeading(1);
        block.headItems(subjects.names, {u"人数"_s, u"比例%"_s});
        for (int e = 0; e < frame.examCount(); ++e)
            fillExam(context, block, title, stream, subjects, frame.exams()[e], e);
        frame.finish(i, block);
    }
    frame.setWidths({.all = 750, .classes = 1100, .exams = frame.examsWidth()});
}

} // namespace statistics
