// What would cost students a score is asked, or told, and never done without a word.
#include "TidyFixture.h"

namespace tidy {
namespace {

class LostScores : public TidyFixture
{
protected:
    /// Formulas whose results the file does not hold, as a reader leaves them.
    static void addFormulas(excel::Worksheet& sheet, std::initializer_list<std::pair<int, int>> at)
    {
        for (const auto& [row, column] : at)
            sheet.table().append(row, column, {});
        sheet.table().settle();
    }

    QString warnings() { return proposed().warnings.join(u'\n'); }
};

TEST_F(LostScores, FormulasWithoutResultsAreAskedAbout)
{
    addFormulas(sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                                  {1, 1, u"甲"_s, 100, {}},
                                  {1, 2, u"乙"_s, {}, {}}}),
                {{2, 5}, {3, 4}, {3, 5}});
    EXPECT_EQ(result(), u"数据表“成绩”的“数学”、“语文”里有 3 个公式没有结果，不知道是什么内容。"
                        "请用电子表格打开原来的文件，保存一次，再整理；不用的列请选择不导入。"_s);
    EXPECT_EQ(warnings(), QString());
    Proposal proposal = proposed();
    chooseColumn(proposal, 0, 4, {});
    chooseColumn(proposal, 0, 5, {});
    sheet(u"英语"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"英语"_s}, {1, 1, u"甲"_s, 90}});
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|英语\n1|1|甲|90"_s);
}

TEST_F(LostScores, FormulasOfNamesAndHeadingsAreAskedAboutToo)
{
    excel::Worksheet& made = sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, {}},
                                               {1, 1, u"甲"_s, 100, 90},
                                               {{}, {}, {}, {}}});
    addFormulas(made, {{3, 1}, {3, 2}, {3, 3}, {3, 4}});
    EXPECT_TRUE(result().contains(u"“班级”、“学号”、“姓名”、“语文”里有 4 个公式没有结果"_s));
    addFormulas(made, {{1, 5}});
    EXPECT_TRUE(result().contains(u"的E 列、“班级”、“学号”、“姓名”、“语文”里有 5 个"_s));
}

TEST_F(LostScores, ASheetOfFormulasAloneIsNamedWithItsReason)
{
    addFormulas(sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}}),
                {{2, 1}, {2, 2}, {2, 3}, {2, 4}});
    EXPECT_EQ(result(), u"没有可以导入的数据表。“成绩”：公式没有结果，请用电子表格打开原来的文件，"
                        "保存一次，再整理。"_s);
}

TEST_F(LostScores, FormulasOfSumsAndOfColumnsThatAreNotTakenAreNot)
{
    addFormulas(sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"总分"_s},
                                  {1, 1, u"甲"_s, 100},
                                  {u"平均分"_s}}),
                {{2, 5}, {3, 4}, {3, 5}, {5, 4}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|100"_s);
}

TEST_F(LostScores, ASubjectWithoutAnyScoreIsTold)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s, u"英语"_s},
                      {1, 1, u"甲"_s, 100}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|100"_s);
    EXPECT_EQ(warnings(), u"“数学”、“英语”没有内容，没有写进整理好的表。"_s);
}

TEST_F(LostScores, ASubjectThatTheSheetOfAClassLacksIsTold)
{
    sheet(u"1班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s}, {1, u"甲"_s, 100, 90}});
    sheet(u"2班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"乙"_s, 80}, {2, u"丙"_s, 70}});
    EXPECT_EQ(warnings(), u"2班（2 人）没有“数学”一列，这些学生的“数学”按缺考。"_s);
    Proposal proposal = proposed();
    chooseMark(proposal, {}, MarkUse::AsItStands);
    again(proposal);
    EXPECT_EQ(proposal.warnings.join(u'\n'),
              u"2班（2 人）没有“数学”一列，这些学生的“数学”不填。"_s);
    for (int number = 3; number <= 8; ++number)
        sheet(u"%1班"_s.arg(number), {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"丁"_s, 80}});
    EXPECT_EQ(warnings(),
              u"2班（2 人）、3班（1 人）、4班（1 人）、5班（1 人）、6班（1 人）等 7 个班"
              "没有“数学”一列，这些学生的“数学”按缺考。"_s);
}

TEST_F(LostScores, StudentsWhoAreMissingOnTheSheetOfASubjectAreTold)
{
    sheet(
        u"语文"_s,
        {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 1, u"甲"_s, 100}, {1, 2, u"乙"_s, 90}});
    sheet(u"数学"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"成绩"_s}, {1, 2, u"乙"_s, 80}});
    EXPECT_EQ(warnings(), u"有 1 名学生不在有“数学”一列的数据表里，他们的“数学”按缺考。"_s);
}

TEST_F(LostScores, AClassInTheFirstOfItsRowsAloneIsAskedAbout)
{
    excel::Worksheet& made = sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                                               {1, 1, u"甲"_s, 100},
                                               {{}, 2, u"乙"_s, 90},
                                               {2, 1, u"丙"_s, 80},
                                               {{}, 2, u"丁"_s, 70}});
    EXPECT_EQ(result(), u"数据表“成绩”的 4 名学生里有 2 名没有班级。班级只写在每班第一行的，"
                        "请在原来的表里给每一行填上班级，再整理。"_s);
    made.setCell(3, 1, 1);
    EXPECT_EQ(proposed().counts.leftOut, 1);
    EXPECT_TRUE(proposed().isDecided());
}

TEST_F(LostScores, ClassesThatAreMissingInOtherPlacesAreListed)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                      {1, 1, u"甲"_s, 100},
                      {1, 2, u"乙"_s, 90},
                      {{}, 1, u"丙"_s, 80},
                      {{}, 2, u"丁"_s, 70},
                      {{}, 3, u"戊"_s, 60}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.questions, QStringList());
    EXPECT_EQ(proposal.counts.leftOut, 3);
    EXPECT_EQ(remarks(proposal), u"成绩4: 没有班级。\n成绩5: 没有班级。\n成绩6: 没有班级。"_s);
}

TEST_F(LostScores, AClassInTheFirstRowOfEachPageIsAskedAbout)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                      {1, 1, u"甲"_s, 100},
                      {{}, 2, u"乙"_s, 90},
                      {1, 3, u"丙"_s, 80},
                      {{}, 4, u"丁"_s, 70}});
    EXPECT_TRUE(result().contains(u"的 4 名学生里有 2 名没有班级。"_s));
}

TEST_F(LostScores, FullMarksBehindAStrokeOrAColonAreNoPartOfTheSubject)
{
    sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文/150"_s, u"数学：150分"_s,
                       u"英语成绩（满分：150）"_s},
                      {1, 1, u"甲"_s, 100, 90, 80}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文|数学|英语\n1|1|甲|100|90|80"_s);
}

TEST_F(LostScores, NumbersBelowTheNameOfASubjectAndMoreAreAskedAbout)
{
    excel::Worksheet& made =
        sheet(u"成绩"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文（含附加）"_s, u"数学卷一"_s,
                           u"数学卷二"_s, u"英语老师"_s},
                          {1, 1, u"甲"_s, 100, 90, 40, u"安老师"_s}});
    EXPECT_EQ(result(), u"数据表“成绩”的 D 列“语文（含附加）”：可能是“语文”的成绩，请选择。\n"
                        "数据表“成绩”的 E 列“数学卷一”：可能是“数学”的成绩，请选择。\n"
                        "数据表“成绩”的 F 列“数学卷二”：可能是“数学”的成绩，请选择。"_s);
    made.setCell(1, 5, u"数学"_s);
    EXPECT_EQ(columns(proposed().sheets[0]), u"班级 学号 姓名 ?语文 数学 - -"_s);
    EXPECT_EQ(warnings(), u"“数学卷二”一列是数字，表头不认识，没有导入。"_s);
}

} // namespace
} // namespace tidy
