#include <QRegularExpression>

#include "ReportFixture.h"
#include "statistics/NamedReports.h"
#include "support/FreeFile.h"

namespace {

using namespace Qt::StringLiterals;
using statistics::Transfer;

/// A report by its name, and what all reports have in common.
struct Entry
{
    QString name;
    QString tag;
    /// The row of 设置表 that it reads.
    QString setting;
    /// FixedRows with one stream and with two; -1 leaves them as they stand.
    int fixedWithOne;
    int fixedWithTwo;
};

const std::vector<Entry>& entries()
{
    static const std::vector<Entry> all{
        {u"考试人数"_s, u"TJKSRS"_s, u"考试人数"_s, 0, 0},
        {u"高、低分段"_s, u"TJGDFD"_s, u"低分段"_s, 2, 0},
        {u"各科优秀率"_s, u"TJGK4l"_s, u"各科优秀率"_s, 1, 0},
        {u"各科良好率"_s, u"TJGK4l"_s, u"各科良好率"_s, 1, 0},
        {u"各科及格率"_s, u"TJGK4l"_s, u"各科及格率"_s, 1, 0},
        {u"各科差生率"_s, u"TJGK4l"_s, u"各科差生率"_s, 1, 0},
        {u"各科平均分"_s, u"TJGKPJF"_s, u"各科平均分"_s, 1, 0},
        {u"各科最高分"_s, u"TJGKZGF"_s, u"各科平均分"_s, 1, 0},
        {u"各科最低分"_s, u"TJGKZDF"_s, u"各科平均分"_s, 1, 0},
        {u"各科标准差"_s, u"TJGKBZC"_s, u"各科标准差"_s, 1, 0},
        {u"各分数段人数"_s, u"TJGFSDRS"_s, u"各分数段人数"_s, -1, -1},
        {u"总分上线人数"_s, u"TJZFSXRS"_s, u"总分上线人数"_s, 0, 0},
        {u"各名次段人数"_s, u"TJGMCDRS"_s, u"各名次段人数"_s, -1, -1},
        {u"各名次段均分"_s, u"TJGKGMCDJF"_s, u"各名次段均分"_s, 0, 0},
        {u"历次考试进入年级前x名人数"_s, u"TJLCKSQxM"_s, u"历次考试进入年级前x名人数"_s, -1, -1},
    };
    return all;
}

class EveryReport : public ReportTest
{
protected:
    void run(const Entry& entry)
    {
        QString list = exams;
        context.forgetRows();
        statistics::namedReport(entry.name)(context, list, grid, Transfer::GridOnly);
    }

    /// Cells of column 0 that are a class, each once.
    QStringList classes() const
    {
        static const QRegularExpression form(u"^[\\d.]+班$"_s);
        QStringList found;
        for (int row = 0; row < grid.Rows(); ++row) {
            const QString text = grid.TextMatrix(row, 0);
            if (form.match(text).hasMatch() && !found.contains(text))
                found.append(text);
        }
        return found;
    }
};

TEST_F(EveryReport, ReadsOneStateOfTheLibrary)
{
    set(u"总分上线人数"_s, u"文=500,理=520"_s);
    QList<bool> wasFree;
    // Acts ahead of what lets go of the file before the box about the setting.
    const runtime::BeforeDialogs beforeBox(
        [&] { wasFree.append(support::isFree(library.scores.Conn.path())); });
    QString list = exams;
    statistics::namedReport(u"总分上线人数"_s)(context, list, grid, Transfer::GridOnly);
    EXPECT_EQ(wasFree, QList<bool>{false});
    EXPECT_TRUE(support::isFree(library.scores.Conn.path()));
}

TEST_F(EveryReport, FixesItsHeadingByTheNumberOfStreams)
{
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        grid.FixedRows = 7;
        run(entry);
        EXPECT_EQ(grid.FixedRows, entry.fixedWithOne < 0 ? 7 : entry.fixedWithOne);
    }
    addSecondStream();
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        grid.FixedRows = 7;
        run(entry);
        EXPECT_EQ(grid.FixedRows, entry.fixedWithTwo < 0 ? 7 : entry.fixedWithTwo);
    }
}

TEST_F(EveryReport, CentresAllColumnsAndMergesByRows)
{
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        EXPECT_EQ(grid.MergeCells, 2);
        EXPECT_TRUE(grid.MergeRow(0));
        EXPECT_EQ(grid.ColAlignment(grid.Cols() - 1), 4);
    }
}

TEST_F(EveryReport, LibraryWithoutStreamsGivesAnEmptyGrid)
{
    library.execute(u"delete from 信息表"_s);
    library.reload();
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        library.dialogs.failures.clear();
        run(entry);
        EXPECT_EQ(grid.Rows(), 0);
        // A width for a column that is not there is all that fails.
        for (const QString& failure : std::as_const(library.dialogs.failures))
            EXPECT_TRUE(failure.endsWith(u" - Sub "_s + entry.tag + u"/Mdl_MDB"_s));
    }
}

TEST_F(EveryReport, StreamOfAnotherNameIsAStreamLikeAny)
{
    for (const QString& table : {u"信息表"_s, u"考试名称表"_s, u"成绩表"_s})
        library.execute(u"update %1 set 科类='体'"_s.arg(table));
    library.reload();
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        EXPECT_EQ(classes(), (QStringList{u"1班"_s, u"2班"_s}));
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(EveryReport, ExamWithoutRowsAndClassWithoutRowsCostNoMessage)
{
    library.addStudent(3, 1, u"己"_s, u"理"_s);
    library.execute(u"delete from 成绩表"_s);
    library.reload();
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        EXPECT_EQ(classes(), (QStringList{u"1班"_s, u"2班"_s, u"3班"_s}));
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(EveryReport, TwoHundredClassesStandInOneBlock)
{
    for (int number = 3; number <= 200; ++number)
        library.addStudent(number, 1, u"生"_s, u"理"_s);
    score(u"期中"_s, 200, 1, {85, 45, 130, 2});
    library.reload();
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        EXPECT_EQ(classes().size(), 200);
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(EveryReport, ColumnThatIsGoneIsShownWithTheReportsTagAndTheOthersStand)
{
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文"_s);
    library.execute(u"ALTER TABLE 成绩表 DROP COLUMN 语文年名"_s);
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        library.dialogs.failures.clear();
        run(entry);
        EXPECT_EQ(classes(), (QStringList{u"1班"_s, u"2班"_s}));
        EXPECT_EQ(library.dialogs.failures.isEmpty(), entry.name == u"总分上线人数"_s);
        for (const QString& failure : std::as_const(library.dialogs.failures))
            EXPECT_TRUE(failure.endsWith(u" - Sub "_s + entry.tag + u"/Mdl_MDB"_s));
    }
}

TEST_F(EveryReport, BadSettingLeavesTheGridWithClassesOrEmpty)
{
    QStringList many;
    for (int i = 1; i <= 500; ++i)
        many.append(QString::number(i));
    const QStringList bad{u""_s,
                          u" "_s,
                          u","_s,
                          u"["_s,
                          u"0.85"_s,
                          u"[a,b]"_s,
                          u"]0.9,0.1["_s,
                          u"(使用自定义数据)"_s,
                          u"文=5"_s,
                          u"文=5,理=6"_s,
                          u"||"_s,
                          u"文=||理="_s,
                          u"文=||理=,"_s,
                          u"理=1||文=2||"_s,
                          u"文=x||理=y"_s,
                          u"单科0,总分50"_s,
                          u"单科-5,总分50"_s,
                          u"单科1e-300,总分1e300"_s,
                          u"单科,总分"_s,
                          u"-1,-1000,0,1E400"_s,
                          many.join(u',')};
    for (const Entry& entry : entries()) {
        for (const QString& value : bad) {
            SCOPED_TRACE(entry.name.toStdString() + " " + value.left(20).toStdString());
            set(entry.setting, value);
            ASSERT_NO_THROW(run(entry));
            if (grid.Rows() > 3) {
                EXPECT_EQ(classes(), (QStringList{u"1班"_s, u"2班"_s}));
            }
        }
    }
}

TEST_F(EveryReport, SettingOfAnItemThatHasOneOfItsOwnNameOnlyIsNotRead)
{
    set(u"各名次段人数"_s, u"1"_s);
    set(u"历次各名次段人数对比"_s, u"2"_s);
    set(u"总分上线人数"_s, u"80"_s);
    set(u"历次总分上线人数"_s, u"90"_s);
    statistics::namedReport(u"历次各名次段人数对比"_s)(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(0), u"语文各名次段人数|语文各名次段人数"_s);
    EXPECT_EQ(row(1), u"班级|前1名"_s);
    statistics::namedReport(u"历次总分上线人数"_s)(context, exams, grid, Transfer::GridOnly);
    EXPECT_EQ(row(0), u"总分上线人数|总分上线人数"_s);
    EXPECT_EQ(row(1), u"班级|80线"_s);
}

TEST_F(EveryReport, ExamOfTheFirstStreamAloneLendsItsColumnsOnlyWhereTotalsCountToo)
{
    addSecondStream();
    library.execute(u"delete from 考试名称表 where 科类='理'"_s);
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        const bool subjectsOnly = entry.name.startsWith(u"各科"_s) || entry.name == u"高、低分段"_s;
        // Without subjects no cell is counted, and no row named.
        EXPECT_EQ(classes().contains(u"1班"_s), !subjectsOnly);
        EXPECT_TRUE(classes().contains(u"5班"_s));
    }
}

TEST_F(EveryReport, ExamOfTheSecondStreamAloneLendsItsColumnsToTheFirst)
{
    addSecondStream();
    library.execute(u"delete from 考试名称表 where 科类='文'"_s);
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        EXPECT_EQ(classes(), (QStringList{u"5班"_s, u"1班"_s, u"2班"_s}));
    }
}

TEST_F(EveryReport, EmptyListOfExamsGivesHeadingsAlone)
{
    exams.clear();
    set(u"总分上线人数"_s, u"80"_s);
    for (const Entry& entry : entries()) {
        SCOPED_TRACE(entry.name.toStdString());
        run(entry);
        // A list without names has no columns, and so no blocks for each.
        const bool byItem = entry.fixedWithOne < 0;
        EXPECT_EQ(grid.Rows() == 0, byItem);
    }
}

TEST(NamedReport, OfAnUnknownNameIsNone)
{
    EXPECT_FALSE(statistics::namedReport(u"别的"_s));
    for (const QString& name : {u"高分段"_s, u"低分段"_s, u"高、低分段"_s, u"高分段、低分段"_s})
        EXPECT_TRUE(statistics::namedReport(name));
}

} // namespace
