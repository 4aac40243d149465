#include "maintenance/ui/FormXiuGaiChengJi.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

const QString storedText = u"保存新成绩成功！"_s;
const QString question = u"已修改成绩，是否重新计算总分？"_s;

void addTwoExams(support::TestLibrary& test)
{
    test.addStudent(1, 2, u"O'Neil--乙"_s, u"理"_s);
    for (const auto& [exam, number] : {std::pair{u"期中"_s, 1}, {u"期末"_s, 2}}) {
        test.addExam(exam, u"理"_s, number, {{u"语文"_s, 150}});
        test.addScores(exam, 1, 1, {{u"语文"_s, 70}});
        test.addScores(exam, 1, 2, {{u"语文"_s, 80 + number}});
    }
}

/// The screen over a library of two exams, with the focus in its first field.
class CorrectionScreen : public testing::Test
{
protected:
    CorrectionScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        addTwoExams(test);
        test.reload();
        form =
            std::make_unique<maintenance::FormXiuGaiChengJi>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        combo(u"ComboKS"_s)->setFocus();
    }

    QLineEdit* box(const QString& name) { return form->findChild<QLineEdit*>(name); }
    QComboBox* combo(const QString& name) { return form->findChild<QComboBox*>(name); }
    QString text(const QString& name) { return box(name)->text(); }
    QString focus() { return form->focusWidget()->objectName(); }

    void type(const QString& text)
    {
        QTest::keyClicks(form->focusWidget(), text);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    }

    /// From the exam on: class, number, subject as it is, score.
    void correct(const QString& classNumber, const QString& number, const QString& score)
    {
        combo(u"ComboKS"_s)->setFocus();
        type({});
        type(classNumber);
        type(number);
        type({});
        type(score);
    }

    QString scores() { return test.rows(u"select 语文 from 成绩表"_s); }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s, u"数学"_s}};
    std::unique_ptr<maintenance::FormXiuGaiChengJi> form;
};

TEST_F(CorrectionScreen, ListsExamsAndSubjectsAndChoosesTheFirst)
{
    EXPECT_EQ(combo(u"ComboKS"_s)->currentText(), u"期中"_s);
    EXPECT_EQ(combo(u"ComboKS"_s)->count(), 2);
    EXPECT_EQ(combo(u"ComboKM"_s)->currentText(), u"语文"_s);
    EXPECT_EQ(combo(u"ComboKM"_s)->count(), 2);
    EXPECT_TRUE(box(u"TextXM"_s)->isReadOnly());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(CorrectionScreen, EnterLeadsFromFieldToField)
{
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        combo(u"ComboKS"_s)->setFocus();
        for (const QString& next : {u"TextBJ"_s, u"TextXH"_s, u"ComboKM"_s, u"TextCJ"_s}) {
            QTest::keyClick(form->focusWidget(), enter);
            EXPECT_EQ(focus(), next);
        }
    }
    for (const QString& name : {u"TextBJ"_s, u"TextXH"_s, u"TextCJ"_s})
        box(name)->setText(u"12"_s);
    combo(u"ComboKS"_s)->setFocus();
    type({});
    EXPECT_EQ(box(u"TextBJ"_s)->selectedText(), u"12"_s);
    type({});
    EXPECT_EQ(box(u"TextXH"_s)->selectedText(), u"12"_s);
}

TEST_F(CorrectionScreen, LeadsOnWhenEnterIsLetGo)
{
    QTest::keyPress(combo(u"ComboKS"_s), Qt::Key_Return);
    EXPECT_EQ(focus(), u"ComboKS"_s);
    QTest::keyRelease(combo(u"ComboKS"_s), Qt::Key_Return);
    EXPECT_EQ(focus(), u"TextBJ"_s);
    // The Enter that closed a box is let go over the field.
    QTest::keyRelease(box(u"TextBJ"_s), Qt::Key_Return);
    EXPECT_EQ(focus(), u"TextBJ"_s);
}

TEST_F(CorrectionScreen, ShowsNameAndScoreWhileClassAndNumberAreTyped)
{
    box(u"TextBJ"_s)->setFocus();
    QTest::keyClicks(box(u"TextBJ"_s), u"1"_s);
    EXPECT_EQ(text(u"TextXM"_s) + text(u"TextCJ"_s), QString());
    QTest::keyClicks(box(u"TextXH"_s), u"2"_s);
    EXPECT_EQ(text(u"TextXM"_s), u"O'Neil--乙"_s);
    EXPECT_EQ(text(u"TextCJ"_s), u"81"_s);
    QTest::keyClicks(box(u"TextXH"_s), u"3"_s);
    EXPECT_EQ(text(u"TextXM"_s) + text(u"TextCJ"_s), QString()) << "nobody has number 23";
    QTest::keyClick(box(u"TextXH"_s), Qt::Key_Backspace);
    EXPECT_EQ(text(u"TextXM"_s), u"O'Neil--乙"_s);
    QTest::keyClick(box(u"TextXH"_s), Qt::Key_Backspace);
    EXPECT_EQ(text(u"TextXM"_s), u"O'Neil--乙"_s) << "nothing is looked for without a number";
}

TEST_F(CorrectionScreen, ShowsTheScoreOfTheExamAndSubjectThatAreChosen)
{
    box(u"TextBJ"_s)->setText(u"1"_s);
    box(u"TextXH"_s)->setText(u"2"_s);
    QTest::keyClick(combo(u"ComboKS"_s), Qt::Key_Down);
    EXPECT_EQ(text(u"TextCJ"_s), u"82"_s);
    QTest::keyClick(combo(u"ComboKM"_s), Qt::Key_Down);
    EXPECT_EQ(text(u"TextCJ"_s), QString());
    EXPECT_EQ(text(u"TextXM"_s), u"O'Neil--乙"_s);
}

TEST_F(CorrectionScreen, SavesOnEnterAndGoesBackToTheClass)
{
    correct(u"1"_s, u"2"_s, u"95"_s);
    EXPECT_EQ(scores(), u"70 / 95 / 70 / 82"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{storedText});
    EXPECT_EQ(focus(), u"TextBJ"_s);
    EXPECT_EQ(box(u"TextBJ"_s)->selectedText(), u"1"_s);
}

TEST_F(CorrectionScreen, ARefusedScoreStaysSelectedAndTheNextOneGoesOn)
{
    correct(u"1"_s, u"1"_s, u"151"_s);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"成绩不能超过语文满分 150 ！\n\n输入的成绩不合适，请重新输入！"_s});
    EXPECT_EQ(focus(), u"TextCJ"_s);
    EXPECT_EQ(box(u"TextCJ"_s)->selectedText(), u"151"_s);
    type(u"-1"_s);
    EXPECT_TRUE(test.dialogs.shown.last().startsWith(u"成绩不能为负！"_s));
    test.dialogs.expect(u"“abc”不是分数"_s, u"取消"_s);
    type(u"abc"_s);
    EXPECT_EQ(focus(), u"TextCJ"_s);
    type(u"150"_s);
    EXPECT_EQ(test.dialogs.shown.last(), storedText);
    EXPECT_EQ(scores(), u"150 / 81 / 70 / 82"_s);
}

TEST_F(CorrectionScreen, ForNobodyASaveChangesNothingAndReportsNothing)
{
    correct(u"9"_s, u"9"_s, u"50"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(focus(), u"TextBJ"_s);
    EXPECT_EQ(scores(), u"70 / 81 / 70 / 82"_s);
}

TEST_F(CorrectionScreen, AScoreThatEnterDidNotConfirmIsAskedAboutBeforeTheWindowCloses)
{
    const auto typeScore = [this](const QString& score) {
        box(u"TextBJ"_s)->setText(u"1"_s);
        box(u"TextXH"_s)->setText(u"1"_s);
        box(u"TextCJ"_s)->selectAll();
        QTest::keyClicks(box(u"TextCJ"_s), score);
    };
    const QString unsaved = u"输入的成绩还没有按回车保存。"_s;
    auto* Command1 = form->findChild<QPushButton*>(u"Command1"_s);
    typeScore(u"65"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    QTest::mouseClick(Command1, Qt::LeftButton);
    EXPECT_EQ(text(u"TextCJ"_s), u"65"_s);
    test.dialogs.expect(unsaved, u"保存"_s);
    test.dialogs.expect(question, Answer::Cancel);
    QTest::mouseClick(Command1, Qt::LeftButton);
    EXPECT_EQ(scores(), u"65 / 81 / 70 / 82"_s);
    typeScore(u"66"_s);
    test.dialogs.expect(unsaved, u"不保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(scores(), u"65 / 81 / 70 / 82"_s);
}

TEST_F(CorrectionScreen, ItsButtonAsksAndClosesAfterComputing)
{
    auto* Command1 = form->findChild<QPushButton*>(u"Command1"_s);
    test.dialogs.expect(question, Answer::Cancel);
    QTest::mouseClick(Command1, Qt::LeftButton);
    EXPECT_TRUE(form->isVisible());
    QTest::keyClick(combo(u"ComboKS"_s), Qt::Key_Down);
    test.dialogs.expect(question, Answer::Ok);
    QTest::mouseClick(Command1, Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(test.rows(u"select 语文年名 from 成绩表"_s), u"NULL / NULL / 2 / 1"_s)
        << "the exam chosen at the moment of closing";
}

TEST_F(CorrectionScreen, AnExamWhoseStatementIsRefusedIsToldOnceWhenItIsChosen)
{
    test.addExam(u"O'Neil"_s, u"理"_s, 3, {{u"语文"_s, 150}});
    test.reload();
    form = std::make_unique<maintenance::FormXiuGaiChengJi>(test.scores, screenDialogs, nullptr);
    box(u"TextBJ"_s)->setText(u"1"_s);
    box(u"TextXH"_s)->setText(u"2"_s);
    QTest::keyClick(combo(u"ComboKS"_s), Qt::Key_End);
    EXPECT_EQ(combo(u"ComboKS"_s)->currentText(), u"O'Neil"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

/// The main window, with the correction opened from its menu.
class CorrectionFromTheMenu : public support::MainWindowFixture
{
protected:
    /// Opens the correction, stores 99 for the student 1 of class 1, and computes the first exam.
    void correctAndCompute()
    {
        support::ModalBoxes boxes;
        boxes.expect([&](QDialog& screen) {
            const auto field = [&](const QString& name) {
                return screen.findChild<QLineEdit*>(name);
            };
            QTest::keyClicks(field(u"TextBJ"_s), u"1"_s);
            QTest::keyClicks(field(u"TextXH"_s), u"1"_s);
            field(u"TextCJ"_s)->setText(u"99"_s);
            QTest::keyClick(field(u"TextCJ"_s), Qt::Key_Return);
            test.dialogs.expect(question, Answer::Ok);
            QTest::mouseClick(screen.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
        });
        item(u"meXGCJ"_s)->trigger();
        EXPECT_EQ(boxes.count, 1);
    }

    QString browsedRank(int row)
    {
        press(u"CommandLLCJ"_s);
        const grid::FlexGrid& cells = gridView()->grid();
        for (int col = 0; col < cells.Cols(); ++col) {
            if (cells.TextMatrix(0, col) == u"语名")
                return cells.TextMatrix(row, 2) + u' ' + cells.TextMatrix(row, col);
        }
        return {};
    }
};

TEST_F(CorrectionFromTheMenu, ACorrectedScoreChangesTheRanksOfItsClass)
{
    window->start(path);
    addTwoExams(test);
    test.reload();
    test.scores.notifyChanged();
    QTest::mouseClick(window->findChild<QPushButton*>(u"CommandJSZF"_s), Qt::LeftButton);
    EXPECT_EQ(browsedRank(1), u"甲 2"_s);
    correctAndCompute();
    EXPECT_EQ(browsedRank(1), u"甲 1"_s);
    EXPECT_EQ(browsedRank(2), u"O'Neil--乙 2"_s);
}

TEST_F(CorrectionFromTheMenu, WhatIsSelectedOnTheWorkbenchStays)
{
    window->start(path);
    addTwoExams(test);
    test.reload();
    test.scores.notifyChanged();
    auto* exams = window->findChild<QListWidget*>(u"ListKSMC"_s);
    exams->clearSelection();
    exams->item(1)->setSelected(true);
    correctAndCompute();
    EXPECT_EQ(test.dialogs.shown.first(), storedText);
    ASSERT_EQ(exams->selectedItems().size(), 1);
    EXPECT_EQ(exams->selectedItems().first()->text(), u"期末"_s);
}

TEST_F(CorrectionFromTheMenu, RemovingExamsAsksForTheSelectedOnesAndIsRefused)
{
    window->start(path);
    addTwoExams(test);
    test.reload();
    test.scores.notifyChanged();
    auto* exams = window->findChild<QListWidget*>(u"ListKSMC"_s);
    exams->clearSelection();
    item(u"meSCKS"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList()) << "nothing is selected";
    exams->selectAll();
    test.dialogs.expect(u"期末\n期中\n"_s, Answer::Ok);
    item(u"meSCKS"_s)->trigger();
    EXPECT_EQ(test.dialogs.failures.size(), 4);
    EXPECT_EQ(test.rows(u"select count(*) from 考试名称表"_s), u"2"_s);
    EXPECT_EQ(exams->count(), 2);
    EXPECT_EQ(exams->selectedItems().size(), 2) << "the lists are not refreshed";
}

} // namespace
