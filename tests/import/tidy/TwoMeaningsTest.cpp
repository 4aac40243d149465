// What could mean two things is asked, and no row is lost without a word.
#include <QDir>
#include <QTemporaryDir>

#include "import/tidy/RememberedMappings.h"

#include "TidyFixture.h"

namespace tidy {
namespace {

class TwoMeanings : public TidyFixture
{
};

TEST_F(TwoMeanings, TheSubjectOfASheetsNameIsNotRemembered)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir(u"data"_s);
    const runtime::AppPaths paths{folder.path()};
    sheet(u"语文"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 1, u"甲"_s, 100}});
    RememberedMappings(paths).remember(proposed());
    book.Worksheets().Item(1).setName(u"数学"_s);
    Proposal next = proposed();
    EXPECT_FALSE(RememberedMappings(paths).apply(next));
    EXPECT_EQ(result(next), u"[成绩]\n班级|学号|姓名|数学\n1|1|甲|100"_s);
}

TEST_F(TwoMeanings, TheSubjectOfAHeadingWithoutOneIsChosenForItsSheetAlone)
{
    for (const QString& name : {u"卷一"_s, u"卷二"_s})
        sheet(name, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 1, u"甲"_s, 100}});
    Proposal proposal = proposed();
    chooseColumn(proposal, 0, 4, {Field::Subject, u"语文"_s});
    again(proposal);
    EXPECT_EQ(columns(proposal.sheets[0]), u"班级 学号 姓名 语文"_s);
    EXPECT_EQ(columns(proposal.sheets[1]), u"班级 学号 姓名 ?-"_s);
}

TEST_F(TwoMeanings, ThisTimeAndLastTimeAreNoRanks)
{
    excel::Worksheet& made =
        sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"本次数学"_s, u"上次数学"_s},
                          {1, 1, u"甲"_s, 90, 80}});
    EXPECT_EQ(columns(proposed().sheets[0]), u"班级 学号 姓名 ?数学 ?数学"_s);
    made.setCell(1, 4, u"数学校次"_s);
    EXPECT_EQ(columns(proposed().sheets[0]), u"班级 学号 姓名 - ?数学"_s);
}

TEST_F(TwoMeanings, StreamsAndListsOfStudentsNameNoSubject)
{
    roster = Roster({u"物理"_s, u"历史"_s, u"信息技术"_s}, {});
    excel::Worksheet& made =
        sheet(u"物理类"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 1, u"甲"_s, 500}});
    for (const QString& name : {u"物理类"_s, u"历史方向"_s, u"学生信息及成绩"_s}) {
        made.setName(name);
        EXPECT_EQ(columns(proposed().sheets[0]), u"班级 学号 姓名 ?-"_s) << name.toStdString();
    }
    made.setName(u"物理"_s);
    EXPECT_EQ(columns(proposed().sheets[0]), u"班级 学号 姓名 物理"_s);
}

TEST_F(TwoMeanings, HeadingsAreReadFromTwoRowsAtMost)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 9}});
    Proposal proposal = proposed();
    chooseHeading(proposal, 0, 1, 3);
    EXPECT_EQ(proposal.sheets[0].heading.count, HeadingRows::most);
}

} // namespace
} // namespace tidy
