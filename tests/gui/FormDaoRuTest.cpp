#include <QCheckBox>

#include "gui/ExamImportFixture.h"
#include "gui/PaintedTexts.h"
#include "gui/ProgressCanceller.h"
#include "platform/grid/ui/FlexGridView.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;

class ExamImportScreen : public support::ExamImportFixture
{
};

TEST_F(ExamImportScreen, SaysWhatToDoAndWhichScoresAreAllowed)
{
    EXPECT_EQ(form->windowTitle(), u"导入考试成绩"_s);
    EXPECT_EQ(text(u"Label1"_s), u"1.打开要导入考试成绩的Excel文件(&F)"_s);
    EXPECT_EQ(text(u"Label2"_s), u"2.设置要导入考试成绩的数据表(&S)"_s);
    EXPECT_EQ(text(u"Label3"_s), u"3.设置考试的短名称（如高一下末，最好4个字）(&T)"_s);
    EXPECT_EQ(text(u"Label5"_s), u"4.设置考试的名称(&N)"_s);
    EXPECT_TRUE(text(u"Label6"_s)
                    .endsWith(u"\n成绩仅允许汉字：[缺考]和[作弊],不含方括号"
                              "\n      [缺考]不参与单科统计， "
                              "[作弊]记为0分，参与单科统计"_s));
    EXPECT_EQ(find<QCheckBox>(u"CheckAdd"_s)->text(), u"自动添加新名单(&A)"_s);
    EXPECT_EQ(find<QCheckBox>(u"CheckBox1"_s)->text(), u"导入后计算总分(&Z)"_s);
    EXPECT_EQ(find<QCheckBox>(u"CheckBox1"_s)->toolTip(),
              u"计算考试总分和各科的年级和班级名次，时间长短和人数有关。"_s);
    EXPECT_FALSE(find<QPushButton>(u"Command1"_s)->isEnabled());
    EXPECT_EQ(exam()->currentText(), u"期中"_s) << "the last exam is preselected";
}

TEST_F(ExamImportScreen, BrowsingListsTheSheetsAndOffersTheFileNameAsTheExam)
{
    const QString path = workbook(u"高一.期末.xlsx"_s, two);
    choose(path);
    EXPECT_EQ(dialogs.fileTitle, u"打开文件"_s);
    EXPECT_EQ(dialogs.fileFilter, u"EXCEL文件|*.xls;*.xlsx|"_s);
    EXPECT_EQ(field(u"Text1"_s), path);
    EXPECT_EQ(sheets(), (QStringList{u"一年级"_s, u"说明"_s}));
    EXPECT_EQ(find<QComboBox>(u"Combo1"_s)->currentIndex(), 0);
    EXPECT_EQ(exam()->currentText(), u"高一.期末"_s);
    EXPECT_EQ(field(u"Text2"_s), u"高一.期末"_s);
    EXPECT_TRUE(find<QPushButton>(u"Command1"_s)->isEnabled());
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(applications.at(0)->Visible());
}

TEST_F(ExamImportScreen, SaysThatTheWorkbookIsBeingOpened)
{
    const support::PaintedTexts painted(find<QLabel>(u"Label4"_s));
    choose(workbook(u"期末.xlsx"_s, two));
    EXPECT_TRUE(painted.texts.contains(u"打开工作簿..."_s));
}

TEST_F(ExamImportScreen, CancelledBrowseChangesNothing)
{
    dialogs.file.reset();
    press(u"Command3"_s);
    EXPECT_EQ(exam()->currentText(), u"期中"_s);
    EXPECT_FALSE(find<QPushButton>(u"Command1"_s)->isEnabled());
    EXPECT_EQ(applications.size(), 0U);
}

TEST_F(ExamImportScreen, BrowsingAgainLeavesTheFirstInstanceRunning)
{
    choose(workbook(u"甲.xlsx"_s, two));
    choose(workbook(u"乙.xlsx"_s, two));
    ASSERT_EQ(applications.size(), 2U);
    EXPECT_TRUE(isOpen(0));
    press(u"Command2"_s);
    EXPECT_TRUE(isOpen(0));
    EXPECT_FALSE(applications[1]->isRunning());
}

TEST_F(ExamImportScreen, TellsOfTheWorkbookAndOfTheSheetInTheList)
{
    QStringList told;
    QObject::connect(form.get(), &importing::IntakeScreen::workbookShown,
                     [&](excel::Application& application, excel::Workbook& book) {
                         EXPECT_EQ(&application.Workbooks().Item(1), &book);
                         told.append(u"workbook"_s);
                     });
    QObject::connect(form.get(), &importing::IntakeScreen::sheetChosen,
                     [&](excel::Workbook& book, const QString& name) {
                         EXPECT_EQ(book.Worksheets().Item(name).Name(), name);
                         told.append(name);
                     });
    choose(workbook(u"期末.xlsx"_s, two));
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Down);
    EXPECT_EQ(told, (QStringList{u"workbook"_s, u"一年级"_s, u"说明"_s}));
}

TEST_F(ExamImportScreen, ImportsANewExamAndStaysWithItsWorkbook)
{
    choose(workbook(u"期末.xlsx"_s, two));
    import();
    EXPECT_EQ(marksLabel, u"文科：期末"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(scoreRows(u"姓名,考试名称,考试编号,语文,数学,总分"_s),
              u"王芳|期末|3|120|90|NULL / 陈静|期末|3|-1|0|NULL"_s);
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(isOpen(0));
    EXPECT_EQ(backups().size(), 1);
}

TEST_F(ExamImportScreen, ScoresTheExamAfterwardsIfAsked)
{
    choose(workbook(u"期末.xlsx"_s, two));
    toggle(u"CheckBox1"_s);
    import();
    EXPECT_EQ(dialogs.shown.last(), u"导入完成！"_s);
    EXPECT_EQ(scoreRows(u"姓名,总分,总分年名"_s).section(u" / "_s, 0, 0), u"王芳|210|1"_s);
}

TEST_F(ExamImportScreen, TheBackupCanBeSwitchedOff)
{
    choose(workbook(u"期末.xlsx"_s, two));
    toggle(u"CheckBackup"_s);
    import();
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(ExamImportScreen, ExamPickedFromTheListIsReplacedOnlyAfterAQuestion)
{
    choose(workbook(u"期末.xlsx"_s, two));
    pickLastExam();
    dialogs.expect(u"确实要将数据到入 期中 吗？原有数据将被新数据替换！"_s, Answer::Cancel);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"提示: 确实要将数据到入 期中 吗？"
                                         "原有数据将被新数据替换！"_s});
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    dialogs.expect(u"确实要将数据到入 期中 吗"_s, Answer::Ok);
    import();
    EXPECT_EQ(library.rows(u"select 考试名称 from 考试名称表"_s), u"期初 / 期中"_s);
    EXPECT_EQ(scoreRows(u"考试名称,考试编号"_s), u"期中|2 / 期中|2"_s);
}

TEST_F(ExamImportScreen, APickedExamCanLeaveTheScoresOfOtherExamsAlone)
{
    library.addScores(u"期初"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 60}});
    choose(workbook(u"期末.xlsx"_s, two));
    const auto pickAnd = [this](const QString& button) {
        pickLastExam();
        dialogs.expect(u"确实要将数据到入 期中 吗"_s, Answer::Ok);
        dialogs.expect(u"将覆盖 1 名学生其他考试（期初）的成绩"_s, button);
    };
    pickAnd(u"取消"_s);
    press(u"Command1"_s);
    EXPECT_EQ(backups(), QStringList());
    pickAnd(u"只更新本考试"_s);
    import();
    EXPECT_EQ(scoreRows(u"姓名,考试名称,语文"_s), u"王芳|期初|60 / 王芳|期中|120 / 陈静|期中|-1"_s);
}

TEST_F(ExamImportScreen, ACancelledGuardLeavesTheScreenReadyForAnotherName)
{
    library.addExam(u"高一期末"_s, u"文"_s, 3, {});
    choose(workbook(u"期末.xlsx"_s, two));
    dialogs.expect(u"考试列表里看不到它"_s, u"取消"_s);
    press(u"Command1"_s);
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    typeExam(u"高二期末"_s);
    import();
    EXPECT_EQ(scoreRows(u"考试名称"_s), u"高二期末 / 高二期末"_s);
}

TEST_F(ExamImportScreen, PickingTheEntryThatStoodBeforeIsAPickAgain)
{
    choose(workbook(u"期末.xlsx"_s, two));
    exam()->showPopup();
    QTest::keyClick(exam()->view(), Qt::Key_End);
    QTest::keyClick(exam()->view(), Qt::Key_Return);
    EXPECT_EQ(exam()->currentText(), u"期中"_s);
    dialogs.expect(u"确实要将数据到入 期中 吗"_s, Answer::Cancel);
    press(u"Command1"_s);
}

TEST_F(ExamImportScreen, TypedNameIsNewEvenIfItEqualsAnExam)
{
    choose(workbook(u"期末.xlsx"_s, two));
    pickLastExam();
    typeExam(u"期初"_s);
    QTest::keyClick(exam(), Qt::Key_Return);
    find<QLineEdit>(u"Text2"_s)->setFocus();
    import();
    EXPECT_EQ(dialogs.questions, QStringList());
    EXPECT_EQ(library.rows(u"select 考试名称,考试编号 from 考试名称表"_s),
              u"期初|1 / 期中|2 / 期初|1"_s);
}

TEST_F(ExamImportScreen, FileNameThatEqualsAnExamIsANewExamToo)
{
    choose(workbook(u"期中.xlsx"_s, two));
    import();
    EXPECT_EQ(dialogs.questions, QStringList());
    EXPECT_EQ(library.rows(u"select count(*) from 考试名称表 where 考试名称='期中'"_s), u"2"_s);
}

TEST_F(ExamImportScreen, AsksForTheExamsName)
{
    choose(workbook(u"期末.xlsx"_s, two));
    typeExam({});
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 请输入考试名称！"_s});
    EXPECT_EQ(backups(), QStringList());
}

TEST_F(ExamImportScreen, RefusesASheetWithAnotherFirstRowOrWithoutSubjects)
{
    choose(workbook(u"期末.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"总分"_s}}));
    press(u"Command1"_s);
    QTest::keyClick(find<QComboBox>(u"Combo1"_s), Qt::Key_Down);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, (QStringList{u"错误: 没有找到科目，程序退出！"_s,
                                          u"错误: 指定的工作表格式不对！\n\n"
                                          "前3列名称应为：班级,学号,姓名"_s}));
}

TEST_F(ExamImportScreen, BringsTheSheetForwardAndTakesItsFilterOff)
{
    choose(workbook(u"期末.xlsx"_s, two));
    excel::Workbook& book = applications[0]->Workbooks().Item(1);
    book.Worksheets().Item(u"一年级"_s).setAutoFilter({1, 1, 1, 5});
    book.Worksheets().Item(u"说明"_s).Activate();
    import();
    EXPECT_EQ(book.activeSheet().Name(), u"一年级"_s);
    EXPECT_FALSE(book.activeSheet().AutoFilterMode());
}

TEST_F(ExamImportScreen, UnknownStudentsAreAskedAboutUnlessAddedByTheTick)
{
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 8, u"赵六"_s, 80, 80}})));
    dialogs.expect(u"是否添加新学生： 1 班 8 号 ,赵六"_s, Answer::Cancel);
    import();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 学号=8"_s), QString());
    EXPECT_EQ(scoreRows(u"姓名"_s), u"赵六"_s) << "a refused student's scores come in";
    toggle(u"CheckAdd"_s);
    dialogs.expect(u"再次导入会使 1 人的成绩重复"_s, u"继续"_s);
    import();
    EXPECT_EQ(library.rows(u"select 姓名,类别代码,科类 from 信息表 where 学号=8"_s),
              u"赵六|1|文"_s);
    EXPECT_EQ(dialogs.questions.size(), 2);
}

TEST_F(ExamImportScreen, AnotherNameIsAskedAboutAndCancelEndsTheImport)
{
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芬"_s, 80, 80}})));
    dialogs.expect(u"[王芬] 与数据库中记录的不一致"_s, Answer::Cancel);
    import();
    EXPECT_EQ(dialogs.shown,
              QStringList{u"数据错误: "
                          "Excel表格中学生的学号和姓名： [王芬] 与数据库中记录的不一致！\n\n"
                          "Excel表格中：1班1号 姓名为：[王芬]\n"
                          "数据库中记录：1班1号 姓名为：[王芳]，二者不一致！\n\n"
                          "[是]用现有姓名替换掉数据库中记录的姓名\n"
                          "[否]保留数据库中记录的姓名,继续录入,即将[王芬]和[王芳]认为是同一人\n"
                          "[取消]终止当前导入\n"_s});
    EXPECT_EQ(scoreRows(u"*"_s), QString());
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_TRUE(form->isVisible());
}

TEST_F(ExamImportScreen, NameWithAnApostropheCannotBeTakenOver)
{
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"O'Neil"_s, 80, 80}})));
    dialogs.expect(u"[O'Neil]"_s, Answer::Yes);
    import();
    ASSERT_FALSE(dialogs.failures.isEmpty());
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Sub SetStuName/Mdl_MDB"_s));
    EXPECT_EQ(dialogs.shown.last(), u"导入完成！"_s);
    EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"O'Neil|80"_s);
}

TEST_F(ExamImportScreen, BadScoresHideTheScreenWhileTheirListIsShown)
{
    choose(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芳"_s, 160, -1}, {1, 2, u"陈静"_s, {}, 9}})));
    acceptFullMarks();
    boxes.expect([&](QDialog& window) {
        EXPECT_EQ(window.objectName(), u"Formgf"_s);
        EXPECT_EQ(window.findChild<QLabel*>(u"Label1"_s)->text(), u"共发现 3 处成绩有问题！"_s);
        EXPECT_FALSE(form->isVisible());
        window.close();
    });
    press(u"Command1"_s);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(state.ErrorCount, 3.0F);
    EXPECT_EQ(scoreRows(u"姓名,语文,数学"_s), u"王芳|160|-1 / 陈静|0|9"_s)
        << "bad scores come in as they stand on the sheet";
}

TEST_F(ExamImportScreen, TheListOfBadScoresDoesNotEndTheModalScreen)
{
    form->browse(workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芳"_s, 160, 90}})));
    boxes.expect([&](QDialog&) { press(u"Command1"_s); });
    acceptFullMarks();
    boxes.expect([](QDialog& list) { list.close(); });
    boxes.expect([&](QDialog& window) {
        EXPECT_EQ(&window, form.get());
        press(u"Command2"_s);
    });
    form->hide();
    form->exec();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
}

TEST_F(ExamImportScreen, ThreeThousandBadScoresAreOneList)
{
    Rows students;
    for (int number = 1; number <= 3000; ++number)
        students.push_back({1, number, u"学生"_s, 151, 90});
    choose(workbook(u"期末.xlsx"_s, sheet(students)));
    dialogs.always(u"与数据库中记录的不一致"_s, Answer::No);
    toggle(u"CheckAdd"_s);
    acceptFullMarks();
    boxes.expect([&](QDialog& window) {
        EXPECT_EQ(window.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s)->grid().Rows(), 3001);
        window.close();
    });
    press(u"Command1"_s);
    EXPECT_EQ(scoreRows(u"count(*)"_s), u"3000"_s);
    EXPECT_EQ(dialogs.shown.last(), u"导入完成！"_s);
}

TEST_F(ExamImportScreen, FileThatDoesNotExistIsNamedOnTheScreenAndTheImportIsSilent)
{
    form->browse(library.file(u"没有.xlsx"_s));
    EXPECT_EQ(text(u"LabelFault"_s), u"找不到文件 "_s + library.file(u"没有.xlsx"_s) + u"。"_s);
    EXPECT_TRUE(find<QLabel>(u"LabelFault"_s)->isVisible());
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ExamImportScreen, FileDeletedMeanwhileIsSaidOnTheScreenAndTheImportIsSilent)
{
    choose(workbook(u"期末.xlsx"_s, two));
    EXPECT_FALSE(find<QLabel>(u"LabelFault"_s)->isVisible());
    QFile::remove(library.file(u"期末.xlsx"_s));
    EXPECT_TRUE(QTest::qWaitFor([this] { return text(u"LabelFault"_s) != QString(); }));
    EXPECT_EQ(text(u"LabelFault"_s), u"文件已被删除或移走。"_s);
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(scoreRows(u"*"_s), QString());
}

TEST_F(ExamImportScreen, FileReplacedMeanwhileIsSaidAndTheWorkbookStaysAsItWasOpened)
{
    const QString path = workbook(u"期末.xlsx"_s, two);
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::ReadWrite));
    old.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime);
    old.close();
    choose(path);
    workbook(u"期末.xlsx"_s, sheet({{1, 1, u"王芳"_s, 1, 1}}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return text(u"LabelFault"_s).contains(u"改动"_s); }));
    EXPECT_EQ(text(u"LabelFault"_s), u"文件在打开之后改动过，要导入新的内容请重新浏览。"_s);
    import();
    EXPECT_EQ(scoreRows(u"姓名,语文"_s), u"王芳|120 / 陈静|-1"_s);
}

TEST_F(ExamImportScreen, WorkbookThatIsCutOffIsReportedAtTheImport)
{
    choose(cutOffWorkbook(u"坏.xlsx"_s));
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(sheets(), QStringList());
    EXPECT_EQ(exam()->currentText(), u"坏"_s);
    auto* rules = find<QLabel>(u"Label6"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rules->height() >= rules->sizeHint().height(); }))
        << "the sentence takes no room from the rules";
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown,
              (QStringList{text(u"LabelFault"_s) + tag, u"错误: 要分析的工作簿未打开！"_s}));
}

TEST_F(ExamImportScreen, WorkbookClosedByItsWindowIsReported)
{
    choose(workbook(u"期末.xlsx"_s, two));
    applications[0]->Workbooks().Item(1).Close();
    press(u"Command1"_s);
    ASSERT_EQ(dialogs.shown.size(), 2);
    EXPECT_TRUE(dialogs.shown[0].endsWith(tag));
    EXPECT_EQ(dialogs.shown[1], u"错误: 要分析的工作簿未打开！"_s);
}

TEST_F(ExamImportScreen, TheButtonClosesTheSpreadsheetAndTheFrameDoesNot)
{
    choose(workbook(u"期末.xlsx"_s, two));
    QTest::keyClick(form.get(), Qt::Key_Escape);
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    form->close();
    EXPECT_TRUE(isOpen(0));
    open();
    EXPECT_FALSE(find<QPushButton>(u"Command1"_s)->isEnabled());
    choose(library.file(u"期末.xlsx"_s));
    press(u"Command2"_s);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(applications[1]->isRunning());
    EXPECT_TRUE(isOpen(0));
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(ExamImportScreen, CancelStopsBetweenStudentsAndLeavesTheScreenUsable)
{
    Rows many;
    for (int number = 3; number <= 80000; ++number)
        many.push_back({1, number, u"学生"_s, 100, 90});
    choose(workbook(u"期末.xlsx"_s, sheet(many)));
    toggle(u"CheckAdd"_s);
    const support::ProgressCanceller canceller;
    import();
    EXPECT_EQ(canceller.text, u"导入数据..."_s);
    EXPECT_EQ(dialogs.shown, QStringList()) << "nothing is said to be complete";
    EXPECT_EQ(text(u"Label4"_s), QString());
    EXPECT_EQ(scoreRows(u"count(*)"_s), u"0"_s);
    EXPECT_EQ(library.rows(u"select 考试名称 from 考试名称表 where 考试名称='期末'"_s), QString());
    EXPECT_GT(library.rows(u"select count(*) from 信息表"_s).toInt(), 2)
        << "students that were added stay";
    choose(workbook(u"补考.xlsx"_s, two));
    import();
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(scoreRows(u"count(*)"_s), u"2"_s);
}

TEST_F(ExamImportScreen, WhatItSaysIsShownAsItStands)
{
    EXPECT_EQ(find<QLabel>(u"Label4"_s)->textFormat(), Qt::PlainText);
}

} // namespace
