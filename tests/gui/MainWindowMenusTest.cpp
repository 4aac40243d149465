#include <optional>

#include <QContextMenuEvent>
#include <QDialog>
#include <QListWidget>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "gui/UrlCatcher.h"
#include "platform/runtime/TextFile.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

/// What the items of the menus do besides opening screens.
class MainWindowMenus : public support::MainWindowFixture
{
protected:
    QString title(const QString& file) const { return u"云杉学业册 - "_s + file; }

    QStringList recent()
    {
        QStringList files;
        for (int i = 0; i < 6; ++i) {
            if (item(u"mfREC%1"_s.arg(i))->isVisible())
                files.append(item(u"mfREC%1"_s.arg(i))->text());
        }
        return files;
    }

    QString copyOfTheLibrary(const QString& name) const
    {
        EXPECT_TRUE(QFile::copy(path, test.file(name)));
        return test.file(name);
    }

    void openFromTheMenu(const QString& file)
    {
        test.dialogs.file = file;
        item(u"mfOpen"_s)->trigger();
    }

    /// Asks for a new library with the first subject under that file name, and gives up.
    void startNewLibrary(const std::optional<QString>& file)
    {
        test.dialogs.file = file;
        support::ModalBoxes boxes;
        boxes.expect([](QDialog& screen) {
            screen.findChild<QListWidget*>(u"List1"_s)->item(0)->setSelected(true);
            for (const QString& name : {u"Command1"_s, u"Command2"_s})
                QTest::mouseClick(screen.findChild<QPushButton*>(name), Qt::LeftButton);
        });
        item(u"mfNew"_s)->trigger();
    }

    /// Copies the grid to a workbook that is not saved.
    void makeUnsavedBook()
    {
        gridView()->grid().setTextMatrix(0, 0, u"班级"_s);
        item(u"mMfgToXls"_s)->trigger();
        EXPECT_EQ(books().size(), 1u);
    }

    /// Runs the program until it ends; gives its exit code.
    static int runUntilTheEnd()
    {
        QTimer guard;
        QObject::connect(&guard, &QTimer::timeout, &guard, [] { QApplication::exit(99); });
        guard.start(20000);
        return QApplication::exec();
    }
};

TEST_F(MainWindowMenus, AnUpdateIsLookedForInTheBrowser)
{
    window->start(path);
    const support::UrlCatcher browser(u"https"_s);
    item(u"mUpdate"_s)->trigger();
    EXPECT_EQ(browser.urls, QList<QUrl>{QUrl(u"https://example.org/yunshan"_s)});
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(MainWindowMenus, TheHelpDocumentIsHandedToTheDesktop)
{
    window->start(path);
    const QString document = test.paths.AppPath() + u"云杉学业册帮助文件.doc"_s;
    runtime::writeTextFile(document, u"帮助"_s);
    const support::UrlCatcher desktop(u"file"_s);
    item(u"Hzt"_s)->trigger();
    EXPECT_EQ(desktop.urls, QList<QUrl>{QUrl::fromLocalFile(document)});
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(MainWindowMenus, LeavingEndsTheProgramAtOnceAndClosesNothing)
{
    window->start(path);
    QTimer::singleShot(0, item(u"Mfexit"_s), &QAction::trigger);
    EXPECT_EQ(runUntilTheEnd(), 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(test.scores.Conn.isOpen());
}

TEST_F(MainWindowMenus, LeavingAsksForResultsThatNobodySaved)
{
    window->start(path);
    makeUnsavedBook();
    test.dialogs.expect(u"还没有保存"_s, Answer::Cancel);
    item(u"Mfexit"_s)->trigger();
    EXPECT_EQ(books().size(), 1u);
    test.dialogs.expect(u"还没有保存"_s, Answer::No);
    QTimer::singleShot(0, item(u"Mfexit"_s), &QAction::trigger);
    EXPECT_EQ(runUntilTheEnd(), 0);
    EXPECT_TRUE(books().empty());
}

TEST_F(MainWindowMenus, ClosingTheWindowAsksTooAndStaysOnCancel)
{
    window->start(path);
    makeUnsavedBook();
    test.dialogs.expect(u"还没有保存"_s, Answer::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(books().size(), 1u);
    test.dialogs.expect(u"还没有保存"_s, Answer::No);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(books().empty());
}

TEST_F(MainWindowMenus, BothItemsForTheWorkbenchBringItsPanelUp)
{
    window->start(path);
    for (const QString& name : {u"meLook"_s, u"mSHowInfo"_s}) {
        panel()->close();
        item(name)->trigger();
        EXPECT_TRUE(panel()->isVisible()) << name.toStdString();
    }
}

TEST_F(MainWindowMenus, ItemsWithoutAnActionAreOnAndDoNothing)
{
    startWithExam();
    for (const QString& name : {u"syks"_s, u"xyks"_s, u"meKSGM"_s, u"mZHFX"_s}) {
        EXPECT_TRUE(item(name)->isEnabled()) << name.toStdString();
        EXPECT_EQ(screenOpenedBy([&] { item(name)->trigger(); }), QString()) << name.toStdString();
    }
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_TRUE(books().empty());
}

TEST_F(MainWindowMenus, TheRightButtonOnTheGridOffersTheExport)
{
    startWithExam();
    press(u"CommandLLCJ"_s);
    auto* menu = window->findChild<QMenu*>(u"mTC"_s);
    QWidget* cells = gridView()->viewport();
    const QPoint place(5, 5);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, cells->mapToGlobal(place));
    QApplication::sendEvent(cells, &asked);
    ASSERT_TRUE(menu->isVisible());
    ASSERT_EQ(menu->actions().first(), item(u"mMfgToXls"_s));
    QTest::mouseClick(menu, Qt::LeftButton, {},
                      menu->actionGeometry(menu->actions().first()).center());
    EXPECT_EQ(books().size(), 1u);
}

TEST_F(MainWindowMenus, TheRecentListBeginsWithWhatWasOpenedFromTheMenu)
{
    window->start(path);
    const QString other = copyOfTheLibrary(u"另一个.CJK"_s);
    openFromTheMenu(other);
    EXPECT_EQ(recent(), (QStringList{other, path}));
    item(u"mfREC1"_s)->trigger();
    EXPECT_EQ(window->windowTitle(), title(path));
    EXPECT_EQ(recent(), (QStringList{other, path})) << "its order stays";
    openFromTheMenu(path);
    EXPECT_EQ(recent(), (QStringList{other, path})) << "what is listed keeps its place";
}

TEST_F(MainWindowMenus, ThePlaceOfAnEmptyRecentListOpensNothing)
{
    window->start(u""_s);
    EXPECT_EQ(recent(), QStringList{u"(最近打开的文件)"_s});
    item(u"mfREC0"_s)->trigger();
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(MainWindowMenus, ANewLibraryThatWasNotMadeLeavesTheTitle)
{
    window->start(path);
    startNewLibrary(std::nullopt);
    EXPECT_EQ(window->windowTitle(), title(path));
    const QString other = copyOfTheLibrary(u"另一个.CJK"_s);
    test.dialogs.expect(u"文件已存在"_s, Answer::Cancel);
    startNewLibrary(other);
    EXPECT_EQ(window->windowTitle(), title(path));
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.rows(u"select 姓名 from 信息表"_s), u"甲"_s);
}

TEST_F(MainWindowMenus, ACompactionThatFailsLeavesTheTitle)
{
    window->start(path);
    ASSERT_TRUE(QFile::remove(path));
    item(u"mfSaveAs"_s)->trigger();
    EXPECT_FALSE(test.dialogs.failures.isEmpty());
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(window->windowTitle(), title(path));
}

TEST_F(MainWindowMenus, ResultsGoWithTheirLibrary)
{
    startWithExam();
    press(u"CommandLLCJ"_s);
    openFromTheMenu(path);
    EXPECT_TRUE(gridView()->isVisible()) << "the same library again";
    item(u"mfSaveAs"_s)->trigger();
    EXPECT_TRUE(gridView()->isVisible());
    openFromTheMenu(copyOfTheLibrary(u"另一个.CJK"_s));
    EXPECT_FALSE(gridView()->isVisible());
}

} // namespace
