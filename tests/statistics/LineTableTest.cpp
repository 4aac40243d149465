#include "statistics/LineTable.h"

#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::FenLiNumTJ;

class NumberLists : public ReportTest
{
protected:
    QString lines(const QString& value)
    {
        const statistics::LineTable table = FenLiNumTJ(streams, u"总分上线人数"_s, value);
        return table[0].join(u',') + u" / "_s + table[1].join(u',');
    }

    QStringList streams{u"文"_s, u"理"_s};
};

TEST_F(NumberLists, PlainListServesBothStreamsAsNumbers)
{
    EXPECT_EQ(lines(u"500, 450 ,0400"_s), u"500,450,400 / 500,450,400"_s);
    EXPECT_EQ(lines(u"-20"_s), u"-20 / -20"_s);
    EXPECT_EQ(lines(u"五百"_s), u"0 / 0"_s);
}

TEST_F(NumberLists, MoreNumbersThanATableHoldsAreRefusedAndLeaveNone)
{
    const QString many = QStringList(statistics::MostLines + 1, u"500"_s).join(u',');
    for (const QString& text : {many, QString(u"文=1||理="_s + many)}) {
        library.dialogs.shown.clear();
        const statistics::LineTable lines =
            statistics::FenLiNumTJ({u"文"_s, u"理"_s}, u"总分上线人数"_s, text);
        EXPECT_TRUE(lines[0].isEmpty() && lines[1].isEmpty());
        EXPECT_EQ(library.dialogs.shown,
                  QStringList{u"总分上线人数   条件设置不正确！数字太多，最多 1000 个。"_s});
    }
}

TEST_F(NumberLists, EmptyTextGivesNoNumbers)
{
    EXPECT_EQ(lines(u""_s), u" / "_s);
    EXPECT_EQ(lines(u"  "_s), u" / "_s);
}

TEST_F(NumberLists, ListByStreamKeepsItsTextsAsTyped)
{
    EXPECT_EQ(lines(u"文=0500||理=520,470"_s), u"0500 / 520,470"_s);
    EXPECT_EQ(lines(u"文=500||理=520,470"_s), u"500 / 520,470"_s);
    EXPECT_EQ(lines(u"理=520 || 文=500,450"_s), u"500,450 / 520"_s);
}

TEST_F(NumberLists, MissingMarkIsRefusedAndLeavesNoNumbers)
{
    EXPECT_EQ(lines(u"文=500,理=520"_s), u" / "_s);
    EXPECT_EQ(lines(u"文=500"_s), u" / "_s);
    EXPECT_EQ(lines(u"500||450"_s), u" / "_s);
    EXPECT_EQ(library.dialogs.shown[0],
              u"总分上线人数   条件设置不正确！缺少分隔符  ||  \n文=500,理=520"_s);
    EXPECT_EQ(library.dialogs.shown.size(), 3);
}

TEST_F(NumberLists, MarkOfAStreamThatTheLibraryLacksFindsNoRow)
{
    streams = {u"理"_s};
    EXPECT_EQ(lines(u"文=500||理=520"_s), u"520 / "_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(NumberLists, PartThatNamesNoStreamIsPassedOver)
{
    EXPECT_EQ(lines(u"文=500||理=520||450"_s), u"500 / 520"_s);
    EXPECT_EQ(lines(u"文=500||理=520||体=450"_s), u"500 / 520"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(NumberLists, PartWithNothingToReadIsShownAndTheOthersStand)
{
    for (const QString& value : {u"文=500||理=520||"_s, u"文=500||理=520||文"_s}) {
        EXPECT_EQ(lines(value), u"500 / 520"_s);
        EXPECT_TRUE(library.dialogs.failures.last().endsWith(u" - Function FenLiNumTJ/Mdl_MDB"_s));
    }
    EXPECT_EQ(library.dialogs.failures.size(), 2);
}

TEST_F(NumberLists, StreamWithNothingBehindTheEqualsSignHasNoNumbers)
{
    EXPECT_EQ(lines(u"文=||理=520"_s), u" / 520"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

} // namespace
