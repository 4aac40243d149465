#include "library/ui/FormNew.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "library/ui/FormXiuGaiKeMu.h"
#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class NewLibraryScreen : public testing::Test
{
protected:
    NewLibraryScreen()
    {
        runtime::writeTextFile(paths.dataFile(u"科目.txt"_s), u"语文\n数学\n总分\n"_s);
        runtime::writeTextFile(paths.dataFile(u"总分公式.txt"_s), u"总分=语文+数学\n"_s);
        form = std::make_unique<library::FormNew>(scores, screenDialogs, nullptr);
        form->show();
    }

    QListWidget* subjects() { return form->findChild<QListWidget*>(u"List1"_s); }
    QString formula() { return form->findChild<QLineEdit*>(u"Text1"_s)->text(); }

    void click(int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(subjects()->viewport(), Qt::LeftButton, keys,
                          subjects()->visualItemRect(subjects()->item(row)).center());
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    QByteArray storedSubjects() const
    {
        QFile file(paths.dataFile(u"科目.txt"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    widgets::ScreenDialogs screenDialogs;
    support::ScriptedDialogs dialogs;
    runtime::AppPaths paths = TestLibrary::makeAppFolder(folder.path());
    library::ScoreLibrary scores{paths};
    std::unique_ptr<library::FormNew> form;
};

TEST_F(NewLibraryScreen, ShowsTheFormulaOfTheTotalThatIsClicked)
{
    click(2);
    EXPECT_EQ(formula(), u"总分=语文+数学"_s);
    click(0);
    EXPECT_EQ(formula(), u""_s);
}

TEST_F(NewLibraryScreen, MakesALibraryOfTheSelectedSubjectsInListOrder)
{
    const QSignalSpy created(form.get(), &library::FormNew::created);
    dialogs.file = folder.filePath(u"新.CJK"_s);
    click(2);
    click(0, Qt::ControlModifier);
    dialogs.expect(u"→ 语文"_s, u"改为现有科目"_s);
    press(u"Command1"_s);
    EXPECT_EQ(created.count(), 1);
    EXPECT_EQ(scores.catalogue.AllColumns, (QStringList{u"语文"_s, u"总分"_s}));
    EXPECT_EQ(dialogs.shown.last(), u"新建数据库成功，现在将设置学生信息。"_s);
    EXPECT_EQ(dialogs.fileTitle, u"保存文件"_s);
    EXPECT_EQ(dialogs.fileFilter, u"成绩库|*.CJK"_s);
}

TEST_F(NewLibraryScreen, WithoutASubjectItAsksForOneAndForNoFile)
{
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"请选择科目！"_s});
    EXPECT_EQ(dialogs.fileTitle, u""_s);
}

TEST_F(NewLibraryScreen, EscAndEnterCloseNothingAndTheButtonDoes)
{
    QTest::keyClick(form.get(), Qt::Key_Escape);
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(dialogs.shown.isEmpty());
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(NewLibraryScreen, TheListOfSubjectsIsWrittenAsTypedAndTheScreenStays)
{
    library::FormXiuGaiKeMu screen(paths, nullptr);
    screen.show();
    auto* text = screen.findChild<QPlainTextEdit*>(u"Text2"_s);
    EXPECT_EQ(text->toPlainText(), u"语文\n数学\n总分\n"_s);
    text->setPlainText(u"语文\n\n体育\n"_s);
    QTest::mouseClick(screen.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(storedSubjects(), QByteArray("语文\n\n体育\n"));
    QTest::mouseClick(screen.findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(NewLibraryScreen, AListOfSubjectsThatCannotBeWrittenIsTold)
{
    library::FormXiuGaiKeMu screen(paths, nullptr);
    screen.show();
    const QString list = paths.dataFile(u"科目.txt"_s);
    // A folder in the file's place, which no file replaces.
    ASSERT_TRUE(QFile::remove(list));
    ASSERT_TRUE(QDir().mkpath(list + u"/里面"_s));
    QTest::mouseClick(screen.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].startsWith(u"无法写入文件 "_s));
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormXiuGaiKeMu"_s));
    EXPECT_TRUE(screen.isVisible());
}

TEST_F(NewLibraryScreen, OffersTheSubjectsThatWereJustTyped)
{
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(window.windowTitle(), u"修改科目"_s);
        window.findChild<QPlainTextEdit*>(u"Text2"_s)->appendPlainText(u"体育"_s);
        for (const QString& name : {u"Command1"_s, u"Command2"_s})
            QTest::mouseClick(window.findChild<QPushButton*>(name), Qt::LeftButton);
    });
    press(u"Command3"_s);
    ASSERT_EQ(subjects()->count(), 4);
    EXPECT_EQ(subjects()->item(3)->text(), u"体育"_s);
}

} // namespace
