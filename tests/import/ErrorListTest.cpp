#include "import/ErrorList.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using importing::ErrorList;

class ErrorListTest : public testing::Test
{
protected:
    ErrorListTest()
    {
        state.KMImport = {{u"语文"_s, 150, 4}, {u"数学"_s, 100.1F, 5}};
        state.MFGData.setCols(5);
        state.MFGData.setRows(5);
        state.badCells = {{1, 3}, {2, 4}};
        state.MFGData.setTextMatrix(0, 3, u"语文"_s);
        state.MFGData.setTextMatrix(1, 3, u"160"_s);
        int column = 0;
        for (const QString& text : {u"2"_s, u"5"_s, u"张三"_s, u"88"_s})
            state.MFGData.setTextMatrix(3, column++, text);
        state.errors.setCols(7);
        addError(u"语文"_s, u"160"_s, u"超过总分"_s);
        addError(u"数学"_s, u"0"_s, u"分值不能为空"_s);
    }

    void addError(const QString& subject, const QString& score, const QString& reason)
    {
        state.ErrorCount += 1;
        const int row = int(state.ErrorCount);
        state.errors.setRows(row + 1);
        int column = 0;
        for (const QString& text : {u"1"_s, u"2"_s, u"王芳"_s, subject, score, reason})
            state.errors.setTextMatrix(row, column++, text);
    }

    QString reason(int row) const { return state.errors.TextMatrix(row, 5); }

    QString staged(int row, int column) const { return state.MFGData.TextMatrix(row, column); }

    importing::ImportState state;
    support::ScriptedDialogs dialogs;
    ErrorList list{state};
};

TEST_F(ErrorListTest, TellsHowManyScoresAreBad)
{
    EXPECT_EQ(list.countText(), u"共发现 2 处成绩有问题！"_s);
}

TEST_F(ErrorListTest, EnterOnAnEmptyEditorDoesNothing)
{
    EXPECT_EQ(list.answer(1, {}), ErrorList::Entry::Ignored);
    EXPECT_EQ(reason(1), u"超过总分"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ErrorListTest, ScoreEqualToTheFullMarkIsAccepted)
{
    EXPECT_EQ(list.answer(1, u"150"_s), ErrorList::Entry::Accepted);
    EXPECT_EQ(reason(1), QString());
    EXPECT_EQ(list.answer(2, u"100.1"_s), ErrorList::Entry::Accepted)
        << "compared as 32-bit floats";
    EXPECT_EQ(list.answer(2, u"0"_s), ErrorList::Entry::Accepted);
}

TEST_F(ErrorListTest, ScoreOutsideTheRangeIsRefused)
{
    for (const QString& text : {u"150.5"_s, u"-1"_s}) {
        dialogs.shown.clear();
        EXPECT_EQ(list.answer(1, text), ErrorList::Entry::Refused);
        EXPECT_EQ(dialogs.shown, QStringList{u"错误: 输入分数有误，请重新输入！"_s});
        EXPECT_EQ(dialogs.look(u"输入分数有误"_s),
                  (support::BoxLook{u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical}));
        EXPECT_EQ(reason(1), u"超过总分"_s);
    }
}

TEST_F(ErrorListTest, AcceptedValueGoesToTheOneFixedCell)
{
    state.MFGData.setTextMatrix(1, 3, u"160"_s);
    list.answer(1, u" 95.50 分"_s);
    EXPECT_EQ(state.MFGData.TextMatrix(3, 3), u"95.5"_s);
    EXPECT_EQ(state.MFGData.TextMatrix(1, 3), u"160"_s) << "the bad cell keeps its text";
    EXPECT_EQ(state.errors.TextMatrix(1, 4), u"160"_s) << "the list keeps the bad value";
}

TEST_F(ErrorListTest, FixedCellOutsideTheGridIsReportedAndTheRowIsAnsweredAllTheSame)
{
    state.MFGData.setRows(3);
    EXPECT_EQ(list.answer(1, u"90"_s), ErrorList::Entry::Accepted);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Text1_KeyDown/Formgf"_s));
    EXPECT_EQ(reason(1), QString());
}

TEST_F(ErrorListTest, UnknownSubjectTakesOnlyZero)
{
    addError(u"美术"_s, u"5"_s, u"超过总分"_s);
    EXPECT_EQ(list.answer(3, u"1"_s), ErrorList::Entry::Refused);
    EXPECT_EQ(list.answer(3, u"0"_s), ErrorList::Entry::Accepted);
}

TEST_F(ErrorListTest, TheLastSubjectOfANameGivesTheFullMark)
{
    state.KMImport.push_back({u"语文"_s, 100, 6});
    EXPECT_EQ(list.answer(1, u"120"_s), ErrorList::Entry::Refused);
}

TEST_F(ErrorListTest, CannotBeFinishedWithAnOpenRow)
{
    list.answer(1, u"90"_s);
    EXPECT_EQ(list.finish(), 2);
    EXPECT_EQ(dialogs.shown, QStringList{u"至少有一项成绩还没有修改！"_s});
    list.answer(2, u"90"_s);
    EXPECT_EQ(list.finish(), std::nullopt);
}

TEST_F(ErrorListTest, AcceptedValuesReplaceTheBadOnesWhereTheyAreToBeStored)
{
    list.setDestination(ErrorList::Destination::BadCells);
    list.answer(1, u"95.50"_s);
    list.answer(2, u"70"_s);
    list.answer(1, u"96"_s);
    EXPECT_EQ(staged(1, 3), u"96"_s);
    EXPECT_EQ(staged(2, 4), u"70"_s);
    EXPECT_EQ(staged(3, 3), u"88"_s) << "nobody else's score is touched";
}

TEST_F(ErrorListTest, ValuesFollowADestinationThatIsChosenLater)
{
    list.answer(1, u"95"_s);
    list.answer(2, u"70"_s);
    EXPECT_EQ(staged(3, 3), u"70"_s);
    list.setDestination(ErrorList::Destination::BadCells);
    EXPECT_EQ(staged(1, 3) + u'|' + staged(2, 4) + u'|' + staged(3, 3), u"95|70|88"_s);
    list.setDestination(ErrorList::Destination::OneCell);
    EXPECT_EQ(staged(1, 3) + u'|' + staged(2, 4) + u'|' + staged(3, 3), u"160||70"_s);
}

TEST_F(ErrorListTest, SaysWhatBecomesOfTheValues)
{
    const QString kept = u"这些成绩仍按表格里的内容存入成绩库（空白存成 0），改了也不起作用。"_s;
    EXPECT_EQ(list.note(), kept
                               + u"注意：最后确认的分值会写到 2 班 5 号 张三 的“语文”里，"
                                 "代替那里原来的内容。"_s);
    state.MFGData.setRows(3);
    EXPECT_EQ(list.note(), kept);
    list.setDestination(ErrorList::Destination::BadCells);
    EXPECT_EQ(list.note(), u"确认过的分值代替表格里的分值存入成绩库；没有改的仍按表格保存。"_s);
}

} // namespace
