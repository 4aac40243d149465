#include "WorkbenchFixture.h"

using namespace Qt::StringLiterals;
using workbench::Direction;

namespace {

class ExamOrder : public WorkbenchTest
{
protected:
    ExamOrder()
    {
        selection.ListKSMC.clear();
        for (const QString& exam : {u"甲"_s, u"乙"_s, u"丙"_s})
            selection.ListKSMC.add(exam, workbench::Selected::No);
    }

    void move(Direction direction) { selection.MoveList(selection.ListKSMC, direction); }

    QString order() const { return texts(selection.ListKSMC).join(QString()); }
};

TEST_F(ExamOrder, TheSelectedExamSwapsWithItsNeighbour)
{
    select(selection.ListKSMC, {u"乙"_s});
    move(Direction::Up);
    EXPECT_EQ(order(), u"乙甲丙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"乙"_s});
    EXPECT_EQ(selection.ListKSMC.currentText(), u"乙"_s);
    move(Direction::Down);
    move(Direction::Down);
    EXPECT_EQ(order(), u"甲丙乙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"乙"_s});
    EXPECT_TRUE(selection.Text1.contains(u"( 考试名称='乙')"_s));
}

TEST_F(ExamOrder, TheFirstUpAndTheLastDownStay)
{
    select(selection.ListKSMC, {u"甲"_s});
    move(Direction::Up);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    select(selection.ListKSMC, {u"丙"_s});
    move(Direction::Down);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"丙"_s});
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(ExamOrder, MovingNeedsExactlyOneSelectedExam)
{
    const QString message = u"本操作要求只能选中一次考试，请选择一次考试！"_s;
    select(selection.ListKSMC, {u"甲"_s, u"乙"_s});
    move(Direction::Up);
    select(selection.ListKSMC, {});
    move(Direction::Down);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    EXPECT_EQ(library.dialogs.shown, (QStringList{message, message}));
}

TEST_F(ExamOrder, SavingAsksAndStopsOnCancel)
{
    library.dialogs.expect(u"确实要保存修改吗"_s, runtime::Answer::Cancel);
    selection.Command1_Click();
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"提示: 确实要保存修改吗？保存后不可恢复，最好在保存前备份数据库。"_s});
    EXPECT_EQ(library.dialogs.look(u"确实要保存修改吗"_s),
              (support::BoxLook{u"提示"_s, runtime::Buttons::OkCancel, runtime::Icon::Question}));
}

TEST_F(ExamOrder, SavingFailsTwiceForEachExamAndChangesNoNumber)
{
    const QString before = library.rows(u"select 考试名称, 考试编号 from 考试名称表"_s);
    selection.ShowKS();
    select(selection.ListKSMC, {u"期末"_s});
    move(Direction::Up);
    library.dialogs.expect(u"确实要保存修改吗"_s, runtime::Answer::Ok);
    selection.Command1_Click();
    ASSERT_EQ(library.dialogs.failures.size(), 4);
    for (const QString& failure : library.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormKaoShi"_s));
    EXPECT_EQ(library.dialogs.shown.last(), u"保存完毕！"_s);
    EXPECT_EQ(library.rows(u"select 考试名称, 考试编号 from 考试名称表"_s), before);
}

} // namespace
