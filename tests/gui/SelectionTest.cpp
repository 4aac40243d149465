#include "workbench/ui/Selection.h"

#include "gui/SelectionFixture.h"
#include "platform/database/Recordset.h"

using namespace Qt::StringLiterals;
using workbench::Selection;

namespace {

class SelectionTest : public support::SelectionFixture
{
protected:
    QStringList fieldNames(const QString& sql)
    {
        database::Recordset rows;
        rows.Open(sql, library.scores.Conn);
        QStringList names;
        for (int i = 0; i < rows.fieldCount(); ++i)
            names.append(rows.Fields(i).Name());
        return names;
    }
};

TEST_F(SelectionTest, LoadingFillsTheFixedListsAndChoosesTheirFirstItems)
{
    EXPECT_EQ(selection.ListXM.items, (QStringList{u"原始分和名次"_s, u"Z分"_s, u"T分"_s}));
    EXPECT_EQ(selection.ListXM.ListIndex, 0);
    for (const workbench::SingleList& direction : selection.Combo2) {
        EXPECT_EQ(direction.items, (QStringList{u"升序"_s, u"降序"_s}));
        EXPECT_EQ(direction.ListIndex, 0);
    }
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(SelectionTest, ExamsComeInTheOrderOfTheirNumbersWithTheFirstSelected)
{
    EXPECT_EQ(selection.ListKSMC.texts(), (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"期中"_s});
    EXPECT_EQ(selection.ListKSMC.currentText(), u"期中"_s);
}

TEST_F(SelectionTest, SortKeysOfferTheFieldsFromTheFourthOn)
{
    const QStringList fields = fieldNames(u"select * from 成绩表"_s);
    ASSERT_GT(fields.size(), 3);
    for (const workbench::DropDown& key : selection.Combo1) {
        EXPECT_EQ(key.items, fields.mid(3));
        EXPECT_EQ(key.text, u"请选择项目"_s);
    }
}

TEST_F(SelectionTest, InitForgetsTheSortKeysAndTheStatisticsItem)
{
    selection.Combo1[2].text = u"总分"_s;
    selection.Combo3.text = u"考试人数"_s;
    selection.init();
    EXPECT_EQ(selection.Combo1[2].text, u"请选择项目"_s);
    EXPECT_EQ(selection.Combo3.text, u"请选择要统计的项目"_s);
}

TEST_F(SelectionTest, TheStatisticsItemsComeFromTheLibrary)
{
    library.execute(u"delete * from 设置表"_s);
    for (const auto& [id, name] : {std::pair{7, u"考试人数"_s},
                                   {4, u"低分段"_s},
                                   {5, u"各科平均分"_s},
                                   {6, u"进行对比分析的考试"_s}}) {
        library.execute(u"insert into 设置表 (ID, 名称) values (%1, '%2')"_s.arg(id).arg(name));
    }
    selection.init();
    EXPECT_EQ(selection.Combo3.items,
              (QStringList{u"高分段、低分段"_s, u"各科平均分"_s, u"考试人数"_s}));
}

TEST_F(SelectionTest, ClassesComeStreamByStreamAllSelected)
{
    EXPECT_EQ(library.scores.catalogue.Streams, (QStringList{u"文"_s, u"理"_s}));
    EXPECT_EQ(selection.ListFW.texts(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_EQ(selection.ListFW.selectedCount(), 3);
    EXPECT_EQ(selection.OptionButton1[0].caption, u"全"_s);
    EXPECT_EQ(selection.OptionButton1[1].caption, u"文"_s);
    EXPECT_EQ(selection.OptionButton1[2].caption, u"理"_s);
    for (const workbench::StreamOption& option : selection.OptionButton1)
        EXPECT_TRUE(option.visible);
    EXPECT_EQ(selection.streamWord(), u"全"_s);
}

TEST_F(SelectionTest, ALibraryOfOneStreamShowsOneStreamOption)
{
    library.execute(u"delete * from 信息表 where 科类='文'"_s);
    library.reload();
    selection.init();
    EXPECT_EQ(selection.OptionButton1[1].caption, u"理"_s);
    EXPECT_TRUE(selection.OptionButton1[1].visible);
    EXPECT_FALSE(selection.OptionButton1[2].visible);
    EXPECT_EQ(selection.ListFW.texts(), (QStringList{u"2"_s, u"3"_s}));
}

TEST_F(SelectionTest, CategoriesAreTheDistinctCodesAsTextAllSelected)
{
    library.addStudent(2, 2, u"李四"_s, u"理"_s, 2.5);
    selection.init();
    EXPECT_EQ(selection.ListLB.texts(), (QStringList{u"1"_s, u"2"_s, u"2.5"_s}));
    EXPECT_EQ(selection.ListLB.selectedCount(), 3);
}

TEST_F(SelectionTest, AStreamOptionSelectsTheClassesOfItsStream)
{
    selection.chooseStream(2);
    EXPECT_EQ(selection.ListFW.selectedTexts(), (QStringList{u"2"_s, u"3"_s}));
    EXPECT_EQ(selection.streamWord(), u"理"_s);
    EXPECT_TRUE(selection.Text1.contains(u" and ( 班级=2 or  班级=3)"_s));
    selection.chooseStream(1);
    EXPECT_EQ(selection.ListFW.selectedTexts(), QStringList{u"1"_s});
    selection.chooseStream(0);
    EXPECT_EQ(selection.ListFW.selectedCount(), 3);
    EXPECT_EQ(selection.streamWord(), u"全"_s);
}

TEST_F(SelectionTest, AnEmptyLibraryLeavesEmptyListsWithoutAMessage)
{
    library.execute(u"delete * from 信息表"_s);
    library.execute(u"delete * from 考试名称表"_s);
    library.reload();
    selection.init();
    EXPECT_EQ(selection.ListKSMC.count(), 0);
    EXPECT_EQ(selection.ListKSMC.ListIndex, -1);
    EXPECT_EQ(selection.ListKSMC.currentText(), QString());
    EXPECT_EQ(selection.ListFW.count(), 0);
    EXPECT_EQ(selection.ListLB.count(), 0);
    EXPECT_EQ(selection.Text1, u"请选择 考试名称！"_s);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(SelectionTest, WithoutALibraryTheCommandsAreOffAndTheListsStay)
{
    EXPECT_EQ(selection.commandsAvailable, workbench::Available::Yes);
    const QString text = selection.Text1;
    library.scores.Conn.Close();
    library.scores.catalogue.ExamList.clear();
    selection.init();
    EXPECT_EQ(selection.commandsAvailable, workbench::Available::No);
    EXPECT_EQ(selection.ListKSMC.texts(), (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(selection.ListFW.count(), 3);
    EXPECT_EQ(selection.Text1, text);
}

TEST_F(SelectionTest, LoadingWithoutALibraryAsksForAnExam)
{
    library.scores.Conn.Close();
    Selection loaded(library.scores);
    loaded.fill();
    EXPECT_EQ(loaded.Text1, u"请选择 考试名称！"_s);
    EXPECT_EQ(loaded.commandsAvailable, workbench::Available::No);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(SelectionTest, AFailingStatementOfInitIsShownAndTheOtherListsAreFilled)
{
    library.execute(u"drop table 设置表"_s);
    selection.init();
    ASSERT_EQ(library.dialogs.failures.size(), 2);
    for (const QString& failure : library.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Sub init/FormKaoShi"_s)) << failure.toStdString();
    EXPECT_EQ(selection.Combo3.items, QStringList{u"高分段、低分段"_s});
    EXPECT_EQ(selection.ListFW.count(), 3);
}

TEST_F(SelectionTest, AStreamOutsideTheClassTableHasItsOptionAndNoClasses)
{
    library.scores.catalogue.ClassTable.resize(1);
    selection.init();
    EXPECT_TRUE(selection.OptionButton1[2].visible);
    EXPECT_EQ(selection.ListFW.texts(), QStringList{u"1"_s});
    selection.chooseStream(2);
    EXPECT_EQ(selection.ListFW.selectedCount(), 0);
}

TEST_F(SelectionTest, RequestsSayWhatTheListsShow)
{
    select(selection.ListKSMC, {u"期中"_s, u"期末"_s});
    selection.ListKSMC.ListIndex = 1;
    selection.ListXM.ListIndex = 2;
    selection.Combo3.text = u"考试人数"_s;
    selection.chooseStream(2);
    selection.Text1 = u"select 1"_s;
    const workbench::BrowseRequest browse = selection.browseRequest();
    EXPECT_EQ(browse.rows.exams, (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(browse.family, u"T分"_s);
    EXPECT_EQ(browse.stream, u"理"_s);
    EXPECT_EQ(browse.sql, u"select 1"_s);
    const workbench::ReportRequest report = selection.reportRequest();
    EXPECT_EQ(report.exams, (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(report.item, u"考试人数"_s);
    selection.Combo3.text = u"请选择要统计的项目"_s;
    EXPECT_EQ(selection.reportRequest().item, std::nullopt);
    const workbench::AnalysisRequest analysis = selection.analysisRequest();
    EXPECT_EQ(analysis.exams, (QStringList{u"期中"_s, u"期末"_s}));
    EXPECT_EQ(analysis.exam, u"期末"_s);
}

class ScTJ : public support::SelectionFixture
{
protected:
    void sortBy(size_t key, const QString& column, int direction)
    {
        selection.Combo1[key].text = column;
        selection.Combo2[key].ListIndex = direction;
    }

    const QString& filter() const { return library.scores.settings.CategoryFilter; }
};

TEST_F(ScTJ, WritesTheStatementToTheBlank)
{
    selection.ListKSMC.clear();
    selection.ListKSMC.add(u"A"_s, workbench::Selected::Yes);
    selection.ListKSMC.add(u"B"_s, workbench::Selected::Yes);
    select(selection.ListFW, {u"1"_s, u"2"_s});
    select(selection.ListLB, {u"1"_s});
    sortBy(0, u"总分"_s, 1);
    selection.scTJ();
    EXPECT_EQ(
        selection.Text1,
        u"select * from 成绩表 where  ( 考试名称='A' or  考试名称='B') and ( 班级=1 or  班级=2)"
        " and (类别代码=1) order by 总分 DESC"_s);
    EXPECT_EQ(filter(), u" and (类别代码=1)"_s);
}

TEST_F(ScTJ, StandsInTheTextBoxOnceTheLibraryIsShown)
{
    EXPECT_EQ(selection.Text1,
              u"select * from 成绩表 where  ( 考试名称='期中')"
              " and ( 班级=1 or  班级=2 or  班级=3) and (类别代码=1 or 类别代码=2)"_s);
}

TEST_F(ScTJ, TakesTheSortKeysInTurnAndSkipsThoseNotChosen)
{
    sortBy(0, u"班级"_s, 0);
    sortBy(1, u"请选择项目"_s, 1);
    sortBy(2, QString(), 1);
    sortBy(3, u"总分"_s, 1);
    selection.scTJ();
    EXPECT_TRUE(selection.Text1.endsWith(u") order by 班级 ASC,总分 DESC"_s))
        << selection.Text1.toStdString();
}

TEST_F(ScTJ, WithoutAnExamAsksForOneAndLeavesTheFilter)
{
    library.scores.settings.CategoryFilter = u"former"_s;
    select(selection.ListKSMC, {});
    selection.scTJ();
    EXPECT_EQ(selection.Text1, u"请选择 考试名称！"_s);
    EXPECT_EQ(filter(), u"former"_s);
}

TEST_F(ScTJ, WithoutAClassAsksForOneWithAQuotationMarkAndStoresTheFilter)
{
    select(selection.ListFW, {});
    select(selection.ListLB, {u"2"_s});
    selection.scTJ();
    EXPECT_EQ(selection.Text1, u"请选择 要导出成绩的 班级！\""_s);
    EXPECT_EQ(filter(), u" and (类别代码=2)"_s);
}

TEST_F(ScTJ, WithoutACategoryHasNoConditionOnIt)
{
    select(selection.ListLB, {});
    selection.scTJ();
    EXPECT_EQ(filter(), QString());
    EXPECT_TRUE(selection.Text1.endsWith(u" and ( 班级=1 or  班级=2 or  班级=3)"_s));
}

TEST_F(ScTJ, IsAStatementThatTheLibraryRuns)
{
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}});
    library.addScores(u"期中"_s, 3, 1, {{u"语文"_s, 120}});
    library.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 110}});
    sortBy(0, u"语文"_s, 1);
    selection.scTJ();
    QString sql = selection.Text1;
    EXPECT_EQ(library.rows(sql.replace(u"select *"_s, u"select 姓名"_s)), u"钱二 / 赵一"_s);
}

class MovingAnExam : public support::SelectionFixture
{
protected:
    MovingAnExam()
    {
        selection.ListKSMC.clear();
        for (const QString& exam : {u"甲"_s, u"乙"_s, u"丙"_s})
            selection.ListKSMC.add(exam, workbench::Selected::No);
    }

    void move(workbench::Direction direction) { selection.MoveList(selection.ListKSMC, direction); }

    QString order() const { return selection.ListKSMC.texts().join(QString()); }
};

TEST_F(MovingAnExam, TheSelectedExamSwapsWithItsNeighbour)
{
    select(selection.ListKSMC, {u"乙"_s});
    move(workbench::Direction::Up);
    EXPECT_EQ(order(), u"乙甲丙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"乙"_s});
    EXPECT_EQ(selection.ListKSMC.currentText(), u"乙"_s);
    move(workbench::Direction::Down);
    move(workbench::Direction::Down);
    EXPECT_EQ(order(), u"甲丙乙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"乙"_s});
    EXPECT_TRUE(selection.Text1.contains(u"( 考试名称='乙')"_s));
}

TEST_F(MovingAnExam, TheFirstUpAndTheLastDownStay)
{
    select(selection.ListKSMC, {u"甲"_s});
    move(workbench::Direction::Up);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    select(selection.ListKSMC, {u"丙"_s});
    move(workbench::Direction::Down);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    EXPECT_EQ(selection.ListKSMC.selectedTexts(), QStringList{u"丙"_s});
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(MovingAnExam, MovingNeedsExactlyOneSelectedExam)
{
    const QString message = u"本操作要求只能选中一次考试，请选择一次考试！"_s;
    select(selection.ListKSMC, {u"甲"_s, u"乙"_s});
    move(workbench::Direction::Up);
    select(selection.ListKSMC, {});
    move(workbench::Direction::Down);
    EXPECT_EQ(order(), u"甲乙丙"_s);
    EXPECT_EQ(library.dialogs.shown, (QStringList{message, message}));
}

} // namespace
