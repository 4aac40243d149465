#include "export/StudentBlock.h"

#include <algorithm>

#include "export/ExportTrap.h"
#include "library/ColumnNames.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

namespace exporting {

using namespace Qt::StringLiterals;

namespace {

const QString examColumn = u"考试名称"_s;

constexpr int fewestChartColumns = 12;
constexpr int mostChartColumns = 20;

/// 语文年名 is headed 语名.
QString heading(const QString& column)
{
    if (!library::isGradeRankColumn(column))
        return column;
    return column.left(column.front().isHighSurrogate() ? 2 : 1) + u"名"_s;
}

/// Rows of averages that a block reserves: one for each ticked box.
int averageRows(const ScoreExportRequest& request)
{
    return int(request.classAverage.ticked) + int(request.gradeAverage.ticked);
}

bool isWritten(const AverageBox& box)
{
    return box.ticked && box.chosen;
}

} // namespace

BlockColumns::BlockColumns(const QStringList& columns)
    : names(columns),
      labelColumn(int(columns.indexOf(examColumn)) + 1),
      rankColumn(int(columns.indexOf(library::gradeRankColumn(library::GrandTotal))) + 1)
{
}

StudentBlock::StudentBlock(Run& run, excel::Worksheet& sheet, const ExportedStudent& student,
                           const StudentScores& scores, int first)
    : m_run(run),
      m_request(run.request),
      m_columns(run.columns),
      m_sheet(sheet),
      m_student(student),
      m_scores(scores),
      m_begin(first),
      m_row(first)
{
}

int StudentBlock::rowsOf(const ScoreExportRequest& request, const StudentScores& scores)
{
    return int(request.infoRow) + 1 + scores.count() + averageRows(request);
}

void StudentBlock::writeRows()
{
    if (m_request.infoRow)
        writeInfo();
    writeHeading();
    takeStudentCount();
    writeExams();
    writeAverages();
    drawBorders();
}

void StudentBlock::writeInfo()
{
    const QString info =
        m_student.classNumber.text() + u" 班"_s + m_student.number + u" 号："_s + m_student.name;
    exportTrap([&] { m_sheet.setCell(m_row, 1, info); });
    exportTrap([&] { m_sheet.Range(m_row, 1, m_row, m_columns.count()).setMergeCells(true); });
    ++m_row;
}

void StudentBlock::writeHeading()
{
    for (int column = 1; column <= m_columns.count(); ++column)
        exportTrap([&] { m_sheet.setCell(m_row, column, heading(m_columns.names[column - 1])); });
    m_firstExam = m_row + 1;
}

/// Without a row the count of the student before stays.
void StudentBlock::takeStudentCount()
{
    exportTrap([&] { m_run.studentCount = m_run.figures.headCount(m_scores.firstStream()); });
}

void StudentBlock::writeExams()
{
    for (int row = 0; row < m_scores.count(); ++row) {
        ++m_row;
        writeExam(row);
    }
}

void StudentBlock::writeExam(int row)
{
    for (int column = 1; column <= m_columns.count(); ++column) {
        exportTrap([&] {
            const runtime::Value& value = m_scores.value(row, column - 1);
            m_sheet.setCell(m_row, column, value);
            const double rank = column == m_columns.rankColumn ? runtime::Val(value) : 0;
            if (rank > 0) {
                m_rankSum += rank;
                ++m_rankCount;
            }
        });
    }
}

void StudentBlock::writeAverages()
{
    ExportFigures& figures = m_run.figures;
    const QString& classExam = m_request.classAverage.exam;
    if (isWritten(m_request.classAverage)) {
        writeAverageRow(classExam + u"班平"_s, [&](const QString& column) {
            return figures.classAverage(classExam, column, m_student.stream, m_student.classNumber);
        });
    }
    if (isWritten(m_request.gradeAverage)) {
        // Label and exam are those of the class's averages unless the user wants his own.
        const bool own = m_request.gradeAverageByItsExam;
        const QString& exam = own ? m_request.gradeAverage.exam : classExam;
        writeAverageRow(exam + (own ? u"年平"_s : u"班平"_s), [&](const QString& column) {
            return figures.gradeAverage(exam, column, m_student.stream);
        });
    }
}

template <class Average>
void StudentBlock::writeAverageRow(const QString& label, const Average& average)
{
    ++m_row;
    exportTrap([&] {
        if (m_columns.labelColumn == 0)
            throw runtime::Error(u"导出的列里没有“%1”。"_s.arg(examColumn));
        m_sheet.setCell(m_row, m_columns.labelColumn, label);
    });
    for (int column = 1; column <= m_columns.count(); ++column) {
        const QString& name = m_columns.names[column - 1];
        if (m_run.library.catalogue.isKeMuZF(name))
            exportTrap([&] { m_sheet.setCell(m_row, column, average(name)); });
    }
}

void StudentBlock::drawBorders()
{
    const int rows = m_scores.count() + averageRows(m_request);
    exportTrap([&] {
        m_sheet.Range(m_firstExam - 1, 1, m_firstExam + rows - 1, m_columns.count())
            .setBorders(excel::LineStyle::Continuous);
    });
}

double StudentBlock::averageRank() const
{
    return m_rankCount > 0 ? runtime::Round(m_rankSum / m_rankCount, 2) : 0;
}

bool StudentBlock::drawChart()
{
    RankChart chart;
    chart.firstRow = m_firstExam;
    chart.lastRow = m_firstExam + m_scores.count() - 1;
    chart.chartTop = m_row + 1;
    chart.chartRows = m_begin + ExportSheets::pageRows - chart.chartTop - 1;
    chart.chartColumns = std::clamp(m_columns.count(), fewestChartColumns, mostChartColumns);
    chart.title =
        m_student.name + u"排名分析(共"_s + QString::number(m_run.studentCount) + u"人)"_s;
    chart.averageRank = m_columns.haveChartData() ? averageRank() : 0;
    chart.studentCount = m_run.studentCount;
    chart.rankColumn = m_columns.rankColumn;
    chart.labelColumn = m_columns.labelColumn;
    const PlotRoom room = HuiTu(m_sheet, chart);
    exportTrap([&] { m_sheet.addPageBreak(m_begin + ExportSheets::pageRows - 1); });
    return chart.chartRows > 0 && room == PlotRoom::Enough;
}

} // namespace exporting
