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

} // namespace
} // namespace tidy
