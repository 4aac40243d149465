#include "import/ui/FormDaoRuXinXi.h"

#include <QFileDialog>
#include <QMessageBox>

#include "gui/IntakeFixture.h"
#include "gui/PaintedTexts.h"
#include "gui/ProgressCanceller.h"

namespace {

using namespace Qt::StringLiterals;
using importing::FormDaoRuXinXi;

class StudentImportScreen : public support::IntakeFixture
{
protected:
    StudentImportScreen()
    {
        form =
            std::make_unique<FormDaoRuXinXi>(library.scores, screenDialogs, applications, &owner);
        form->show();
    }

    QString students(const QString& columns)
    {
        return library.rows(u"select "_s + columns + u" from 信息表"_s);
    }

    const QString tag = u" - Private Sub Command1_Click/FormDaoRuXinXi"_s;
    const Rows two{{u"班级"_s, u"学号"_s, u"姓名"_s, u"性别"_s},
                   {1, 1, u"王芳"_s, u"女"_s},
                   {1, 2, u"李强"_s, u"男"_s}};
};

TEST_F(StudentImportScreen, SaysWhatToDoAndWhatMayStandOnTheSheet)
{
    EXPECT_EQ(form->windowTitle(), u"导入学生信息"_s);
    EXPECT_EQ(text(u"Label1"_s), u"1.打开要导入信息的Excel文件(&F)"_s);
    EXPECT_EQ(text(u"Label2"_s), u"2.选择导入信息所在的数据表(&S)"_s);
    EXPECT_EQ(text(u"Label3"_s),
              u"数据表前3列必须为：班级、学号、姓名\n"
              "其余项目可为下列中的一个或多个:类别代码、类别、科类、性别、照片名、出生时间、"
              "入学时间、学籍号、原毕业学校、身份证、民族、籍贯、备注"_s);
    EXPECT_EQ(find<QPushButton>(u"Command1"_s)->text(), u"导入(&I)"_s);
    EXPECT_EQ(find<QPushButton>(u"Command2"_s)->text(), u"退出(&X)"_s);
    EXPECT_EQ(find<QPushButton>(u"Command3"_s)->text(), u"浏览(&B)"_s);
    EXPECT_FALSE(form->isModal());
}

TEST_F(StudentImportScreen, BrowsingOffersTheOldFormatAndListsTheSheets)
{
    const QString path = workbook(u"名单.xlsx"_s, two);
    choose(path);
    EXPECT_EQ(dialogs.fileTitle, u"打开文件"_s);
    EXPECT_EQ(dialogs.fileFilter, u"EXCEL文件(*.xls)|*.xls|"_s);
    EXPECT_EQ(field(u"Text1"_s), path);
    EXPECT_EQ(sheets(), (QStringList{u"一年级"_s, u"说明"_s}));
    EXPECT_EQ(find<QComboBox>(u"Combo1"_s)->currentIndex(), 0);
    EXPECT_TRUE(applications.at(0)->Visible());
}

TEST_F(StudentImportScreen, TheFileDialogBeginsInTheProgramsFolder)
{
    const runtime::InstalledDialogs real(screenDialogs);
    boxes.expect([&](QDialog& window) {
        auto& dialog = dynamic_cast<QFileDialog&>(window);
        EXPECT_EQ(dialog.directory(), QDir(library.paths.AppPath()));
        EXPECT_EQ(dialog.windowTitle(), u"打开文件"_s);
        dialog.reject();
    });
    press(u"Command3"_s);
    EXPECT_EQ(applications.size(), 0U) << "cancelled: nothing changes";
    EXPECT_EQ(field(u"Text1"_s), QString());
}

TEST_F(StudentImportScreen, ImportsTheChosenSheetAndClosesTheSpreadsheet)
{
    choose(workbook(u"名单.xlsx"_s, two));
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(students(u"班级,学号,姓名,性别,科类"_s), u"1|1|王芳|女|理 / 1|2|李强|男|理"_s);
    EXPECT_FALSE(applications[0]->isRunning());
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(backups().size(), 1);
}

TEST_F(StudentImportScreen, SaysWhatItIsDoing)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    choose(workbook(u"名单.xlsx"_s, two));
    const support::PaintedTexts painted(find<QLabel>(u"Label4"_s));
    press(u"Command1"_s);
    EXPECT_EQ(painted.texts.filter(u"..."_s), QStringList{u"导入数据..."_s});
}

TEST_F(StudentImportScreen, SecondImportNeedsANewBrowse)
{
    choose(workbook(u"名单.xlsx"_s, two));
    press(u"Command1"_s);
    dialogs.shown.clear();
    press(u"Command1"_s);
    ASSERT_EQ(dialogs.shown.size(), 2);
    EXPECT_TRUE(dialogs.shown[0].endsWith(tag));
    EXPECT_EQ(dialogs.shown[1], u"错误: 要分析的工作簿未打开！"_s);
    choose(library.file(u"名单.xlsx"_s));
    dialogs.expect(u"跳过已有"_s, u"全部添加"_s);
    press(u"Command1"_s);
    EXPECT_EQ(students(u"count(*)"_s), u"4"_s) << "a student imported twice stands twice";
}

TEST_F(StudentImportScreen, AsksAboutStudentsWhoAreThereAndEnterImportsNothing)
{
    addClass();
    choose(workbook(u"名单.xlsx"_s, two));
    const runtime::InstalledDialogs real(screenDialogs);
    boxes.expect([](QDialog& window) {
        const auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_TRUE(box.text().startsWith(
            u"名单中有 2 人的班级和学号在成绩库里已经有了（1 班 1 号 王芳、1 班 2 号 李强）。"_s));
        EXPECT_EQ(box.defaultButton()->text(), u"取消"_s);
        QTest::keyClick(&window, Qt::Key_Return);
    });
    press(u"Command1"_s);
    EXPECT_EQ(students(u"姓名"_s), u"王芳 / 陈静"_s);
    boxes.expect([](QDialog& window) {
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->text() == u"全部添加"_s)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
    });
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(window).text(), u"导入完成！"_s);
        QTest::keyClick(&window, Qt::Key_Return);
    });
    press(u"Command1"_s);
    EXPECT_EQ(students(u"姓名"_s), u"王芳 / 陈静 / 王芳 / 李强"_s);
}

TEST_F(StudentImportScreen, BeforeAWorkbookIsOpenItSaysSo)
{
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
}

TEST_F(StudentImportScreen, RefusesASheetWithAnotherFirstRow)
{
    choose(workbook(u"名单.xlsx"_s, two));
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Down);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前3列为 班级、学号、姓名"_s});
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(StudentImportScreen, HeadingThatIsNoColumnIsReportedOnEachRow)
{
    choose(workbook(u"名单.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"电话"_s},
                                     {1, 1, u"王芳"_s, 1},
                                     {1, 2, u"O'Neil"_s, 2}}));
    press(u"Command1"_s);
    const QString message = u"没有名为“电话”的列。"_s + tag;
    EXPECT_EQ(dialogs.shown, (QStringList{message, message, u"导入完成！"_s}));
    EXPECT_EQ(students(u"姓名"_s), u"王芳 / O'Neil"_s);
}

TEST_F(StudentImportScreen, AThousandBadRowsCostTwoClicks)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s, u"入学时间"_s}};
    for (int number = 1; number <= 1000; ++number)
        rows.push_back({1, number, u"学生"_s, u"不详"_s});
    form->browse(workbook(u"名单.xlsx"_s, rows));
    const runtime::InstalledDialogs real(screenDialogs);
    boxes.expect([&](QDialog& window) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(window).text(), u"“不详”不是日期。"_s + tag);
        QTest::keyClick(window.findChild<QWidget*>(u"CheckQuiet"_s), Qt::Key_Space);
        window.accept();
    });
    boxes.expect([](QDialog& window) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(window).text(), u"导入完成！"_s);
        window.accept();
    });
    boxes.expect([&](QDialog& window) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(window).text(),
                  u"“不详”不是日期。"_s + tag + u"（同样的提示另有 999 条）"_s);
        window.accept();
    });
    press(u"Command1"_s);
    EXPECT_EQ(students(u"count(*)"_s), u"1000"_s);
}

TEST_F(StudentImportScreen, TheBackupCanBeSwitchedOff)
{
    choose(workbook(u"名单.xlsx"_s, two));
    toggle(u"CheckBackup"_s);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(StudentImportScreen, WorkbookThatIsCutOffSaysSoOnTheScreenAndAtTheImport)
{
    choose(cutOffWorkbook(u"坏.xlsx"_s));
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(sheets(), QStringList());
    const QString fault = text(u"LabelFault"_s);
    EXPECT_TRUE(find<QLabel>(u"LabelFault"_s)->isVisible());
    EXPECT_NE(fault, QString());
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, (QStringList{fault + tag, u"错误: 要分析的工作簿未打开！"_s}));
    choose(workbook(u"名单.xlsx"_s, two));
    EXPECT_FALSE(find<QLabel>(u"LabelFault"_s)->isVisible());
}

TEST_F(StudentImportScreen, BothWaysOutLeaveTheWorkbookInView)
{
    choose(workbook(u"名单.xlsx"_s, two));
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(isOpen(0));
    form->show();
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    form->close();
    EXPECT_TRUE(isOpen(0));
}

TEST_F(StudentImportScreen, CancelStopsBetweenStudentsAndWritesNone)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s, u"出生时间"_s, u"入学时间"_s, u"籍贯"_s}};
    for (int number = 1; number <= 100000; ++number)
        rows.push_back({1, number, u"学生"_s, u"2009-7-31"_s, u"2024年9月1日"_s, u"云南"_s});
    choose(workbook(u"名单.xlsx"_s, rows));
    const support::ProgressCanceller canceller;
    press(u"Command1"_s);
    EXPECT_EQ(canceller.text, u"导入数据..."_s);
    EXPECT_EQ(dialogs.shown, QStringList()) << "nothing is said to be complete";
    EXPECT_EQ(students(u"count(*)"_s), u"0"_s);
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(find<QPushButton>(u"Command1"_s)->isEnabled());
}

} // namespace
