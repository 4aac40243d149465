#include "import/TidyTexts.h"

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "support/PrintQString.h"

namespace importing {
namespace {

using namespace Qt::StringLiterals;
using tidy::ColumnUse;
using tidy::Field;
using tidy::Goal;
using tidy::Proposal;

Proposal exam()
{
    Proposal proposal;
    tidy::SheetProposal sheet{.name = u"1班"_s, .students = 5};
    sheet.columns.push_back(
        {.column = 4, .heading = u"语文"_s, .use = ColumnUse{Field::Subject, u"语文"_s}});
    proposal.sheets.push_back(sheet);
    proposal.counts = {.sheets = 1, .students = 5};
    proposal.results.push_back({u"成绩"_s, 5});
    return proposal;
}

TEST(TidyCounts, TellHowTheStudentsWereFound)
{
    Proposal proposal = exam();
    EXPECT_EQ(countsText(proposal), u"取 1 张数据表的 5 名学生。1 科：语文。"_s);
    proposal.counts.known = 2;
    proposal.counts.found = 2;
    proposal.counts.unknown = 1;
    EXPECT_EQ(countsText(proposal),
              u"取 1 张数据表的 5 名学生：班级和学号相符 2 人，由其他栏找到 2 "
              "人，成绩库里没有 1 人。1 科：语文。"_s);
}

TEST(TidyCounts, TellStudentsAndSumsThatAreNotTakenApart)
{
    Proposal proposal = exam();
    proposal.counts.leftOut = 3;
    proposal.counts.nobody = 2;
    EXPECT_EQ(countsText(proposal), u"取 1 张数据表的 5 名学生。另有 3 名学生认不出，没有取。"
                                    "另有 2 行有分数、没有姓名，没有取。1 科：语文。"_s);
    proposal.goal = Goal::StudentList;
    EXPECT_EQ(countsText(proposal), u"取 1 张数据表的 5 名学生。另有 3 名学生认不出，没有取。"
                                    "另有 2 行有数字、没有姓名，没有取。"_s);
}

TEST(TidyCounts, TellOfASheetAStream)
{
    Proposal proposal = exam();
    proposal.results = {{u"理科"_s, 3}, {u"文科"_s, 2}};
    EXPECT_EQ(countsText(proposal), u"取 1 张数据表的 5 名学生。1 科：语文。"
                                    "按科类分成“理科”“文科” 2 张数据表，各导入一次。"_s);
}

TEST(TidyQuestions, AreShownUpToThree)
{
    Proposal proposal = exam();
    proposal.questions = {u"一"_s, u"二"_s, u"三"_s};
    EXPECT_EQ(questionsText(proposal), u"一\n二\n三"_s);
    proposal.questions += {u"四"_s, u"五"_s};
    EXPECT_EQ(questionsText(proposal), u"一\n二\n三\n还有 2 个问题，见“提示”。"_s);
}

TEST(TidyNotes, EndWithTheNumberOfThoseThatAreNotKept)
{
    Proposal proposal = exam();
    proposal.questions = {u"问"_s};
    proposal.warnings = {u"说"_s};
    proposal.remarks = {{.sheet = u"1班"_s, .row = 3, .text = u"甲"_s, .isLeftOut = true},
                        {.sheet = u"1班"_s, .row = 4, .text = u"乙"_s}};
    proposal.remarksNotKept = 7;
    EXPECT_EQ(grid::gridText(notesGrid(proposal)),
              u"类别\t数据表\t行\t说明\n请决定\t\t\t问\n注意\t\t\t说\n没有取\t1班\t3\t甲\n"
              "注意\t1班\t4\t乙\n注意\t\t\t这样的行另有 7 行。\n"_s);
}

TEST(TidyClassSources, AreNamed)
{
    using tidy::ClassFrom;
    EXPECT_EQ(classSourceText({ClassFrom::Nowhere}), u"还没有来处"_s);
    EXPECT_EQ(classSourceText({ClassFrom::Column}), u"标为“班级”的列"_s);
    EXPECT_EQ(classSourceText({ClassFrom::TitleRows, u"高一(1)班\n成绩"_s}),
              u"标题“高一(1)班 成绩”"_s);
    EXPECT_EQ(classSourceText({ClassFrom::SheetName, u"1班"_s}), u"数据表名“1班”"_s);
    EXPECT_EQ(classSourceText({ClassFrom::FileName, u"2班"_s}), u"文件名“2班”"_s);
}

} // namespace
} // namespace importing
