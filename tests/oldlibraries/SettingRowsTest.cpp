#include <gtest/gtest.h>

#include "CopiedLibrary.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;

TEST(SettingRows, AMissingSettingComesBehindTheOthers)
{
    CopiedLibrary library;
    library.execute(u"delete from 设置表 where ID in (6, 18)"_s);
    library.execute(u"update 设置表 set ID=ID-1 where ID>6"_s);
    library.execute(u"update 设置表 set ID=ID-1 where ID>17"_s);
    EXPECT_EQ(library.complete(),
              u"设置表|0|名称|各科良好率|旧库没有这项设置，已经加上默认值，ID 是 20。\n"
              "设置表|0|名称|考试人数|旧库没有这项设置，已经加上默认值，ID 是 21。"_s);
    EXPECT_EQ(library.rows(u"select 名称, 设置, 加入综合分析, 各科条件, 自定义 from 设置表 "
                           "where ID=20"_s),
              u"各科良好率|[0.75,0.85)|是|点此设置各科条件|0"_s);
    EXPECT_EQ(library.complete(), QString());
}

TEST(SettingRows, ASettingIsKnownWithBlanksBehindItsName)
{
    CopiedLibrary library;
    library.execute(u"update 设置表 set 名称='历次考试进入年级前x名人数' where ID=19"_s);
    library.execute(u"update 设置表 set 名称='T分  ' where ID=1"_s);
    EXPECT_EQ(library.complete(), QString());
}

TEST(SettingRows, SettingsAreNumberedFromOneWithoutGaps)
{
    const struct
    {
        QString change;
        QStringList findings;
    } changes[] = {
        // Gaps.
        {u"update 设置表 set ID=30 where ID=21"_s,
         {u"21|名称|进行对比分析的考试|ID 从“30”改为 21。"_s}},
        // None at all.
        {u"update 设置表 set ID=null where ID=21"_s,
         {u"21|名称|进行对比分析的考试|ID 从“”改为 21。"_s}},
        // The same number twice: the order of the rows decides.
        {u"update 设置表 set ID=20 where ID=21"_s,
         {u"21|名称|进行对比分析的考试|ID 从“20”改为 21。"_s}},
        // The first ones stand elsewhere.
        {u"update 设置表 set ID=case ID when 3 then 6 when 6 then 3 else ID end"_s,
         {u"3|名称|高分段|ID 从“6”改为 3。"_s, u"5|名称|各科优秀率|ID 从“5”改为 6。"_s,
          u"6|名称|各科良好率|ID 从“3”改为 5。"_s}},
        // Those without a number come last.
        {u"update 设置表 set ID=null where ID=20"_s,
         {u"20|名称|历次总分上线人数|ID 从“”改为 21。"_s,
          u"21|名称|进行对比分析的考试|ID 从“21”改为 20。"_s}},
        {u"update 设置表 set ID='x' where ID=20"_s,
         {u"20|名称|历次总分上线人数|ID 从“x”改为 21。"_s,
          u"21|名称|进行对比分析的考试|ID 从“21”改为 20。"_s}},
        // Numbers below 1.
        {u"update 设置表 set ID='50%1' where ID=21"_s,
         {u"21|名称|进行对比分析的考试|ID 从“50%1”改为 21。"_s}},
        {u"update 设置表 set ID=-5 where ID=1"_s, {u"1|名称|T分|ID 从“-5”改为 1。"_s}},
    };
    for (const auto& change : changes) {
        SCOPED_TRACE(qPrintable(change.change));
        CopiedLibrary library;
        library.execute(change.change);
        QStringList findings = library.complete().split(u'\n');
        findings.sort();
        QStringList expected;
        for (const QString& finding : change.findings)
            expected.append(u"设置表|"_s + finding);
        EXPECT_EQ(findings.join(u'\n'), expected.join(u'\n'));
        EXPECT_EQ(library.rows(u"select min(ID), max(ID), count(distinct ID) from 设置表"_s),
                  u"1|21|21"_s);
        EXPECT_EQ(library.rows(u"select 名称 from 设置表 where ID<=4 order by ID"_s),
                  u"T分 / 参与统计的学生类别代码 / 高分段 / 低分段"_s);
        EXPECT_EQ(library.complete(), QString());
    }
}

TEST(SettingRows, OneOfTheFirstSettingsThatIsMissingTakesItsPlace)
{
    CopiedLibrary library;
    library.execute(u"delete from 设置表 where ID=2"_s);
    const QString findings = library.complete();
    EXPECT_TRUE(findings.contains(u"设置表|0|名称|参与统计的学生类别代码|"
                                  "旧库没有这项设置，已经加上默认值，ID 是 2。"_s));
    EXPECT_EQ(findings.count(u'\n'), 0);
    EXPECT_EQ(library.rows(u"select ID, 名称 from 设置表 where ID between 2 and 5 order by ID"_s),
              u"2|参与统计的学生类别代码 / 3|高分段 / 4|低分段 / 5|各科优秀率"_s);
}

TEST(SettingRows, SettingsWhoseNumbersTheEngineKeepsApartAreRenumbered)
{
    CopiedLibrary library;
    std::vector<ColumnDeclaration> columns =
        database::columnDeclarations(library.conn, u"设置表"_s);
    columns[0] = {u"ID"_s, u"INTEGER"_s, {}, {}, ColumnDeclaration::Key::AutoNumber};
    library.remake(u"设置表"_s, columns);
    library.execute(u"delete from 设置表 where ID=7"_s);
    library.execute(u"update 设置表 set ID=ID+100 where ID<3"_s);
    EXPECT_NE(library.complete(), QString());
    EXPECT_EQ(library.rows(u"select group_concat(ID) from 设置表"_s),
              u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21"_s);
    EXPECT_EQ(library.rows(u"select 名称 from 设置表 where ID in (1,2,7,21) order by ID"_s),
              u"T分 / 参与统计的学生类别代码 / 各科差生率 / 各科及格率"_s);
    EXPECT_EQ(library.complete(), QString());
}

TEST(SettingRows, SettingsOfTheSchoolsOwnStay)
{
    CopiedLibrary library;
    const QString hostile = u"'; drop table 设置表 --"_s;
    database::Recordset rows;
    rows.Open(u"select * from 设置表"_s, library.conn);
    rows.AddNew();
    rows.Fields(0).setValue(22);
    rows.Fields(1).setValue(hostile);
    rows.Update();
    library.execute(u"insert into 设置表(ID,名称) values (23,'各科优秀率'),(24,null)"_s);
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(library.rows(u"select 名称 from 设置表 where ID>21 order by ID"_s),
              hostile + u" / 各科优秀率 / NULL"_s);
}

TEST(SettingRows, ColorsThatAreMissingAreAdded)
{
    CopiedLibrary library;
    const QString color = library.rows(u"select 颜色 from 颜色表 where ID=4"_s);
    library.execute(u"delete from 颜色表 where ID in (0, 4)"_s);
    // The lines count from 1.
    EXPECT_EQ(library.complete(),
              u"颜色表|0|ID|4|旧库没有这个编号的曲线颜色，已经加上默认颜色。"_s);
    EXPECT_EQ(library.rows(u"select 颜色 from 颜色表 where ID=4"_s), color);
    EXPECT_EQ(library.complete(), QString());
}

TEST(SettingRows, ColorsAreReachedByTheirPlace)
{
    CopiedLibrary library;
    library.remake(u"颜色表"_s, {{u"ID"_s, u"Long INTEGER"_s}, {u"值"_s, u"Long INTEGER"_s}});
    library.execute(u"delete from 颜色表 where ID=4"_s);
    EXPECT_EQ(library.complete(),
              u"颜色表|0|ID|4|旧库没有这个编号的曲线颜色，已经加上默认颜色。"_s);
    EXPECT_EQ(library.columns(u"颜色表"_s), u"ID 值"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 颜色表 where 值>0"_s), u"1"_s);
}
