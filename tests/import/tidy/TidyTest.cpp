// From the workbooks that schools have to the sheet that the import wants.
#include "TidyFixture.h"

#include "support/ErrorOf.h"

namespace tidy {
namespace {

class Tidied : public TidyFixture
{
};

TEST_F(Tidied, ASheetInTheStrictFormStaysAsItIs)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                        {1, 1, u"张三"_s, 90, 80.5},
                        {1, 2, u"李四"_s, u"缺考"_s, u"作弊"_s}});
    EXPECT_EQ(result(),
              u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|张三|90|80.5\n1|2|李四|缺考|作弊"_s);
}

TEST_F(Tidied, TitlesSummariesAndNotesAreLeftOutWithTheirReasons)
{
    sheet(u"Sheet1"_s, {{u"高一期中考试成绩表"_s},
                        {},
                        {u"班 级"_s, u"学号"_s, u"姓　名"_s, u"语文成绩"_s, u"总分"_s, u"名次"_s},
                        {1, 1, u"张 三"_s, 90, 90, 1},
                        {},
                        {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文成绩"_s, u"总分"_s, u"名次"_s},
                        {1, 2, u"欧阳 小明"_s, u"８０"_s, 80, 2},
                        {u"平均分"_s, {}, {}, 85},
                        {{}, {}, u"最高分"_s, 90},
                        {u"注：缺考记为“缺”"_s}});
    const Proposal proposal = proposed();
    EXPECT_EQ(
        leftOut(proposal.sheets[0]),
        u"1 标题行, 2 空行, 3 表头, 5 空行, 6 重复的表头, 8-9 合计、平均一类的行, 10 说明文字"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|90\n1|2|欧阳小明|80"_s);
}

TEST_F(Tidied, AStudentWhoWasAbsentFromEverythingIsNoNote)
{
    sheet(u"1班"_s, {{u"序号"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
                     {1, 1, u"张三"_s, 90, 80},
                     {2, 2, u"李四"_s},
                     {{}, 3, u"王五"_s},
                     {u"制表人："_s, u"张老师"_s, {}, u"日期："_s, u"11月"_s},
                     {{}, {}, u"第1页"_s}});
    const Proposal proposal = proposed();
    EXPECT_EQ(leftOut(proposal.sheets[0]), u"1 表头, 5 没有姓名和号码的行, 6 说明文字"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|张三|90|80\n"
                                "1|2|李四|缺考|缺考\n1|3|王五|缺考|缺考"_s);
}

TEST_F(Tidied, HeadingsOfTwoRowsGiveTheScoresAndNotTheRanks)
{
    excel::Worksheet& made = sheet(
        u"Sheet1"_s,
        {{u"成绩"_s},
         {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, {}, {}, u"数学"_s},
         {{}, {}, {}, u"分数"_s, u"校名次"_s, u"班名次"_s, u"分数"_s, u"校名次"_s, u"班名次"_s},
         {1, 1, u"张三"_s, 90, 1, 1, 80, 2, 1}});
    made.merges().add({2, 1, 3, 1});
    made.merges().add({2, 2, 3, 2});
    made.merges().add({2, 3, 3, 3});
    made.merges().add({2, 4, 2, 6});
    made.merges().add({2, 7, 2, 9});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.sheets[0].heading.first, 2);
    EXPECT_EQ(proposal.sheets[0].heading.count, 2);
    EXPECT_EQ(proposal.sheets[0].column(4)->heading, u"语文分数"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|张三|90|80"_s);
}

TEST_F(Tidied, HeadingsOfTwoRowsNeedNoMerges)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, {}, u"数学"_s, {}},
                        {{}, {}, {}, u"分数"_s, u"班名次"_s, u"分数"_s, u"班名次"_s},
                        {1, 1, u"张三"_s, 90, 1, 80, 2}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文|数学\n1|1|张三|90|80"_s);
}

TEST_F(Tidied, MarksBelow总分AndBelowUnknownHeadingsAreNoSubjects)
{
    excel::Worksheet& made =
        sheet(u"Sheet1"_s,
              {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, {}, u"总分"_s, {}, u"劳动"_s, {}},
               {{}, {}, {}, u"分数"_s, u"名次"_s, u"分数"_s, u"名次"_s, u"分数"_s, u"名次"_s},
               {1, 1, u"张三"_s, 90, 1, 90, 1, 80, 1}});
    for (int column = 4; column <= 8; column += 2)
        made.merges().add({1, column, 1, column + 1});
    const Proposal proposal = proposed();
    EXPECT_EQ(columns(proposal.sheets[0]), u"班级 学号 姓名 语文 - - - - -"_s);
    EXPECT_EQ(proposal.sheets[0].column(8)->reason, u"表头不认识，不导入。"_s);
    EXPECT_EQ(proposal.warnings.join(u'\n'), u"“劳动分数”一列是数字，表头不认识，没有导入。"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|90"_s);
}

TEST_F(Tidied, ATitleAboveTheHeadingsIsNoPartOfThem)
{
    sheet(u"Sheet1"_s, {{u"高三期中"_s},
                        {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"体育"_s, u"总分"_s},
                        {1, 1, u"张三"_s, 90, 80, 90}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.sheets[0].heading.first, 2);
    EXPECT_EQ(proposal.sheets[0].heading.count, 1);
}

TEST_F(Tidied, MarksOfAbsenceBecome缺考)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"张三"_s, u"缺"_s},
                        {1, 2, u"李四"_s, u"—"_s},
                        {1, 3, u"王五"_s, u" 免 考 "_s},
                        {1, 4, u"赵六"_s, {}},
                        {1, 5, u"钱七"_s, u"违纪"_s},
                        {1, 6, u"孙八"_s, u"（缺考）"_s},
                        {1, 7, u"周九"_s, 0}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.counts.absent, 5);
    EXPECT_EQ(proposal.counts.cheated, 1);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|缺考\n1|2|李四|缺考\n"
                                "1|3|王五|缺考\n1|4|赵六|缺考\n1|5|钱七|作弊\n1|6|孙八|缺考\n"
                                "1|7|周九|0"_s);
}

TEST_F(Tidied, ATextThatMeansNothingKnownIsAskedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"张三"_s, u"请假"_s},
                        {1, 2, u"李四"_s, 80},
                        {1, 3, u"王五"_s, u"87分"_s},
                        {1, 4, u"赵六"_s, u"87*"_s}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal), u"成绩里有 1 种文字不知道是什么意思：“请假”（1 处）。"_s);
    EXPECT_EQ(remarks(proposal), u"Sheet15: 赵六的语文“87*”不只是数字，照原样保留。"_s);
    chooseMark(proposal, u"请假"_s, MarkUse::Absent);
    again(proposal);
    EXPECT_EQ(
        result(proposal),
        u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|缺考\n1|2|李四|80\n1|3|王五|87\n1|4|赵六|87*"_s);
}

TEST_F(Tidied, ASubjectInTwoColumnsByStreamIsTheUsersToChoose)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"数学（理）"_s, u"数学（文）"_s},
                        {1, 1, u"张三"_s, 90, {}},
                        {2, 1, u"李四"_s, {}, 70}});
    EXPECT_EQ(result(), u"数据表“Sheet1”的 D 列“数学（理）”：有几列都像“数学”，请选择一列。\n"
                        "数据表“Sheet1”的 E 列“数学（文）”：有几列都像“数学”，请选择一列。"_s);
}

TEST_F(Tidied, WhoHasAnotherLanguageIsToldToBeAbsentFrom英语)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"英语"_s, u"日语"_s},
                        {1, 1, u"张三"_s, 90, {}},
                        {1, 2, u"李四"_s, {}, 88}});
    EXPECT_EQ(proposed().warnings.last(),
              u"有 1 名学生在“日语”一列有内容，英语是空白：他们的英语按缺考。"_s);
}

TEST_F(Tidied, RaisedAndCircledDigitsAreNoDigitsOfAScore)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
                        {1, 1, u"张三"_s, u"8①"_s},
                        {1, 2, u"李四"_s, u"95²"_s},
                        {1, 3, u"王五"_s, u"10½"_s},
                        {1, 4, u"赵六"_s, u"①"_s},
                        {1, 5, u"钱七"_s, u"９８．５"_s}});
    Proposal proposal = proposed();
    EXPECT_EQ(result(proposal), u"成绩里有 1 种文字不知道是什么意思：“①”（1 处）。"_s);
    EXPECT_EQ(proposal.remarks.size(), 3U);
    chooseMark(proposal, u"①"_s, MarkUse::AsItStands);
    again(proposal);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|8①\n1|2|李四|95²\n"
                                "1|3|王五|10½\n1|4|赵六|①\n1|5|钱七|98.5"_s);
}

TEST_F(Tidied, StudentsAreFoundByExamNumberSchoolNumberOrClassAndName)
{
    useLibrary();
    sheet(u"Sheet1"_s, {{u"准考证号"_s, u"学籍号"_s, u"班别"_s, u"姓名"_s, u"外语"_s},
                        {u"10001"_s, {}, {}, u"张 三"_s, 1},
                        {{}, u"g2"_s, {}, u"李四"_s, 2},
                        {{}, {}, u"高三(1)班"_s, u"王小五"_s, 3},
                        {10005, {}, u"302"_s, u"张伟"_s, 4},
                        {{}, {}, u"高三（2）班"_s, u"张伟"_s, 5},
                        {{}, {}, u"高三1班"_s, u"陌生人"_s, 6},
                        {u"10004"_s, {}, {}, u"冒名者"_s, 7}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.counts.found, 4);
    EXPECT_EQ(proposal.counts.leftOut, 3);
    EXPECT_EQ(remarks(proposal),
              u"Sheet16: 按班级和姓名找到几个人：302班5号张伟、302班7号张伟。\n"
              "Sheet17: 没有学号。在成绩库里没有找到这个学生。\n"
              "Sheet18: 成绩库里考号“10004”是302班1号赵六，姓名不同，没有按它查找。\n"
              "Sheet18: 没有班级和学号。在成绩库里没有找到这个学生。"_s);
    EXPECT_EQ(result(proposal),
              u"[成绩]\n班级|学号|姓名|英语\n301|1|张三|1\n301|2|李四|2\n301|3|王小五|3\n"
              "302|5|张伟|4\n[没有写入的行]\n数据表|行|原因|原来的内容||||\n"
              "Sheet1|6|按班级和姓名找到几个人：302班5号张伟、302班7号张伟。|||高三（2）班|张伟|5\n"
              "Sheet1|7|没有学号。在成绩库里没有找到这个学生。|||高三1班|陌生人|6\n"
              "Sheet1|8|成绩库里考号“10004”是302班1号赵六，姓名不同，没有按它查找。"
              "没有班级和学号。在成绩库里没有找到这个学生。|10004|||冒名者|7"_s);
}

TEST_F(Tidied, NumbersThatLostTheirLastDigitsFindNobody)
{
    roster = Roster({u"语文"_s, u"数学"_s}, {{1, 1, u"赵一"_s, u"理"_s, {}, u"20250000000000100"_s},
                                             {1, 2, u"钱二"_s, u"理"_s, u"20250000000000200"_s}});
    sheet(u"Sheet1"_s, {{u"学籍号"_s, u"考号"_s, u"语文"_s, u"数学"_s},
                        {20250000000000100.0, {}, 1, 1},
                        {{}, 20250000000000200.0, 2, 2},
                        {u"20250000000000100"_s, {}, 3, 3}});
    const Proposal proposal = proposed();
    EXPECT_EQ(proposal.counts.found, 1);
    EXPECT_EQ(remarks(proposal), u"Sheet12: 没有班级和学号。在成绩库里没有找到这个学生。\n"
                                 "Sheet12: “学籍号”是 16 位以上的数字，后面几位已经丢失。\n"
                                 "Sheet13: 没有班级和学号。在成绩库里没有找到这个学生。\n"
                                 "Sheet13: “考号”是 16 位以上的数字，后面几位已经丢失。"_s);
}

TEST_F(Tidied, SheetsOfOneClassEachAreJoined)
{
    useLibrary();
    sheet(u"高三(1)班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"张三"_s, 90}});
    sheet(u"高三(2)班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s}, {1, u"赵六"_s, 80}});
    sheet(u"说明"_s, {{u"请各班核对"_s}});
    sheet(u"Sheet4"_s, {});
    const Proposal proposal = proposed();
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n301|1|张三|90\n302|1|赵六|80"_s);
    EXPECT_EQ(proposal.sheets[2].reason, u"没有找到表头。"_s);
    EXPECT_EQ(proposal.sheets[3].reason, u"空的数据表。"_s);
}

TEST_F(Tidied, RawAndAssignedMarksSideBySideAreTheUsersToChoose)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"语文(赋分)"_s},
                        {1, 1, u"张三"_s, 90, 95}});
    Proposal proposal = proposed();
    EXPECT_EQ(columns(proposal.sheets[0]), u"班级 学号 姓名 ?语文 ?语文"_s);
    EXPECT_EQ(result(proposal),
              u"数据表“Sheet1”的 D 列“语文”：“语文”既有原始分又有赋分，请选择用哪一列。\n"
              "数据表“Sheet1”的 E 列“语文(赋分)”：“语文”既有原始分又有赋分，请选择用哪一列。"_s);
    chooseColumn(proposal, 0, 5, {Field::Subject, u"语文"_s});
    again(proposal);
    EXPECT_EQ(columns(proposal.sheets[0]), u"班级 学号 姓名 - 语文"_s);
    EXPECT_EQ(result(proposal), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|95"_s);
}

TEST_F(Tidied, ARawMarkThatIsCalledSoIsTakenBesideAnAssignedOne)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文原始分"_s, u"语文赋分"_s},
                        {1, 1, u"张三"_s, 90, 95}});
    EXPECT_EQ(result(), u"[成绩]\n班级|学号|姓名|语文\n1|1|张三|90"_s);
}

TEST_F(Tidied, NothingIsWrittenWhileSomethingIsOpen)
{
    sheet(u"Sheet1"_s, {{u"姓名"_s, u"语文"_s}, {u"张三"_s, 90}});
    const Proposal proposal = proposed();
    EXPECT_EQ(support::errorOf([&] { tidied(book, proposal, sources()); }),
              u"数据表“Sheet1”里没有班级和学号，不知道各行是谁。"
              "打开有学生名单的成绩库，可以按班级和姓名查找学生。"_s);
}

} // namespace
} // namespace tidy
