#include "import/ui/Formgf.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;

class ErrorListScreen : public testing::Test
{
protected:
    ErrorListScreen()
    {
        QSettings().clear();
        state.KMImport = {{u"语文"_s, 150, 4}, {u"数学"_s, 100, 5}};
        state.MFGData.setCols(5);
        state.MFGData.setRows(5);
        state.errors.setRows(1);
        state.errors.setCols(7);
        setRow(0, {u"班级"_s, u"学号"_s, u"姓名"_s, u"科目"_s, u"成绩"_s, u"错误原因"_s});
        state.errors.setColWidth(6, 0);
    }

    void setRow(int row, const QStringList& texts)
    {
        for (int col = 0; col < texts.size(); ++col)
            state.errors.setTextMatrix(row, col, texts[col]);
    }

    void addError(const QString& subject, const QString& score, const QString& reason)
    {
        const int row = state.errors.Rows();
        state.ErrorCount += 1;
        state.errors.setRows(row + 1);
        state.badCells.push_back({row, subject == u"语文" ? 3 : 4});
        setRow(row, {u"1"_s, QString::number(row), u"王芳"_s, subject, score, reason});
    }

    void open(importing::Formgf::Shown shown = importing::Formgf::Shown::DuringImport)
    {
        form = std::make_unique<importing::Formgf>(state, nullptr, shown);
        form->show();
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
        view = form->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
        box = form->findChild<grid::CellTextEditor*>(u"Text1"_s);
    }

    void openTwo()
    {
        addError(u"语文"_s, u"160"_s, u"超过总分"_s);
        addError(u"数学"_s, u""_s, u"分值不能为空"_s);
        open();
    }

    QString reason(int row) const { return state.errors.TextMatrix(row, 5); }
    QRect cell(int row, int col) { return view->visualRect(view->model()->index(row, col)); }

    void click(int row, int col)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell(row, col).center());
    }

    void answer(int row, const QString& text)
    {
        click(row, 4);
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }

    QCheckBox* store() { return form->findChild<QCheckBox*>(u"CheckStore"_s); }
    QString note() { return form->findChild<QLabel*>(u"LabelStore"_s)->text(); }
    QString staged(int row, int column) { return state.MFGData.TextMatrix(row, column); }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    support::ScriptedDialogs dialogs;
    importing::ImportState state;
    std::unique_ptr<importing::Formgf> form;
    grid::FlexGridView* view = nullptr;
    grid::CellTextEditor* box = nullptr;
};

TEST_F(ErrorListScreen, TellsHowManyScoresAreBadAndWhatToDo)
{
    openTwo();
    EXPECT_EQ(form->windowTitle(), u"修改错误成绩"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label1"_s)->text(), u"共发现 2 处成绩有问题！"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label2"_s)->text(), u"点击相应成绩输入新成绩,回车确认"_s);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(view->isColumnHidden(6));
    EXPECT_GT(cell(1, 5).width(), form->fontMetrics().horizontalAdvance(u"分值不能为空"_s));
}

TEST_F(ErrorListScreen, AClickAnywhereOnARowEditsItsScore)
{
    openTwo();
    for (const int col : {0, 2, 5}) {
        click(1, col);
        EXPECT_EQ(box->geometry(), cell(1, 4));
        EXPECT_EQ(box->text(), u"160"_s);
        EXPECT_TRUE(box->hasFocus());
    }
    click(0, 4);
    EXPECT_FALSE(box->isVisible()) << "the heading has no editor";
}

TEST_F(ErrorListScreen, ScrollingTakesTheEditorOutOfSight)
{
    for (int i = 0; i < 100; ++i)
        addError(u"语文"_s, u"160"_s, u"超过总分"_s);
    open();
    click(1, 4);
    view->verticalScrollBar()->setValue(40);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(view->hasFocus());
}

TEST_F(ErrorListScreen, TheTipIsTheTextOfTheCell)
{
    openTwo();
    EXPECT_EQ(view->model()->index(1, 5).data(Qt::ToolTipRole).toString(), u"超过总分"_s);
}

TEST_F(ErrorListScreen, EnterOnAnEmptyEditorDoesNothing)
{
    openTwo();
    answer(2, u""_s);
    EXPECT_EQ(reason(2), u"分值不能为空"_s);
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ErrorListScreen, AnAcceptedScoreEmptiesTheReasonAndTheListKeepsTheBadOne)
{
    openTwo();
    state.MFGData.setTextMatrix(1, 3, u"160"_s);
    answer(1, u"95.50"_s);
    EXPECT_EQ(reason(1), u""_s);
    EXPECT_EQ(state.errors.TextMatrix(1, 4), u"160"_s);
    EXPECT_EQ(state.MFGData.TextMatrix(3, 3), u"95.5"_s);
    EXPECT_EQ(state.MFGData.TextMatrix(1, 3), u"160"_s);
    EXPECT_FALSE(box->isVisible());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ErrorListScreen, AScoreEqualToTheFullMarkIsAccepted)
{
    openTwo();
    answer(1, u"150"_s);
    answer(2, u"0"_s);
    EXPECT_EQ(reason(1) + reason(2), u""_s);
}

TEST_F(ErrorListScreen, AScoreOutsideTheRangeIsRefusedAndTheBadOneShownAgain)
{
    openTwo();
    for (const QString& text : {u"150.5"_s, u"-1"_s}) {
        dialogs.shown.clear();
        answer(1, text);
        EXPECT_EQ(dialogs.shown, QStringList{u"错误: 输入分数有误，请重新输入！"_s});
        EXPECT_EQ(box->text(), u"160"_s);
        EXPECT_EQ(box->geometry(), cell(1, 4));
        EXPECT_EQ(reason(1), u"超过总分"_s);
    }
}

TEST_F(ErrorListScreen, AnUnknownSubjectTakesNoPositiveScore)
{
    addError(u"美术"_s, u"5"_s, u"超过总分"_s);
    open();
    answer(1, u"1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 输入分数有误，请重新输入！"_s});
    answer(1, u"0"_s);
    EXPECT_EQ(reason(1), u""_s);
}

TEST_F(ErrorListScreen, IsLeftOnlyWhenEveryRowIsAnswered)
{
    openTwo();
    answer(1, u"90"_s);
    press(u"Command2"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"至少有一项成绩还没有修改！"_s});
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(box->geometry(), cell(2, 4));
    QTest::keyClicks(box, u"80"_s);
    QTest::keyClick(box, Qt::Key_Enter);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(dialogs.shown.size(), 1);
}

TEST_F(ErrorListScreen, TheCancelButtonAndEscCloseNothing)
{
    openTwo();
    press(u"Command1"_s);
    click(1, 4);
    QTest::keyClicks(box, u"9"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(box->isVisible());
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(reason(1), u"超过总分"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ErrorListScreen, TheCloseBoxLeavesWithOpenRows)
{
    openTwo();
    form->hide();
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(window.objectName(), u"Formgf"_s);
        window.close();
    });
    form->exec();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(reason(1), u"超过总分"_s);
}

TEST_F(ErrorListScreen, ShownAgainItKeepsTheCountAndTheAnswers)
{
    openTwo();
    answer(1, u"90"_s);
    open();
    EXPECT_EQ(form->findChild<QLabel*>(u"Label1"_s)->text(), u"共发现 2 处成绩有问题！"_s);
    EXPECT_EQ(reason(1), u""_s);
    EXPECT_EQ(state.errors.TextMatrix(1, 4), u"160"_s);
}

TEST_F(ErrorListScreen, AnArrowAnswersWhatWasTypedAndGoesOn)
{
    openTwo();
    click(1, 4);
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->geometry(), cell(2, 4));
    EXPECT_EQ(reason(1), u"超过总分"_s) << "nothing was typed";
    QTest::keyClicks(box, u"80"_s);
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ(reason(2), u""_s);
    EXPECT_EQ(box->geometry(), cell(1, 4));
    QTest::keyClicks(box, u"0"_s);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 输入分数有误，请重新输入！"_s});
    EXPECT_EQ(box->geometry(), cell(1, 4)) << "a refused score keeps the editor";
}

TEST_F(ErrorListScreen, ThreeThousandErrorsAreWorkedOffByTheKeyboard)
{
    for (int i = 0; i < 3000; ++i)
        addError(u"数学"_s, u""_s, u"分值不能为空"_s);
    open();
    EXPECT_TRUE(view->hasFocus());
    QElapsedTimer timer;
    timer.start();
    for (int row = 1; row <= 300; ++row) {
        QTest::keyClicks(view, u"8"_s);
        QTest::keyClicks(box, u"5"_s);
        QTest::keyClick(box, Qt::Key_Return);
        ASSERT_EQ(reason(row), u""_s);
    }
    EXPECT_LT(timer.elapsed(), 10000);
    QTest::keyClick(view, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_TRUE(view->viewport()->rect().contains(box->geometry()));
    QTest::keyClicks(box, u"85"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(reason(3000), u""_s);
    press(u"Command2"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"至少有一项成绩还没有修改！"_s});
    EXPECT_EQ(box->geometry(), cell(301, 4));
    EXPECT_TRUE(view->viewport()->rect().contains(box->geometry()));
}

TEST_F(ErrorListScreen, StoresCorrectionsWhereTheBoxIsTickedAndRemembersIt)
{
    openTwo();
    EXPECT_FALSE(store()->isChecked()) << "off at first";
    EXPECT_TRUE(note().contains(u"改了也不起作用"_s));
    QTest::keyClick(store(), Qt::Key_Space);
    EXPECT_TRUE(note().startsWith(u"确认过的分值代替表格里的分值"_s));
    answer(1, u"95"_s);
    EXPECT_EQ(staged(1, 3), u"95"_s);
    EXPECT_EQ(staged(3, 3), QString());
    open();
    EXPECT_TRUE(store()->isChecked()) << "remembered";
    answer(2, u"70"_s);
    EXPECT_EQ(staged(2, 4), u"70"_s);
}

TEST_F(ErrorListScreen, ShownAfterTheImportTheBoxIsOffAndPointsElsewhere)
{
    openTwo();
    QTest::keyClick(store(), Qt::Key_Space);
    open(importing::Formgf::Shown::AfterImport);
    EXPECT_FALSE(store()->isEnabled());
    EXPECT_FALSE(store()->isChecked());
    EXPECT_EQ(note(), u"导入已经完成，这里确认的分值不再存入成绩库。要改成绩，请用“修改成绩”。"_s);
    QTest::keyClick(store(), Qt::Key_Space);
    answer(1, u"95"_s);
    EXPECT_EQ(staged(1, 3), QString());
}

TEST_F(ErrorListScreen, CopiesTheSelectedCells)
{
    openTwo();
    click(1, 3);
    QTest::keyClick(box, Qt::Key_Escape);
    QTest::keyClick(view, Qt::Key_End, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().trimmed(), u"160\t超过总分"_s);
}

} // namespace
