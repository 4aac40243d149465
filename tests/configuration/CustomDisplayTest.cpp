#include "configuration/CustomDisplay.h"

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;
using configuration::RowBlock;
using grid::gridText;

namespace {

class CustomDisplayTest : public testing::Test
{
protected:
    CustomDisplayTest()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s);
        test.reload();
    }

    void open(const QStringList& shown)
    {
        test.scores.settings.DisplayItems = shown;
        display.load();
    }

    int rowOf(const QString& column) const
    {
        for (int row = 1; row < display.columns.Rows(); ++row) {
            if (display.columns.TextMatrix(row, 0) == column)
                return row;
        }
        ADD_FAILURE() << column.toStdString();
        return -1;
    }

    void save(const QString& stream) { display.save(u"原始分和名次"_s + stream); }

    QStringList columns() const
    {
        QStringList names;
        for (int row = 1; row < display.columns.Rows(); ++row)
            names.append(display.columns.TextMatrix(row, 0));
        return names;
    }

    QString stored() { return test.rows(u"select * from 自定义显示表"_s); }

    support::TestLibrary test{{u"语文"_s}};
    configuration::CustomDisplay display{test.scores};
};

TEST_F(CustomDisplayTest, OffersTheColumnsFromTheFourthFieldOnAndTicksWhatIsShown)
{
    open({u"班级"_s, u"学号"_s, u"姓名"_s, u"语文年名"_s, u"语文"_s, u"没有了"_s});
    EXPECT_EQ(gridText(display.columns), u"项目名称\t显示\n"
                                         "班级\t√\n"
                                         "学号\t√\n"
                                         "姓名\t√\n"
                                         "科类\t\n"
                                         "考试名称\t\n"
                                         "语文\t√\n"
                                         "语文年名\t√\n"
                                         "语文班名\t\n"
                                         "语文Z分\t\n"
                                         "语文T分\t\n"
                                         "备注\t\n"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(CustomDisplayTest, WhichColumnsAreOfferedIsAMatterOfTheirPlacesNotOfTheirNames)
{
    test.execute(u"drop table 成绩表"_s);
    test.execute(u"create table 成绩表 (语文, 数学, 英语, 班级, 学号)"_s);
    open({u"语文"_s, u"学号"_s});
    EXPECT_EQ(gridText(display.columns), u"项目名称\t显示\n班级\t\n学号\t√\n"_s);
}

TEST_F(CustomDisplayTest, ATableOfThreeColumnsOffersNone)
{
    test.execute(u"drop table 成绩表"_s);
    test.execute(u"create table 成绩表 (id, 班级, 学号)"_s);
    open({u"班级"_s});
    EXPECT_EQ(gridText(display.columns), u"项目名称\t显示\n"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(CustomDisplayTest, ATickGoesWhenTheScreenIsFilledAnew)
{
    open({u"姓名"_s});
    open({u"语文"_s});
    EXPECT_EQ(display.columns.TextMatrix(rowOf(u"姓名"_s), 1), u""_s);
    EXPECT_EQ(display.columns.TextMatrix(rowOf(u"语文"_s), 1), u"√"_s);
}

TEST_F(CustomDisplayTest, TheChoicesAreAllAndTheStreams)
{
    EXPECT_EQ(display.streamChoices(), (QStringList{u"全"_s, u"文"_s, u"理"_s}));
}

TEST_F(CustomDisplayTest, FlippingARowTicksItOrTakesTheTickAway)
{
    open({u"班级"_s});
    display.flip(1);
    display.flip(2);
    EXPECT_EQ(display.columns.TextMatrix(1, 1), u""_s);
    EXPECT_EQ(display.columns.TextMatrix(2, 1), u"√"_s);
    EXPECT_EQ(display.columns.TextMatrix(3, 1), u""_s);
}

TEST_F(CustomDisplayTest, FlippingTheHeadingLeavesIt)
{
    open({});
    display.flip(0);
    EXPECT_EQ(display.columns.TextMatrix(0, 1), u"显示"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(CustomDisplayTest, ABlockMovesUpToTheTopAndNoFurther)
{
    open({u"考试名称"_s});
    RowBlock block = display.moveUp({4, 5});
    EXPECT_EQ(block, (RowBlock{3, 4}));
    block = display.moveUp(display.moveUp(display.moveUp(block)));
    EXPECT_EQ(block, (RowBlock{1, 2}));
    EXPECT_EQ(columns().mid(0, 5),
              (QStringList{u"科类"_s, u"考试名称"_s, u"班级"_s, u"学号"_s, u"姓名"_s}));
    EXPECT_EQ(display.columns.TextMatrix(2, 1), u"√"_s);
}

TEST_F(CustomDisplayTest, ABlockMovesDownToTheEndAndNoFurther)
{
    open({});
    const RowBlock block = display.moveDown(display.moveDown(display.moveDown({9, 9})));
    EXPECT_EQ(columns().mid(8), (QStringList{u"语文T分"_s, u"备注"_s, u"语文Z分"_s}));
    EXPECT_EQ(block, (RowBlock{11, 11}));
}

TEST_F(CustomDisplayTest, TheFirstRowIsTheBlockToBeginWith)
{
    open({});
    const RowBlock first = display.moveUp({});
    EXPECT_EQ(columns().first(), u"班级"_s);
    display.moveDown(first);
    EXPECT_EQ(columns().mid(0, 2), (QStringList{u"学号"_s, u"班级"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(CustomDisplayTest, SavesTheTickedColumnsInGridOrderUnderItemAndStream)
{
    open({u"姓名"_s, u"语文"_s});
    RowBlock block{rowOf(u"语文"_s), rowOf(u"语文"_s)};
    for (int i = 0; i < 5; ++i)
        block = display.moveUp(block);
    save(u"全"_s);
    EXPECT_EQ(stored(), u"原始分和名次全|语文,姓名"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成功保存 自定义显示项目 原始分和名次全"_s});
    EXPECT_EQ(test.scores.settings.GetZDYXS(u"原始分和名次全"_s),
              (QStringList{u"语文"_s, u"姓名"_s}));
}

TEST_F(CustomDisplayTest, ASecondSaveReplacesTheFirstAndAnotherStreamGetsItsOwnRow)
{
    open({u"班级"_s, u"语文"_s});
    save(u"文"_s);
    display.flip(1);
    save(u"理"_s);
    display.flip(2);
    save(u"文"_s);
    EXPECT_EQ(stored(), u"原始分和名次文|学号,语文 / 原始分和名次理|语文"_s);
    EXPECT_EQ(test.dialogs.shown, (QStringList{u"成功保存 自定义显示项目 原始分和名次文"_s,
                                               u"成功保存 自定义显示项目 原始分和名次理"_s,
                                               u"成功保存 自定义显示项目 原始分和名次文"_s}));
}

TEST_F(CustomDisplayTest, WithNothingTickedAnEmptyListIsStoredAndCountsAsNone)
{
    open({});
    save(u"全"_s);
    EXPECT_EQ(stored(), u"原始分和名次全|"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成功保存 自定义显示项目 原始分和名次全"_s});
    EXPECT_EQ(test.scores.settings.GetZDYXS(u"原始分和名次全"_s), QStringList());
}

TEST_F(CustomDisplayTest, AKeyWithoutAStreamAnswersToItselfAlone)
{
    open({u"姓名"_s});
    display.save(u"导出成绩True"_s);
    EXPECT_EQ(stored(), u"导出成绩True|姓名"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成功保存 自定义显示项目 导出成绩True"_s});
    EXPECT_EQ(test.scores.settings.GetZDYXS(u"导出成绩True"_s), QStringList{u"姓名"_s});
    EXPECT_EQ(test.scores.settings.GetZDYXS(u"导出成绩False"_s), QStringList());
}

TEST_F(CustomDisplayTest, TheFirstThreeFieldsAreNotKeptByASave)
{
    open({u"id"_s, u"考试编号"_s, u"类别代码"_s, u"姓名"_s});
    save(u"全"_s);
    EXPECT_EQ(stored(), u"原始分和名次全|姓名"_s);
}

TEST_F(CustomDisplayTest, ASavedOrderIsInForceButIsNotShownBack)
{
    open({u"语文"_s, u"姓名"_s});
    EXPECT_LT(rowOf(u"姓名"_s), rowOf(u"语文"_s));
    save(u"全"_s);
    EXPECT_EQ(stored(), u"原始分和名次全|姓名,语文"_s);
}

TEST_F(CustomDisplayTest, AFailingStatementIsShownWithItsTagAndTheNextOneRuns)
{
    open({u"姓名"_s});
    test.execute(u"drop table 自定义显示表"_s);
    save(u"全"_s);
    ASSERT_FALSE(test.dialogs.failures.isEmpty());
    for (const QString& failure : test.dialogs.failures)
        EXPECT_TRUE(failure.endsWith(u" - Private Sub Command1_Click/FormZDYXS"_s))
            << failure.toStdString();
    EXPECT_EQ(test.dialogs.shown.last(), u"成功保存 自定义显示项目 原始分和名次全"_s);
}

TEST_F(CustomDisplayTest, WithoutTheTableFillingShowsTheTagOfInit)
{
    test.execute(u"drop table 成绩表"_s);
    open({});
    ASSERT_FALSE(test.dialogs.failures.isEmpty());
    EXPECT_TRUE(test.dialogs.failures.first().endsWith(u" - Sub init/FormZDYXS"_s));
}

} // namespace
