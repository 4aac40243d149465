#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"
#include "workbooks/BookFiles.h"
#include "workbooks/model/Application.h"

using namespace Qt::StringLiterals;
using support::errorOf;

TEST(Application, OpensWorkbooksAndCountsThem)
{
    excel::Application application;
    EXPECT_EQ(application.Workbooks().Count(), 0);
    excel::Workbook& book = application.Workbooks().Open(fixture(u"scores.xlsx"_s));
    EXPECT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(&application.Workbooks().Item(1), &book);
    EXPECT_EQ(book.path(), fixture(u"scores.xlsx"_s));
    EXPECT_EQ(book.Worksheets().Item(1).Cells(1, 3).text(), u"姓名"_s);
}

TEST(Application, AFileThatCannotBeReadOpensNothing)
{
    excel::Application application;
    EXPECT_THROW(application.Workbooks().Open(fixture(u"cut-off.xlsx"_s)), excel::ReadError);
    EXPECT_EQ(application.Workbooks().Count(), 0);
}

TEST(Application, ANewWorkbookHasThreeEmptySheetsAndNoFile)
{
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    EXPECT_EQ(book.Worksheets().Count(), 3);
    EXPECT_EQ(book.Worksheets().Item(3).Name(), u"Sheet3"_s);
    EXPECT_EQ(book.path(), QString());
}

TEST(Application, IsHiddenUntilItIsShown)
{
    excel::Application application;
    EXPECT_FALSE(application.Visible());
    application.setVisible(true);
    EXPECT_TRUE(application.Visible());
}

TEST(Application, AClosedWorkbookIsNoLongerCountedAndRefusesEveryCall)
{
    excel::Application application;
    excel::Workbook& book = application.Workbooks().Add();
    excel::Workbook& other = application.Workbooks().Add();
    excel::Worksheet& sheet = book.Worksheets().Item(1);
    book.Close();
    EXPECT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(&application.Workbooks().Item(1), &other);
    const QString closed = u"工作簿已经关闭。"_s;
    EXPECT_EQ(errorOf([&] { book.Worksheets(); }), closed);
    EXPECT_EQ(errorOf([&] { book.path(); }), closed);
    EXPECT_EQ(errorOf([&] { book.activeSheet(); }), closed);
    EXPECT_EQ(errorOf([&] { book.addSheet(u"新"_s); }), closed);
    EXPECT_EQ(errorOf([&] { book.sheets(); }), closed);
    EXPECT_EQ(errorOf([&] { book.Saved(); }), closed);
    EXPECT_EQ(errorOf([&] { book.setSaved(true); }), closed);
    EXPECT_EQ(errorOf([&] { book.SaveAs(u"没有的文件夹/a.xlsx"_s); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.Name(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.Cells(1, 1); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.setCell(1, 1, 1.0); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.AutoFilterMode(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.AutoFilter(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.Activate(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.lastUsedRow(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.lastUsedColumn(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.merges(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.geometry(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.visibility(); }), closed);
    EXPECT_EQ(errorOf([&] { sheet.setVisibility(excel::Visibility::Hidden); }), closed);
}

TEST(Application, QuittingClosesItsBooksAndLeavesOthersOpen)
{
    excel::Application first;
    excel::Application second;
    excel::Workbook& book = first.Workbooks().Add();
    excel::Workbook& other = second.Workbooks().Add();
    const excel::Workbook::SheetList sheets = book.Worksheets();
    first.Quit();
    first.Quit();
    EXPECT_FALSE(first.isRunning());
    EXPECT_EQ(errorOf([&] { first.Workbooks(); }), u"电子表格已经退出。"_s);
    EXPECT_EQ(errorOf([&] { first.Visible(); }), u"电子表格已经退出。"_s);
    EXPECT_EQ(errorOf([&] { sheets.Item(1); }), u"工作簿已经关闭。"_s);
    EXPECT_TRUE(second.isRunning());
    EXPECT_EQ(other.Worksheets().Count(), 3);
}

TEST(Application, TakesInAWorkbookThatWasMadeElsewhere)
{
    excel::Application application;
    auto made = std::make_unique<excel::Workbook>();
    made->addSheet(u"表"_s).setCell(1, 1, 1);
    const excel::Workbook& book = application.Workbooks().Add(std::move(made));
    EXPECT_EQ(application.Workbooks().Count(), 1);
    EXPECT_EQ(&application.Workbooks().Item(1), &book);
    EXPECT_EQ(application.Workbooks().Item(1).Worksheets().Item(1).Name(), u"表"_s);
    EXPECT_FALSE(book.Saved());
}
