#include "gui/WorkbenchScreen.h"

namespace {

using namespace Qt::StringLiterals;

class Workbench : public support::WorkbenchScreen
{
};

TEST_F(Workbench, ShowsTheFirstExamAndAllClassesSelected)
{
    EXPECT_EQ(find<QListWidget>(u"ListKSMC"_s)->selectedItems().size(), 1);
    EXPECT_EQ(find<QListWidget>(u"ListFW"_s)->selectedItems().size(), 2);
    EXPECT_EQ(sql(), u"select * from 成绩表 where  ( 考试名称='期中') and ( 班级=1 or  班级=2) and "
                     "(类别代码=1)"_s);
}

TEST_F(Workbench, AClickInAListRebuildsTheStatement)
{
    clickItem(u"ListKSMC"_s, 1, Qt::ControlModifier);
    clickItem(u"ListFW"_s, 1);
    EXPECT_EQ(sql(), u"select * from 成绩表 where  ( 考试名称='期中' or  考试名称='期末') and "
                     "( 班级=2) and (类别代码=1)"_s);
}

TEST_F(Workbench, AStreamSelectsItsClasses)
{
    chooseStream(1);
    EXPECT_TRUE(sql().contains(u" and ( 班级=1) and "_s)) << sql().toStdString();
}

TEST_F(Workbench, DeselectingEveryClassLeavesThePrompt)
{
    find<QListWidget>(u"ListFW"_s)->clearSelection();
    EXPECT_EQ(sql(), u"请选择 要导出成绩的 班级！\""_s);
}

TEST_F(Workbench, BrowsingFillsTheGridAndTellsTheWindow)
{
    const QSignalSpy filled(form.get(), &workbench::FormKaoShi::gridFilled);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(filled.count(), 1);
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.TextMatrix(1, 2), u"甲"_s);
}

TEST_F(Workbench, ATypedStatementIsRunAsItIs)
{
    find<QPlainTextEdit>(u"Text1"_s)->setPlainText(u"select * from 成绩表 where 语文<85"_s);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.TextMatrix(1, 2), u"乙"_s);
}

TEST_F(Workbench, ComputingTotalsScoresTheExamAndSaysSo)
{
    press(u"CommandJSZF"_s);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown.first().startsWith(u"计算总分 完成！"_s));
    EXPECT_EQ(test.rows(u"select 语文年名 from 成绩表 where 考试名称='期中'"_s), u"1"_s);
}

TEST_F(Workbench, MovingTheExamChangesTheListAlone)
{
    clickItem(u"ListKSMC"_s, 1);
    press(u"CommandUP"_s);
    EXPECT_EQ(find<QListWidget>(u"ListKSMC"_s)->item(0)->text(), u"期末"_s);
    EXPECT_EQ(test.rows(u"select 考试编号 from 考试名称表 where 考试名称='期末' and 科类='文'"_s),
              u"2"_s);
    clickItem(u"ListKSMC"_s, 1, Qt::ControlModifier);
    press(u"CommandUP"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"本操作要求只能选中一次考试，请选择一次考试！"_s});
}

TEST_F(Workbench, WithoutALibraryTheCommandsAreOff)
{
    test.scores.Conn.Close();
    form->init();
    for (const QString& name :
         {u"CommandLLCJ"_s, u"CommandJSZF"_s, u"CommandDRKS"_s, u"Command1"_s, u"CommandUP"_s,
          u"CommandDown"_s, u"CommandZXTJ"_s, u"CommandZHFX"_s, u"CommandZDYXS"_s})
        EXPECT_FALSE(find<QPushButton>(name)->isEnabled()) << name.toStdString();
}

TEST_F(Workbench, StatisticsFillTheGridWithTheItemOfTheList)
{
    const QSignalSpy filled(form.get(), &workbench::FormKaoShi::gridFilled);
    press(u"CommandZXTJ"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"没有选择统计项目，请选择统计项目 后继续。"_s});
    EXPECT_EQ(filled.count(), 0);
    auto* items = find<QComboBox>(u"Combo3"_s);
    items->setCurrentText(u"考试人数"_s);
    press(u"CommandZXTJ"_s);
    EXPECT_EQ(filled.count(), 1);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"1/0/1"_s);
}

TEST_F(Workbench, ARateThatRunsAsAnotherIsNotedBesideTheItemWithALinkThatRunsIt)
{
    auto* note = find<QLabel>(u"LabelNote"_s);
    EXPECT_FALSE(note->isVisible());
    pick(u"Combo3"_s, u"各科优秀率"_s);
    EXPECT_FALSE(note->isVisible());
    pick(u"Combo3"_s, u"各科良好率"_s);
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->accessibleName().contains(u"给出的是“各科优秀率”的表"_s));
    press(u"CommandZXTJ"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科各科优秀率"_s);
    EXPECT_EQ(form->resultNotes().size(), 1u);
    followLink(note);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科各科良好率"_s);
    EXPECT_TRUE(form->resultNotes().empty());
    pick(u"Combo3"_s, u"考试人数"_s);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(Workbench, ExamsWhoseFullMarksAddUpAreNotedWhileSeveralAreChosen)
{
    auto* note = find<QLabel>(u"LabelNote"_s);
    pick(u"Combo3"_s, u"高分段、低分段"_s);
    EXPECT_FALSE(note->isVisible());
    clickItem(u"ListKSMC"_s, 1, Qt::ControlModifier);
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->accessibleName().contains(u"选了 2 次考试"_s));
    followLink(note);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"期中"_s);
    EXPECT_EQ(grid.TextMatrix(9, 0), u"期末"_s);
    clickItem(u"ListKSMC"_s, 1);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(Workbench, NoButtonMovesAwayWhenANoteComes)
{
    auto* run = find<QPushButton>(u"CommandZXTJ"_s);
    pick(u"Combo3"_s, u"各科优秀率"_s);
    const QPoint before = run->mapToGlobal(QPoint());
    pick(u"Combo3"_s, u"各科良好率"_s);
    QApplication::processEvents();
    EXPECT_TRUE(find<QLabel>(u"LabelNote"_s)->isVisible());
    EXPECT_EQ(run->mapToGlobal(QPoint()), before);
}

TEST_F(Workbench, WithoutALibraryThereIsNoNote)
{
    pick(u"Combo3"_s, u"各科差生率"_s);
    test.scores.Conn.Close();
    form->init();
    EXPECT_FALSE(find<QLabel>(u"LabelNote"_s)->isVisible());
}

TEST_F(Workbench, ATypedChangeIsAskedAboutAndTheSafeAnswerLeavesTheGrid)
{
    const QSignalSpy filled(form.get(), &workbench::FormKaoShi::gridFilled);
    find<QPlainTextEdit>(u"Text1"_s)->setPlainText(u"delete from 成绩表"_s);
    test.dialogs.expect(u"会改动成绩库里的 2 行"_s, u"取消"_s);
    press(u"CommandLLCJ"_s);
    EXPECT_EQ(filled.count(), 0);
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表"_s), u"2"_s);
}

TEST_F(Workbench, TheTipOfTheStatementTellsHowToCompareDecimals)
{
    const QString tip = find<QPlainTextEdit>(u"Text1"_s)->toolTip();
    EXPECT_TRUE(tip.startsWith(u"SQL语句，可直接输入后点击[浏览成绩]执行查询 \n"_s));
    EXPECT_TRUE(tip.contains(u"round(语文,4)>=89.7"_s));
}

TEST_F(Workbench, TheComprehensiveAnalysisOpensAWorkbookForEachStream)
{
    test.execute(u"update 设置表 set 加入综合分析='否' where 名称 like '%总分上线人数'"_s);
    press(u"CommandZHFX"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"综合分析完毕！"_s});
    ASSERT_EQ(applications.size(), 1u);
    EXPECT_EQ(applications[0]->Workbooks().Count(), 2);
    EXPECT_TRUE(applications[0]->Visible());
}

TEST_F(Workbench, TheCustomDisplayIsAskedForWithItemAndStream)
{
    const QSignalSpy asked(form.get(), &workbench::FormKaoShi::customDisplayRequested);
    press(u"CommandZDYXS"_s);
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(asked[0], (QVariantList{u"原始分和名次"_s, u"全"_s}));
    EXPECT_EQ(test.scores.settings.DisplayItems.value(4), u"语文"_s);
}

} // namespace
