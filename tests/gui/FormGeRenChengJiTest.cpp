#include "individual/ui/FormGeRenChengJi.h"

#include <QCheckBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QToolTip>

#include "gui/IndividualFixture.h"
#include "individual/ui/ColorSwatch.h"
#include "individual/ui/SplitterBar.h"
#include "support/OtherProgram.h"

namespace {

class IndividualAnalysis : public support::IndividualFixture
{
protected:
    IndividualAnalysis() { open(); }
};

TEST_F(IndividualAnalysis, ComesUpWithTheFirstColumnTickedAndNoStudent)
{
    EXPECT_EQ(form->windowTitle(), u"学生成绩分析"_s);
    EXPECT_TRUE(find<QRadioButton>(u"Option1"_s)->isChecked());
    EXPECT_FALSE(find<QRadioButton>(u"Option2"_s)->isChecked());
    EXPECT_EQ(find<QCheckBox>(u"CheckBox1_1"_s)->text(), u"语文"_s);
    EXPECT_TRUE(find<QCheckBox>(u"CheckBox1_1"_s)->isChecked());
    EXPECT_FALSE(find<QCheckBox>(u"CheckBox1_2"_s)->isChecked());
    EXPECT_EQ(form->findChild<QCheckBox*>(u"CheckBox1_3"_s), nullptr);
    EXPECT_EQ(view->grid().Rows(), 4);
    EXPECT_EQ(cell(0, 0), u"考试名称"_s);
    EXPECT_EQ(cell(0, 3), u"语名"_s);
    EXPECT_EQ(cell(1, 0), u""_s);
    EXPECT_FALSE(photo->isVisible());
    EXPECT_TRUE(exams().isEmpty());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(IndividualAnalysis, ShowsAStudentInTitleGridChartAndPhoto)
{
    clickNode(0, 0);
    EXPECT_EQ(form->windowTitle(), u"个人分析   -  王芳 1 班 1 号 ，理"_s);
    EXPECT_EQ(view->grid().Rows(), 4);
    EXPECT_EQ(cell(1, 0), u"高一期中"_s);
    EXPECT_EQ(cell(2, 1), u"缺考"_s);
    EXPECT_EQ(cell(3, 1), u"70.5"_s);
    EXPECT_EQ(cell(3, 3), u"3"_s);
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"王芳"_s);
    EXPECT_EQ(exams(), (QStringList{u"高一\n期中"_s, u"高一\n期末"_s, u"月考"_s}));
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s}));
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共3人"_s);
    EXPECT_TRUE(photo->isVisible());
    EXPECT_EQ(photo->windowTitle(), u"王芳"_s);
    EXPECT_TRUE(form->isActiveWindow());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(IndividualAnalysis, TheRankStandsOverItsPointAndTellsItsColumn)
{
    clickNode(0, 0);
    const QLabel* rank = label(u"LabelMinCi_1"_s);
    EXPECT_EQ(rank->toolTip(), u"语文年级名次: 2"_s);
    const int margin = view->pixels(500);
    const double slot = (chart->width() - 2 * margin) / 3.0;
    EXPECT_NEAR(rank->geometry().center().x(), margin + slot / 2, 2);
    const double y = margin + 2.0 / 3 * (chart->height() - 2 * margin);
    EXPECT_NEAR(rank->geometry().bottom(), y - view->pixels(100), 3);
    const auto* swatch = find<individual::ColorSwatch>(u"Command1_1"_s);
    const QColor color = rank->palette().color(rank->foregroundRole());
    EXPECT_EQ(color, QColor(swatch->color() & 0xff, swatch->color() >> 8 & 0xff,
                            swatch->color() >> 16 & 0xff));
    EXPECT_NEAR(label(u"LabelStuName"_s)->geometry().center().x(), chart->width() / 2, 2);
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->pos(), QPoint(view->pixels(60), view->pixels(60)));
}

TEST_F(IndividualAnalysis, AClassNodeChangesNothing)
{
    clickNode(0, 0);
    const QString title = form->windowTitle();
    clickNode(1);
    EXPECT_EQ(form->windowTitle(), title);
    EXPECT_EQ(cell(1, 0), u"高一期中"_s);
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"王芳"_s);
}

TEST_F(IndividualAnalysis, TheArrowsShowEachStudentAtOnce)
{
    clickNode(0, 0);
    QTest::keyPress(tree, Qt::Key_Down);
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"陈静"_s);
    EXPECT_EQ(view->grid().Rows(), 2);
    QTest::keyRelease(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Up);
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"王芳"_s);
}

TEST_F(IndividualAnalysis, AStudentIsFoundByTheFirstLettersOfThePinyin)
{
    auto* line = find<QLineEdit>(u"TextFind"_s);
    line->setFocus();
    QTest::keyClicks(line, u"cj"_s);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(form->windowTitle(), u"个人分析   -  陈静 1 班 2 号 ，理"_s);
    EXPECT_TRUE(line->hasFocus());
}

TEST_F(IndividualAnalysis, LabelsOfExamsStayAfterAStudentWithMoreAndRanksGo)
{
    clickNode(0, 0);
    clickNode(0, 1);
    EXPECT_EQ(exams(), (QStringList{u"高一\n期中"_s, u"高一\n期末"_s, u"月考"_s}));
    EXPECT_EQ(ranks(), QStringList{u"3"_s});
    const int margin = view->pixels(500);
    EXPECT_NEAR(label(u"LabelKSMC_1"_s)->geometry().center().x(), chart->width() / 2, 2)
        << "one exam stands in the middle";
    EXPECT_GT(label(u"LabelKSMC_3"_s)->geometry().center().x(), chart->width() / 2 + margin);
}

TEST_F(IndividualAnalysis, TheClassRanksHaveTheirLabelsScaleAndHeadCount)
{
    clickNode(0, 0);
    press(u"Option2"_s);
    EXPECT_EQ(ranks(), (QStringList{u"1"_s, u"2"_s}));
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->toolTip(), u"语文班级名次: 1"_s);
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共2人"_s);
    press(u"Option1"_s);
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s}));
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共3人"_s);
}

TEST_F(IndividualAnalysis, EachTickedColumnHasItsRanksAndNoneLeavesTheNote)
{
    clickNode(0, 0);
    press(u"CheckBox1_2"_s);
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s, u"1"_s, u"1"_s, u"1"_s}));
    press(u"CheckBox1_1"_s);
    EXPECT_EQ(ranks(), (QStringList{u"1"_s, u"1"_s, u"1"_s}));
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->toolTip(), u"数学年级名次: 1"_s);
    press(u"CheckBox1_2"_s);
    EXPECT_TRUE(ranks().isEmpty());
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共3人"_s);
    EXPECT_EQ(exams().size(), 3);
}

TEST_F(IndividualAnalysis, ATickIsSetByKeyboardToo)
{
    clickNode(0, 0);
    QTest::keyClick(find<QCheckBox>(u"CheckBox1_2"_s), Qt::Key_Space);
    EXPECT_EQ(ranks().size(), 5);
    auto* Option1 = find<QRadioButton>(u"Option1"_s);
    Option1->setFocus();
    QTest::keyClick(Option1, Qt::Key_Right);
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共2人"_s);
}

TEST_F(IndividualAnalysis, WithoutAStudentAnEmptyChartIsDrawn)
{
    press(u"CheckBox1_2"_s);
    EXPECT_TRUE(ranks().isEmpty());
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u""_s);
    EXPECT_EQ(label(u"LabelKSMC_0"_s)->text(), u"共0人"_s);
}

TEST_F(IndividualAnalysis, AChosenColourIsShownAndKeptAtOnce)
{
    clickNode(0, 0);
    auto* swatch = find<individual::ColorSwatch>(u"Command1_1"_s);
    const int before = swatch->color();
    test.dialogs.color = 0x112233;
    press(u"Command1_1"_s, Qt::RightButton);
    EXPECT_EQ(test.dialogs.startColors, QList<int>{before});
    EXPECT_EQ(swatch->color(), 0x112233);
    const QLabel* rank = label(u"LabelMinCi_1"_s);
    EXPECT_EQ(rank->palette().color(rank->foregroundRole()), QColor(0x33, 0x22, 0x11));
    EXPECT_EQ(test.rows(u"select 颜色 from 颜色表 where ID=1"_s), u"1122867"_s);
    open();
    EXPECT_EQ(find<individual::ColorSwatch>(u"Command1_1"_s)->color(), 0x112233);
}

TEST_F(IndividualAnalysis, ACancelledColourStaysAndTheChartIsDrawnAnew)
{
    clickNode(0, 0);
    auto* swatch = find<individual::ColorSwatch>(u"Command1_1"_s);
    const int before = swatch->color();
    const QPoint place = label(u"LabelMinCi_1"_s)->pos();
    label(u"LabelMinCi_1"_s)->move(0, 0);
    QTest::keyClick(swatch, Qt::Key_Space);
    EXPECT_EQ(swatch->color(), before);
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->pos(), place);
}

TEST_F(IndividualAnalysis, ADraggedLabelStaysUntilTheNextChart)
{
    clickNode(0, 0);
    for (const QString& name : {u"LabelMinCi_1"_s, u"LabelStuName"_s}) {
        QLabel* one = label(name);
        const QPoint place = one->pos();
        drag(one, QPoint(2, 3), QPoint(42, 23));
        EXPECT_EQ(one->pos(), place + QPoint(40, 20));
        QApplication::processEvents();
        EXPECT_EQ(one->pos(), place + QPoint(40, 20));
        clickNode(0, 0);
        EXPECT_EQ(one->pos(), place);
    }
}

TEST_F(IndividualAnalysis, ALabelDroppedOutsideTheChartGoesBack)
{
    clickNode(0, 0);
    QLabel* one = label(u"LabelMinCi_1"_s);
    const QPoint place = one->pos();
    drag(one, QPoint(2, 3), QPoint(2, -chart->height() - 50));
    EXPECT_EQ(one->pos(), place);
}

TEST_F(IndividualAnalysis, ALabelOfAnExamAndTheNoteAreNotDragged)
{
    clickNode(0, 0);
    for (const QString& name : {u"LabelKSMC_0"_s, u"LabelKSMC_1"_s}) {
        const QPoint place = label(name)->pos();
        drag(label(name), QPoint(2, 3), QPoint(42, -20));
        EXPECT_EQ(label(name)->pos(), place);
    }
}

TEST_F(IndividualAnalysis, OnlyTheHeadingsHaveATip)
{
    clickNode(0, 0);
    const auto tipAt = [&](int row, int col) {
        const QPoint place = view->visualRect(view->model()->index(row, col)).center();
        QHelpEvent event(QEvent::ToolTip, place, view->viewport()->mapToGlobal(place));
        QApplication::sendEvent(view->viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tipAt(1, 0), u""_s);
    EXPECT_EQ(tipAt(2, 1), u""_s);
    EXPECT_EQ(tipAt(0, 1), u"语文"_s);
    view->grid().setTextMatrix(0, 1, {});
    EXPECT_EQ(tipAt(0, 1), u"此科未考试！"_s);
}

TEST_F(IndividualAnalysis, ANewSizeOfTheWindowDrawsTheChartAnew)
{
    clickNode(0, 0);
    const int before = label(u"LabelStuName"_s)->x();
    form->resize(form->size() + QSize(100, 0));
    EXPECT_NEAR(label(u"LabelStuName"_s)->x(), before + 50, 2);
}

TEST_F(IndividualAnalysis, TheSplitterMovesByMouseAndDrawsWhenItIsLetGo)
{
    clickNode(0, 0);
    auto* bar = find<individual::SplitterBar>(u"PictureW"_s);
    const int top = bar->y();
    const int chartBottom = chart->geometry().bottom();
    const int rank = label(u"LabelMinCi_1"_s)->y();
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(5, 2));
    moveMouse(bar, QPoint(5, -38));
    EXPECT_EQ(bar->y(), top - 40);
    EXPECT_EQ(view->height(), top - 40);
    EXPECT_EQ(chart->y(), bar->geometry().bottom() + 1);
    EXPECT_EQ(chart->geometry().bottom(), chartBottom);
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->y(), rank) << "not drawn while it moves";
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(5, 2));
    EXPECT_GT(label(u"LabelMinCi_1"_s)->y(), rank);
    moveMouse(bar, QPoint(5, 80));
    EXPECT_EQ(bar->y(), top - 40);
}

TEST_F(IndividualAnalysis, TheSplitterSnapsToTheTopAndStaysInTheWindow)
{
    clickNode(0, 0);
    auto* bar = find<individual::SplitterBar>(u"PictureW"_s);
    drag(bar, QPoint(5, 2), QPoint(5, -2000));
    EXPECT_EQ(bar->y(), view->pixels(30));
    EXPECT_EQ(view->height(), view->pixels(30));
    drag(bar, QPoint(5, 2), QPoint(5, 4000));
    EXPECT_EQ(chart->height(), 0);
    EXPECT_EQ(bar->geometry().bottom(), bar->parentWidget()->rect().bottom());
    drag(bar, QPoint(5, 2), QPoint(5, -98));
    EXPECT_EQ(chart->height(), 100);
}

TEST_F(IndividualAnalysis, TheSplitterMovesByKeyboard)
{
    clickNode(0, 0);
    auto* bar = find<individual::SplitterBar>(u"PictureW"_s);
    const int top = bar->y();
    const int name = label(u"LabelMinCi_1"_s)->y();
    bar->setFocus();
    QTest::keyPress(bar, Qt::Key_Up);
    EXPECT_EQ(bar->y(), top - bar->fontMetrics().height());
    EXPECT_EQ(label(u"LabelMinCi_1"_s)->y(), name);
    QTest::keyRelease(bar, Qt::Key_Up);
    EXPECT_NE(label(u"LabelMinCi_1"_s)->y(), name);
    QTest::keyClick(bar, Qt::Key_Down);
    EXPECT_EQ(bar->y(), top);
}

TEST_F(IndividualAnalysis, ThePhotoHidesNothingOfAWindowThatNobodyPlaced)
{
    clickNode(0, 0);
    ASSERT_TRUE(photo->isVisible());
    EXPECT_FALSE(form->frameGeometry().intersects(photo->frameGeometry()));
    EXPECT_TRUE(form->screen()->availableGeometry().contains(form->geometry()));
}

TEST_F(IndividualAnalysis, TheWindowKeepsItsSizes)
{
    form->resize(760, 560);
    drag(find<QWidget>(u"PictureW"_s), QPoint(5, 2), QPoint(5, -28));
    const int height = view->height();
    form->close();
    open();
    EXPECT_EQ(form->size(), QSize(760, 560));
    EXPECT_EQ(view->height(), height);
}

TEST_F(IndividualAnalysis, AStudentWithoutScoresIsToldAndLeavesTheHeadings)
{
    clickNode(0, 0);
    clickNode(1, 0);
    EXPECT_EQ(form->windowTitle(), u"个人分析   -  曾国藩 2 班 1 号 ，理"_s);
    EXPECT_EQ(view->grid().Rows(), 1);
    ASSERT_EQ(test.dialogs.failures.size(), 3);
    for (const QString& failure : std::as_const(test.dialogs.failures))
        EXPECT_TRUE(failure.endsWith(u" - Sub ShowGeRenCJ/FormGeRenChenJi"_s));
    EXPECT_TRUE(ranks().isEmpty());
    EXPECT_EQ(exams().size(), 3);
}

TEST_F(IndividualAnalysis, AStudentWhoIsGoneIsToldAndTheOneBeforeStays)
{
    clickNode(0, 0);
    test.execute(u"delete from 信息表 where ID=%1"_s.arg(chen));
    clickNode(0, 1);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"成绩库里已经没有这名学生了。请关闭这个窗口，重新打开。"_s});
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"王芳"_s);
    EXPECT_EQ(form->windowTitle(), u"个人分析   -  王芳 1 班 1 号 ，理"_s);
}

TEST_F(IndividualAnalysis, AColumnThatIsGoneCostsMessagesAndTheOthersStand)
{
    test.execute(u"alter table 成绩表 drop column 语文年名"_s);
    clickNode(0, 0);
    EXPECT_FALSE(test.dialogs.failures.isEmpty());
    EXPECT_TRUE(test.dialogs.failures.first().startsWith(u"没有名为“语文年名”的列。"_s));
    EXPECT_EQ(cell(1, 1), u"90"_s);
    press(u"CheckBox1_2"_s);
    EXPECT_EQ(ranks(), (QStringList{u"1"_s, u"1"_s, u"1"_s}));
}

TEST_F(IndividualAnalysis, AnExamThatIsGoneFromTheListIsShownAsTheScoresHaveIt)
{
    test.execute(u"delete from 考试名称表"_s);
    addRanks(u"补考"_s, 4, 1, 1, {60, 3, 2});
    clickNode(0, 0);
    EXPECT_EQ(exams(), (QStringList{u"高一\n期中"_s, u"高一\n期末"_s, u"月考"_s, u"补考"_s}));
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s, u"3"_s}));
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(IndividualAnalysis, APhotoThatIsNoPictureIsToldAndTheRestShown)
{
    test.execute(u"update 信息表 set 照片名='1.jpg', 照片=x'00112233' where ID=%1"_s.arg(wang));
    clickNode(0, 0);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"照片不是图片，或已损坏，或太大。 - Sub LoadPic/FormZP"_s});
    EXPECT_TRUE(photo->isVisible());
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s}));
}

TEST_F(IndividualAnalysis, HostileNamesAreShownAsTheyStand)
{
    test.execute(
        u"update 成绩表 set 姓名='<b>O''Neil</b> --\n', 考试名称='<i>''--' where id=%1"_s.arg(
            wang));
    clickNode(0, 0);
    EXPECT_EQ(label(u"LabelStuName"_s)->text(), u"<b>O'Neil</b> --\n"_s);
    EXPECT_EQ(label(u"LabelStuName"_s)->textFormat(), Qt::PlainText);
    EXPECT_EQ(cell(1, 0), u"<i>'--"_s);
    EXPECT_EQ(exams().first(), u"<i\n>'--"_s);
}

TEST_F(IndividualAnalysis, AnEndlessNameOfAnExamDoesNotHarm)
{
    test.execute(
        u"update 成绩表 set 考试名称='%1' where id=%2"_s.arg(QString(10000, u'长')).arg(wang));
    clickNode(0, 0);
    EXPECT_LE(label(u"LabelKSMC_1"_s)->text().size(), 200);
    EXPECT_FALSE(chart->picture().isNull());
}

/// The chart in a dark palette, which goes when the test ends.
class DarkPalette : public support::IndividualFixture
{
protected:
    DarkPalette()
    {
        QPalette dark(QColor(45, 45, 45));
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(dark);
        open();
    }
    ~DarkPalette() override
    {
        form.reset();
        QApplication::setPalette(m_before);
    }

private:
    const QPalette m_before = QApplication::palette();
};

TEST_F(DarkPalette, FrameAndTextsOfTheChartAreLight)
{
    clickNode(0, 0);
    const QImage picture = chart->picture();
    EXPECT_LT(picture.pixelColor(2, 2).lightness(), 60);
    const int margin = view->pixels(500);
    EXPECT_GT(picture.pixelColor(chart->width() / 4, margin).lightness(), 200);
    const QLabel* name = label(u"LabelStuName"_s);
    EXPECT_EQ(name->palette().color(name->foregroundRole()), QColor(Qt::white));
}

class OddLibraries : public support::IndividualFixture
{
};

TEST_F(OddLibraries, WithoutExamsTheScreenSaysSo)
{
    test.execute(u"delete from 考试名称表"_s);
    test.execute(u"delete from 成绩表"_s);
    test.reload();
    open();
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"成绩库里还没有考试，导入考试以后才有成绩和名次可以分析。"_s});
    EXPECT_EQ(view->grid().Rows(), 1);
    press(u"CheckBox1_2"_s);
    EXPECT_TRUE(exams().isEmpty());
}

TEST_F(OddLibraries, WithoutStudentsTheTreeIsEmpty)
{
    test.execute(u"delete from 信息表"_s);
    test.reload();
    open();
    EXPECT_EQ(tree->topLevelItemCount(), 0);
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(form->windowTitle(), u"学生成绩分析"_s);
}

TEST_F(OddLibraries, ExamsOfAnotherProgramAreSeenWhenTheScreenOpens)
{
    support::OtherProgram(test.scores.Conn.path())
        .run("insert into 考试名称表(考试名称,科类,考试编号) values('模拟','理',4)");
    open();
    EXPECT_EQ(view->grid().Rows(), 5);
}

TEST_F(OddLibraries, AColourThatIsNoNumberIsTold)
{
    test.execute(u"update 颜色表 set 颜色='红' where ID=1"_s);
    open();
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(
        test.dialogs.failures.first().endsWith(u" - Private Sub Form_Load/FormGeRenChenJi"_s));
    clickNode(0, 0);
    EXPECT_EQ(ranks(), (QStringList{u"2"_s, u"3"_s}));
}

TEST(ManyColumns, TakeTheColoursAgainAfterOneMessage)
{
    QStringList columns;
    for (int i = 1; i <= 18; ++i)
        columns.append(u"科%1"_s.arg(i));
    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test(columns);
    excel::Applications applications;
    individual::FormGeRenChengJi form(test.scores, screenDialogs, applications, nullptr);
    const auto color = [&](int i) {
        return form.findChild<individual::ColorSwatch*>(u"Command1_%1"_s.arg(i))->color();
    };
    EXPECT_EQ(color(16), color(1));
    EXPECT_EQ(color(18), color(3));
    EXPECT_EQ(test.dialogs.failures.size(), 1);
}

} // namespace
