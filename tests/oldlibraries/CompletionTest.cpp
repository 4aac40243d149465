#include "oldlibraries/Completion.h"

#include <gtest/gtest.h>

#include "CopiedLibrary.h"
#include "platform/database/TableNames.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;

namespace {

const QString tablesAndIndexes =
    u"select type, name from sqlite_master where name not like 'sqlite%' order by name"_s;

/// How many findings a table without this column brings.
int expectedFindings(const QString& table, const QString& column)
{
    // Besides, all settings get their numbers anew, and are missing where none has a name.
    if (table == u"设置表"_s && column == u"ID"_s)
        return 1 + 21;
    if (table == u"设置表"_s && column == u"名称"_s)
        return 1 + 21 + 21;
    // No colour has a number.
    return table == u"颜色表"_s && column == u"ID"_s ? 1 + 15 : 1;
}

std::vector<ColumnDeclaration> declared(const QStringList& names)
{
    std::vector<ColumnDeclaration> columns;
    for (const QString& name : names) {
        if (name == u"ID"_s)
            columns.push_back({name, u"INTEGER"_s, {}, {}, ColumnDeclaration::Key::AutoNumber});
        else
            columns.push_back({name, u"text(50)"_s});
    }
    return columns;
}

} // namespace

TEST(Completion, ALibraryThatLacksNothingStaysAsItIs)
{
    CopiedLibrary library;
    const QByteArray before = support::read(library.path());
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(support::read(library.path()), before);
}

TEST(Completion, EachMissingTableIsMadeWithItsRows)
{
    CopiedLibrary whole;
    const QString all = whole.rows(tablesAndIndexes);
    const struct
    {
        QString table;
        int rows;
    } tables[] = {{u"信息表"_s, 0},  {u"分班表"_s, 0},     {u"总分公式"_s, 6},
                  {u"设置表"_s, 21}, {u"详细设置表"_s, 0}, {u"自定义显示表"_s, 0},
                  {u"颜色表"_s, 16}, {u"特值表"_s, 2},     {u"考试名称表"_s, 0}};
    for (const auto& missing : tables) {
        SCOPED_TRACE(qPrintable(missing.table));
        CopiedLibrary library{QStringList()};
        library.execute(u"drop table "_s + missing.table);
        const QString rows =
            missing.rows == 0 ? QString() : u"，内容是新成绩库的 %1 行默认值"_s.arg(missing.rows);
        EXPECT_EQ(library.complete(),
                  missing.table + u"|0|||旧库没有这个表，已经建立"_s + rows + u"。"_s);
        EXPECT_EQ(library.rows(tablesAndIndexes), all);
        EXPECT_EQ(library.columns(missing.table),
                  CopiedLibrary(QStringList()).columns(missing.table));
        EXPECT_EQ(library.rows(u"select count(*) from "_s + missing.table),
                  QString::number(missing.rows));
        EXPECT_EQ(library.complete(), QString());
    }
}

TEST(Completion, MissingTablesOfScoresAndTeachersGetTheSubjects)
{
    CopiedLibrary library;
    const QString scores = library.columns(u"成绩表"_s);
    const QString teachers = library.columns(u"教师表"_s);
    library.execute(u"drop table 成绩表"_s);
    library.execute(u"drop table 教师表"_s);
    const QString findings = library.complete();
    EXPECT_EQ(findings.count(u'\n') + 1, 2 + 11 + 2);
    EXPECT_TRUE(findings.startsWith(u"成绩表|0|||旧库没有这个表，已经建立。\n"
                                    "教师表|0|||旧库没有这个表，已经建立。\n"
                                    "成绩表|0|语文||考试名称表里有“语文”，这里缺少这一列，"
                                    "已经添加，没有值。\n"_s))
        << qPrintable(findings);
    // 备注 comes when a library is created, and nothing needs it.
    EXPECT_EQ(library.columns(u"教师表"_s), teachers);
    for (const QString& column : library.columns(u"成绩表"_s).split(u' '))
        EXPECT_TRUE(scores.split(u' ').contains(column)) << qPrintable(column);
    EXPECT_EQ(library.complete(), QString());
}

TEST(Completion, TablesAndColumnsOfTheSchoolsOwnStay)
{
    CopiedLibrary library;
    library.execute(u"create table 家长 (电话 text(50))"_s);
    library.execute(u"insert into 家长 values ('007')"_s);
    library.execute(u"alter table 信息表 add column 电话 text(50)"_s);
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(library.rows(u"select * from 家长"_s), u"007"_s);
    EXPECT_TRUE(library.columns(u"信息表"_s).endsWith(u" 电话"_s));
}

TEST(Completion, EachMissingColumnIsAdded)
{
    CopiedLibrary whole{QStringList()};
    for (const QString& table : database::tableNames(whole.conn)) {
        if (table == u"sqlite_sequence"_s)
            continue;
        for (const QString& column : whole.columns(table).split(u' ')) {
            if (table == u"成绩表"_s && column == u"备注"_s)
                continue;
            SCOPED_TRACE(qPrintable(table + u'.' + column));
            CopiedLibrary library{QStringList()};
            library.removeColumn(table, column);
            const QString findings = library.complete();
            EXPECT_EQ(findings.count(u'\n') + 1, expectedFindings(table, column));
            EXPECT_TRUE(
                findings.startsWith(table + u"|0|"_s + column + u"||旧库没有这一列，已经添加，"_s))
                << qPrintable(findings);
            EXPECT_EQ(library.rows(tablesAndIndexes), whole.rows(tablesAndIndexes));
            EXPECT_TRUE(library.columns(table).split(u' ').contains(column));
            EXPECT_EQ(library.complete(), QString());
        }
    }
}

TEST(Completion, WhatIsAddedHasItsDefault)
{
    CopiedLibrary library;
    library.execute(u"insert into 信息表(ID,姓名) values (5,'甲'),(9,'乙')"_s);
    library.removeColumn(u"信息表"_s, u"类别代码"_s);
    EXPECT_EQ(library.complete(), u"信息表|0|类别代码||旧库没有这一列，已经添加，值是 1。"_s);
    EXPECT_EQ(library.rows(u"select ID, 姓名, 类别代码 from 信息表"_s), u"5|甲|1 / 9|乙|1"_s);
}

TEST(Completion, AddedStreamsAndCategoriesAreThoseByWhichRowsAreFound)
{
    CopiedLibrary library;
    library.execute(u"insert into 信息表(ID,姓名,科类,类别代码) "
                    "values (5,'甲','文',2),(9,'乙','理',null),(12,'丙','',3)"_s);
    library.execute(u"insert into 成绩表(id) values (9),(5),(null),(77),(12)"_s);
    library.execute(u"insert into 考试名称表(考试名称) values ('期中')"_s);
    for (const QString& column : {u"科类"_s, u"类别代码"_s})
        library.removeColumn(u"成绩表"_s, column);
    library.removeColumn(u"考试名称表"_s, u"科类"_s);
    const QString like = u"旧库没有这一列，已经添加，值与学生信息一致，查不到学生的是 %1。"_s;
    EXPECT_EQ(library.complete(), u"成绩表|0|类别代码||%1\n成绩表|0|科类||%2\n"
                                  "考试名称表|0|科类||旧库没有这一列，已经添加，值是 理。"_s.arg(
                                      like.arg(1), like.arg(u"理"_s)));
    EXPECT_EQ(library.rows(u"select id, 类别代码, 科类 from 成绩表"_s),
              u"9|1|理 / 5|2|文 / NULL|1|理 / 77|1|理 / 12|3|理"_s);
    EXPECT_EQ(library.rows(u"select 考试名称, 科类 from 考试名称表"_s), u"期中|理"_s);

    library.removeColumn(u"信息表"_s, u"科类"_s);
    EXPECT_EQ(library.complete(), u"信息表|0|科类||旧库没有这一列，已经添加，值是 理。"_s);
    EXPECT_EQ(library.rows(u"select ID, 科类 from 信息表"_s), u"5|理 / 9|理 / 12|理"_s);
}

TEST(Completion, RowsThatHaveNoNumberGetOne)
{
    CopiedLibrary library;
    library.execute(u"insert into 信息表(ID,姓名) values (5,'甲'),(9,'乙')"_s);
    library.removeColumn(u"信息表"_s, u"ID"_s);
    EXPECT_EQ(library.complete(), u"信息表|0|ID||旧库没有这一列，已经添加，各行从 1 起编号。"_s);
    EXPECT_EQ(library.rows(u"select * from 信息表"_s).left(4), u"1|NU"_s);
    EXPECT_EQ(library.rows(u"select ID, 姓名 from 信息表"_s), u"1|甲 / 2|乙"_s);
}

TEST(Completion, RowsThatAnotherColumnNumbersKeepThoseNumbers)
{
    CopiedLibrary library;
    std::vector<ColumnDeclaration> columns =
        database::columnDeclarations(library.conn, u"信息表"_s);
    columns[0].name = u"编号"_s;
    library.remake(u"信息表"_s, columns);
    library.execute(u"insert into 信息表(编号,姓名) values (5,'甲'),(9,'乙'),(30,'丙')"_s);
    library.execute(u"delete from 信息表 where 编号=30"_s);
    EXPECT_EQ(library.complete(), u"信息表|0|ID||旧库没有这一列，已经添加，编号与“编号”列相同。"_s);
    EXPECT_EQ(library.rows(u"select ID, 编号, 姓名 from 信息表"_s), u"5|5|甲 / 9|9|乙"_s);
    library.execute(u"insert into 信息表(姓名) values ('丁')"_s);
    EXPECT_EQ(library.rows(u"select ID, 编号 from 信息表 where 姓名='丁'"_s), u"31|NULL"_s);
    EXPECT_EQ(library.complete(), QString());
}

TEST(Completion, TheFixedColumnsOfExamsStandAheadOfTheSubjects)
{
    const struct
    {
        QStringList before;
        QString after;
        int findings;
    } tables[] = {
        {{u"ID"_s, u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"语文"_s, u"总分"_s},
         u"ID 考试名称 科类 考试编号 备注 语文 总分"_s,
         1},
        {{u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"语文"_s, u"总分"_s},
         u"考试名称 科类 考试编号 ID 备注 语文 总分"_s,
         2},
        {{u"考试名称"_s, u"科类"_s, u"语文"_s, u"总分"_s},
         u"考试名称 科类 ID 考试编号 备注 语文 总分"_s,
         3},
        {{u"科类"_s, u"考试名称"_s, u"备注"_s, u"语文"_s, u"总分"_s},
         u"科类 考试名称 备注 ID 考试编号 语文 总分"_s,
         2},
        {{u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"语文"_s, u"总分"_s, u"备注"_s},
         u"考试名称 科类 考试编号 ID 备注 语文 总分"_s,
         1},
        // At the places that nothing calls by name anything can stand.
        {{u"考试编号"_s, u"考试名称"_s, u"科类"_s, u"考试时间"_s, u"说明"_s, u"语文"_s, u"总分"_s},
         u"考试编号 考试名称 科类 考试时间 说明 语文 总分"_s,
         0},
        {{u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"考试时间"_s, u"语文"_s, u"总分"_s},
         u"考试名称 科类 考试编号 考试时间 备注 语文 总分"_s,
         1},
        // The first subject is unknown to 成绩表, and behind the fifth column all the same.
        {{u"ID"_s, u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"备注"_s, u"体育"_s, u"语文"_s,
          u"总分"_s},
         u"ID 考试名称 科类 考试编号 备注 体育 语文 总分"_s,
         6},
    };
    for (const auto& table : tables) {
        SCOPED_TRACE(qPrintable(table.before.join(u' ')));
        CopiedLibrary library;
        library.remake(u"考试名称表"_s, declared(table.before));
        const QString findings = library.complete();
        EXPECT_EQ(library.columns(u"考试名称表"_s), table.after);
        EXPECT_EQ(findings.isEmpty() ? 0 : findings.count(u'\n') + 1, table.findings)
            << qPrintable(findings);
        EXPECT_EQ(library.complete(), QString());
    }
}

TEST(Completion, ARebuiltTableKeepsItsRowsAndItsLastNumber)
{
    CopiedLibrary library;
    library.execute(u"insert into 考试名称表(ID,考试名称,语文,总分) "
                    "values (3,'期中',150,'语文'),(7,'期末',120,'语文'),(9,'月考',0,'')"_s);
    library.removeColumn(u"考试名称表"_s, u"备注"_s);
    library.execute(u"delete from 考试名称表 where ID=9"_s);
    EXPECT_EQ(library.complete(), u"考试名称表|0|备注||旧库没有这一列，已经添加，没有值。"_s);
    EXPECT_EQ(library.rows(u"select * from 考试名称表"_s),
              u"3|期中|NULL|NULL|NULL|150|语文 / 7|期末|NULL|NULL|NULL|120|语文"_s);
    library.execute(u"insert into 考试名称表(考试名称) values ('新')"_s);
    EXPECT_EQ(library.rows(u"select max(ID) from 考试名称表"_s), u"10"_s);
}

TEST(Completion, ARebuiltTableWithoutKeyKeepsTheOrderOfItsRows)
{
    CopiedLibrary library;
    library.execute(
        u"insert into 详细设置表(设置名称,科目) values ('b','1'),('a','2'),('c','3')"_s);
    library.execute(u"delete from 详细设置表 where 科目='1'"_s);
    library.removeColumn(u"详细设置表"_s, u"科类"_s);
    library.complete();
    EXPECT_EQ(library.rows(u"select 设置名称, 科类, 科目 from 详细设置表"_s),
              u"a|NULL|2 / c|NULL|3"_s);
}

TEST(Completion, SettingsAreReachedByTheirPlaces)
{
    CopiedLibrary library;
    library.remake(u"设置表"_s,
                   declared({u"ID"_s, u"名称"_s, u"设置"_s, u"加入综合分析"_s, u"点此"_s}));
    EXPECT_EQ(library.complete(), u"设置表|0|选项||旧库没有这一列，已经添加，没有值。\n"
                                  "设置表|0|自定义||旧库没有这一列，已经添加，没有值。"_s);
    EXPECT_EQ(library.columns(u"设置表"_s), u"ID 名称 设置 加入综合分析 点此 选项 自定义"_s);
    // The choices of a list are not the school's own: without them it could not choose.
    EXPECT_EQ(library.rows(u"select 选项, 自定义 from 设置表 where 名称='各科平均分'"_s),
              u"使用教师名单,不使用教师名单|0"_s);
}

TEST(Completion, AMissingIndexIsMadeWithoutAWord)
{
    CopiedLibrary library;
    const QString before = library.rows(tablesAndIndexes);
    library.execute(u"drop index 成绩表_学生"_s);
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(library.rows(tablesAndIndexes), before);
}

TEST(Completion, AnIndexThatCannotBeMadeIsTold)
{
    CopiedLibrary library;
    library.execute(u"drop index 成绩表_学生"_s);
    library.execute(u"create table 成绩表_学生 (x)"_s);
    const QString finding = library.complete();
    EXPECT_TRUE(finding.startsWith(u"成绩表|0||成绩表_学生|索引没有建立，查找会慢一些："_s))
        << qPrintable(finding);
    EXPECT_EQ(finding.count(u'\n'), 0);
}

TEST(Completion, ColumnsThatASubjectLacksAreAdded)
{
    const QString sentence = u"||考试名称表里有“%1”，这里缺少这一列，已经添加，没有值。"_s;
    CopiedLibrary library;
    library.execute(u"insert into 成绩表(id,语文) values (1, 90.5)"_s);
    const QString before = library.columns(u"成绩表"_s);
    library.removeColumn(u"成绩表"_s, u"语文Z分"_s);
    library.removeColumn(u"成绩表"_s, u"总分T分年名"_s);
    library.removeColumn(u"教师表"_s, u"总分"_s);
    EXPECT_EQ(library.complete(), u"成绩表|0|语文Z分"_s + sentence.arg(u"语文"_s)
                                      + u"\n成绩表|0|总分T分年名"_s + sentence.arg(u"总分"_s)
                                      + u"\n教师表|0|总分"_s + sentence.arg(u"总分"_s));
    EXPECT_EQ(library.rows(u"select id, 语文, 语文Z分, 总分T分年名 from 成绩表"_s),
              u"1|90.5|NULL|NULL"_s);
    QStringList columns = library.columns(u"成绩表"_s).split(u' ');
    QStringList expected = before.split(u' ');
    columns.sort();
    expected.sort();
    EXPECT_EQ(columns, expected);
    EXPECT_EQ(library.complete(), QString());
}

TEST(Completion, AddedColumnsKeepWhatTheirKindKeeps)
{
    CopiedLibrary library;
    const auto declarations = [&] {
        QStringList texts;
        for (const auto& column : database::columnDeclarations(library.conn, u"成绩表"_s)) {
            if (column.name.startsWith(u"总分"_s))
                texts.append(column.name + u' ' + column.type);
        }
        return texts;
    };
    const QStringList before = declarations();
    for (const QString& column :
         {u"总分"_s, u"总分年名"_s, u"总分班名"_s, u"总分Z分"_s, u"总分T分"_s, u"总分T分年名"_s})
        library.removeColumn(u"成绩表"_s, column);
    library.complete();
    EXPECT_EQ(declarations(), before);
}

TEST(Completion, SubjectsCanHaveAnyName)
{
    CopiedLibrary library{QStringList()};
    const QString name = u"O'Neil -- \"x\"; y"_s;
    library.execute(u"alter table main.考试名称表 add column ["_s + name + u"] Single REAL"_s);
    EXPECT_EQ(library.complete().count(u'\n') + 1, 6);
    EXPECT_TRUE(library.columns(u"教师表"_s).endsWith(name));
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(library.faults(), QString());
}

TEST(Completion, MuchCanBeMissingTogether)
{
    CopiedLibrary library;
    library.execute(
        u"insert into 考试名称表(考试名称,科类,考试编号,语文) values ('期中','理',1,150)"_s);
    library.removeColumn(u"考试名称表"_s, u"备注"_s);
    library.removeColumn(u"成绩表"_s, u"语文年名"_s);
    library.removeColumn(u"信息表"_s, u"照片名"_s);
    library.execute(u"drop table 颜色表"_s);
    library.execute(u"drop table 详细设置表"_s);
    library.execute(u"delete from 设置表 where ID=12"_s);
    // 语文 has lost what tells a subject: the place does then.
    const QString findings = library.complete();
    EXPECT_EQ(library.complete(), QString());
    EXPECT_EQ(library.rows(u"select count(*) from 设置表"_s), u"21"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 颜色表"_s), u"16"_s);
    for (const QString& finding :
         {u"详细设置表|0|||旧库没有这个表，已经建立。"_s,
          u"颜色表|0|||旧库没有这个表，已经建立，内容是新成绩库的 16 行默认值。"_s,
          u"信息表|0|照片名||旧库没有这一列，已经添加，没有值。"_s,
          u"设置表|0|名称|各科标准差|旧库没有这项设置，已经加上默认值，ID 是 21。"_s})
        EXPECT_TRUE(findings.split(u'\n').contains(finding)) << qPrintable(finding);
}
