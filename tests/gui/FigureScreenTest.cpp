#include "workbench/ui/FigureScreen.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

#include "gui/MainWindowFixture.h"
#include "platform/grid/GridText.h"

namespace {

using namespace Qt::StringLiterals;

class FigureScreen : public testing::Test
{
protected:
    FigureScreen()
    {
        screen.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    static workbench::FigureList list()
    {
        workbench::FigureList made{{}, u"<b>期中</b>，理科"_s, {}, u"改过"_s, u"select 1"_s};
        const std::vector<QStringList> rows{{u"学号"_s, u"姓名"_s, u"语文"_s},
                                            {u"1"_s, u"甲"_s, u"100"_s},
                                            {u"2"_s, u"' or ''='"_s, u"20"_s},
                                            {u"10"_s, u"丙\n--"_s, u""_s}};
        made.grid.FixedCols = 0;
        made.grid.setRows(int(rows.size()));
        made.grid.setCols(3);
        for (int row = 0; row < made.grid.Rows(); ++row) {
            for (int col = 0; col < 3; ++col)
                made.grid.setTextMatrix(row, col, rows[size_t(row)][col]);
        }
        return made;
    }

    void press(const QString& name)
    {
        QTest::mouseClick(screen.findChild<QPushButton*>(name), Qt::LeftButton);
    }

    QLabel* text(const QString& name) { return screen.findChild<QLabel*>(name); }

    /// The first column below the heading.
    QString order() const
    {
        QStringList numbers;
        for (int row = 1; row < view->grid().Rows(); ++row)
            numbers.append(view->grid().TextMatrix(row, 0));
        return numbers.join(u',');
    }

    void clickHeading(int col)
    {
        const QModelIndex heading = view->model()->index(0, col);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(heading).center());
    }

    workbench::FigureScreen screen{list(), nullptr};
    grid::FlexGridView* view = screen.findChild<grid::FlexGridView*>(u"figureGrid"_s);
};

TEST_F(FigureScreen, ShowsTheSentenceTheListAndTheStatementThatIsFoldedAway)
{
    EXPECT_EQ(screen.windowTitle(), u"查看名单"_s);
    EXPECT_EQ(text(u"figureSentence"_s)->text(), u"<b>期中</b>，理科"_s);
    EXPECT_EQ(text(u"figureSentence"_s)->textFormat(), Qt::PlainText);
    EXPECT_FALSE(text(u"figureDetails"_s)->isVisible());
    EXPECT_TRUE(text(u"figureChange"_s)->isVisible());
    EXPECT_EQ(screen.focusWidget(), view);
    auto* sql = screen.findChild<QPlainTextEdit*>(u"figureSql"_s);
    EXPECT_FALSE(sql->isVisible());
    auto* shown = screen.findChild<QCheckBox*>(u"figureSqlShown"_s);
    shown->setFocus();
    QTest::keyClick(shown, Qt::Key_Space);
    EXPECT_TRUE(sql->isVisible());
    EXPECT_EQ(sql->toPlainText(), u"select 1"_s);
    EXPECT_TRUE(sql->isReadOnly());
}

TEST_F(FigureScreen, IsSortedByAHeadingAndByTheButton)
{
    clickHeading(2);
    EXPECT_EQ(order(), u"10,2,1"_s);
    clickHeading(2);
    EXPECT_EQ(order(), u"1,2,10"_s);
    view->select(1, 0, 1, 0);
    press(u"figureSort"_s);
    EXPECT_EQ(order(), u"1,2,10"_s);
    press(u"figureSort"_s);
    EXPECT_EQ(order(), u"10,2,1"_s);
    clickHeading(1);
    EXPECT_EQ(order(), u"2,10,1"_s);
}

TEST_F(FigureScreen, IsCopiedAsAWhole)
{
    press(u"figureCopy"_s);
    EXPECT_TRUE(
        QApplication::clipboard()->text().startsWith(u"学号\t姓名\t语文\r\n1\t甲\t100\r\n"_s));
}

TEST_F(FigureScreen, AsksForItsExport)
{
    QString exported;
    QObject::connect(&screen, &workbench::FigureScreen::exportRequested, &screen,
                     [&](const grid::FlexGrid& grid) { exported = grid::gridText(grid); });
    press(u"figureExport"_s);
    EXPECT_TRUE(exported.startsWith(u"学号\t姓名\t语文\n"_s));
}

TEST_F(FigureScreen, ClosesByEscAndByItsButton)
{
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_TRUE(screen.isVisible());
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_FALSE(screen.isVisible());
    screen.show();
    press(u"figureClose"_s);
    EXPECT_FALSE(screen.isVisible());
}

/// The main window over an exam of one class: 甲 90, 乙 absent.
class FiguresOfTheMainGrid : public support::MainWindowFixture
{
protected:
    FiguresOfTheMainGrid()
    {
        window->start(path);
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        test.addScores(u"期中"_s, 1, 2, {{u"语文"_s, -1}});
        test.reload();
        test.scores.notifyChanged();
        window->findChild<QListWidget*>(u"ListKSMC"_s)->item(0)->setSelected(true);
    }

    void run(const QString& report)
    {
        auto* box = window->findChild<QComboBox*>(u"Combo3"_s);
        box->setCurrentIndex(box->findText(report));
        press(u"CommandZXTJ"_s);
        EXPECT_TRUE(gridView()->isVisible());
    }

    QPoint placeOf(int row, int col)
    {
        return gridView()->visualRect(gridView()->model()->index(row, col)).center();
    }

    void doubleClick(int row, int col)
    {
        // What arrives at a widget: a click, and a second press with its release.
        QWidget* cells = gridView()->viewport();
        QTest::mouseClick(cells, Qt::LeftButton, {}, placeOf(row, col));
        QTest::mouseDClick(cells, Qt::LeftButton, {}, placeOf(row, col));
        QTest::mouseRelease(cells, Qt::LeftButton, {}, placeOf(row, col));
    }

    /// The sentence of the list that the action opens; "" for none.
    static QString sentenceOf(const std::function<void()>& action)
    {
        QString sentence;
        QTimer look;
        look.setSingleShot(true);
        QObject::connect(&look, &QTimer::timeout, &look, [&sentence] {
            QWidget* screen = QApplication::activeModalWidget();
            if (!screen)
                return;
            if (const auto* label = screen->findChild<QLabel*>(u"figureSentence"_s))
                sentence = label->text();
            QTest::keyClick(screen, Qt::Key_Escape);
        });
        look.start(0);
        action();
        QTest::qWait(0);
        return sentence;
    }

    QAction* listing() { return item(u"figureStudents"_s); }

    const QString rate =
        u"期中，理科，1 班：语文不低于 85 分、不高于 100 分的学生，共 1 人（全班 2 人的 50%）。"_s;
};

TEST_F(FiguresOfTheMainGrid, OpenTheirListByADoubleClick)
{
    run(u"各科优秀率"_s);
    EXPECT_EQ(sentenceOf([&] { doubleClick(3, 1); }), rate);
    EXPECT_EQ(sentenceOf([&] { doubleClick(3, 2); }), rate);
    for (const auto& [row, col] : {std::pair{0, 1}, {2, 1}, {3, 0}})
        EXPECT_EQ(sentenceOf([&, r = row, c = col] { doubleClick(r, c); }), QString());
}

TEST_F(FiguresOfTheMainGrid, OpenTheirListByEnter)
{
    run(u"考试人数"_s);
    gridView()->setFocus();
    gridView()->select(2, 1, 2, 1);
    const QString all = u"期中，理科，1 班：语文参试 1 人，缺考 1 人，总计 2 人。"_s;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        EXPECT_EQ(sentenceOf([&] { QTest::keyClick(gridView(), key); }), all);
    EXPECT_EQ(sentenceOf([&] { QTest::keyClick(gridView(), Qt::Key_Return, Qt::AltModifier); }),
              QString());
    gridView()->select(1, 1, 1, 1);
    EXPECT_EQ(sentenceOf([&] { QTest::keyClick(gridView(), Qt::Key_Return); }), QString());
}

TEST_F(FiguresOfTheMainGrid, OpenTheirListFromBothMenus)
{
    EXPECT_FALSE(listing()->isEnabled());
    run(u"各科优秀率"_s);
    gridView()->select(3, 1, 3, 1);
    EXPECT_TRUE(listing()->isEnabled());
    EXPECT_EQ(sentenceOf([&] { listing()->trigger(); }), rate);
    gridView()->select(2, 1, 2, 1);
    EXPECT_FALSE(listing()->isEnabled());
    // The menu of the grid is about the cell below the pointer.
    const QPoint place = placeOf(3, 2);
    QWidget* cells = gridView()->viewport();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, cells->mapToGlobal(place));
    QApplication::sendEvent(cells, &asked);
    auto* menu = window->findChild<QMenu*>(u"mTC"_s);
    ASSERT_TRUE(menu->isVisible());
    EXPECT_TRUE(listing()->isEnabled());
    EXPECT_EQ(sentenceOf([&] {
                  QTest::mouseClick(menu, Qt::LeftButton, {},
                                    menu->actionGeometry(listing()).center());
              }),
              rate);
}

TEST_F(FiguresOfTheMainGrid, OpenTheirListFromTheMenuThatItsKeyOpensOnTheCurrentCell)
{
    run(u"各科优秀率"_s);
    gridView()->select(3, 1, 3, 1);
    QWidget* cells = gridView()->viewport();
    const QPoint middle = cells->rect().center();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, middle, cells->mapToGlobal(middle));
    QApplication::sendEvent(cells, &asked);
    auto* menu = window->findChild<QMenu*>(u"mTC"_s);
    ASSERT_TRUE(menu->isVisible());
    EXPECT_TRUE(gridView()
                    ->visualRect(gridView()->currentIndex())
                    .contains(cells->mapFromGlobal(menu->pos())));
    menu->setActiveAction(listing());
    EXPECT_EQ(sentenceOf([&] { QTest::keyClick(menu, Qt::Key_Return); }), rate);
}

TEST_F(FiguresOfTheMainGrid, AreNoneOfABrowsedTableAndOfALibraryThatWasClosed)
{
    run(u"各科优秀率"_s);
    press(u"CommandLLCJ"_s);
    gridView()->select(1, 1, 1, 1);
    EXPECT_FALSE(listing()->isEnabled());
    EXPECT_EQ(sentenceOf([&] { doubleClick(1, 4); }), QString());
    run(u"各科优秀率"_s);
    gridView()->select(3, 1, 3, 1);
    EXPECT_TRUE(listing()->isEnabled());
    test.scores.Conn.Close();
    test.scores.notifyChanged();
    EXPECT_FALSE(listing()->isEnabled());
}

TEST_F(FiguresOfTheMainGrid, OfWhichAColumnIsGoneAreToldOnce)
{
    run(u"各科优秀率"_s);
    test.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    doubleClick(3, 1);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown.first().startsWith(u"名单没有列出来："_s))
        << test.dialogs.shown.first().toStdString();
}

} // namespace
