#include "statistics/BandConditions.h"

#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
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

} // namespace
