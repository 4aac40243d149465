#include "library/ui/RestoreScreen.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QItemSelectionModel>
#include <QLabel>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "library/LibraryBackup.h"
#include "platform/grid/GridText.h"
#include "support/FileBytes.h"
#include "support/OrdinaryUser.h"

namespace {

using namespace Qt::StringLiterals;
using library::Occasion;

/// A library with two copies: ahead of the import of an exam, and ahead of a re-classing.
class RestoreScreen : public support::MainWindowFixture
{
protected:
    RestoreScreen()
    {
        window->start(path);
        backUp(Occasion::examImport(u"期中"_s), 1);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        backUp({u"重新分班"_s}, 2);
        test.addStudent(2, 1, u"新生"_s, u"理"_s);
        test.scores.readCatalogue();
        test.scores.notifyChanged();
    }

    void backUp(const Occasion& occasion, int minute)
    {
        runtime::NoProgress progress;
        library::backUpLibrary(path, QDateTime(QDate(2026, 3, 9), QTime(7, minute)), occasion,
                               progress);
    }

    /// Opens the screen by the menu and works on it; it is closed if the work leaves it open.
    void onScreen(const std::function<void(QDialog&)>& work)
    {
        support::ModalBoxes boxes;
        boxes.expect([&](QDialog& screen) {
            EXPECT_EQ(screen.objectName(), u"RestoreScreen"_s);
            work(screen);
            if (screen.isVisible())
                screen.close();
        });
        item(u"mfRestore"_s)->trigger();
    }

    static void press(const QDialog& screen, const QString& name)
    {
        QTest::mouseClick(screen.findChild<QPushButton*>(name), Qt::LeftButton);
    }
    static grid::FlexGridView* view(const QDialog& screen, const QString& name)
    {
        return screen.findChild<grid::FlexGridView*>(name);
    }
    static QString differences(const QDialog& screen)
    {
        return grid::gridText(view(screen, u"gridDifferences"_s)->grid());
    }
    static QString occasions(const QDialog& screen)
    {
        const grid::FlexGrid& grid = view(screen, u"gridCopies"_s)->grid();
        QStringList found;
        for (int row = 1; row < grid.Rows(); ++row)
            found.append(grid.TextMatrix(row, 1) + u' ' + grid.TextMatrix(row, 2));
        return found.join(u" / "_s);
    }
    static QString note(const QDialog& screen)
    {
        return screen.findChild<QLabel*>(u"labelDifferences"_s)->text();
    }
    static QList<int> selectedRows(const grid::FlexGridView& grid)
    {
        QList<int> rows;
        for (const QModelIndex& index : grid.selectionModel()->selectedIndexes())
            rows.append(index.row());
        return rows;
    }
    QString students() { return test.rows(u"select 姓名 from 信息表"_s); }
};

TEST_F(RestoreScreen, ListsCopiesAndComparesTheChosenOneByKeys)
{
    onScreen([](QDialog& screen) {
        EXPECT_EQ(occasions(screen),
                  u"2026-03-09 07:02:00 重新分班 / 2026-03-09 07:01:00 导入 期中"_s);
        EXPECT_EQ(note(screen), u"选中一份备份，按“与现在比较”看有哪些不同。"_s);
        grid::FlexGridView* copies = view(screen, u"gridCopies"_s);
        EXPECT_EQ(screen.focusWidget(), copies);
        EXPECT_EQ(selectedRows(*copies), QList<int>{1});
        EXPECT_EQ(selectedRows(*view(screen, u"gridDifferences"_s)), QList<int>());
        QTest::keyClick(copies, Qt::Key_Down);
        QTest::keyClick(screen.findChild<QPushButton*>(u"buttonCompare"_s), Qt::Key_Space);
        EXPECT_EQ(differences(screen), u"恢复这份备份会怎样\n"
                                       "备份以后增加、恢复后没有的考试：1 次\n"
                                       "备份以后增加、恢复后没有的学生：1 名\n"_s);
        EXPECT_EQ(note(screen), u"2026-03-09 07:01:00 的备份和现在的成绩库的不同之处："_s);
        QTest::keyClick(screen.findChild<QCheckBox*>(u"checkNames"_s), Qt::Key_Space);
        EXPECT_TRUE(differences(screen).contains(u"\n　　2 班 1 号 新生\n"_s));
        QTest::keyClick(copies, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), u"2026-03-09 07:01:00\r\n"_s);
        // What is shown belongs to one copy.
        QTest::keyClick(copies, Qt::Key_Up);
        EXPECT_EQ(differences(screen), u"恢复这份备份会怎样\n"_s);
    });
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(RestoreScreen, RestoresTheChosenCopyAndShowsTheLibraryAnew)
{
    gridView()->show();
    onScreen([this](QDialog& screen) {
        test.dialogs.expect(u"2026-03-09 07:02:00，重新分班 之前"_s, u"取消"_s);
        press(screen, u"buttonRestore"_s);
        EXPECT_TRUE(screen.isVisible());
        QTest::keyClick(view(screen, u"gridCopies"_s), Qt::Key_Down);
        test.dialogs.expect(u"2026-03-09 07:01:00，导入 期中 之前"_s, u"恢复"_s);
        QTest::keyClick(screen.findChild<QPushButton*>(u"buttonRestore"_s), Qt::Key_Space);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(students(), u"甲"_s);
    EXPECT_EQ(test.scores.catalogue.ExamList, QStringList());
    EXPECT_FALSE(gridView()->isVisible());
    EXPECT_TRUE(test.dialogs.shown.last().startsWith(
        u"恢复完毕，成绩库现在是 2026-03-09 07:01:00 的备份的内容。\n恢复前的成绩库已备份为 "_s));
}

TEST_F(RestoreScreen, TakesAFileFromElsewhere)
{
    const QString elsewhere = test.file(u"U盘上的.CJK"_s);
    QFile::copy(path, elsewhere);
    test.addStudent(3, 1, u"再新"_s, u"理"_s);
    onScreen([&](QDialog& screen) {
        test.dialogs.file = elsewhere;
        press(screen, u"buttonOtherFile"_s);
        EXPECT_EQ(test.dialogs.fileFilter, u"备份或成绩库|*.bak;*.CJK"_s);
        test.dialogs.expect(u"把成绩库恢复为这份备份？"_s, u"恢复"_s);
        press(screen, u"buttonRestore"_s);
    });
    EXPECT_EQ(students(), u"甲 / 新生"_s);
}

TEST_F(RestoreScreen, TakesAFileFromElsewhereOffTheListAndLeavesItWhereItIs)
{
    const QString elsewhere = test.file(u"二中.CJK"_s);
    QFile::copy(path, elsewhere);
    onScreen([&](QDialog& screen) {
        auto* removing = screen.findChild<QPushButton*>(u"buttonRemove"_s);
        EXPECT_EQ(removing->text(), u"删除备份(&X)"_s);
        const QString before = occasions(screen);
        test.dialogs.file = elsewhere;
        for (int twice = 0; twice < 2; ++twice)
            press(screen, u"buttonOtherFile"_s);
        EXPECT_EQ(view(screen, u"gridCopies"_s)->grid().Rows(), 4);
        EXPECT_EQ(removing->text(), u"从列表中去掉(&X)"_s);
        EXPECT_EQ(removing->accessibleName(), u"从列表中去掉"_s);
        press(screen, u"buttonRemove"_s);
        EXPECT_EQ(occasions(screen), before);
        EXPECT_EQ(removing->text(), u"删除备份(&X)"_s);
    });
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(support::read(elsewhere), support::read(path));
}

TEST_F(RestoreScreen, AListedCopyThatIsChosenAsAFileStandsOnce)
{
    onScreen([&](QDialog& screen) {
        test.dialogs.file = path + u"_2026-03-09_070100.bak"_s;
        press(screen, u"buttonOtherFile"_s);
        EXPECT_EQ(occasions(screen),
                  u"2026-03-09 07:02:00 重新分班 / 2026-03-09 07:01:00 导入 期中"_s);
        EXPECT_EQ(view(screen, u"gridCopies"_s)->grid().Row, 2);
    });
}

TEST_F(RestoreScreen, EnterComparesACopyAndEscCloses)
{
    onScreen([](QDialog& screen) {
        QTest::keyClick(view(screen, u"gridCopies"_s), Qt::Key_Return);
        EXPECT_EQ(note(screen), u"2026-03-09 07:02:00 的备份和现在的成绩库的不同之处："_s);
        QTest::keyClick(view(screen, u"gridCopies"_s), Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    });
}

TEST_F(RestoreScreen, SaysThatACopyHoldsTheSame)
{
    backUp({u"设置文理"_s}, 3);
    onScreen([](QDialog& screen) {
        press(screen, u"buttonCompare"_s);
        EXPECT_EQ(note(screen), u"这份备份和现在的成绩库内容相同（照片只比较了大小）。"_s);
        EXPECT_EQ(differences(screen), u"恢复这份备份会怎样\n"_s);
    });
}

TEST_F(RestoreScreen, ListsTheCopiesAnewWhenARestoreFails)
{
    onScreen([this](QDialog& screen) {
        const QString copy = path + u"_2026-03-09_070200.bak"_s;
        QFile::remove(copy);
        press(screen, u"buttonRestore"_s);
        EXPECT_EQ(test.dialogs.shown, QStringList{u"找不到文件 %1。"_s.arg(copy)});
        EXPECT_EQ(occasions(screen), u"2026-03-09 07:01:00 导入 期中"_s);
    });
}

TEST_F(RestoreScreen, RemovesACopyOnlyIfAsked)
{
    onScreen([this](QDialog& screen) {
        test.dialogs.expect(u"删除 2026-03-09 07:02:00 的备份？删除后不能再恢复。"_s, u"取消"_s);
        press(screen, u"buttonRemove"_s);
        EXPECT_EQ(test.dialogs.safeOf(u"删除后不能再恢复"_s), u"取消"_s);
        test.dialogs.expect(u"删除后不能再恢复"_s, u"删除"_s);
        press(screen, u"buttonRemove"_s);
        EXPECT_EQ(occasions(screen), u"2026-03-09 07:01:00 导入 期中"_s);
        test.dialogs.expect(u"删除后不能再恢复"_s, u"删除"_s);
        press(screen, u"buttonRemove"_s);
        EXPECT_EQ(note(screen), u"成绩库旁边没有备份。"_s);
        for (const QString& name : {u"buttonCompare"_s, u"buttonRemove"_s, u"buttonRestore"_s})
            press(screen, name);
    });
    EXPECT_EQ(test.dialogs.shown.filter(u"请先选择一份备份！"_s).size(), 3);
    EXPECT_EQ(QDir(test.folder.path()).entryList({u"*.bak*"_s}), QStringList());
}

TEST_F(RestoreScreen, TellsOfACopyThatCannotBeRemoved)
{
    const QString folder = test.folder.path();
    onScreen([&](QDialog& screen) {
        const QString before = occasions(screen);
        QFile::setPermissions(folder, QFile::Permissions(0x5555));
        {
            const support::OrdinaryUser user;
            test.dialogs.expect(u"删除后不能再恢复"_s, u"删除"_s);
            press(screen, u"buttonRemove"_s);
        }
        QFile::setPermissions(folder, QFile::Permissions(0x7700));
        EXPECT_EQ(occasions(screen), before);
    });
    EXPECT_EQ(test.dialogs.shown.last(),
              u"无法删除文件 %1。"_s.arg(path + u"_2026-03-09_070200.bak"_s));
}

TEST_F(RestoreScreen, ShowsHostileOccasionsAsTheyStand)
{
    const QString name = u"<b>' or ''='\n--</b>"_s + QString(10'000, u'长');
    test.addStudent(4, 1, u"乙"_s, u"理"_s);
    backUp({name}, 3);
    onScreen([](QDialog& screen) {
        EXPECT_TRUE(occasions(screen).startsWith(u"2026-03-09 07:03:00 <b>' or ''=' --</b>长长"_s));
    });
}

TEST_F(RestoreScreen, IsOfferedForALibraryThatDoesNotOpen)
{
    test.scores.Conn.Close();
    support::write(path, "no library any more");
    test.dialogs.file = path;
    test.dialogs.expect(u"这个成绩库旁边有 2 份备份，最近的一份是 2026-03-09 07:02:00 的。"_s,
                        u"不恢复"_s);
    item(u"mfOpen"_s)->trigger();
    EXPECT_FALSE(test.scores.Conn.isOpen());

    test.dialogs.expect(u"要用“恢复备份”恢复其中一份吗？"_s, u"恢复备份…"_s);
    test.dialogs.expect(u"现在的成绩库没有打开，无法比较。"_s, u"恢复"_s);
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& screen) { press(screen, u"buttonRestore"_s); });
    item(u"mfOpen"_s)->trigger();
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(students(), u"甲"_s);
}

TEST_F(RestoreScreen, WithoutAnOpenLibraryAsksForOne)
{
    test.scores.Conn.Close();
    test.scores.LibPath.clear();
    test.dialogs.file = path;
    onScreen([](QDialog& screen) {
        EXPECT_TRUE(occasions(screen).contains(u"导入 期中"_s));
        press(screen, u"buttonCompare"_s);
    });
    EXPECT_EQ(test.dialogs.shown.last(), u"现在的成绩库没有打开，无法比较。"_s);
    test.dialogs.file.reset();
    test.scores.LibPath.clear();
    item(u"mfRestore"_s)->trigger();
}

TEST_F(RestoreScreen, TheLatestImportIsUndoneFromTheMenu)
{
    test.dialogs.expect(u"撤消 2026-03-09 07:01:00 的“导入 期中”？"_s, u"撤消导入"_s);
    item(u"mfUndoImport"_s)->trigger();
    EXPECT_EQ(test.scores.catalogue.ExamList, QStringList());
    EXPECT_EQ(students(), u"甲"_s);
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    EXPECT_FALSE(item(u"mfUndoImport"_s)->isEnabled());
    EXPECT_TRUE(item(u"mfRestore"_s)->isEnabled());
}

} // namespace
