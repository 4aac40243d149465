#include <gtest/gtest.h>

#include "ExamImportFixture.h"
#include "platform/grid/GridText.h"
#include "support/NoRoom.h"

namespace {

using importing::ExamChoice;
using importing::ImportResult;
using runtime::Answer;

class ExamImportPreparation : public ExamImportFixture
{
protected:
    void expectUntouched()
    {
        EXPECT_EQ(scoreRows(u"*"_s), QString());
        EXPECT_EQ(library.rows(u"select 考试名称 from 考试名称表"_s), QString());
        EXPECT_EQ(questions.labels.size(), 0);
    }
};

TEST_F(ExamImportPreparation, StopsSilentlyIfTheFileIsGone)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    QFile::remove(request.workbookPath);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList());
    expectUntouched();
}

TEST_F(ExamImportPreparation, NeedsAnOpenWorkbook)
{
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
    EXPECT_EQ(dialogs.look(u"未打开"_s), errorBox);
    expectUntouched();
}

TEST_F(ExamImportPreparation, NeedsAnExamName)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    request.examName.clear();
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 请输入考试名称！"_s});
    EXPECT_EQ(dialogs.look(u"请输入"_s), errorBox);
    expectUntouched();
}

TEST_F(ExamImportPreparation, PickedExamIsReplacedOnlyAfterTheQuestion)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    request.examChoice = ExamChoice::PickedFromList;
    dialogs.expect(u"确实要将数据到入 期中 吗？原有数据将被新数据替换！"_s, Answer::Cancel);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"提示: 确实要将数据到入 期中 吗？原有数据将被新数据替换！"_s});
    EXPECT_EQ(dialogs.look(u"确实要"_s),
              (support::BoxLook{u"提示"_s, runtime::Buttons::OkCancel, runtime::Icon::None}));
    expectUntouched();
}

TEST_F(ExamImportPreparation, RefusesAnotherFirstRow)
{
    sheet({{u"班级 "_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前3列名称应为：班级,学号,姓名"_s});
    EXPECT_EQ(dialogs.look(u"格式不对"_s), errorBox);
    expectUntouched();
}

TEST_F(ExamImportPreparation, NeedsASubject)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"总分"_s, u"名次"_s, u"语文 "_s},
           {1, 1, u"王芳"_s, 90, 1, 90}});
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 没有找到科目，程序退出！"_s});
    EXPECT_EQ(dialogs.look(u"没有找到科目"_s), errorBox);
    expectUntouched();
}

TEST_F(ExamImportPreparation, ASheetWithOtherHeadingsLeavesTheErrorsOfTheFormerImportToBeCorrected)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 151}});
    EXPECT_EQ(run(), ImportResult::Finished);
    sheet({{u"班级"_s, u"学号"_s, u"名字"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(state.KMImport.size(), 1U);
    EXPECT_EQ(state.ErrorCount, 1.0F);
    EXPECT_EQ(importing::ErrorList(state).answer(1, u"80"_s),
              importing::ErrorList::Entry::Accepted);
}

TEST_F(ExamImportPreparation, TheFirstFaultInTheOrderOfTheChecksIsTold)
{
    const Rows wrongHeading{{u"班级 "_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}};
    request.examName.clear();
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s})
        << "the workbook comes before the name";

    dialogs.shown.clear();
    sheet(wrongHeading);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 请输入考试名称！"_s})
        << "the name comes before the sheet";

    dialogs.shown.clear();
    request.examChoice = ExamChoice::PickedFromList;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 请输入考试名称！"_s})
        << "the name comes before the question";

    dialogs.shown.clear();
    request.examName = u"期中"_s;
    dialogs.expect(u"原有数据将被新数据替换"_s, Answer::Cancel);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown.size(), 1) << "the question comes before the sheet";

    dialogs.shown.clear();
    dialogs.expect(u"原有数据将被新数据替换"_s, Answer::Ok);
    sheet({{u"班级 "_s, u"学号"_s, u"姓名"_s, u"体重"_s}, {1, 1, u"王芳"_s, 90}});
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_TRUE(dialogs.shown.last().contains(u"指定的工作表格式不对！"_s))
        << "the first row comes before the subjects";

    dialogs.shown.clear();
    QFile::remove(request.workbookPath);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList()) << "the file comes before all";
    expectUntouched();
}

TEST_F(ExamImportPreparation, FindsSubjectsInSheetOrderAmongOtherColumns)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"数学"_s, u"总分"_s, {}, u"语文"_s},
           {1, 1, u"王芳"_s, 100, 190, {}, 90}});
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(state.KMImport.size(), 2U);
    EXPECT_EQ(state.KMImport[0].KMName, u"数学"_s);
    EXPECT_EQ(state.KMImport[0].KMColumn, 4);
    EXPECT_EQ(state.KMImport[1].KMName, u"语文"_s);
    EXPECT_EQ(state.KMImport[1].KMColumn, 7);
    EXPECT_EQ(scoreRows(u"数学,语文"_s), u"100|90"_s);
}

TEST_F(ExamImportPreparation, LooksForSubjectsUpToColumn255)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    setCell(1, 255, u"语文"_s);
    setCell(2, 255, 90);
    setCell(1, 256, u"数学"_s);
    setCell(2, 256, 100);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(u"语文,数学"_s), u"90|NULL"_s);
}

TEST_F(ExamImportPreparation, TheFirstRowsClassGivesTheStream)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
           {2, 1, u"李强"_s, 90},
           {1, 1, u"王芳"_s, 91}});
    run();
    EXPECT_EQ(questions.labels, QStringList{u"理科：期中"_s});
    EXPECT_EQ(library.rows(u"select 科类 from 考试名称表"_s), u"理"_s);
}

TEST_F(ExamImportPreparation, UnknownFirstClassThatIsLeftEmptyGivesTheStream1)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {9, 1, u"赵六"_s, 90}});
    dialogs.expect(u"班级 9 还没有学生"_s, u"留空"_s);
    run();
    EXPECT_EQ(questions.labels, QStringList{u"1科：期中"_s});
    EXPECT_EQ(library.rows(u"select 科类 from 考试名称表"_s), u"1"_s);
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=9 and 科类=''"_s), u"赵六"_s);
}

TEST_F(ExamImportPreparation, BothGridsGetTheirHeadings)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s},
           {1, 1, u"王芳"_s, 200, u"缺考"_s}});
    run();
    EXPECT_EQ(grid::gridText(state.MFGData).trimmed(),
              u"班级\t学号\t姓名\t语文\t数学\n1\t1\t王芳\t200\t缺考"_s);
    EXPECT_EQ(state.MFGData.Cols(), 5);
    EXPECT_EQ(state.MFGData.Rows(), 2);
    EXPECT_EQ(grid::gridText(state.errors).trimmed(),
              u"班级\t学号\t姓名\t科目\t成绩\t错误原因\t\n1\t1\t王芳\t语文\t200\t超过总分"_s);
    EXPECT_EQ(state.errors.Cols(), 7);
    EXPECT_EQ(state.errors.ColWidth(6), 0);
}

TEST_F(ExamImportPreparation, ASheetWithoutStudentsLeavesTheHeadingsAlone)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}});
    run();
    EXPECT_EQ(state.MFGData.Rows(), 1);
    EXPECT_EQ(scoreRows(u"*"_s), u""_s);
}

TEST_F(ExamImportPreparation, SwitchesTheFilterOff)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    worksheet().setAutoFilter({1, 1, 2, 4});
    run();
    EXPECT_FALSE(worksheet().AutoFilterMode());
}

TEST_F(ExamImportPreparation, MakesADatedCopyBeforeTheFirstWrite)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    request.backup = importing::Backup::Make;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(QDir(library.folder.path()).entryList({u"*.bak"_s}).size(), 1);
}

TEST_F(ExamImportPreparation, WithoutACopyNothingIsWritten)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 3, u"赵六"_s, 90}});
    request.backup = importing::Backup::Make;
    QFile::remove(library.scores.LibPath);
    EXPECT_EQ(run(), ImportResult::Stopped);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 学号=3"_s), QString());
    EXPECT_EQ(scoreRows(u"*"_s), QString());
}

TEST_F(ExamImportPreparation, ACopyThatDoesNotFitIsToldBeforeTheQuestions)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s}, {1, 1, u"王芳"_s, 90}});
    request.examChoice = ExamChoice::PickedFromList;
    request.backup = importing::Backup::Make;
    support::outgrowDisk(library);
    EXPECT_EQ(run(), ImportResult::Stopped);
    support::expectOnlyNoRoomTold(dialogs.shown);
    expectUntouched();
}

} // namespace
