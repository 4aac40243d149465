#pragma once

#include <QInputMethodEvent>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "configuration/ui/FormSet.h"
#include "gui/ModalBoxes.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

/// A window with a grid MSFlexGrid1 and its editors, worked by real clicks and keys.
class EditedWindow
{
public:
    explicit EditedWindow(QWidget& shown) : window(shown) {}

    template <class Widget> Widget& find(const QString& name) const
    {
        auto* widget = window.findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return *widget;
    }

    grid::FlexGridView& view() const { return find<grid::FlexGridView>(u"MSFlexGrid1"_s); }
    QLineEdit& box() const { return find<QLineEdit>(u"Text1"_s); }
    QListWidget& list() const { return find<QListWidget>(u"List1"_s); }

    QString cell(int row, int col) const { return view().grid().TextMatrix(row, col); }

    void clickCell(int row, int col) const
    {
        view().scrollTo(view().model()->index(row, col));
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {},
                          view().visualRect(view().model()->index(row, col)).center());
    }

    void type(int row, int col, const QString& text) const
    {
        clickCell(row, col);
        box().selectAll();
        write(text);
    }

    /// By keys, and by an input method where no key has the letters.
    void write(const QString& text) const
    {
        const bool hasKeys =
            std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x7f; });
        if (hasKeys)
            return QTest::keyClicks(&box(), text);
        QInputMethodEvent committed;
        committed.setCommitString(text);
        QCoreApplication::sendEvent(&box(), &committed);
    }

    void pick(const QString& entry, Qt::KeyboardModifiers keys = {}) const
    {
        const QList<QListWidgetItem*> found = list().findItems(entry, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << entry.toStdString();
        list().scrollToItem(found.first());
        QTest::mouseClick(list().viewport(), Qt::LeftButton, keys,
                          list().visualItemRect(found.first()).center());
    }

    void press(const QString& name) const
    {
        QTest::mouseClick(&find<QPushButton>(name), Qt::LeftButton);
    }

    QWidget& window;
};

/// 分析设置 over the shipped settings of a library of two streams.
class SettingsScreen : public testing::Test
{
protected:
    SettingsScreen()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s, 2);
        test.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 150}});
        test.reload();
        show();
    }

    void show()
    {
        form = std::make_unique<configuration::FormSet>(test.scores, screenDialogs, nullptr);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        on.emplace(*form);
    }

    int rowOf(const QString& name) const
    {
        for (int row = 1; row < on->view().grid().Rows(); ++row) {
            if (on->cell(row, 0) == name)
                return row;
        }
        ADD_FAILURE() << name.toStdString();
        return -1;
    }

    void set(const QString& name, const QString& field, const QString& sqlValue)
    {
        test.execute(u"update 设置表 set %1=%2 where 名称='%3'"_s.arg(field, sqlValue, name));
        show();
    }

    QString stored(const QString& name)
    {
        return test.rows(
            u"select 设置, 加入综合分析, 自定义 from 设置表 where 名称='%1'"_s.arg(name));
    }

    widgets::ScreenDialogs screenDialogs;
    support::TestLibrary test{{u"语文"_s}};
    std::unique_ptr<configuration::FormSet> form;
    std::optional<EditedWindow> on;
};
