#include "gui/ScoreExportFixture.h"

namespace {

using namespace Qt::StringLiterals;

/// The screen of the export where the library is not what it was, or holds what it should not.
class ScoreExportBadInput : public support::ScoreExportFixture
{
};

TEST_F(ScoreExportBadInput, AnExamOfABoxThatIsGoneIsChosenNoMore)
{
    toggle(u"CheckNJJF"_s);
    test.execute(u"delete * from 考试名称表 where 考试名称='期中'"_s);
    test.reload();
    form->Form_Load();
    EXPECT_EQ(examsOf(u"Combo2"_s), QStringList{u"期初"_s});
    EXPECT_EQ(combo(u"Combo2"_s)->currentIndex(), -1);
    EXPECT_TRUE(find<QCheckBox>(u"CheckNJJF"_s)->isChecked());
}

TEST_F(ScoreExportBadInput, ALibraryWithoutExamsAndStudentsSaysSo)
{
    test.execute(u"delete * from 考试名称表"_s);
    test.execute(u"delete * from 信息表"_s);
    test.reload();
    open();
    auto* missing = find<QLabel>(u"LabelMissing"_s);
    EXPECT_TRUE(missing->isVisible());
    EXPECT_EQ(missing->text(), u"成绩库里还没有考试，请先导入考试。\n"
                               "成绩库里还没有学生，请先导入信息。"_s);
    toggle(u"CheckBJJF"_s);
    EXPECT_EQ(combo(u"Combo1"_s)->currentIndex(), -1);
    selectEverything();
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请选择 要导出成绩的 考试名称！"_s});
    EXPECT_TRUE(applications.empty());
}

TEST_F(ScoreExportBadInput, AnUnreadableListOfClassesIsShownWithItsTag)
{
    test.execute(u"drop table 信息表"_s);
    open();
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Private Sub Form_Load/FormDaoChu"_s));
    EXPECT_EQ(items(u"ListKM"_s).size(), 3) << "the lists behind it are filled";
}

TEST_F(ScoreExportBadInput, AClassWhoseStudentsAreGoneGivesAnEmptySheet)
{
    selectAll(u"ListKSMC"_s);
    selectAll(u"ListKM"_s);
    click(u"ListBJ"_s, u"10"_s);
    test.execute(u"delete * from 信息表 where 班级=10"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"所选的班级没有学生，表格是空的。"_s, u"成绩导出完毕！"_s}));
    EXPECT_EQ(sheet().Cells(1, 1).text(), QString());
}

TEST_F(ScoreExportBadInput, AnExamThatIsGoneMeanwhileIsToldForEachStudentAndTheExportEnds)
{
    click(u"ListKSMC"_s, u"期中"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"1"_s);
    toggle(u"CheckBJJF"_s);
    for (const QString& table : {u"考试名称表"_s, u"成绩表"_s})
        test.execute(u"delete * from "_s + table + u" where 考试名称='期中'"_s);
    press(u"Command1"_s);
    EXPECT_EQ(test.dialogs.failures.size(), 2) << "王芳 and 陈静 have no rows";
    for (const QString& failure : test.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormDaoChu"_s));
    EXPECT_EQ(test.dialogs.shown.last(), u"成绩导出完毕！"_s);
    EXPECT_EQ(row(sheet(), 2, 5), u"期中班平||||0"_s);
}

TEST_F(ScoreExportBadInput, AColumnThatIsGoneSinceItsListWasSavedIsLeftOut)
{
    test.execute(u"insert into 自定义显示表 values('导出成绩False','考试名称,体育,语文')"_s);
    selectEverything();
    press(u"Command1"_s);
    EXPECT_EQ(row(sheet(), 1, 3), u"考试名称|语文|"_s);
}

TEST_F(ScoreExportBadInput, AnEndlessNumberOfBlankRowsEndsAtTheSheet)
{
    selectAll(u"ListKSMC"_s);
    click(u"ListKM"_s, u"语文"_s);
    click(u"ListBJ"_s, u"1"_s);
    type(u"TextKH"_s, u"999999999"_s);
    press(u"Command1"_s);
    EXPECT_EQ(sheet().lastUsedRow(), 3);
    EXPECT_FALSE(test.dialogs.failures.isEmpty()) << "the second student has no place";
    EXPECT_EQ(test.dialogs.shown.last(), u"成绩导出完毕！"_s);
    find<QLineEdit>(u"TextKH"_s)->setText(QString(10000, u'9'));
    press(u"Command1"_s);
    EXPECT_EQ(sheet(2).lastUsedRow(), 5) << "what is no number that can be reckoned with is none";
    EXPECT_EQ(test.dialogs.shown.last(), u"成绩导出完毕！"_s);
}

TEST_F(ScoreExportBadInput, NamesAreShownAsTheyStandAndOneWithAnApostropheIsRefused)
{
    addExam(u"<b>A&B</b>\n-- 'x"_s, 3);
    test.reload();
    open();
    EXPECT_EQ(items(u"ListKSMC"_s).last(), u"<b>A&B</b>\n-- 'x"_s);
    toggle(u"CheckBJJF"_s);
    EXPECT_EQ(combo(u"Combo1"_s)->currentText(), u"<b>A&B</b>\n-- 'x"_s);
    selectEverything();
    press(u"Command1"_s);
    EXPECT_FALSE(test.dialogs.failures.filter(u"单引号"_s).isEmpty());
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表"_s), u"4"_s);
}

} // namespace
