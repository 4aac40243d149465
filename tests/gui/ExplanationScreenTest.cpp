#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTextBrowser>

#include "configuration/AnalysisSettings.h"
#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"

namespace {

using namespace Qt::StringLiterals;
using configuration::AnalysisSettings;

/// "口径" as the main window opens it.
class ExplanationScreen : public support::MainWindowFixture
{
protected:
    ExplanationScreen() { startWithExam(); }

    void run(const QString& item)
    {
        window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(item);
        press(u"CommandZXTJ"_s);
    }

    QWidget* explainButton() { return window->findChild<QWidget*>(u"buttonExplain"_s); }

    /// The report and the text of the screen that comes up next.
    void expectScreen()
    {
        boxes.expect([&](QDialog& screen) {
            report = screen.findChild<QComboBox*>(u"comboReport"_s)->currentText();
            text = screen.findChild<QTextBrowser*>(u"textExplanation"_s)->toPlainText();
            screen.close();
        });
    }

    support::ModalBoxes boxes;
    QString report;
    QString text;
};

TEST_F(ExplanationScreen, ComesFromTheResultForTheReportThatItShows)
{
    EXPECT_FALSE(explainButton()->isVisible());
    run(u"各科平均分"_s);
    EXPECT_TRUE(explainButton()->isVisible());
    window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(u"考试人数"_s);
    expectScreen();
    press(u"buttonExplain"_s);
    EXPECT_EQ(report, u"各科平均分"_s);
    for (const QString& part :
         {u"统计什么"_s, u"缺考的学生算在内，按 -1 分"_s, u"“各科平均分”现在是：使用教师名单"_s,
          u"表里有教师一列。"_s, u"平均分 = 有成绩的学生的成绩之和 ÷ 他们的人数"_s})
        EXPECT_TRUE(text.contains(part)) << text.toStdString();
    press(u"CommandLLCJ"_s);
    EXPECT_FALSE(explainButton()->isVisible()) << "browsed scores are no report";
}

TEST_F(ExplanationScreen, ComesFromTheMenuForTheReportThatIsChosen)
{
    run(u"各科平均分"_s);
    window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentText(u"考试人数"_s);
    expectScreen();
    item(u"itemExplanation"_s)->trigger();
    EXPECT_EQ(report, u"考试人数"_s);
    window->findChild<QComboBox*>(u"Combo3"_s)->setCurrentIndex(-1);
    expectScreen();
    item(u"itemExplanation"_s)->trigger();
    EXPECT_EQ(report, u"各科平均分"_s) << "the one that is shown";
}

/// As "执行统计" does.
TEST_F(ExplanationScreen, ARateIsTheTableThatTheButtonGives)
{
    run(u"各科差生率"_s);
    expectScreen();
    press(u"buttonExplain"_s);
    EXPECT_EQ(report, u"各科优秀率"_s);
    EXPECT_TRUE(text.contains(u"语文 ≥ 85 且 语文 ≤ 100。"_s)) << text.toStdString();
}

/// As the link of the note runs it; the others are as the button runs them.
TEST_F(ExplanationScreen, ExamsOneByOneHaveTheirOwnMarks)
{
    test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 150}});
    test.reload();
    test.scores.notifyChanged();
    window->findChild<QListWidget*>(u"ListKSMC"_s)->selectAll();
    run(u"各科优秀率"_s);
    Q_EMIT window->findChild<QLabel*>(u"LabelResultNote"_s)->linkActivated(u"0"_s);
    const QString own = u"期末：语文 ≥ 127.5 且 语文 ≤ 150。"_s;
    for (const std::function<void()>& open :
         {std::function([this] { press(u"buttonExplain"_s); }),
          std::function([this] { item(u"itemExplanation"_s)->trigger(); })}) {
        text.clear();
        expectScreen();
        open();
        EXPECT_TRUE(text.contains(own)) << text.toStdString();
        EXPECT_TRUE(text.contains(u"每次考试一张表，满分是那一次的。"_s)) << text.toStdString();
    }
    run(u"各科优秀率"_s);
    expectScreen();
    press(u"buttonExplain"_s);
    EXPECT_TRUE(text.contains(u"语文 ≥ 212.5 且 语文 ≤ 250。"_s)) << text.toStdString();
}

TEST_F(ExplanationScreen, ClosesByEscAndByEnter)
{
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        for (const QString& name : {u"comboReport"_s, u"textExplanation"_s}) {
            bool isClosed = false;
            boxes.expect([&](QDialog& screen) {
                auto* focused = screen.findChild<QWidget*>(name);
                focused->setFocus();
                QTest::keyClick(focused, key);
                isClosed = !screen.isVisible();
                screen.close();
            });
            item(u"itemExplanation"_s)->trigger();
            EXPECT_TRUE(isClosed) << name.toStdString();
        }
    }
}

TEST_F(ExplanationScreen, AnotherReportIsChosenByTheKeyboard)
{
    boxes.expect([&](QDialog& screen) {
        auto* reports = screen.findChild<QComboBox*>(u"comboReport"_s);
        reports->setFocus();
        QTest::keyClick(reports, Qt::Key_Down);
        report = reports->currentText();
        text = screen.findChild<QTextBrowser*>(u"textExplanation"_s)->toPlainText();
        screen.close();
    });
    item(u"itemExplanation"_s)->trigger();
    EXPECT_EQ(report, u"高分段、低分段"_s);
    EXPECT_TRUE(text.contains(u"“低分段”现在是：[0,0.4)"_s)) << text.toStdString();
}

TEST_F(ExplanationScreen, LeadsToItsSettingAndShowsTheChange)
{
    run(u"总分上线人数"_s);
    boxes.expect([&](QDialog& screen) {
        boxes.expect([&](QDialog& settings) {
            auto* grid = settings.findChild<grid::FlexGridView*>();
            EXPECT_EQ(settings.objectName(), u"FormSet"_s);
            EXPECT_EQ(grid->grid().TextMatrix(grid->grid().Row, AnalysisSettings::NameCol),
                      u"总分上线人数"_s);
            EXPECT_EQ(grid->grid().Col, AnalysisSettings::ValueCol);
            EXPECT_EQ(settings.focusWidget(), grid);
            test.execute(u"update 设置表 set 设置='600' where 名称='总分上线人数'"_s);
            settings.close();
        });
        auto* change = screen.findChild<QPushButton*>(u"buttonSetting1"_s);
        EXPECT_EQ(change->text(), u"修改“总分上线人数”(&1)…"_s);
        QTest::mouseClick(change, Qt::LeftButton);
        text = screen.findChild<QTextBrowser*>(u"textExplanation"_s)->toPlainText();
        screen.close();
    });
    press(u"buttonExplain"_s);
    EXPECT_TRUE(text.contains(u"“总分上线人数”现在是：600"_s)) << text.toStdString();
}

TEST_F(ExplanationScreen, SaysThatItsSettingsAreThoseOfNow)
{
    run(u"考试人数"_s);
    test.scores.settings.CategoryFilter = u" and (类别代码=2)"_s;
    expectScreen();
    press(u"buttonExplain"_s);
    for (const QString& part :
         {u"现在只算类别代码为 2 的学生。"_s, u"设置和类别都是现在的。"_s,
          u"已经统计出来的表格用的是统计时的设置和类别，之后改过的要重新统计才起作用。"_s})
        EXPECT_TRUE(text.contains(part)) << text.toStdString();
}

TEST_F(ExplanationScreen, ANameInASettingIsShownAsItStands)
{
    test.execute(u"update 设置表 set 设置='<b>’ or ''''=''' where 名称='高分段'"_s);
    run(u"高分段、低分段"_s);
    expectScreen();
    press(u"buttonExplain"_s);
    EXPECT_TRUE(text.contains(u"“高分段”现在是：<b>’ or ''='"_s)) << text.toStdString();
}

} // namespace
