#include "workbench/ExamOrder.h"

#include "WorkbenchFixture.h"

using namespace Qt::StringLiterals;

namespace {

using ExamOrder = WorkbenchTest;

TEST_F(ExamOrder, SavingAsksAndStopsOnCancel)
{
    library.dialogs.expect(u"确实要保存修改吗"_s, runtime::Answer::Cancel);
    workbench::saveExamOrder(library.scores, {u"期末"_s, u"期中"_s});
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"提示: 确实要保存修改吗？保存后不可恢复，最好在保存前备份数据库。"_s});
    EXPECT_EQ(library.dialogs.look(u"确实要保存修改吗"_s),
              (support::BoxLook{u"提示"_s, runtime::Buttons::OkCancel, runtime::Icon::Question}));
}

TEST_F(ExamOrder, SavingFailsTwiceForEachExamAndChangesNoNumber)
{
    const QString before = library.rows(u"select 考试名称, 考试编号 from 考试名称表"_s);
    library.dialogs.expect(u"确实要保存修改吗"_s, runtime::Answer::Ok);
    workbench::saveExamOrder(library.scores, {u"期末"_s, u"期中"_s});
    ASSERT_EQ(library.dialogs.failures.size(), 4);
    for (const QString& failure : library.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormKaoShi"_s));
    EXPECT_EQ(library.dialogs.shown.last(), u"保存完毕！"_s);
    EXPECT_EQ(library.rows(u"select 考试名称, 考试编号 from 考试名称表"_s), before);
}

} // namespace
