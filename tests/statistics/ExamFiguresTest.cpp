#include "statistics/ExamFigures.h"

#include "ReportFixture.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::Aggregate;
using statistics::Condition;
using statistics::ExamFigures;

const runtime::Trap trap{" - Test"};

/// The same figure from the exam's rows and from the engine. "Simple" conditions are answered by
/// the rows, the same text in brackets by the engine.
class ExamFiguresTest : public ReportTest
{
protected:
    QString text(std::optional<double> figure)
    {
        return figure ? statistics::figureText(*figure) : u"-"_s;
    }

    ExamFigures figures{context, u"期中"_s, u"理"_s, trap};
};

TEST_F(ExamFiguresTest, RowsAndEngineAgreeOnEveryAggregate)
{
    library.execute(u"update 成绩表 set 语文=60.1 where 姓名='乙'"_s);
    library.execute(u"update 成绩表 set 语文=null where 姓名='丁'"_s);
    for (const Aggregate aggregate : {Aggregate::Count, Aggregate::Average, Aggregate::Maximum,
                                      Aggregate::Minimum, Aggregate::Deviation}) {
        for (const QString& condition :
             {u"语文>=0"_s, u"语文<0"_s, u"语文>60"_s, u"语文年名<=2"_s}) {
            for (const double classNumber : {1.0, 2.0, 9.0}) {
                const Condition simple(condition);
                const Condition bracketed(u"("_s + condition + u")"_s);
                EXPECT_EQ(text(figures.figure(aggregate, u"语文"_s, simple)(classNumber)),
                          text(figures.figure(aggregate, u"语文"_s, bracketed)(classNumber)))
                    << condition.toStdString() << " " << int(aggregate) << " " << classNumber;
                EXPECT_EQ(text(figures.rowCount(simple)(classNumber)),
                          text(figures.rowCount(bracketed)(classNumber)));
            }
        }
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(ExamFiguresTest, HighestSpansTheStream)
{
    EXPECT_EQ(text(figures.highest(u"语文"_s)), u"90"_s);
    EXPECT_EQ(text(figures.highest(u"数学年名"_s)), u"-"_s);
}

TEST_F(ExamFiguresTest, RowsAreReadOnceUntilForgotten)
{
    EXPECT_EQ(text(figures.highest(u"语文"_s)), u"90"_s);
    library.execute(u"update 成绩表 set 语文=95 where 姓名='甲'"_s);
    ExamFigures later(context, u"期中"_s, u"理"_s, trap);
    EXPECT_EQ(text(later.highest(u"语文"_s)), u"90"_s);
    context.forgetRows();
    ExamFigures fresh(context, u"期中"_s, u"理"_s, trap);
    EXPECT_EQ(text(fresh.highest(u"语文"_s)), u"95"_s);
}

TEST_F(ExamFiguresTest, FilterThatTheEngineRefusesCostsAMessageForEachFigure)
{
    library.scores.settings.CategoryFilter = u" and (类别代码=)"_s;
    EXPECT_EQ(text(figures.figure(Aggregate::Count, u"语文"_s)(1)), u"-"_s);
    EXPECT_EQ(text(figures.rowCount(Condition(u"语文>=0"_s))(1)), u"-"_s);
    EXPECT_EQ(library.dialogs.failures.size(), 2);
}

TEST_F(ExamFiguresTest, ASimpleConditionIsAnsweredByTheRowsThatWereRead)
{
    const Condition simple(u"语文>=0"_s);
    EXPECT_EQ(text(figures.rowCount(simple)(1)), u"2"_s);
    library.execute(u"update 成绩表 set 语文=100 where 姓名='甲'"_s);
    EXPECT_EQ(text(figures.figure(Aggregate::Maximum, u"语文"_s, simple)(1)), u"90"_s);
    EXPECT_EQ(text(figures.figure(Aggregate::Maximum, u"语文"_s, Condition(u"(语文>=0)"_s))(1)),
              u"100"_s);
}

TEST(FigureText, RoundsHalfToEvenAtTwoDecimals)
{
    EXPECT_EQ(statistics::figureText(100.0 / 3), u"33.33"_s);
    EXPECT_EQ(statistics::figureText(200.0 / 3), u"66.67"_s);
    EXPECT_EQ(statistics::figureText(50), u"50"_s);
    EXPECT_EQ(statistics::figureText(0.125), u"0.12"_s);
    EXPECT_EQ(statistics::figureText(0.375), u"0.38"_s);
}

} // namespace
