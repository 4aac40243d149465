#include <QSettings>

#include "gui/ExamImportFixture.h"
#include "gui/PaintedTexts.h"
#include "platform/grid/ui/FlexGridView.h"

namespace {

using namespace Qt::StringLiterals;

/// The screens that come up while an exam is imported.
class ImportOnScreen : public support::ExamImportFixture
{
protected:
    /// The rows of a list of bad scores: name, subject, score and reason.
    static QStringList badScores(const QDialog& list)
    {
        const grid::FlexGrid& grid = list.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s)->grid();
        QStringList rows;
        for (int row = 1; row < grid.Rows(); ++row) {
            QStringList cells;
            for (int col = 2; col < 6; ++col)
                cells.append(grid.TextMatrix(row, col));
            rows.append(cells.join(u' '));
        }
        return rows;
    }

    /// Imports the workbook at hand; the screen of full marks is left by its close box.
    QStringList importWithoutFullMarks()
    {
        QStringList bad;
        dialogs.expect(u"还有 2 个科目没有确定满分（语文、数学）。"_s, u"继续"_s);
        boxes.expect([](QDialog& marks) { marks.close(); });
        boxes.expect([&](QDialog& list) {
            bad = badScores(list);
            list.close();
        });
        press(u"Command1"_s);
        return bad;
    }

    const Rows oddOnes =
        sheet({{1, 1, u"王芳"_s, 120, 0}, {1, 2, u"陈静"_s, u"缺考"_s, runtime::Value()}});
    const QStringList allBad{u"王芳 语文 120 超过总分"_s, u"陈静 数学 0 分值不能为空"_s};
};

TEST_F(ImportOnScreen, SaysWhatItIsDoing)
{
    choose(workbook(u"期末.xlsx"_s, two));
    toggle(u"CheckBox1"_s);
    const support::PaintedTexts painted(find<QLabel>(u"Label4"_s));
    import();
    EXPECT_EQ(painted.texts.filter(u"..."_s),
              (QStringList{u"导入数据..."_s, u"导入完成，计算排名..."_s}));
}

TEST_F(ImportOnScreen, SaysSoWithoutScoringToo)
{
    choose(workbook(u"期末.xlsx"_s, two));
    const support::PaintedTexts painted(find<QLabel>(u"Label4"_s));
    import();
    EXPECT_EQ(painted.texts.filter(u"..."_s),
              (QStringList{u"导入数据..."_s, u"导入完成，计算排名..."_s}));
}

TEST_F(ImportOnScreen, ItsScreensBlockTheMainWindowAlone)
{
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芳"_s, 160, 90}})));
    boxes.expect([](QDialog& marks) {
        EXPECT_EQ(marks.windowModality(), Qt::WindowModal);
        QTest::mouseClick(marks.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    });
    boxes.expect([](QDialog& list) {
        EXPECT_EQ(list.windowModality(), Qt::WindowModal);
        list.close();
    });
    press(u"Command1"_s);
}

TEST_F(ImportOnScreen, WithoutFullMarksEveryScoreAboveZeroIsTooHigh)
{
    choose(workbook(u"期末.xlsx"_s, oddOnes));
    EXPECT_EQ(importWithoutFullMarks(), allBad);
    EXPECT_EQ(dialogs.shown.value(1), u"导入完成！"_s);
    EXPECT_EQ(scoreRows(u"姓名,语文,数学"_s), u"王芳|120|0 / 陈静|-1|0"_s);
    EXPECT_EQ(library.rows(u"select 语文,数学 from 考试名称表 where 考试名称='期末'"_s), u"0|0"_s);
}

TEST_F(ImportOnScreen, CorrectionsReachTheLibraryWhereTheBoxIsTicked)
{
    QSettings().clear();
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芳"_s, 160, 90},
                                           {1, 2, u"陈静"_s, 100, runtime::Value()},
                                           {1, 3, u"李强"_s, 88, 77}})));
    toggle(u"CheckAdd"_s);
    acceptFullMarks();
    boxes.expect([](QDialog& list) {
        QTest::keyClick(list.findChild<QWidget*>(u"CheckStore"_s), Qt::Key_Space);
        auto* view = list.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
        auto* box = list.findChild<QWidget*>(u"Text1"_s);
        for (const QString& score : {u"120"_s, u"85.5"_s}) {
            QTest::keyClicks(view, score.left(1));
            QTest::keyClicks(box, score.mid(1));
            QTest::keyClick(box, Qt::Key_Return);
        }
        QTest::mouseClick(list.findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
    });
    press(u"Command1"_s);
    QSettings().clear();
    EXPECT_EQ(scoreRows(u"姓名,语文,数学"_s), u"王芳|120|90 / 陈静|100|85.5 / 李强|88|77"_s);
}

TEST_F(ImportOnScreen, FullMarksOfTheImportBeforeAreNotTakenOver)
{
    choose(workbook(u"期末.xlsx"_s, two));
    import();
    choose(workbook(u"补考.xlsx"_s, oddOnes));
    EXPECT_EQ(importWithoutFullMarks(), allBad);
    EXPECT_EQ(library.rows(u"select 语文,数学 from 考试名称表 where 考试名称='补考'"_s), u"0|0"_s);
}

} // namespace
