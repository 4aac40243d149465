#include "import/ui/FormDaoRuFenBanXinXi.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QMessageBox>

#include "gui/IntakeFixture.h"
#include "gui/PaintedTexts.h"
#include "gui/ProgressCanceller.h"

namespace {

using namespace Qt::StringLiterals;
using importing::FormDaoRuFenBanXinXi;
using runtime::Answer;

class ReclassScreen : public support::IntakeFixture
{
protected:
    ReclassScreen()
    {
        form = std::make_unique<FormDaoRuFenBanXinXi>(library.scores, screenDialogs, applications,
                                                      &owner);
        form->show();
    }

    QString students() { return library.rows(u"select 班级,学号,姓名 from 信息表"_s); }

    /// The next box is a question whose text holds `part`; the key answers it.
    void answer(const QString& part, Qt::Key key)
    {
        boxes.expect([part, key](QDialog& window) {
            EXPECT_TRUE(dynamic_cast<QMessageBox&>(window).text().contains(part));
            QTest::keyClick(&window, key);
        });
    }

    /// The next box is one of many questions: ticks the box for the rest and presses a button.
    void answerForRest(const QString& part, QMessageBox::StandardButton button)
    {
        boxes.expect([part, button](QDialog& window) {
            auto& box = dynamic_cast<QMessageBox&>(window);
            EXPECT_TRUE(box.text().contains(part));
            EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Cancel));
            QTest::keyClick(window.findChild<QCheckBox*>(u"CheckForRest"_s), Qt::Key_Space);
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }

    /// The next box counts what will happen: 继续.
    void goOn()
    {
        boxes.expect([](QDialog& window) {
            auto& box = dynamic_cast<QMessageBox&>(window);
            EXPECT_EQ(box.defaultButton()->text(), u"取消"_s);
            for (QAbstractButton* button : box.buttons()) {
                if (button->text() == u"继续"_s)
                    return QTest::mouseClick(button, Qt::LeftButton);
            }
        });
    }

    void told(const QString& text)
    {
        boxes.expect([text](QDialog& window) {
            EXPECT_EQ(dynamic_cast<QMessageBox&>(window).text(), text);
            QTest::keyClick(&window, Qt::Key_Return);
        });
    }

    const QString tag = u" - Private Sub Command1_Click/FormDaoRuFenBanXinXi"_s;
    const QString counted = u"移到新班级和新学号"_s;
    const Rows swapped{{u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号"_s},
                       {1, 1, u"王芳"_s, 1, 2},
                       {1, 2, u"陈静"_s, 1, 1}};
};

TEST_F(ReclassScreen, SaysWhatToDoAndWhatStandsOnTheSheet)
{
    EXPECT_EQ(form->windowTitle(), u"导入分班信息"_s);
    EXPECT_EQ(text(u"Label1"_s), u"1.打开要导入分班信息的Excel文件(&F)"_s);
    EXPECT_EQ(text(u"Label2"_s), u"2.设置要导入 分班信息 的数据表(&S)"_s);
    EXPECT_EQ(text(u"Label3"_s), u"数据表前5列为：班级、学号、姓名、新班级、新学号"_s);
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(find<QCheckBox>(u"CheckBackup"_s)->isChecked());
}

TEST_F(ReclassScreen, BrowsingOffersBothFormatsAndListsTheSheets)
{
    const QString path = workbook(u"分班.xlsx"_s, swapped);
    choose(path);
    EXPECT_EQ(dialogs.fileTitle, u"打开文件"_s);
    EXPECT_EQ(dialogs.fileFilter, u"EXCEL文件|*.xls;*.xlsx|"_s);
    EXPECT_EQ(field(u"Text1"_s), path);
    EXPECT_EQ(sheets(), (QStringList{u"一年级"_s, u"说明"_s}));
    choose(path);
    EXPECT_TRUE(isOpen(0)) << "the first instance stays open";
    EXPECT_TRUE(isOpen(1));
}

TEST_F(ReclassScreen, TheFileDialogBeginsInTheProgramsFolder)
{
    const runtime::InstalledDialogs real(screenDialogs);
    boxes.expect([&](QDialog& window) {
        auto& dialog = dynamic_cast<QFileDialog&>(window);
        EXPECT_EQ(dialog.directory(), QDir(library.paths.AppPath()));
        dialog.reject();
    });
    press(u"Command3"_s);
    EXPECT_EQ(applications.size(), 0U) << "cancelled: nothing changes";
    EXPECT_EQ(field(u"Text1"_s), QString());
}

TEST_F(ReclassScreen, StudentsMoveByClicksAndKeys)
{
    addClass();
    library.addStudent(2, 1, u"丁"_s, u"文"_s);
    library.addStudent(2, 2, u"戊"_s, u"文"_s);
    library.addStudent(2, 3, u"己"_s, u"文"_s);
    library.addStudent(2, 4, u"庚"_s, u"文"_s);
    Rows rows = swapped;
    rows.push_back({2, 3, u"已"_s, 5, 5});
    rows.push_back({2, 4, u"康"_s, 5, 6});
    choose(workbook(u"分班.xlsx"_s, rows));
    const runtime::InstalledDialogs real(screenDialogs);
    goOn();
    answer(u"[2 班 1 号 丁]"_s, Qt::Key_Return);
    answerForRest(u"[2 班 2 号 戊]"_s, QMessageBox::Ok);
    answerForRest(u"[已] 与数据库中记录的不一致"_s, QMessageBox::Yes);
    told(u"移动 2 人，改名 2 人，删除 1 人（成绩 0 条），留在原班 3 人。"_s);
    told(u"分班完成！"_s);
    press(u"Command1"_s);
    EXPECT_EQ(students(), u"1|2|王芳 / 1|1|陈静 / 2|1|丁 / 2|3|已 / 2|4|康"_s)
        << "Enter keeps a student";
    EXPECT_TRUE(isOpen(0)) << "the spreadsheet stays open";
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_EQ(backups().size(), 1);
}

TEST_F(ReclassScreen, EnterAndEscInTheCountsMoveNobody)
{
    addClass();
    choose(workbook(u"分班.xlsx"_s, swapped));
    const runtime::InstalledDialogs real(screenDialogs);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        answer(counted, key);
        press(u"Command1"_s);
        EXPECT_EQ(students(), u"1|1|王芳 / 1|2|陈静"_s);
    }
}

TEST_F(ReclassScreen, SaysWhatItIsDoing)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    addClass();
    choose(workbook(u"分班.xlsx"_s, swapped));
    const support::PaintedTexts painted(find<QLabel>(u"Label4"_s));
    dialogs.expect(counted, u"继续"_s);
    press(u"Command1"_s);
    EXPECT_EQ(painted.texts.filter(u"..."_s), QStringList{u"开始分班..."_s});
}

TEST_F(ReclassScreen, AFilteredSheetIsReadWholeAndItsFilterIsGone)
{
    addClass();
    form->browse(workbook(u"分班.xlsx"_s, swapped));
    excel::Worksheet& sheet = applications[0]->Workbooks().Item(1).Worksheets().Item(1);
    sheet.setAutoFilter({1, 1, 3, 5});
    dialogs.expect(counted, u"继续"_s);
    press(u"Command1"_s);
    EXPECT_EQ(students(), u"1|2|王芳 / 1|1|陈静"_s);
    EXPECT_FALSE(sheet.AutoFilterMode());
}

TEST_F(ReclassScreen, RefusesASheetWithAnotherFirstRow)
{
    choose(workbook(u"分班.xlsx"_s, swapped));
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Down);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前5列为：班级、学号、姓名、新班级、新学号"_s});
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(ReclassScreen, AWorkbookThatCannotBeReadIsTold)
{
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
    dialogs.shown.clear();
    choose(cutOffWorkbook(u"坏.xlsx"_s));
    const QString fault = text(u"LabelFault"_s);
    EXPECT_NE(fault, QString());
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, (QStringList{fault + tag, u"错误: 要分析的工作簿未打开！"_s}));
}

TEST_F(ReclassScreen, TheBackupCanBeSwitchedOff)
{
    addClass();
    choose(workbook(u"分班.xlsx"_s, swapped));
    toggle(u"CheckBackup"_s);
    dialogs.expect(counted, u"继续"_s);
    press(u"Command1"_s);
    EXPECT_EQ(students(), u"1|2|王芳 / 1|1|陈静"_s);
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(ReclassScreen, TheExitClosesTheSpreadsheetAndTheFrameDoesNot)
{
    choose(workbook(u"分班.xlsx"_s, swapped));
    form->close();
    EXPECT_TRUE(isOpen(0));
    form->show();
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(applications[0]->isRunning());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ReclassScreen, CancelStopsBetweenRowsAndWritesNone)
{
    addClass();
    choose(workbook(u"分班.xlsx"_s, swapped));
    // Long enough for the window of the progress to come up on any machine.
    excel::Worksheet& sheet = applications[0]->Workbooks().Item(1).Worksheets().Item(1);
    for (int row = 2; row <= 500'000; ++row)
        sheet.setCell(row, 1, 1);
    const support::ProgressCanceller canceller;
    press(u"Command1"_s);
    EXPECT_EQ(canceller.text, u"开始分班..."_s);
    EXPECT_EQ(dialogs.shown, QStringList()) << "nothing is said to be complete";
    EXPECT_EQ(library.rows(u"select count(*) from 分班表"_s), u"0"_s);
    EXPECT_EQ(students(), u"1|1|王芳 / 1|2|陈静"_s);
    EXPECT_EQ(text(u"Label4"_s), QString());
}

} // namespace
