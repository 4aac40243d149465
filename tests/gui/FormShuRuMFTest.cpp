#include "import/ui/FormShuRuMF.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "platform/grid/GridText.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;

class FullMarksScreen : public testing::Test
{
protected:
    FullMarksScreen() { QDir(folder.path()).mkpath(u"data"_s); }

    void open(const QStringList& subjects, const QString& defaults = {})
    {
        if (!defaults.isEmpty())
            runtime::writeTextFile(paths.dataFile(u"满分.txt"_s), defaults);
        for (const QString& subject : subjects)
            state.KMImport.push_back({subject, 0, 4});
        form =
            std::make_unique<importing::FormShuRuMF>(state, paths, u"理科：期中&期末"_s, nullptr);
        form->show();
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
        view = form->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
        box = form->findChild<grid::CellTextEditor*>(u"Text1"_s);
    }

    QString mark(int row) const { return view->grid().TextMatrix(row, 1); }
    QRect cell(int row, int col) { return view->visualRect(view->model()->index(row, col)); }

    void click(int row, int col)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell(row, col).center());
    }

    void type(int row, const QString& text)
    {
        click(row, 1);
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    void press(const QString& name)
    {
        QTest::mouseClick(form->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    QString storedDefaults() const
    {
        QFile file(paths.dataFile(u"满分.txt"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir folder;
    runtime::AppPaths paths{folder.path()};
    support::ScriptedDialogs dialogs;
    importing::ImportState state;
    std::unique_ptr<importing::FormShuRuMF> form;
    grid::FlexGridView* view = nullptr;
    grid::CellTextEditor* box = nullptr;
};

TEST_F(FullMarksScreen, ShowsTheSubjectsWithTheirDefaultsAndNoEditor)
{
    open({u"语文"_s, u"数学"_s}, u"数学=150\n"_s);
    EXPECT_EQ(form->windowTitle(), u"输入各科满分"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label1"_s)->text(), u"理科：期中&期末"_s);
    EXPECT_EQ(grid::gridText(view->grid()).trimmed(), u"科目\t满分\n语文\t\n数学\t150"_s);
    EXPECT_EQ(view->grid().RowHeight(1), 300);
    EXPECT_EQ(view->grid().ColAlignment(1), 1);
    EXPECT_FALSE(box->isVisible());
}

TEST_F(FullMarksScreen, MissingDefaultsFileLeavesAllMarksEmpty)
{
    open({u"语文"_s, u"数学"_s});
    EXPECT_EQ(mark(1) + mark(2), u""_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(FullMarksScreen, AClickAnywhereOnARowEditsItsMark)
{
    open({u"语文"_s, u"数学"_s}, u"数学=150\n"_s);
    click(2, 0);
    EXPECT_EQ(box->geometry(), cell(2, 1));
    EXPECT_EQ(box->text(), u"150"_s);
    EXPECT_TRUE(box->hasFocus());
    QTest::keyClicks(box, u".5"_s);
    EXPECT_EQ(mark(2), u"150.5"_s) << "stored while typing, behind what stands there";
}

TEST_F(FullMarksScreen, AClickOnTheHeadingsOpensNoEditorAndLeavesThemAlone)
{
    open({u"语文"_s});
    click(0, 1);
    EXPECT_FALSE(box->isVisible());
    click(1, 1);
    click(0, 1);
    EXPECT_FALSE(box->isVisible());
    QTest::keyClicks(view, u"7"_s);
    EXPECT_EQ(view->grid().TextMatrix(0, 1), u"满分"_s);
    EXPECT_EQ(mark(1), u"7"_s);
}

TEST_F(FullMarksScreen, EnterWalksDownAndTheLastOneAccepts)
{
    open({u"语文"_s, u"数学"_s});
    type(1, u"120.5"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(box->geometry(), cell(2, 1));
    QTest::keyClicks(box, u"150"_s);
    QTest::keyClick(box, Qt::Key_Enter);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[0].KMFull, 120.5F);
    EXPECT_EQ(state.KMImport[1].KMFull, 150.0F);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(FullMarksScreen, WithOneSubjectTheFirstEnterEndsTheForm)
{
    open({u"语文"_s}, u"语文=120\n"_s);
    click(1, 1);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[0].KMFull, 120.0F);
}

TEST_F(FullMarksScreen, ClosedWithOpenRowsItAsksAndReturnsOrGoesOn)
{
    open({u"语文"_s, u"数学"_s, u"英语"_s}, u"数学=150\n"_s);
    press(u"Command1"_s);
    dialogs.shown.clear();
    dialogs.expect(u"没有确定满分"_s, u"返回"_s);
    form->close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(dialogs.shown,
              QStringList{u"还有 2 个科目没有确定满分（语文、英语）。\n\n现在关闭，这些科目的满分"
                          "就是 0：大于 0 的成绩都会判为超过总分，考试里也没有这些满分。"_s});
    dialogs.expect(u"没有确定满分"_s, u"继续"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[0].KMFull, 0.0F);
    EXPECT_EQ(state.KMImport[1].KMFull, 150.0F);
}

TEST_F(FullMarksScreen, EnterOnTheLastRowTellsOfBadMarksAndEditsTheLastOfThem)
{
    open({u"语文"_s, u"数学"_s, u"英语"_s}, u"语文=0\n数学=-3\n英语=100\n"_s);
    click(3, 1);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"0成绩未设置正确的成绩！"_s, u"-3成绩未设置正确的成绩！"_s}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(box->geometry(), cell(2, 1));
    EXPECT_EQ(state.KMImport[2].KMFull, 100.0F) << "good marks are stored beside bad ones";
}

TEST_F(FullMarksScreen, EnterOnTheLastRowIsRefusedUntilItsMarkIsAboveZero)
{
    open({u"语文"_s, u"数学"_s}, u"语文=120\n"_s);
    click(1, 1);
    for (const QString& text : {u""_s, u""_s, u"-5"_s}) {
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(box->geometry(), cell(2, 1));
    }
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"成绩未设置正确的成绩！"_s, u"-5成绩未设置正确的成绩！"_s}));
    box->selectAll();
    QTest::keyClicks(box, u"150"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[1].KMFull, 150.0F);
}

TEST_F(FullMarksScreen, TheButtonTellsOfEachBadMarkAndStays)
{
    open({u"语文"_s, u"数学"_s, u"英语"_s}, u"数学=abc\n"_s);
    type(1, u"100"_s);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"abc成绩未设置正确的成绩！"_s, u"成绩未设置正确的成绩！"_s}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(dialogs.look(u"成绩未设置正确的成绩"_s),
              (support::BoxLook{{}, runtime::Buttons::Ok, runtime::Icon::Warning}));
    EXPECT_EQ(box->geometry(), cell(3, 1));
    type(2, u"150"_s);
    type(3, u"0.5"_s);
    press(u"Command1"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[2].KMFull, 0.5F);
}

TEST_F(FullMarksScreen, ASubjectAtTheTailOfAnotherTakesThatLineAndIsRefused)
{
    open({u"文"_s}, u"文=80\n语文=120\n"_s);
    EXPECT_EQ(mark(1), u"=120"_s);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"=120成绩未设置正确的成绩！"_s});
}

TEST_F(FullMarksScreen, StoringDefaultsKeepsOnlyTheseSubjectsAndStays)
{
    open({u"语文"_s, u"体育"_s}, u"语文=100\n数学=150\n"_s);
    type(1, u"120"_s);
    press(u"Command2"_s);
    EXPECT_EQ(storedDefaults(), u"语文=120\n体育=\n"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(state.KMImport[0].KMFull, 0.0F);
}

TEST_F(FullMarksScreen, TheCloseBoxAcceptsNothing)
{
    open({u"语文"_s}, u"语文=120\n"_s);
    support::ModalBoxes boxes;
    form->hide();
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(window.objectName(), u"FormShuRuMF"_s);
        window.close();
    });
    dialogs.expect(u"没有确定满分"_s, u"继续"_s);
    form->exec();
    EXPECT_EQ(state.KMImport[0].KMFull, 0.0F);
    EXPECT_EQ(dialogs.shown.size(), 1);
}

TEST_F(FullMarksScreen, EscPutsTheFormerMarkBackAndClosesNothing)
{
    open({u"语文"_s}, u"语文=120\n"_s);
    type(1, u"9"_s);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(box->isVisible());
    EXPECT_EQ(mark(1), u"120"_s);
    EXPECT_TRUE(view->hasFocus());
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FullMarksScreen, ArrowsGoToTheNeighbouringMarksAndStopAtTheEnds)
{
    open({u"语文"_s, u"数学"_s}, u"语文=1\n数学=2\n"_s);
    click(1, 1);
    for (const auto& [key, text] :
         {std::pair(Qt::Key_Up, u"1"_s), std::pair(Qt::Key_Down, u"2"_s),
          std::pair(Qt::Key_Down, u"2"_s), std::pair(Qt::Key_Up, u"1"_s)}) {
        QTest::keyClick(box, key);
        EXPECT_EQ(box->text(), text);
        EXPECT_TRUE(box->isVisible());
    }
    EXPECT_EQ(mark(1) + mark(2), u"12"_s);
}

TEST_F(FullMarksScreen, TheKeyboardAloneIsEnough)
{
    open({u"语文"_s, u"数学"_s}, u"语文=100\n"_s);
    EXPECT_TRUE(view->hasFocus());
    QTest::keyClicks(view, u"9"_s);
    EXPECT_EQ(mark(1), u"9"_s) << "a character takes the mark's place";
    QTest::keyClicks(box, u"0"_s);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_FALSE(box->isVisible());
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_F2);
    QTest::keyClicks(box, u"80"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(state.KMImport[0].KMFull, 90.0F);
    EXPECT_EQ(state.KMImport[1].KMFull, 80.0F);
}

TEST_F(FullMarksScreen, CopiesTheSelectedCells)
{
    open({u"语文"_s}, u"语文=100\n"_s);
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().trimmed().remove(u'\r'),
              u"科目\t满分\n语文\t100"_s);
}

} // namespace
