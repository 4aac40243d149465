#include "maintenance/ui/FormZhuanBan.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class ClassChangeScreen : public testing::Test
{
protected:
    ClassChangeScreen()
    {
        for (const int classNumber : {10, 2})
            test.addStudent(classNumber, 1, u"王芳"_s, u"理"_s);
        open();
    }

    void open()
    {
        form = std::make_unique<maintenance::FormZhuanBan>(test.scores, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }

    QComboBox* combo(int number) { return form->findChild<QComboBox*>(u"Combo%1"_s.arg(number)); }

    QLineEdit* name(int number) { return form->findChild<QLineEdit*>(u"Combo%1"_s.arg(number)); }

    QStringList entries(int number)
    {
        QStringList texts;
        for (int i = 0; i < combo(number)->count(); ++i)
            texts.append(combo(number)->itemText(i));
        return texts;
    }

    /// Goes down by one entry, as a user does without opening the list.
    void chooseNext(int number)
    {
        combo(number)->setFocus();
        QTest::keyClick(combo(number), Qt::Key_Down);
    }

    static QStringList oneToNinetyNine()
    {
        QStringList numbers;
        for (int number = 1; number <= 99; ++number)
            numbers.append(QString::number(number));
        return numbers;
    }

    TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::FormZhuanBan> form;
};

TEST_F(ClassChangeScreen, OffersClassesNumbersAndThreeActions)
{
    EXPECT_EQ(form->windowTitle(), u"转班"_s);
    const QStringList classes{u"2"_s, u"10"_s};
    EXPECT_EQ(entries(1), classes);
    EXPECT_EQ(entries(4), classes);
    EXPECT_EQ(entries(2), oneToNinetyNine());
    EXPECT_EQ(entries(5), QStringList());
    EXPECT_EQ(entries(7), (QStringList{u"转到"_s, u"交换"_s, u"删除"_s}));
    EXPECT_EQ(combo(7)->currentText(), u"转到"_s);
}

TEST_F(ClassChangeScreen, TheSixBoxesBeginEmpty)
{
    for (const int number : {1, 2, 4, 5})
        EXPECT_EQ(combo(number)->currentText(), u""_s) << number;
    EXPECT_EQ(name(3)->text() + name(6)->text(), u""_s);
}

TEST_F(ClassChangeScreen, TheSecondClassEmptiesItsNumberAndName)
{
    combo(5)->setEditText(u"7"_s);
    combo(5)->addItem(u"7"_s);
    name(6)->setText(u"陈静"_s);
    chooseNext(4);
    EXPECT_EQ(combo(4)->currentText(), u"2"_s);
    EXPECT_EQ(combo(5)->count(), 0);
    EXPECT_EQ(combo(5)->currentText(), u""_s);
    EXPECT_EQ(name(6)->text(), u""_s);
    EXPECT_EQ(entries(2), oneToNinetyNine()) << "转到 adds no numbers";
}

TEST_F(ClassChangeScreen, ToSwapTheNumbersOfTheSecondClassGoToTheFirst)
{
    chooseNext(7);
    ASSERT_EQ(combo(7)->currentText(), u"交换"_s);
    combo(2)->setEditText(u"5"_s);
    chooseNext(4);
    EXPECT_EQ(entries(2), oneToNinetyNine() + oneToNinetyNine());
    EXPECT_EQ(combo(2)->currentText(), u"5"_s) << "what was typed stays";
    EXPECT_EQ(combo(5)->count(), 0);
    chooseNext(4);
    EXPECT_EQ(combo(2)->count(), 3 * 99) << "with every choice";
}

TEST_F(ClassChangeScreen, CarriesOutNothingAndSaysSo)
{
    auto* run = form->findChild<QPushButton*>(u"Command1"_s);
    EXPECT_FALSE(run->isEnabled());
    EXPECT_EQ(run->toolTip(), u"本窗口暂不执行"_s);
    const QString before = test.rows(u"select 班级,学号,姓名 from 信息表"_s);
    QTest::mouseClick(run, Qt::LeftButton);
    EXPECT_EQ(test.rows(u"select 班级,学号,姓名 from 信息表"_s), before);
    EXPECT_TRUE(form->isVisible());
    QTest::mouseClick(form->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(ClassChangeScreen, NamesTheScreenThatDoesCarryOut)
{
    EXPECT_EQ(form->findChild<QLabel*>(u"LabelMoves"_s)->text(),
              u"要移动、交换或删除个别学生，请用："_s);
    const QSignalSpy requested(form.get(), &maintenance::FormZhuanBan::movesRequested);
    QTest::mouseClick(form->findChild<QPushButton*>(u"buttonMoves"_s), Qt::LeftButton);
    EXPECT_EQ(requested.count(), 1);
}

TEST_F(ClassChangeScreen, AListOfClassesThatCannotBeReadIsToldAndTheRestStands)
{
    test.execute(u"drop table 信息表"_s);
    open();
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormZhuanBan"_s));
    EXPECT_EQ(entries(1), QStringList());
    EXPECT_EQ(entries(2), oneToNinetyNine());
    EXPECT_EQ(entries(7).size(), 3);
}

} // namespace
