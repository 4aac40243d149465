#include "maintenance/ui/ExamDetailsScreen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/TypedText.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString scoreQuestion = u"现在重新计算吗？"_s;
const QString unsaved = u"“期中”的信息有改动，还没有保存。"_s;

class ExamDetailsOnScreen : public testing::Test
{
protected:
    ExamDetailsOnScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}});
        test.reload();
        open(u"期中"_s);
    }

    void open(const QString& exam)
    {
        screen = std::make_unique<maintenance::ExamDetailsScreen>(test.scores, screenDialogs, exam,
                                                                  nullptr);
        screen->show();
        screen->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    }

    template <class Widget> Widget* find(const QString& name)
    {
        return screen->findChild<Widget*>(name);
    }
    QString result() { return find<QLabel>(u"LabelResult"_s)->text(); }
    QString changes() { return find<QPlainTextEdit>(u"TextChanges"_s)->toPlainText(); }

    void press(const QString& button)
    {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }

    /// Types over the name by keys alone.
    void typeName(const QString& text) { support::typeOver(find<QLineEdit>(u"TextName"_s), text); }

    /// Types into a cell by keys alone and leaves it by Enter.
    void typeCell(int row, int col, const QString& text)
    {
        auto* view = find<grid::FlexGridView>(u"GridItems"_s);
        view->setFocus();
        view->select(row, col, row, col);
        QTest::keyClick(view, Qt::Key_F2);
        auto* box = find<grid::CellTextEditor>(u"TextItem"_s);
        ASSERT_TRUE(box->isVisible());
        support::typeOver(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }

    qsizetype copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size();
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    std::unique_ptr<maintenance::ExamDetailsScreen> screen;
};

TEST_F(ExamDetailsOnScreen, ShowTheExamThatIsSelected)
{
    open(u"期末"_s);
    EXPECT_EQ(find<QComboBox>(u"ComboExam"_s)->currentText(), u"期末"_s);
    EXPECT_EQ(find<QLineEdit>(u"TextName"_s)->text(), u"期末"_s);
    const grid::FlexGrid& items = find<grid::FlexGridView>(u"GridItems"_s)->grid();
    EXPECT_EQ(items.TextMatrix(2, 0) + items.TextMatrix(2, 1) + items.TextMatrix(3, 1),
              u"语文 满分100未考"_s);
    EXPECT_EQ(changes(), QString());
}

TEST_F(ExamDetailsOnScreen, SayWhatWillChangeWhileItIsTyped)
{
    typeName(u"期中x"_s);
    EXPECT_EQ(changes(), u"考试名称：期中 → 期中x"_s);
    typeCell(3, 2, u"120"_s);
    EXPECT_EQ(changes(), u"考试名称：期中 → 期中x\n数学（理）满分：未考 → 120"_s);
}

TEST_F(ExamDetailsOnScreen, AreSavedByEnterFromTheName)
{
    typeName(u"高一期中"_s);
    QTest::keyClick(find<QLineEdit>(u"TextName"_s), Qt::Key_Return);
    EXPECT_EQ(result(), u"已保存"_s);
    EXPECT_EQ(changes(), QString());
    EXPECT_EQ(find<QComboBox>(u"ComboExam"_s)->currentText(), u"高一期中"_s);
    EXPECT_EQ(test.rows(u"select distinct 考试名称 from 成绩表"_s), u"高一期中"_s);
    EXPECT_EQ(copies(), 1);
    press(u"ButtonSave"_s);
    EXPECT_EQ(result(), u"没有改动"_s);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_FALSE(screen->isVisible());
}

TEST_F(ExamDetailsOnScreen, MakeNoCopyWhenSwitchedOff)
{
    typeName(u"高一期中"_s);
    QTest::keyClick(find<QCheckBox>(u"CheckBackup"_s), Qt::Key_Space);
    press(u"ButtonSave"_s);
    EXPECT_EQ(copies(), 0);
}

TEST_F(ExamDetailsOnScreen, OfferToScoreTheExamAnew)
{
    typeCell(4, 2, u"语文+数学"_s);
    test.dialogs.expect(scoreQuestion, u"重新计算"_s);
    press(u"ButtonSave"_s);
    EXPECT_EQ(result(), u"已保存，总分和名次已重新计算"_s);
    EXPECT_EQ(test.rows(u"select 总分, 总分年名 from 成绩表"_s), u"70|1"_s);
    typeCell(2, 2, u"100"_s);
    test.dialogs.expect(scoreQuestion, u"以后再算"_s);
    press(u"ButtonSave"_s);
    EXPECT_EQ(result(), u"已保存，总分和名次还没有重新计算"_s);
}

TEST_F(ExamDetailsOnScreen, LeadToTheCellThatIsRefused)
{
    typeCell(3, 2, u"一百"_s);
    typeName(u"高一期中"_s);
    press(u"ButtonSave"_s);
    EXPECT_EQ(test.dialogs.shown.last(),
              u"数学（理）的满分“一百”不是大于 0 的数。没有考的科目请留空。"_s);
    auto* view = find<grid::FlexGridView>(u"GridItems"_s);
    EXPECT_TRUE(view->hasFocus());
    EXPECT_EQ(view->grid().Row, 3);
    EXPECT_EQ(view->grid().Col, 2);
    EXPECT_EQ(result(), QString());
}

TEST_F(ExamDetailsOnScreen, GiveACellBackByEscAndStayOpen)
{
    auto* view = find<grid::FlexGridView>(u"GridItems"_s);
    view->setFocus();
    view->select(2, 2, 2, 2);
    QTest::keyClick(view, Qt::Key_F2);
    auto* box = find<grid::CellTextEditor>(u"TextItem"_s);
    QTest::keyClicks(box, u"9"_s);
    EXPECT_FALSE(changes().isEmpty());
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(changes(), QString());
    EXPECT_TRUE(screen->isVisible());
}

TEST_F(ExamDetailsOnScreen, TakeAMarkTypedAfterAClickForTheWholeMarkAndGoOnWithAFormula)
{
    auto* view = find<grid::FlexGridView>(u"GridItems"_s);
    const auto clickAndType = [&](int row, const QString& text) {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->visualRect(view->model()->index(row, 2)).center());
        auto* box = find<grid::CellTextEditor>(u"TextItem"_s);
        ASSERT_TRUE(box->isVisible());
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    };
    const int marks = 2;
    const int formula = view->grid().Rows() - 1;
    const QString before = view->grid().TextMatrix(formula, 2);
    clickAndType(marks, u"140"_s);
    EXPECT_EQ(view->grid().TextMatrix(marks, 2), u"140"_s);
    clickAndType(formula, u"+x"_s);
    EXPECT_EQ(view->grid().TextMatrix(formula, 2), before + u"+x"_s);
}

TEST_F(ExamDetailsOnScreen, AskBeforeTheyAreLost)
{
    typeName(u"高一期中"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_TRUE(screen->isVisible());
    test.dialogs.expect(unsaved, u"不保存"_s);
    press(u"ButtonClose"_s);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(test.rows(u"select 考试名称 from 考试名称表"_s), u"期中 / 期末"_s);
}

TEST_F(ExamDetailsOnScreen, AskBeforeAnotherExamIsChosen)
{
    auto* exams = find<QComboBox>(u"ComboExam"_s);
    typeName(u"高一期中"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    QTest::keyClick(exams, Qt::Key_Down);
    EXPECT_EQ(exams->currentText(), u"期中"_s);
    EXPECT_EQ(find<QLineEdit>(u"TextName"_s)->text(), u"高一期中"_s);
    test.dialogs.expect(unsaved, u"保存"_s);
    QTest::keyClick(exams, Qt::Key_Down);
    EXPECT_EQ(exams->currentText(), u"期末"_s);
    EXPECT_EQ(exams->itemText(0), u"高一期中"_s);
    EXPECT_EQ(find<QLineEdit>(u"TextName"_s)->text(), u"期末"_s);
}

TEST_F(ExamDetailsOnScreen, KeepWhatWasTypedWhenTheLibraryIsLocked)
{
    typeName(u"高一期中"_s);
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    press(u"ButtonSave"_s);
    other.run("rollback");
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_EQ(result(), QString());
    EXPECT_EQ(changes(), u"考试名称：期中 → 高一期中"_s);
    press(u"ButtonSave"_s);
    EXPECT_EQ(result(), u"已保存"_s);
}

} // namespace
