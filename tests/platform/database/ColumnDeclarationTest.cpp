#include "platform/database/ColumnDeclaration.h"

#include "DatabaseFile.h"

namespace database {
namespace {

using Key = ColumnDeclaration::Key;

class ColumnDeclarations : public testing::Test
{
protected:
    ColumnDeclarations() { connection.Open(file.path()); }

    /// The statement that made the table.
    QString sql(const QString& table)
    {
        return rowsOf(connection, u"select sql from sqlite_master where name='%1'"_s.arg(table));
    }

    DatabaseFile file{"create table 表 ([ID] INTEGER PRIMARY KEY AUTOINCREMENT, "
                      "[名] text(50) COLLATE NOCASE, [数] Double REAL DEFAULT 1, "
                      "[键] text(20) COLLATE RTRIM UNIQUE);"
                      "create table 总分 ([总分] text(50) COLLATE NOCASE PRIMARY KEY)"};
    Connection connection;
};

} // namespace

TEST_F(ColumnDeclarations, AreReadAsTheTableWasMade)
{
    const auto columns = columnDeclarations(connection, u"表"_s);
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[0].name, u"ID"_s);
    EXPECT_EQ(columns[0].type, u"INTEGER"_s);
    EXPECT_EQ(columns[0].key, Key::AutoNumber);
    EXPECT_EQ(columns[1].collation, u"NOCASE"_s);
    EXPECT_EQ(columns[1].key, Key::None);
    EXPECT_EQ(columns[2].type, u"Double REAL"_s);
    EXPECT_EQ(columns[2].defaultValue, u"1"_s);
    EXPECT_EQ(columns[2].collation, QString());
    EXPECT_EQ(columns[3].collation, u"RTRIM"_s);
    EXPECT_EQ(columnDeclarations(connection, u"总分"_s)[0].key, Key::Unique);
    EXPECT_TRUE(columnDeclarations(connection, u"没有"_s).empty());
}

TEST_F(ColumnDeclarations, AreFoundByTheirNamesWhateverTheCase)
{
    EXPECT_EQ(columnNames(connection, u"表"_s), (QStringList{u"ID"_s, u"名"_s, u"数"_s, u"键"_s}));
    EXPECT_TRUE(columnNames(connection, u"没有"_s).isEmpty());
    const auto columns = columnDeclarations(connection, u"表"_s);
    EXPECT_EQ(findColumn(columns, u"id"_s), &columns[0]);
    EXPECT_EQ(findColumn(columns, u"没有"_s), nullptr);
}

TEST_F(ColumnDeclarations, MakeATable)
{
    createTable(connection, u"新'表"_s,
                {{u"ID"_s, u"INTEGER"_s, {}, {}, Key::AutoNumber},
                 {u"a'; --"_s, u"text(50)"_s, u"NOCASE"_s, {}, Key::Unique},
                 {u"数"_s, u"Double REAL"_s, {}, u"1"_s}});
    EXPECT_EQ(rowsOf(connection, u"select sql from sqlite_master where name='新''表'"_s),
              u"CREATE TABLE [新'表] ([ID] INTEGER PRIMARY KEY AUTOINCREMENT, "
              "[a'; --] text(50) COLLATE NOCASE UNIQUE, [数] Double REAL DEFAULT 1)"_s);
}

TEST_F(ColumnDeclarations, AddAColumnBehindTheOthers)
{
    connection.Execute(u"insert into 总分 values ('总分1')"_s);
    addColumn(connection, u"总分"_s, {u"a'; --"_s, u"text(50)"_s, u"NOCASE"_s, u"'无'"_s});
    addColumn(connection, u"总分"_s, {u"数"_s, u"Double REAL"_s});
    EXPECT_EQ(sql(u"总分"_s), u"CREATE TABLE 总分 ([总分] text(50) COLLATE NOCASE PRIMARY KEY, "
                              "[a'; --] text(50) COLLATE NOCASE DEFAULT '无', [数] Double REAL)"_s);
    EXPECT_EQ(rowsOf(connection, u"select * from 总分"_s), u"总分1|无|NULL"_s);
}

TEST_F(ColumnDeclarations, AddNoColumnThatNumbersTheRowsOrRefusesValues)
{
    const QString before = sql(u"总分"_s);
    for (const Key key : {Key::AutoNumber, Key::Unique}) {
        EXPECT_EQ(errorOf([&] {
                      addColumn(connection, u"总分"_s, {u"号"_s, u"INTEGER"_s, {}, {}, key});
                  }).failure(),
                  Failure::Sql);
    }
    EXPECT_EQ(sql(u"总分"_s), before);
}

TEST_F(ColumnDeclarations, OfANameThatBracketsCannotHoldAreRefused)
{
    EXPECT_EQ(errorOf([&] {
                  createTable(connection, u"a]b"_s, {{u"甲"_s, u"Memo TEXT"_s}});
              }).failure(),
              Failure::Sql);
    EXPECT_EQ(errorOf([&] {
                  createTable(connection, u"新"_s, {{u"a]b"_s, u"Memo TEXT"_s}});
              }).failure(),
              Failure::Sql);
    EXPECT_EQ(sql(u"新"_s), QString());
}

} // namespace database
