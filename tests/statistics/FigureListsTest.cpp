// Every figure of every report against the students that stand behind it.
#include <cmath>

#include <QRegularExpression>

#include "ReportFixture.h"
#include "library/ColumnNames.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Numbers.h"
#include "statistics/ExamFigures.h"
#include "statistics/FigureGroup.h"
#include "statistics/NamedReports.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::Figure;
using statistics::FigureKind;
using statistics::Transfer;

const QStringList reports{u"考试人数"_s,     u"高、低分段"_s,   u"各科优秀率"_s,
                          u"各科良好率"_s,   u"各科及格率"_s,   u"各科差生率"_s,
                          u"各科平均分"_s,   u"各科最高分"_s,   u"各科最低分"_s,
                          u"各科标准差"_s,   u"各分数段人数"_s, u"总分上线人数"_s,
                          u"各名次段人数"_s, u"各名次段均分"_s, u"历次考试进入年级前x名人数"_s};

double compared(double mark)
{
    return std::round(mark * 1e4) / 1e4;
}

/// The values of a figure's column in its list; NaN for NULL.
struct List
{
    std::vector<double> values;

    int count() const { return int(values.size()); }
    int sitting() const
    {
        return int(
            std::count_if(values.begin(), values.end(), [](double v) { return compared(v) >= 0; }));
    }
    int absent() const
    {
        return int(
            std::count_if(values.begin(), values.end(), [](double v) { return compared(v) < 0; }));
    }
    double average() const
    {
        double sum = 0;
        for (const double value : values)
            sum += value;
        return sum / count();
    }
    double deviation() const
    {
        double squares = 0;
        for (const double value : values)
            squares += (value - average()) * (value - average());
        return std::sqrt(squares / (count() - 1));
    }
};

/// Two streams of three classes and two exams, with absent students, marks of tenths, students
/// without a mark, of two categories, and one class whose students did not take part.
class FigureLists : public ReportTest
{
protected:
    FigureLists()
    {
        library.execute(u"delete from 信息表"_s);
        library.execute(u"delete from 成绩表"_s);
        library.execute(u"delete from 考试名称表"_s);
        for (const QString& exam : {first, second}) {
            for (const QString& stream : {u"文"_s, u"理"_s})
                addExamOf(exam, stream);
        }
        for (int classNumber = 1; classNumber <= 6; ++classNumber) {
            for (int number = 1; number <= 9; ++number)
                addStudentWithScores(classNumber, number);
        }
        library.dialogs.always(u"当前操作只针对一次考试"_s, runtime::Answer::Ok);
        library.addStudent(6, 99, u"转来的"_s, u"理"_s);
        library.reload();
    }

    void addExamOf(const QString& exam, const QString& stream)
    {
        library.addExam(exam, stream, exam == first ? 1 : 2,
                        {{u"语文"_s, 100}, {u"数学"_s, 50}, {u"总分"_s, u"语文+数学"_s}});
    }

    void addStudentWithScores(int classNumber, int number)
    {
        const QString stream = classNumber <= 3 ? u"文"_s : u"理"_s;
        library.addStudent(classNumber, number, u"生%1-%2"_s.arg(classNumber).arg(number), stream,
                           number % 3 == 0 ? 2 : 1);
        if (classNumber == 6)
            return;
        for (const QString& exam : {first, second})
            addMarks(exam, classNumber, number);
    }

    /// Marks in tenths all over the range, some of them on the edges of bands.
    void addMarks(const QString& exam, int classNumber, int number)
    {
        const int seed = classNumber * 31 + number * 17 + (exam == first ? 0 : 7);
        const bool isAbsent = seed % 11 == 0;
        const double chinese = isAbsent ? -1 : (seed * 73 % 1001) / 10.0;
        const double maths = seed % 13 == 0 ? -1 : (seed * 7 % 51);
        library.addScores(
            exam, classNumber, number,
            {{u"语文"_s, chinese},
             {u"数学"_s, maths},
             {u"总分"_s, chinese + maths < 0 ? -1 : std::max(chinese, 0.0) + std::max(maths, 0.0)},
             {u"语文年名"_s, isAbsent ? -1 : 1 + seed % 27},
             {u"总分年名"_s, 1 + seed % 27}});
        if (number == 9)
            library.execute(
                u"update 成绩表 set 语文=null,语文年名=null where 班级=%1 and 学号=9 and 考试名称='%2'"_s
                    .arg(classNumber)
                    .arg(exam));
    }

    void run(const QString& report, const QString& list)
    {
        exams = list;
        context.forgetRows();
        statistics::namedReport(report)(context, exams, grid, Transfer::GridOnly);
    }

    List listOf(const Figure& figure)
    {
        const statistics::StudentSql behind = statistics::rowsBehind(figure);
        database::Recordset rows;
        rows.Open(behind.sql, behind.values, library.scores.Conn);
        List list;
        for (; !rows.Eof(); rows.MoveNext()) {
            const runtime::Value value = rows.Fields(figure.column).Value();
            const bool isMark = value.isNumber() && std::isfinite(value.toDouble());
            list.values.push_back(isMark ? value.toDouble() : std::nan(""));
        }
        return list;
    }

    double students(double classNumber)
    {
        return library.rows(u"select count(*) from 信息表 where 班级=%1"_s.arg(classNumber))
            .toDouble();
    }

    /// What the list of a figure says that the cell has to show.
    QString told(const Figure& figure)
    {
        using statistics::figureText;
        const List list = listOf(figure);
        switch (figure.kind) {
        case FigureKind::Rows:
        case FigureKind::Values:
            return QString::number(list.count());
        case FigureKind::Share:
            return figureText(list.count() * 100 / students(figure.classNumber));
        case FigureKind::Attendance:
            return u"%1/%2/%3"_s.arg(list.sitting())
                .arg(list.absent())
                .arg(list.sitting() + list.absent());
        case FigureKind::Average:
            return figureText(list.average());
        case FigureKind::Maximum:
            return figureText(*std::max_element(list.values.begin(), list.values.end()));
        case FigureKind::Minimum:
            return figureText(*std::min_element(list.values.begin(), list.values.end()));
        case FigureKind::Deviation:
            return figureText(list.deviation());
        case FigureKind::Rank:
            return rankTold(figure, figureText(list.average()));
        case FigureKind::None:
            break;
        }
        return {};
    }

    static QString rankTold(const Figure& figure, const QString& average)
    {
        int rank = 1;
        bool isCompared = false;
        for (const statistics::ComparedClass& one : figure.compared) {
            if (one.average.isEmpty())
                continue;
            rank += one.average.toDouble() > average.toDouble();
            isCompared = isCompared || (one.number == figure.classNumber && one.average == average);
        }
        return isCompared ? QString::number(rank) : u"不在各班之列"_s;
    }

    /// Compares each cell of the grid; gives how many stand for something.
    int compareAll()
    {
        int figures = 0;
        for (int row = 0; row < grid.Rows(); ++row) {
            for (int col = 0; col < grid.Cols(); ++col)
                figures += compare(row, col);
        }
        return figures;
    }

    bool compare(int row, int col)
    {
        const std::optional<Figure> figure = context.figures.at(grid, row, col);
        const QString text = grid.TextMatrix(row, col);
        // What looks like a figure and stands in a class's row is one.
        bool isNumber = false;
        text.split(u'/').first().toDouble(&isNumber);
        const bool ofClass = grid.TextMatrix(row, 0).endsWith(u"班"_s);
        EXPECT_EQ(figure.has_value(), isNumber && ofClass) << text.toStdString();
        if (!figure)
            return false;
        EXPECT_EQ(told(*figure), text);
        EXPECT_EQ(figure->shown, text);
        EXPECT_EQ(runtime::doubleText(figure->classNumber) + u"班"_s, grid.TextMatrix(row, 0));
        const statistics::FigureGroup group = statistics::readGroup(library.scores.Conn, *figure);
        if (figure->kind != FigureKind::Rank) {
            EXPECT_EQ(group.now, text);
        }
        return true;
    }

    void compareEveryReport(const QStringList& names)
    {
        for (const QString& report : reports) {
            SCOPED_TRACE(report.toStdString());
            run(report, names.join(u','));
            EXPECT_GE(compareAll(), 8);
        }
    }

    const QString first = u"期中"_s;
    const QString second = u"a]b--100% (?)\nx"_s;
};

/// Settings whose bands lie anywhere.
void setOddBands(support::TestLibrary& library)
{
    const std::vector<std::pair<QString, QString>> settings{
        {u"高分段"_s, u"(0.333,0.897]"_s},
        {u"低分段"_s, u"[0,0.301)"_s},
        {u"各科优秀率"_s, u"[0.6667,]"_s},
        {u"各科良好率"_s, u"(使用自定义数据)"_s},
        {u"各科及格率"_s, u"x"_s},
        {u"各科差生率"_s, u"[-1,0.4)"_s},
        {u"各分数段人数"_s, u"单科7.3,总分0.7"_s},
        {u"总分上线人数"_s, u"文=60.1,-1,x||理=70.5"_s},
        {u"各名次段人数"_s, u"1,5,-3,0,200,-100,2.5,1e1"_s},
        {u"各名次段均分"_s, u"文=3,-4||理=1000"_s},
        {u"历次考试进入年级前x名人数"_s, u"-1,7"_s},
    };
    for (const auto& [name, value] : settings)
        library.execute(u"update 设置表 set 设置='%1' where 名称='%2'"_s.arg(value, name));
    for (const QString& stream : {u"文"_s, u"理"_s}) {
        for (const QString& subject : {u"语文"_s, u"数学"_s})
            library.execute(
                u"insert into 详细设置表 (设置名称,科类,科目,条件1,分数1,条件2,分数2) values "
                "('各科良好率','%1','%2','>',30.3,'<=',60.6)"_s.arg(stream, subject));
    }
}

TEST_F(FigureLists, OfEveryReportOnOneExamAreAsLongAsTheCellsSay)
{
    compareEveryReport({first});
    compareEveryReport({second});
}

TEST_F(FigureLists, OfEveryReportOnTwoExamsAreAsLongAsTheCellsSay)
{
    compareEveryReport({first, second});
}

/// The headings over a cell as a user reads them, under the settings of a new library.
class FigureHeadings : public FigureLists
{
protected:
    bool isOfClass(int row) const { return grid.TextMatrix(row, 0).endsWith(u"班"_s); }

    /// The nearest first; 各名次段均分 has its bands at the side.
    QStringList headingsOf(int row, int col) const
    {
        QStringList headings{grid.TextMatrix(row, 1)};
        while (row > 0 && isOfClass(row))
            --row;
        for (; row >= 0 && !isOfClass(row); --row)
            headings.append(grid.TextMatrix(row, col));
        return headings;
    }

    static QString itemIn(const QStringList& headings)
    {
        for (const QString& item : {u"语文"_s, u"数学"_s, u"总分"_s}) {
            if (!headings.filter(item).isEmpty())
                return item;
        }
        return {};
    }

    /// "[60,70)" of these full marks as the condition of a column.
    static QString marksIn(const QString& interval, const QString& item, double fullMarks)
    {
        static const QRegularExpression form(u"^\\[(.+),(.+)([\\])])$"_s);
        const QRegularExpressionMatch found = form.match(interval);
        if (!found.hasMatch())
            return {};
        const auto mark = [&](int number) {
            return runtime::doubleText(found.captured(number).toDouble() * fullMarks);
        };
        const QString below = found.captured(3) == u"]"_s ? u"<="_s : u"<"_s;
        return u"%1>=%2 and %1%3%4"_s.arg(item, mark(1), below, mark(2));
    }

    QString ranksIn(const QString& heading, const QString& item, const Figure& figure)
    {
        static const QRegularExpression form(u"^(前|后)(\\d+)名?$"_s);
        const QRegularExpressionMatch found = form.match(heading);
        if (!found.hasMatch())
            return {};
        const QString rank = item + u"年名"_s;
        if (found.captured(1) == u"前"_s)
            return u"%1<=%2 and %1>0"_s.arg(rank, found.captured(2));
        const int last =
            library
                .rows(u"select max(%1) from 成绩表 where 考试名称='%2' and 科类='%3'"_s.arg(
                    rank, figure.exam, figure.stream))
                .toInt();
        return rank + u">="_s + QString::number(last - found.captured(2).toInt() + 1);
    }

    /// The condition that one heading says; "" where it says none.
    QString meaningOf(const QString& heading, const QString& item, const Figure& figure)
    {
        static const std::vector<std::pair<QString, QString>> shares{
            {u"高分段"_s, u"[0.9,1]"_s},      {u"低分段"_s, u"[0,0.4)"_s},
            {u"各科优秀率"_s, u"[0.85,1]"_s}, {u"各科良好率"_s, u"[0.75,0.85)"_s},
            {u"各科及格率"_s, u"[0.6,1]"_s},  {u"各科差生率"_s, u"[0,0.4)"_s}};
        for (const auto& [name, interval] : shares) {
            if (heading.endsWith(name))
                return marksIn(interval, item, item == u"数学"_s ? 50 : 100);
        }
        if (heading.endsWith(u"各科最低分"_s) || heading.endsWith(u"各科标准差"_s))
            return item + u">=0"_s;
        if (heading.endsWith(u"线"_s))
            return item + u">="_s + heading.chopped(1);
        const QString marks = marksIn(heading, item, 1);
        return marks.isEmpty() ? ranksIn(heading, item, figure) : marks;
    }

    QString meant(const QStringList& headings, const QString& item, const Figure& figure)
    {
        QString condition;
        for (const QString& heading : headings) {
            if (condition.isEmpty())
                condition = meaningOf(heading, item, figure);
        }
        const bool isOfBand = figure.condition.text().contains(u"年名"_s);
        return isOfBand && figure.kind != FigureKind::Values ? item + u">=0 and "_s + condition
                                                             : condition;
    }

    /// Gives how many cells have a condition.
    int compareConditions()
    {
        int conditions = 0;
        for (int row = 0; row < grid.Rows(); ++row) {
            for (int col = 0; col < grid.Cols(); ++col) {
                const std::optional<Figure> figure = context.figures.at(grid, row, col);
                if (!figure)
                    continue;
                const QStringList headings = headingsOf(row, col);
                const QString item = itemIn(headings);
                EXPECT_EQ(figure->condition.text(), meant(headings, item, *figure));
                EXPECT_TRUE(figure->column == item || figure->column == item + u"年名"_s);
                conditions += !figure->condition.isNone();
            }
        }
        return conditions;
    }
};

TEST_F(FigureHeadings, SayTheConditionsOfTheirColumns)
{
    int conditions = 0;
    for (const QString& report : reports) {
        SCOPED_TRACE(report.toStdString());
        run(report, first);
        conditions += compareConditions();
    }
    EXPECT_GT(conditions, 200);
}

TEST_F(FigureLists, KeepTheCategoryFilterThatWasInForce)
{
    library.scores.settings.CategoryFilter = u" and (类别代码=2 or 类别代码=7)"_s;
    for (const QString& report : reports) {
        SCOPED_TRACE(report.toStdString());
        library.scores.settings.CategoryFilter = u" and (类别代码=2 or 类别代码=7)"_s;
        run(report, first);
        library.scores.settings.CategoryFilter.clear();
        EXPECT_GT(compareAll(), 5);
    }
}

TEST_F(FigureLists, FollowSettingsWithOddBands)
{
    setOddBands(library);
    compareEveryReport({first});
    compareEveryReport({first, second});
}

TEST_F(FigureLists, FollowConditionsThatOnlyTheEngineCanAnswer)
{
    set(u"各科优秀率"_s, u"(使用自定义数据)"_s);
    library.execute(u"insert into 详细设置表 (设置名称,科类,科目,条件1,分数1,条件2,分数2) "
                    "values ('各科优秀率','理','语文','*2>=','90.4','+0<=','88')"_s);
    run(u"各科优秀率"_s, first);
    EXPECT_GT(compareAll(), 5);
}

TEST_F(FigureLists, TakeATextOrInfinityForNoMarkAsTheReportsDo)
{
    library.execute(u"update 成绩表 set 语文='缺' where 学号=3"_s);
    library.execute(u"update 成绩表 set 语文=9e999,语文年名=-9e999 where 学号=4"_s);
    library.execute(u"update 成绩表 set 数学='缺考',语文年名='x' where 学号=5"_s);
    library.dialogs.always(u"不是可以计算的数字，按没有成绩处理"_s, runtime::Answer::Ok);
    set(u"各科差生率"_s, u"[0,0.4)"_s);
    compareEveryReport({first});
    compareEveryReport({first, second});
}

TEST_F(FigureLists, HoldMarksThatAreZeroInAllPlacesThatCount)
{
    library.execute(u"update 成绩表 set 语文=-0.00003,数学=0.03125 where 学号=3"_s);
    library.execute(u"update 设置表 set 设置='单科0.0313,总分0.7' where 名称='各分数段人数'"_s);
    library.execute(u"update 考试名称表 set 语文=9,数学=7"_s);
    library.execute(u"update 成绩表 set 语文=语文/12,数学=数学/9 where 语文>0 and 数学>1"_s);
    for (const QString& report : {u"考试人数"_s, u"各分数段人数"_s, u"各科最低分"_s}) {
        SCOPED_TRACE(report.toStdString());
        run(report, first);
        EXPECT_GE(compareAll(), 8);
    }
}

TEST_F(FigureLists, OfALibraryOfOneStreamAreAsLongAsTheCellsSay)
{
    library.execute(u"delete from 信息表 where 科类='文'"_s);
    library.execute(u"update 设置表 set 设置='使用教师名单' where 名称='各科平均分'"_s);
    library.reload();
    compareEveryReport({second, first});
}

TEST_F(FigureLists, GoWithTheirRowsWhereTheseAreSorted)
{
    run(u"各科平均分"_s, first + u',' + second);
    grid.FixedRows = 3;
    grid.Col = 2;
    for (const int order : {4, 3, 6, 5}) {
        grid.Sort(order);
        EXPECT_GT(compareAll(), 20);
    }
}

TEST_F(FigureLists, AreForgottenWithTheRowsOfTheirReport)
{
    run(u"各科最高分"_s, first);
    const grid::FlexGrid before = grid;
    run(u"各科平均分"_s, first);
    context.figures.keepOnly(grid);
    EXPECT_GT(compareAll(), 5);
    for (int row = 0; row < before.Rows(); ++row)
        EXPECT_FALSE(context.figures.at(before, row, 1));
    EXPECT_FALSE(context.figures.at(grid, -1, 1));
    EXPECT_FALSE(context.figures.at(grid, 1, grid.Cols()));
}

TEST_F(FigureLists, OfABlockWithoutRowsAreNotThoseOfTheNext)
{
    grid.setRows(9);
    statistics::ReportFigures figures;
    statistics::BlockFigures& empty = figures.add({.classes = {}, .items = 1}, grid, 1);
    statistics::BlockFigures& filled =
        figures.add({.classes = library.scores.catalogue.ClassTable.at(0), .items = 1}, grid, 0);
    EXPECT_NE(&empty, &filled);
    EXPECT_TRUE(empty.classes.empty());
}

TEST_F(FigureLists, AreNotKeptOfBlocksThatGoToASheet)
{
    QString names = first;
    statistics::TJKSRS(context, names, grid, Transfer::ToSheet);
    for (int row = 0; row < grid.Rows(); ++row)
        EXPECT_FALSE(context.figures.at(grid, row, 1));
}

} // namespace
