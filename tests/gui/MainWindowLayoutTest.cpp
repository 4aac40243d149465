#include <QCheckBox>
#include <QListWidget>

#include "gui/MainWindowFixture.h"
#include "gui/PaintedTexts.h"

namespace {

using namespace Qt::StringLiterals;

/// How the main window looks at the next start.
class MainWindowLayout : public support::MainWindowFixture
{
protected:
    MainWindowLayout()
    {
        startWithExam();
        QApplication::processEvents();
    }

    /// The next start, with that command line. The window before was left without being closed.
    void startAgain(const QString& commandLine)
    {
        QApplication::processEvents();
        window.reset();
        test.scores.Conn.Close();
        test.scores.LibPath.clear();
        window = std::make_unique<shell::AFormMain>(test.scores, screenDialogs);
        window->start(commandLine);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        QApplication::processEvents();
    }

    void queryAndStepAside()
    {
        window->findChild<QCheckBox*>(u"CheckMin"_s)->setChecked(true);
        press(u"CommandLLCJ"_s);
        EXPECT_FALSE(panel()->isVisible());
    }
};

TEST_F(MainWindowLayout, TheWindowComesBackWhereItWasMoved)
{
    window->resize(700, 500);
    window->move(37, 45);
    startAgain(path);
    EXPECT_EQ(window->pos(), QPoint(37, 45));
    EXPECT_EQ(window->size(), QSize(700, 500));
}

TEST_F(MainWindowLayout, ThePanelComesBackAsWideAsItWasDragged)
{
    const int before = panel()->width();
    window->resizeDocks({panel()}, {before + 60}, Qt::Horizontal);
    QApplication::processEvents();
    const int width = panel()->width();
    ASSERT_NE(width, before);
    startAgain(path);
    EXPECT_EQ(panel()->width(), width);
}

TEST_F(MainWindowLayout, ThePanelComesBackAtTheEdgeItWasPutTo)
{
    window->addDockWidget(Qt::BottomDockWidgetArea, panel());
    startAgain(path);
    EXPECT_EQ(window->dockWidgetArea(panel()), Qt::BottomDockWidgetArea);
}

TEST_F(MainWindowLayout, AFloatingPanelComesBackWhereItWasMoved)
{
    panel()->setFloating(true);
    panel()->move(60, 20);
    const QSize size = panel()->size() + QSize(40, 0);
    panel()->resize(size);
    startAgain(path);
    EXPECT_TRUE(panel()->isFloating());
    EXPECT_EQ(panel()->pos(), QPoint(60, 20));
    EXPECT_EQ(panel()->size(), size);
}

TEST_F(MainWindowLayout, APanelClosedByTheUserStaysClosedWithALibrary)
{
    panel()->close();
    startAgain(path);
    EXPECT_FALSE(panel()->isVisible());
    item(u"meLook"_s)->trigger();
    startAgain(path);
    EXPECT_TRUE(panel()->isVisible());
}

TEST_F(MainWindowLayout, WithoutALibraryThePanelIsAlwaysThere)
{
    panel()->close();
    startAgain(u""_s);
    EXPECT_TRUE(panel()->isVisible());
    panel()->close();
    startAgain(test.file(u"没有.CJK"_s));
    EXPECT_TRUE(panel()->isVisible());
}

TEST_F(MainWindowLayout, APanelThatSteppedAsideForAQueryIsThereAgain)
{
    queryAndStepAside();
    window->resize(window->size() - QSize(20, 20));
    const QSize size = window->size();
    startAgain(path);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(window->size(), size) << "the rest of the layout is kept";
}

TEST_F(MainWindowLayout, APanelThatWasBroughtBackAndClosedStaysClosed)
{
    queryAndStepAside();
    item(u"meLook"_s)->trigger();
    panel()->close();
    startAgain(path);
    EXPECT_FALSE(panel()->isVisible());
}

/// The menu of the right button over the window's edges brings the panel back too.
TEST_F(MainWindowLayout, APanelThatWasBroughtBackByItsOwnSwitchAndClosedStaysClosed)
{
    queryAndStepAside();
    panel()->toggleViewAction()->trigger();
    panel()->close();
    startAgain(path);
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(MainWindowLayout, DraggedColumnsHaveTheirWidthsAtTheNextStart)
{
    press(u"CommandLLCJ"_s);
    gridView()->grid().setColWidth(2, 4321);
    Q_EMIT gridView()->columnDragged(2);
    startAgain(path);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(gridView()->grid().ColWidth(2), 4321);
    EXPECT_NE(gridView()->grid().ColWidth(1), 4321);
}

/// Its name stands on the panel while it is computed.
TEST_F(MainWindowLayout, AnExamWithALongNameDoesNotWidenThePanel)
{
    const QString exam(50, u'长');
    test.addExam(exam, u"理"_s, 2, {{u"语文"_s, 100}});
    test.addScores(exam, 1, 1, {{u"语文"_s, 50}});
    test.reload();
    test.scores.notifyChanged();
    QApplication::processEvents();
    const int before = panel()->width();
    auto* exams = window->findChild<QListWidget*>(u"ListKSMC"_s);
    exams->clearSelection();
    exams->item(1)->setSelected(true);
    const support::PaintedTexts painted(window->findChild<QLabel*>(u"LabelXX"_s));
    press(u"CommandJSZF"_s);
    QApplication::processEvents();
    EXPECT_FALSE(painted.texts.filter(exam).isEmpty());
    EXPECT_EQ(panel()->width(), before);
    startAgain(path);
    EXPECT_EQ(panel()->width(), before);
}

TEST_F(MainWindowLayout, ClosingTheWindowKeepsWhatWasChangedAMomentBefore)
{
    window->resize(720, 510);
    ASSERT_TRUE(window->close());
    startAgain(path);
    EXPECT_EQ(window->size(), QSize(720, 510));
}

} // namespace
