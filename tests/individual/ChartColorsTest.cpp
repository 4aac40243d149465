#include "individual/ChartColors.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace individual {

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

const QString loadTag = u" - Private Sub Form_Load/FormGeRenChenJi"_s;
const QString allColors = u"select * from 颜色表 order by ID"_s;

class ColorsOfALibrary : public testing::Test
{
protected:
    void load() { colors.load(); }

    TestLibrary test{{u"语文"_s}};
    ChartColors colors{test.scores};
};

TEST_F(ColorsOfALibrary, AreReadByPosition)
{
    load();
    EXPECT_EQ(colors.color(0), 0x2C28D6);
    EXPECT_EQ(colors.color(1), 0xB4771F);
    EXPECT_EQ(colors.color(15), 0x000000);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(ColorsOfALibrary, AreReadWhateverTheirColumnIsCalled)
{
    test.execute(u"drop table 颜色表"_s);
    test.execute(u"create table 颜色表 (ID Long INTEGER, 值 Long INTEGER, 颜色 Long INTEGER)"_s);
    test.execute(u"insert into 颜色表 values (3, 255, 7)"_s);
    load();
    EXPECT_EQ(colors.color(3), 255);
}

TEST_F(ColorsOfALibrary, AChangedOneIsKeptInTheLibrary)
{
    load();
    colors.setColor(4, 0x0000FF);
    EXPECT_EQ(colors.color(4), 0x0000FF);
    EXPECT_EQ(test.rows(u"select * from 颜色表 where ID=4"_s), u"4|255"_s);
    ChartColors again(test.scores);
    again.load();
    EXPECT_EQ(again.color(4), 0x0000FF);
}

TEST_F(ColorsOfALibrary, AChangedOneWithoutARowGetsOne)
{
    test.execute(u"delete from 颜色表 where ID=7"_s);
    load();
    EXPECT_EQ(colors.color(7), 0);
    colors.setColor(7, 0x00FF00);
    EXPECT_EQ(test.rows(u"select * from 颜色表 where ID=7"_s), u"7|65280"_s);
}

TEST_F(ColorsOfALibrary, PositionsAbove15TakeThoseFrom1AgainAfterOneMessage)
{
    load();
    const QString before = test.rows(allColors);
    EXPECT_EQ(colors.color(16), colors.color(1));
    EXPECT_EQ(colors.color(30), colors.color(15));
    EXPECT_EQ(colors.color(31), colors.color(1));
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"颜色表只有 0 到 15 号颜色，没有 16 号。"_s + loadTag});
    EXPECT_EQ(test.rows(allColors), before);
}

TEST_F(ColorsOfALibrary, AColourAbove15IsNotKept)
{
    load();
    const QString before = test.rows(allColors);
    colors.setColor(16, 0x123456);
    EXPECT_EQ(colors.color(16), 0x123456);
    EXPECT_EQ(test.rows(allColors), before);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"颜色表只有 0 到 15 号颜色，没有 16 号。"
                          " - Private Sub Command1_MouseUp/FormGeRenChenJi"_s});
}

TEST_F(ColorsOfALibrary, ARowThatIsNoColourIsToldAndTheOthersStand)
{
    const struct
    {
        QString row;
        QString message;
    } cases[] = {
        {u"(3, '红')"_s, u"颜色表中 3 号的颜色“红”不是颜色的数值。"_s},
        {u"(3, NULL)"_s, u"颜色表中 3 号的颜色“”不是颜色的数值。"_s},
        {u"(3, -1)"_s, u"颜色表中 3 号的颜色“-1”不是颜色的数值。"_s},
        {u"(3, 16777216)"_s, u"颜色表中 3 号的颜色“16777216”不是颜色的数值。"_s},
        {u"(16, 1)"_s, u"颜色表只有 0 到 15 号颜色，没有 16 号。"_s},
        {u"(-1, 1)"_s, u"颜色表只有 0 到 15 号颜色，没有 -1 号。"_s},
    };
    for (const auto& [row, message] : cases) {
        test.execute(u"delete from 颜色表 where ID=3 or ID<0 or ID>15"_s);
        test.execute(u"insert into 颜色表 values "_s + row);
        test.dialogs.failures.clear();
        ChartColors read(test.scores);
        read.load();
        EXPECT_EQ(read.color(3), 0) << row.toStdString();
        EXPECT_EQ(read.color(4), 0xBD6794) << row.toStdString();
        EXPECT_EQ(test.dialogs.failures, QStringList{message + loadTag}) << row.toStdString();
    }
}

TEST_F(ColorsOfALibrary, ALibraryThatCannotBeWrittenKeepsItsColoursAfterAMessage)
{
    load();
    test.execute(u"drop table 颜色表"_s);
    colors.setColor(4, 255);
    EXPECT_EQ(colors.color(4), 255);
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.front().endsWith(u" - Sub SaveColor/FormGeRenChenJi"_s))
        << test.dialogs.failures.front().toStdString();
}

} // namespace

} // namespace individual
