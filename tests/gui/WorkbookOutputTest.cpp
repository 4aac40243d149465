#include "workbooks/ui/WorkbookOutput.h"

#include <QFile>
#include <QPrinter>

#include <gtest/gtest.h>

#include "gui/WorkbookFixture.h"
#include "workbooks/ui/SheetPages.h"

namespace {

using namespace Qt::StringLiterals;
using excel::Application;
using excel::WorkbookWindow;
using excel::Worksheet;

class WorkbookOutput : public support::WorkbookFixture
{
};

int pagesOf(const QString& pdf)
{
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("%PDF"))
        return -1;
    return int(bytes.count("/Type /Page\n"));
}

TEST_F(WorkbookOutput, ExportsTheSheetInFrontAsPdfWithItsPagesAndPaper)
{
    for (int row = 1; row <= 120; ++row)
        sheet(1).setCell(row, 1, row);
    sheet(1).setCell(1, 12, u"远"_s);
    sheet(1).PageSetup().Orientation = excel::Orientation::Landscape;
    window().refresh();
    dialogs.file = file(u"分析"_s);
    click(u"ExportPdf"_s);
    // 120 rows of 13.5 points need four pages of 487 points; 12 columns of 54 points fit in 741.
    EXPECT_EQ(pagesOf(file(u"分析.pdf"_s)), 4);
    QFile pdf(file(u"分析.pdf"_s));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().contains("/MediaBox [0 0 842"));
}

TEST_F(WorkbookOutput, ColumnsThatDoNotFitFollowOnMorePagesAndBreaksAreKept)
{
    sheet(1).setCell(1, 12, u"远"_s);
    sheet(1).addPageBreak(3);
    window().refresh();
    dialogs.file = file(u"p.pdf"_s);
    click(u"ExportPdf"_s);
    EXPECT_EQ(pagesOf(file(u"p.pdf"_s)), 4);
}

TEST_F(WorkbookOutput, AFailedExportIsOneMessage)
{
    dialogs.file = file(u"missing/a.pdf"_s);
    click(u"ExportPdf"_s);
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].startsWith(u"错误: PDF文件没有导出：\n"_s));
}

TEST_F(WorkbookOutput, AnEmptySheetIsNotPrinted)
{
    Worksheet& empty = book.Worksheets().Add(excel::Beside::After, sheet(1));
    empty.Activate();
    window().refresh();
    click(u"ExportPdf"_s);
    EXPECT_EQ(dialogs.shown, QStringList(u"提示: 工作表中没有可以打印的内容。"_s));
}

TEST_F(WorkbookOutput, AskedBeforeItPrintsHundredsOfPages)
{
    sheet(1).setCell(excel::lastGridRow, 1, 1);
    window().refresh();
    dialogs.expect(u"页，是否继续？"_s, runtime::Answer::No);
    click(u"ExportPdf"_s);
    EXPECT_EQ(dialogs.fileTitle, QString());
}

TEST_F(WorkbookOutput, WithoutAPrinterAPdfIsOffered)
{
    const QString question = u"这台计算机上没有打印机。是否导出为PDF文件？"_s;
    dialogs.expect(question, runtime::Answer::No);
    QTest::keyClick(&window(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(dialogs.fileTitle, QString());
    dialogs.expect(question, runtime::Answer::Yes);
    dialogs.file = file(u"q.pdf"_s);
    click(u"Print"_s);
    EXPECT_EQ(pagesOf(file(u"q.pdf"_s)), 1);
}

TEST_F(WorkbookOutput, WithAPrinterTheChosenPagesArePrinted)
{
    sheet(1).setCell(1, 12, u"远"_s);
    int offered = 0;
    desktop.hasPrinter = [] { return true; };
    desktop.choosePrinter = [&](QPrinter& printer, int pages, QWidget*) {
        offered = pages;
        printer.setOutputFileName(file(u"printed.pdf"_s));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 2);
        return true;
    };
    excel::printSheet(sheet(1), &window(), desktop);
    EXPECT_EQ(offered, 2);
    EXPECT_EQ(pagesOf(file(u"printed.pdf"_s)), 1);
}

TEST_F(WorkbookOutput, NothingIsPrintedWhenThePrinterDialogIsCancelled)
{
    desktop.hasPrinter = [] { return true; };
    bool asked = false;
    desktop.choosePrinter = [&](QPrinter& printer, int, QWidget*) {
        printer.setOutputFileName(file(u"printed.pdf"_s));
        asked = true;
        return false;
    };
    excel::printSheet(sheet(1), &window(), desktop);
    EXPECT_TRUE(asked);
    EXPECT_FALSE(QFile::exists(file(u"printed.pdf"_s)));
}

TEST_F(WorkbookOutput, HandsAReadOnlyCopyToTheSpreadsheetProgramThatGoesWithTheWindow)
{
    click(u"OpenOutside"_s);
    EXPECT_TRUE(opened.endsWith(u"工作簿1.xlsx"_s));
    EXPECT_FALSE(QFile::permissions(opened).testFlag(QFile::WriteOwner));
    EXPECT_FALSE(book.Saved());
    click(u"OpenOutside"_s);
    Application other;
    EXPECT_EQ(other.Workbooks().Open(opened).Worksheets().Item(1).Cells(2, 2).text(), u"0805"_s);
    delete alive.data();
    EXPECT_FALSE(QFile::exists(opened));
}

TEST_F(WorkbookOutput, TheCopyOfASavedWorkbookIsItsFile)
{
    book.SaveAs(file(u"d.xlsx"_s));
    click(u"OpenOutside"_s);
    EXPECT_TRUE(opened.endsWith(u"/d.xlsx"_s));
    EXPECT_NE(opened, file(u"d.xlsx"_s));
    EXPECT_TRUE(QFile::permissions(file(u"d.xlsx"_s)).testFlag(QFile::WriteOwner));
}

TEST_F(WorkbookOutput, SaysWhenThereIsNoSpreadsheetProgram)
{
    answers = false;
    click(u"OpenOutside"_s);
    EXPECT_EQ(dialogs.shown, QStringList(u"错误: 没有找到可以打开工作簿的电子表格程序。"_s));
}

TEST_F(WorkbookOutput, PagesGoDownFirstAndThenToTheRight)
{
    sheet(1).setCell(30, 10, 1);
    // Ten columns of 54 points, thirty rows of 13.5.
    const excel::SheetPages pages(sheet(1), QSizeF(5 * 54, 15 * 13.5));
    ASSERT_EQ(pages.count(), 4);
    EXPECT_EQ(pages.cells(0), (excel::CellRange{1, 1, 15, 5}));
    EXPECT_EQ(pages.cells(1), (excel::CellRange{16, 1, 30, 5}));
    EXPECT_EQ(pages.cells(2), (excel::CellRange{1, 6, 15, 10}));
}

} // namespace
