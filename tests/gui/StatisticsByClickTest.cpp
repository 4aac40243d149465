#include "gui/ProgressCanceller.h"
#include "gui/WorkbenchScreen.h"

namespace {

using namespace Qt::StringLiterals;

/// The statistics and the analysis of the workbench as its buttons run them.
class StatisticsByClick : public support::WorkbenchScreen
{
protected:
    void leaveOutTheLines()
    {
        test.execute(u"update 设置表 set 加入综合分析='否' where 名称 like '%总分上线人数'"_s);
    }

    /// Whether a number stands below the heading, beside the names of the classes.
    bool hasFigures() const
    {
        for (int row = 2; row < grid.Rows(); ++row) {
            for (int col = 1; col < grid.Cols(); ++col) {
                const QString text = grid.TextMatrix(row, col);
                if (!text.isEmpty() && text.front().isDigit())
                    return true;
            }
        }
        return false;
    }

    excel::Workbook& book(int number) { return applications.at(0)->Workbooks().Item(number); }
};

/// The four rates are run as one.
TEST_F(StatisticsByClick, EveryItemOfTheListFillsTheGrid)
{
    const std::vector<std::pair<QString, QString>> headings{
        {u"高分段、低分段"_s, u"文科 高、低分段"_s},
        {u"各科优秀率"_s, u"文科各科优秀率"_s},
        {u"各科良好率"_s, u"文科各科优秀率"_s},
        {u"各科及格率"_s, u"文科各科优秀率"_s},
        {u"各科差生率"_s, u"文科各科优秀率"_s},
        {u"各科平均分"_s, u"班级"_s},
        {u"各科最高分"_s, u"班级"_s},
        {u"各科最低分"_s, u"文科各科最低分"_s},
        {u"各科标准差"_s, u"文科 各科标准差"_s},
        {u"各分数段人数"_s, u"文科  语文各分数段人数"_s},
        {u"总分上线人数"_s, u"文科总分上线人数"_s},
        {u"各名次段均分"_s, u"文科  各名次段均分"_s},
        {u"各名次段人数"_s, u"文科  语文各名次段人数"_s},
        {u"历次各名次段人数对比"_s, u"文科  语文各名次段人数"_s},
        {u"考试人数"_s, u"文科考试人数"_s},
        {u"历次考试进入年级前x名人数 "_s, u"文科  语文  1次考试进入年级前50,100,200名人数"_s},
        {u"历次总分上线人数"_s, u"文科总分上线人数"_s},
    };
    const auto* items = find<QComboBox>(u"Combo3"_s);
    ASSERT_EQ(items->count(), int(headings.size()));
    for (const auto& [item, heading] : headings) {
        SCOPED_TRACE(item.toStdString());
        grid = {};
        pick(u"Combo3"_s, item);
        press(u"CommandZXTJ"_s);
        ASSERT_GE(grid.Rows(), 6);
        EXPECT_EQ(grid.TextMatrix(0, 0), heading);
        EXPECT_TRUE(item == u"各科标准差" || hasFigures()) << "one student has no deviation";
    }
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(StatisticsByClick, TheAnalysisTakesTheCurrentExamSelectedOrNot)
{
    leaveOutTheLines();
    auto* exams = find<QListWidget>(u"ListKSMC"_s);
    QTest::keyClick(exams, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(exams->currentRow(), 1);
    ASSERT_EQ(exams->selectedItems().size(), 1);
    EXPECT_EQ(exams->selectedItems().first()->text(), u"期中"_s);
    press(u"CommandZHFX"_s);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"综合分析完毕！"_s});
    EXPECT_EQ(book(1).Worksheets().Item(1).Name(), u"期末原始分和名次(文)"_s);
}

TEST_F(StatisticsByClick, TwoSelectedExamsAreNotAnalysed)
{
    clickItem(u"ListKSMC"_s, 1, Qt::ControlModifier);
    press(u"CommandZHFX"_s);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"当前操作只针对一次考试，请选择  一次考试后  进行  综合分析。"_s});
    EXPECT_TRUE(applications.empty());
}

TEST_F(StatisticsByClick, CancellingTheAnalysisLeavesWhatIsFilledAndSaysNothing)
{
    leaveOutTheLines();
    multiplyScores(16);
    const support::ProgressCanceller canceller;
    press(u"CommandZHFX"_s);
    EXPECT_TRUE(canceller.text.startsWith(u"综合分析：文科 "_s)) << canceller.text.toStdString();
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(applications.at(0)->Workbooks().Count(), 1) << "the second stream was not begun";
    EXPECT_EQ(book(1).Worksheets().Item(1).Cells(1, 1).text(), u"班级"_s);
    EXPECT_EQ(form->findChild<QDialog*>(u"ProgressWindow"_s), nullptr);
}

} // namespace
