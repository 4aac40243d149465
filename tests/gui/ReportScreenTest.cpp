#include "oldlibraries/ui/ReportScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QTest>

#include "oldlibraries/ReportForms.h"
#include "platform/grid/GridText.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using oldlibraries::ConversionReport;

class ReportScreen : public testing::Test
{
protected:
    ReportScreen()
    {
        screen.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    void press(const QString& button)
    {
        QTest::mouseClick(screen.findChild<QPushButton*>(button), Qt::LeftButton);
    }

    // The real dialogs lie below the scripted ones.
    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    const ConversionReport report{test.file(u"旧.CJK"_s),
                                  test.file(u"旧（转换）.CJK"_s),
                                  {{u"信息表"_s, 3}, {u"成绩表"_s, 12}},
                                  {{u"信息表"_s, 2, u"姓名"_s, u"王'芳\r\n--"_s, u"原样转入。"_s},
                                   {u"成绩表"_s, 7, u"语文"_s, u"1e308"_s, u"原样转入。"_s}}};
    oldlibraries::ReportScreen screen{report, screenDialogs, nullptr};
    grid::FlexGridView* view = screen.findChild<grid::FlexGridView*>(u"ReportGrid"_s);
};

TEST_F(ReportScreen, ShowsTheReport)
{
    EXPECT_EQ(screen.windowTitle(), u"转换报告"_s);
    EXPECT_EQ(grid::gridText(view->grid()), grid::gridText(oldlibraries::reportGrid(report)));
    EXPECT_TRUE(grid::gridText(view->grid()).contains(u"成绩表\t7\t语文\t1e308\t原样转入。"_s));
}

TEST_F(ReportScreen, IsSearchedAndCopiedByKeys)
{
    EXPECT_EQ(screen.focusWidget(), view);
    QTest::keyClick(view, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(screen.focusWidget(), u"1e308"_s);
    QTest::keyClick(screen.focusWidget(), Qt::Key_Return);
    QTest::keyClick(screen.focusWidget(), Qt::Key_Escape);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"1e308\r\n"_s);
}

TEST_F(ReportScreen, IsSavedAsAWorkbookOrAsText)
{
    const QString book = test.file(u"报告.xlsx"_s);
    const QString text = test.file(u"报告.txt"_s);
    for (const QString& file : {book, text}) {
        test.dialogs.file = file;
        press(u"ReportSave"_s);
    }
    EXPECT_EQ(test.dialogs.fileFilter, u"工作簿或文本文件|*.xlsx;*.txt"_s);
    EXPECT_EQ(QString::fromUtf8(support::read(text)), oldlibraries::reportText(report));
    EXPECT_TRUE(support::read(book).startsWith("PK"));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_TRUE(screen.isVisible());
}

TEST_F(ReportScreen, OverwritesOnlyIfAsked)
{
    const QString text = test.file(u"报告.txt"_s);
    support::write(text, "the user's own");
    test.dialogs.file = text;
    test.dialogs.expect(u"是否覆盖原文件"_s, runtime::Answer::Cancel);
    press(u"ReportSave"_s);
    EXPECT_EQ(support::read(text), "the user's own");
}

TEST_F(ReportScreen, ThatCannotBeSavedSaysSoAndStays)
{
    test.dialogs.file = test.file(u"没有/报告.txt"_s);
    press(u"ReportSave"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].startsWith(u"无法写入文件 %1"_s.arg(*test.dialogs.file)));
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub SaveReport/OldLibraries"_s));
    EXPECT_TRUE(screen.isVisible());
    press(u"ReportClose"_s);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(ReportScreen, WithoutAFileNothingIsSaved)
{
    press(u"ReportSave"_s);
    EXPECT_EQ(test.dialogs.fileTitle, u"保存文件"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

} // namespace
