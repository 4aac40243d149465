#pragma once

#include <memory>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include "export/ui/FormDaoChu.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// The screen over a library with two exams and two classes.
class ScoreExportFixture : public testing::Test
{
protected:
    ScoreExportFixture()
    {
        test.addStudent(1, 1, u"王芳"_s, u"文"_s);
        test.addStudent(1, 2, u"陈静"_s, u"文"_s);
        test.addStudent(10, 1, u"李明"_s, u"理"_s);
        test.addStudent(2, 1, u"赵强"_s, u"理"_s);
        addExam(u"期初"_s, 1);
        addExam(u"期中"_s, 2);
        addScores(u"期初"_s, 1, 1, 90, 2);
        addScores(u"期中"_s, 1, 1, 100, 1);
        addScores(u"期中"_s, 1, 2, 80, 2);
        addScores(u"期中"_s, 2, 1, 70, 1);
        test.reload();
        open();
    }

    void addExam(const QString& exam, int number)
    {
        for (const QString& stream : {u"文"_s, u"理"_s})
            test.addExam(exam, stream, number, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    }

    void addScores(const QString& exam, double classNumber, double number, double score, int rank)
    {
        test.addScores(exam, classNumber, number,
                       {{u"考试编号"_s, exam == u"期初"_s ? 1 : 2},
                        {u"语文"_s, score},
                        {u"语文年名"_s, rank},
                        {u"总分"_s, score},
                        {u"总分年名"_s, rank}});
    }

    void open()
    {
        form = std::make_unique<exporting::FormDaoChu>(test.scores, screenDialogs, applications,
                                                       nullptr);
        QObject::connect(form.get(), &exporting::FormDaoChu::columnsRequested,
                         [this](const QString& item, const QString& key) {
                             columnsRequested.append(item + u'|' + key);
                         });
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    QListWidget* list(const QString& name) { return find<QListWidget>(name); }
    QComboBox* combo(const QString& name) { return find<QComboBox>(name); }

    QStringList items(const QString& name)
    {
        QStringList texts;
        for (int i = 0; i < list(name)->count(); ++i)
            texts.append(list(name)->item(i)->text());
        return texts;
    }

    QStringList examsOf(const QString& name)
    {
        QStringList texts;
        for (int i = 0; i < combo(name)->count(); ++i)
            texts.append(combo(name)->itemText(i));
        return texts;
    }

    QStringList selected(const QString& name)
    {
        QStringList texts;
        for (const QListWidgetItem* item : list(name)->selectedItems())
            texts.append(item->text());
        return texts;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    void toggle(const QString& name) { QTest::keyClick(find<QWidget>(name), Qt::Key_Space); }

    /// Adds an entry of a list to those that are selected, or takes it away, by Ctrl and a click.
    void click(const QString& name, const QString& text)
    {
        QListWidget* entries = list(name);
        const QListWidgetItem* item = entries->findItems(text, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr) << text.toStdString();
        QTest::mouseClick(entries->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          entries->visualItemRect(item).center());
    }

    void selectAll(const QString& name)
    {
        list(name)->setFocus();
        QTest::keyClick(list(name), Qt::Key_A, Qt::ControlModifier);
    }

    void selectEverything()
    {
        for (const QString& name : {u"ListKSMC"_s, u"ListKM"_s, u"ListBJ"_s})
            selectAll(name);
    }

    /// By keys.
    void chooseTheChart()
    {
        find<QRadioButton>(u"Option2"_s)->setFocus();
        QTest::keyClick(find<QRadioButton>(u"Option2"_s), Qt::Key_Down);
        EXPECT_TRUE(find<QRadioButton>(u"OptionZXT"_s)->isChecked());
    }

    void type(const QString& name, const QString& text)
    {
        auto* field = find<QLineEdit>(name);
        field->selectAll();
        QTest::keyClicks(field, text);
    }

    /// The texts of the first columns of a row, joined by "|".
    static QString row(const excel::Worksheet& sheet, int number, int columns)
    {
        QStringList texts;
        for (int column = 1; column <= columns; ++column)
            texts.append(sheet.Cells(number, column).text());
        return texts.join(u'|');
    }

    excel::Worksheet& sheet(int book = 1)
    {
        return applications.at(0)->Workbooks().Item(book).Worksheets().Item(1);
    }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"数学"_s, u"总分"_s}};
    excel::Applications applications;
    std::unique_ptr<exporting::FormDaoChu> form;
    QStringList columnsRequested;
};

} // namespace support
