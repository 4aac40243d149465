#include "statistics/FigureWords.h"

#include "ReportFixture.h"
#include "statistics/NamedReports.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::Condition;
using statistics::Figure;
using statistics::Transfer;

class FigureWords : public ReportTest
{
protected:
    Figure figure(const QString& report, int row, int col)
    {
        context.forgetRows();
        statistics::namedReport(report)(context, exams, grid, Transfer::GridOnly);
        const std::optional<Figure> found = context.figures.at(grid, row, col);
        EXPECT_TRUE(found) << report.toStdString();
        return found.value_or(Figure());
    }

    statistics::FigureGroup group(const Figure& figure)
    {
        return statistics::readGroup(library.scores.Conn, figure);
    }

    QString sentence(const QString& report, int row, int col)
    {
        const Figure found = figure(report, row, col);
        return statistics::figureSentence(found, group(found));
    }

    QString details(const QString& report, int row, int col)
    {
        const Figure found = figure(report, row, col);
        return statistics::figureDetails(found, group(found));
    }
};

TEST_F(FigureWords, SayWhichStudentsACountMeans)
{
    EXPECT_EQ(
        sentence(u"各科优秀率"_s, 3, 1),
        u"期中，理科，1 班：语文不低于 85 分、不高于 100 分的学生，共 1 人（全班 3 人的 33.33%）。"_s);
    EXPECT_EQ(
        sentence(u"各科优秀率"_s, 3, 2),
        u"期中，理科，1 班：语文不低于 85 分、不高于 100 分的学生，共 1 人（全班 3 人的 33.33%）。"_s);
    EXPECT_EQ(
        sentence(u"各分数段人数"_s, 2, 10),
        u"期中，理科，1 班：语文不低于 90 分、不高于 100 分的学生，共 1 人（全班 3 人的 33.33%）。"_s);
    set(u"总分上线人数"_s, u"80"_s);
    EXPECT_EQ(sentence(u"总分上线人数"_s, 2, 1),
              u"期中，理科，1 班：总分不低于 80 分的学生，共 2 人（全班 3 人的 66.67%）。"_s);
    set(u"各名次段人数"_s, u"2,-2"_s);
    EXPECT_EQ(sentence(u"各名次段人数"_s, 2, 1),
              u"期中，理科，1 班：语文年级名次在前 2 名的学生，共 1 人（全班 3 人的 33.33%）。"_s);
    EXPECT_EQ(
        sentence(u"各名次段人数"_s, 2, 2),
        u"期中，理科，1 班：语文年级名次在第 2 名及以后的学生，共 1 人（全班 3 人的 33.33%）。"_s);
}

TEST_F(FigureWords, TellWhoSatAndWhoWasAbsent)
{
    EXPECT_EQ(sentence(u"考试人数"_s, 2, 1),
              u"期中，理科，1 班：语文参试 2 人，缺考 1 人，总计 3 人。"_s);
    EXPECT_EQ(details(u"考试人数"_s, 2, 1), u"今天的名单上全班 3 人，在这里没有成绩的列在最后。"_s);
    library.execute(u"update 成绩表 set 语文=null where 姓名='乙'"_s);
    EXPECT_EQ(
        details(u"考试人数"_s, 2, 1),
        u"没有这一科成绩的 1 人，不在这三个数里。今天的名单上全班 3 人，在这里没有成绩的列在最后。"_s);
}

TEST_F(FigureWords, SayOverWhomAnAggregateIsAndWhoStandsAtItsEnds)
{
    EXPECT_EQ(sentence(u"各科平均分"_s, 3, 1),
              u"期中，理科，1 班：语文平均分 49.67，按 3 人计算。"_s);
    EXPECT_EQ(details(u"各科平均分"_s, 3, 1),
              u"缺考 1 人，按 -1 分算在内。算在内的考生里，最高 90 分：甲；最低 60 分：乙。"_s);
    EXPECT_EQ(sentence(u"各科最高分"_s, 2, 1), u"期中，理科，1 班：语文最高分 90，按 3 人计算。"_s);
    EXPECT_EQ(sentence(u"各科最低分"_s, 2, 1),
              u"期中，理科，1 班：语文不缺考的学生的语文最低分 60，按 2 人计算。"_s);
    EXPECT_EQ(details(u"各科最低分"_s, 2, 1),
              u"缺考 1 人，没有算在内。算在内的考生里，最高 90 分：甲；最低 60 分：乙。"_s);
    EXPECT_EQ(sentence(u"各科标准差"_s, 2, 1),
              u"期中，理科，1 班：语文不缺考的学生的语文标准差 21.21，按 2 人计算。"_s);
    set(u"各名次段均分"_s, u"3"_s);
    EXPECT_EQ(
        sentence(u"各名次段均分"_s, 3, 3),
        u"期中，理科，1 班：语文不缺考，语文年级名次在前 3 名的学生的语文平均分 75，按 2 人计算。"_s);
    EXPECT_EQ(details(u"各名次段均分"_s, 3, 3),
              u"缺考 1 人，没有算在内。算在内的考生里，最高 90 分：甲；最低 60 分：乙。"_s);
}

TEST_F(FigureWords, NameTheEndsOfManyByThreeAndTheirNumber)
{
    library.execute(u"update 成绩表 set 语文=60 where 班级=1"_s);
    for (int number = 4; number <= 5; ++number) {
        library.addStudent(1, number, u"新"_s, u"理"_s);
        score(u"期中"_s, 1, number, {60, 20, 80, 3});
    }
    EXPECT_EQ(
        details(u"各科最低分"_s, 2, 1),
        u"算在内的考生里，最高 60 分：甲、乙、丙 等 5 人；最低 60 分：甲、乙、丙 等 5 人。"_s);
}

TEST_F(FigureWords, SayTheOrderOfTheClassesOfARank)
{
    EXPECT_EQ(sentence(u"各科平均分"_s, 3, 2),
              u"期中，理科，1 班：语文平均分 49.67（3 人），在 2 个有平均分的班里排第 2。"_s);
    EXPECT_EQ(
        details(u"各科平均分"_s, 3, 2),
        u"缺考 1 人，按 -1 分算在内。算在内的考生里，最高 90 分：甲；最低 60 分：乙。各班平均分从高到低：2 班 80，1 班 49.67。"_s);
}

TEST_F(FigureWords, OfARankBelowZeroSayWhatStandsAheadOfIt)
{
    library.execute(u"update 成绩表 set 语文=-1 where 班级=2"_s);
    EXPECT_EQ(
        sentence(u"各科平均分"_s, 4, 2),
        u"期中，理科，2 班：语文平均分 -1（1 人），表格里的名次是 3：没有平均分的按 0 分算，排在它前面，至少占一个名次。有平均分的班共 2 个。"_s);
    EXPECT_EQ(sentence(u"各科平均分"_s, 3, 2),
              u"期中，理科，1 班：语文平均分 49.67（3 人），在 2 个有平均分的班里排第 1。"_s);
    library.execute(u"update 成绩表 set 语文=null where 班级=2"_s);
    EXPECT_EQ(sentence(u"各科平均分"_s, 3, 2),
              u"期中，理科，1 班：语文平均分 49.67（3 人），在 1 个有平均分的班里排第 1。"_s);
}

TEST_F(FigureWords, OfTheLastOnesOfMoreThanTheGradeNameTheAbsent)
{
    set(u"各名次段人数"_s, u"-100,-3"_s);
    EXPECT_EQ(
        sentence(u"各名次段人数"_s, 2, 1),
        u"期中，理科，1 班：语文年级名次不限（所有参试的和缺考的）的学生，共 3 人（全班 3 人的 100%）。"_s);
    EXPECT_EQ(details(u"各名次段人数"_s, 2, 1), u"其中缺考 1 人。"_s);
    EXPECT_EQ(
        sentence(u"各名次段人数"_s, 2, 2),
        u"期中，理科，1 班：语文年级名次在第 1 名及以后的学生，共 2 人（全班 3 人的 66.67%）。"_s);
    EXPECT_EQ(details(u"各名次段人数"_s, 2, 2), QString());
    const statistics::FigureGroup behind = group(figure(u"各名次段人数"_s, 2, 1));
    EXPECT_EQ(behind.marks.back(), -1);
}

TEST_F(FigureWords, OfARankSayThatAnotherClassChanged)
{
    const Figure rank = figure(u"各科平均分"_s, 3, 2);
    library.execute(u"update 成绩表 set 语文=40 where 班级=2"_s);
    EXPECT_EQ(
        statistics::figureChange(rank, group(rank)),
        u"成绩库在统计之后改过：2 班的平均分在表格里是 80，现在是 40，名次可能不同了。请重新统计。"_s);
    library.execute(u"update 成绩表 set 语文=null where 班级=2"_s);
    EXPECT_EQ(
        statistics::figureChange(rank, group(rank)),
        u"成绩库在统计之后改过：2 班的平均分在表格里是 80，现在是 空，名次可能不同了。请重新统计。"_s);
}

TEST_F(FigureWords, SayTheCategoryFilter)
{
    library.scores.settings.CategoryFilter = u" and (类别代码=1 or 类别代码=2)"_s;
    EXPECT_EQ(details(u"各科优秀率"_s, 3, 1), u"只算类别代码为 1、2 的学生。"_s);
    library.scores.settings.CategoryFilter = u" and (类别代码=12.5)"_s;
    EXPECT_EQ(details(u"各科优秀率"_s, 3, 1), u"只算类别代码为 12.5 的学生。"_s);
}

TEST_F(FigureWords, SayPlainlyThatTheLibraryWasChangedSinceTheReport)
{
    const Figure count = figure(u"各科优秀率"_s, 3, 1);
    const Figure rank = figure(u"各科平均分"_s, 3, 2);
    const Figure highest = figure(u"各科最高分"_s, 2, 1);
    EXPECT_EQ(statistics::figureChange(count, group(count)), QString());
    EXPECT_EQ(statistics::figureChange(rank, group(rank)), QString());
    library.execute(u"update 成绩表 set 语文=99 where 姓名='乙'"_s);
    EXPECT_EQ(
        statistics::figureChange(count, group(count)),
        u"成绩库在统计之后改过：表格里是 1，现在是 2。名单按现在的成绩库列出，请重新统计。"_s);
    EXPECT_EQ(
        statistics::figureChange(rank, group(rank)),
        u"成绩库在统计之后改过：表格里是 49.67，现在是 62.67。名单按现在的成绩库列出，请重新统计。"_s);
    library.execute(u"delete from 成绩表"_s);
    EXPECT_EQ(
        statistics::figureChange(highest, group(highest)),
        u"成绩库在统计之后改过：表格里是 90，现在是 空。名单按现在的成绩库列出，请重新统计。"_s);
}

TEST_F(FigureWords, OfLongAndBrokenNamesFitALine)
{
    exams = u"第\n"_s + QString(45, u'长');
    addExam(exams, 2);
    score(exams, 1, 1, {90, 40, 130, 1});
    library.reload();
    EXPECT_EQ(
        sentence(u"各科优秀率"_s, 3, 1),
        u"第 长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长长……，理科，1 班：语文不低于 85 分、不高于 100 分的学生，共 1 人（全班 3 人的 33.33%）。"_s);
}

TEST(ConditionWords, SayEachComparison)
{
    const std::vector<std::pair<QString, QString>> cases{
        {u"语文>=102 and 语文<=120"_s, u"语文不低于 102 分、不高于 120 分"_s},
        {u"语文>102 and 数学<50.5"_s, u"语文高于 102 分，数学低于 50.5 分"_s},
        {u"语文>=0"_s, u"语文不缺考"_s},
        {u"语文<0"_s, u"语文缺考"_s},
        {u"语文=60"_s, u"语文等于 60 分"_s},
        {u"总分年名<=50 and 总分年名>0"_s, u"总分年级名次在前 50 名"_s},
        {u"总分年名>=291"_s, u"总分年级名次在第 291 名及以后"_s},
        {u"总分年名>=0"_s, u"总分年级名次不限（所有参试的）"_s},
        {u"总分年名>=-72"_s, u"总分年级名次不限（所有参试的和缺考的）"_s},
        {u"总分年名>3"_s, u"总分年级名次在第 3 名之后"_s},
        {u"总分年名<3"_s, u"总分年级名次在第 3 名之前"_s},
        {u"总分年名=3"_s, u"总分年级名次是第 3 名"_s},
        {u"语文*2>=100"_s, u"符合条件“语文*2>=100”"_s},
    };
    for (const auto& [condition, words] : cases)
        EXPECT_EQ(statistics::conditionWords(Condition(condition)), words);
}

TEST_F(FigureWords, OfAStatementStandAsItMayBeTyped)
{
    Figure count = figure(u"各科优秀率"_s, 3, 1);
    count.exam = u"期'中?"_s;
    EXPECT_EQ(
        statistics::rowsBehind(count).asTyped(),
        u"select * from 成绩表 where 考试名称='期''中?' and 科类='理' and 班级=1 and round(语文,4)>=85 and round(语文,4)<=100 and [语文]>-9e999 and [语文]<9e999 order by [语文] DESC,学号"_s);
}

} // namespace
