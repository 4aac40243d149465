#include "maintenance/ui/FormJiaoShiMingDan.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/grid/ui/CellListEditor.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

/// Two exams and 40 classes; the master list has two names for 语文, one for 数学 and none for
/// 总分.
class TeacherScreen : public testing::Test
{
protected:
    TeacherScreen()
    {
        for (int classNumber = 1; classNumber <= 40; ++classNumber)
            test.addStudent(classNumber, 1, u"王芳"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {});
        test.addExam(u"期末"_s, u"理"_s, 2, {});
        test.execute(u"insert into 教师表 (考试名称,班级,语文) values ('期末',1,'周七')"_s);
        test.reload();
        writeNames(u"语文_张三\n数学_李四\n语文_王五\n"_s);
        open();
    }

    QString master() const { return test.paths.dataFile(u"教师总名单.txt"_s); }

    void writeNames(const QString& text) { runtime::writeTextFile(master(), text); }

    void open()
    {
        form =
            std::make_unique<maintenance::FormJiaoShiMingDan>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        view = find<grid::FlexGridView>(u"MSFlexGrid1"_s);
        box = find<grid::CellTextEditor>(u"Text1"_s);
        names = find<grid::CellListEditor>(u"List1"_s);
        exams = find<QListWidget>(u"List2"_s);
        combo = find<QComboBox>(u"Combo1"_s);
    }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    QString cell(int row, int col) const { return view->grid().TextMatrix(row, col); }

    void clickCell(int row, int col)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(row, col)).center());
    }

    static void clickEntry(QListWidget* list, int row, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys,
                          list->visualItemRect(list->item(row)).center());
    }

    void type(const QString& text)
    {
        QInputMethodEvent written;
        written.setCommitString(text);
        QApplication::sendEvent(box, &written);
    }

    void typeInto(int row, int col, const QString& text)
    {
        clickCell(row, col);
        box->selectAll();
        type(text);
    }

    bool editorsAreOpen() const { return box->isVisible() || names->isVisible(); }

    static QStringList entries(const QListWidget* list)
    {
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts.append(list->item(row)->text());
        return texts;
    }

    /// 考试 and teachers of the first class.
    QString stored()
    {
        return test.rows(u"select 考试名称,语文,数学 from 教师表 where 班级=1 order by 考试名称"_s);
    }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    std::unique_ptr<maintenance::FormJiaoShiMingDan> form;
    grid::FlexGridView* view = nullptr;
    grid::CellTextEditor* box = nullptr;
    grid::CellListEditor* names = nullptr;
    QListWidget* exams = nullptr;
    QComboBox* combo = nullptr;
};

TEST_F(TeacherScreen, BeginsWithTheFirstExamAndNoEditor)
{
    EXPECT_EQ(form->windowTitle(), u"设置教师名单"_s);
    EXPECT_EQ(combo->currentText(), u"期中"_s);
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(entries(exams), (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_FALSE(exams->isVisible());
    EXPECT_FALSE(editorsAreOpen());
    EXPECT_EQ(cell(0, 0) + cell(0, 1) + cell(0, 3) + cell(40, 0), u"班级语文总分40"_s);
}

TEST_F(TeacherScreen, AClickOpensTheBoxAndTheNamesOfTheSubject)
{
    clickCell(2, 1);
    EXPECT_TRUE(box->isVisible() && box->hasFocus());
    EXPECT_TRUE(names->isVisible());
    EXPECT_EQ(entries(names), (QStringList{u"张三"_s, u"王五"_s}));
    clickCell(2, 2);
    EXPECT_EQ(entries(names), QStringList{u"李四"_s});
}

TEST_F(TeacherScreen, ASubjectWithoutNamesKeepsTheEntriesOfTheOneBefore)
{
    clickCell(2, 2);
    clickCell(3, 3);
    EXPECT_EQ(entries(names), QStringList{u"李四"_s});
}

TEST_F(TeacherScreen, HeadingsAndClassesOpenNoEditor)
{
    clickCell(2, 1);
    clickCell(0, 1);
    EXPECT_FALSE(editorsAreOpen());
    clickCell(2, 0);
    EXPECT_FALSE(editorsAreOpen());
}

TEST_F(TeacherScreen, WhatIsTypedStandsInTheCellAndEnterHidesTheEditors)
{
    clickCell(2, 1);
    type(u"赵六"_s);
    EXPECT_EQ(cell(2, 1), u"赵六"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(editorsAreOpen());
    EXPECT_EQ(cell(2, 1), u"赵六"_s);
    EXPECT_EQ(view->grid().Row, 2);
}

TEST_F(TeacherScreen, APickedNameStandsInTheCellAndHidesTheEditors)
{
    clickCell(2, 1);
    clickEntry(names, 1);
    EXPECT_EQ(cell(2, 1), u"王五"_s);
    EXPECT_FALSE(editorsAreOpen());
}

TEST_F(TeacherScreen, SeveralNamesArePickedWithCtrlOrShiftAndJoinedInListOrder)
{
    int row = 1;
    for (const Qt::KeyboardModifier key : {Qt::ControlModifier, Qt::ShiftModifier}) {
        clickCell(++row, 1);
        clickEntry(names, 1, key);
        EXPECT_TRUE(editorsAreOpen());
        EXPECT_EQ(box->text(), u"王五"_s);
        clickEntry(names, 0, key);
        EXPECT_EQ(cell(row, 1), u"张三,王五"_s);
        clickEntry(names, 0, key);
        EXPECT_EQ(cell(row, 1), u"王五"_s) << "once more takes it away";
        QTest::keyClick(names, Qt::Key_Escape);
        EXPECT_FALSE(editorsAreOpen());
        EXPECT_EQ(cell(row, 1), u"王五"_s) << "what was picked stays";
    }
}

TEST_F(TeacherScreen, TheListShowsWhichNamesTheCellHolds)
{
    typeInto(2, 1, u"王五,别人"_s);
    QTest::keyClick(box, Qt::Key_Return);
    clickCell(2, 1);
    ASSERT_EQ(names->selectedItems().size(), 1);
    EXPECT_EQ(names->selectedItems()[0]->text(), u"王五"_s);
}

TEST_F(TeacherScreen, NamesArePickedByKeysAlone)
{
    view->select(2, 1, 2, 1);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(names->hasFocus());
    QTest::keyClick(names, Qt::Key_Down);
    QTest::keyClick(names, Qt::Key_Space);
    EXPECT_EQ(cell(2, 1), u"王五"_s);
    QTest::keyClick(names, Qt::Key_Return);
    EXPECT_FALSE(editorsAreOpen());
}

TEST_F(TeacherScreen, EscInTheBoxTakesBackWhatWasTyped)
{
    typeInto(2, 1, u"赵六"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(editorsAreOpen());
    EXPECT_EQ(cell(2, 1), u""_s);
}

TEST_F(TeacherScreen, ScrollingHidesTheEditors)
{
    clickCell(2, 1);
    view->verticalScrollBar()->setValue(10);
    EXPECT_FALSE(editorsAreOpen());
}

TEST_F(TeacherScreen, SavingKeepsTheListAndClosesTheScreen)
{
    typeInto(1, 1, u"赵六"_s);
    press(u"Command3"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(), u"期中|赵六| / 期末|周七|NULL"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 教师表 where 考试名称='期中'"_s), u"40"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
    open();
    EXPECT_EQ(cell(1, 1), u"赵六"_s) << "a list is found again";
}

TEST_F(TeacherScreen, AnotherExamShowsItsList)
{
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(combo->currentText(), u"期末"_s);
    EXPECT_EQ(cell(1, 1), u"周七"_s);
}

TEST_F(TeacherScreen, LoadingCopiesTheListOfAnotherExamToTheExamShown)
{
    clickCell(2, 1);
    press(u"Command4"_s);
    EXPECT_FALSE(editorsAreOpen());
    ASSERT_TRUE(exams->isVisible());
    clickEntry(exams, 1);
    EXPECT_FALSE(exams->isVisible());
    EXPECT_EQ(cell(1, 1), u"周七"_s);
    EXPECT_EQ(combo->currentText(), u"期中"_s);
    press(u"Command3"_s);
    EXPECT_EQ(stored(), u"期中|周七| / 期末|周七|NULL"_s);
}

TEST_F(TeacherScreen, TheListOfExamsIsUsedByKeysToo)
{
    press(u"Command4"_s);
    QTest::keyClick(exams, Qt::Key_Escape);
    EXPECT_FALSE(exams->isVisible());
    EXPECT_EQ(cell(1, 1), u""_s);
    press(u"Command4"_s);
    QTest::keyClick(exams, Qt::Key_End);
    EXPECT_TRUE(exams->isVisible()) << "moving through it loads nothing";
    QTest::keyClick(exams, Qt::Key_Return);
    EXPECT_FALSE(exams->isVisible());
    EXPECT_EQ(cell(1, 1), u"周七"_s);
}

TEST_F(TeacherScreen, LoadingAListAsksBeforeItReplacesWhatWasTyped)
{
    typeInto(1, 2, u"赵六"_s);
    press(u"Command4"_s);
    test.dialogs.expect(u"载入的名单会替换表里没有保存的改动。"_s, u"取消"_s);
    clickEntry(exams, 1);
    EXPECT_EQ(cell(1, 2), u"赵六"_s);
    EXPECT_EQ(test.dialogs.safeOf(u"载入"_s), u"取消"_s);
    press(u"Command4"_s);
    test.dialogs.expect(u"载入的名单"_s, u"载入"_s);
    clickEntry(exams, 1);
    EXPECT_EQ(cell(1, 1) + cell(1, 2), u"周七"_s);
    press(u"Command4"_s);
    clickEntry(exams, 0);
    EXPECT_EQ(cell(1, 1), u""_s) << "what was only loaded is replaced unasked";
}

TEST_F(TeacherScreen, AnotherExamAsksAboutChangesThatAreNotSaved)
{
    const QString question = u"“期中”的教师名单有改动，还没有保存。"_s;
    typeInto(1, 1, u"赵六"_s);
    test.dialogs.expect(question, u"取消"_s);
    combo->setCurrentIndex(1);
    EXPECT_EQ(combo->currentText(), u"期中"_s);
    EXPECT_EQ(cell(1, 1), u"赵六"_s);
    test.dialogs.expect(question, u"不保存"_s);
    combo->setCurrentIndex(1);
    EXPECT_EQ(cell(1, 1), u"周七"_s);
    EXPECT_EQ(stored(), u"期末|周七|NULL"_s);
    combo->setCurrentIndex(0);
    typeInto(1, 1, u"赵六"_s);
    test.dialogs.expect(question, u"保存"_s);
    combo->setCurrentIndex(1);
    EXPECT_EQ(cell(1, 1), u"周七"_s);
    EXPECT_EQ(stored(), u"期中|赵六| / 期末|周七|NULL"_s);
}

TEST_F(TeacherScreen, LeavingAsksAboutChangesThatAreNotSaved)
{
    typeInto(1, 1, u"赵六"_s);
    test.dialogs.expect(u"还没有保存"_s, u"取消"_s);
    press(u"Command2"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.safeOf(u"还没有保存"_s), u"取消"_s);
    test.dialogs.expect(u"还没有保存"_s, u"保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(), u"期中|赵六| / 期末|周七|NULL"_s);
    open();
    typeInto(1, 1, u"别人"_s);
    test.dialogs.expect(u"还没有保存"_s, u"不保存"_s);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(), u"期中|赵六| / 期末|周七|NULL"_s);
}

TEST_F(TeacherScreen, WithoutChangesItIsLeftUnasked)
{
    typeInto(1, 1, u"赵六"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(TeacherScreen, TheMasterListIsEditedOverIt)
{
    QString opened;
    QTimer::singleShot(0, form.get(), [&] {
        QWidget* screen = QApplication::activeModalWidget();
        ASSERT_NE(screen, nullptr);
        opened = screen->objectName();
        screen->findChild<QPlainTextEdit*>(u"Text1"_s)->setPlainText(u"语文_新人"_s);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
        QTest::mouseClick(screen->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
    });
    press(u"Command1"_s);
    EXPECT_EQ(opened, u"FormZMD"_s);
    EXPECT_TRUE(form->isVisible());
    clickCell(2, 1);
    EXPECT_EQ(entries(names), (QStringList{u"张三"_s, u"王五"_s})) << "as when it was opened";
    open();
    clickCell(2, 1);
    EXPECT_EQ(entries(names), QStringList{u"新人"_s});
}

TEST_F(TeacherScreen, WithoutAMasterListNamesAreTyped)
{
    QFile::remove(master());
    open();
    clickCell(2, 1);
    EXPECT_EQ(names->count(), 0);
    type(u"赵六"_s);
    EXPECT_EQ(cell(2, 1), u"赵六"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(TeacherScreen, LinesOfTheMasterListWithoutASeparatorAreTold)
{
    writeNames(u"张三\n语文_李四\n"_s);
    open();
    EXPECT_EQ(test.dialogs.failures, QStringList{u"教师总名单里的“张三”没有“_”。"
                                                 " - Private Sub Form_Load/FormJiaoShiMingDan"_s});
    clickCell(2, 1);
    EXPECT_EQ(entries(names), QStringList{u"李四"_s});
}

TEST_F(TeacherScreen, WithoutAnExamNothingIsSavedAndTheScreenStays)
{
    test.execute(u"delete from 考试名称表"_s);
    test.reload();
    open();
    typeInto(1, 1, u"赵六"_s);
    press(u"Command3"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里还没有考试，教师名单没有保存。"_s});
    test.dialogs.expect(u"还没有保存"_s, u"不保存"_s);
    form->close();
}

} // namespace
