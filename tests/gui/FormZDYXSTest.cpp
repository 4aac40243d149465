#include "configuration/ui/FormZDYXS.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

/// The screen as it comes up from the workbench with "T分" and the stream 文.
class CustomDisplayScreen : public testing::Test
{
protected:
    CustomDisplayScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s);
        test.reload();
        test.scores.settings.DisplayItems = {u"考试编号"_s, u"班级"_s, u"语文T分"_s};
        form = std::make_unique<configuration::FormZDYXS>(test.scores, screenDialogs, nullptr);
        form->setItem(u"T分"_s, u"文"_s);
        form->init();
        form->show();
        view = form->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
    }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    QString cell(int row, int col) const { return view->grid().TextMatrix(row, col); }

    QPoint centre(int row, int col) const
    {
        return view->visualRect(view->model()->index(row, col)).center();
    }

    void clickCell(int row, int col)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, centre(row, col));
    }

    void drag(const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, view->viewport()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &move);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, to);
    }

    QString stored() { return test.rows(u"select * from 自定义显示表"_s); }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s}};
    std::unique_ptr<configuration::FormZDYXS> form;
    grid::FlexGridView* view = nullptr;
};

TEST_F(CustomDisplayScreen, ComesUpWithTheItemTheStreamAndTheTicksOfTheWorkbench)
{
    EXPECT_EQ(form->windowTitle(), u"自定义显示  T分"_s);
    EXPECT_EQ(find<QComboBox>(u"ComboKL"_s)->currentText(), u"文"_s);
    EXPECT_EQ(cell(0, 0), u"项目名称"_s);
    EXPECT_EQ(cell(0, 1), u"显示"_s);
    EXPECT_EQ(cell(1, 0), u"班级"_s);
    EXPECT_EQ(cell(1, 1), u"√"_s);
    EXPECT_EQ(cell(2, 1), u""_s);
    EXPECT_EQ(cell(10, 0), u"语文T分"_s);
    EXPECT_EQ(cell(10, 1), u"√"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(CustomDisplayScreen, ShowsCaptionsAndTipsAndOffersAllAndTheStreams)
{
    auto* ComboKL = find<QComboBox>(u"ComboKL"_s);
    ASSERT_EQ(ComboKL->count(), 3);
    EXPECT_EQ(ComboKL->itemText(0), u"全"_s);
    EXPECT_EQ(ComboKL->itemText(1), u"文"_s);
    EXPECT_EQ(ComboKL->itemText(2), u"理"_s);
    EXPECT_TRUE(find<QLabel>(u"Label1"_s)->text().startsWith(u"科类"_s));
    EXPECT_EQ(find<QLabel>(u"Label1"_s)->buddy(), ComboKL);
    EXPECT_EQ(find<QPushButton>(u"CommandUP"_s)->text(), u"↑"_s);
    EXPECT_EQ(find<QPushButton>(u"CommandUP"_s)->toolTip(), u"上移"_s);
    EXPECT_EQ(find<QPushButton>(u"CommandDown"_s)->text(), u"↓"_s);
    EXPECT_EQ(find<QPushButton>(u"CommandDown"_s)->toolTip(), u"下移"_s);
    EXPECT_TRUE(find<QPushButton>(u"Command1"_s)->text().startsWith(u"确定"_s));
    EXPECT_TRUE(find<QPushButton>(u"Command2"_s)->text().startsWith(u"取消"_s));
}

TEST_F(CustomDisplayScreen, AClickTicksAndASecondOneUnticks)
{
    clickCell(2, 1);
    EXPECT_EQ(cell(2, 1), u"√"_s);
    clickCell(2, 1);
    EXPECT_EQ(cell(2, 1), u""_s);
    clickCell(2, 0);
    EXPECT_EQ(cell(2, 0), u"学号"_s);
    EXPECT_EQ(cell(2, 1), u""_s);
    clickCell(0, 1);
    EXPECT_EQ(cell(0, 1), u"显示"_s);
}

TEST_F(CustomDisplayScreen, TheSpaceBarTicksTheCurrentRow)
{
    clickCell(2, 0);
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_EQ(cell(3, 0), u"姓名"_s);
    EXPECT_EQ(cell(3, 1), u"√"_s);
}

TEST_F(CustomDisplayScreen, ADraggedBlockMovesAndStaysTheBlock)
{
    drag(centre(4, 0), centre(3, 0));
    press(u"CommandUP"_s);
    press(u"CommandUP"_s);
    press(u"CommandUP"_s);
    EXPECT_EQ(cell(1, 0), u"姓名"_s);
    EXPECT_EQ(cell(2, 0), u"科类"_s);
    EXPECT_EQ(cell(3, 0), u"班级"_s);
    EXPECT_EQ(cell(3, 1), u"√"_s);
    EXPECT_EQ(view->grid().Row, 1);
    EXPECT_EQ(view->grid().RowSel, 2);
    press(u"CommandDown"_s);
    EXPECT_EQ(cell(1, 0), u"班级"_s);
    EXPECT_EQ(cell(2, 0), u"姓名"_s);
    EXPECT_EQ(cell(3, 0), u"科类"_s);
    EXPECT_EQ(cell(4, 0), u"学号"_s);
}

TEST_F(CustomDisplayScreen, ADragInTheSecondColumnFlipsTheCellUnderThePointerAlone)
{
    drag(centre(2, 1), centre(4, 1));
    EXPECT_EQ(cell(2, 1), u""_s);
    EXPECT_EQ(cell(3, 1), u""_s);
    EXPECT_EQ(cell(4, 1), u"√"_s);
    press(u"CommandUP"_s);
    EXPECT_EQ(cell(1, 0), u"学号"_s);
    EXPECT_EQ(cell(3, 1), u"√"_s);
    EXPECT_EQ(cell(4, 0), u"班级"_s);
}

TEST_F(CustomDisplayScreen, RowsSelectedByKeysMoveToo)
{
    clickCell(2, 0);
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    press(u"CommandDown"_s);
    EXPECT_EQ(cell(2, 0), u"科类"_s);
    EXPECT_EQ(cell(3, 0), u"学号"_s);
    EXPECT_EQ(cell(4, 0), u"姓名"_s);
}

TEST_F(CustomDisplayScreen, SavesUnderTheStreamThatIsChosenNowAndStaysOpen)
{
    press(u"Command1"_s);
    auto* ComboKL = find<QComboBox>(u"ComboKL"_s);
    ComboKL->setFocus();
    QTest::keyClick(ComboKL, Qt::Key_Down);
    clickCell(1, 1);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"T分文|班级,语文T分 / T分理|语文T分"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"成功保存 自定义显示项目 T分文"_s,
                                               u"成功保存 自定义显示项目 T分理"_s}));
    EXPECT_TRUE(form->isVisible());
}

TEST_F(CustomDisplayScreen, WithNothingTickedAnEmptyListIsStored)
{
    clickCell(1, 1);
    clickCell(10, 1);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"T分文|"_s);
    EXPECT_EQ(test.scores.settings.GetZDYXS(u"T分文"_s), QStringList());
}

TEST_F(CustomDisplayScreen, ASavedOrderIsNotShownBack)
{
    clickCell(10, 0);
    press(u"CommandUP"_s);
    EXPECT_EQ(cell(9, 0), u"语文T分"_s);
    press(u"Command1"_s);
    test.scores.settings.DisplayItems = test.scores.settings.GetZDYXS(u"T分文"_s);
    form->init();
    EXPECT_EQ(cell(10, 0), u"语文T分"_s);
    EXPECT_EQ(cell(10, 1), u"√"_s);
}

TEST_F(CustomDisplayScreen, TheOtherButtonAndEscAndEnterDoNothing)
{
    clickCell(2, 1);
    press(u"Command2"_s);
    QTest::keyClick(form.get(), Qt::Key_Escape);
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(cell(2, 1), u"√"_s);
    EXPECT_EQ(stored(), u""_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(CustomDisplayScreen, FillsMostOfTheScreensHeightAndTheGridTheWindow)
{
    EXPECT_EQ(form->height(), QGuiApplication::primaryScreen()->geometry().height() * 8 / 10);
    for (const QSize& size : {form->size(), QSize(900, 500)}) {
        form->resize(size);
        QApplication::processEvents();
        const int width = view->viewport()->width();
        EXPECT_NEAR(view->columnWidth(0), width * 0.8, 4);
        EXPECT_NEAR(view->columnWidth(0) + view->columnWidth(1), width, 4);
        EXPECT_LE(view->columnWidth(0) + view->columnWidth(1), width);
        const QWidget* strip = find<QWidget>(u"Picture1"_s);
        EXPECT_GT(strip->y(), view->geometry().bottom());
        EXPECT_NEAR(strip->geometry().right(), view->geometry().right(), 1);
    }
    EXPECT_EQ(view->grid().RowHeight(3), 300);
    EXPECT_EQ(view->grid().ColAlignment(1), 0);
}

TEST_F(CustomDisplayScreen, AnItemOfAllStreamsOffersNoStreamAndIsSavedUnderItsKey)
{
    form->setItemOfAllStreams(u"导出成绩"_s, u"导出成绩False"_s);
    form->init();
    EXPECT_EQ(form->windowTitle(), u"自定义显示  导出成绩"_s);
    EXPECT_FALSE(find<QComboBox>(u"ComboKL"_s)->isVisible());
    EXPECT_FALSE(find<QLabel>(u"Label1"_s)->isVisible());
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"导出成绩False|班级,语文T分"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成功保存 自定义显示项目 导出成绩False"_s});
    EXPECT_TRUE(form->isVisible());
}

} // namespace
