#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class Template : public testing::Test
{
protected:
    QString columns(const QString& table)
    {
        QStringList names;
        for (const jet::Column& column : test.scores.Conn.columns(table))
            names.append(column.name);
        return names.join(u' ');
    }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(Template, HasTheTablesInTheirOrder)
{
    EXPECT_EQ(test.rows(u"select name from sqlite_master where type='table' and "
                        "name not like 'sqlite%' order by rowid"_s),
              u"信息表 / 成绩表 / 考试名称表 / 教师表 / 分班表 / 总分公式 / 设置表 / 详细设置表 / "
              "自定义显示表 / 颜色表 / 特值表"_s);
}

TEST_F(Template, HasTheFixedColumns)
{
    EXPECT_EQ(
        columns(u"信息表"_s),
        u"ID 班级 学号 姓名 科类 类别代码 类别 性别 出生时间 入学时间 学籍号 原毕业学校 身份证 "
        "民族 籍贯 备注 照片名 照片"_s);
    EXPECT_TRUE(columns(u"成绩表"_s)
                    .startsWith(u"id 班级 学号 姓名 类别代码 科类 考试名称 考试编号 语文"_s));
    EXPECT_TRUE(columns(u"考试名称表"_s).startsWith(u"ID 考试名称 科类 考试编号 备注 语文"_s));
    EXPECT_EQ(columns(u"分班表"_s), u"班级 学号 姓名 新班级 新学号 已分班 ID"_s);
    EXPECT_EQ(columns(u"详细设置表"_s), u"设置名称 科类 科目 条件1 分数1 条件2 分数2"_s);
}

TEST_F(Template, HasTheSettingsInOrderWithoutGaps)
{
    EXPECT_EQ(test.rows(u"select ID, 名称 from 设置表 order by ID"_s),
              u"1|T分 / 2|参与统计的学生类别代码 / 3|高分段 / 4|低分段 / 5|各科优秀率 / "
              "6|各科良好率 / 7|各科及格率 / 8|各科差生率 / 9|各科平均分 / 10|各科最高分 / "
              "11|各科最低分 / 12|各科标准差 / 13|各分数段人数 / 14|总分上线人数 / "
              "15|各名次段均分 / 16|各名次段人数 / 17|历次各名次段人数对比 / 18|考试人数 / "
              "19|历次考试进入年级前x名人数  / 20|历次总分上线人数 / 21|进行对比分析的考试"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 设置表 where 各科条件='点此设置各科条件'"_s),
              u"6"_s);
    EXPECT_EQ(test.rows(u"select 设置 from 设置表 where ID in (1,3,4,5,6,7,8,13)"_s),
              u"10z+50 / [0.9,1] / [0,0.4) / [0.85,1] / [0.75,0.85) / [0.6,1] / [0,0.4) / "
              "单科10,总分50"_s);
}

TEST_F(Template, KeepsOneRowForTheItemWithTheTrailingBlank)
{
    for (const QString& name : {u"历次考试进入年级前x名人数"_s, u"历次考试进入年级前x名人数 "_s})
        EXPECT_EQ(test.rows(u"select ID from 设置表 where 名称='%1'"_s.arg(name)), u"19"_s);
}

TEST_F(Template, HasDefaultFormulasAndSixteenDistinctColors)
{
    EXPECT_EQ(test.rows(u"select 公式 from 总分公式 where 总分='理科总分'"_s),
              u"语文+数学+英语+物理+化学+生物"_s);
    EXPECT_EQ(test.rows(u"select 总分 from 总分公式 order by rowid"_s),
              u"总分 / 文科总分 / 理科总分 / 三科总分 / 文综总分 / 理综总分"_s);
    EXPECT_EQ(test.rows(u"select count(*), count(distinct 颜色), max(ID) from 颜色表"_s),
              u"16|16|16"_s);
}

TEST_F(Template, TheMarkOfAMovedStudentHoldsAnIdentity)
{
    test.execute(u"insert into 分班表(班级) values(1)"_s);
    test.execute(u"insert into 分班表(班级,已分班) values(2,70000)"_s);
    EXPECT_EQ(test.rows(u"select 已分班 from 分班表"_s), u"0 / 70000"_s);
}

TEST_F(Template, GivesAStudentACategory)
{
    test.execute(u"insert into 信息表(班级) values(1)"_s);
    EXPECT_EQ(test.rows(u"select 类别代码 from 信息表"_s), u"1"_s);
}

} // namespace
