#include "workbench/TypedStatement.h"

#include <QDir>
#include <QFileInfo>

#include "WorkbenchFixture.h"
#include "platform/database/Error.h"

namespace {

using namespace Qt::StringLiterals;

class TypedStatement : public WorkbenchTest
{
protected:
    TypedStatement()
    {
        library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        library.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 80}});
    }

    bool mayRun(const QString& sql)
    {
        runtime::NoProgress progress;
        return workbench::mayRun(library.scores, sql, progress);
    }

    qsizetype copies() const
    {
        return QDir(QFileInfo(library.scores.LibPath).path()).entryList({u"*.bak"_s}).size();
    }
};

TEST_F(TypedStatement, WhatOnlyReadsIsNotAskedAbout)
{
    for (const QString& sql :
         {u"select * from 成绩表"_s, u"with n as (select 1) select * from n"_s, u"values (1)"_s})
        EXPECT_TRUE(mayRun(sql)) << sql.toStdString();
    EXPECT_EQ(library.dialogs.questions, QStringList());
    EXPECT_EQ(copies(), 0);
}

TEST_F(TypedStatement, AChangeIsToldWithItsRowsAndTakenBackUntilItIsWanted)
{
    const std::vector<std::pair<QString, QString>> cases{
        {u"update 成绩表 set 语文=0"_s, u"会改动成绩库里的 2 行"_s},
        {u"update 成绩表 set 语文=0 where 班级=9"_s, u"会改动成绩库里的 0 行"_s},
        {u"delete * from 成绩表 where 语文>85"_s, u"会改动成绩库里的 1 行"_s},
        {u"insert into 成绩表(班级) values (1),(2),(3)"_s, u"会改动成绩库里的 3 行"_s},
        {u"update 成绩表 set 语文=0 returning 班级"_s, u"会改动成绩库里的 2 行"_s},
        {u"ALTER TABLE 成绩表 add COLUMN 体育 Single"_s, u"会改变成绩库的表和列"_s},
        {u"drop table 成绩表"_s, u"会改变成绩库的表和列"_s},
    };
    for (const auto& [sql, says] : cases) {
        library.dialogs.expect(says, u"取消"_s);
        EXPECT_FALSE(mayRun(sql)) << sql.toStdString();
        EXPECT_EQ(library.dialogs.safeOf(says), u"取消"_s);
        EXPECT_EQ(library.rows(u"select 语文 from 成绩表"_s), u"90 / 80"_s);
    }
    EXPECT_TRUE(library.dialogs.questions.first().contains(u"update 成绩表 set 语文=0"_s));
    EXPECT_EQ(copies(), 0);
}

TEST_F(TypedStatement, ACopyStandsBeforeAWantedChangeRuns)
{
    library.dialogs.expect(u"会改动成绩库里的 2 行"_s, u"执行"_s);
    EXPECT_TRUE(mayRun(u"delete from 成绩表"_s));
    EXPECT_EQ(copies(), 1);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表"_s), u"2"_s);
}

TEST_F(TypedStatement, WhatCannotRunIsNotAskedAbout)
{
    for (const QString& sql :
         {u"update 成绩表 set 体育=1"_s, u"delete from 成绩表; delete from 信息表"_s,
          u"update 成绩表 set 语文=1 -- 全部"_s, u"attach 'x' as y"_s, u"begin"_s, QString()})
        EXPECT_THROW(mayRun(sql), runtime::Error) << sql.toStdString();
    EXPECT_EQ(library.dialogs.questions, QStringList());
}

TEST_F(TypedStatement, ALongStatementIsQuotedInPart)
{
    library.dialogs.expect(u"……"_s, u"取消"_s);
    mayRun(u"delete from 成绩表 where 姓名 in ("_s + u"'甲',"_s.repeated(5000) + u"'')"_s);
    EXPECT_LT(library.dialogs.questions.first().size(), 400);
}

} // namespace
