#include "statistics/ReportExplanation.h"

#include <QFile>

#include "scoring/Scoring.h"
#include "statistics/NamedReports.h"
#include "statistics/ReportFixture.h"
#include "support/ErrorOf.h"
#include "support/WatchedProgress.h"

namespace {

using statistics::ExamGrouping;
using statistics::explain;
using statistics::Explanation;

class Explained : public ReportTest
{
protected:
    Explained()
    {
        // Somebody of class 2 without any score, and somebody of another category who cheated.
        library.addStudent(2, 2, u"己"_s, u"理"_s);
        library.addScores(u"期中"_s, 2, 2, {});
        library.addStudent(1, 4, u"庚"_s, u"理"_s, 2);
        score(u"期中"_s, 1, 4, {0, 0, 0, 4});
        library.reload();
    }

    Explanation of(const QString& report, ExamGrouping tables = ExamGrouping::Together)
    {
        return explain(report, library.scores, exams.split(u','), tables);
    }

    QString inForce(const QString& report, ExamGrouping tables = ExamGrouping::Together)
    {
        QStringList lines;
        for (const auto& setting : of(report, tables).settings)
            lines.append(setting.name + u"="_s + setting.value + u": "_s
                         + setting.meaning.join(u' '));
        return lines.join(u" / "_s);
    }

    /// Each says something, ends, and is said once.
    static void expectSentences(const QStringList& texts)
    {
        for (const QString& text : texts) {
            const QStringList sentences = text.split(u'。');
            EXPECT_TRUE(text.endsWith(u'。')) << text.toStdString();
            EXPECT_EQ(sentences.count(QString()), 1) << text.toStdString();
            EXPECT_EQ(QSet(sentences.begin(), sentences.end()).size(), sentences.size())
                << text.toStdString();
        }
    }

    void run(const QString& report)
    {
        statistics::namedReport(report)(context, exams, grid, statistics::Transfer::GridOnly);
        context.forgetRows();
    }
};

TEST_F(Explained, EveryReportOfTheMenuIsExplained)
{
    library::ScoreLibrary& scores = library.scores;
    QString name;
    database::Recordset rows;
    rows.Open(u"select 名称 from 设置表 where Id>4 order by ID"_s, scores.Conn);
    for (; !rows.Eof(); rows.MoveNext()) {
        name = rows.Fields(0).Value().text();
        if (name == u"进行对比分析的考试"_s)
            continue;
        EXPECT_NE(statistics::explainedName(name), QString()) << name.toStdString();
        EXPECT_TRUE(bool(statistics::namedReport(name))) << name.toStdString();
    }
}

TEST_F(Explained, EveryExplanationSaysAllOfIt)
{
    for (const QString& name : statistics::explainedReports()) {
        const Explanation shown = of(name);
        EXPECT_EQ(shown.report, name);
        SCOPED_TRACE(name.toStdString());
        EXPECT_GE(shown.over.size(), 2);
        EXPECT_FALSE(shown.formulas.isEmpty());
        expectSentences({shown.counted, shown.leftOut});
        expectSentences(shown.over);
        expectSentences(shown.formulas);
        for (const auto& setting : shown.settings)
            expectSentences(setting.meaning);
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(Explained, WhatIsNoReportIsRefused)
{
    EXPECT_EQ(statistics::explainedName(u"' or ''='"_s), QString());
    EXPECT_EQ(support::errorOf([&] { of(u"没有"_s); }), u"没有“没有”的口径说明。"_s);
}

TEST_F(Explained, AnIntervalIsShownAsTheMarksThatItComesTo)
{
    EXPECT_EQ(inForce(u"各科优秀率"_s),
              u"各科优秀率=[0.85,1]: 语文 ≥ 85 且 语文 ≤ 100；数学 ≥ 42.5 且 数学 ≤ 50。"_s);
    set(u"各科优秀率"_s, u"(0.5,0.8)"_s);
    EXPECT_EQ(inForce(u"各科优秀率"_s),
              u"各科优秀率=(0.5,0.8): 语文>50 且 语文<80；数学>25 且 数学<40。"_s);
    EXPECT_EQ(inForce(u"低分段"_s).count(u" / "_s), 1) << "both groups are one table";
}

TEST_F(Explained, ExamsThatAreATableEachHaveTheirOwnMarks)
{
    exams = u"期中,a and b"_s;
    library.addExam(u"a and b"_s, u"理"_s, 2, {{u"语文"_s, 50}});
    library.reload();
    EXPECT_EQ(inForce(u"各科优秀率"_s),
              u"各科优秀率=[0.85,1]: 语文 ≥ 127.5 且 语文 ≤ 150；数学 ≥ 42.5 且 数学 ≤ 50。"_s);
    EXPECT_TRUE(
        of(u"各科优秀率"_s)
            .over.first()
            .endsWith(u"选了几次考试，每班每次考试一行，分数线里的满分是这几次相加的和。"_s));
    EXPECT_EQ(inForce(u"各科优秀率"_s, ExamGrouping::OneByOne),
              u"各科优秀率=[0.85,1]: 期中：语文 ≥ 85 且 语文 ≤ 100；数学 ≥ 42.5 且 数学 ≤ 50。 "
              "a and b：语文 ≥ 42.5 且 语文 ≤ 50。"_s);
    const Explanation each = of(u"各科优秀率"_s, ExamGrouping::OneByOne);
    EXPECT_TRUE(each.over.first().endsWith(u"。每次考试一张表，满分是那一次的。"_s));
    EXPECT_FALSE((each.over + each.formulas).join(u' ').contains(u"选了几次考试"_s));
    addSecondStream();
    EXPECT_TRUE(inForce(u"各科优秀率"_s, ExamGrouping::OneByOne)
                    .contains(u"期中，文科：语文 ≥ 85 且 语文 ≤ 100。"_s));
}

TEST_F(Explained, ConditionsBySubjectAreShownAsTheyAreSet)
{
    set(u"各科优秀率"_s, u"(使用自定义数据)"_s);
    library.execute(
        u"insert into 详细设置表 values('各科优秀率','理','语文','>=','88','<=','100')"_s);
    EXPECT_EQ(inForce(u"各科优秀率"_s),
              u"各科优秀率=(使用自定义数据): 各科的条件分别设定。 "
              "语文 ≥ 88 且 语文 ≤ 100；数学 没有设定，这一科没有结果。"_s);
}

TEST_F(Explained, ListsAndWidthsAreSaidForEachStream)
{
    EXPECT_EQ(inForce(u"各分数段人数"_s),
              u"各分数段人数=单科10,总分50: 科目每 10 分一段，总分每 50 分一段。"_s);
    addSecondStream();
    EXPECT_EQ(inForce(u"历次总分上线人数"_s),
              u"总分上线人数=文=550,480,400||理=530,450,370: 文科：550、480、400。 "
              "理科：530、450、370。"_s);
    EXPECT_EQ(inForce(u"历次各名次段人数对比"_s).section(u'=', 0, 0), u"各名次段人数"_s);
}

TEST_F(Explained, ASettingThatNoReportCanReadIsSaid)
{
    set(u"总分上线人数"_s, u"文=550,理=530"_s);
    EXPECT_TRUE(inForce(u"总分上线人数"_s).contains(u"这个设置读不懂：条件设置不正确！"_s));
    EXPECT_EQ(library.dialogs.shown, QStringList()) << "no box beside the window";
}

TEST_F(Explained, TheCategoriesInForceAreNamed)
{
    EXPECT_EQ(of(u"考试人数"_s).over.last(), u"现在不限类别。"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=1 or 类别代码=2)"_s;
    EXPECT_EQ(of(u"考试人数"_s).over.last(), u"现在只算类别代码为 1、2 的学生。"_s);
    EXPECT_EQ(of(u"Z分"_s).over.last(), u"不分类别，总是全部学生。"_s);
    EXPECT_EQ(of(u"综合分析"_s).over.last(), u"只算设置“参与统计的学生类别代码”里的类别。"_s);
}

// What the texts claim, shown by the reports themselves.

TEST_F(Explained, AbsentStudentsCountWithMinusOneInAveragesAlone)
{
    EXPECT_TRUE(of(u"各科平均分"_s).leftOut.contains(u"缺考的学生算在内，按 -1 分"_s));
    run(u"各科平均分"_s);
    // (90 + 60 - 1 + 0) / 4
    EXPECT_EQ(grid.TextMatrix(3, 1), u"37.25"_s);
    EXPECT_TRUE(of(u"各科最低分"_s).leftOut.contains(u"缺考和没有成绩的学生不算"_s));
    run(u"各科最低分"_s);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"0"_s) << "who cheated counts";
}

TEST_F(Explained, WhoHasNoScoreIsInNoneOfTheThreeCounts)
{
    EXPECT_TRUE(of(u"考试人数"_s).leftOut.contains(u"三个数里都不算"_s));
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"3/1/4"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"1/0/1"_s);
}

TEST_F(Explained, RatesAreSharesOfTheRosterWhateverTheCategory)
{
    EXPECT_TRUE(of(u"各科优秀率"_s).formulas.join(u' ').contains(u"不分类别，缺考的也在内"_s));
    library.scores.settings.CategoryFilter = u" and (类别代码=1)"_s;
    run(u"各科优秀率"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1) + u' ' + grid.TextMatrix(3, 2), u"1 25"_s);
}

/// As scoring ranks them.
TEST_F(Explained, WhoHasNoScoreRanksWithTheLast)
{
    EXPECT_TRUE(of(u"名次"_s).leftOut.contains(u"没有成绩（空）的学生与最后一名并列"_s));
    support::WatchedProgress progress;
    scoring::Scoring(library.scores).score(exams, progress);
    EXPECT_EQ(library.rows(u"select 姓名, 语文年名 from 成绩表 order by 语文年名, 姓名"_s),
              u"丙|-1 / 甲|1 / 丁|2 / 乙|3 / 己|4 / 庚|4"_s);
    set(u"各名次段人数"_s, u"3,-1"_s);
    run(u"各名次段人数"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1) + u' ' + grid.TextMatrix(3, 2), u"1 1"_s)
        << "class 2: 丁 among the first three, 己 the last";
    EXPECT_TRUE(of(u"各名次段均分"_s).leftOut.contains(u"没有成绩（空）的学生不算"_s));
    set(u"各名次段均分"_s, u"-1"_s);
    run(u"各名次段均分"_s);
    EXPECT_EQ(grid.TextMatrix(4, 2), u"0"_s) << "class 2: nobody with a score is last";
}

TEST_F(Explained, AbsentStudentsAreInALastBandThatIsLongerThanTheRanks)
{
    const QString claim = u"后 x 名里，x 比最后名次至少大 2 时才算上他们"_s;
    EXPECT_TRUE(of(u"各名次段人数"_s).leftOut.contains(claim));
    set(u"各名次段人数"_s, u"-5,-6"_s);
    run(u"各名次段人数"_s);
    EXPECT_EQ(grid.TextMatrix(2, 1) + u' ' + grid.TextMatrix(2, 2), u"3 4"_s)
        << "the last rank is 4";
    EXPECT_TRUE(of(u"各名次段均分"_s).leftOut.contains(claim + u"。平均分从不算他们"_s));
    set(u"各名次段均分"_s, u"-6"_s);
    run(u"各名次段均分"_s);
    EXPECT_EQ(grid.TextMatrix(3, 2) + u' ' + grid.TextMatrix(3, 3), u"4 50"_s);
}

TEST_F(Explained, TheLastRankIsThatOfTheChosenCategories)
{
    EXPECT_TRUE(of(u"各名次段人数"_s).formulas.join(u' ').contains(u"（本科类、选中的类别）"_s));
    set(u"各名次段人数"_s, u"-2"_s);
    run(u"各名次段人数"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"0"_s) << "the last two are of class 1";
    library.scores.settings.CategoryFilter = u" and (类别代码=1)"_s;
    run(u"各名次段人数"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"1"_s) << "without 庚, 丁 is the last but one";
}

/// Class 1 is class 7 today: its scores stand under a class that has no row.
TEST_F(Explained, ScoresOfAClassThatTheRosterHasNoMoreAreInNoRow)
{
    library.execute(u"update 信息表 set 班级=7 where 班级=1"_s);
    library.reload();
    for (const QString& report : {u"考试人数"_s, u"各科平均分"_s, u"各名次段人数"_s}) {
        EXPECT_TRUE(
            of(report).over.first().startsWith(u"学生名单里今天有学生的全部班级，每个科类一块"_s));
        EXPECT_TRUE(of(report).leftOut.endsWith(
            u"成绩记在名单上今天已经没有的班级、或者记在那个班今天没有的科类下的学生，统计表里任何一行都不算。"_s));
    }
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(2, 0) + u' ' + grid.TextMatrix(2, 1), u"2班 1/0/1"_s);
    EXPECT_EQ(grid.TextMatrix(3, 0) + u' ' + grid.TextMatrix(3, 1), u"7班 0/0/0"_s);
    EXPECT_EQ(grid.Rows(), 4) << "class 1 has no row";
    EXPECT_TRUE(
        of(u"各名次段人数"_s).formulas.join(u' ').contains(u"不在任何一行里的学生的名次也在内"_s));
    set(u"各名次段人数"_s, u"-2"_s);
    run(u"各名次段人数"_s);
    EXPECT_EQ(grid.TextMatrix(2, 1), u"0"_s) << "the last two are of the class without a row";
    EXPECT_FALSE(of(u"名次"_s).leftOut.contains(u"统计表里任何一行都不算"_s));
}

TEST_F(Explained, TheListOfTeachersWidensTheHighestAndTheLowest)
{
    for (const QString& report : {u"各科最高分"_s, u"各科最低分"_s}) {
        set(u"各科平均分"_s, u"不使用教师名单"_s);
        EXPECT_EQ(inForce(report), u"各科平均分=不使用教师名单: 每科一列。"_s);
        run(report);
        const int narrow = grid.Cols();
        set(u"各科平均分"_s, u"使用教师名单"_s);
        EXPECT_EQ(inForce(report), u"各科平均分=使用教师名单: 每科占三列。"_s);
        EXPECT_TRUE(of(report).formulas.last().contains(u"后两列是空的"_s));
        run(report);
        EXPECT_EQ(grid.Cols(), narrow + 4) << "two more for each of two subjects";
        EXPECT_EQ(grid.TextMatrix(3, 2) + grid.TextMatrix(3, 3), u""_s);
    }
}

TEST_F(Explained, WhoHasNoScoreAtAllIsAbsentInTheTotal)
{
    const QString claim = u"各科都缺考或没有成绩的学生，总分记 -1，即缺考。"_s;
    EXPECT_TRUE(of(u"考试人数"_s).leftOut.contains(claim));
    EXPECT_TRUE(of(u"总分上线人数"_s).leftOut.contains(claim));
    support::WatchedProgress progress;
    scoring::Scoring(library.scores).score(exams, progress);
    run(u"考试人数"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1) + u' ' + grid.TextMatrix(3, 3), u"1/0/1 1/1/2"_s);
    set(u"总分上线人数"_s, u"0"_s);
    run(u"总分上线人数"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"1"_s);
}

TEST_F(Explained, ConditionsBySubjectStandInPlaceOfAnInterval)
{
    for (const QString& report : {u"各科优秀率"_s, u"高分段、低分段"_s}) {
        const QString formulas = of(report).formulas.join(u' ');
        EXPECT_TRUE(formulas.contains(u"设置是区间时，分数线 = 区间的两个数 × 满分"_s));
        EXPECT_TRUE(formulas.contains(u"时，用各科自己的条件，没有设定条件的科没有结果"_s));
        EXPECT_TRUE(of(report).leftOut.contains(u"自定义的条件容得下 -1 时，缺考的学生算在内"_s));
    }
    set(u"各科优秀率"_s, u"(使用自定义数据)"_s);
    library.execute(
        u"insert into 详细设置表 values('各科优秀率','理','语文','>=','-1','<=','60')"_s);
    run(u"各科优秀率"_s);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"3"_s) << "乙, 庚 and 丙, who was absent";
    EXPECT_EQ(grid.TextMatrix(3, 3), u""_s) << "数学 has no condition";
}

TEST_F(Explained, TheAnalysisShowsTheColumnsThatWereChosen)
{
    const Explanation shown = of(u"综合分析"_s);
    EXPECT_FALSE(shown.counted.contains(u"全部成绩"_s));
    EXPECT_TRUE(shown.formulas.first().endsWith(u"存过“自定义显示”的，只有存的那些列。"_s));
    EXPECT_TRUE(shown.leftOut.contains(u"学生成绩表里的 -1 写成“缺考”，T 分表里的 -1 不改。"_s));
    EXPECT_TRUE(shown.over.first().contains(u"学生成绩表和 T 分表里是有这次考试成绩的全部学生"_s));
}

/// The chapter stands in the guide as it is; set YUNSHAN_WRITE_GUIDE to write it anew.
TEST(ExplanationChapter, IsTheOneOfTheGuide)
{
    QFile file(QStringLiteral(YUNSHAN_GUIDE "/20-definitions.md"));
    const QByteArray chapter = statistics::explanationChapter().toUtf8();
    if (qEnvironmentVariableIsSet("YUNSHAN_WRITE_GUIDE")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(chapter), chapter.size());
        file.close();
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), QString::fromUtf8(chapter))
        << "run this test with YUNSHAN_WRITE_GUIDE=1, then packaging/make_help.py";
}

} // namespace
