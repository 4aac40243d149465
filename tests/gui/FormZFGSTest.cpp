#include "scoring/ui/FormZFGS.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class FormulaScreen : public testing::Test
{
protected:
    FormulaScreen()
    {
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"总分"_s, u"语文"_s}});
        test.addExam(u"期末"_s, u"文"_s, 2, {{u"总分"_s, u"数学"_s}});
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"总分"_s, u"语文+数学"_s}});
        test.reload();
        form = std::make_unique<scoring::FormZFGS>(test.scores, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
    }

    QListWidget* list(const QString& name) { return form->findChild<QListWidget*>(name); }
    QLineEdit* formula() { return form->findChild<QLineEdit*>(u"Text1"_s); }

    QStringList texts(const QString& name)
    {
        QStringList all;
        for (int i = 0; i < list(name)->count(); ++i)
            all.append(list(name)->item(i)->text());
        return all;
    }

    void click(const QString& name, int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(list(name)->viewport(), Qt::LeftButton, keys,
                          list(name)->visualItemRect(list(name)->item(row)).center());
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    void typeFormula(const QString& text)
    {
        formula()->setFocus();
        formula()->selectAll();
        QInputMethodEvent written;
        written.setCommitString(text);
        QApplication::sendEvent(formula(), &written);
    }

    QString stored() { return test.rows(u"select 总分 from 考试名称表"_s); }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    std::unique_ptr<scoring::FormZFGS> form;
};

TEST_F(FormulaScreen, ListsExamsTotalsAndSubjects)
{
    EXPECT_EQ(form->windowTitle(), u"总分公式"_s);
    EXPECT_EQ(texts(u"List1"_s), (QStringList{u"期中"_s, u"期末"_s, u"期末"_s}));
    EXPECT_EQ(texts(u"List2"_s), QStringList{u"总分"_s});
    EXPECT_EQ(texts(u"List3"_s), (QStringList{u"语文"_s, u"数学"_s}));
    for (const QString& name : {u"LabelHintList1"_s, u"LabelHintList3"_s})
        EXPECT_EQ(form->findChild<QLabel*>(name)->text(), u"按下Ctrl键或Shift键可多选"_s);
}

TEST_F(FormulaScreen, ShowsTheFormulaOnceExamAndTotalAreChosen)
{
    click(u"List1"_s, 2);
    EXPECT_EQ(formula()->text(), u""_s);
    click(u"List2"_s, 0);
    EXPECT_EQ(formula()->text(), u"数学"_s) << "the exam's first row";
    QTest::keyClick(list(u"List1"_s), Qt::Key_Home);
    EXPECT_EQ(formula()->text(), u"语文"_s);
    typeFormula(u"数学"_s);
    click(u"List1"_s, 0);
    EXPECT_EQ(formula()->text(), u"语文"_s) << "another click shows the stored one again";
}

TEST_F(FormulaScreen, ATotalAloneShowsNoFormula)
{
    click(u"List2"_s, 0);
    EXPECT_EQ(formula()->text(), u""_s);
    list(u"List1"_s)->setFocus();
    list(u"List2"_s)->setFocus();
    EXPECT_EQ(formula()->text(), u""_s) << "the keyboard chooses no exam by passing";
}

TEST_F(FormulaScreen, AnExamThatIsUnselectedAgainShowsNoFormula)
{
    click(u"List1"_s, 0);
    click(u"List1"_s, 0, Qt::ControlModifier);
    click(u"List2"_s, 0);
    EXPECT_EQ(formula()->text(), u""_s);
}

TEST_F(FormulaScreen, WithoutAnExamNothingIsStored)
{
    click(u"List2"_s, 0);
    typeFormula(u"语文"_s);
    press(u"Command1"_s);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(
        test.dialogs.failures.value(0).endsWith(u" - Private Sub Command1_Click/FormZFGS"_s));
    EXPECT_EQ(stored(), u"语文 / 数学 / 语文+数学"_s);
}

TEST_F(FormulaScreen, ATotalThatTheKeyboardPassedByIsNotTheOneThatIsStored)
{
    click(u"List1"_s, 0);
    list(u"List2"_s)->setFocus();
    typeFormula(u"数学"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"语文 / 数学 / 语文+数学"_s);
}

TEST_F(FormulaScreen, TheSelectedSubjectsMakeTheFormula)
{
    click(u"List3"_s, 1);
    EXPECT_EQ(formula()->text(), u"数学"_s);
    click(u"List3"_s, 0, Qt::ControlModifier);
    EXPECT_EQ(formula()->text(), u"语文+数学"_s) << "in list order";
    typeFormula(u"数学"_s);
    click(u"List3"_s, 1, Qt::ControlModifier);
    EXPECT_EQ(formula()->text(), u"语文"_s);
}

TEST_F(FormulaScreen, SavesForAllRowsOfTheSelectedExamsAndStays)
{
    click(u"List1"_s, 1);
    click(u"List2"_s, 0);
    click(u"List3"_s, 0);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"语文 / 语文 / 语文"_s);
    click(u"List1"_s, 0, Qt::ShiftModifier);
    typeFormula(u"数学+语文"_s);
    press(u"Command1"_s);
    EXPECT_EQ(stored(), u"数学+语文 / 数学+语文 / 数学+语文"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(FormulaScreen, AWrongTermIsRefusedAndStaysInTheBox)
{
    click(u"List1"_s, 0);
    click(u"List2"_s, 0);
    typeFormula(u"语文+物理"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"总分公式中添加的科目： 物理 无效！只能添加现有科目。"_s});
    EXPECT_EQ(test.dialogs.look(u"物理 无效"_s),
              (support::BoxLook{{}, runtime::Buttons::Ok, runtime::Icon::Warning}));
    EXPECT_EQ(formula()->text(), u"语文+物理"_s);
    EXPECT_EQ(stored(), u"语文 / 数学 / 语文+数学"_s);
}

TEST_F(FormulaScreen, ATooLongFormulaIsToldAndStaysInTheBox)
{
    const QString longOne = QStringList(17, u"语文"_s).join(u'+') + u"+数学+语文"_s;
    click(u"List1"_s, 0);
    click(u"List2"_s, 0);
    typeFormula(longOne);
    press(u"Command1"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].contains(u"文字超过 50 个字符"_s));
    EXPECT_EQ(formula()->text(), longOne);
    EXPECT_EQ(stored(), u"语文 / 数学 / 语文+数学"_s);
}

TEST_F(FormulaScreen, OnlyTheButtonCloses)
{
    press(u"Command3"_s);
    typeFormula(u"语文"_s);
    QTest::keyClick(formula(), Qt::Key_Return);
    QTest::keyClick(formula(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(stored(), u"语文 / 数学 / 语文+数学"_s);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
}

} // namespace
