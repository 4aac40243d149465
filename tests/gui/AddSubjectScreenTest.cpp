#include "maintenance/ui/AddSubjectScreen.h"

#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/TypedText.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString later = u"以后再说"_s;

class SubjectAdditionOnScreen : public testing::Test
{
protected:
    SubjectAdditionOnScreen()
    {
        test.reload();
        screen.show();
        screen.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    void typeName(const QString& text) { support::typeOver(name, text); }

    qsizetype copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size();
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    maintenance::AddSubjectScreen screen{test.scores, screenDialogs, nullptr};
    QLineEdit* name = screen.findChild<QLineEdit*>(u"TextName"_s);
    QLineEdit* formula = screen.findChild<QLineEdit*>(u"TextFormula"_s);
    QListWidget* subjects = screen.findChild<QListWidget*>(u"ListSubjects"_s);
};

TEST_F(SubjectAdditionOnScreen, AddsASubjectByEnterAndGoesOn)
{
    typeName(u" 物理 "_s);
    EXPECT_FALSE(formula->isEnabled());
    test.dialogs.expect(u"已添加科目“物理”。"_s, later);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(test.dialogs.safeOf(u"已添加科目“物理”。"_s), later);
    EXPECT_EQ(test.scores.catalogue.AllColumns.join(u' '), u"语文 数学 总分 物理"_s);
    EXPECT_EQ(subjects->count(), 3);
    EXPECT_EQ(name->text(), QString());
    EXPECT_EQ(copies(), 1);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_FALSE(screen.wantsTotals());
    QTest::keyClick(&screen, Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(SubjectAdditionOnScreen, OffersTheKnownFormulaOfATotalAndTakesTheChosenSubjects)
{
    typeName(u"三科总分"_s);
    EXPECT_TRUE(formula->isEnabled());
    EXPECT_EQ(formula->text(), u"语文+数学+英语"_s);
    for (const int row : {0, 1})
        QTest::mouseClick(subjects->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          subjects->visualItemRect(subjects->item(row)).center());
    EXPECT_EQ(formula->text(), u"语文+数学"_s);
    test.dialogs.expect(u"已添加总分“三科总分”"_s, u"打开总分设置"_s);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ(test.rows(u"select 公式 from 总分公式 where 总分='三科总分'"_s), u"语文+数学"_s);
    EXPECT_TRUE(screen.wantsTotals());
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(SubjectAdditionOnScreen, AsksBeforeItClosesWithASubjectThatWasNotAdded)
{
    const QString unsaved = u"科目“物理”还没有添加。"_s;
    typeName(u"物理"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    QTest::keyClick(&screen, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(name->text(), u"物理"_s);
    test.dialogs.expect(unsaved, u"保存"_s);
    test.dialogs.expect(u"已添加科目“物理”。"_s, later);
    EXPECT_TRUE(screen.close());
    EXPECT_EQ(test.scores.catalogue.AllColumns.join(u' '), u"语文 数学 总分 物理"_s);
}

TEST_F(SubjectAdditionOnScreen, KeepsWhatIsRefused)
{
    for (const QString& bad : {u"语文"_s, u"' or ''='"_s, u"]--"_s, QString(300, u'长')}) {
        typeName(bad);
        QTest::keyClick(name, Qt::Key_Return);
        EXPECT_EQ(name->text(), bad);
        EXPECT_TRUE(name->hasFocus());
    }
    EXPECT_EQ(test.dialogs.shown.size(), 4);
    EXPECT_EQ(copies(), 0);
}

} // namespace
