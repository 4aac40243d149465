#include "individual/StudentReport.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "workbooks/model/ColumnFit.h"

namespace individual {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap reportTrap{" - Sub wydc/FormGeRenChenJi"};

/// Names of exams and columns are no numbers and no dates, whatever they look like.
void setCell(excel::Worksheet& sheet, const grid::FlexGrid& exams, int row, int col)
{
    const QString& text = exams.TextMatrix(row, col);
    if (row == 0 || col == 0)
        sheet.setCell(row + 2, col + 1, text);
    else
        sheet.setCellText(row + 2, col + 1, text);
}

void writeExams(excel::Worksheet& sheet, const grid::FlexGrid& exams)
{
    for (int row = 0; row < exams.Rows(); ++row) {
        for (int col = 0; col < exams.Cols(); ++col)
            reportTrap([&] { setCell(sheet, exams, row, col); });
    }
    reportTrap([&] {
        sheet.Range(2, 1, exams.Rows() + 1, exams.Cols()).setBorders(excel::LineStyle::Continuous);
    });
}

void insertChart(excel::Worksheet& sheet, const QString& picture, int row, const SavePic& savePic)
{
    bool isSaved = false;
    reportTrap([&] { isSaved = savePic(picture); });
    // An older file of that name shows another student.
    if (!isSaved)
        return;
    reportTrap([&] { sheet.insertPicture(picture); });
    reportTrap([&] { sheet.Shapes(1).setTop(sheet.Range(row, 1, row, 1).Top() + 1); });
}

} // namespace

excel::Application& wydc(excel::Applications& applications, const runtime::AppPaths& paths,
                         const grid::FlexGrid& exams, const QString& name, ReportContent content,
                         const SavePic& savePic)
{
    applications.push_back(std::make_unique<excel::Application>());
    excel::Application& ExcelApp = *applications.back();
    reportTrap([&] {
        excel::Worksheet& ExcelSheet = ExcelApp.Workbooks().Add().Worksheets().Item(1);
        reportTrap([&] { ExcelSheet.setCell(1, 1, name); });
        writeExams(ExcelSheet, exams);
        reportTrap([&] { excel::autoFitColumns(ExcelSheet); });
        if (content == ReportContent::ExamsAndChart)
            insertChart(ExcelSheet, paths.dataFile(u"tmp.bmp"_s), exams.Rows() + 2, savePic);
        ExcelSheet.Activate();
    });
    runtime::MsgBox(u"导出完成！"_s);
    ExcelApp.setVisible(true);
    return ExcelApp;
}

} // namespace individual
