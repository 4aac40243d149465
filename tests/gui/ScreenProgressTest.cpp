#include "platform/widgets/ScreenProgress.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using widgets::ScreenProgress;

class ProgressWindow : public testing::Test
{
protected:
    QDialog* window() const { return owner.findChild<QDialog*>(u"ProgressWindow"_s); }
    template <class Widget> Widget* part(const QString& name) const
    {
        return window()->findChild<Widget*>(name);
    }

    QWidget owner;
};

TEST_F(ProgressWindow, AppearsOnlyAfterAMoment)
{
    ScreenProgress quick(&owner, 1h);
    quick.report(u"计算总分"_s, 5, 10);
    quick.report(u"计算总分"_s, 10, 10);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_FALSE(quick.cancelled());
}

TEST_F(ProgressWindow, ShowsTheTextTheCountsAndTheBar)
{
    ScreenProgress progress(&owner, 0ms);
    progress.report(u"计算总分：期中..."_s, 3, 10);
    EXPECT_TRUE(window()->isVisible());
    EXPECT_TRUE(window()->isModal());
    EXPECT_EQ(part<QLabel>(u"ProgressText"_s)->text(), u"计算总分：期中..."_s);
    EXPECT_EQ(part<QLabel>(u"ProgressCounts"_s)->text(), u"3 / 10"_s);
    EXPECT_EQ(part<QProgressBar>(u"ProgressBar"_s)->value(), 3);
    progress.report(u"计算总分：期中..."_s, 10, 10);
    EXPECT_EQ(part<QProgressBar>(u"ProgressBar"_s)->value(), 10);
}

TEST_F(ProgressWindow, WithoutATotalTheBarRunsWithoutAnEnd)
{
    ScreenProgress progress(&owner, 0ms);
    progress.report(u"压缩"_s, 3, 0);
    EXPECT_EQ(part<QLabel>(u"ProgressCounts"_s)->text(), QString());
    EXPECT_EQ(part<QProgressBar>(u"ProgressBar"_s)->maximum(), 0);
}

TEST_F(ProgressWindow, CancelIsToldOnceAndStays)
{
    ScreenProgress progress(&owner, 0ms);
    progress.report(u"导入"_s, 1, 10);
    EXPECT_FALSE(progress.cancelled());
    QTest::mouseClick(part<QPushButton>(u"ProgressCancel"_s), Qt::LeftButton);
    EXPECT_TRUE(progress.cancelled());
    EXPECT_FALSE(part<QPushButton>(u"ProgressCancel"_s)->isEnabled());
    progress.report(u"导入"_s, 10, 10);
    EXPECT_EQ(part<QLabel>(u"ProgressText"_s)->text(), u"正在取消..."_s);
}

TEST_F(ProgressWindow, ItsCloseBoxCancelsToo)
{
    ScreenProgress progress(&owner, 0ms);
    progress.report(u"导入"_s, 1, 10);
    window()->close();
    EXPECT_TRUE(progress.cancelled());
    progress.report(u"导入"_s, 10, 10);
    EXPECT_TRUE(window()->isVisible());
}

TEST_F(ProgressWindow, AClickIsTakenBetweenTheStepsOfTheWork)
{
    ScreenProgress progress(&owner, 0ms);
    QTimer::singleShot(
        0, [&] { QTest::mouseClick(part<QPushButton>(u"ProgressCancel"_s), Qt::LeftButton); });
    progress.report(u"导入"_s, 1, 10);
    EXPECT_TRUE(progress.cancelled());
}

TEST_F(ProgressWindow, GoesWithTheWork)
{
    {
        ScreenProgress progress(&owner, 0ms);
        progress.report(u"导入"_s, 1, 10);
    }
    EXPECT_EQ(window(), nullptr);
}

TEST_F(ProgressWindow, ANameThatLooksLikeMarkupIsShownAsItStands)
{
    const ScreenProgress progress(&owner, 0ms);
    for (const QString& name : {u"ProgressText"_s, u"ProgressCounts"_s})
        EXPECT_EQ(part<QLabel>(name)->textFormat(), Qt::PlainText) << name.toStdString();
}

} // namespace
