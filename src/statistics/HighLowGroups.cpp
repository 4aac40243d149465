#include "platform/runtime/Numbers.h"
#include "statistics/BandSetting.h"
#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap groupsTrap{" - Sub TJGDFD/Mdl_MDB"};
const QStringList groups{u"高分段"_s, u"低分段"_s};

void fillGroup(ReportContext& context, Block& block, const QString& stream,
               const library::ColumnMarks& subjects, const QString& exam, int line, int group)
{
    ExamFigures figures(context, exam, stream, groupsTrap);
    BandSetting band(context, groups[group], stream, subjects, groupsTrap);
    for (int k = 0; k < subjects.count(); ++k) {
        const ExamFigures::ClassFigure students = figures.rowCount(band.of(k), subjects.names[k]);
        block.note(line, k, group, students.meaning());
        block.eachClass(line, exam, [&](int j, double classNumber) {
            if (const auto count = students(classNumber))
                block.set(j, line, k, group, runtime::doubleText(*count));
        });
    }
}

} // namespace

void TJGDFD(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    ReportFrame frame(context, grid, exams, transfer, groupsTrap);
    frame.clear();
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QString& stream = frame.stream(i);
        const library::ColumnMarks subjects = context.library.catalogue.GetKSKM(exams, stream);
        // The stream stands in front even where the library has only one.
        Block block = frame.examBlock(i, {.title = stream + u"科 高、低分段"_s,
                                          .headingRows = 2,
                                          .columnsPerItem = int(groups.size()),
                                          .items = subjects.count()});
        frame.fixHeading(2);
        block.headItems(subjects.names, groups);
        for (int e = 0; e < frame.examCount(); ++e) {
            for (int group = 0; group < groups.size(); ++group)
                fillGroup(context, block, stream, subjects, frame.exams()[e], e, group);
        }
        frame.finish(i, block);
    }
    frame.setWidths({.all = 750, .exams = frame.examsWidth()});
}

} // namespace statistics
