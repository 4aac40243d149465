// Lists of students become what 导入信息 wants.
#include "TidyFixture.h"

namespace tidy {
namespace {

class StudentLists : public TidyFixture
{
protected:
    QString listed() { return result(proposed(Goal::StudentList)); }
};

TEST_F(StudentLists, ColumnsGetTheNamesOf信息表AndItsOrder)
{
    sheet(u"Sheet1"_s, {{u"2026级新生名单"_s},
                        {u"序号"_s, u"学生姓名"_s, u"身份证号"_s, u"文理"_s, u"班内学号"_s,
                         u"班别"_s, u"出生日期"_s, u"全国学籍号"_s, u"家长姓名"_s},
                        {1, u"张 三"_s, u"110101201001010011"_s, u"理科"_s, u"01"_s, u"高一(3)班"_s,
                         u"2010-01-01"_s, u"G0012"_s, u"张父"_s},
                        {u"合计"_s, 1}});
    EXPECT_EQ(listed(), u"[学生名单]\n班级|学号|姓名|科类|出生时间|学籍号|身份证\n"
                        "3|1|张三|理|2010-01-01|G0012|110101201001010011"_s);
}

TEST_F(StudentLists, NumbersOf16DigitsAreWarnedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"身份证"_s, u"学籍号"_s},
                        {1, 1, u"张三"_s, 110101201001010016.0, u"00123"_s},
                        {1, 2, u"李四"_s, 123456789012345.0, {}}});
    const Proposal proposal = proposed(Goal::StudentList);
    EXPECT_EQ(remarks(proposal), u"Sheet12: “身份证”是 16 位以上的数字，后面几位已经丢失。"_s);
    EXPECT_EQ(proposal.warnings.join(u'\n'),
              u"“身份证”一列有 1 个号码是数字，表里显示在前面的 0 没有写进去。"
              "号码前面有 0 的，请在原来的表里把这一列设为文本，重新填写。\n"
              "有 1 个号码是 16 位以上的数字，电子表格只保留 15 位，后面几位已经丢失。"
              "请在原来的表里把这一列设为文本，重新填写号码。"_s);
    EXPECT_EQ(result(proposal), u"[学生名单]\n班级|学号|姓名|学籍号|身份证\n"
                                "1|1|张三|00123|110101201001010016\n1|2|李四||123456789012345"_s);
}

TEST_F(StudentLists, RowsWithoutClassOrNumberAreListedAndNotWritten)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"性别"_s},
                        {1, 1, u"张三"_s, u"男"_s},
                        {1, {}, u"李四"_s, u"女"_s},
                        {1, u"G3"_s, u"王五"_s, u"女"_s}});
    EXPECT_EQ(listed(), u"[学生名单]\n班级|学号|姓名|性别\n1|1|张三|男\n[没有写入的行]\n"
                        "数据表|行|原因|原来的内容|||\nSheet1|3|没有学号。|1||李四|女\n"
                        "Sheet1|4|学号“G3”不是数字，没有用它。没有学号。|1|G3|王五|女"_s);
}

TEST_F(StudentLists, RowsWithoutANameAreNotSaidToHaveScores)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"身份证"_s, u"性别"_s},
                        {1, {}, {}, 110101.0, u"男"_s}});
    EXPECT_EQ(listed(), u"没有一名学生能写进整理好的表：1 行有数字、没有姓名。"_s);
}

TEST_F(StudentLists, AStudentWhoStandsTwiceIsAskedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"张三"_s}, {1, 1, u"李四"_s}});
    const Proposal proposal = proposed(Goal::StudentList);
    EXPECT_EQ(remarks(proposal), u"Sheet13: 和“Sheet1”第 2 行是同一个班级和学号，内容不同。"_s);
    EXPECT_FALSE(proposal.isDecided());
}

TEST_F(StudentLists, ChosenSubjectsAreNoStreamAndAreTold)
{
    sheet(u"Sheet1"_s,
          {{u"班级"_s, u"学号"_s, u"姓名"_s, u"选科"_s}, {1, 1, u"张三"_s, u"物化生"_s}});
    const Proposal proposal = proposed(Goal::StudentList);
    EXPECT_EQ(proposal.warnings.join(u'\n'), u"“选科”一列的表头不认识，没有导入。"_s);
    EXPECT_EQ(result(proposal), u"[学生名单]\n班级|学号|姓名\n1|1|张三"_s);
}

TEST_F(StudentLists, AStreamOfOtherWordsIsAskedAbout)
{
    sheet(u"Sheet1"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
                        {1, 1, u"张三"_s, u"理科"_s},
                        {1, 2, u"李四"_s, u"物理类"_s}});
    Proposal proposal = proposed(Goal::StudentList);
    EXPECT_EQ(result(proposal),
              u"数据表“Sheet1”的 D 列“科类”：第 3 行是“物理类”，成绩库的科类是文或理，"
              "请选择这一列不导入，或者改好再整理。"_s);
    chooseColumn(proposal, 0, 4, {});
    again(proposal);
    EXPECT_EQ(result(proposal), u"[学生名单]\n班级|学号|姓名\n1|1|张三\n1|2|李四"_s);
}

TEST_F(StudentLists, WithoutNumbersTheUserIsAsked)
{
    sheet(u"Sheet1"_s, {{u"座号"_s, u"班级"_s, u"姓名"_s}, {1, 1, u"张三"_s}});
    Proposal proposal = proposed(Goal::StudentList);
    EXPECT_EQ(result(proposal), u"数据表“Sheet1”里没有学号，不知道各行是谁。"_s);
    chooseColumn(proposal, 0, 1, {Field::Number});
    again(proposal);
    EXPECT_EQ(result(proposal), u"[学生名单]\n班级|学号|姓名\n1|1|张三"_s);
}

} // namespace
} // namespace tidy
