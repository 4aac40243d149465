#include "maintenance/ui/FormDelKM.h"

#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

const QString question = u"确实要删除以下科目吗？"_s;

class SubjectRemovalScreen : public testing::Test
{
protected:
    SubjectRemovalScreen()
    {
        test.execute(u"delete from 总分公式"_s);
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}});
        test.reload();
        form = std::make_unique<maintenance::FormDelKM>(test.scores, screenDialogs, nullptr);
        form->show();
        list = form->findChild<QListWidget*>(u"ListKM"_s);
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    void select(const QList<int>& rows)
    {
        list->clearSelection();
        for (const int row : rows)
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                              list->visualItemRect(list->item(row)).center());
    }

    QString listed()
    {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->item(i)->text());
        return texts.join(u' ');
    }

    qsizetype copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size();
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"物理"_s, u"总分"_s}};
    std::unique_ptr<maintenance::FormDelKM> form;
    QListWidget* list = nullptr;
};

TEST_F(SubjectRemovalScreen, ListsTheColumnsOfTheLibrary)
{
    EXPECT_EQ(listed(), u"语文 数学 物理 总分"_s);
    EXPECT_TRUE(list->selectedItems().isEmpty());
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请选择要删除的 科目！"_s});
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(SubjectRemovalScreen, TakesTheLinesOfWhatWasRemovedAndGoesOn)
{
    select({1, 2});
    test.dialogs.expect(u"物理\n数学\n"_s, Answer::Ok);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"删除完毕！"_s);
    EXPECT_EQ(listed(), u"语文 总分"_s);
    EXPECT_TRUE(form->isVisible());
    select({1});
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(u"按总分上线的分析设置：2 项"_s, u"仍然删除"_s);
    press(u"Command1"_s);
    EXPECT_EQ(listed(), u"语文"_s);
    EXPECT_EQ(test.scores.catalogue.AllColumns, QStringList{u"语文"_s});
}

TEST_F(SubjectRemovalScreen, TakesItsLinesAheadOfTheClosingWords)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, form.get(), [&] {
        ++told;
        EXPECT_EQ(listed(), u"语文 数学 总分"_s);
        EXPECT_EQ(test.dialogs.shown.size(), 1) << "the question alone";
    });
    select({2});
    test.dialogs.expect(question, Answer::Ok);
    press(u"Command1"_s);
    EXPECT_EQ(told, 1);
}

TEST_F(SubjectRemovalScreen, KeepsItsLinesWhereItWasDeclinedOrFailed)
{
    select({0});
    test.dialogs.expect(question, Answer::Cancel);
    press(u"Command1"_s);
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(u"各次考试的总分公式：1 个"_s, u"取消"_s);
    press(u"Command1"_s);
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    test.dialogs.expect(question, Answer::Ok);
    test.dialogs.expect(u"各次考试的总分公式：1 个"_s, u"仍然删除"_s);
    press(u"Command1"_s);
    other.run("rollback");
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_FALSE(test.dialogs.shown.contains(u"删除完毕！"_s));
    EXPECT_EQ(listed(), u"语文 数学 物理 总分"_s);
    EXPECT_EQ(list->selectedItems().size(), 1);
}

TEST_F(SubjectRemovalScreen, MakesACopyFirstUnlessItsBoxIsOff)
{
    auto* CheckBackup = form->findChild<QCheckBox*>(u"CheckBackup"_s);
    EXPECT_TRUE(CheckBackup->isChecked());
    QTest::keyClick(CheckBackup, Qt::Key_Space);
    test.dialogs.always(question, Answer::Ok);
    select({2});
    press(u"Command1"_s);
    EXPECT_EQ(copies(), 0);
    QTest::keyClick(CheckBackup, Qt::Key_Space);
    select({1});
    press(u"Command1"_s);
    EXPECT_EQ(copies(), 1);
}

} // namespace
