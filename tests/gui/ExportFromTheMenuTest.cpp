#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>

#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "workbooks/model/Workbook.h"

namespace {

using namespace Qt::StringLiterals;

/// The export within the program: with its columns on 自定义显示 and the window of its workbook.
class ExportFromTheMenu : public support::MainWindowFixture
{
protected:
    ExportFromTheMenu()
    {
        startWithExam();
        test.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 90}, {u"语文年名"_s, 1}});
    }

    static void pressOn(const QDialog& screen, const QString& name)
    {
        QTest::mouseClick(screen.findChild<QPushButton*>(name), Qt::LeftButton);
    }

    static QListWidget* list(const QDialog& screen, const QString& name)
    {
        return screen.findChild<QListWidget*>(name);
    }

    static void selectEverything(const QDialog& screen)
    {
        for (const QString& name : {u"ListKSMC"_s, u"ListKM"_s, u"ListBJ"_s})
            QTest::keyClick(list(screen, name), Qt::Key_A, Qt::ControlModifier);
    }

    /// Does this with the screen of the export, and leaves it by its button.
    void onScreen(const std::function<void(QDialog&)>& action)
    {
        boxes.expect([&](QDialog& screen) {
            EXPECT_EQ(screen.objectName(), u"FormDaoChu"_s);
            action(screen);
            pressOn(screen, u"Command2"_s);
        });
        item(u"mtEXCEL"_s)->trigger();
    }

    /// Ticks a column of 自定义显示, or takes its tick away, and saves.
    static void flipAndSave(const QDialog& columns, const QString& name)
    {
        auto* view = columns.findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
        for (int row = 1; row < view->grid().Rows(); ++row) {
            if (view->grid().TextMatrix(row, 0) == name) {
                view->select(row, 0, row, 0);
                view->setFocus();
                QTest::keyClick(view, Qt::Key_Space);
            }
        }
        pressOn(columns, u"Command1"_s);
    }

    /// The heading of the workbook in that window, joined by "|".
    static QString heading(const excel::WorkbookWindow& window)
    {
        const excel::Worksheet& sheet = window.workbook()->activeSheet();
        QStringList texts;
        for (int column = 1; column <= sheet.lastUsedColumn(); ++column)
            texts.append(sheet.Cells(1, column).text());
        return texts.join(u'|');
    }

    support::ModalBoxes boxes;
};

TEST_F(ExportFromTheMenu, TheWorkbookComesUpInAWindowOfItsOwnAndIsNotSaved)
{
    onScreen([](QDialog& screen) {
        selectEverything(screen);
        pressOn(screen, u"Command1"_s);
    });
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩导出完毕！"_s});
    ASSERT_EQ(books().size(), 1U);
    EXPECT_EQ(heading(*books()[0]), u"考试名称|班级|学号|姓名|语文|语名"_s);
    EXPECT_FALSE(books()[0]->workbook()->Saved());
}

TEST_F(ExportFromTheMenu, AListSavedBehindTheFormatIsThatOfTheNextExport)
{
    onScreen([this](QDialog& screen) {
        selectEverything(screen);
        boxes.expect([](QDialog& columns) {
            EXPECT_EQ(columns.objectName(), u"FormZDYXS"_s);
            EXPECT_EQ(columns.windowTitle(), u"自定义显示  导出成绩"_s);
            EXPECT_FALSE(columns.findChild<QComboBox*>(u"ComboKL"_s)->isVisible());
            EXPECT_FALSE(columns.findChild<QLabel*>(u"Label1"_s)->isVisible());
            flipAndSave(columns, u"班级"_s);
            columns.close();
        });
        pressOn(screen, u"Command3"_s);
        pressOn(screen, u"Command1"_s);
    });
    EXPECT_EQ(test.rows(u"select * from 自定义显示表"_s),
              u"导出成绩False|学号,姓名,考试名称,语文,语文年名"_s);
    EXPECT_EQ(test.dialogs.shown,
              (QStringList{u"成功保存 自定义显示项目 导出成绩False"_s, u"成绩导出完毕！"_s}));
    ASSERT_EQ(books().size(), 1U);
    EXPECT_EQ(heading(*books()[0]), u"学号|姓名|考试名称|语文|语名"_s);
}

TEST_F(ExportFromTheMenu, TheListOfTheChartIsSavedBesideTheOther)
{
    onScreen([this](QDialog& screen) {
        screen.findChild<QRadioButton*>(u"OptionZXT"_s)->setChecked(true);
        boxes.expect([](QDialog& columns) {
            flipAndSave(columns, u"语文"_s);
            columns.close();
        });
        pressOn(screen, u"Command3"_s);
    });
    EXPECT_EQ(test.rows(u"select * from 自定义显示表"_s),
              u"导出成绩True|班级,学号,姓名,考试名称,语文"_s);
}

TEST_F(ExportFromTheMenu, WhatWasChosenIsThereWhenTheScreenComesBack)
{
    onScreen([](QDialog& screen) {
        selectEverything(screen);
        QTest::keyClick(screen.findChild<QCheckBox*>(u"CheckNJJF"_s), Qt::Key_Space);
    });
    test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 100}});
    test.reload();
    test.scores.notifyChanged();
    onScreen([](QDialog& screen) {
        EXPECT_EQ(list(screen, u"ListKSMC"_s)->count(), 2);
        ASSERT_EQ(list(screen, u"ListKSMC"_s)->selectedItems().size(), 1);
        EXPECT_EQ(list(screen, u"ListKSMC"_s)->selectedItems()[0]->text(), u"期中"_s);
        EXPECT_TRUE(screen.findChild<QCheckBox*>(u"CheckNJJF"_s)->isChecked());
        EXPECT_EQ(screen.findChild<QComboBox*>(u"Combo2"_s)->currentText(), u"期中"_s);
        // Its close box is no other way out.
        screen.close();
    });
    onScreen(
        [](QDialog& screen) { EXPECT_EQ(list(screen, u"ListKSMC"_s)->selectedItems().size(), 1); });
}

TEST_F(ExportFromTheMenu, AnotherLibraryBeginsAnew)
{
    onScreen([](QDialog& screen) { selectEverything(screen); });
    const QString other = test.file(u"另一个.CJK"_s);
    ASSERT_TRUE(QFile::copy(path, other));
    test.dialogs.file = other;
    item(u"mfOpen"_s)->trigger();
    test.addStudent(7, 1, u"丙"_s, u"理"_s);
    test.reload();
    onScreen([](QDialog& screen) {
        EXPECT_EQ(list(screen, u"ListBJ"_s)->count(), 2);
        EXPECT_TRUE(list(screen, u"ListBJ"_s)->selectedItems().isEmpty());
        EXPECT_TRUE(list(screen, u"ListKSMC"_s)->selectedItems().isEmpty());
    });
}

} // namespace
