#include "export/ScoreExportRequest.h"

#include <algorithm>

#include "library/ColumnNames.h"
#include "platform/database/Statement.h"
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

/// The columns that the blocks are to have, also those that are gone. None for the default ones.
QStringList chosenColumns(library::Settings& settings, const ScoreExportRequest& request)
{
    return request.columns ? *request.columns : settings.storedColumns(displayName(request.layout));
}

bool hasExam(database::Connection& connection, const QString& exam)
{
    database::Statement& rows = connection.prepared(u"select 1 from 考试名称表 where 考试名称=?"_s);
    rows.bind({exam});
    const bool found = rows.step();
    rows.finish();
    return found;
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

QString goneNote(library::ScoreLibrary& scoreLibrary, const ScoreExportRequest& request)
{
    QStringList exams = request.exams;
    exams.removeIf([&](const QString& exam) { return hasExam(scoreLibrary.Conn, exam); });
    QStringList columns = chosenColumns(scoreLibrary.settings, request);
    const QStringList known = scoreLibrary.settings.scoreColumns(columns);
    columns.removeIf([&](const QString& column) { return known.contains(column); });
    QStringList notes;
    if (!exams.isEmpty())
        notes.append(u"成绩库里已经没有考试 "_s + exams.join(u'、') + u"，没有导出。"_s);
    if (!columns.isEmpty())
        notes.append(u"成绩表里没有列 "_s + columns.join(u'、') + u"，没有导出。"_s);
    return notes.join(u'\n');
}

QString missingChoice(const ScoreExportRequest& request)
{
    if (request.exams.isEmpty())
        return u"请选择 要导出成绩的 考试名称！"_s;
    if (request.subjects.isEmpty())
        return u"请选择要导出成绩的 科目！"_s;
    return request.classes.isEmpty() ? u"请选择 要导出成绩的 班级！"_s : QString();
}

QString missingTotal(const ScoreExportRequest& request)
{
    const QStringList& chosen = request.subjects;
    const bool draws = request.layout == BlockLayout::RankChart;
    return draws && std::none_of(chosen.begin(), chosen.end(), library::isTotal)
               ? u"没有选择总分，不能根据总分绘图！"_s
               : QString();
}

QString averageNote(const ScoreExportRequest& request)
{
    if (!missingChoice(request).isEmpty() || !missingTotal(request).isEmpty())
        return {};
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
