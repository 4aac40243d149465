#include "platform/database/ColumnRemoval.h"

#include <QFileInfo>

#include "DatabaseFile.h"
#include "platform/database/WriteBatch.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

const QByteArray table = "create table [T](n Long INTEGER, [a] Single REAL, b Single REAL, "
                         "c text(5) COLLATE NOCASE DEFAULT 'x', [d d] Memo TEXT)";

bool always(qint64, qint64)
{
    return true;
}

/// What the user would read about the error that a call throws; "" if it throws none.
template <class Call> QString refusal(const Call& call)
{
    try {
        call();
    } catch (const Error& error) {
        return error.description();
    }
    return {};
}

class ColumnRemovals : public testing::Test
{
protected:
    void make(const QByteArray& sql)
    {
        file = std::make_unique<DatabaseFile>(sql.constData());
        connection.Open(file->path());
    }

    /// The refusals of the columns, by name; the others are gone.
    QStringList remove(const QStringList& columns)
    {
        QStringList refused;
        WriteBatch batch(connection);
        ColumnRemoval removal(connection, u"T"_s);
        for (const QString& column : columns) {
            const QString error = refusal([&] { removal.drop(column); });
            if (!error.isEmpty())
                refused.append(column + u": "_s + error);
        }
        EXPECT_TRUE(removal.finish(always));
        batch.commit();
        return refused;
    }

    QString rows(const QString& sql) { return rowsOf(connection, sql); }
    QString columns()
    {
        return rows(u"select name || ' ' || type || ' ' || ifnull(dflt_value,'') "
                    "from pragma_table_info('T')"_s);
    }
    QString indexes()
    {
        return rows(u"select sql from sqlite_master where type='index' order by name"_s);
    }

    std::unique_ptr<DatabaseFile> file;
    Connection connection;
};

TEST_F(ColumnRemovals, LeaveTheOtherColumnsTheRowsAndTheirIds)
{
    make(table + "; create index i on [T](n, c); create unique index \"j\"\" j\" on T(c);"
         + "insert into T(rowid,n,a,b,c,[d d]) values(-3,1,1.5,NULL,'u','p'),"
           "(7,2,2.5,0.1,'V',NULL),(9000000000,NULL,NULL,'text','w',x'00ff')");
    const QString before = indexes();
    EXPECT_EQ(remove({u"a"_s, u"n2"_s}),
              QStringList{u"n2: 没有名为“n2”的列。（no such column: \"n2\"）"_s});
    EXPECT_EQ(columns(), u"n Long INTEGER  / b Single REAL  / c text(5) 'x' / d d Memo TEXT "_s);
    EXPECT_EQ(rows(u"select rowid, n, b, c, hex([d d]), typeof(b), typeof([d d]) from T"_s),
              u"-3|1|NULL|u|70|null|text / 7|2|0.1|V||real|null / "
              "9000000000|NULL|text|w|00FF|text|blob"_s);
    EXPECT_EQ(indexes(), before);
    EXPECT_EQ(rows(u"select n from T where c='v'"_s), u"2"_s) << "the collation stands";
}

TEST_F(ColumnRemovals, OfMoreRowsThanMoveAtOnceTellHowFarTheyAreAndLeaveNoLargerFile)
{
    make(table
         + "; insert into T(n,a,b) with recursive k(x) as "
           "(select 1 union all select x+1 from k where x<30000) select x, x*1.5, x from k");
    const qint64 size = QFileInfo(file->path()).size();
    QStringList told;
    WriteBatch batch(connection);
    ColumnRemoval removal(connection, u"t"_s);
    removal.drop(u"B"_s);
    EXPECT_TRUE(removal.finish([&](qint64 done, qint64 total) {
        told.append(u"%1/%2"_s.arg(done).arg(total));
        return true;
    }));
    batch.commit();
    EXPECT_EQ(told.size(), 11);
    EXPECT_EQ(told.first() + u' ' + told[1] + u' ' + told.last(),
              u"0/30000 3000/30000 30000/30000"_s);
    EXPECT_EQ(rows(u"select count(*), sum(n), sum(a), max(rowid) from T"_s),
              u"30000|450015000|675022500|30000"_s);
    EXPECT_LT(QFileInfo(file->path()).size(), size * 5 / 4);
}

TEST_F(ColumnRemovals, ThatAreStoppedLeaveTheTableWithTheBatch)
{
    make(table + "; create index i on T(n); insert into T(n,a) values(1,2)");
    const QString before = rows(u"select sql from sqlite_master order by name"_s);
    {
        WriteBatch batch(connection);
        ColumnRemoval removal(connection, u"T"_s);
        removal.drop(u"b"_s);
        EXPECT_FALSE(removal.finish([](qint64, qint64) { return false; }));
    }
    EXPECT_EQ(rows(u"select sql from sqlite_master order by name"_s), before);
    EXPECT_EQ(rows(u"select n, a, b from T"_s), u"1|2|NULL"_s);
}

TEST_F(ColumnRemovals, WithoutAColumnChangeNothing)
{
    make(table);
    const QString before = columns();
    EXPECT_EQ(remove({}), QStringList());
    EXPECT_EQ(columns(), before);
}

/// What the engine says to the statement itself about each column.
QStringList refusedByTheEngine(Connection& connection, const QStringList& columns)
{
    QStringList refused;
    for (const QString& column : columns) {
        const QString error =
            refusal([&] { connection.Execute(u"ALTER TABLE T DROP COLUMN "_s + column); });
        if (!error.isEmpty())
            refused.append(column + u": "_s + error);
    }
    return refused;
}

TEST_F(ColumnRemovals, AreRefusedWhereAndAsTheEngineRefusesTheStatement)
{
    for (const QByteArray& sql : {
             QByteArray("create table T(n Long INTEGER PRIMARY KEY, a, b, c UNIQUE)"),
             QByteArray("create table T(a)"),
             QByteArray("create table T(a, b, c); create index i on T(b)"),
             QByteArray("create table T(a, b, c); create index i on T(a) where b>0"),
             QByteArray("create table T(a, b, c); create index i on T(a+c)"),
             QByteArray("create table T(a, b CHECK (b>0), c, CHECK (a<c))"),
             QByteArray("create table T(n INTEGER PRIMARY KEY AUTOINCREMENT, a, b, c)"),
             QByteArray("create table T(a, b, c AS (a+1))"),
             QByteArray("create table T(a, b, c); create view v as select a from T"),
             QByteArray("create table T(a PRIMARY KEY, b, c) WITHOUT ROWID"),
             QByteArray("create table T(a, -- note\n b, c)"),
         }) {
        SCOPED_TRACE(sql.toStdString());
        make(sql + ";insert into T(a) values(5)");
        const QStringList all{u"n"_s, u"a"_s, u"b"_s, u"c"_s, u"missing"_s};
        const QStringList refused = remove(all);
        const QString left = columns();
        const QString content = rows(u"select * from T"_s);
        make(sql + ";insert into T(a) values(5)");
        EXPECT_EQ(refused, refusedByTheEngine(connection, all));
        EXPECT_EQ(left, columns());
        EXPECT_EQ(content, rows(u"select * from T"_s));
    }
}

TEST_F(ColumnRemovals, KeepTriggersAndTheNumbersThatCountOn)
{
    make("create table T(n INTEGER PRIMARY KEY AUTOINCREMENT, a, b); insert into T values(9,1,2);"
         "delete from T; create table U(x);"
         "create trigger g after insert on T begin insert into U values(new.n); end");
    EXPECT_EQ(remove({u"b"_s}), QStringList());
    connection.Execute(u"insert into T(a) values(3)"_s);
    EXPECT_EQ(rows(u"select n, a from T"_s), u"10|3"_s);
    EXPECT_EQ(rows(u"select count(*) from sqlite_master where type='trigger'"_s), u"1"_s);
}

TEST_F(ColumnRemovals, TakeNoNameThatWouldBeMoreThanOne)
{
    make(table);
    for (const QString& name : {u"d d"_s, u"a; drop table T"_s, u"a--"_s, u"'"_s, u""_s})
        EXPECT_EQ(remove({name}),
                  QStringList{name + u": “"_s + name + u"”不能作为列名用在语句里。"_s});
    EXPECT_EQ(rows(u"select count(*) from pragma_table_info('T')"_s), u"5"_s);
}

TEST_F(ColumnRemovals, FindANameOfTheirOwnForTheTableThatIsMade)
{
    make(table + "; create table [T_](x); create index [T__] on T_(x); insert into T(n) values(4)");
    EXPECT_EQ(remove({u"a"_s}), QStringList());
    EXPECT_EQ(rows(u"select n from T"_s), u"4"_s);
    EXPECT_EQ(rows(u"select name from sqlite_master where type='table' order by name"_s),
              u"T / T_"_s);
}

} // namespace
} // namespace database
