// What is said of columns, rows and sheets, each sentence on what brings it about.
#include "TidyFixture.h"

namespace tidy {
namespace {

class Sentences : public TidyFixture
{
protected:
    /// Why a column below this heading is taken for what it is.
    QString reason(const QString& heading, const QString& sheetName = u"Sheet1"_s)
    {
        excel::Workbook one(u"期中.xlsx"_s);
        excel::Worksheet& made = one.addSheet(sheetName);
        int column = 0;
        for (const QString& title : {u"班级"_s, u"学号"_s, u"姓名"_s, heading, u"英语"_s})
            made.setCell(1, ++column, title);
        column = 0;
        for (const runtime::Value& cell : Cells{1, 1, u"张三"_s, 90, 80})
            made.setCell(2, ++column, cell);
        return propose(one, Goal::ExamScores, sources()).sheets[0].column(4)->reason;
    }

    /// Sheet1 with one row of class, number, name and a score.
    QString remarksOn(const runtime::Value& classText, const runtime::Value& number,
                      const QString& name)
    {
        excel::Workbook one(u"期中.xlsx"_s);
        excel::Worksheet& made = one.addSheet(u"Sheet1"_s);
        int column = 0;
        for (const QString& title : {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s})
            made.setCell(1, ++column, title);
        column = 0;
        for (const runtime::Value& cell : Cells{classText, number, name, 90, 80})
            made.setCell(2, ++column, cell);
        return remarks(propose(one, Goal::ExamScores, sources()));
    }
};

TEST_F(Sentences, AColumnTellsWhyItIsTakenOrNot)
{
    EXPECT_EQ(reason(u"语文"_s), u"表头就是“语文”。"_s);
    EXPECT_EQ(reason(u"语文成绩"_s), u"按表头认作“语文”。"_s);
    EXPECT_EQ(reason(u"名次"_s), u"这一列不用导入。"_s);
    EXPECT_EQ(reason(u"甲乙丙"_s), u"表头不认识，不导入。"_s);
    EXPECT_EQ(reason({}), u"没有表头，不导入。"_s);
    EXPECT_EQ(reason(u"物理"_s), u"没有这个科目，不导入。"_s);
    EXPECT_EQ(reason(u"上次语文"_s), u"像是上一次考试的成绩，请选择。"_s);
    EXPECT_EQ(reason(u"语文总分"_s), u"不知道这是“语文”的成绩还是几科的总分。"_s);
    EXPECT_EQ(reason(u"语文赋分"_s), u"只有“语文”的赋分，用的是赋分。"_s);
    EXPECT_EQ(reason(u"成绩"_s), u"看不出是哪一科的成绩。"_s);
    EXPECT_EQ(reason(u"成绩"_s, u"语文"_s), u"“语文”里写着科目。"_s);
    EXPECT_EQ(reason(u"数学（文）"_s), u"可能只是一部分学生的“数学”，请确定。"_s);
}

TEST_F(Sentences, LinesOfAliasesThatCannotBeReadAreWarnedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    const Aliases aliases({u"语文=国文"_s, u"乱写"_s, u"数学=国文"_s});
    const Proposal proposal = propose(book, Goal::ExamScores, {aliases, roster});
    EXPECT_EQ(proposal.warnings,
              (QStringList{u"别名.txt 第 2 行没有用上：应该写成“名称=别名 别名”。"_s,
                           u"别名.txt 第 3 行的“国文”已经是“语文”的别名，没有用上。"_s}));
}

TEST_F(Sentences, ColumnsOfOneUseTellWhichOneIsTaken)
{
    sheet(u"Sheet1"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"学生姓名"_s, u"语文原始分"_s, u"语文赋分"_s},
           {1, 1, u"甲"_s, u"甲"_s, 90, 95}});
    Proposal proposal = proposed();
    EXPECT_EQ(proposal.sheets[0].column(4)->reason, u"已经有“姓名”一列，这一列不用导入。"_s);
    EXPECT_EQ(proposal.sheets[0].column(6)->reason, u"“语文”用的是原始分数一列。"_s);
    EXPECT_EQ(proposal.warnings, QStringList()) << "raw marks are what is wanted";
    chooseColumn(proposal, 0, 4, {Field::Name});
    again(proposal);
    EXPECT_EQ(proposal.sheets[0].column(4)->reason, u"您选择的。"_s);
    EXPECT_EQ(proposal.sheets[0].column(6)->reason, u"“语文”用的是原始分数一列。"_s);
    chooseColumn(proposal, 0, 5, {Field::Subject, u"语文"_s});
    again(proposal);
    EXPECT_EQ(proposal.sheets[0].column(6)->reason, u"“语文”用的是另一列。"_s);
}

TEST_F(Sentences, AssignedMarksAloneAreTold)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文赋分"_s, u"数学赋分"_s, u"英语"_s},
                        {1, 1, u"甲"_s, 90, 80, 70}});
    Proposal proposal = proposed();
    EXPECT_EQ(proposal.warnings, QStringList{u"“语文”“数学”只有赋分，没有原始分，用的是赋分。"_s});
    chooseColumn(proposal, 0, 4, {Field::Subject, u"语文"_s});
    chooseColumn(proposal, 0, 5, {Field::Subject, u"数学"_s});
    again(proposal);
    EXPECT_EQ(proposal.warnings, QStringList());
}

TEST_F(Sentences, ARowTellsWhomTheLibraryHasInstead)
{
    useLibrary();
    EXPECT_EQ(remarksOn(301, 1, u"张三"_s), u""_s);
    EXPECT_EQ(remarksOn(301, 1, u"陌生人"_s), u"Sheet12: 成绩库里 301 班 1 号的姓名是“张三”。"_s);
    EXPECT_EQ(remarksOn(301, 9, u"李四"_s),
              u"Sheet12: 成绩库里没有 301 班 9 号。同班同名的有：301班2号李四。"_s);
    EXPECT_EQ(remarksOn(303, 9, u"陌生人"_s), u"Sheet12: 成绩库里没有 303 班 9 号。"_s);
    EXPECT_EQ(remarksOn(303, {}, u"赵六"_s),
              u"Sheet12: 没有学号。在成绩库里没有找到这个学生。同名的有：302班1号赵六。"_s);
    roster = Roster({u"语文"_s, u"数学"_s}, {});
    EXPECT_EQ(remarksOn(1, 1, {}), u"Sheet12: 没有姓名。"_s);
}

TEST_F(Sentences, AStudentWhoIsFoundInAnotherClassIsTold)
{
    useLibrary();
    sheet(u"Sheet1"_s,
          {{u"班级"_s, u"考号"_s, u"姓名"_s, u"语文"_s}, {301, u"10004"_s, u"赵六"_s, 90}});
    EXPECT_EQ(remarks(proposed()),
              u"Sheet12: 表里是 301 班，成绩库里是302班1号赵六，用的是成绩库的。"_s);
}

TEST_F(Sentences, NumbersAreWrittenOutHoweverLongTheyAre)
{
    roster = Roster({u"语文"_s, u"数学"_s}, {{202401, 20240206, u"王小明"_s, u"理"_s},
                                             {202401, 20240207, u"王小明"_s, u"理"_s}});
    EXPECT_EQ(remarksOn(202401, {}, u"王小明"_s),
              u"Sheet12: 按班级和姓名找到几个人：202401班20240206号王小明、"
              "202401班20240207号王小明。"_s);
    EXPECT_EQ(remarksOn(202401, 20240206, u"李四"_s),
              u"Sheet12: 成绩库里 202401 班 20240206 号的姓名是“王小明”。"_s);
    EXPECT_EQ(remarksOn(202401, 20240208, u"李四"_s),
              u"Sheet12: 成绩库里没有 202401 班 20240208 号。"_s);
    EXPECT_EQ(remarksOn(202401, u"20240206号"_s, u"王小明"_s), u""_s);
}

TEST_F(Sentences, ANumberThatIsTooLongIsNotSaidToBeNone)
{
    useLibrary();
    EXPECT_EQ(remarksOn(301, u"320104200907010001"_s, u"张三"_s),
              u"Sheet12: 学号“320104200907010001”太长，不像班里的学号，没有用它。"_s);
    EXPECT_EQ(remarksOn(301, u"三号"_s, u"张三"_s), u"Sheet12: 学号“三号”不是数字，没有用它。"_s);
}

TEST_F(Sentences, SeveralStudentsOfOneClassAndNumberAreAllNamed)
{
    roster =
        Roster({u"语文"_s, u"数学"_s}, {{1, 3, u"王五"_s, u"理"_s}, {1, 3, u"冯新"_s, u"理"_s}});
    const QString both = u"Sheet12: 成绩库里 1 班 3 号有几个人：王五、冯新。"_s;
    for (const QString& name : {u"冯新"_s, u"王五"_s, u"别人"_s})
        EXPECT_EQ(remarksOn(1, 3, name), both) << name.toStdString();
    EXPECT_EQ(remarksOn(1, 3, {}), both + u"\nSheet12: 没有姓名。"_s);
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 3, u"冯新"_s, 90}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|3|冯新|90"_s) << "the name is there";
}

TEST_F(Sentences, ANumberBelowZeroIsAskedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"甲"_s, -1},
                        {1, 2, u"乙"_s, u"-1"_s},
                        {1, 3, u"丙"_s, -1}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal), u"成绩里有 1 种文字不知道是什么意思：“-1”（3 处）。"_s);
    chooseMark(proposal, u"-1"_s, MarkUse::AsItStands);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|-1\n1|2|乙|-1\n1|3|丙|-1"_s);
    chooseMark(proposal, u"-1"_s, MarkUse::Absent);
    again(proposal);
    EXPECT_EQ(result(proposal),
              u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|缺考\n1|2|乙|缺考\n1|3|丙|缺考"_s);
}

TEST_F(Sentences, ASheetTellsWhyItIsNotTaken)
{
    sheet(u"1班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"甲"_s, 90}});
    sheet(u"2班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"乙"_s, 80}})
        .setVisibility(excel::Visibility::Hidden);
    sheet(u"3班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}});
    sheet(u"名单"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"性别"_s}, {1, 1, u"甲"_s, u"女"_s}});
    const Proposal proposal = proposed();
    QStringList reasons;
    for (const SheetProposal& one : proposal.sheets)
        reasons.append(one.reason);
    EXPECT_EQ(
        reasons,
        (QStringList{{}, u"隐藏的数据表。"_s, u"表头下面没有学生。"_s, u"没有科目的成绩。"_s}));
}

TEST_F(Sentences, WhereNobodyIsFoundNothingIsWritten)
{
    useLibrary();
    sheet(u"Sheet1"_s, {{u"考号"_s, u"姓名"_s, u"语文"_s}, {u"20001"_s, u"陌生人"_s, 90}});
    EXPECT_EQ(result(), u"没有一名学生能写进整理好的表：1 行学生都没有找到班级和学号。"_s);
}

TEST_F(Sentences, WhereNobodyHasANameNothingIsWritten)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                        {1, {}, {}, 81, 70},
                        {2, {}, {}, 82, 71}});
    EXPECT_EQ(result(), u"没有一名学生能写进整理好的表：2 行有分数、没有姓名。"_s);
    book.Worksheets().Item(1).setCell(3, 3, u"陌生人"_s);
    EXPECT_EQ(result(), u"没有一名学生能写进整理好的表：1 行学生都没有找到班级和学号，"
                        "1 行有分数、没有姓名。"_s);
}

TEST_F(Sentences, WhatStandsBesideASubjectIsNoScore)
{
    for (const QString& heading :
         {u"语文考场"_s, u"语文考场号"_s, u"语文座位"_s, u"语文座号"_s, u"语文组别"_s,
          u"语文小组"_s, u"语文听写次数"_s, u"语文老师编号"_s, u"语文教师"_s, u"语文教师工号"_s})
        EXPECT_EQ(reason(heading), u"这一列不用导入。"_s) << heading.toStdString();
    for (const QString& heading :
         {u"语文作业"_s, u"语文老师评分"_s, u"语文考场成绩"_s, u"语文一组"_s})
        EXPECT_EQ(reason(heading), u"可能是“语文”的成绩，请选择。"_s) << heading.toStdString();
}

TEST_F(Sentences, AClassTellsHowItsNumberWasFound)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                        {u"高三(1)班"_s, 1, u"甲"_s, 90, 80}});
    EXPECT_EQ(proposed().classes.front().reason, u"用的是文字里的班号。"_s);
    useLibrary();
    EXPECT_EQ(proposed().classes.front().reason, u"成绩库里有 301 班。"_s);
    Proposal proposal = proposed();
    chooseClass(proposal, u"高三(1)班"_s, 302);
    again(proposal);
    EXPECT_EQ(proposal.classes.front().reason, u"您选择的。"_s);
}

TEST_F(Sentences, ClassesThatAreOpenAreNamedInOneQuestion)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {u"实验班"_s, 1, u"甲"_s, 90},
                        {u"重点班"_s, 1, u"乙"_s, 80}});
    EXPECT_EQ(result(), u"有 2 种班级的写法不能确定是哪个班：“实验班”（看不出是哪个班。）、"
                        "“重点班”（看不出是哪个班。）。"_s);
}

TEST_F(Sentences, BothStreamsAreTwoSheetsWhichIsSaid)
{
    roster = Roster({u"语文"_s}, {{1, 1, u"甲"_s, u"理"_s}, {11, 1, u"乙"_s, u"文"_s}});
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"甲"_s, 90},
                        {11, 1, u"乙"_s, 80},
                        {12, 1, u"丙"_s, 70}});
    EXPECT_EQ(resultsText(proposed()),
              u"按科类分成“理科”“文科”“科类不明” 3 张数据表，各导入一次。"_s);
    const Proposal list = proposed(Goal::StudentList);
    EXPECT_EQ(resultsText(list), u""_s);
}

} // namespace
} // namespace tidy
