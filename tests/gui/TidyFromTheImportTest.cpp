#include "gui/ExamImportFixture.h"
#include "gui/MainWindowFixture.h"
#include "import/ui/FormDaoRuXinXi.h"

namespace {

using namespace Qt::StringLiterals;

const QString wayOut = u"这张数据表不是导入要求的样子。点“整理”，可以由它整理出能导入的表。"_s;

/// The import of an exam whose workbook is not as it wants it.
class TidyFromTheImport : public support::ExamImportFixture
{
protected:
    /// Does this with the screen that the button opens.
    void onTidyScreen(const std::function<void(QDialog&)>& action)
    {
        boxes.expect([&](QDialog& screen) {
            EXPECT_EQ(screen.objectName(), u"TidyScreen"_s);
            action(screen);
            screen.close();
        });
        press(u"buttonTidy"_s);
    }

    const Rows foreign{{u"期末成绩"_s},
                       {u"班 级"_s, u"座号"_s, u"学号"_s, u"学生姓名"_s, u"语文(150)"_s},
                       {u"高一(1)班"_s, 7, 1, u"王 芳"_s, 120},
                       {u"高一(1)班"_s, 8, 2, u"陈静"_s, u"缺"_s}};
};

TEST_F(TidyFromTheImport, IsOfferedBesideTheRefusalOfASheet)
{
    choose(workbook(u"期末.xlsx"_s, foreign));
    EXPECT_EQ(text(u"LabelFault"_s), QString());
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前3列名称应为：班级,学号,姓名"_s});
    EXPECT_EQ(text(u"LabelFault"_s), wayOut);
    EXPECT_TRUE(find<QPushButton>(u"buttonTidy"_s)->isVisible());
}

TEST_F(TidyFromTheImport, IsOfferedWhereNoSubjectWasFound)
{
    choose(workbook(u"期末.xlsx"_s, {{u"班级"_s, u"学号"_s, u"姓名"_s, u"语"_s}}));
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 没有找到科目，程序退出！"_s});
    EXPECT_EQ(text(u"LabelFault"_s), wayOut);
}

TEST_F(TidyFromTheImport, IsNotOfferedWhereTheSheetIsAsWanted)
{
    choose(workbook(u"期末.xlsx"_s, two));
    typeExam({});
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 请输入考试名称！"_s});
    EXPECT_EQ(text(u"LabelFault"_s), QString());
}

TEST_F(TidyFromTheImport, WhatWasMadeIsImportedAsIfItHadBeenBrowsedTo)
{
    const QString path = workbook(u"期末.xlsx"_s, foreign);
    choose(path);
    onTidyScreen([&](QDialog& screen) {
        EXPECT_EQ(screen.findChild<QLineEdit*>(u"textBook"_s)->text(), path);
        EXPECT_FALSE(screen.findChild<QComboBox*>(u"comboGoal"_s)->isEnabled());
        QTest::keyClick(screen.findChild<QPushButton*>(u"buttonClose"_s), Qt::Key_Return);
    });
    EXPECT_EQ(field(u"Text1"_s), path);
    EXPECT_EQ(exam()->currentText(), u"期末"_s);
    EXPECT_NE(sheets().value(0), u"一年级"_s);
    EXPECT_FALSE(applications.back()->Workbooks().Item(1).Saved());
    EXPECT_TRUE(isOpen(0)) << "the school's workbook stays open";
    import();
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(scoreRows(u"姓名,考试名称,语文"_s), u"王芳|期末|120 / 陈静|期末|-1"_s);
}

TEST_F(TidyFromTheImport, WithoutAWorkbookItAsksForOne)
{
    onTidyScreen([](QDialog& screen) {
        EXPECT_EQ(screen.findChild<QLabel*>(u"labelCounts"_s)->text(), u"先打开要整理的工作簿。"_s);
    });
    EXPECT_EQ(field(u"Text1"_s), QString());
    EXPECT_FALSE(find<QPushButton>(u"Command1"_s)->isEnabled());
}

TEST_F(TidyFromTheImport, AWorkbookThatWasClosedMeanwhileIsAskedForAnew)
{
    choose(workbook(u"期末.xlsx"_s, foreign));
    applications[0]->Quit();
    onTidyScreen([](QDialog& screen) {
        EXPECT_EQ(screen.findChild<QLineEdit*>(u"textBook"_s)->text(), QString());
    });
}

TEST_F(TidyFromTheImport, AListOfStudentsIsTidiedForItsOwnImport)
{
    form = std::make_unique<importing::FormDaoRuXinXi>(library.scores, screenDialogs, applications,
                                                       &owner);
    form->show();
    choose(workbook(u"名单.xlsx"_s, {{u"名单"_s},
                                     {u"学号"_s, u"班级"_s, u"姓名"_s, u"出生日期"_s},
                                     {9, u"(1)班"_s, u"赵六"_s, u"2009.7.1"_s}}));
    press(u"Command1"_s);
    EXPECT_EQ(text(u"LabelFault"_s), wayOut);
    dialogs.shown.clear();
    onTidyScreen([](QDialog& screen) {
        QTest::keyClick(screen.findChild<QPushButton*>(u"buttonClose"_s), Qt::Key_Return);
    });
    press(u"Command1"_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(library.rows(u"select 班级,学号,出生时间 from 信息表 where 姓名='赵六'"_s),
              u"1|9|2009-07-01"_s);
}

/// 整理工作簿 in the menu.
class TidyFromTheMenu : public support::MainWindowFixture
{
protected:
    support::ModalBoxes boxes;
};

TEST_F(TidyFromTheMenu, LeadsToTheImport)
{
    startWithExam();
    excel::Workbook book;
    excel::Worksheet& sheet = book.addSheet(u"高一(1)班"_s);
    int column = 0;
    for (const QString& heading : {u"考生姓名"_s, u"学号"_s, u"语文"_s})
        sheet.setCell(1, ++column, heading);
    sheet.setCell(2, 1, u"甲"_s);
    sheet.setCell(2, 2, 1);
    sheet.setCell(2, 3, 99);
    book.SaveAs(test.file(u"期末.xlsx"_s));
    EXPECT_EQ(item(u"tidyWorkbook"_s)->text(), u"整理工作簿(&Z)…"_s);
    boxes.expect([this](QDialog& screen) {
        test.dialogs.file = test.file(u"期末.xlsx"_s);
        QTest::mouseClick(screen.findChild<QPushButton*>(u"buttonBrowse"_s), Qt::LeftButton);
        QTest::keyClick(screen.findChild<QPushButton*>(u"buttonClose"_s), Qt::Key_Return);
    });
    boxes.expect([](QDialog& screen) {
        EXPECT_EQ(screen.objectName(), u"FormDaoRu"_s);
        EXPECT_EQ(screen.findChild<QComboBox*>(u"Combo2"_s)->currentText(), u"期末"_s);
        EXPECT_EQ(books().size(), 1U) << "what was made stands in a window";
        screen.close();
    });
    item(u"tidyWorkbook"_s)->trigger();
    for (excel::WorkbookWindow* shown : books())
        shown->giveUp();
}

} // namespace
