#include <QComboBox>
#include <QLabel>
#include <QTabBar>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "workbooks/model/Workbook.h"

namespace {

using namespace Qt::StringLiterals;

/// The imports within the program: with the windows of their workbooks, and with what the latest
/// one leaves for 检查成绩.
class ImportFromTheMenu : public support::MainWindowFixture
{
protected:
    ImportFromTheMenu()
    {
        startWithExam();
        test.addStudent(1, 2, u"乙"_s, u"理"_s);
        test.reload();
    }

    /// Writes a workbook with this score of 甲 and a good one of 乙 on its first sheet.
    QString workbook(const QString& name, double score) const
    {
        excel::Workbook book;
        excel::Worksheet& sheet = book.addSheet(u"成绩"_s);
        const std::vector<std::vector<runtime::Value>> rows{
            {u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s},
            {1, 1, u"甲"_s, score},
            {1, 2, u"乙"_s, 80}};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 4; ++column)
                sheet.setCell(row + 1, column + 1, rows[size_t(row)][size_t(column)]);
        }
        book.addSheet(u"说明"_s).setCell(1, 1, u"说明"_s);
        book.SaveAs(test.file(name));
        return test.file(name);
    }

    static void pressOn(const QDialog& screen, const QString& name)
    {
        QTest::mouseClick(screen.findChild<QPushButton*>(name), Qt::LeftButton);
    }

    void browse(const QDialog& screen, const QString& book)
    {
        test.dialogs.file = book;
        pressOn(screen, u"Command3"_s);
    }

    /// Does this with an import screen, and leaves it.
    void onScreen(const QString& menuItem, const std::function<void(QDialog&)>& action)
    {
        boxes.expect([&](QDialog& screen) {
            action(screen);
            screen.close();
        });
        item(menuItem)->trigger();
    }

    void importScore(const QString& book, double score)
    {
        onScreen(u"meDRKS"_s, [&](QDialog& screen) {
            browse(screen, workbook(book, score));
            boxes.expect([](QDialog& marks) { pressOn(marks, u"Command1"_s); });
            if (score > 150)
                boxes.expect([](QDialog& list) { list.close(); });
            pressOn(screen, u"Command1"_s);
        });
        EXPECT_EQ(test.dialogs.shown.takeLast(), u"导入完成！"_s);
    }

    /// "检查成绩" with what it is expected to show.
    void checkScores(const std::function<void(QDialog&)>& look)
    {
        boxes.expect([&](QDialog& list) {
            EXPECT_EQ(list.objectName(), u"Formgf"_s);
            look(list);
            list.close();
        });
        item(u"meJCCJ"_s)->trigger();
        EXPECT_EQ(test.dialogs.shown, QStringList());
    }

    static grid::FlexGridView& listOf(const QDialog& list)
    {
        return *list.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
    }

    static QString reason(const QDialog& list) { return listOf(list).grid().TextMatrix(1, 5); }

    static QTabBar& tabs(const excel::WorkbookWindow& book)
    {
        return *book.findChild<QTabBar*>(u"SheetTabs"_s);
    }

    static void clickTab(const excel::WorkbookWindow& book, int tab)
    {
        QTest::mouseClick(&tabs(book), Qt::LeftButton, {}, tabs(book).tabRect(tab).center());
    }

    support::ModalBoxes boxes;
};

TEST_F(ImportFromTheMenu, CheckingScoresShowsTheListOfTheLatestImportAgain)
{
    importScore(u"月考.xlsx"_s, 200);
    checkScores([](QDialog& list) {
        EXPECT_EQ(list.findChild<QLabel*>(u"Label1"_s)->text(), u"共发现 1 处成绩有问题！"_s);
        ASSERT_EQ(listOf(list).grid().Rows(), 2);
        EXPECT_EQ(listOf(list).grid().TextMatrix(1, 2), u"甲"_s);
        EXPECT_EQ(listOf(list).grid().TextMatrix(1, 4), u"200"_s);
        EXPECT_EQ(reason(list), u"超过总分"_s);
    });
}

TEST_F(ImportFromTheMenu, AnAnsweredScoreStaysAnswered)
{
    importScore(u"月考.xlsx"_s, 200);
    checkScores([](QDialog& list) {
        const QModelIndex cell = listOf(list).model()->index(1, 4);
        QTest::mouseClick(listOf(list).viewport(), Qt::LeftButton, {},
                          listOf(list).visualRect(cell).center());
        auto* box = list.findChild<grid::CellTextEditor*>(u"Text1"_s);
        box->selectAll();
        QTest::keyClicks(box, u"90"_s);
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_EQ(reason(list), QString());
    });
    checkScores([](QDialog& list) { EXPECT_EQ(reason(list), QString()); });
}

TEST_F(ImportFromTheMenu, TheListStaysWithAnotherLibraryAndGoesWithTheNextGoodImport)
{
    importScore(u"月考.xlsx"_s, 200);
    ASSERT_TRUE(QFile::copy(path, test.file(u"另一个.CJK"_s)));
    test.dialogs.file = test.file(u"另一个.CJK"_s);
    item(u"mfOpen"_s)->trigger();
    checkScores([](QDialog& list) { EXPECT_EQ(reason(list), u"超过总分"_s); });
    importScore(u"补考.xlsx"_s, 90);
    item(u"meJCCJ"_s)->trigger();
    EXPECT_EQ(test.dialogs.shown, QStringList{u"没有发现不合格的成绩！"_s});
}

TEST_F(ImportFromTheMenu, TheScreenAndTheWindowOfTheWorkbookShowTheSameSheet)
{
    for (const QString& menuItem : {u"meDRKS"_s, u"meDRLB"_s}) {
        SCOPED_TRACE(menuItem.toStdString());
        onScreen(menuItem, [&](QDialog& screen) {
            browse(screen, workbook(u"月考.xlsx"_s, 90));
            ASSERT_EQ(books().size(), 1u);
            const excel::WorkbookWindow& book = *books()[0];
            auto* sheets = screen.findChild<QComboBox*>(u"Combo1"_s);
            EXPECT_EQ(sheets->currentText(), u"成绩"_s);
            clickTab(book, 1);
            EXPECT_EQ(sheets->currentText(), u"说明"_s);
            QTest::keyClick(sheets, Qt::Key_Up);
            EXPECT_EQ(tabs(book).currentIndex(), 0);
            books()[0]->close();
        });
    }
}

TEST_F(ImportFromTheMenu, TheSheetChosenByItsTabIsTheOneThatIsImported)
{
    onScreen(u"meDRKS"_s, [&](QDialog& screen) {
        browse(screen, workbook(u"月考.xlsx"_s, 90));
        clickTab(*books().at(0), 1);
        pressOn(screen, u"Command1"_s);
    });
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown[0].startsWith(u"错误: 指定的工作表格式不对！"_s));
}

TEST_F(ImportFromTheMenu, TheTabsOfAnotherWorkbookChooseNothing)
{
    onScreen(u"meDRKS"_s, [&](QDialog& screen) {
        browse(screen, workbook(u"月考.xlsx"_s, 90));
        const excel::WorkbookWindow* first = books().at(0);
        browse(screen, workbook(u"补考.xlsx"_s, 90));
        clickTab(*first, 1);
        EXPECT_EQ(tabs(*first).currentIndex(), 1);
        EXPECT_EQ(screen.findChild<QComboBox*>(u"Combo1"_s)->currentText(), u"成绩"_s);
    });
}

TEST_F(ImportFromTheMenu, TheWorkbookCanBeReadWhileTheImportAsks)
{
    onScreen(u"meDRKS"_s, [&](QDialog& screen) {
        browse(screen, workbook(u"月考.xlsx"_s, 200));
        const excel::WorkbookWindow& book = *books().at(0);
        const auto lookUp = [&](QDialog& asking) {
            clickTab(book, 1);
            EXPECT_EQ(tabs(book).currentIndex(), 1) << asking.objectName().toStdString();
            clickTab(book, 0);
        };
        boxes.expect([&](QDialog& marks) {
            lookUp(marks);
            pressOn(marks, u"Command1"_s);
        });
        boxes.expect([&](QDialog& list) {
            lookUp(list);
            list.close();
        });
        pressOn(screen, u"Command1"_s);
    });
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导入完成！"_s});
}

TEST_F(ImportFromTheMenu, ATabChosenWhileTheImportAsksLeavesTheSheetOfTheImport)
{
    onScreen(u"meDRKS"_s, [&](QDialog& screen) {
        browse(screen, workbook(u"月考.xlsx"_s, 90));
        const excel::WorkbookWindow& book = *books().at(0);
        const auto* sheets = screen.findChild<QComboBox*>(u"Combo1"_s);
        boxes.expect([&](QDialog& marks) {
            clickTab(book, 1);
            EXPECT_EQ(sheets->currentText(), u"成绩"_s);
            pressOn(marks, u"Command1"_s);
        });
        pressOn(screen, u"Command1"_s);
        EXPECT_EQ(sheets->currentText(), u"成绩"_s);
        clickTab(book, 0);
        clickTab(book, 1);
        EXPECT_EQ(sheets->currentText(), u"说明"_s) << "the import is over";
    });
    EXPECT_EQ(test.dialogs.shown, QStringList{u"导入完成！"_s});
}

TEST_F(ImportFromTheMenu, AnImportLeavesTheResultsInView)
{
    press(u"CommandLLCJ"_s);
    importScore(u"月考.xlsx"_s, 90);
    EXPECT_TRUE(gridView()->isVisible());
}

} // namespace
