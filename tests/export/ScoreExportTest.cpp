#include "export/ScoreExport.h"

#include "ExportFixture.h"

using namespace Qt::StringLiterals;
using exporting::BlockLayout;
using exporting::ExportEnd;

namespace {

class ScoreExport : public ExportFixture
{
};

const QString noRow = u"没有当前记录。"_s;
const QString done = u"成绩导出完毕！"_s;

TEST_F(ScoreExport, AStudentHasAHeadingRowAndARowForEachExamInTheirOrder)
{
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(
        rows(1, 9),
        (QStringList{u"考试名称|班级|学号|姓名|语文|语名|总分|总名"_s,
                     u"期中|1|1|甲|72.1|2|72.1|2"_s, u"期末|1|1|甲|90|1|90|1"_s, u"|||||||"_s,
                     u"|||||||"_s, u"考试名称|班级|学号|姓名|语文|语名|总分|总名"_s,
                     u"期中|1|2|乙|80.5|1|80.5|1"_s, u"期末|1|2|乙|-1|-1|-1|-1"_s, u"|||||||"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList{done});
    EXPECT_EQ(test.dialogs.look(done), support::BoxLook());
    EXPECT_EQ(sheet().lastUsedRow(), 8);
}

TEST_F(ScoreExport, NumbersStayNumbersAndNamesStayTexts)
{
    test.execute(u"update 信息表 set 姓名='007'"_s);
    test.execute(u"update 成绩表 set 姓名='007'"_s);
    run();
    EXPECT_EQ(sheet().Cells(2, 4), runtime::Value(u"007"_s));
    EXPECT_EQ(sheet().Cells(2, 5).kind(), runtime::Value::Kind::Single);
    EXPECT_EQ(sheet().Cells(2, 5).text(), u"72.1"_s);
}

TEST_F(ScoreExport, TheInfoRowIsMergedOverAllColumnsAndHasNoBorders)
{
    request.infoRow = true;
    run();
    EXPECT_EQ(rows(1, 4), (QStringList{u"1 班1 号：甲||||"_s, u"考试名称|语文|语名|总分|总名"_s,
                                       u"期中|72.1|2|72.1|2"_s, u"期末|90|1|90|1"_s}));
    EXPECT_EQ(sheet().merges().settled(),
              (std::vector<excel::CellRange>{{1, 1, 1, 5}, {7, 1, 7, 5}}));
    EXPECT_EQ(sheet().format(1, 1).borders, excel::CellBorders());
}

TEST_F(ScoreExport, BordersGoFromTheHeadingToTheLastRowOfTheBlock)
{
    run();
    const auto top = [&](int row, int column) { return sheet().format(row, column).borders.top; };
    for (const int row : {1, 2, 3, 6, 7, 8}) {
        EXPECT_EQ(top(row, 1), excel::LineStyle::Continuous) << row;
        EXPECT_EQ(top(row, 8), excel::LineStyle::Continuous) << row;
        EXPECT_EQ(top(row, 9), excel::LineStyle::None) << row;
    }
    EXPECT_EQ(top(4, 1), excel::LineStyle::None);
    EXPECT_EQ(top(9, 1), excel::LineStyle::None);
}

TEST_F(ScoreExport, LaysTheSheetOut)
{
    run();
    const auto width = [&](int column) { return sheet().geometry().shownColumnWidth(column); };
    EXPECT_EQ(width(1), 7.5);
    EXPECT_EQ(width(2), 4);
    EXPECT_EQ(width(4), 5.75);
    EXPECT_EQ(width(7), 5.25);
    EXPECT_EQ(width(35), 4);
    EXPECT_EQ(width(36), excel::SheetGeometry::standardColumnWidth);
    EXPECT_EQ(sheet().format(50, 50).horizontalAlignment, excel::HorizontalAlignment::Center);
    EXPECT_EQ(sheet().format(50, 50).verticalAlignment, excel::VerticalAlignment::Center);
    const excel::PageLayout& page = std::as_const(sheet()).PageSetup();
    EXPECT_EQ(page.Orientation, excel::Orientation::Landscape);
    EXPECT_EQ(page.PaperSize, 13);
    for (const double margin :
         {page.LeftMargin, page.RightMargin, page.TopMargin, page.BottomMargin})
        EXPECT_NEAR(margin, 28.3464566929134, 1e-9);
}

TEST_F(ScoreExport, WhatIsNotChosenIsAskedForInOrder)
{
    request.exams = request.subjects = request.classes = QStringList();
    EXPECT_EQ(run().end, ExportEnd::Refused);
    request.exams = QStringList{u"期中"_s};
    run();
    request.subjects = QStringList{u"语文"_s};
    run();
    request.classes = QStringList{u"1"_s};
    request.layout = BlockLayout::RankChart;
    EXPECT_EQ(run().book, nullptr);
    EXPECT_EQ(
        test.dialogs.shown,
        (QStringList{u"请选择 要导出成绩的 考试名称！"_s, u"请选择要导出成绩的 科目！"_s,
                     u"请选择 要导出成绩的 班级！"_s, u"没有选择总分，不能根据总分绘图！"_s}));
    for (const QString& text : test.dialogs.shown)
        EXPECT_EQ(test.dialogs.look(text), support::BoxLook()) << text.toStdString();
    EXPECT_TRUE(applications.empty());
    EXPECT_EQ(progress.finished, 0);
    // The list of columns was made before it was known that no total is chosen.
    EXPECT_EQ(test.scores.settings.DisplayItems.last(), u"语文年名"_s);
}

TEST_F(ScoreExport, TheNumberOfBlankRowsIsReadAsItIsTyped)
{
    const std::pair<QString, int> cases[] = {{u"2"_s, 6},    {u"-3"_s, 7},    {u"abc"_s, 4},
                                             {u"2.9"_s, 6},  {u""_s, 4},      {u"0"_s, 4},
                                             {u"-0.5"_s, 4}, {u" 1 0 "_s, 14}};
    for (const auto& [text, second] : cases) {
        request.blankRows = text;
        run();
        EXPECT_EQ(cell(second, 1), u"考试名称"_s) << text.toStdString();
        EXPECT_EQ(cell(second - 1, 1), second == 4 ? u"期末"_s : QString()) << text.toStdString();
    }
}

TEST_F(ScoreExport, MoreBlankRowsThanASheetHasLeaveTheOtherStudentsOut)
{
    request.blankRows = u"1e300"_s;
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(sheet().lastUsedRow(), 3);
    EXPECT_EQ(exportFailures().first(), u"工作表中没有第 1048577 行第 1 列的单元格。"_s);
}

TEST_F(ScoreExport, ClassesAreWrittenByClassAndNumber)
{
    request.classes = QStringList{u"2"_s, u"1"_s};
    request.exams = QStringList{u"期中"_s};
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 60}});
    run();
    EXPECT_EQ(cell(2, 4), u"甲"_s);
    EXPECT_EQ(cell(6, 4), u"乙"_s);
    EXPECT_EQ(cell(10, 4), u"丙"_s);
    EXPECT_EQ(cell(10, 6), u""_s);
}

TEST_F(ScoreExport, AStudentWithoutRowsGetsHisHeadingAndAMessageForTheReadOfTheFirstRow)
{
    request.infoRow = true;
    request.classes = QStringList{u"1"_s, u"2"_s};
    test.addStudent(1, 3, u"丁"_s, u"理"_s);
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(rows(13, 16), (QStringList{u"1 班3 号：丁||||"_s, u"考试名称|语文|语名|总分|总名"_s,
                                         u"||||"_s, u"||||"_s}));
    EXPECT_EQ(cell(17, 1), u"2 班1 号：丙"_s);
    EXPECT_EQ(sheet().format(14, 1).borders.bottom, excel::LineStyle::Continuous);
    EXPECT_EQ(sheet().format(15, 1).borders.bottom, excel::LineStyle::None);
    EXPECT_EQ(exportFailures(), (QStringList{noRow, noRow}));
}

TEST_F(ScoreExport, TwoRowsOfOneExamAreBothWritten)
{
    test.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 60}});
    run();
    EXPECT_EQ(rows(2, 4), (QStringList{u"期中|1|1|甲|72.1|2|72.1|2"_s, u"期中|1|1|甲|60|||"_s,
                                       u"期末|1|1|甲|90|1|90|1"_s}));
    EXPECT_EQ(sheet().format(4, 8).borders.bottom, excel::LineStyle::Continuous);
}

TEST_F(ScoreExport, AnExamThatIsGoneIsToldAndLeavesTheOtherOnes)
{
    request.exams = QStringList{u"不存在"_s, u"期末"_s};
    run();
    EXPECT_EQ(cell(2, 1), u"期末"_s);
    EXPECT_EQ(cell(3, 1), u""_s);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"成绩库里已经没有考试 不存在，没有导出。"_s, done}));
}

TEST_F(ScoreExport, AColumnThatIsGoneSinceTheListWasSavedIsTold)
{
    test.execute(u"insert into 自定义显示表 (项目名称, 显示项目) values "
                 "('导出成绩False','考试名称,物理,化学,语文')"_s);
    run();
    EXPECT_EQ(rows(1, 2), (QStringList{u"考试名称|语文"_s, u"期中|72.1"_s}));
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"成绩表里没有列 物理、化学，没有导出。"_s, done}));
}

TEST_F(ScoreExport, ALibraryThatCannotBeReadIsToldAndDoesNotCountAsEmpty)
{
    test.scores.Conn.Close();
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(sheet().lastUsedRow(), 1);
    EXPECT_FALSE(exportFailures().isEmpty());
    EXPECT_EQ(test.dialogs.shown.last(), done);
    EXPECT_FALSE(test.dialogs.shown.contains(u"所选的班级没有学生，表格是空的。"_s));
}

TEST_F(ScoreExport, AnExamWithAnApostropheMakesTheStatementWrong)
{
    request.exams = QStringList{u"期中"_s, u"O'Neil"_s};
    EXPECT_EQ(run().end, ExportEnd::Finished);
    const QString wrong = u"语句有语法错误：“O'Neil”里有单引号。"_s;
    EXPECT_EQ(exportFailures(), (QStringList{wrong, noRow, wrong, noRow}));
    EXPECT_EQ(cell(1, 1), u"考试名称"_s);
    EXPECT_EQ(cell(2, 1), u""_s);
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表"_s), u"4"_s);
}

TEST_F(ScoreExport, NamesThatLookLikeSomethingElseAreWrittenAsTheyAre)
{
    const QString name = u"--\n;=1+1 "_s + QString(10000, u'长');
    test.execute(u"update 考试名称表 set 考试名称='--;\"' where 考试名称='期中'"_s);
    test.execute(u"update 成绩表 set 考试名称='--;\"' where 考试名称='期中'"_s);
    database::Recordset students;
    students.Open(u"select * from 信息表 where 学号=1 and 班级=1"_s, test.scores.Conn);
    students.Fields(u"姓名"_s).setValue(u"--\n;=1+1"_s);
    students.Update();
    request.exams = QStringList{u"--;\""_s};
    request.infoRow = true;
    run();
    EXPECT_EQ(cell(1, 1), u"1 班1 号：--\n;=1+1"_s);
    EXPECT_EQ(cell(3, 1), u"--;\""_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{done});
    request.exams = QStringList{name};
    run();
    EXPECT_EQ(test.dialogs.shown.last(), done);
}

TEST_F(ScoreExport, AClassThatIsNoNumberIsRefusedAndNothingIsWritten)
{
    request.classes = QStringList{u"1) or (1=1"_s};
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(sheet().lastUsedRow(), 1);
    EXPECT_TRUE(exportFailures().first().contains(u"不是可以用在语句里的条件"_s));
}

TEST_F(ScoreExport, AClassWithoutStudentsIsTold)
{
    request.classes = QStringList{u"9"_s};
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"所选的班级没有学生，表格是空的。"_s, done}));
    EXPECT_EQ(sheet().lastUsedRow(), 1);
}

TEST_F(ScoreExport, AStudentDeletedMeanwhileIsToldAndTheOthersAreWritten)
{
    progress.onReport = [&](int students) {
        if (students == 0)
            test.execute(u"delete from 信息表 where 姓名='乙'"_s);
    };
    request.classes = QStringList{u"1"_s, u"2"_s};
    test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 60}});
    EXPECT_EQ(run().end, ExportEnd::Finished);
    EXPECT_EQ(exportFailures(), QStringList{u"这条记录已经被删除。"_s});
    EXPECT_EQ(cell(2, 4), u"甲"_s);
    EXPECT_EQ(cell(7, 4), u"丙"_s);
}

TEST_F(ScoreExport, AColumnThatIsGoneCostsAMessageForEachCell)
{
    request.subjects = QStringList{u"物理"_s, u"语文"_s};
    request.exams = QStringList{u"期中"_s};
    run();
    EXPECT_EQ(row(1), u"考试名称|班级|学号|姓名|物理|物名|语文|语名"_s);
    EXPECT_EQ(row(2), u"期中|1|1|甲|||72.1|2"_s);
    const QString score = u"没有名为“物理”的列。"_s;
    const QString rank = u"没有名为“物理年名”的列。"_s;
    EXPECT_EQ(exportFailures(), (QStringList{score, rank, score, rank}));
}

TEST_F(ScoreExport, ASavedListMayHoldAnyColumnInAnyOrder)
{
    test.execute(u"insert into 自定义显示表 (项目名称, 显示项目) values "
                 "('导出成绩False','语文年名,考试名称,物理,备注,类别代码')"_s);
    run();
    EXPECT_EQ(rows(1, 2), (QStringList{u"语名|考试名称|备注|类别代码"_s, u"2|期中||1"_s}));
    EXPECT_EQ(test.scores.settings.DisplayItems,
              (QStringList{u"语文年名"_s, u"考试名称"_s, u"备注"_s, u"类别代码"_s}));
}

TEST_F(ScoreExport, TellsStudentByStudentHowFarItIs)
{
    QStringList order;
    progress.onReport = [&](int) { order.append(u"report"_s); };
    result = exporting::exportScores(
        test.scores, request, applications, progress, [&](exporting::RunningText text) {
            const bool shown = text == exporting::RunningText::Shown;
            order.append(shown ? u"shown"_s : u"hidden after "_s + test.dialogs.shown.last());
        });
    EXPECT_EQ(progress.texts, (QStringList{u"正在导出成绩... 甲"_s, u"正在导出成绩... 乙"_s}));
    EXPECT_EQ(progress.counts, (std::vector<std::pair<int, int>>{{0, 2}, {1, 2}}));
    EXPECT_EQ(progress.finished, 1);
    EXPECT_EQ(order,
              (QStringList{u"shown"_s, u"report"_s, u"report"_s, u"hidden after "_s + done}));
}

TEST_F(ScoreExport, CancelledItLeavesWhatWasWrittenOpen)
{
    progress.onReport = [&](int students) { progress.stopped = students == 0; };
    EXPECT_EQ(run().end, ExportEnd::Cancelled);
    EXPECT_EQ(cell(3, 4), u"甲"_s);
    EXPECT_EQ(sheet().lastUsedRow(), 3);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导出已取消，已经写入的 1 名学生留在表格里。"_s});
    EXPECT_TRUE(result.book->isOpen());
    EXPECT_TRUE(applications.back()->Visible());
}

TEST_F(ScoreExport, TakesTheApplicationThatAnswersAndShowsItAtTheEnd)
{
    applications.push_back(std::make_unique<excel::Application>());
    excel::Application& open = *applications.back();
    excel::Workbook& other = open.Workbooks().Add();
    run();
    EXPECT_EQ(applications.size(), 1U);
    EXPECT_EQ(open.Workbooks().Count(), 2);
    EXPECT_TRUE(open.Visible());
    EXPECT_TRUE(open.ScreenUpdating());
    EXPECT_TRUE(other.isOpen());
    EXPECT_FALSE(result.book->Saved());
    EXPECT_EQ(result.book->path(), QString());
    EXPECT_EQ(&result.book->activeSheet(), &sheet());
    open.Quit();
    run();
    EXPECT_EQ(applications.size(), 2U);
    EXPECT_TRUE(applications.back()->Visible());
}

} // namespace
