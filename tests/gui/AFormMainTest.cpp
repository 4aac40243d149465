#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QScopeGuard>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "platform/runtime/TextFile.h"
#include "workbench/ui/FormKaoShi.h"

namespace {

using namespace Qt::StringLiterals;

class MainWindow : public support::MainWindowFixture
{
};

TEST_F(MainWindow, WithoutALibraryOnlyTheFileMenuIsOpen)
{
    window->start(u""_s);
    EXPECT_EQ(window->windowTitle(), u"云杉学业册"_s);
    EXPECT_TRUE(menuEnabled(u"mF"_s));
    for (const QString& name : {u"Medit"_s, u"mSJWH"_s, u"mSJCL"_s})
        EXPECT_FALSE(menuEnabled(name)) << name.toStdString();
    EXPECT_FALSE(item(u"mfSaveAs"_s)->isEnabled());
    EXPECT_FALSE(window->findChild<QWidget*>(u"MSFlexGrid1"_s)->isVisible());
}

TEST_F(MainWindow, AQuotedPathOnTheCommandLineOpens)
{
    window->start(u'"' + path + u'"');
    EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
    EXPECT_TRUE(menuEnabled(u"Medit"_s));
    EXPECT_TRUE(item(u"mfSaveAs"_s)->isEnabled());
    EXPECT_EQ(item(u"mfREC0"_s)->text(), path);
}

TEST_F(MainWindow, APathOnTheCommandLineCanBeRelative)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QFileInfo(path).path()));
    window->start(QFileInfo(path).fileName());
    QDir::setCurrent(before);
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
    EXPECT_EQ(item(u"mfREC0"_s)->text(), path);
}

TEST_F(MainWindow, APathThatDoesNotExistIsToldAndTheWindowStaysEmpty)
{
    const QString missing = test.file(u"没有.CJK"_s);
    window->start(missing);
    EXPECT_EQ(test.dialogs.shown, QStringList{missing + u"\n库文件不存在！"_s});
    EXPECT_EQ(window->windowTitle(), u"云杉学业册"_s);
}

TEST_F(MainWindow, WithoutAPathTheFirstRecentFileIsNamedThoughNothingIsOpen)
{
    runtime::writeTextFile(test.paths.dataFile(u"recent.dat"_s), path + u'\n');
    window->start(u""_s);
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_FALSE(test.scores.Conn.isOpen());
    item(u"mfREC0"_s)->trigger();
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + path);
}

TEST_F(MainWindow, OpeningFromTheMenuAsksForAFile)
{
    window->start(u""_s);
    item(u"mfOpen"_s)->trigger();
    EXPECT_FALSE(test.scores.Conn.isOpen());
    test.dialogs.file = path;
    item(u"mfOpen"_s)->trigger();
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.dialogs.fileFilter, u"成绩库|*.CJK"_s);
    EXPECT_EQ(test.dialogs.fileTitle, u"打开文件"_s);
}

TEST_F(MainWindow, ARecentFileThatIsGoneIsTold)
{
    window->start(path);
    ASSERT_TRUE(QFile::rename(path, path + u".moved"_s));
    item(u"mfREC0"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"下列文件不存在！可能被移动或改名。\n"_s + path});
}

TEST_F(MainWindow, CompactingKeepsTheDaysBackup)
{
    window->start(path);
    item(u"mfSaveAs"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"压缩完毕!"_s});
    EXPECT_TRUE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.rows(u"select 姓名 from 信息表"_s), u"甲"_s);
    const QString date = QDate::currentDate().toString(Qt::ISODate);
    EXPECT_TRUE(QFile::exists(path + u'_' + date + u"_.bak"_s));
}

TEST_F(MainWindow, CheckingScoresFindsNothingAfterAStart)
{
    window->start(path);
    item(u"meJCCJ"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"没有发现不合格的成绩！"_s});
}

TEST_F(MainWindow, AMissingHelpDocumentIsTold)
{
    window->start(path);
    item(u"Hzt"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown,
              QStringList{test.paths.AppPath() + u"云杉学业册帮助文件.doc\n\n帮助文件丢失！"_s});
}

TEST_F(MainWindow, TheItemsOfTheMenusOpenTheirScreens)
{
    window->start(path);
    for (const auto& [name, screen] :
         {std::pair{u"meDRKS"_s, u"FormDaoRu"_s}, std::pair{u"meDRLB"_s, u"FormDaoRuXinXi"_s},
          std::pair{u"meZFGS"_s, u"FormZFGS"_s}, std::pair{u"msGRFX"_s, u"FormGeRenChengJi"_s},
          std::pair{u"mfNew"_s, u"FormNew"_s}, std::pair{u"mtEXCEL"_s, u"FormDaoChu"_s},
          std::pair{u"mFXSZ"_s, u"FormSet"_s}, std::pair{u"meXXXG"_s, u"FormXGXX"_s},
          std::pair{u"meSZTP"_s, u"FormSheZhiZhaoPian"_s}, std::pair{u"mtZB"_s, u"FormZhuanBan"_s},
          std::pair{u"meXGCJ"_s, u"FormXiuGaiChengJi"_s}, std::pair{u"mDelKM"_s, u"FormDelKM"_s},
          std::pair{u"mtSJFB"_s, u"FormDaoRuFenBanXinXi"_s},
          std::pair{u"meJSMD"_s, u"FormJiaoShiMingDan"_s},
          std::pair{u"mtStudentMoves"_s, u"StudentMovesScreen"_s},
          std::pair{u"mtSZWL"_s, u"FormSheZhiWenLi"_s}, std::pair{u"Habout"_s, u"frmAbout"_s}}) {
        EXPECT_EQ(screenOpenedBy([&] { item(name)->trigger(); }), screen) << name.toStdString();
    }
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"成绩库里还没有考试，导入考试以后才有成绩和名次可以分析。"_s});
}

TEST_F(MainWindow, TheScreenThatMovesNobodyLeadsToTheOneThatDoes)
{
    window->start(path);
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& screen) {
        QTest::mouseClick(screen.findChild<QPushButton*>(u"buttonMoves"_s), Qt::LeftButton);
    });
    boxes.expect([](QDialog& screen) {
        EXPECT_EQ(screen.objectName(), u"StudentMovesScreen"_s);
        screen.close();
    });
    item(u"mtZB"_s)->trigger();
    EXPECT_EQ(boxes.count, 2);
}

TEST_F(MainWindow, TheCheckOfPhotosStaysOpenBesideTheMainWindow)
{
    window->start(path);
    item(u"meJCTP"_s)->trigger();
    auto* screen = window->findChild<QDialog*>(u"FormXGXX"_s);
    ASSERT_NE(screen, nullptr);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_FALSE(screen->isModal());
    EXPECT_EQ(screen->findChild<QListWidget*>(u"List1"_s)->count(), 1);
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    item(u"meJCTP"_s)->trigger();
    EXPECT_EQ(window->findChildren<QDialog*>(u"FormXGXX"_s).size(), 1);
    EXPECT_EQ(screen->findChild<QListWidget*>(u"List1"_s)->count(), 2);
    window->close();
    EXPECT_FALSE(screen->isVisible());
}

TEST_F(MainWindow, TheCheckOfPhotosFollowsWhatOtherScreensChanged)
{
    window->start(path);
    item(u"meJCTP"_s)->trigger();
    const auto* screen = window->findChild<QDialog*>(u"FormXGXX"_s);
    screenOpenedBy([this] {
        test.execute(u"update 信息表 set 照片名='1.jpg'"_s);
        item(u"meSZTP"_s)->trigger();
    });
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(screen->findChild<QListWidget*>(u"List1"_s)->count(), 0);
}

class UnsavedPhotoCheck : public MainWindow
{
protected:
    /// 检查图片 with an "x" typed as the student's 性别.
    UnsavedPhotoCheck()
    {
        window->start(path);
        item(u"meJCTP"_s)->trigger();
        screen = window->findChild<QDialog*>(u"FormXGXX"_s);
        auto* list = screen->findChild<QListWidget*>(u"List1"_s);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        auto* view = screen->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
        view->select(5, 1, 5, 1);
        QTest::keyClicks(view, u"x"_s);
    }

    QDialog* screen = nullptr;
};

TEST_F(UnsavedPhotoCheck, IsAskedAboutBeforeAnotherLibraryIsOpened)
{
    const QString other = test.file(u"另一个.CJK"_s);
    ASSERT_TRUE(QFile::copy(path, other));
    test.dialogs.file = other;
    for (const QString& opening : {u"mfOpen"_s, u"mfREC0"_s, u"mfNew"_s}) {
        test.dialogs.expect(u"还没有保存"_s, u"取消"_s);
        EXPECT_EQ(screenOpenedBy([&] { item(opening)->trigger(); }), QString());
        EXPECT_TRUE(screen->isVisible());
        EXPECT_EQ(test.scores.Conn.path(), path);
    }
    test.dialogs.expect(u"还没有保存"_s, u"保存"_s);
    item(u"mfOpen"_s)->trigger();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(test.scores.Conn.path(), other);
    item(u"mfREC1"_s)->trigger();
    EXPECT_EQ(test.rows(u"select 性别 from 信息表"_s), u"x"_s);
}

TEST_F(UnsavedPhotoCheck, IsAskedAboutBeforeTheProgramEnds)
{
    test.dialogs.expect(u"还没有保存"_s, u"取消"_s);
    window->close();
    EXPECT_TRUE(window->isVisible());
    test.dialogs.expect(u"还没有保存"_s, u"保存"_s);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(test.rows(u"select 性别 from 信息表"_s), u"x"_s);
}

TEST_F(MainWindow, TheWorkbenchOpensTheImportAndTheCustomDisplay)
{
    window->start(path);
    const auto pressing = [this](const QString& name) {
        return
            [this, name] { QTest::mouseClick(window->findChild<QWidget*>(name), Qt::LeftButton); };
    };
    EXPECT_EQ(screenOpenedBy(pressing(u"CommandDRKS"_s)), u"FormDaoRu"_s);
    EXPECT_EQ(screenOpenedBy(pressing(u"CommandZDYXS"_s)), u"FormZDYXS"_s);
}

TEST_F(MainWindow, TheGridGoesToAWorkbookOfItsOwn)
{
    window->start(path);
    gridView()->grid().setTextMatrix(0, 0, u"班级"_s);
    item(u"mMfgToXls"_s)->trigger();
    EXPECT_EQ(books().size(), 1u);
    // It was never saved, so that closing the program asks for it.
    test.dialogs.always(u"保存"_s, runtime::Answer::No);
    window->close();
}

TEST_F(MainWindow, DraggedColumnsKeepTheirWidths)
{
    startWithExam();
    press(u"CommandLLCJ"_s);
    gridView()->grid().setColWidth(2, 4321);
    Q_EMIT gridView()->columnDragged(2);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(gridView()->grid().ColWidth(2), 4321);
}

TEST_F(MainWindow, BrowsingShowsTheGridBesideThePanel)
{
    startWithExam();
    press(u"CommandLLCJ"_s);
    EXPECT_TRUE(gridView()->isVisible());
    EXPECT_TRUE(panel()->isVisible());
}

TEST_F(MainWindow, TheNoteOnARateStandsOverTheResultAndItsLinkRunsTheRate)
{
    startWithExam();
    auto* note = window->findChild<QLabel*>(u"LabelResultNote"_s);
    ASSERT_NE(note, nullptr);
    auto* items = window->findChild<QComboBox*>(u"Combo3"_s);
    items->setCurrentText(u"各科及格率"_s);
    EXPECT_FALSE(note->isVisible());
    press(u"CommandZXTJ"_s);
    EXPECT_TRUE(note->isVisible());
    EXPECT_LE(note->geometry().bottom(), gridView()->geometry().top());
    EXPECT_TRUE(note->accessibleName().contains(u"给出的是“各科优秀率”的表"_s));
    EXPECT_EQ(gridView()->grid().TextMatrix(0, 0), u"各科优秀率"_s);
    // What is chosen by now plays no part.
    items->setCurrentText(u"考试人数"_s);
    Q_EMIT note->linkActivated(u"0"_s);
    EXPECT_EQ(gridView()->grid().TextMatrix(0, 0), u"各科及格率"_s);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(MainWindow, TheNoteGoesWithItsResult)
{
    startWithExam();
    auto* note = window->findChild<QLabel*>(u"LabelResultNote"_s);
    window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(u"各科差生率"_s);
    press(u"CommandZXTJ"_s);
    EXPECT_TRUE(note->isVisible());
    press(u"CommandLLCJ"_s);
    EXPECT_FALSE(note->isVisible());
    press(u"CommandZXTJ"_s);
    EXPECT_TRUE(note->isVisible());
    test.scores.Conn.Close();
    window->start(QString());
    Q_EMIT test.scores.opened();
    EXPECT_FALSE(note->isVisible());
}

TEST_F(MainWindow, GridAndNoteGoWhenTheLibraryIsClosed)
{
    startWithExam();
    auto* note = window->findChild<QLabel*>(u"LabelResultNote"_s);
    window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(u"各科差生率"_s);
    press(u"CommandZXTJ"_s);
    EXPECT_TRUE(note->isVisible());
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    EXPECT_FALSE(note->isVisible());
    EXPECT_FALSE(gridView()->isVisible());
    // A link that was pressed before it went.
    auto* form = window->findChild<workbench::FormKaoShi*>();
    form->runStatistics({{u"期中"_s}, u"各科差生率"_s});
    EXPECT_FALSE(gridView()->isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(MainWindow, AfterAQueryThePanelStepsAsideIfAskedAndComesBackOnDemand)
{
    startWithExam();
    QTest::mouseClick(window->findChild<QWidget*>(u"CheckMin"_s), Qt::LeftButton, {}, QPoint(8, 8));
    auto* items = window->findChild<QComboBox*>(u"Combo3"_s);
    // No report belongs to this one.
    items->addItem(u"没有的项目"_s);
    const auto query = [this](const QString& command) {
        gridView()->hide();
        press(command);
        EXPECT_TRUE(gridView()->isVisible());
        EXPECT_FALSE(panel()->isVisible());
    };
    query(u"CommandLLCJ"_s);
    item(u"meLook"_s)->trigger();
    EXPECT_TRUE(panel()->isVisible());
    items->setCurrentText(u"考试人数"_s);
    query(u"CommandZXTJ"_s);
    item(u"mSHowInfo"_s)->trigger();
    EXPECT_TRUE(panel()->isVisible());
    items->setCurrentText(u"没有的项目"_s);
    query(u"CommandZXTJ"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(MainWindow, TheCustomDisplayComesUpForTheItemAndTheStreamOfTheWorkbench)
{
    startWithExam();
    window->findChild<QListWidget*>(u"ListXM"_s)->setCurrentRow(2);
    QTest::mouseClick(window->findChild<QWidget*>(u"OptionButton1_1"_s), Qt::LeftButton, {},
                      QPoint(8, 8));
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& screen) {
        EXPECT_EQ(screen.windowTitle(), u"自定义显示  T分"_s);
        EXPECT_EQ(screen.findChild<QComboBox*>(u"ComboKL"_s)->currentText(), u"理"_s);
        const grid::FlexGrid& items =
            screen.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s)->grid();
        EXPECT_EQ(items.TextMatrix(1, 0), u"班级"_s);
        EXPECT_EQ(items.TextMatrix(1, 1), u"√"_s);
        screen.close();
    });
    press(u"CommandZDYXS"_s);
    EXPECT_EQ(boxes.count, 1);
}

TEST_F(MainWindow, ColumnsAreAsWideAsTheProgramsFontAsks)
{
    const QFont before = QApplication::font();
    const auto restore = qScopeGuard([&before] { QApplication::setFont(before); });
    QFont large = before;
    large.setPointSize(20);
    window.reset();
    QApplication::setFont(large);
    window = std::make_unique<shell::AFormMain>(test.scores, screenDialogs);
    startWithExam();
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(gridView()->grid().TextMatrix(0, 2), u"姓名"_s);
    EXPECT_EQ(gridView()->grid().ColWidth(2), 4 * 20 * 24) << "four characters with their air";
}

} // namespace
