#include "import/WorkbookIntake.h"

#include <gtest/gtest.h>

#include <QFile>

#include "SheetFixture.h"

namespace {

using importing::WorkbookIntake;

class WorkbookIntakeTest : public SheetFixture
{
protected:
    WorkbookIntakeTest() : SheetFixture(importing::classChangeSheet) {}
};

TEST_F(WorkbookIntakeTest, TheFileNameIsOfferedAsTheExamsName)
{
    EXPECT_EQ(WorkbookIntake::examNameOf(u"/学校/高一.期中.xlsx"_s), u"高一.期中"_s);
    EXPECT_EQ(WorkbookIntake::examNameOf(u"期末"_s), u"期末"_s);
}

TEST_F(WorkbookIntakeTest, WithoutAWorkbookThereAreNoSheets)
{
    EXPECT_EQ(intake.sheetNames(), QStringList());
    EXPECT_FALSE(intake.checkWorkbookOpen());
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
    EXPECT_EQ(dialogs.look(u"未打开"_s), errorBox);
}

TEST_F(WorkbookIntakeTest, ListsTheSheetsInWorkbookOrder)
{
    sheet({});
    EXPECT_EQ(intake.sheetNames(), (QStringList{sheetName, u"Sheet2"_s, u"Sheet3"_s}));
    EXPECT_EQ(intake.folder(),
              library.file({}) + (library.file({}).endsWith(u'/') ? u""_s : u"/"_s));
}

TEST_F(WorkbookIntakeTest, FileThatCannotBeReadSaysSoWhenTheImportStarts)
{
    QFile file(library.file(u"坏.xlsx"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no workbook");
    file.close();
    sheet({});
    intake.browse(file.fileName());
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(intake.sheetNames(), QStringList());
    EXPECT_FALSE(intake.checkWorkbookOpen());
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(
        dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRuFenBanXinXi"_s));
    EXPECT_EQ(dialogs.shown.last(), u"错误: 要分析的工作簿未打开！"_s);
}

TEST_F(WorkbookIntakeTest, BrowsingAgainLeavesTheFirstInstanceRunning)
{
    sheet({});
    intake.browse(library.file(u"keine.xlsx"_s));
    ASSERT_EQ(applications.size(), 2U);
    EXPECT_TRUE(applications[0]->isRunning());
    EXPECT_EQ(applications[0]->Workbooks().Count(), 1);
}

TEST_F(WorkbookIntakeTest, ClosedWorkbookIsReported)
{
    sheet({});
    applications[0]->Quit();
    EXPECT_FALSE(intake.checkWorkbookOpen());
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(
        dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRuFenBanXinXi"_s));
    EXPECT_EQ(dialogs.shown.last(), u"错误: 要分析的工作簿未打开！"_s);
}

TEST_F(WorkbookIntakeTest, UnknownSheetIsReported)
{
    sheet({});
    EXPECT_EQ(intake.openSheet(u"二年级"_s), nullptr);
    EXPECT_EQ(dialogs.failures.size(), 1);
}

TEST_F(WorkbookIntakeTest, SheetWithTheDemandedHeadingsOpensWithoutItsFilter)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号"_s}});
    worksheet().setAutoFilter({1, 1, 1, 5});
    EXPECT_EQ(intake.openSheet(sheetName), &worksheet());
    EXPECT_FALSE(worksheet().AutoFilterMode());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(WorkbookIntakeTest, HeadingsAreComparedToTheBlank)
{
    const Rows wrong[] = {{{u"班级 "_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号"_s}},
                          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s}},
                          {{u"班级"_s, u"姓名"_s, u"学号"_s, u"新班级"_s, u"新学号"_s}},
                          {}};
    for (const Rows& rows : wrong) {
        dialogs.shown.clear();
        sheet(rows);
        EXPECT_EQ(intake.openSheet(sheetName), nullptr);
        EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                             "前5列为：班级、学号、姓名、新班级、新学号"_s});
        EXPECT_EQ(dialogs.look(u"格式不对"_s), errorBox);
    }
}

TEST_F(WorkbookIntakeTest, OnlyTheExamImportBringsTheSheetForward)
{
    for (const importing::SheetRules* rules : {&importing::examSheet, &importing::studentSheet}) {
        sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}});
        excel::Workbook& book = applications.back()->Workbooks().Item(1);
        book.Worksheets().Item(2).Activate();
        WorkbookIntake other(applications, *rules);
        other.use(*applications.back(), book, {});
        other.openSheet(sheetName);
        EXPECT_EQ(&book.activeSheet() == &worksheet(), rules == &importing::examSheet);
    }
}

} // namespace
