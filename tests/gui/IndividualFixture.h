#pragma once

#include <memory>

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

#include "individual/ui/ChartSurface.h"
#include "individual/ui/FormGeRenChengJi.h"
#include "library/ui/StudentTreeView.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// The screen of individual analysis over a library of two classes and three exams. 王芳 sat all of
/// them, absent in 语文 of the second; 陈静 sat one.
class IndividualFixture : public testing::Test
{
protected:
    IndividualFixture()
    {
        QStandardPaths::setTestModeEnabled(true);
        QSettings().clear();
        wang = test.addStudent(1, 1, u"王芳"_s, u"理"_s);
        chen = test.addStudent(1, 2, u"陈静"_s, u"理"_s);
        test.addStudent(2, 1, u"曾国藩"_s, u"理"_s);
        test.addStudent(2, 2, u"李四"_s, u"文"_s);
        addExam(u"高一期中"_s, 1);
        addExam(u"高一期末"_s, 2);
        addExam(u"月考"_s, 3);
        addRanks(u"高一期中"_s, 1, 1, 1, {90, 2, 1});
        addRanks(u"高一期末"_s, 2, 1, 1, {-1, -1, -1});
        addRanks(u"月考"_s, 3, 1, 1, {70.5, 3, 2});
        addRanks(u"高一期中"_s, 1, 1, 2, {80, 3, 2});
        test.reload();
    }

    ~IndividualFixture() override { form.reset(); }

    void addExam(const QString& exam, int number)
    {
        test.addExam(exam, u"理"_s, number, {{u"语文"_s, 150}, {u"数学"_s, 150}});
    }

    struct Marks
    {
        double score;
        int grade;
        int ofClass;
    };

    void addRanks(const QString& exam, int examNumber, double classNumber, double number,
                  const Marks& marks)
    {
        test.addScores(exam, classNumber, number,
                       {{u"考试编号"_s, examNumber},
                        {u"语文"_s, marks.score},
                        {u"语文年名"_s, marks.grade},
                        {u"语文班名"_s, marks.ofClass},
                        {u"数学"_s, 100},
                        {u"数学年名"_s, 1},
                        {u"数学班名"_s, 1}});
    }

    void open()
    {
        form.reset();
        form = std::make_unique<individual::FormGeRenChengJi>(test.scores, screenDialogs,
                                                              applications, nullptr);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        tree = find<library::StudentTreeView>(u"TreeView1"_s);
        view = find<grid::FlexGridView>(u"MSFlexGrid1"_s);
        chart = find<individual::ChartSurface>(u"Picture1"_s);
        photo = find<QWidget>(u"FormZP"_s);
    }

    template <class Widget> Widget* find(const QString& name) const
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    QLabel* label(const QString& name) const { return form->findChild<QLabel*>(name); }

    /// The texts of the labels of an array that are in view, from 1 on.
    QStringList labels(const QString& array) const
    {
        QStringList texts;
        for (int i = 1; const QLabel* one = label(array + u'_' + QString::number(i)); ++i) {
            if (one->isVisible())
                texts.append(one->text());
        }
        return texts;
    }

    QStringList ranks() const { return labels(u"LabelMinCi"_s); }
    QStringList exams() const { return labels(u"LabelKSMC"_s); }

    void clickNode(int index, int student = -1) const
    {
        const QTreeWidgetItem* node = tree->topLevelItem(index);
        if (student >= 0)
            node = node->child(student);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(node).center());
    }

    void press(const QString& name, Qt::MouseButton button = Qt::LeftButton) const
    {
        auto* pressed = find<QAbstractButton>(name);
        // A box is pressed at its mark.
        QTest::mouseClick(pressed, button, {}, QPoint(8, pressed->height() / 2));
    }

    static void moveMouse(QWidget* widget, const QPoint& place)
    {
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }

    static void drag(QWidget* widget, const QPoint& from, const QPoint& to)
    {
        const QPoint target = widget->mapToGlobal(to);
        QTest::mousePress(widget, Qt::LeftButton, {}, from);
        moveMouse(widget, to);
        // What is dragged lies below the pointer by now.
        QTest::mouseRelease(widget, Qt::LeftButton, {}, widget->mapFromGlobal(target));
    }

    void trigger(const QString& name) const { find<QAction>(name)->trigger(); }

    QString cell(int row, int col) const { return view->grid().TextMatrix(row, col); }

    // The real dialogs lie below the scripted ones.
    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s, u"数学"_s}};
    excel::Applications applications;
    qint64 wang = 0;
    qint64 chen = 0;
    std::unique_ptr<individual::FormGeRenChengJi> form;
    library::StudentTreeView* tree = nullptr;
    grid::FlexGridView* view = nullptr;
    individual::ChartSurface* chart = nullptr;
    QWidget* photo = nullptr;
};

} // namespace support
