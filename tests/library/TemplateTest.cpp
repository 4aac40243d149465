#include <gtest/gtest.h>

#include "platform/database/Error.h"
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
        for (const database::Column& column : test.scores.Conn.columns(table))
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
                    .startsWith(u"id 考试编号 类别代码 班级 学号 姓名 科类 考试名称 语文"_s));
    EXPECT_TRUE(columns(u"考试名称表"_s).startsWith(u"ID 考试名称 科类 考试编号 备注 语文"_s));
    EXPECT_EQ(columns(u"分班表"_s), u"班级 学号 姓名 新班级 新学号 已分班 ID"_s);
    EXPECT_EQ(columns(u"详细设置表"_s), u"设置名称 科类 科目 条件1 分数1 条件2 分数2"_s);
    EXPECT_EQ(columns(u"教师表"_s), u"考试名称 班级 语文"_s);
    EXPECT_EQ(columns(u"总分公式"_s), u"总分 公式"_s);
    EXPECT_EQ(columns(u"自定义显示表"_s), u"项目名称 显示项目"_s);
    EXPECT_EQ(columns(u"颜色表"_s), u"ID 颜色"_s);
    EXPECT_EQ(columns(u"特值表"_s), u"txt z"_s);
}

TEST_F(Template, NumbersExamsInSixteenBits)
{
    for (const QString& table : {u"考试名称表"_s, u"成绩表"_s}) {
        const database::TableColumns& fields = test.scores.Conn.columns(table);
        EXPECT_EQ(fields.at(fields.find(u"考试编号"_s)).type.kind,
                  database::ColumnType::Kind::Integer)
            << table.toStdString();
    }
}

TEST_F(Template, KeepsOneFormulaOfATotalAndOneSelectionOfAName)
{
    const std::pair<QString, QString> keys[] = {{u"总分公式"_s, u"总分"_s},
                                                {u"自定义显示表"_s, u"项目名称"_s}};
    for (const auto& [table, key] : keys) {
        test.execute(u"insert into %1(%2) values('T分全')"_s.arg(table, key));
        try {
            test.execute(u"insert into %1(%2) values('t分全')"_s.arg(table, key));
            ADD_FAILURE() << table.toStdString();
        } catch (const database::Error& error) {
            EXPECT_EQ(error.failure(), database::Failure::Value) << table.toStdString();
        }
        EXPECT_EQ(test.rows(u"select count(*) from %1 where %2='T分全'"_s.arg(table, key)), u"1"_s);
    }
}

TEST_F(Template, KeepsOneRowForTheItemWithTheTrailingBlank)
{
    for (const QString& name : {u"历次考试进入年级前x名人数"_s, u"历次考试进入年级前x名人数 "_s})
        EXPECT_EQ(test.rows(u"select ID from 设置表 where 名称='%1'"_s.arg(name)), u"19"_s);
}

TEST_F(Template, HasDefaultFormulasAndSixteenDistinctColors)
{
    EXPECT_EQ(test.rows(u"select 总分, 公式 from 总分公式 order by rowid"_s),
              u"总分|语文+数学+英语+物理+化学+生物+政治+历史+地理 / "
              "文科总分|语文+数学+英语+政治+历史+地理 / "
              "理科总分|语文+数学+英语+物理+化学+生物 / "
              "三科总分|语文+数学+英语 / 文综总分|政治+历史+地理 / 理综总分|物理+化学+生物"_s);
    EXPECT_EQ(test.rows(u"select count(*), count(distinct 颜色), min(ID), max(ID) from 颜色表"_s),
              u"16|16|0|15"_s);
}

TEST_F(Template, OffersClassAndNumberFromTheFourthScoreColumnOn)
{
    const database::TableColumns& scores = test.scores.Conn.columns(u"成绩表"_s);
    EXPECT_EQ(scores.find(u"班级"_s), 3);
    EXPECT_EQ(scores.find(u"学号"_s), 4);
}

TEST_F(Template, HasRoomForASettingOfAnyLength)
{
    database::Recordset rows;
    rows.Open(u"select * from 设置表 where ID=14"_s, test.scores.Conn);
    const QString lines(3000, u'5');
    rows.Fields(u"设置"_s).setValue(lines);
    rows.Update();
    EXPECT_EQ(test.rows(u"select 设置 from 设置表 where ID=14"_s), lines);
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
