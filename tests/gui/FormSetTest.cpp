#include "gui/SettingsScreen.h"

namespace {

const QString excellent = u"各科优秀率"_s;
const QString categories = u"参与统计的学生类别代码"_s;
const QString unsaved = u"分析设置有改动，还没有保存。"_s;

TEST_F(SettingsScreen, ComesUpWithARowForEachSettingAndItsHiddenColumnsAway)
{
    EXPECT_EQ(form->windowTitle(), u"分析设置"_s);
    EXPECT_EQ(on->view().grid().Rows(), 22);
    EXPECT_EQ(on->cell(0, 0) + on->cell(0, 1) + on->cell(0, 2) + on->cell(0, 3),
              u"名称设置加入综合分析各科条件"_s);
    for (const int hidden : {4, 5})
        EXPECT_EQ(on->view().columnWidth(hidden), 0);
    const int width = on->view().viewport()->width();
    for (const int col : {0, 1, 2, 3})
        EXPECT_NEAR(on->view().columnWidth(col), width / 4, 12);
    EXPECT_FALSE(on->box().isVisible());
    EXPECT_FALSE(on->list().isVisible());
}

TEST_F(SettingsScreen, AValueIsTypedOverItsCellAndSaved)
{
    on->type(rowOf(excellent), 1, u"[0.8,1]"_s);
    EXPECT_EQ(on->cell(rowOf(excellent), 1), u"[0.8,1]"_s);
    EXPECT_EQ(on->cell(rowOf(excellent), 5), u"0"_s);
    on->press(u"Command1"_s);
    EXPECT_EQ(stored(excellent), u"[0.8,1]|是|0"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"设置保存成功！"_s});
    EXPECT_FALSE(form->isVisible());
}

TEST_F(SettingsScreen, OpeningTheEditorKeepsTheFlagTypingClearsItAndEscBringsItBack)
{
    set(excellent, u"自定义"_s, u"1"_s);
    const int row = rowOf(excellent);
    on->clickCell(row, 1);
    EXPECT_TRUE(on->box().isVisible());
    EXPECT_EQ(on->box().text(), u"(使用自定义数据)"_s);
    EXPECT_EQ(on->cell(row, 5), u"1"_s);
    QTest::keyClick(&on->box(), Qt::Key_Backspace);
    EXPECT_EQ(on->cell(row, 5), u"0"_s);
    QTest::keyClick(&on->box(), Qt::Key_Escape);
    EXPECT_EQ(on->cell(row, 1), u"(使用自定义数据)"_s);
    EXPECT_EQ(on->cell(row, 5), u"1"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
}

TEST_F(SettingsScreen, EscBringsBackWhatWasTypedBeforeNotWhatWasStored)
{
    set(excellent, u"自定义"_s, u"1"_s);
    const int row = rowOf(excellent);
    on->type(row, 1, u"[0.8,1]"_s);
    QTest::keyClick(&on->box(), Qt::Key_Return);
    on->type(row, 1, u"x"_s);
    QTest::keyClick(&on->box(), Qt::Key_Escape);
    EXPECT_EQ(on->cell(row, 1), u"[0.8,1]"_s);
    EXPECT_EQ(on->cell(row, 5), u"0"_s);
}

TEST_F(SettingsScreen, AClickFlipsYesAndNoButNotInTheFirstRow)
{
    on->clickCell(rowOf(excellent), 2);
    EXPECT_EQ(on->cell(rowOf(excellent), 2), u"否"_s);
    on->clickCell(rowOf(excellent), 2);
    EXPECT_EQ(on->cell(rowOf(excellent), 2), u"是"_s);
    on->clickCell(1, 2);
    EXPECT_EQ(on->cell(1, 2), u"否"_s);
    on->clickCell(0, 2);
    EXPECT_EQ(on->cell(0, 2), u"加入综合分析"_s);
}

TEST_F(SettingsScreen, KeysFlipAndOpenLikeClicks)
{
    grid::FlexGridView& view = on->view();
    const int row = rowOf(excellent);
    view.setFocus();
    view.select(row, 2, row, 2);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(on->cell(row, 2), u"否"_s);
    view.select(row, 1, row, 1);
    QTest::keyClicks(&view, u"5"_s);
    EXPECT_TRUE(on->box().hasFocus());
    EXPECT_EQ(on->cell(row, 1), u"5"_s);
    view.select(rowOf(categories), 1, rowOf(categories), 1);
    EXPECT_FALSE(on->box().isVisible());
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(on->list().hasFocus());
    QTest::keyClick(&on->list(), Qt::Key_Space);
    EXPECT_EQ(on->cell(rowOf(categories), 1), u"1"_s);
}

TEST_F(SettingsScreen, ThreeRowsArePickedFromListsInTheirOrder)
{
    const int row = rowOf(categories);
    on->clickCell(row, 1);
    EXPECT_TRUE(on->list().isVisible());
    EXPECT_FALSE(on->box().isVisible());
    on->pick(u"2"_s);
    EXPECT_EQ(on->cell(row, 1), u"2"_s);
    EXPECT_FALSE(on->list().isVisible());
    on->clickCell(row, 1);
    on->pick(u"1"_s, Qt::ControlModifier);
    EXPECT_EQ(on->cell(row, 1), u"1,2"_s);
    on->clickCell(rowOf(u"各科平均分"_s), 1);
    on->pick(u"不使用教师名单"_s);
    EXPECT_EQ(on->cell(rowOf(u"各科平均分"_s), 1), u"不使用教师名单"_s);
    on->clickCell(rowOf(u"进行对比分析的考试"_s), 1);
    on->pick(u"期中"_s);
    on->press(u"Command1"_s);
    EXPECT_EQ(stored(categories), u"1,2|否|0"_s);
    EXPECT_EQ(stored(u"进行对比分析的考试"_s), u"期中|否|0"_s);
}

TEST_F(SettingsScreen, AListWithoutChoicesIsEmpty)
{
    set(u"各科平均分"_s, u"选项"_s, u"''"_s);
    on->clickCell(rowOf(u"各科平均分"_s), 1);
    EXPECT_TRUE(on->list().isVisible());
    EXPECT_EQ(on->list().count(), 0);
}

TEST_F(SettingsScreen, TheHeadingOfTheValuesIsEditedTooAndNotSaved)
{
    on->type(0, 1, u"数值"_s);
    EXPECT_EQ(on->cell(0, 1), u"数值"_s);
    on->press(u"Command1"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 设置表 where 设置='数值'"_s), u"0"_s);
}

TEST_F(SettingsScreen, AValueThatItsReportCannotReadIsMarkedAndStored)
{
    const int row = rowOf(u"总分上线人数"_s);
    on->type(row, 1, u"文=5"_s);
    EXPECT_EQ(on->box().toolTip(), u"条件设置不正确！缺少分隔符  ||  \n文=5"_s);
    EXPECT_EQ(on->box().accessibleDescription(), on->box().toolTip());
    EXPECT_TRUE(on->box().styleSheet().contains(u"border"_s));
    on->type(rowOf(excellent), 1, u"[0.8,1]"_s);
    EXPECT_EQ(on->box().toolTip(), QString());
    EXPECT_EQ(on->box().styleSheet(), QString());
    on->clickCell(row, 1);
    EXPECT_FALSE(on->box().toolTip().isEmpty());
    on->press(u"Command1"_s);
    EXPECT_EQ(stored(u"总分上线人数"_s), u"文=5|是|0"_s);
}

TEST_F(SettingsScreen, UnsavedChangesAreAskedAboutBeforeTheCloseBoxThrowsThemAway)
{
    on->clickCell(rowOf(excellent), 2);
    test.dialogs.expect(unsaved, u"取消"_s);
    form->close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(test.dialogs.safeOf(unsaved), u"取消"_s);
    test.dialogs.expect(unsaved, u"不保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(excellent), u"[0.85,1]|是|0"_s);
}

TEST_F(SettingsScreen, UnsavedChangesAreSavedByTheQuestionToo)
{
    on->clickCell(rowOf(excellent), 2);
    test.dialogs.expect(unsaved, u"保存"_s);
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(excellent), u"[0.85,1]|否|0"_s);
    EXPECT_EQ(test.dialogs.shown.last(), u"设置保存成功！"_s);
}

TEST_F(SettingsScreen, ASaveThatFailsAtTheQuestionKeepsTheScreenOpen)
{
    on->clickCell(rowOf(excellent), 2);
    test.scores.Conn.Close();
    test.dialogs.expect(unsaved, u"保存"_s);
    form->close();
    EXPECT_TRUE(form->isVisible());
}

TEST_F(SettingsScreen, TheCancelButtonDoesNothing)
{
    on->type(rowOf(excellent), 1, u"9"_s);
    on->press(u"Command2"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(on->cell(rowOf(excellent), 1), u"9"_s);
}

TEST_F(SettingsScreen, AFailedSaveKeepsTheScreenOpen)
{
    on->clickCell(rowOf(excellent), 2);
    test.scores.Conn.Close();
    on->press(u"Command1"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(test.dialogs.shown.contains(u"设置保存成功！"_s));
}

TEST_F(SettingsScreen, TheLinkOpensTheConditionsOfItsSetting)
{
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(window.objectName(), u"FormXiangXiSZ"_s);
        EXPECT_EQ(window.windowTitle(), u"设置  各科优秀率"_s);
        const EditedWindow conditions(window);
        EXPECT_EQ(conditions.view().grid().Rows(), 3);
        conditions.type(1, 3, u"99"_s);
        conditions.press(u"Command1"_s);
    });
    on->clickCell(rowOf(excellent), 3);
    EXPECT_EQ(boxes.count, 1);
    EXPECT_EQ(on->cell(rowOf(excellent), 1), u"(使用自定义数据)"_s);
    EXPECT_EQ(stored(excellent), u"[0.85,1]|是|0"_s);
    on->press(u"Command1"_s);
    EXPECT_EQ(stored(excellent), u"(使用自定义数据)|是|0"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"设置保存成功！"_s, u"设置保存成功！"_s}));
}

TEST_F(SettingsScreen, ConditionsSavedWithoutTheFlagAreOfferedAtTheNextClick)
{
    set(excellent, u"设置"_s, u"'(使用自定义数据)'"_s);
    test.execute(u"insert into 详细设置表 values ('各科优秀率','文','语文','>','1','<','2')"_s);
    test.dialogs.expect(u"有 1 条已经保存的各科条件"_s, u"显示已经保存的条件"_s);
    support::ModalBoxes boxes;
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(EditedWindow(window).cell(1, 3), u"1"_s);
        window.close();
    });
    on->clickCell(rowOf(excellent), 3);
    EXPECT_EQ(boxes.count, 1);
}

TEST_F(SettingsScreen, OtherCellsOpenNothing)
{
    on->clickCell(rowOf(u"考试人数"_s), 3);
    on->clickCell(rowOf(excellent), 0);
    on->clickCell(0, 3);
    EXPECT_FALSE(on->box().isVisible());
    EXPECT_FALSE(on->list().isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(SettingsScreen, NamesAndValuesOfAnyKindAreShownAndSaved)
{
    const QString name = u"a' -- <b>"_s + QString(40, u'名');
    test.execute(u"update 设置表 set 名称='a'' -- <b>%1' where ID=18"_s.arg(QString(40, u'名')));
    show();
    const QString value = u"'; drop table 设置表 --"_s;
    on->type(rowOf(name), 1, value);
    on->press(u"Command1"_s);
    EXPECT_EQ(test.rows(u"select 设置 from 设置表 where ID=18"_s), value);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"设置保存成功！"_s});
}

} // namespace
