#pragma once

#include <memory>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "workbench/ui/FormKaoShi.h"

namespace support {

using namespace Qt::StringLiterals;

/// The workbench over two exams in two streams.
class WorkbenchScreen : public testing::Test
{
protected:
    WorkbenchScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s);
        for (const QString& stream : {u"文"_s, u"理"_s}) {
            test.addExam(u"期中"_s, stream, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}});
            test.addExam(u"期末"_s, stream, 2, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}});
        }
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}, {u"总分"_s, 90}});
        test.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 80}, {u"总分"_s, 80}});
        test.reload();
        form =
            std::make_unique<workbench::FormKaoShi>(test.scores, screenDialogs, applications, grid);
        form->show();
    }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    void clickItem(const QString& list, int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        auto* widget = find<QListWidget>(list);
        QTest::mouseClick(widget->viewport(), Qt::LeftButton, keys,
                          widget->visualItemRect(widget->item(row)).center());
    }

    /// Picks an entry of a combo box from its opened list.
    void pick(const QString& name, const QString& entry)
    {
        auto* box = find<QComboBox>(name);
        const int index = box->findText(entry);
        ASSERT_GE(index, 0) << entry.toStdString();
        box->showPopup();
        box->view()->setCurrentIndex(box->model()->index(index, 0));
        QTest::keyClick(box->view(), Qt::Key_Return);
    }

    /// Reaches the first link of a label by the keyboard and follows it.
    void followLink(QLabel* label)
    {
        label->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(label->window()));
        label->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(label->hasFocus());
        QTest::keyClick(label, Qt::Key_Tab);
        ASSERT_TRUE(label->hasFocus()) << "Tab stays on the label while it has another link";
        QTest::keyClick(label, Qt::Key_Return);
    }

    /// Chooses "全", or the first or second stream.
    void chooseStream(int option)
    {
        QTest::mouseClick(find<QRadioButton>(u"OptionButton1_%1"_s.arg(option)), Qt::LeftButton, {},
                          QPoint(8, 8));
    }

    /// Doubles the scores that often, so that work on them lasts until its window comes up.
    void multiplyScores(int times)
    {
        const QString columns = u"班级,学号,姓名,类别代码,科类,id,考试名称,语文"_s;
        for (int time = 0; time < times; ++time)
            test.execute(
                u"insert into 成绩表(%1) select %1-%2 from 成绩表"_s.arg(columns).arg(time % 3));
    }

    QString sql() { return find<QPlainTextEdit>(u"Text1"_s)->toPlainText(); }

    // The real dialogs lie below the scripted ones, so that boxes reach the script.
    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"总分"_s}};
    excel::Applications applications;
    grid::FlexGrid grid;
    std::unique_ptr<workbench::FormKaoShi> form;
};

} // namespace support
