#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::TJGFSDRS;
using statistics::TJZFSXRS;
using statistics::Transfer;

class ScoreBands : public ReportTest
{
protected:
    ScoreBands() { set(u"各分数段人数"_s, u"单科20,总分50"_s); }

    void run() { TJGFSDRS(context, exams, u"各分数段人数"_s, grid, Transfer::GridOnly); }
};

TEST_F(ScoreBands, StandInABlockForEachSubjectAndTotal)
{
    run();
    EXPECT_EQ(
        rows(),
        (QStringList{
            u"语文各分数段人数|语文各分数段人数|语文各分数段人数|语文各分数段人数|语文各分数段人数|语文各分数段人数"_s,
            u"班级|[0,20)|[20,40)|[40,60)|[60,80)|[80,100]"_s,
            u"1班|0|0|0|1|1"_s,
            u"2班|0|0|0|0|1"_s,
            u"数学各分数段人数|数学各分数段人数|数学各分数段人数|数学各分数段人数|数学各分数段人数|数学各分数段人数"_s,
            u"班级|[0,20)|[20,40)|[40,60)||"_s,
            u"1班|0|2|1||"_s,
            u"2班|0|0|1||"_s,
            u"总分各分数段人数|总分各分数段人数|总分各分数段人数|总分各分数段人数|总分各分数段人数|总分各分数段人数"_s,
            u"班级|[0,50)|[50,100)|[100,150]||"_s,
            u"1班|1|1|1||"_s,
            u"2班|0|0|1||"_s,
        }));
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.mergeRows(), (std::set<int>{0, 4, 8}));
    EXPECT_EQ(grid.ColWidth(0), 900);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(ScoreBands, FullMarksFallIntoTheLastClosedBand)
{
    library.execute(u"update 考试名称表 set 语文=120"_s);
    set(u"各分数段人数"_s, u"单科10,总分50"_s);
    library.execute(u"update 成绩表 set 语文=120 where 姓名='甲'"_s);
    run();
    EXPECT_EQ(grid.TextMatrix(1, 12), u"[110,120]"_s);
    EXPECT_EQ(grid.TextMatrix(2, 12), u"1"_s);
}

TEST_F(ScoreBands, OfAHundredAndTwentyMarksByTenAreTwelve)
{
    library.execute(u"update 考试名称表 set 语文=120, 数学=null, 总分='语文'"_s);
    set(u"各分数段人数"_s, u"单科10,总分10"_s);
    run();
    EXPECT_EQ(grid.Cols(), 13);
}

TEST_F(ScoreBands, ScoreAboveAnOpenLastBandIsLostWithoutAMessageToo)
{
    set(u"各分数段人数"_s, u"单科30,总分50"_s);
    library.execute(u"update 成绩表 set 语文=125 where 姓名='甲'"_s);
    run();
    EXPECT_EQ(grid.TextMatrix(1, 4), u"[90,120)"_s);
    EXPECT_EQ(row(2), u"1班|0|0|1|0"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(ScoreBands, WidthThatIsFarTooSmallIsShownForEachItemAndTheOthersStand)
{
    set(u"各分数段人数"_s, u"单科0.0001,总分50"_s);
    run();
    EXPECT_EQ(row(1), u"班级|[0,50)|[50,100)|[100,150]"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 2);
}

TEST_F(ScoreBands, AskAboutSeveralExamsAndTakeTheLast)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 1, 1, {50, 20, 70, 1});
    library.reload();
    exams = u"期中,期末"_s;
    grid.setTextMatrix(0, 0, u"早先"_s);
    library.dialogs.expect(u"只对期末  进行统计"_s, runtime::Answer::Cancel);
    run();
    EXPECT_EQ(grid.TextMatrix(0, 0), u"早先"_s);
    exams = u"期中,期末"_s;
    library.dialogs.expect(u"只对期末  进行统计"_s, runtime::Answer::Ok);
    run();
    EXPECT_EQ(exams, u"期末"_s);
    EXPECT_EQ(row(2), u"1班|0|0|1|0|0"_s);
}

TEST_F(ScoreBands, TotalIsWhatEndsInTheWordForIt)
{
    set(u"各分数段人数"_s, u"单科50,总分150"_s);
    run();
    const int totalBlock = 8;
    EXPECT_EQ(grid.TextMatrix(totalBlock + 1, 1), u"[0,150]"_s);
    EXPECT_EQ(grid.TextMatrix(1, 2), u"[50,100]"_s);
}

TEST_F(ScoreBands, LastBandStaysOpenWhereTheDivisionIsNotExact)
{
    library.execute(u"update 考试名称表 set 语文=700, 数学=50"_s);
    set(u"各分数段人数"_s, u"单科20,总分100"_s);
    run();
    const int totalBlock = 8;
    EXPECT_EQ(grid.TextMatrix(totalBlock + 1, 8), u"[700,800)"_s);
}

TEST_F(ScoreBands, AbsentStudentIsInNoBand)
{
    run();
    // 甲 and 乙 only.
    EXPECT_EQ(row(2), u"1班|0|0|0|1|1"_s);
}

TEST_F(ScoreBands, ScoreUpToOneWidthAboveTheLastBandIsLostWithoutAMessage)
{
    library.execute(u"update 成绩表 set 语文=119 where 姓名='甲'"_s);
    run();
    EXPECT_EQ(row(2), u"1班|0|0|0|1|0"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(ScoreBands, ScoreFarAboveTheLastBandIsShownAndTheCountGoesOn)
{
    library.execute(u"update 成绩表 set 语文=121 where 姓名='甲'"_s);
    run();
    EXPECT_EQ(row(2), u"1班|0|0|0|1|0"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 1);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJGFSDRS/Mdl_MDB"_s));
}

TEST_F(ScoreBands, ZeroWidthIsRefusedWithBothWidths)
{
    for (const QString& bad : {u"单科0,总分50"_s, u"单科20"_s, u""_s, u"20,50"_s}) {
        set(u"各分数段人数"_s, bad);
        run();
    }
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(library.dialogs.shown,
              (QStringList{u"分数段设置有问题\n单科分数段=0\n总分分数段=50"_s,
                           u"分数段设置有问题\n单科分数段=20\n总分分数段=0"_s,
                           u"分数段设置有问题\n单科分数段=0\n总分分数段=0"_s,
                           u"分数段设置有问题\n单科分数段=0\n总分分数段=0"_s}));
}

TEST_F(ScoreBands, LeaveFixedRowsAsTheyStand)
{
    grid.FixedRows = 7;
    run();
    EXPECT_EQ(grid.FixedRows, 7);
}

TEST_F(ScoreBands, NameTheStreamWithTwoBlanksWhereThereAreTwo)
{
    addSecondStream();
    run();
    EXPECT_EQ(grid.TextMatrix(0, 0), u"文科  语文各分数段人数"_s);
}

class TotalLines : public ReportTest
{
protected:
    void run() { TJZFSXRS(context, exams, grid, Transfer::GridOnly); }
};

TEST_F(TotalLines, CountEachLineCumulatively)
{
    set(u"总分上线人数"_s, u"130,80"_s);
    run();
    EXPECT_EQ(rows(), (QStringList{
                          u"总分上线人数|总分上线人数|总分上线人数"_s,
                          u"班级|130线|80线"_s,
                          u"1班|1|2"_s,
                          u"2班|1|1"_s,
                      }));
    EXPECT_EQ(grid.FixedRows, 0);
    EXPECT_EQ(grid.mergeRows(), std::set<int>{0});
    EXPECT_EQ(grid.mergeCols(), std::set<int>{0});
    EXPECT_EQ(grid.ColWidth(0), 1100);
}

TEST_F(TotalLines, StreamsHaveLinesOfTheirOwn)
{
    addSecondStream();
    set(u"总分上线人数"_s, u"文=500||理=130,0080"_s);
    run();
    EXPECT_EQ(rows(), (QStringList{
                          u"文科总分上线人数|文科总分上线人数|"_s,
                          u"班级|500线|"_s,
                          u"5班|0|"_s,
                          u"理科总分上线人数|理科总分上线人数|理科总分上线人数"_s,
                          u"班级|130线|0080线"_s,
                          u"1班|1|2"_s,
                          u"2班|1|1"_s,
                      }));
}

TEST_F(TotalLines, SeveralExamsStandTogetherWithinAClass)
{
    addExam(u"期末"_s, 2);
    score(u"期末"_s, 2, 1, {50, 20, 70, 1});
    library.reload();
    set(u"总分上线人数"_s, u"70"_s);
    exams = u"期中,期末"_s;
    run();
    EXPECT_EQ(row(1), u"班级|考试名称|70线"_s);
    EXPECT_EQ(row(4), u"2班|期中|1"_s);
    EXPECT_EQ(row(5), u"2班|期末|1"_s);
    EXPECT_EQ(grid.mergeCols(), (std::set<int>{0, 1}));
}

TEST_F(TotalLines, AbsentTotalReachesNoLine)
{
    library.execute(u"update 成绩表 set 总分=-1 where 姓名='丙'"_s);
    set(u"总分上线人数"_s, u"0"_s);
    run();
    EXPECT_EQ(row(2), u"1班|2"_s);
}

TEST_F(TotalLines, WithoutLinesTheColumnOfExamsAndTheFirstDataColumnStand)
{
    addExam(u"期末"_s, 2);
    library.reload();
    set(u"总分上线人数"_s, u""_s);
    exams = u"期中,期末"_s;
    run();
    EXPECT_EQ(rows().mid(1, 3), (QStringList{u"班级|考试名称|"_s, u"1班|期中|"_s, u"1班|期末|"_s}));
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(TotalLines, BadMarkerLeavesClassesAlone)
{
    set(u"总分上线人数"_s, u"文=500,理=520"_s);
    run();
    EXPECT_EQ(rows(),
              (QStringList{u"总分上线人数|总分上线人数"_s, u"班级|"_s, u"1班|"_s, u"2班|"_s}));
    EXPECT_EQ(library.dialogs.shown,
              QStringList{u"总分上线人数   条件设置不正确！缺少分隔符  ||  \n文=500,理=520"_s});
}

TEST_F(TotalLines, StreamWithoutLinesKeepsTheWidth)
{
    addSecondStream();
    set(u"总分上线人数"_s, u"文=500,400||理="_s);
    run();
    EXPECT_EQ(grid.Cols(), 3);
    EXPECT_EQ(row(5), u"1班||"_s);
}

TEST_F(TotalLines, LibraryWithAnotherTotalGetsTheEnginesError)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 总分"_s);
    set(u"总分上线人数"_s, u"80"_s);
    run();
    EXPECT_EQ(row(2), u"1班|"_s);
    ASSERT_EQ(library.dialogs.failures.size(), 2);
    EXPECT_TRUE(library.dialogs.failures[0].endsWith(u" - Sub TJZFSXRS/Mdl_MDB"_s));
}

TEST_F(TotalLines, LineThatIsNoNumberIsTheEnginesError)
{
    set(u"总分上线人数"_s, u"文=80||理=八十"_s);
    run();
    EXPECT_EQ(row(1), u"班级|八十线"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 2);
}

TEST_F(TotalLines, FiveHundredLinesAreCounted)
{
    QStringList lines;
    for (int i = 1; i <= 500; ++i)
        lines.append(QString::number(i));
    set(u"总分上线人数"_s, lines.join(u','));
    run();
    EXPECT_EQ(grid.Cols(), 501);
    EXPECT_EQ(grid.TextMatrix(2, 80), u"2"_s);
    EXPECT_EQ(grid.TextMatrix(2, 81), u"1"_s);
}

} // namespace
