// Workbooks that no school means seriously: each is told in a sentence, and in bounded time.
#include "TidyFixture.h"
#include "support/ErrorOf.h"

namespace tidy {
namespace {

class HostileBooks : public TidyFixture
{
};

TEST_F(HostileBooks, AnEmptyWorkbookIsTold)
{
    EXPECT_EQ(result(), u"没有可以导入的数据表。"_s);
    sheet(u"Sheet1"_s, {});
    EXPECT_EQ(result(), u"没有可以导入的数据表。“Sheet1”：空的数据表。"_s);
}

TEST_F(HostileBooks, ALoneCellAtTheFarEndCostsNothing)
{
    excel::Worksheet& made =
        sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    made.setCell(excel::lastGridRow, excel::lastGridColumn, u"x"_s);
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.questions.join(u'\n'),
              u"数据表“Sheet1”有 1048576 行，超过了能整理的 70000 行。"_s);
    EXPECT_EQ(proposal.warnings.join(u'\n'), u"数据表“Sheet1”第 255 列以后的内容没有看。"_s);
    EXPECT_EQ(leftOut(proposal.sheets[0]), u"1 表头, 3-70000 空行"_s);
}

TEST_F(HostileBooks, SheetsThatComeOrGoMeanwhileAreReadAsTheyAre)
{
    sheet(u"一"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    Proposal proposal = proposed();
    sheet(u"二"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 2, u"乙"_s, 80}});
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|甲|90\n1|2|乙|80"_s);
    book.Worksheets().Item(1).Delete();
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|2|乙|80"_s);
    book.Close();
    EXPECT_NE(support::errorOf([&] { again(proposal); }), u""_s);
}

TEST_F(HostileBooks, HeadingsOutsideOfTheSheetAreNone)
{
    sheet(u"一"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    for (const int first : {-5, 0, 3, 1000000000}) {
        Proposal proposal = proposed();
        chooseHeading(proposal, 0, first, 2);
        again(proposal);
        EXPECT_EQ(proposal.questions.join(u'\n'), u"没有可以导入的数据表。“一”：没有找到表头。"_s);
    }
}

TEST_F(HostileBooks, AThousandSheetsAreNamedByTheFirstFew)
{
    for (int number = 1; number <= 1000; ++number)
        sheet(u"表%1"_s.arg(number), {{u"随便"_s}});
    EXPECT_EQ(result(), u"没有可以导入的数据表。“表1”：没有找到表头。“表2”：没有找到表头。"
                        "“表3”：没有找到表头。“表4”：没有找到表头。“表5”：没有找到表头。"_s);
}

TEST_F(HostileBooks, AMergeOverTheWholeSheetHidesNoStudent)
{
    excel::Worksheet& made =
        sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"甲"_s, 90}});
    made.merges().add(excel::wholeGrid);
    EXPECT_EQ(result(), u"没有可以导入的数据表。“Sheet1”：没有找到表头。"_s);
}

TEST_F(HostileBooks, ErrorCellsAndDatesAmongScoresAreNeverTakenForNumbers)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"甲"_s, runtime::Value::error(u"#N/A"_s)},
                        {1, 2, u"乙"_s, 80},
                        {1, 3, u"丙"_s, runtime::Value(true)},
                        {1, 4, u"丁"_s, 70}});
    EXPECT_EQ(result(), u"成绩里有 2 种文字不知道是什么意思：“#N/A”（1 处）、“True”（1 处）。"_s);
}

TEST_F(HostileBooks, HostileNamesArriveAsTheyAre)
{
    const QString name = u"' or ''='--"_s + QString(10000, u'长');
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, name, 90}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|"_s + name + u"|90"_s);
}

TEST_F(HostileBooks, TwoTablesSideBySideAreAskedAbout)
{
    sheet(u"Sheet1"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, u"甲"_s, 90, 2, u"乙"_s, 80}});
    const Proposal proposal = proposed();
    EXPECT_EQ(columns(proposal.sheets[0]), u"?学号 ?姓名 ?语文 ?学号 ?姓名 ?语文"_s);
    EXPECT_EQ(proposal.questions.first(),
              u"数据表“Sheet1”的 A 列“学号”：有 2 列都像“学号”，请选择一列。"_s);
}

TEST_F(HostileBooks, AColumnOfGradesIsNoColumnOfScores)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"体育"_s},
                        {1, 1, u"甲"_s, u"优"_s, u"良"_s},
                        {1, 2, u"乙"_s, u"良"_s, u"优"_s}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.questions.first(), u"数据表“Sheet1”的 D 列“语文”：这一列大多不是数字。"_s);
    EXPECT_EQ(proposal.warnings.join(u'\n'), u"没有科目“体育”，表里的“体育”一列没有导入。"_s);
}

} // namespace
} // namespace tidy
