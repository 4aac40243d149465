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

TEST_F(TwoMeanings, ASecondTableWithOtherColumnsIsAskedAbout)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                      {1, 1, u"甲"_s, 100, 90},
                      {u"班级"_s, u"学号"_s, u"姓名"_s, u"数学"_s, u"语文"_s},
                      {2, 1, u"乙"_s, 140, 50}});
    EXPECT_EQ(result(), u"数据表“成绩”第 3 行是另一个表头，各列和第 1 行的表头不同，"
                        "请先把两个表分到两张数据表里。"_s);
}

TEST_F(TwoMeanings, ATableAboveTheStrongerHeadingIsAskedAbout)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                      {1, 1, u"甲"_s, 100},
                      {u"班级"_s, u"学号"_s, u"姓名"_s, u"数学"_s, u"英语"_s},
                      {2, 1, u"乙"_s, 140, 50}});
    EXPECT_EQ(result(), u"数据表“成绩”第 1 行是另一个表头，各列和第 3 行的表头不同，"
                        "请先把两个表分到两张数据表里。"_s);
}

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

TEST_F(TwoMeanings, ASheetWithoutNamesJoinsAndAnotherNameIsAskedAbout)
{
    sheet(u"语文"_s, {{u"班级"_s, u"学号"_s, u"成绩"_s}, {1, 1, 100}, {1, 2, 90}});
    sheet(u"数学"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 1, u"甲"_s, 80}, {1, 2, u"乙"_s, 70}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|100|80\n1|2|乙|90|70"_s);
    sheet(u"英语"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 2, u"丙"_s, 60}});
    EXPECT_EQ(result(), u"有 1 行的班级和学号和别的行相同，内容不同（如“语文”第 3 行乙和“英语”第 2 "
                        "行丙），请确定用哪一行。"_s);
}

TEST_F(TwoMeanings, TwoRowsOfOneStudentAreAskedAboutAndEqualOnesTakenOnce)
{
    excel::Worksheet& made = sheet(
        u"成绩"_s,
        {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 1}, {1, 1, u"甲"_s, 100}});
    EXPECT_EQ(result(), u"有 1 行的班级和学号和别的行相同，内容不同（如“成绩”第 2 行甲和“成绩”第 3 "
                        "行甲），请确定用哪一行。"_s);
    Proposal proposal = proposed();
    chooseRow(proposal, 0, 2, Taking::LeaveOut);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|100"_s);
    made.setCell(2, 4, 100);
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|100"_s);
    EXPECT_EQ(remarks(proposed()),
              u"成绩3: 和“成绩”第 2 行是同一个班级和学号，内容相同，只取一次。"_s);
}

TEST_F(TwoMeanings, TitlesOfAClassAreSeenBelowNamesAndInSeveralCells)
{
    excel::Worksheet& made = sheet(u"成绩"_s, {{u"1班成绩"_s},
                                               {u"姓名"_s, u"学号"_s, u"语文"_s, u"数学"_s},
                                               {u"甲"_s, 1, 90, 80},
                                               {u"2班成绩"_s},
                                               {u"乙"_s, 1, 70, 60}});
    const QString right = u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|90|80\n2|1|乙|70|60"_s;
    EXPECT_EQ(result(), right);
    int column = 0;
    for (const runtime::Value& cell : Cells{{}, u"班级：2班"_s, u"班主任：李四"_s, u"人数：3"_s})
        made.setCell(4, ++column, cell);
    EXPECT_EQ(result(), right);
}

TEST_F(TwoMeanings, ATitleThatContradictsTheSheetsNameBetweenRowsIsAskedAbout)
{
    sheet(u"1班"_s,
          {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"甲"_s, 90}, {u"2班"_s}, {2, u"乙"_s, 80}});
    EXPECT_EQ(result(), u"数据表“1班”第 3 行的标题写着另一个班，"
                        "请确定班级用标题里的还是表名或文件名里的。"_s);
}

TEST_F(TwoMeanings, ScoresOfNobodyAreListed)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                      {1, 1, u"甲"_s, 90, 80},
                      {1, {}, {}, 98, 97}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.counts.leftOut, 0) << "no student";
    EXPECT_EQ(proposal.counts.nobody, 1);
    EXPECT_EQ(remarks(proposal), u"成绩3: 没有姓名和号码。"_s);
    EXPECT_EQ(result(proposal),
              u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|90|80\n[没有写入的行]\n"
              "数据表|行|原因|原来的内容||||\n成绩|3|没有姓名和号码。|1|||98|97"_s);
}

TEST_F(TwoMeanings, FootRowsAreNoStudents)
{
    sheet(u"1班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                     {1, u"甲"_s, 90, 80},
                     {2, u"乙"_s, 70, 60},
                     {2, {}, 160, 140},
                     {45, {}, 4500, 4300},
                     {u"及格数"_s, u"2"_s, 2, 2},
                     {2, u"及格数"_s, 2, 2},
                     {{}, u"优分率"_s, 0.5, 0.5},
                     {{}, u"难度"_s, 0.6, 0.6},
                     {u"区分度"_s, {}, 0.3, 0.3}});
    const Proposal proposal = proposed();
    EXPECT_EQ(leftOut(proposal.sheets[0]), u"1 表头, 4-10 合计、平均一类的行"_s);
    EXPECT_EQ(remarks(proposal),
              u"1班4: 没有姓名，像是合计的行。\n1班5: 没有姓名，像是合计的行。"_s);
    EXPECT_EQ(proposal.counts.students, 2);
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
