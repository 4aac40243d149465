#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "gui/DroppedFile.h"
#include "gui/ModalBoxes.h"
#include "platform/database/DatabaseFile.h"
#include "platform/grid/ui/FlexGridView.h"
#include "shell/ui/AFormMain.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "workbooks/model/Workbook.h"

namespace {

using namespace Qt::StringLiterals;
using support::OrdinaryUser;
using support::TestLibrary;

/// The end of a run of totals, T standing for the times.
const QString scored = u"计算总分 完成！T\nT"_s;

const QString openTag = u" - Public Sub OpenDB/Mdl_MDB"_s;

/// The main window over an open library with an exam, in a folder with files that are not as they
/// should be.
class BadInput : public testing::Test
{
protected:
    BadInput()
    {
        QStandardPaths::setTestModeEnabled(true);
        QSettings().clear();
        test.addStudent(1, 1, u"王芳"_s, u"理"_s);
        test.addStudent(1, 2, u"陈静"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        test.addScores(u"期中"_s, 1, 2, {{u"语文"_s, 80}});
        test.execute(u"delete * from 总分公式"_s);
        test.execute(u"insert into 总分公式(总分,公式) values('总分','语文')"_s);
        before = contents();
        window = std::make_unique<shell::AFormMain>(test.scores, screenDialogs);
        window->start(path);
        window->show();
    }

    QString contents() { return test.rows(u"select * from 成绩表"_s); }

    /// The library is open as before, and works.
    void expectUnharmed()
    {
        test.dialogs.shown.clear();
        window->findChild<QAction*>(u"mfREC0"_s)->trigger();
        EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
        press(u"CommandLLCJ"_s);
        EXPECT_EQ(test.dialogs.shown, QStringList());
        EXPECT_EQ(gridNames(), (QStringList{u"王芳"_s, u"陈静"_s}));
        EXPECT_EQ(contents(), before);
    }

    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(test.file(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// What is said when the menu opens the file.
    QStringList opening(const QString& file)
    {
        test.dialogs.shown.clear();
        test.dialogs.file = file;
        window->findChild<QAction*>(u"mfOpen"_s)->trigger();
        return test.dialogs.shown;
    }

    QPushButton* button(const QString& name) { return window->findChild<QPushButton*>(name); }
    void press(const QString& name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    /// What is said when a button of the workbench is pressed, T standing for times of day.
    QStringList pressing(const QString& name)
    {
        test.dialogs.shown.clear();
        press(name);
        QStringList told = test.dialogs.shown;
        static const QRegularExpression time(u"\\d\\d:\\d\\d:\\d\\d"_s);
        return told.replaceInStrings(time, u"T"_s);
    }

    QStringList gridNames() const
    {
        const grid::FlexGrid& grid =
            window->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s)->grid();
        QStringList names;
        for (int row = 1; row < grid.Rows(); ++row)
            names.append(grid.TextMatrix(row, 2));
        return names;
    }

    bool drop(const QString& file) const { return support::dropOn(*window, file); }

    using Rows = std::vector<std::vector<runtime::Value>>;

    QString workbook(const QString& name, const Rows& rows) const
    {
        excel::Workbook book;
        excel::Worksheet& sheet = book.addSheet(u"成绩"_s);
        for (size_t row = 0; row < rows.size(); ++row) {
            for (size_t column = 0; column < rows[row].size(); ++column)
                sheet.setCell(int(row) + 1, int(column) + 1, rows[row][column]);
        }
        book.SaveAs(test.file(name));
        return test.file(name);
    }

    template <class Widget> static Widget* part(const QDialog& screen, const QString& name)
    {
        Widget* found = screen.findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    static void pressOn(const QDialog& screen, const QString& name)
    {
        QTest::mouseClick(part<QPushButton>(screen, name), Qt::LeftButton);
    }

    /// Drops the workbook, and imports its exam with all new students and with scoring.
    void importDropped(const QString& book)
    {
        boxes.expect([&](QDialog& screen) {
            for (const QString& tick : {u"CheckAdd"_s, u"CheckBox1"_s})
                part<QCheckBox>(screen, tick)->setChecked(true);
            boxes.expect([](QDialog& marks) { pressOn(marks, u"Command1"_s); });
            pressOn(screen, u"Command1"_s);
            pressOn(screen, u"Command2"_s);
        });
        EXPECT_TRUE(drop(book));
    }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"总分"_s}};
    const QString path = test.scores.LibPath;
    QString before;
    support::ModalBoxes boxes;
    std::unique_ptr<shell::AFormMain> window;
};

TEST_F(BadInput, AFileThatIsNoLibraryIsRefusedInOneSentence)
{
    const QString text = write(u"名单.CJK"_s, "姓名,语文\n");
    EXPECT_EQ(opening(text), QStringList{text + u" 不是成绩库。"_s + openTag});
    const QString empty = write(u"空.CJK"_s, {});
    EXPECT_EQ(opening(empty), QStringList{empty + u" 是空文件，不是成绩库。"_s + openTag});
    const QString old = write(u"旧.CJK"_s, QByteArray("\x00\x01\x00\x00Standard Jet DB", 19)
                                               + QByteArray(4000, '\0'));
    test.dialogs.expect(u"这是旧格式的成绩库"_s, u"转换"_s);
    const QStringList told = opening(old);
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[1].startsWith(old));
    EXPECT_TRUE(told[1].endsWith(u" - Sub Convert/OldLibraries"_s));
    EXPECT_EQ(bytes(text), QByteArray("姓名,语文\n"));
    expectUnharmed();
}

TEST_F(BadInput, ADamagedLibraryIsRefusedInOneSentence)
{
    const QByteArray whole = bytes(path);
    const QString cut = write(u"半.CJK"_s, whole.left(whole.size() / 2));
    EXPECT_EQ(opening(cut),
              QStringList{cut + u" 不完整（后面一部分丢失了），无法打开。"_s + openTag});
    EXPECT_EQ(bytes(cut), whole.left(whole.size() / 2));
    EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
    EXPECT_TRUE(window->findChild<QMenu*>(u"Medit"_s)->isEnabled());
    expectUnharmed();
}

TEST_F(BadInput, ALibraryThatDoesNotExistIsRefusedWhereverItIsNamed)
{
    const QString missing = test.file(u"没有.CJK"_s);
    EXPECT_EQ(opening(missing), QStringList()) << "a name typed into the file dialog";
    EXPECT_TRUE(drop(missing));
    EXPECT_EQ(test.dialogs.shown, QStringList{missing + u"\n库文件不存在！"_s});
    EXPECT_FALSE(QFile::exists(missing));
    expectUnharmed();
}

TEST_F(BadInput, AFolderIsNoLibrary)
{
    EXPECT_EQ(opening(test.folder.path()), QStringList{test.folder.path() + u"\n库文件不存在！"_s});
    expectUnharmed();
}

TEST_F(BadInput, ALibraryThatAnotherProgramHoldsIsToldAndTakenUpAgain)
{
    database::OtherProgram other(path);
    other.run("begin exclusive");
    const QString locked =
        u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s;
    EXPECT_EQ(opening(path), QStringList{locked + openTag});
    EXPECT_TRUE(button(u"CommandJSZF"_s)->isEnabled());
    other.run("rollback");
    EXPECT_EQ(opening(path), QStringList());
    other.run("begin immediate");
    EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList());
    EXPECT_EQ(pressing(u"CommandJSZF"_s),
              (QStringList{locked + u" - Sub PanNJBjMC/Mdl_MDB"_s, scored}));
    other.run("rollback");
    expectUnharmed();
}

TEST_F(BadInput, AReadOnlyLibraryIsReadAndNotWritten)
{
    chmod(qPrintable(path), 0444);
    chmod(qPrintable(test.folder.path()), 0777);
    {
        const OrdinaryUser user;
        window->findChild<QAction*>(u"mfREC0"_s)->trigger();
        EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList());
        EXPECT_EQ(gridNames().size(), 2);
        EXPECT_EQ(pressing(u"CommandJSZF"_s),
                  (QStringList{u"成绩库是只读的，不能写入。 - Sub PanNJBjMC/Mdl_MDB"_s, scored}));
    }
    expectUnharmed();
}

TEST_F(BadInput, ALibraryInAReadOnlyFolderIsReadAndNotWritten)
{
    chmod(qPrintable(path), 0666);
    chmod(qPrintable(test.folder.path()), 0555);
    {
        const OrdinaryUser user;
        window->findChild<QAction*>(u"mfREC0"_s)->trigger();
        EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList());
        const QStringList told = pressing(u"CommandJSZF"_s);
        ASSERT_EQ(told.size(), 2);
        EXPECT_TRUE(told[0].startsWith(u"无法打开成绩库文件，或不能在它旁边建立临时文件。"_s)
                    || told[0].startsWith(u"成绩库是只读的，不能写入。"_s))
            << told[0].toStdString();
        EXPECT_TRUE(told[0].endsWith(u" - Sub PanNJBjMC/Mdl_MDB"_s));
        EXPECT_EQ(told[1], scored);
    }
    chmod(qPrintable(test.folder.path()), 0755);
    expectUnharmed();
}

TEST_F(BadInput, ALibraryThatIsDamagedWithinTellsSoAndTheNextOneOpens)
{
    QByteArray damaged = bytes(path);
    for (qsizetype i = 4096 * 3; i < damaged.size(); ++i)
        damaged[i] = char(i * 7);
    const QString file = write(u"坏页.CJK"_s, damaged);
    const QString sentence = u"成绩库文件已经损坏。（database disk image is malformed）"_s;
    EXPECT_EQ(opening(file), QStringList{sentence + u" - Public Sub OpenDB/Mdl_MDB"_s});
    EXPECT_EQ(window->windowTitle(), u"云杉学业册"_s);
    EXPECT_FALSE(window->findChild<QWidget*>(u"CommandLLCJ"_s)->isEnabled());
    EXPECT_EQ(bytes(file), damaged);
    test.dialogs.shown.clear();
    EXPECT_TRUE(drop(path));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(contents(), before);
}

TEST_F(BadInput, ALibraryThatIsMovedAwayWhileItIsOpenIsNotWritten)
{
    const QString away = test.file(u"别处.CJK"_s);
    ASSERT_TRUE(QFile::rename(path, away));
    const QByteArray whole = bytes(away);
    EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList());
    EXPECT_EQ(gridNames(), (QStringList{u"王芳"_s, u"陈静"_s}));
    EXPECT_EQ(pressing(u"CommandJSZF"_s),
              (QStringList{u"成绩库文件 "_s + path
                               + u" 已被移走、删除或替换，没有写入。 - Sub PanNJBjMC/Mdl_MDB"_s,
                           scored}));
    EXPECT_EQ(bytes(away), whole);
    ASSERT_TRUE(QFile::rename(away, path));
    expectUnharmed();
}

TEST_F(BadInput, ALibraryThatIsDeletedWhileItIsOpenIsNotMadeAnew)
{
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList()) << "what is open can still be read";
    EXPECT_EQ(pressing(u"CommandJSZF"_s).size(), 2);
    test.dialogs.shown.clear();
    window->findChild<QAction*>(u"mfREC0"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"下列文件不存在！可能被移动或改名。\n"_s + path});
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(BadInput, ANameWithAnApostropheGoesThroughTheWholeImport)
{
    const QString book = workbook(u"期末.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                                                   {1, 1, u"王芳"_s, 70},
                                                   {1, 3, u"O'Neil"_s, 60}});
    importDropped(book);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(test.rows(u"select 姓名,语文,语文年名 from 成绩表 where 考试名称='期末'"_s),
              u"王芳|70|1 / O'Neil|60|2"_s);
    EXPECT_EQ(test.rows(u"select 姓名,科类 from 信息表 where 学号=3"_s), u"O'Neil|理"_s);
    auto* exams = window->findChild<QListWidget*>(u"ListKSMC"_s);
    exams->selectAll();
    EXPECT_EQ(pressing(u"CommandLLCJ"_s), QStringList());
    EXPECT_EQ(gridNames().last(), u"O'Neil"_s);
}

/// The scores come in; the statements that name the exam fail, each with its message.
TEST_F(BadInput, AnExamWithAnApostropheIsImportedAndNotScored)
{
    const QString book = workbook(
        u"高一'期末.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 70}});
    importDropped(book);
    const QString near = u"语句有语法错误：“高一'期末”里有单引号。"_s;
    EXPECT_EQ(
        test.dialogs.shown,
        (QStringList{near + u" - Function GetKSKM/Mdl_MDB"_s, near + u" - Sub Zfen/Mdl_MDB"_s,
                     near + u" - Function GetZFKMGS/Mdl_MDB"_s, near + u" - Sub JiSuanZF/Mdl_MDB"_s,
                     near + u" - Function GetKSKMZF/Mdl_MDB"_s, near + u" - Sub PaiMC/Mdl_MDB"_s,
                     u"导入完成！"_s}));
    EXPECT_EQ(test.rows(u"select 考试名称,语文,语文年名 from 成绩表 where 语文=70"_s),
              u"高一'期末|70|NULL"_s);
    EXPECT_EQ(contents().section(u" / "_s, 0, 1), before);
}

TEST_F(BadInput, AFormulaOverFiftyCharactersIsToldAndNotStored)
{
    const QString formula = QStringList(18, u"语文"_s).join(u'+');
    ASSERT_GT(formula.size(), 50);
    boxes.expect([&](QDialog& screen) {
        for (const QString& list : {u"List1"_s, u"List2"_s}) {
            auto* widget = part<QListWidget>(screen, list);
            QTest::mouseClick(widget->viewport(), Qt::LeftButton, {},
                              widget->visualItemRect(widget->item(0)).center());
        }
        part<QLineEdit>(screen, u"Text1"_s)->setText(formula);
        pressOn(screen, u"Command1"_s);
        EXPECT_EQ(part<QLineEdit>(screen, u"Text1"_s)->text(), formula);
        pressOn(screen, u"Command2"_s);
    });
    window->findChild<QAction*>(u"meZFGS"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"“"_s + formula
                                              + u"”不能存入列“总分”：文字超过 50 个字符。"
                                                " - Private Sub Command1_Click/FormZFGS"_s});
    EXPECT_EQ(test.rows(u"select 总分 from 考试名称表"_s), u"语文"_s);
}

TEST_F(BadInput, ADroppedLibraryIsOpened)
{
    const QString other = test.file(u"另一个.cjk"_s);
    ASSERT_TRUE(QFile::copy(path, other));
    EXPECT_TRUE(drop(other));
    EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + other);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(BadInput, ADroppedWorkbookComesUpInTheImport)
{
    const QString book = workbook(u"月考.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}});
    boxes.expect([&](QDialog& screen) {
        EXPECT_EQ(screen.objectName(), u"FormDaoRu"_s);
        EXPECT_EQ(part<QLineEdit>(screen, u"Text1"_s)->text(), book);
        EXPECT_EQ(part<QComboBox>(screen, u"Combo1"_s)->currentText(), u"成绩"_s);
        EXPECT_EQ(part<QComboBox>(screen, u"Combo2"_s)->currentText(), u"月考"_s);
        EXPECT_FALSE(drop(path)) << "a screen is open over the window";
        pressOn(screen, u"Command2"_s);
    });
    EXPECT_TRUE(drop(book));
    EXPECT_EQ(boxes.count, 1);
}

TEST_F(BadInput, ADroppedWorkbookThatIsNoneIsToldOnTheScreen)
{
    boxes.expect([&](QDialog& screen) {
        EXPECT_FALSE(part<QLabel>(screen, u"LabelFault"_s)->text().isEmpty());
        EXPECT_EQ(part<QComboBox>(screen, u"Combo1"_s)->count(), 0);
        screen.close();
    });
    EXPECT_TRUE(drop(write(u"坏.xlsx"_s, "no workbook")));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    expectUnharmed();
}

TEST_F(BadInput, ADroppedPictureIsRefused)
{
    EXPECT_FALSE(drop(write(u"王芳.jpg"_s, "picture")));
    EXPECT_FALSE(drop(test.folder.path()));
    EXPECT_EQ(boxes.count, 0);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(BadInput, WithoutALibraryADroppedWorkbookIsRefused)
{
    test.scores.Conn.Close();
    test.scores.LibPath.clear();
    test.scores.notifyChanged();
    EXPECT_FALSE(drop(workbook(u"月考.xlsx"_s, {})));
    EXPECT_TRUE(drop(path));
    expectUnharmed();
}

TEST_F(BadInput, AMissingBackgroundIsToldAndTheWindowComesUp)
{
    ASSERT_TRUE(QFile::remove(test.paths.dataFile(u"bj.jpg"_s)));
    const shell::AFormMain second(test.scores, screenDialogs);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"找不到图片文件“"_s + test.paths.dataFile(u"bj.jpg"_s)
                          + u"”，或者它已损坏。 - Private Sub Form_Load/FormMain"_s});
    EXPECT_NE(second.findChild<QAction*>(u"mfOpen"_s), nullptr);
}

} // namespace
