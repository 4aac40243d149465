#include "gui/DroppedFile.h"
#include "gui/MainWindowFixture.h"
#include "platform/runtime/TextFile.h"
#include "workbooks/model/Workbook.h"

namespace {

using namespace Qt::StringLiterals;

/// What stays of the library that is open when another one cannot be opened.
class FailedOpening : public support::MainWindowFixture
{
protected:
    FailedOpening() : broken(test.file(u"坏.CJK"_s))
    {
        runtime::writeTextFile(broken, u"姓名,语文\n"_s);
    }

    void startWithBothListed()
    {
        runtime::writeTextFile(test.paths.dataFile(u"recent.dat"_s), path + u'\n' + broken + u'\n');
        startWithExam();
    }

    void openFromTheMenu(const QString& file)
    {
        test.dialogs.file = file;
        item(u"mfOpen"_s)->trigger();
    }

    QString workbook() const
    {
        excel::Workbook book;
        book.addSheet(u"成绩"_s).setCell(1, 1, u"班级"_s);
        book.SaveAs(test.file(u"月考.xlsx"_s));
        return test.file(u"月考.xlsx"_s);
    }

    /// It was told once that the file is no library.
    void expectTold()
    {
        EXPECT_EQ(test.dialogs.shown,
                  QStringList{broken + u" 不是成绩库。 - Public Sub OpenDB/Mdl_MDB"_s});
        test.dialogs.shown.clear();
    }

    void expectCommands(bool available)
    {
        for (const QString& name : {u"Medit"_s, u"mSJWH"_s, u"mSJCL"_s})
            EXPECT_EQ(menuEnabled(name), available) << name.toStdString();
        EXPECT_EQ(item(u"mfSaveAs"_s)->isEnabled(), available);
        EXPECT_EQ(window->findChild<QPushButton*>(u"CommandLLCJ"_s)->isEnabled(), available);
    }

    /// The library is open as before; what the window says and what it does is about that one.
    void expectTheOpenOneStays()
    {
        EXPECT_EQ(test.scores.Conn.path(), path);
        EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
        expectCommands(true);
        press(u"CommandLLCJ"_s);
        EXPECT_EQ(screenOpenedBy([this] { EXPECT_TRUE(support::dropOn(*window, workbook())); }),
                  u"FormDaoRu"_s);
        item(u"mfSaveAs"_s)->trigger();
        EXPECT_EQ(test.dialogs.shown, QStringList{u"压缩完毕!"_s});
        EXPECT_EQ(test.rows(u"select 姓名 from 信息表"_s), u"甲"_s);
        EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
    }

    const QString broken;
};

TEST_F(FailedOpening, FromTheMenuItLeavesTheOpenLibrary)
{
    startWithExam();
    openFromTheMenu(broken);
    expectTold();
    expectTheOpenOneStays();
}

TEST_F(FailedOpening, FromTheRecentFilesItLeavesTheOpenLibrary)
{
    startWithBothListed();
    item(u"mfREC1"_s)->trigger();
    expectTold();
    expectTheOpenOneStays();
}

TEST_F(FailedOpening, ByADropItLeavesTheOpenLibrary)
{
    startWithExam();
    EXPECT_TRUE(support::dropOn(*window, broken));
    expectTold();
    expectTheOpenOneStays();
}

TEST_F(FailedOpening, ItLeavesTheResultsOfTheOpenLibraryInView)
{
    startWithBothListed();
    press(u"CommandLLCJ"_s);
    openFromTheMenu(broken);
    EXPECT_TRUE(gridView()->isVisible());
    item(u"mfREC1"_s)->trigger();
    EXPECT_TRUE(gridView()->isVisible());
}

TEST_F(FailedOpening, WithoutAnOpenLibraryThereIsNoneAfterwards)
{
    window->start(broken);
    expectTold();
    openFromTheMenu(broken);
    expectTold();
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(window->windowTitle(), u"云杉学业册"_s);
    expectCommands(false);
    EXPECT_FALSE(support::dropOn(*window, workbook()));
}

TEST_F(FailedOpening, OfAFileThatDoesNotExistLeavesTheOpenLibrary)
{
    startWithExam();
    const QString missing = test.file(u"没有.CJK"_s);
    EXPECT_TRUE(support::dropOn(*window, missing));
    EXPECT_EQ(test.dialogs.shown, QStringList{missing + u"\n库文件不存在！"_s});
    test.dialogs.shown.clear();
    EXPECT_EQ(test.scores.LibPath, QString());
    test.scores.notifyChanged();
    expectTheOpenOneStays();
}

TEST_F(FailedOpening, AfterACompactionThatLeavesNoLibraryTheCommandsAreOff)
{
    startWithExam();
    press(u"CommandLLCJ"_s);
    QFile damaged(path);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("SQLite format 3\0 and no more", 28);
    damaged.close();
    item(u"mfSaveAs"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown.last(), u"压缩完毕!"_s);
    expectCommands(false);
    EXPECT_FALSE(gridView()->isVisible());
}

} // namespace
