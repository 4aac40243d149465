#include "workbooks/ui/WorkbookWindow.h"

#include <QFile>
#include <QLineEdit>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "gui/WorkbookFixture.h"
#include "platform/widgets/ScreenDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using excel::Application;
using excel::Workbook;
using excel::WorkbookWindow;

class WorkbookWindowTest : public support::WorkbookFixture
{
};

TEST_F(WorkbookWindowTest, HasATabForEverySheetThatIsNotHidden)
{
    sheet(2).setVisibility(excel::Visibility::VeryHidden);
    window().refresh();
    EXPECT_EQ(tabs().count(), 1);
    sheet(2).setVisibility(excel::Visibility::Visible);
    window().refresh();
    ASSERT_EQ(tabs().count(), 2);
    EXPECT_EQ(tabs().tabText(1), u"对比&&分析"_s);
}

TEST_F(WorkbookWindowTest, AClickOnATabBringsTheSheetForwardInTheWorkbookToo)
{
    QTest::mouseClick(&tabs(), Qt::LeftButton, {}, tabs().tabRect(1).center());
    EXPECT_EQ(shown(1, 1), u"对比"_s);
    EXPECT_EQ(&book.activeSheet(), &sheet(2));
    QTest::keyClick(&window(), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(&book.activeSheet(), &sheet(1));
    QTest::keyClick(&window(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(&book.activeSheet(), &sheet(2));
}

TEST_F(WorkbookWindowTest, FollowsTheSheetThatIsActivated)
{
    sheet(2).Activate();
    window().refresh();
    EXPECT_EQ(tabs().currentIndex(), 1);
    EXPECT_EQ(shown(1, 1), u"对比"_s);
    window().showSheet(u"考试分析"_s);
    EXPECT_EQ(tabs().currentIndex(), 0);
    window().showSheet(u"没有的"_s);
    EXPECT_EQ(tabs().currentIndex(), 0);
}

TEST_F(WorkbookWindowTest, SavesUnderANameWithTheEndingAddedAndShowsThatNameThen)
{
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_TRUE(window().windowTitle().startsWith(u"工作簿1"_s));
    dialogs.file = file(u"结果"_s);
    click(u"SaveAs"_s);
    EXPECT_TRUE(QFile::exists(file(u"结果.xlsx"_s)));
    EXPECT_EQ(dialogs.fileTitle, u"保存文件"_s);
    EXPECT_TRUE(book.Saved());
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_TRUE(window().windowTitle().startsWith(u"结果.xlsx"_s));
    Application other;
    EXPECT_EQ(other.Workbooks().Open(file(u"结果.xlsx"_s)).Worksheets().Item(1).Cells(2, 3).text(),
              u"张三"_s);
}

TEST_F(WorkbookWindowTest, TheOldEndingBecomesTheNewOneAndOverwritingIsAskedAbout)
{
    QFile older(file(u"a.xlsx"_s));
    ASSERT_TRUE(older.open(QIODevice::WriteOnly));
    older.close();
    for (const QString& name : {u"a"_s, u"a.xls"_s, u"a.xlsx"_s}) {
        dialogs.file = file(name);
        dialogs.expect(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Cancel);
        QTest::keyClick(&window(), Qt::Key_S, Qt::ControlModifier);
    }
    EXPECT_EQ(older.size(), 0);
    EXPECT_FALSE(book.Saved());
    dialogs.expect(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Ok);
    QTest::keyClick(&window(), Qt::Key_F12);
    EXPECT_TRUE(book.Saved());
    EXPECT_GT(older.size(), 0);
}

TEST_F(WorkbookWindowTest, AFailedSaveIsOneMessageAndTheWorkbookStaysUnsaved)
{
    dialogs.file = file(u"missing/a.xlsx"_s);
    click(u"SaveAs"_s);
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].startsWith(u"错误: 工作簿没有保存：\n"_s));
    EXPECT_FALSE(book.Saved());
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(WorkbookWindowTest, ClosingUnsavedAsksAndNoClosesTheWorkbook)
{
    dialogs.expect(u"“工作簿1”还没有保存，是否保存？"_s, runtime::Answer::No);
    QTest::keyClick(&window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(book.isOpen());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(alive, nullptr);
}

TEST_F(WorkbookWindowTest, CancelAndAnUnsuccessfulSaveKeepTheWindow)
{
    dialogs.expect(u"还没有保存"_s, runtime::Answer::Cancel);
    EXPECT_FALSE(window().close());
    dialogs.expect(u"还没有保存"_s, runtime::Answer::Yes);
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(book.isOpen());
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WorkbookWindowTest, YesSavesAndCloses)
{
    dialogs.file = file(u"b.xlsx"_s);
    dialogs.expect(u"还没有保存"_s, runtime::Answer::Yes);
    EXPECT_TRUE(window().close());
    EXPECT_FALSE(book.isOpen());
    EXPECT_TRUE(QFile::exists(file(u"b.xlsx"_s)));
}

TEST_F(WorkbookWindowTest, TheRealQuestionHasCancelAsItsSafeAnswer)
{
    const widgets::ScreenDialogs real;
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(book.isOpen());
}

TEST_F(WorkbookWindowTest, AWorkbookThatWasReadClosesWithoutAsking)
{
    book.SaveAs(file(u"c.xlsx"_s));
    Workbook& read = application.Workbooks().Open(file(u"c.xlsx"_s));
    auto* other = new WorkbookWindow(read, u"x"_s, desktop);
    EXPECT_TRUE(other->windowTitle().startsWith(u"c.xlsx"_s));
    other->show();
    read.Worksheets().Item(1).setAutoFilter({1, 1, 3, 3});
    read.Worksheets().Item(1).AutoFilter();
    other->refresh();
    EXPECT_FALSE(other->isWindowModified());
    EXPECT_TRUE(other->close());
    EXPECT_FALSE(read.isOpen());
    EXPECT_TRUE(book.isOpen());
}

TEST_F(WorkbookWindowTest, TheFileThatAWorkbookWasReadFromIsNotOverwritten)
{
    book.SaveAs(file(u"c.xlsx"_s));
    Workbook& read = application.Workbooks().Open(file(u"c.xlsx"_s));
    WorkbookWindow other(read, u"x"_s, desktop);
    other.setAttribute(Qt::WA_DeleteOnClose, false);
    dialogs.file = file(u"c.xls"_s);
    dialogs.expect(u"页面设置和分页"_s, u"继续另存(&S)"_s);
    dialogs.expect(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Ok);
    other.findChild<QAction*>(u"SaveAs"_s)->trigger();
    EXPECT_EQ(dialogs.shown.last(), u"错误: 不能覆盖工作簿的原文件，请换一个文件名。"_s);
    dialogs.file = file(u"d.xlsx"_s);
    other.findChild<QAction*>(u"SaveAs"_s)->trigger();
    EXPECT_TRUE(QFile::exists(file(u"d.xlsx"_s)));
}

TEST_F(WorkbookWindowTest, SavingAWorkbookThatWasReadTellsOnceWhatItDoesNotKeep)
{
    book.SaveAs(file(u"c.xlsx"_s));
    Workbook& read = application.Workbooks().Open(file(u"c.xlsx"_s));
    read.addLosses({excel::Loss::Shapes, excel::Loss::Printing});
    WorkbookWindow other(read, u"x"_s, desktop);
    other.setAttribute(Qt::WA_DeleteOnClose, false);
    const QString told =
        u"原文件中的下列内容不会保存到新文件中：\n图片、图表和图形、页面设置和分页。\n原文件不变。"_s;
    const auto save = [&] { other.findChild<QAction*>(u"SaveAs"_s)->trigger(); };
    dialogs.expect(told, u"取消"_s);
    save();
    EXPECT_EQ(dialogs.safeOf(told), u"取消"_s);
    EXPECT_EQ(dialogs.fileTitle, QString());
    dialogs.expect(told, u"继续另存(&S)"_s);
    save();
    EXPECT_NE(dialogs.fileTitle, QString());
    dialogs.file = file(u"d.xlsx"_s);
    save();
    EXPECT_TRUE(QFile::exists(file(u"d.xlsx"_s)));
    EXPECT_EQ(dialogs.questions.count(told), 2);
}

TEST_F(WorkbookWindowTest, AWorkbookThatWasMadeHereIsSavedWithoutAQuestion)
{
    sheet(1).addLine({1, 1}, {50, 50});
    dialogs.file = file(u"e.xlsx"_s);
    click(u"SaveAs"_s);
    EXPECT_EQ(dialogs.questions, QStringList());
    EXPECT_TRUE(QFile::exists(file(u"e.xlsx"_s)));
}

TEST_F(WorkbookWindowTest, AWorkbookClosedFromOutsideTakesItsWindowAlong)
{
    book.Close();
    window().grab();
    window().refresh();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(window().workbook(), nullptr);
}

TEST_F(WorkbookWindowTest, EveryPartThatTakesTheKeyboardHasANameToReadOut)
{
    for (QWidget* widget : window().findChildren<QWidget*>()) {
        const bool wanted = qobject_cast<QTabBar*>(widget) || qobject_cast<QLineEdit*>(widget)
                            || qobject_cast<excel::WorksheetView*>(widget);
        EXPECT_TRUE(!wanted || !widget->accessibleName().isEmpty())
            << widget->metaObject()->className();
    }
}

} // namespace
