#include "maintenance/ui/FormZMD.h"

#include <sys/stat.h>

#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class MasterListScreen : public testing::Test
{
protected:
    MasterListScreen()
    {
        // Tests of rights go through the folder as somebody else.
        EXPECT_EQ(chmod(test.folder.path().toUtf8().constData(), 0755), 0);
        write("语文_张三\n数学_李四\n");
        open();
    }

    QString file() const { return test.paths.dataFile(u"教师总名单.txt"_s); }

    void write(const QByteArray& bytes)
    {
        QFile out(file());
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    QByteArray written()
    {
        QFile in(file());
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    void open()
    {
        form = std::make_unique<maintenance::FormZMD>(test.paths, screenDialogs, nullptr);
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        text = form->findChild<QPlainTextEdit*>(u"Text1"_s);
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    /// Types at the head of the text.
    void type(const QString& typed)
    {
        text->moveCursor(QTextCursor::Start);
        QTest::keyClicks(text, typed);
    }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::FormZMD> form;
    QPlainTextEdit* text = nullptr;
};

TEST_F(MasterListScreen, ShowsTheFileAndItsForm)
{
    EXPECT_EQ(form->windowTitle(), u"修改教师总名单"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label1"_s)->text(),
              u"格式为：科目_教师名\n每行一位教师，位置任意。"_s);
    EXPECT_EQ(text->toPlainText(), u"语文_张三\n数学_李四\n"_s);
}

TEST_F(MasterListScreen, SavingWritesTheTextAndOneMoreLineEndAndStays)
{
    type(u"x_y"_s);
    QTest::keyClick(text, Qt::Key_Return);
    press(u"Command1"_s);
    EXPECT_EQ(written(), "x_y\n语文_张三\n数学_李四\n\n");
    EXPECT_TRUE(form->isVisible());
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible()) << "unasked, since it is saved";
    open();
    EXPECT_EQ(text->toPlainText(), u"x_y\n语文_张三\n数学_李四\n\n"_s);
}

TEST_F(MasterListScreen, WithoutAFileItBeginsEmptyAndMakesOne)
{
    QFile::remove(file());
    open();
    EXPECT_EQ(text->toPlainText(), u""_s);
    type(u"x_y"_s);
    press(u"Command1"_s);
    EXPECT_EQ(written(), "x_y\n");
}

TEST_F(MasterListScreen, LeavingAsksAboutChangesThatAreNotSaved)
{
    type(u"x"_s);
    test.dialogs.expect(u"教师总名单有改动，还没有保存。"_s, u"取消"_s);
    press(u"Command2"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.safeOf(u"还没有保存"_s), u"取消"_s);
    test.dialogs.expect(u"还没有保存"_s, u"不保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(written(), "语文_张三\n数学_李四\n");
    open();
    type(u"x"_s);
    test.dialogs.expect(u"还没有保存"_s, u"保存"_s);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(written(), "x语文_张三\n数学_李四\n\n");
}

TEST_F(MasterListScreen, ChangesThatWereTakenBackAreNone)
{
    type(u"x"_s);
    QTest::keyClick(text, Qt::Key_Backspace);
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(MasterListScreen, AFolderThatCannotBeWrittenKeepsTheFileAndTheText)
{
    const QByteArray folder = test.paths.dataFile(QString()).toUtf8();
    ASSERT_EQ(chmod(folder.constData(), 0555), 0);
    {
        const support::OrdinaryUser user;
        type(u"x"_s);
        press(u"Command1"_s);
        test.dialogs.expect(u"还没有保存"_s, u"保存"_s);
        press(u"Command2"_s);
    }
    ASSERT_EQ(chmod(folder.constData(), 0755), 0);
    EXPECT_TRUE(form->isVisible()) << "what could not be saved is not lost";
    EXPECT_EQ(written(), "语文_张三\n数学_李四\n");
    ASSERT_EQ(test.dialogs.failures.size(), 2);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormZMD"_s));
    EXPECT_TRUE(test.dialogs.failures[0].startsWith(u"无法写入文件 "_s));
    test.dialogs.expect(u"还没有保存"_s, u"不保存"_s);
    form->close();
}

TEST_F(MasterListScreen, AFileThatCannotBeReadIsNotReplaced)
{
    ASSERT_EQ(chmod(file().toUtf8().constData(), 0), 0);
    {
        const support::OrdinaryUser user;
        open();
    }
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormZMD"_s));
    EXPECT_FALSE(form->findChild<QPushButton*>(u"Command1"_s)->isEnabled());
    EXPECT_TRUE(text->isReadOnly());
}

} // namespace
