#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

/// Columns of a subject in the table of averages; the others have the first one alone.
enum Part { valuePart, rankPart, teacherPart };

enum class Absentees { Counted, LeftOut };

/// What one of the four tables has of its own.
struct AggregateTable
{
    QString title;
    QString joiner;
    Aggregate aggregate;
    Absentees absentees;
    const Trap& trap;
    /// Columns of a subject without and with the list of teachers.
    int columns;
    int columnsWithTeachers;
    int headingRows;
    /// Writes the headings above the subjects.
    void (*head)(Block& block, const QStringList& subjects);
};

bool teachersListed(ReportContext& context)
{
    // One setting serves all the tables.
    return context.library.settings.GetSZ(u"各科平均分"_s) == u"使用教师名单"_s;
}

void fillSubject(Block& block, const AggregateTable& table, ExamFigures& figures, int line,
                 int item, const QString& subject)
{
    const ExamFigures::ClassFigure figure = figures.figure(
        table.aggregate, subject,
        table.absentees == Absentees::Counted ? Condition() : sittingCondition(subject));
    block.note(line, item, valuePart, figure.meaning());
    block.eachClass(line, figures.exam(), [&](int j, double classNumber) {
        if (const auto value = figure(classNumber))
            block.set(j, line, item, valuePart, figureText(*value));
    });
}

void nameTeachers(ReportContext& context, Block& block, const QString& exam, int line,
                  const QStringList& subjects)
{
    if (subjects.isEmpty())
        return;
    block.eachClass(line, exam, [&](int j, double classNumber) {
        const QStringList teachers =
            context.library.teachers.ofSubjects(exam, classNumber, subjects);
        for (int k = 0; k < subjects.size(); ++k)
            block.set(j, line, k, teacherPart, teachers[k]);
    });
}

void rankAverages(Block& block, int subjects, int exams)
{
    for (int k = 0; k < subjects; ++k) {
        for (int e = 0; e < exams; ++e)
            block.rankClasses(e, k, valuePart, rankPart);
    }
}

void runTable(ReportContext& context, const QString& exams, grid::FlexGrid& grid, Transfer transfer,
              const AggregateTable& table)
{
    ReportFrame frame(context, grid, exams, transfer, table.trap);
    frame.clear();
    const int columns = teachersListed(context) ? table.columnsWithTeachers : table.columns;
    for (int i = 0; i < frame.streamCount(); ++i) {
        const QStringList subjects =
            context.library.catalogue.GetKSKM(exams, frame.stream(i)).names;
        Block block = frame.examBlock(i, {.title = frame.streamTitle(i, table.joiner, table.title),
                                          .headingRows = table.headingRows,
                                          .columnsPerItem = columns,
                                          .items = int(subjects.size())});
        frame.fixHeading(1);
        table.head(block, subjects);
        for (int e = 0; e < frame.examCount(); ++e) {
            ExamFigures figures(context, frame.exams()[e], frame.stream(i), table.trap);
            for (int k = 0; k < subjects.size(); ++k)
                fillSubject(block, table, figures, e, k, subjects[k]);
            if (table.aggregate == Aggregate::Average && columns == table.columnsWithTeachers)
                nameTeachers(context, block, frame.exams()[e], e, subjects);
        }
        if (table.aggregate == Aggregate::Average)
            rankAverages(block, int(subjects.size()), frame.examCount());
        frame.finish(i, block);
    }
    frame.setWidths({.all = 750, .classes = 1100, .exams = frame.examsWidth()});
}

void headSubjects(Block& block, const QStringList& subjects)
{
    for (int k = 0; k < subjects.size(); ++k)
        block.head(1, k, valuePart, subjects[k]);
}

void headBelowTitle(Block& block, const QStringList& subjects)
{
    block.headNames(1);
    headSubjects(block, subjects);
}

/// "班级" stands in the title row, and the cell below it stays empty.
void headInTitle(Block& block, const QStringList& subjects)
{
    block.mergeHeading(1);
    block.headClass(0);
    block.headSecond(1);
    headSubjects(block, subjects);
}

void headAverages(Block& block, const QStringList& subjects)
{
    headInTitle(block, subjects);
    block.headNames(2);
    for (int k = 0; k < subjects.size(); ++k) {
        block.head(1, k, rankPart, subjects[k]);
        if (block.columnsPerItem() > teacherPart)
            block.head(1, k, teacherPart, u"教师"_s);
        block.head(2, k, valuePart, u"平均分"_s);
        block.head(2, k, rankPart, u"名次"_s);
    }
}

} // namespace

void TJGKPJF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJGKPJF/Mdl_MDB"};
    runTable(context, exams, grid, transfer,
             {.title = u"各科平均分"_s,
              .joiner = u"科"_s,
              .aggregate = Aggregate::Average,
              .absentees = Absentees::Counted,
              .trap = trap,
              .columns = 2,
              .columnsWithTeachers = 3,
              .headingRows = 2,
              .head = headAverages});
}

void TJGKZGF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJGKZGF/Mdl_MDB"};
    runTable(context, exams, grid, transfer,
             {.title = u"各科最高分"_s,
              .joiner = u"科"_s,
              .aggregate = Aggregate::Maximum,
              .absentees = Absentees::Counted,
              .trap = trap,
              .columns = 1,
              .columnsWithTeachers = 3,
              .headingRows = 1,
              .head = headInTitle});
}

void TJGKZDF(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJGKZDF/Mdl_MDB"};
    runTable(context, exams, grid, transfer,
             {.title = u"各科最低分"_s,
              .joiner = u"科"_s,
              .aggregate = Aggregate::Minimum,
              .absentees = Absentees::LeftOut,
              .trap = trap,
              .columns = 1,
              .columnsWithTeachers = 3,
              .headingRows = 1,
              .head = headBelowTitle});
}

void TJGKBZC(ReportContext& context, QString& exams, grid::FlexGrid& grid, Transfer transfer)
{
    const Trap trap{" - Sub TJGKBZC/Mdl_MDB"};
    runTable(context, exams, grid, transfer,
             {.title = u"各科标准差"_s,
              .joiner = u"科 "_s,
              .aggregate = Aggregate::Deviation,
              .absentees = Absentees::LeftOut,
              .trap = trap,
              .columns = 1,
              .columnsWithTeachers = 1,
              .headingRows = 1,
              .head = headBelowTitle});
}

} // namespace statistics
