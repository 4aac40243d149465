#include "statistics/SettingForms.h"

#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::FenLiNumTJ;
using statistics::MakeCXTJ;

class BandConditions : public ReportTest
{
protected:
    std::optional<QStringList> make(const QString& band)
    {
        return MakeCXTJ(library.scores.catalogue.GetKSKM(exams, u"理"_s), band);
    }

    QString first(const QString& band) { return make(band).value_or(QStringList()).value(0); }
};

TEST_F(BandConditions, AreSharesOfTheFullMarks)
{
    EXPECT_EQ(first(u"[0.85,1]"_s), u"语文>=85 and 语文<=100"_s);
    EXPECT_EQ(make(u"[0.85,1]"_s).value_or(QStringList()).value(1), u"数学>=42.5 and 数学<=50"_s);
}

TEST_F(BandConditions, OpenEdgesLeaveTheEdgeOut)
{
    EXPECT_EQ(first(u"(0.6,0.85)"_s), u"语文>60 and 语文<85"_s);
    EXPECT_EQ(first(u"(0.85,1]"_s), u"语文>85 and 语文<=100"_s);
}

TEST_F(BandConditions, MissingOrZeroUpperEdgeIsTheFullMarks)
{
    EXPECT_EQ(first(u"[0.85,]"_s), u"语文>=85 and 语文<=100"_s);
    EXPECT_EQ(first(u"[0.85,0]"_s), u"语文>=85 and 语文<=100"_s);
}

TEST_F(BandConditions, MissingLowerEdgeIsNought)
{
    EXPECT_EQ(first(u"[,0.6)"_s), u"语文>=0 and 语文<60"_s);
}

TEST_F(BandConditions, WriteProductsInTheirPlainForm)
{
    library.execute(u"update 考试名称表 set 语文=90"_s);
    EXPECT_EQ(first(u"[0.7,1]"_s), u"语文>=63 and 语文<=90"_s);
}

TEST_F(BandConditions, AreNoneForABandWithoutComma)
{
    for (const QString& bad : {u"0.6"_s, u"(使用自定义数据)"_s, u""_s, u"["_s, u"[]"_s})
        EXPECT_EQ(make(bad), std::nullopt);
    ASSERT_EQ(library.dialogs.failures.size(), 5);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Function MakeCXTJ/Mdl_MDB"_s));
}

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

TEST_F(NumberLists, EmptyTextGivesNoNumbers)
{
    EXPECT_EQ(lines(u""_s), u" / "_s);
    EXPECT_EQ(lines(u"  "_s), u" / "_s);
}

TEST_F(NumberLists, ListByStreamKeepsItsTextsAsTyped)
{
    EXPECT_EQ(lines(u"文=0500||理=520,470"_s), u"0500 / 520,470"_s);
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
