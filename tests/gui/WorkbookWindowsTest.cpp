#include "workbooks/ui/WorkbookWindows.h"

#include <QApplication>
#include <QDialog>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"
#include "workbooks/ui/WorksheetView.h"

namespace {

using namespace Qt::StringLiterals;
using excel::Application;
using excel::Workbook;
using excel::WorkbookWindow;
using excel::WorksheetView;

/// The windows of all instances, with an instance that is seen.
class WorkbookWindowsTest : public testing::Test
{
protected:
    WorkbookWindowsTest() { application.setVisible(true); }

    support::ScriptedDialogs dialogs;
    excel::WorkbookWindows windows;
    Application application;
};

TEST_F(WorkbookWindowsTest, EveryOpenWorkbookGetsAWindowAtOnce)
{
    Workbook& one = application.Workbooks().Add();
    Workbook& two = application.Workbooks().Add();
    ASSERT_EQ(windows.windows().size(), 2u);
    EXPECT_TRUE(windows.windowOf(one)->isVisible());
    EXPECT_TRUE(windows.windowOf(two)->isVisible());
    EXPECT_NE(windows.windowOf(one)->windowTitle(), windows.windowOf(two)->windowTitle());
}

TEST_F(WorkbookWindowsTest, AnInstanceThatIsNotVisibleShowsNothingUntilItIs)
{
    Application hidden;
    Workbook& book = hidden.Workbooks().Add();
    EXPECT_EQ(windows.windowOf(book), nullptr);
    hidden.setVisible(true);
    EXPECT_NE(windows.windowOf(book), nullptr);
    hidden.setVisible(false);
    EXPECT_EQ(windows.windowOf(book), nullptr);
    EXPECT_TRUE(book.isOpen());
}

TEST_F(WorkbookWindowsTest, WorkbooksOfARunOpenWhenItEnds)
{
    application.setScreenUpdating(false);
    application.Workbooks().Add();
    application.Workbooks().Add();
    windows.sync();
    EXPECT_TRUE(windows.windows().empty());
    application.setScreenUpdating(true);
    EXPECT_EQ(windows.windows().size(), 2u);
}

TEST_F(WorkbookWindowsTest, QuittingTakesTheWindowsOfThatInstanceWithoutAsking)
{
    Workbook& stays = application.Workbooks().Add();
    {
        Application other;
        other.setVisible(true);
        other.Workbooks().Add().Worksheets().Item(1).setCell(1, 1, 1);
        EXPECT_EQ(windows.windows().size(), 2u);
    }
    ASSERT_EQ(windows.windows().size(), 1u);
    EXPECT_EQ(windows.windows()[0], windows.windowOf(stays));
    application.Quit();
    EXPECT_TRUE(windows.windows().empty());
}

TEST_F(WorkbookWindowsTest, AWindowClosedByTheUserStaysClosedAndTheInstanceAnswers)
{
    Workbook& book = application.Workbooks().Add();
    EXPECT_TRUE(windows.windowOf(book)->close());
    windows.sync();
    EXPECT_FALSE(book.isOpen());
    EXPECT_TRUE(windows.windows().empty());
    EXPECT_EQ(application.Workbooks().Count(), 0);
    EXPECT_NE(windows.windowOf(application.Workbooks().Add()), nullptr);
}

TEST_F(WorkbookWindowsTest, WindowsFollowWhatIsWrittenWithoutBeingTold)
{
    Workbook& book = application.Workbooks().Add();
    auto* view = windows.windowOf(book)->findChild<WorksheetView*>(u"SheetView"_s);
    book.Worksheets().Item(3).setCell(2, 2, u"新"_s);
    book.Worksheets().Item(3).Activate();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->model()->index(1, 1).data() == u"新"_s; }));
}

TEST_F(WorkbookWindowsTest, ClosingAllStopsWhereTheUserCancels)
{
    Workbook& saved = application.Workbooks().Add();
    Workbook& unsaved = application.Workbooks().Add();
    unsaved.Worksheets().Item(1).setCell(1, 1, 1);
    dialogs.expect(u"还没有保存"_s, runtime::Answer::Cancel);
    EXPECT_FALSE(windows.closeAll());
    EXPECT_FALSE(saved.isOpen());
    EXPECT_TRUE(unsaved.isOpen());
    dialogs.expect(u"还没有保存"_s, runtime::Answer::No);
    EXPECT_TRUE(windows.closeAll());
    EXPECT_FALSE(unsaved.isOpen());
}

TEST_F(WorkbookWindowsTest, AScreenThatBlocksItsOwnWindowLeavesTheWorkbookUsable)
{
    QWidget main;
    main.show();
    QDialog screen(&main);
    screen.setWindowModality(Qt::WindowModal);
    screen.show();
    Workbook& book = application.Workbooks().Add();
    WorkbookWindow* window = windows.windowOf(book);
    EXPECT_EQ(QApplication::activeModalWidget(), &screen);
    auto* tabs = window->findChild<QTabBar*>(u"SheetTabs"_s);
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    EXPECT_EQ(&book.activeSheet(), &book.Worksheets().Item(3));
}

/// A modal screen over a main window, active as one that just ran a command.
class WorkbookWindowsOverAScreen : public WorkbookWindowsTest
{
protected:
    WorkbookWindowsOverAScreen() : screen(&main)
    {
        main.show();
        screen.setWindowModality(Qt::WindowModal);
        screen.show();
        screen.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    QWidget main;
    QDialog screen;
};

TEST_F(WorkbookWindowsOverAScreen, AWorkbookThatItMadeComesInFront)
{
    const Workbook& book = application.Workbooks().Add();
    EXPECT_TRUE(QTest::qWaitForWindowActive(windows.windowOf(book)));
}

TEST_F(WorkbookWindowsOverAScreen, AWorkbookThatItOpenedToReadStaysBehind)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"成绩.xlsx"_s);
    Application hidden;
    hidden.Workbooks().Add().SaveAs(file);
    const Workbook& book = application.Workbooks().Open(file);
    ASSERT_NE(windows.windowOf(book), nullptr);
    QApplication::processEvents();
    EXPECT_TRUE(screen.isActiveWindow());
}

} // namespace
