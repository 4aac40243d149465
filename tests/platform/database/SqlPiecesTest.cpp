#include "platform/database/SqlPieces.h"

#include <gtest/gtest.h>

#include "platform/database/Error.h"
#include "support/PrintQString.h"

namespace database {
namespace {

using namespace Qt::StringLiterals;

TEST(SqlPiece, ANameIsOneThatNeedsNoBrackets)
{
    for (const QString& name : {u"语文"_s, u"_a1"_s, u"语文年名"_s})
        EXPECT_EQ(SqlPiece::name(name).text(), name);
    for (const QString& name :
         {u""_s, u"1语文"_s, u"语文 "_s, u"语文(A)"_s, u"语文) from x --"_s, u"语文,数学"_s})
        EXPECT_THROW(SqlPiece::name(name), Error) << name.toStdString();
}

TEST(SqlPiece, NamesInBracketsAndPlacesOfValues)
{
    EXPECT_EQ(SqlPiece::names({u"语文"_s, u"a b"_s}).text(), u"[语文],[a b]"_s);
    EXPECT_EQ(SqlPiece::moreNames({u"语文"_s}).text(), u",[语文]"_s);
    EXPECT_EQ(SqlPiece::moreNames({}).text(), QString());
    EXPECT_EQ(SqlPiece::assignments({u"a"_s, u"b"_s}).text(), u"[a]=?1,[b]=?2"_s);
    EXPECT_EQ(SqlPiece::places(3, 2).text(), u"?3,?4"_s);
    EXPECT_THROW(SqlPiece::names({u"a]=1,[b"_s}), Error);
    EXPECT_THROW(SqlPiece::assignments({u""_s}), Error);
}

TEST(SqlPiece, AConditionComparesColumnsWithNumbers)
{
    for (const QString& text :
         {u""_s, u"语文>=102 and 语文<=120.5"_s, u" and (类别代码=1 or 类别代码=3)"_s,
          u"round(语文,4)>=89.7"_s, u"[语文] between -1 and 5"_s, u"语文 is not null"_s})
        EXPECT_EQ(SqlPiece::condition(text).text(), text);
}

TEST(SqlPiece, AConditionThatWouldBeMoreThanOneIsRefused)
{
    for (const QString& text :
         {u"语文>=60 or 1=1"_s, u" and (类别代码=1) or (1=1)"_s, u"1) or (1=1"_s, u"(语文>=60"_s,
          u"语文>=60 --"_s, u"语文>=60 /*"_s, u"姓名='王'"_s, u"语文>=60;delete from 成绩表"_s,
          u"语文 in (select 语文 from 成绩表)"_s, u"语文>=60 union select 1"_s, u"语文>=?"_s,
          u"语文>='"_s})
        EXPECT_THROW(SqlPiece::condition(text), Error) << text.toStdString();
}

TEST(SqlWith, PutsEachPieceInItsPlaceAndLooksAtNoneOfThemAgain)
{
    EXPECT_EQ(sqlWith(u"select %1 from T where %1>0 and %2"_s,
                      {SqlPiece::names({u"a%2"_s}), SqlPiece::condition(u"b=1"_s)}),
              u"select [a%2] from T where [a%2]>0 and b=1"_s);
}

} // namespace
} // namespace database
