#include <QApplication>
#include <QWheelEvent>

#include "gui/DroppedFile.h"
#include "gui/TidyFixture.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/TextFile.h"
#include "support/FileBytes.h"

namespace {

using namespace Qt::StringLiterals;

class TidyingScreen : public support::TidyFixture
{
};

const QString tidiedText = u"班级|学号|姓名|语文|数学 / 1|1|王芳|120|90 / 1|2|李娜|缺考|88"_s;

TEST_F(TidyingScreen, AsksForAWorkbookFirst)
{
    EXPECT_EQ(screen->windowTitle(), u"整理工作簿"_s);
    EXPECT_EQ(text(u"labelCounts"_s), u"先打开要整理的工作簿。"_s);
    EXPECT_FALSE(button(u"buttonTidy"_s)->isEnabled());
    library.dialogs.file = scores();
    press(u"buttonBrowse"_s);
    EXPECT_EQ(library.dialogs.fileFilter, u"EXCEL文件|*.xls;*.xlsx|"_s);
    EXPECT_EQ(find<QLineEdit>(u"textBook"_s)->text(), *library.dialogs.file);
    EXPECT_TRUE(button(u"buttonTidy"_s)->isEnabled());
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(TidyingScreen, ShowsWhatEachColumnIsTakenForAndWhatEachRowIs)
{
    screen->browse(scores());
    QStringList uses;
    for (int column = 1; column <= 5; ++column)
        uses.append(choice(column)->currentText());
    EXPECT_EQ(uses, (QStringList{u"学号"_s, u"姓名"_s, u"语文"_s, u"不导入"_s, u"数学"_s}));
    EXPECT_EQ(choice(3)->accessibleName(), u"“语文分数”是"_s);
    const grid::FlexGrid& sheet = table(u"gridSheet"_s)->grid();
    QStringList fates;
    for (int row = 1; row < sheet.Rows(); ++row)
        fates.append(sheet.TextMatrix(row, 0) + sheet.TextMatrix(row, 1));
    EXPECT_EQ(fates, (QStringList{u"1标题行"_s, u"2表头"_s, u"3表头"_s, u"4"_s, u"5"_s,
                                  u"6合计、平均一类的行"_s}));
    EXPECT_EQ(sheet.TextMatrix(4, 3), u"王 芳"_s);
    EXPECT_EQ(find<QListWidget>(u"listSheets"_s)->item(0)->text(), u"高一(1)班（2 人）"_s);
    EXPECT_EQ(find<QComboBox>(u"comboClassFrom"_s)->currentText(), u"数据表名“高一(1)班”"_s);
}

TEST_F(TidyingScreen, CountsWhatComesAndWhatIsLeftOut)
{
    screen->browse(scores());
    EXPECT_EQ(text(u"labelCounts"_s),
              u"取 1 张数据表的 2 名学生：班级和学号相符 2 人。2 科：语文、数学。缺考 1 处。"
              "不取：标题行 1 行，表头 2 行，合计、平均一类的行 1 行。"_s);
    pick(choice(5), u"不导入"_s);
    EXPECT_TRUE(text(u"labelCounts"_s).contains(u"1 科：语文。"_s));
    EXPECT_TRUE(choice(5)->hasFocus()) << "the next key goes on where the last one was";
}

TEST_F(TidyingScreen, EnterMakesAWorkbookThatIsShownAndNotSaved)
{
    screen->browse(scores());
    QTest::keyClick(button(u"buttonClose"_s), Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(made(), tidiedText);
    ASSERT_TRUE(screen->tidiedBook());
    EXPECT_TRUE(screen->tidiedBook()->application->Visible());
    EXPECT_FALSE(screen->tidiedBook()->book->Saved());
    EXPECT_EQ(screen->tidiedBook()->book->path(), QString());
    EXPECT_EQ(screen->tidiedBook()->path, library.file(u"期中.xlsx"_s));
}

TEST_F(TidyingScreen, EscClosesItAndMakesNothing)
{
    screen->browse(scores());
    QTest::keyClick(table(u"gridSheet"_s), Qt::Key_Escape);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(made(), u"nothing"_s);
    EXPECT_EQ(applications.size(), 0U);
}

TEST_F(TidyingScreen, AnOpenQuestionIsAnsweredAboveItsColumn)
{
    screen->browse(workbook(
        u"期中.xlsx"_s,
        {{u"1班"_s, {{u"学号"_s, u"姓名"_s, u"语文"_s, u"语文"_s}, {1, u"王芳"_s, 100, 90}}}}));
    EXPECT_FALSE(button(u"buttonTidy"_s)->isEnabled());
    EXPECT_TRUE(text(u"labelQuestions"_s).contains(u"语文"_s));
    EXPECT_EQ(choice(3)->currentIndex(), -1) << "nothing is chosen yet";
    EXPECT_TRUE(grid::gridText(table(u"gridNotes"_s)->grid()).contains(u"请决定"_s));
    pick(choice(4), u"语文"_s);
    EXPECT_EQ(text(u"labelQuestions"_s), QString());
    press(u"buttonTidy"_s);
    EXPECT_EQ(made(), u"班级|学号|姓名|语文 / 1|1|王芳|90"_s);
}

TEST_F(TidyingScreen, KeysLeadFromACellToTheChoiceAboveIt)
{
    screen->browse(scores());
    grid::FlexGridView* view = table(u"gridSheet"_s);
    view->setFocus();
    view->select(4, 4, 4, 4);
    QTest::keyClick(view, Qt::Key_F2);
    ASSERT_TRUE(choice(3)->view()->isVisible());
    QTest::keyClick(choice(3)->view(), Qt::Key_Home);
    QTest::keyClick(choice(3)->view(), Qt::Key_Return);
    EXPECT_EQ(choice(3)->currentText(), u"不导入"_s);
}

TEST_F(TidyingScreen, NoKeyAndNoWheelPassesThroughChoicesOnItsWay)
{
    screen->browse(scores());
    choice(3)->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Home, Qt::Key_PageDown, Qt::Key_A}) {
        QTest::keyClick(choice(3), key);
        EXPECT_TRUE(choice(3)->view()->isVisible());
        QTest::keyClick(choice(3)->view(), Qt::Key_Escape);
        EXPECT_EQ(choice(3)->currentText(), u"语文"_s);
    }
    QWheelEvent wheel({5, 5}, choice(3)->mapToGlobal(QPointF(5, 5)), {}, {0, -240}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(choice(3), &wheel);
    EXPECT_EQ(choice(3)->currentText(), u"语文"_s);
    EXPECT_TRUE(screen->isVisible());
}

TEST_F(TidyingScreen, TheSpaceKeyAndAClickLeaveARowOutOrTakeIt)
{
    screen->browse(scores());
    grid::FlexGridView* view = table(u"gridSheet"_s);
    view->setFocus();
    view->select(5, 2, 5, 2);
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_TRUE(text(u"labelCounts"_s).startsWith(u"取 1 张数据表的 1 名学生"_s));
    EXPECT_NE(view->grid().TextMatrix(5, 1), QString());
    EXPECT_EQ(view->grid().Row, 5) << "the cursor stays";
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->visualRect(view->model()->index(5, 1)).center());
    EXPECT_TRUE(text(u"labelCounts"_s).startsWith(u"取 1 张数据表的 2 名学生"_s));
}

TEST_F(TidyingScreen, SheetsAreJoinedByTheirTicks)
{
    const Rows second{{u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s}, {1, u"赵六"_s, 70, 60}};
    screen->browse(workbook(u"期中.xlsx"_s, {{u"高一(1)班"_s, rows}, {u"高一(2)班"_s, second}}));
    EXPECT_TRUE(text(u"labelCounts"_s).startsWith(u"取 2 张数据表的 3 名学生"_s))
        << text(u"labelCounts"_s).toStdString();
    auto* list = find<QListWidget>(u"listSheets"_s);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(table(u"gridSheet"_s)->grid().TextMatrix(2, 3), u"赵六"_s);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_TRUE(text(u"labelCounts"_s).startsWith(u"取 1 张数据表的 2 名学生"_s));
    press(u"buttonTidy"_s);
    EXPECT_EQ(made(), tidiedText);
}

TEST_F(TidyingScreen, TheHeadingRowsCanBeChanged)
{
    screen->browse(scores());
    auto* first = find<QSpinBox>(u"spinHeadingFirst"_s);
    EXPECT_EQ(first->value(), 2);
    EXPECT_EQ(find<QSpinBox>(u"spinHeadingCount"_s)->value(), 2);
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Up);
    EXPECT_EQ(table(u"gridSheet"_s)->grid().TextMatrix(3, 1), u"表头"_s);
    EXPECT_NE(table(u"gridSheet"_s)->grid().TextMatrix(2, 1), u"表头"_s);
}

TEST_F(TidyingScreen, AClassThatStandsNowhereIsTypedForTheNameOfTheFile)
{
    screen->browse(workbook(u"期中.xlsx"_s, {{u"成绩"_s, rows}}));
    EXPECT_TRUE(text(u"labelQuestions"_s).contains(u"班级"_s));
    auto* from = find<QComboBox>(u"comboClassFrom"_s);
    pick(from, u"文件名“期中”"_s);
    find<QTabWidget>(u"tidyTables"_s)->setCurrentIndex(1);
    grid::FlexGridView* classes = table(u"gridClasses"_s);
    classes->setFocus();
    classes->select(1, 2, 1, 2);
    QTest::keyClicks(classes, u"1"_s);
    QTest::keyClick(screen->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button(u"buttonTidy"_s)->isEnabled(); }));
    press(u"buttonTidy"_s);
    EXPECT_EQ(made(), tidiedText);
}

TEST_F(TidyingScreen, ANumberThatNoClassCanHaveIsRefused)
{
    screen->browse(scores());
    find<QTabWidget>(u"tidyTables"_s)->setCurrentIndex(1);
    grid::FlexGridView* classes = table(u"gridClasses"_s);
    QStringList refusals;
    for (const QString& number : {u"1.5"_s, u"0"_s, u"-3"_s, u"nan"_s, u"1e2"_s}) {
        classes->setFocus();
        classes->select(1, 2, 1, 2);
        QTest::keyClicks(classes, number.left(1));
        QTest::keyClicks(screen->focusWidget(), number.mid(1));
        QTest::keyClick(screen->focusWidget(), Qt::Key_Return);
        refusals.append(u"班号应是 1 或更大的整数，不能是“%1”。"_s.arg(number));
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return library.dialogs.shown.size() == refusals.size(); }));
        EXPECT_EQ(classes->grid().TextMatrix(1, 2), u"1"_s) << "as it was";
    }
    EXPECT_EQ(library.dialogs.shown, refusals);
    press(u"buttonTidy"_s);
    EXPECT_EQ(made(), tidiedText);
}

TEST_F(TidyingScreen, ALineOfAliasesThatCannotBeReadIsAmongTheNotes)
{
    runtime::writeTextFile(library.paths.dataFile(u"别名.txt"_s), u"姓名=学生\n乱写\n"_s);
    open();
    screen->browse(scores());
    EXPECT_TRUE(grid::gridText(table(u"gridNotes"_s)->grid())
                    .contains(u"别名.txt 第 2 行没有用上：应该写成“名称=别名 别名”。"_s));
}

TEST_F(TidyingScreen, AMarkThatNobodyKnowsIsGivenAMeaning)
{
    Rows odd = rows;
    odd[4][2] = u"休学"_s;
    screen->browse(workbook(u"期中.xlsx"_s, {{u"高一(1)班"_s, odd}}));
    EXPECT_TRUE(text(u"labelQuestions"_s).contains(u"休学"_s));
    find<QTabWidget>(u"tidyTables"_s)->setCurrentIndex(2);
    grid::FlexGridView* marks = table(u"gridMarks"_s);
    const grid::FlexGrid& grid = marks->grid();
    int row = 1;
    while (row < grid.Rows() - 1 && grid.TextMatrix(row, 0) != u"休学"_s)
        ++row;
    marks->setFocus();
    marks->select(row, 2, row, 2);
    QTest::keyClick(marks, Qt::Key_Down, Qt::AltModifier);
    auto* uses = find<QListWidget>(u"listMarkUses"_s);
    QTest::keyClick(uses, Qt::Key_Home);
    QTest::keyClick(uses, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return button(u"buttonTidy"_s)->isEnabled(); }));
    press(u"buttonTidy"_s);
    EXPECT_EQ(made(), tidiedText);
}

TEST_F(TidyingScreen, AConfirmedMappingIsOfferedForTheNextWorkbookOfThoseHeadings)
{
    screen->browse(scores());
    pick(choice(5), u"不导入"_s);
    press(u"buttonTidy"_s);
    open();
    screen->browse(workbook(u"期末.xlsx"_s, {{u"高一(1)班"_s, rows}}));
    EXPECT_EQ(choice(5)->currentText(), u"不导入"_s);
    EXPECT_EQ(choice(5)->toolTip(), u"和上次确认的一样。"_s);
}

TEST_F(TidyingScreen, AListOfStudentsIsAnotherGoal)
{
    screen->browse(
        workbook(u"名单.xlsx"_s,
                 {{u"1班"_s, {{u"学号"_s, u"姓名"_s, u"性 别"_s}, {1, u"王芳"_s, u"女"_s}}}}));
    EXPECT_FALSE(button(u"buttonTidy"_s)->isEnabled()) << "no subject";
    pick(find<QComboBox>(u"comboGoal"_s), u"学生名单"_s);
    EXPECT_EQ(choice(3)->currentText(), u"性别"_s);
    press(u"buttonTidy"_s);
    EXPECT_TRUE(made().startsWith(u"班级|学号|姓名|性别"_s));
    EXPECT_EQ(screen->tidiedBook()->goal, tidy::Goal::StudentList);
}

TEST_F(TidyingScreen, AFileIsDroppedOnIt)
{
    EXPECT_FALSE(support::dropOn(*screen, library.file(u"说明.txt"_s)));
    EXPECT_TRUE(support::dropOn(*screen, scores()));
    EXPECT_EQ(choice(1)->currentText(), u"学号"_s);
}

TEST_F(TidyingScreen, AFileThatIsNoWorkbookIsSaidInTheScreen)
{
    screen->browse(scores());
    const QString path = library.file(u"网页.xls"_s);
    support::write(path, "<html><table><tr><td>1</table></html>");
    screen->browse(path);
    EXPECT_TRUE(text(u"labelFault"_s).contains(u"其实是网页文件"_s));
    EXPECT_FALSE(button(u"buttonTidy"_s)->isEnabled());
    EXPECT_EQ(find<QListWidget>(u"listSheets"_s)->count(), 0);
    EXPECT_EQ(library.dialogs.shown, QStringList());
}

TEST_F(TidyingScreen, HostileNamesAreShownAsTheyStand)
{
    Rows hostile = rows;
    hostile[3][0] = 3;
    hostile[3][1] = QString(u"<b>'; --\r\n"_s + QString(10'000, u'长'));
    screen->browse(workbook(u"期中.xlsx"_s, {{u"1班 <b> '' or ''=''"_s, hostile}}));
    EXPECT_TRUE(find<QListWidget>(u"listSheets"_s)->item(0)->toolTip().contains(u"&lt;b&gt;"_s));
    EXPECT_LE(table(u"gridSheet"_s)->grid().TextMatrix(4, 3).size(), 60);
    EXPECT_LE(screen->width(), 1200);
    press(u"buttonTidy"_s);
    EXPECT_TRUE(made().contains(u"长长长"_s));
}

TEST_F(TidyingScreen, ItsSizeIsRemembered)
{
    screen->resize(790, 650);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    open();
    EXPECT_EQ(screen->size(), QSize(790, 650));
}

TEST_F(TidyingScreen, FitsASmallDisplay)
{
    screen->browse(scores());
    screen->resize(800, 600);
    EXPECT_LE(screen->width(), 800);
    EXPECT_LE(screen->height(), 600);
}

} // namespace
