#include "platform/database/Sql.h"

#include <random>

#include "DatabaseFile.h"
#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

/// "table;where;order" of a query over one table, "-" for any other.
QString parts(const QString& sql)
{
    const std::optional<TableQuery> query = SqlText(sql).tableQuery();
    return query ? query->table + u';' + query->where + u';' + query->orderBy : u"-"_s;
}

TEST(TableQuery, IsTakenApart)
{
    const std::pair<QString, QString> cases[] = {
        {u"select * from 信息表"_s, u"信息表;;"_s},
        {u"select *  from 信息表 where id=3"_s, u"信息表;id=3;"_s},
        {u"SELECT * FROM [信息 表] ORDER BY 班级,学号 desc ; "_s, u"信息 表;;班级,学号 desc"_s},
        {u"select * from T where (a=1 or b='order by') order by c"_s,
         u"T;(a=1 or b='order by');c"_s},
        {u"select * from T where a in (select b from U order by b)"_s,
         u"T;a in (select b from U order by b);"_s},
        {u"select * from T where n='2009;07'"_s, u"T;n='2009;07';"_s},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(parts(sql), expected);
}

TEST(TableQuery, AnythingElseIsNone)
{
    const QString others[] = {
        QString(),
        u"select"_s,
        u"select a from T"_s,
        u"select * from T, U"_s,
        u"select * from T as x where x.a=1"_s,
        u"select * from T join U"_s,
        u"select * from T where"_s,
        u"select * from T order by"_s,
        u"select * from T order a"_s,
        u"select * from T order by a where b=1"_s,
        u"select * from T where a=1 group by b"_s,
        u"select * from T limit 3"_s,
        u"select * from T union select * from U"_s,
        u"select * from T; delete from T"_s,
        u"select * from T where n=N'"_s,
        u"select * from (select 1)"_s,
        u"delete * from T"_s,
        u"select * from main.T"_s,
    };
    for (const QString& sql : others)
        EXPECT_EQ(parts(sql), u"-"_s) << sql.toStdString();
}

/// As the engine is given it, if every table has row ids.
QString translated(const QString& sql)
{
    const SqlText text(sql);
    return text.engineText() + text.promisedOrder().tail;
}

TEST(Translated, SpeaksTheEnginesWords)
{
    const std::pair<QString, QString> cases[] = {
        {u"delete * from 分班表"_s, u"delete from 分班表"_s},
        {u"DELETE * FROM T where a=2*3;"_s, u"DELETE FROM T where a=2*3"_s},
        {u"update T set a=\"it's\""_s, u"update T set a='it''s'"_s},
        {u"ALTER TABLE 成绩表 add COLUMN 语文 Single"_s,
         u"ALTER TABLE [成绩表] ADD COLUMN [语文] Single REAL"_s},
        {u"alter table T add 总分 text(50)"_s,
         u"ALTER TABLE [T] ADD COLUMN [总分] text(50) COLLATE NOCASE"_s},
        {u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s, u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s},
        {u"select * from T where n=N'"_s, u"select * from T where n=N'"_s},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(SqlText(sql).engineText().simplified(), expected);
}

TEST(Translated, GivesASelectItsOrder)
{
    const std::pair<QString, QString> cases[] = {
        {u"select a from T"_s, u"select a from T order by rowid"_s},
        {u"select a from T order by a"_s, u"select a from T order by a, rowid"_s},
        {u"select distinct a from T"_s, u"select distinct a from T order by 1"_s},
        {u"select distinct a, round(b,2) from T"_s,
         u"select distinct a, round(b,2) from T order by 1,2"_s},
        {u"select distinct a from T order by a desc"_s,
         u"select distinct a from T order by a desc"_s},
        {u"select avg(a) from T"_s, u"select avg(a) from T"_s},
        {u"select a from T group by a"_s, u"select a from T group by a"_s},
        {u"select 1"_s, u"select 1"_s},
        {u"select a from T as x where a=1"_s, u"select a from T as x where a=1 order by rowid"_s},
        {u"select a from main.T"_s, u"select a from main.T order by rowid"_s},
        {u"select a from [T U] where b in (1,2)"_s,
         u"select a from [T U] where b in (1,2) order by rowid"_s},
        {u"select a from T x, U y"_s, u"select a from T x, U y"_s},
        {u"select a from T, U"_s, u"select a from T, U"_s},
        {u"select a from T cross join U"_s, u"select a from T cross join U"_s},
        {u"select a from (select a from T)"_s, u"select a from (select a from T)"_s},
        {u"select a from T x, (select 1) y"_s, u"select a from T x, (select 1) y"_s},
        {u"select a from json_each(1)"_s, u"select a from json_each(1)"_s},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(translated(sql), expected);
}

TEST(Translated, NamesTheTableWhoseRowIdsOrderIt)
{
    EXPECT_EQ(SqlText(u"select a from main.[T U] x order by a"_s).promisedOrder().table, u"T U"_s);
    EXPECT_EQ(SqlText(u"select distinct a from T"_s).promisedOrder().table, QString());
}

TEST(AddColumn, RefusesWhatIsNotOneNameAndOneKnownType)
{
    for (const QString& tail :
         {u"语文"_s, u""_s, u"语 文 Single"_s, u"语文 数学 Single"_s, u"语文-1 Single"_s,
          u"语文 Singel"_s, u"语文 text(0)"_s, u"语文 text(256)"_s, u"语文 text(x)"_s,
          u"语文 text(5"_s, u"语文 Single default 3"_s, u"'语文' Single"_s, u"[] Single"_s,
          u"[ ] Single"_s, u"`a]b` Single"_s, u"a Single, b Single"_s, u"2 Single"_s}) {
        const Error error =
            errorOf([&] { translated(u"ALTER TABLE 成绩表 add COLUMN "_s + tail); });
        EXPECT_EQ(error.description(), u"添加列的语句不正确：需要一个列名和一个已知的类型。"_s)
            << tail.toStdString();
    }
}

TEST(AddColumn, RefusesABareKeywordAndTakesItInBrackets)
{
    for (const QString& word : {u"order"_s, u"SELECT"_s, u"Key"_s}) {
        const Error error =
            errorOf([&] { translated(u"ALTER TABLE 成绩表 add COLUMN %1 Single"_s.arg(word)); });
        EXPECT_EQ(error.description(), u"“%1”是数据库的保留字，不能作列名。"_s.arg(word));
    }
    EXPECT_EQ(translated(u"ALTER TABLE T add [order] Single"_s),
              u"ALTER TABLE [T] ADD COLUMN [order] Single REAL"_s);
}

TEST(SqlTokens, AnOpenQuoteOrBracketGivesNone)
{
    EXPECT_FALSE(sqlTokens(u"select 'a"_s));
    EXPECT_FALSE(sqlTokens(u"select [a"_s));
    EXPECT_EQ(sqlTokens(u"a<>'it''s'"_s)->back().text, u"it's"_s);
}

TEST(SqlTokens, EndAtACommentAndNotAtSignsWithinTextsAndNames)
{
    for (const QString& sql : {u"select 1 -- x"_s, u"select 1 /* x */"_s, u"a--b"_s, u"--"_s}) {
        EXPECT_FALSE(sqlTokens(sql)) << sql.toStdString();
        EXPECT_THROW(SqlText{sql}, Error) << sql.toStdString();
    }
    for (const QString& sql : {u"select '--'"_s, u"select [/*]"_s, u"select 1 - -1 / 2 * 3"_s})
        EXPECT_TRUE(sqlTokens(sql)) << sql.toStdString();
}

/// A text of words and signs that statements are made of, in no sensible order.
QString randomText(std::mt19937& random)
{
    static const QString pieces[] = {
        u"select "_s,
        u"*"_s,
        u" from "_s,
        u" where "_s,
        u"order "_s,
        u"by "_s,
        u"distinct "_s,
        u"delete "_s,
        u"alter "_s,
        u"table "_s,
        u"add "_s,
        u"column "_s,
        u"'"_s,
        u"\""_s,
        u"["_s,
        u"]"_s,
        u"`"_s,
        u"("_s,
        u")"_s,
        u","_s,
        u";"_s,
        u"--"_s,
        u"/*"_s,
        u"*/"_s,
        u"\n"_s,
        u"T "_s,
        u"语文"_s,
        u"1.5e3 "_s,
        u"text(50)"_s,
        u"="_s,
        u"　"_s,
        u"\U0001F600"_s,
        QString(QChar(0)),
        QString(QChar(0xD800)),
        u"union "_s,
        u"update "_s,
        u"set "_s,
        u"count("_s,
        u"?"_s,
        u"drop "_s,
        u"values "_s,
    };
    QString text;
    for (std::uint_fast32_t i = random() % 24; i > 0; --i)
        text += pieces[random() % std::size(pieces)];
    return text;
}

TEST(Sql, NoTextBringsItDown)
{
    DatabaseFile file{"create table T(a text(5), 语文 Single);"};
    Connection connection;
    connection.Open(file.path());
    std::mt19937 random(20090731);
    int understood = 0;
    for (int i = 0; i < 5000; ++i) {
        const QString text = (i % 3 == 0 ? u"select * from T "_s : QString()) + randomText(random);
        if (const auto tokens = sqlTokens(text)) {
            for (const SqlToken& token : *tokens)
                ASSERT_TRUE(0 <= token.begin && token.begin < token.end
                            && token.end <= text.size());
        }
        Recordset rows;
        WriteBatch takenBack(connection);
        try {
            rows.Open(text, connection, Trust::User);
            understood += rows.isOpen() && rows.RecordCount() >= 0;
        } catch (const Error& error) {
            ASSERT_FALSE(error.description().isEmpty());
        }
    }
    EXPECT_GT(understood, 50);
    EXPECT_EQ(rowsOf(connection, u"select count(*) from T"_s), u"0"_s);
}

} // namespace
} // namespace database
