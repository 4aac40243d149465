#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "gui/TypedText.h"

namespace {

using namespace Qt::StringLiterals;

/// 考试信息, 添加科目 and 添加学生 as the main window shows and follows them.
class AdditionsFromTheMenu : public support::MainWindowFixture
{
protected:
    AdditionsFromTheMenu()
    {
        startWithExam();
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 100}});
        test.reload();
        test.scores.notifyChanged();
    }

    /// Types into the field of the next screen and presses Enter; the screen stays, and is closed
    /// by Esc.
    void expectTyping(const QString& field, const QString& text)
    {
        boxes.expect([field, text](QDialog& screen) {
            auto* edit = screen.findChild<QLineEdit*>(field);
            support::typeOver(edit, text);
            QTest::keyClick(edit, Qt::Key_Return);
            if (screen.isVisible())
                QTest::keyClick(&screen, Qt::Key_Escape);
        });
    }

    QString listed(const QString& list)
    {
        QStringList texts;
        const auto* widget = window->findChild<QListWidget*>(list);
        for (int i = 0; i < widget->count(); ++i)
            texts.append(widget->item(i)->text());
        return texts.join(u' ');
    }

    support::ModalBoxes boxes;
};

TEST_F(AdditionsFromTheMenu, TheExamThatIsSelectedIsShownAndRenamedInTheList)
{
    auto* exams = window->findChild<QListWidget*>(u"ListKSMC"_s);
    QTest::mouseClick(exams->viewport(), Qt::LeftButton, {},
                      exams->visualItemRect(exams->item(1)).center());
    // In the menu of the window and in that of the list.
    for (const QString& entry : {u"meExamDetails"_s, u"examDetails"_s}) {
        boxes.expect([](QDialog& screen) {
            EXPECT_EQ(screen.objectName(), u"ExamDetailsScreen"_s);
            EXPECT_EQ(screen.findChild<QComboBox*>(u"ComboExam"_s)->currentText(), u"期末"_s);
            QTest::keyClick(&screen, Qt::Key_Escape);
        });
        item(entry)->trigger();
    }
    expectTyping(u"TextName"_s, u"高一期末"_s);
    item(u"meExamDetails"_s)->trigger();
    EXPECT_EQ(listed(u"ListKSMC"_s), u"期中 高一期末"_s);
}

TEST_F(AdditionsFromTheMenu, WithoutAnExamThereAreNoDetails)
{
    test.execute(u"delete from 考试名称表"_s);
    test.reload();
    test.scores.notifyChanged();
    item(u"meExamDetails"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里还没有考试。"_s});
    EXPECT_EQ(boxes.count, 0);
}

TEST_F(AdditionsFromTheMenu, ANewTotalLeadsToTheScreenOfTotalsIfWanted)
{
    for (const QString& answer : {u"打开总分设置"_s, u"以后再说"_s}) {
        const QString name = answer.left(2) + u"总分"_s;
        test.dialogs.expect(u"已添加总分“%1”"_s.arg(name), answer);
        expectTyping(u"TextName"_s, name);
        if (answer == u"打开总分设置"_s) {
            boxes.expect([&](QDialog& screen) {
                EXPECT_EQ(screen.objectName(), u"FormZFGS"_s);
                EXPECT_EQ(screen.findChild<QListWidget*>(u"List2"_s)->item(0)->text(), name);
                screen.close();
            });
        }
        item(u"mtAddSubject"_s)->trigger();
    }
    EXPECT_EQ(boxes.count, 3);
}

TEST_F(AdditionsFromTheMenu, ANewClassIsOnTheWorkbenchAtOnce)
{
    EXPECT_FALSE(listed(u"ListFW"_s).contains(u'7')) << listed(u"ListFW"_s).toStdString();
    boxes.expect([](QDialog& screen) {
        screen.findChild<QComboBox*>(u"ComboClass"_s)->setCurrentText(u"7"_s);
        screen.findChild<QComboBox*>(u"ComboStream"_s)->setCurrentIndex(0);
        auto* name = screen.findChild<QLineEdit*>(u"TextName"_s);
        support::typeOver(name, u"丙"_s);
        QTest::keyClick(name, Qt::Key_Return);
    });
    item(u"mtAddStudent"_s)->trigger();
    EXPECT_TRUE(listed(u"ListFW"_s).contains(u'7')) << listed(u"ListFW"_s).toStdString();
}

} // namespace
