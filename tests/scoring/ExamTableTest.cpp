#include "scoring/ExamTable.h"

#include <limits>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using scoring::ExamTable;
using scoring::TableColumn;
using scoring::TableScope;
using support::TestLibrary;

const TableScope scoresFirst{{}, {u"语文"_s}, TableScope::Others::ReadWhenAskedFor};

class ExamTables : public testing::Test
{
protected:
    ExamTables()
    {
        for (int student = 1; student <= 3; ++student) {
            test.addStudent(1, student, u"甲"_s, u"理"_s);
            test.addScores(u"期末"_s, 1, student, {{u"语文"_s, 60 + student}});
        }
        test.execute(u"update 成绩表 set 语文年名=3 where 学号=2"_s);
    }

    QString ranks() { return test.rows(u"select 语文年名, 语文班名 from 成绩表"_s); }

    /// Rows that the statements of a call wrote.
    template <class Call> int rowsWritten(Call call)
    {
        const int before = sqlite3_total_changes(test.scores.Conn.handle());
        call();
        return sqlite3_total_changes(test.scores.Conn.handle()) - before;
    }

    TestLibrary test{{u"语文"_s}};
};

TEST_F(ExamTables, AColumnThatIsNotWantedIsNotThere)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, {{}, {u"语文"_s}});
    EXPECT_EQ(table.column(u"语文年名"_s), nullptr);
    EXPECT_EQ(table.resultColumn(u"语文年名"_s), nullptr);
    ASSERT_NE(table.column(u"语文"_s), nullptr);
    EXPECT_EQ(table.column(u"语文"_s)->value(2), 63);
}

TEST_F(ExamTables, AnotherColumnIsReadWhenItIsAskedFor)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
    const TableColumn* ranks = table.column(u"语文年名"_s);
    ASSERT_NE(ranks, nullptr);
    EXPECT_TRUE(ranks->isNull(0));
    EXPECT_FALSE(ranks->isNull(1));
    EXPECT_EQ(ranks->value(1), 3);
    EXPECT_EQ(table.column(u"姓名"_s), nullptr);
}

TEST_F(ExamTables, WhatIsNoNumberCountsAsNoneAndIsToldOnceAColumn)
{
    test.execute(u"update 成绩表 set 语文年名='第一' where 语文年名 is null"_s);
    test.execute(u"update 成绩表 set 语文年名=9e999 where 语文年名=3"_s);
    const ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s);
    const TableColumn* ranks = table.column(u"语文年名"_s);
    for (size_t row = 0; row < table.rowCount(); ++row)
        EXPECT_TRUE(ranks->isNull(row));
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"考试“期末”（理）的列“语文年名”里有 3 个内容不是可以计算的数字，"
                          "按没有成绩处理。"_s});
}

TEST_F(ExamTables, WhatWasSetStaysWhenTheRestIsRead)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
    table.resultColumn(u"语文年名"_s)->set(0, 9);
    const TableColumn* ranks = table.column(u"语文年名"_s);
    EXPECT_EQ(ranks->value(0), 9);
    EXPECT_EQ(ranks->value(1), 3);
    EXPECT_TRUE(ranks->isNull(2));
}

TEST_F(ExamTables, RowsThatNobodySetKeepWhatTheyHave)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
    table.resultColumn(u"语文年名"_s)->set(2, 1);
    table.resultColumn(u"语文班名"_s)->set(0, 2);
    table.write();
    EXPECT_EQ(ranks(), u"NULL|2 / 3|NULL / 1|NULL"_s);
}

TEST_F(ExamTables, OnlyRowsThatDifferAreWritten)
{
    const auto write = [this] {
        ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
        for (size_t row = 0; row < 3; ++row)
            table.resultColumn(u"语文年名"_s)->set(row, 3);
        table.resultColumn(u"语文班名"_s)->setNull(0);
        table.write();
    };
    EXPECT_EQ(rowsWritten(write), 2);
    EXPECT_EQ(ranks(), u"3|NULL / 3|NULL / 3|NULL"_s);
    EXPECT_EQ(rowsWritten(write), 0);
}

TEST_F(ExamTables, ANumberReplacedByNullIsWritten)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
    for (size_t row = 0; row < 3; ++row)
        table.resultColumn(u"语文年名"_s)->setNull(row);
    EXPECT_EQ(rowsWritten([&] { table.write(); }), 1);
    EXPECT_EQ(ranks(), u"NULL|NULL / NULL|NULL / NULL|NULL"_s);
}

TEST_F(ExamTables, WhatIsNoNumberIsKeptAsNull)
{
    ExamTable table(test.scores.Conn, u"期末"_s, u"理"_s, scoresFirst);
    TableColumn* ranks = table.column(u"语文年名"_s);
    ranks->set(1, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(ranks->isNull(1));
}

} // namespace
