#include "export/ScoreExportRequest.h"

#include "library/ColumnNames.h"
#include "platform/runtime/Trap.h"

namespace exporting {

using namespace Qt::StringLiterals;

namespace {

QStringList defaultColumns(const ScoreExportRequest& request)
{
    QStringList columns{u"考试名称"_s};
    if (!request.infoRow)
        columns << u"班级"_s << u"学号"_s << u"姓名"_s;
    for (const QString& subject : request.subjects)
        columns << subject << library::gradeRankColumn(subject);
    return columns;
}

} // namespace

QString displayName(BlockLayout layout)
{
    return layout == BlockLayout::RankChart ? u"导出成绩True"_s : u"导出成绩False"_s;
}

QStringList ZDYxs(library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request)
{
    const runtime::Trap trap{" - Sub ZDYxs/FormDaoChu"};
    library::Settings& settings = scoreLibrary.settings;
    QStringList columns;
    trap([&] {
        columns = request.columns ? settings.scoreColumns(*request.columns)
                                  : settings.GetZDYXS(displayName(request.layout));
    });
    if (columns.isEmpty())
        columns = defaultColumns(request);
    settings.DisplayItems = columns;
    return columns;
}

QString averageNote(const ScoreExportRequest& request)
{
    const bool gradeRow = request.gradeAverage.ticked && request.gradeAverage.chosen;
    const bool classRow = request.classAverage.ticked && request.classAverage.chosen;
    if (!gradeRow || classRow || request.gradeAverageByItsExam)
        return {};
    const QString& exam = request.classAverage.exam;
    const QString averages = request.classAverage.chosen
                                 ? u"平均分也取自这次考试"_s
                                 : u"平均分全部是 0，因为没有名为“%1”的考试"_s.arg(exam);
    return u"只勾选了年级平均分：它的行按班级平均分的考试标注为“%1班平”，%2。"
           "要按年级平均分所选的“%3”计算，请勾选“年级平均按所选考试标注”。"_s.arg(
               exam, averages, request.gradeAverage.exam);
}

} // namespace exporting
