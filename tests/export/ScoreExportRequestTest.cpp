#include "export/ScoreExportRequest.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;
using exporting::BlockLayout;
using exporting::ScoreExportRequest;
using exporting::ZDYxs;

namespace {

class ExportColumns : public testing::Test
{
protected:
    ExportColumns() { request.subjects = {u"语文"_s, u"总分"_s}; }

    void save(const QString& name, const QString& columns)
    {
        test.execute(u"insert into 自定义显示表 (项目名称, 显示项目) values ('%1','%2')"_s.arg(
            name, columns));
    }

    support::TestLibrary test{{u"语文"_s, u"总分"_s}};
    ScoreExportRequest request;
};

TEST_F(ExportColumns, AreExamStudentAndEachSubjectWithItsRank)
{
    const QStringList columns{u"考试名称"_s, u"班级"_s,     u"学号"_s, u"姓名"_s,
                              u"语文"_s,     u"语文年名"_s, u"总分"_s, u"总分年名"_s};
    EXPECT_EQ(ZDYxs(test.scores, request), columns);
    EXPECT_EQ(test.scores.settings.DisplayItems, columns);
}

TEST_F(ExportColumns, LeaveTheStudentOutWhenHeHasARowOfHisOwn)
{
    request.infoRow = true;
    EXPECT_EQ(ZDYxs(test.scores, request),
              (QStringList{u"考试名称"_s, u"语文"_s, u"语文年名"_s, u"总分"_s, u"总分年名"_s}));
}

TEST_F(ExportColumns, EachLayoutHasItsOwnSavedList)
{
    save(u"导出成绩True"_s, u"考试名称,总分年名"_s);
    save(u"导出成绩False"_s, u"姓名,语文T分"_s);
    request.layout = BlockLayout::RankChart;
    EXPECT_EQ(ZDYxs(test.scores, request), (QStringList{u"考试名称"_s, u"总分年名"_s}));
    request.layout = BlockLayout::BlankRows;
    EXPECT_EQ(ZDYxs(test.scores, request), (QStringList{u"姓名"_s, u"语文T分"_s}));
    EXPECT_EQ(test.scores.settings.DisplayItems, (QStringList{u"姓名"_s, u"语文T分"_s}));
}

TEST_F(ExportColumns, OfASavedListThatAreGoneDropOut)
{
    save(u"导出成绩False"_s, u"姓名,物理,语文"_s);
    EXPECT_EQ(ZDYxs(test.scores, request), (QStringList{u"姓名"_s, u"语文"_s}));
}

TEST_F(ExportColumns, ASavedListWithoutAnyColumnLeftCountsAsNone)
{
    save(u"导出成绩False"_s, u"物理,化学"_s);
    EXPECT_EQ(ZDYxs(test.scores, request).first(), u"考试名称"_s);
}

TEST_F(ExportColumns, GivenForOneRunStandForTheSavedOnes)
{
    save(u"导出成绩False"_s, u"姓名"_s);
    request.columns = QStringList{u"语文"_s, u"物理"_s, u"考试名称"_s};
    EXPECT_EQ(ZDYxs(test.scores, request), (QStringList{u"语文"_s, u"考试名称"_s}));
    request.columns = QStringList{};
    EXPECT_EQ(ZDYxs(test.scores, request).size(), 8);
}

/// One with all that an export needs.
ScoreExportRequest wholeRequest()
{
    ScoreExportRequest request;
    request.exams = QStringList{u"期中"_s};
    request.subjects = QStringList{u"语文"_s};
    request.classes = QStringList{u"1"_s};
    return request;
}

TEST(AverageNote, TellsWhatTheGradesRowAloneWillShow)
{
    ScoreExportRequest request = wholeRequest();
    request.gradeAverage = {true, u"期末"_s, true};
    EXPECT_EQ(averageNote(request),
              u"只勾选了年级平均分：它的行按班级平均分的考试标注为“选择考试班平”，平均分全部是 0，"
              "因为没有名为“选择考试”的考试。要按年级平均分所选的“期末”计算，"
              "请勾选“年级平均按所选考试标注”。"_s);
    request.classAverage = {false, u"期中"_s, true};
    EXPECT_EQ(
        averageNote(request),
        u"只勾选了年级平均分：它的行按班级平均分的考试标注为“期中班平”，平均分也取自这次考试。"
        "要按年级平均分所选的“期末”计算，请勾选“年级平均按所选考试标注”。"_s);
}

TEST(AverageNote, WaitsUntilAllIsChosen)
{
    ScoreExportRequest request = wholeRequest();
    request.gradeAverage = {true, u"期末"_s, true};
    EXPECT_NE(averageNote(request), QString());
    request.layout = exporting::BlockLayout::RankChart;
    request.subjects = {u"语文"_s};
    EXPECT_EQ(averageNote(request), QString());
    request = wholeRequest();
    request.gradeAverage = {true, u"期末"_s, true};
    request.classes.clear();
    EXPECT_EQ(averageNote(request), QString());
}

TEST(AverageNote, IsEmptyWhereNothingMisleads)
{
    ScoreExportRequest request = wholeRequest();
    EXPECT_EQ(averageNote(request), QString());
    request.classAverage = {true, u"期中"_s, true};
    EXPECT_EQ(averageNote(request), QString());
    request.gradeAverage = {true, u"期末"_s, true};
    EXPECT_EQ(averageNote(request), QString());
    request.classAverage.ticked = false;
    request.gradeAverageByItsExam = true;
    EXPECT_EQ(averageNote(request), QString());
    request.gradeAverageByItsExam = false;
    request.gradeAverage.chosen = false;
    EXPECT_EQ(averageNote(request), QString());
}

} // namespace
