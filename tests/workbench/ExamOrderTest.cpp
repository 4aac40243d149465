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

TEST_F(ExamOrder, NoNameIsReadAsAPartOfTheStatement)
{
    const QString numbers =
        u"select 考试编号 from 考试名称表 union all select 考试编号 from 成绩表"_s;
    for (const QString& name :
         {u"2024--2025期中"_s, u"1 or ''='"_s, u"x' where 考试名称='高一"_s, u"1 /*"_s,
          u"(select 1) --"_s, u"'期中"_s, u"期\n中"_s, QString()}) {
        SCOPED_TRACE(name.toStdString());
        library.addExam(name, u"理"_s, 7, {});
        library.addScores(name, 1, 1, {{u"语文"_s, 90}});
        const QString before = library.rows(numbers);
        library.dialogs.failures.clear();
        library.dialogs.expect(u"确实要保存修改吗"_s, runtime::Answer::Ok);
        workbench::saveExamOrder(library.scores, {u"期末"_s, name});
        EXPECT_EQ(library.dialogs.failures,
                  QStringList(4, u"语句有语法错误，在“'”处引号不配对或字符无效。（unrecognized "
                                 "token: \"'\"） - Private Sub Command1_Click/FormKaoShi"_s));
        EXPECT_EQ(library.dialogs.shown.last(), u"保存完毕！"_s);
        EXPECT_EQ(library.rows(numbers), before);
    }
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
