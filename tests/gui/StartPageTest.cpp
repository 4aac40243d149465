#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "library/DemoLibrary.h"
#include "platform/runtime/TextFile.h"
#include "shell/ui/LibraryList.h"
#include "support/FileBytes.h"

namespace {

using namespace Qt::StringLiterals;

/// The main window from a start without a library to the first scored exam.
class StartPage : public support::MainWindowFixture
{
protected:
    template <class Widget = QWidget> Widget* find(const QString& name)
    {
        auto* found = window->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    bool isShown(const QString& name) { return find(name)->isVisible(); }

    QWidget* note() { return find(u"NextStep"_s); }
    QString nextStep() { return find<QPushButton>(u"ButtonNextStep"_s)->accessibleName(); }
    shell::LibraryList* libraries() { return find<shell::LibraryList>(u"ListLibraries"_s); }

    /// Starts with these libraries in the list of before, and waits until each was looked at.
    void startWithRecent(const QStringList& paths)
    {
        runtime::writeTextFile(recent, paths.join(u'\n') + u'\n');
        window->start(u""_s);
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(QTest::qWaitFor([&] {
            for (int i = 0; i < libraries()->count(); ++i) {
                if (!text(i).contains(u"改于"_s) && !text(i).contains(u"找不到"_s))
                    return false;
            }
            return libraries()->count() == paths.size();
        }));
    }

    QString text(int row) { return libraries()->item(row)->text(); }
    QColor color(int row) { return libraries()->item(row)->foreground().color(); }

    const QString recent = test.paths.dataFile(u"recent.dat"_s);
};

TEST_F(StartPage, StandsThereUntilALibraryIsOpenAndComesBackWithoutOne)
{
    window->start(u""_s);
    EXPECT_TRUE(isShown(u"StartPage"_s));
    EXPECT_FALSE(note()->isVisible());
    window->start(path);
    EXPECT_FALSE(isShown(u"StartPage"_s));
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    EXPECT_TRUE(isShown(u"StartPage"_s));
}

TEST_F(StartPage, BeginsWithTheKeyboardOnTheFirstStep)
{
    startWithRecent({});
    EXPECT_EQ(window->focusWidget(), find(u"ButtonNew"_s));
    EXPECT_FALSE(isShown(u"ListLibraries"_s)) << "nothing to choose from";
    EXPECT_FALSE(isShown(u"ButtonRemove"_s));
    EXPECT_EQ(screenOpenedBy([&] { QTest::keyClick(window->focusWidget(), Qt::Key_Space); }),
              u"FormNew"_s);
}

TEST_F(StartPage, NamesTheFourStepsOfTheRoad)
{
    window->start(u""_s);
    QStringList lines;
    for (int i = 1; i <= 4; ++i)
        lines.append(
            find(u"StartPage"_s)->findChild<QLabel*>(u"LabelStep%1"_s.arg(i))->accessibleName());
    EXPECT_EQ(lines.join(u'\n'),
              u"下一步，1. 新建成绩库：选好要用的科目和总分，给文件起个名字。\n"
              "以后，2. 导入学生名单：工作簿前三列是班级、学号、姓名，一人一行。\n"
              "以后，3. 导入考试：工作簿前三列相同，后面一科一列。\n"
              "以后，4. 统计：计算总分和名次，然后浏览成绩、执行统计。"_s);
}

TEST_F(StartPage, OpensAsTheMenuDoes)
{
    window->start(u""_s);
    test.dialogs.file = path;
    press(u"ButtonOpen"_s);
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_EQ(item(u"mfREC0"_s)->text(), path);
}

TEST_F(StartPage, ListsTheLibrariesOfBeforeAndGreysThoseThatAreGone)
{
    const QString missing = test.file(u"没有.CJK"_s);
    startWithRecent({path, missing});
    const QFileInfo file(path);
    EXPECT_EQ(text(0), file.completeBaseName() + u"\n改于 "_s
                           + file.lastModified().toString(u"yyyy-MM-dd HH:mm"_s) + u"  "_s
                           + file.path());
    EXPECT_EQ(text(1), u"没有\n找不到文件  "_s + file.path());
    EXPECT_EQ(libraries()->item(1)->data(Qt::AccessibleTextRole).toString(),
              u"没有，找不到文件  "_s + file.path());
    EXPECT_EQ(color(0), libraries()->palette().color(QPalette::Active, QPalette::Text));
    EXPECT_EQ(color(1), libraries()->palette().color(QPalette::Disabled, QPalette::Text));
}

TEST_F(StartPage, FollowsAChangeToDarkColours)
{
    startWithRecent({path});
    const QPalette before = QApplication::palette();
    const auto light = qScopeGuard([&] { QApplication::setPalette(before); });
    QPalette dark(QColor(30, 30, 30));
    dark.setColor(QPalette::Active, QPalette::Text, QColor(220, 221, 222));
    QApplication::setPalette(dark);
    QApplication::processEvents();
    EXPECT_EQ(color(0), QColor(220, 221, 222));
}

TEST_F(StartPage, EnterOnALibraryOpensIt)
{
    startWithRecent({test.file(u"没有.CJK"_s), path});
    EXPECT_EQ(window->focusWidget(), libraries());
    QTest::keyClick(libraries(), Qt::Key_Down);
    QTest::keyClick(libraries(), Qt::Key_Return);
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_EQ(item(u"mfREC0"_s)->text(), test.file(u"没有.CJK"_s)) << "the list keeps its order";
}

TEST_F(StartPage, ALibraryThatIsGoneIsTold)
{
    const QString missing = test.file(u"没有.CJK"_s);
    startWithRecent({missing});
    QTest::keyClick(libraries(), Qt::Key_Enter);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"下列文件不存在！可能被移动或改名。\n"_s + missing});
}

TEST_F(StartPage, DeleteAndTheButtonTakeALibraryOutOfTheListAndTheMenu)
{
    const QStringList paths{u"/甲.CJK"_s, u"/乙.CJK"_s, path};
    startWithRecent(paths);
    QTest::keyClick(libraries(), Qt::Key_Down);
    QTest::keyClick(libraries(), Qt::Key_Delete);
    EXPECT_EQ(runtime::readAllLines(recent).join(u' ').trimmed(), u"/甲.CJK "_s + path);
    EXPECT_EQ(item(u"mfREC1"_s)->text(), path);
    EXPECT_FALSE(item(u"mfREC2"_s)->isVisible());
    EXPECT_EQ(libraries()->chosen(), path) << "the next one is chosen";
    press(u"ButtonRemove"_s);
    EXPECT_EQ(libraries()->chosen(), u"/甲.CJK"_s);
    press(u"ButtonRemove"_s);
    EXPECT_FALSE(isShown(u"ListLibraries"_s));
    EXPECT_EQ(item(u"mfREC0"_s)->text(), u"(最近打开的文件)"_s);
    EXPECT_TRUE(QFile::exists(path)) << "the file itself stays";
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

/// With a home of its own, where the documents stand.
class Demonstration : public StartPage
{
protected:
    Demonstration() { qputenv("HOME", test.file(u"家"_s).toUtf8()); }
    ~Demonstration() override { qputenv("HOME", m_before); }

private:
    const QByteArray m_before = qgetenv("HOME");
};

TEST_F(Demonstration, OpensACopyOfTheUsersOwnAndTheSameOneTheNextTime)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    ASSERT_TRUE(documents.startsWith(test.folder.path())) << documents.toStdString();
    const QString copy = documents + u"/云杉学业册/示范成绩库.CJK"_s;
    ASSERT_TRUE(QFile::copy(path, library::shippedDemoLibrary(test.paths)));
    window->start(u""_s);
    press(u"ButtonDemo"_s);
    EXPECT_EQ(test.scores.Conn.path(), copy);
    EXPECT_EQ(item(u"mfREC0"_s)->text(), copy);
    test.execute(u"update 信息表 set 姓名='改过'"_s);
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    press(u"ButtonDemo"_s);
    EXPECT_EQ(test.rows(u"select 姓名 from 信息表"_s), u"改过"_s);
}

TEST_F(Demonstration, OneThatDoesNotComeWithTheProgramIsTold)
{
    window->start(u""_s);
    press(u"ButtonDemo"_s);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_EQ(test.dialogs.failures[0], u"找不到随程序提供的示范成绩库 "_s
                                            + library::shippedDemoLibrary(test.paths)
                                            + u"，请重新安装程序。 - Sub OpenDemo/FormMain"_s);
    EXPECT_TRUE(isShown(u"StartPage"_s));
}

TEST_F(StartPage, AnEmptyLibraryNamesItsNextStepUntilTheFirstExamIsScored)
{
    window->start(path);
    EXPECT_EQ(nextStep(), u"下一步：导入考试"_s) << "it has a student";
    EXPECT_EQ(screenOpenedBy([&] { press(u"ButtonNextStep"_s); }), u"FormDaoRu"_s);
    test.execute(u"delete from 信息表"_s);
    test.reload();
    test.scores.notifyChanged();
    EXPECT_EQ(nextStep(), u"下一步：导入学生名单"_s);
    EXPECT_EQ(screenOpenedBy([&] { press(u"ButtonNextStep"_s); }), u"FormDaoRuXinXi"_s);
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
    test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 60}});
    test.reload();
    test.scores.notifyChanged();
    EXPECT_EQ(nextStep(), u"下一步：计算总分"_s);
    EXPECT_TRUE(note()->isVisible());
    press(u"ButtonNextStep"_s);
    EXPECT_FALSE(note()->isVisible());
    EXPECT_EQ(test.rows(u"select 语文年名 from 成绩表"_s), u"1"_s);
    EXPECT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown[0].startsWith(u"计算总分 完成！"_s));
}

/// Each on a line of its own, so the grid keeps most of the window.
TEST_F(StartPage, TheNoteLeavesRoomForTheResult)
{
    startWithExam();
    EXPECT_TRUE(note()->isVisible());
    press(u"CommandLLCJ"_s);
    EXPECT_TRUE(note()->isVisible()) << "the exam is not scored yet";
    QApplication::processEvents();
    EXPECT_GT(gridView()->height(), note()->height());
}

} // namespace
