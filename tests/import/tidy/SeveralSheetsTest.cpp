// Where the class comes from, and how sheets come together.
#include "TidyFixture.h"

namespace tidy {
namespace {

class SeveralSheets : public TidyFixture
{
};

TEST_F(SeveralSheets, TheClassComesFromTheTitleTheSheetOrTheFile)
{
    sheet(u"成绩"_s,
          {{u"高三(2)班期中成绩"_s}, {u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"甲"_s, 9}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n2|1|甲|9"_s);
    excel::Workbook named(u"高三5班.xlsx"_s);
    excel::Worksheet& made = named.addSheet(u"Sheet1"_s);
    int column = 0;
    for (const QString& heading : {u"学号"_s, u"姓名"_s, u"语文"_s}) {
        made.setCell(1, ++column, heading);
        made.setCell(2, column, column == 2 ? runtime::Value(u"甲"_s) : runtime::Value(column));
    }
    Proposal proposal = propose(named, Goal::ExamScores, sources());
    EXPECT_EQ(proposal.sheets[0].classSource.from, ClassFrom::FileName);
    EXPECT_EQ(proposal.classes.front().number, 5);
}

TEST_F(SeveralSheets, TitlesBetweenTheRowsBeginANewClass)
{
    sheet(u"成绩"_s, {{u"高三(1)班"_s},
                      {u"学号"_s, u"姓名"_s, u"语文"_s},
                      {1, u"甲"_s, 90},
                      {u"高三(2)班"_s},
                      {u"学号"_s, u"姓名"_s, u"语文"_s},
                      {1, u"乙"_s, 80}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|90\n2|1|乙|80"_s);
}

TEST_F(SeveralSheets, AMergedClassCountsForAllItsRows)
{
    excel::Worksheet& made = sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                                               {1, 1, u"甲"_s, 90},
                                               {{}, 2, u"乙"_s, 80},
                                               {{}, 3, u"丙"_s, 70}});
    made.merges().add({2, 1, 3, 1});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|90\n1|2|乙|80\n[没有写入的行]\n"
                        "数据表|行|原因|原来的内容|||\n成绩|4|没有班级。||3|丙|70"_s);
}

TEST_F(SeveralSheets, ATitleThatContradictsTheSheetsNameIsAskedAbout)
{
    sheet(u"2班"_s, {{u"高三(1)班成绩"_s}, {u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"甲"_s, 9}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal),
              u"数据表“2班”的标题里写着“高三(1)班”，请确定班级用标题里的还是表名里的。"_s);
    chooseClassSource(proposal, 0, ClassFrom::SheetName);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n2|1|甲|9"_s);
}

TEST_F(SeveralSheets, ATitleOfAnotherGradeThanTheSheetsNameIsAskedAbout)
{
    sheet(u"高二(1)班"_s,
          {{u"高一(1)班成绩"_s}, {u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"甲"_s, 9}});
    EXPECT_EQ(result(),
              u"数据表“高二(1)班”的标题里写着“高一(1)班”，请确定班级用标题里的还是表名里的。"_s);
}

TEST_F(SeveralSheets, SheetsOfOneSubjectEachBecomeOneRowAStudent)
{
    sheet(u"语文"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"得分"_s}, {1, 1, u"甲"_s, 90}, {1, 2, u"乙"_s, 80}});
    sheet(u"数学"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"得分"_s}, {1, 2, u"乙"_s, 60}, {1, 1, u"甲"_s, 70}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|90|70\n1|2|乙|80|60"_s);
}

TEST_F(SeveralSheets, EqualScoresOnTwoSheetsAreTakenOnce)
{
    sheet(u"总表"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    sheet(u"1班"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.warnings.join(u'\n'),
              u"“总表”和“1班”里有 1 名相同的学生，成绩也相同，只取一次。"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|90"_s);
}

TEST_F(SeveralSheets, ABlankThatTheOtherSheetFillsIsNamed)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                      {1, 1, u"甲"_s, 90, 80},
                      {1, 2, u"乙"_s, {}, 70}});
    sheet(u"补考"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}, {1, 2, u"乙"_s, 88}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.warnings.join(u'\n'),
              u"“成绩”和“补考”里有 2 名相同的学生，"
              "其中 1 名的空白用另一张表的成绩填上（如1班2号乙），其余成绩相同。"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|90|80\n1|2|乙|88|70"_s);
}

TEST_F(SeveralSheets, DifferentScoresOnTwoSheetsAreAskedAbout)
{
    sheet(u"初稿"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    sheet(u"定稿"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 91}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal),
              u"“初稿”和“定稿”里有 1 名相同的学生成绩不同（如1班1号甲），请确定用哪一张数据表。"_s);
    chooseSheet(proposal, 0, Taking::LeaveOut);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|91"_s);
    EXPECT_EQ(proposal.sheets[0].reason, u"您选择不用这张数据表。"_s);
}

class BesideTheMarks : public SeveralSheets
{
protected:
    BesideTheMarks()
    {
        sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                          {1, 1, u"甲"_s, 90, 80},
                          {1, 2, u"乙"_s, 70, 60}});
    }

    static const QString marks;
};

const QString BesideTheMarks::marks =
    u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|甲|90|80\n1|2|乙|70|60"_s;

TEST_F(BesideTheMarks, SeatsAreNoScores)
{
    sheet(u"考场安排"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文考场"_s, u"语文座位"_s},
                          {1, 1, u"甲"_s, 3, 17},
                          {1, 2, u"乙"_s, 3, 18}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.sheets[1].reason, u"没有科目的成绩。"_s);
    EXPECT_EQ(result(proposal), marks);
}

TEST_F(BesideTheMarks, ASheetThatOnlySeemsToHoldScoresIsTakenWhereTheUserSaysSo)
{
    sheet(u"平时"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文作业"_s, u"英语作业"_s},
                      {1, 1, u"甲"_s, 5, 4},
                      {1, 2, u"乙 "_s, 5, 3}});
    Proposal proposal = proposed();
    EXPECT_EQ(proposal.sheets[1].reason,
              u"“语文作业”一类的列不像成绩，这些学生的成绩在别的数据表里。"_s);
    EXPECT_EQ(proposal.warnings, QStringList());
    EXPECT_EQ(result(proposal), marks);
    chooseSheet(proposal, 1, Taking::Take);
    again(proposal);
    EXPECT_EQ(columns(proposal.sheets[1]), u"班级 学号 姓名 ?语文 ?英语"_s);
    EXPECT_FALSE(proposal.isDecided());
    chooseColumn(proposal, 1, 4, {});
    chooseColumn(proposal, 1, 5, {Field::Subject, u"英语"_s});
    again(proposal);
    EXPECT_EQ(result(proposal),
              u"[成绩]\n班级|学号|姓名|语文|数学|英语\n1|1|甲|90|80|4\n1|2|乙|70|60|3"_s);
}

TEST_F(BesideTheMarks, AStudentWhoStandsOnSuchASheetAloneIsAskedAbout)
{
    sheet(u"2班"_s,
          {{u"学号"_s, u"姓名"_s, u"语文（含附加）"_s}, {1, u"甲"_s, 88}, {2, u"丙"_s, 77}});
    EXPECT_EQ(result(), u"数据表“2班”的 C 列“语文（含附加）”：可能是“语文”的成绩，请选择。"_s);
}

TEST_F(SeveralSheets, EachStreamOfAnExamGetsItsOwnSheetAndSubjects)
{
    roster = Roster({u"语文"_s, u"物理"_s, u"历史"_s},
                    {{1, 1, u"甲"_s, u"文"_s}, {2, 1, u"乙"_s, u"理"_s}});
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"物理"_s, u"历史"_s},
                      {1, 1, u"甲"_s, 90, {}, 70},
                      {2, 1, u"乙"_s, 80, 60, {}}});
    EXPECT_EQ(result(), u"[文科]\n班级|学号|姓名|语文|历史\n1|1|甲|90|70\n"
                        "[理科]\n班级|学号|姓名|语文|物理\n2|1|乙|80|60"_s);
}

TEST_F(SeveralSheets, NumbersThatAreNotTheLibrarysAreAskedAbout)
{
    useLibrary();
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                      {301, 20260301, u"张三"_s, 1},
                      {301, 20260302, u"李四"_s, 2},
                      {301, 20260303, u"王小五"_s, 3}});
    Proposal proposal = proposed();
    EXPECT_EQ(
        result(proposal),
        u"按“班级”和“学号”有 3 人（共 3 人）的姓名和成绩库里的不同，这些班级或学号可能不是"
        "成绩库里的。不用“学号”一列，就按班级和姓名查找；确实是学号，请指定这一列是“学号”。"_s);
    chooseColumn(proposal, 0, 2, {});
    again(proposal);
    EXPECT_EQ(result(proposal),
              u"[成绩]\n班级|学号|姓名|语文\n301|1|张三|1\n301|2|李四|2\n301|3|王小五|3"_s);
}

TEST_F(SeveralSheets, AClassOfOtherStudentsIsAskedAboutHoweverFewTheyAre)
{
    useLibrary();
    sheet(u"成绩"_s, {{u"高三年级期中"_s},
                      {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                      {301, 1, u"张三"_s, 1},
                      {301, 2, u"李四"_s, 2},
                      {301, 3, u"王小五"_s, 3},
                      {302, 1, u"高甲"_s, 4},
                      {302, 9, u"高乙"_s, 5}});
    EXPECT_TRUE(result().startsWith(u"按“班级”和“学号”有 1 人（共 2 人）的姓名和成绩库里的不同"_s));
}

TEST_F(SeveralSheets, RowsTakenAndLeftByTheUserStaySo)
{
    sheet(
        u"成绩"_s,
        {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}, {1, 2, u"平均"_s, 80}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|90"_s);
    chooseRow(proposal, 0, 3, Taking::Take);
    chooseRow(proposal, 0, 2, Taking::LeaveOut);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|2|平均|80"_s);
    EXPECT_EQ(leftOut(proposal.sheets[0]), u"1 表头, 2 您选择不导入"_s);
}

} // namespace
} // namespace tidy
