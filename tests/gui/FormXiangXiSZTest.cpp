#include "configuration/ui/FormXiangXiSZ.h"

#include <QLabel>

#include "gui/SettingsScreen.h"

namespace {

const QString unsaved = u"各科条件有改动，还没有保存。"_s;

/// The conditions of 各科优秀率, made from [0.8,1): 文 语文 of 150, 理 语文 of 100.
class ConditionsScreen : public testing::Test
{
protected:
    ConditionsScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s);
        test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 150}});
        test.reload();
        settings.load();
        conditions.makeFrom(statistics::Interval::parse(u"[0.8,1)"_s));
        conditions.SetRow = 5;
        form.setWindowTitle(u"设置  各科优秀率"_s);
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    }

    QString stored() { return test.rows(u"select * from 详细设置表"_s); }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    configuration::AnalysisSettings settings{test.scores};
    configuration::SubjectConditions conditions{test.scores};
    configuration::FormXiangXiSZ form{conditions, settings, screenDialogs, nullptr};
    EditedWindow on{form};
};

TEST_F(ConditionsScreen, ShowsTheRowsInSixEqualColumns)
{
    EXPECT_EQ(on.cell(0, 0), u"科类"_s);
    EXPECT_EQ(on.cell(1, 3), u"120"_s);
    EXPECT_EQ(on.cell(2, 5), u"100"_s);
    for (int col = 0; col < 6; ++col)
        EXPECT_NEAR(on.view().columnWidth(col), on.view().viewport()->width() / 6, 12);
}

TEST_F(ConditionsScreen, OperatorsArePickedAndScoresTypedAndNothingElse)
{
    on.clickCell(1, 2);
    ASSERT_TRUE(on.list().isVisible());
    EXPECT_EQ(on.list().count(), 4);
    EXPECT_EQ(on.list().selectedItems().value(0)->text(), u">="_s);
    on.pick(u"<="_s);
    EXPECT_FALSE(on.list().isVisible());
    on.type(1, 5, u"八十"_s);
    EXPECT_EQ(on.cell(1, 2) + on.cell(1, 5), u"<=八十"_s);
    for (const auto& [row, col] : {std::pair{1, 0}, {1, 1}, {0, 2}, {0, 3}}) {
        on.clickCell(row, col);
        EXPECT_FALSE(on.list().isVisible() || on.box().isVisible()) << row << ' ' << col;
    }
}

TEST_F(ConditionsScreen, ConfirmingSavesTheRowsTellsAndCloses)
{
    on.clickCell(2, 4);
    on.pick(u">"_s);
    on.type(2, 5, u"0.5"_s);
    on.press(u"Command1"_s);
    EXPECT_EQ(stored(), u"各科优秀率|文|语文|>=|120|<|150 / 各科优秀率|理|语文|>=|80|>|0.5"_s);
    EXPECT_EQ(settings.settings.TextMatrix(5, 1), u"(使用自定义数据)"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"设置保存成功！"_s});
    EXPECT_FALSE(form.isVisible());
}

TEST_F(ConditionsScreen, DeletingLeavesTheWindowItsRowsAndTheSetting)
{
    test.execute(u"insert into 详细设置表 values ('各科优秀率','文','语文','>','1','<','2')"_s);
    on.press(u"Command3"_s);
    EXPECT_EQ(stored(), QString());
    EXPECT_EQ(test.dialogs.shown, QStringList{u"保存设置成功！"_s});
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(on.view().grid().Rows(), 3);
    EXPECT_EQ(settings.settings.TextMatrix(5, 1), u"[0.85,1]"_s);
    EXPECT_TRUE(on.find<QLabel>(u"LabelNote"_s).isVisible());
    EXPECT_EQ(on.find<QLabel>(u"LabelNote"_s).text(),
              u"各科条件已经从成绩库里删除。分析设置里写着“(使用自定义数据)”的，请改回区间，"
              "否则统计时没有条件可用；按“确定”可以把表里的条件存回去。"_s);
    on.press(u"Command1"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 详细设置表"_s), u"2"_s);
}

TEST_F(ConditionsScreen, UnsavedChangesAreAskedAboutBeforeTheCloseBoxThrowsThemAway)
{
    on.type(1, 3, u"1"_s);
    test.dialogs.expect(unsaved, u"取消"_s);
    form.close();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(test.dialogs.safeOf(unsaved), u"取消"_s);
    test.dialogs.expect(unsaved, u"不保存"_s);
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(stored(), QString());
}

TEST_F(ConditionsScreen, UnsavedChangesAreSavedByTheQuestionToo)
{
    on.type(1, 3, u"1"_s);
    test.dialogs.expect(unsaved, u"保存"_s);
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(stored().section(u" / "_s, 0, 0), u"各科优秀率|文|语文|>=|1|<|150"_s);
    EXPECT_EQ(settings.settings.TextMatrix(5, 1), u"(使用自定义数据)"_s);
}

TEST_F(ConditionsScreen, WithoutAChangeItClosesAtOnceAndTheCancelButtonDoesNothing)
{
    on.press(u"Command2"_s);
    EXPECT_TRUE(form.isVisible());
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ConditionsScreen, ARefusedSaveKeepsTheWindowOpen)
{
    form.setWindowTitle(u"设置  优'秀"_s);
    on.press(u"Command1"_s);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(test.dialogs.shown, test.dialogs.failures);
    EXPECT_FALSE(test.dialogs.failures.isEmpty());
}

TEST_F(ConditionsScreen, EnterGoesDownTheScores)
{
    on.type(1, 3, u"90"_s);
    QTest::keyClick(&on.box(), Qt::Key_Return);
    QTest::keyClick(&on.box(), Qt::Key_Backspace);
    EXPECT_EQ(on.cell(1, 3) + u'/' + on.cell(2, 3), u"90/8"_s);
    QTest::keyClick(&on.box(), Qt::Key_Escape);
    EXPECT_EQ(on.cell(2, 3), u"80"_s);
}

} // namespace
