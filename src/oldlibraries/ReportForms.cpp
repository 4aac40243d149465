#include "oldlibraries/ReportForms.h"

#include <QStringList>

#include "platform/runtime/OneLine.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/TextFile.h"
#include "workbooks/model/Workbook.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// So many findings are shown in a grid and in a sheet; a last line tells how many more there are.
constexpr qsizetype mostShownFindings = 20'000;
constexpr qsizetype mostFindingsOnSheet = 100'000;

const QStringList headings = {u"表"_s, u"行"_s, u"列"_s, u"值"_s, u"处理"_s};
/// Of the columns, in characters.
constexpr int widths[] = {16, 8, 16, 48, 72};

/// What stands ahead of the findings, in the same form.
std::vector<Finding> headLines(const ConversionReport& report)
{
    std::vector<Finding> lines = {{u"（旧成绩库）"_s, 0, {}, report.oldPath, u"没有改动"_s},
                                  {u"（新成绩库）"_s, 0, {}, report.newPath, u"已经建成"_s},
                                  {u"（说明）"_s,
                                   0,
                                   {},
                                   {},
                                   u"名次、标准分和总分原样转入；"
                                   "如需重算，请选择考试后点“计算总分”。"_s}};
    for (const ConversionReport::Table& table : report.tables)
        lines.push_back({table.name, 0, {}, u"%1 行"_s.arg(table.rows), u"已经转入"_s});
    if (report.findings.empty())
        lines.push_back({u"（说明）"_s, 0, {}, {}, u"没有发现需要说明的值。"_s});
    return lines;
}

Finding lineOfRest(qsizetype rest, const QString& where)
{
    return {u"（说明）"_s, 0, {}, {}, u"还有 %1 项没有列出，请%2后查看。"_s.arg(rest).arg(where)};
}

/// The lines of a report of which `most` findings are shown; the last one says where the rest is.
std::vector<Finding> reportLines(const ConversionReport& report, qsizetype most,
                                 const QString& whereRestIs)
{
    std::vector<Finding> lines = headLines(report);
    const std::vector<Finding>& findings = report.findings;
    const qsizetype count = std::min(qsizetype(findings.size()), most);
    lines.insert(lines.end(), findings.begin(), findings.begin() + count);
    if (const qsizetype rest = qsizetype(findings.size()) - count; rest > 0)
        lines.push_back(lineOfRest(rest, whereRestIs));
    return lines;
}

QString rowText(const Finding& line)
{
    return line.row > 0 ? QString::number(line.row) : QString();
}

/// Line breaks and tabs behind a backslash.
QString escaped(QString text)
{
    text.replace(u"\\"_s, u"\\\\"_s).replace(u"\t"_s, u"\\t"_s);
    return runtime::forTerminal(text.replace(u"\r"_s, u"\\r"_s).replace(u"\n"_s, u"\\n"_s));
}

QStringList cells(const Finding& line, QString (*cell)(QString))
{
    return {cell(runtime::shortened(line.table)), rowText(line),
            cell(runtime::shortened(line.column)), cell(runtime::shortened(line.value)),
            cell(line.done)};
}

void setGridRow(grid::FlexGrid& grid, int row, const QStringList& texts)
{
    for (int col = 0; col < int(texts.size()); ++col)
        grid.setTextMatrix(row, col, texts[col]);
}

void setWidths(grid::FlexGrid& grid)
{
    constexpr int twips = 100; // of a character
    for (int col = 0; col < int(std::size(widths)); ++col)
        grid.setColWidth(col, widths[col] * twips);
    constexpr int left = 1;
    grid.setColAlignment(-1, left);
}

void setSheetRow(excel::Worksheet& sheet, int row, const Finding& line)
{
    sheet.setCell(row, 1, line.table);
    if (line.row > 0)
        sheet.setCell(row, 2, line.row);
    sheet.setCell(row, 3, line.column);
    sheet.setCell(row, 4, line.value);
    sheet.setCell(row, 5, line.done);
}

void layOut(excel::Worksheet& sheet)
{
    for (int column = 1; column <= int(std::size(widths)); ++column)
        sheet.setColumnWidth(column, column, widths[column - 1]);
    sheet.Range(1, 1, 1, int(headings.size())).setFontBold(true);
}

void fillReport(excel::Worksheet& sheet, const ConversionReport& report)
{
    for (int column = 1; column <= int(headings.size()); ++column)
        sheet.setCell(1, column, headings[column - 1]);
    int row = 1;
    for (const Finding& line : reportLines(report, mostFindingsOnSheet, u"保存成文本文件"_s))
        setSheetRow(sheet, ++row, line);
    layOut(sheet);
}

} // namespace

grid::FlexGrid reportGrid(const ConversionReport& report)
{
    const std::vector<Finding> lines = reportLines(report, mostShownFindings, u"保存报告"_s);
    grid::FlexGrid grid;
    grid.FixedCols = 0;
    grid.setRows(int(lines.size()) + 1);
    grid.setCols(int(headings.size()));
    setGridRow(grid, 0, headings);
    for (int row = 1; row < grid.Rows(); ++row)
        setGridRow(grid, row, cells(lines[size_t(row) - 1], runtime::onOneLine));
    setWidths(grid);
    return grid;
}

QString reportText(const ConversionReport& report)
{
    QString text = headings.join(u'\t') + u'\n';
    for (const std::vector<Finding>& lines : {headLines(report), report.findings}) {
        for (const Finding& line : lines)
            text += cells(line, escaped).join(u'\t') + u'\n';
    }
    return text;
}

void saveReport(const ConversionReport& report, const QString& path)
{
    if (!path.endsWith(u".xlsx"_s, Qt::CaseInsensitive))
        return runtime::writeTextFile(path, reportText(report));
    excel::Workbook book;
    fillReport(book.addSheet(u"转换报告"_s), report);
    book.SaveAs(path);
}

} // namespace oldlibraries
