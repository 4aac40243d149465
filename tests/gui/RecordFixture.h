#pragma once

#include <memory>

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "library/ui/StudentTreeView.h"
#include "maintenance/ui/FormXGXX.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// The screen of records over a library of two classes: 王芳 and 李四 (文), 陈静 (理). 王芳 has a
/// score, and a red photo.
class RecordFixture : public testing::Test
{
protected:
    static constexpr int PhotoRow = 6;

    RecordFixture()
    {
        test.addStudent(1, 1, u"王芳"_s, u"文"_s);
        test.addStudent(1, 2, u"李四"_s, u"文"_s);
        test.addStudent(2, 1, u"陈静"_s, u"理"_s);
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        store(1, u"王芳.png"_s, read(picture(u"王芳.png"_s, {30, 40}, Qt::red)));
        test.reload();
    }

    void open()
    {
        form = std::make_unique<maintenance::FormXGXX>(test.scores, screenDialogs, nullptr);
        show();
    }

    void openWithList()
    {
        form = std::make_unique<maintenance::FormXGXX>(test.scores, screenDialogs, nullptr);
        form->listWithoutPhoto();
        show();
    }

    void show()
    {
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        tree = find<library::StudentTreeView>(u"TreeView1"_s);
        view = find<grid::FlexGridView>(u"MSFlexGrid1"_s);
        box = find<grid::CellTextEditor>(u"Text1"_s);
        image = find<QLabel>(u"Image1"_s);
        list = find<QListWidget>(u"List1"_s);
    }

    template <class Widget> Widget* find(const QString& name) const
    {
        auto* widget = form->findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    /// A file with a picture of one colour.
    QString picture(const QString& name, const QSize& size, Qt::GlobalColor color) const
    {
        QImage drawn(size, QImage::Format_RGB32);
        drawn.fill(color);
        EXPECT_TRUE(drawn.save(test.file(name)));
        return test.file(name);
    }

    void store(qint64 id, const QString& name, const QByteArray& bytes)
    {
        test.execute(u"update 信息表 set 照片名='%1', 照片=x'%2' where ID=%3"_s.arg(
            name, QString::fromLatin1(bytes.toHex()), QString::number(id)));
    }

    void clickNode(int index, int student = -1) const
    {
        const QTreeWidgetItem* node = tree->topLevelItem(index);
        if (student >= 0)
            node = node->child(student);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(node).center());
    }

    void clickEntry(int row) const
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(row)).center());
    }

    void clickCell(int row, int col = 1) const
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(row, col)).center());
    }

    /// Types a text in the place of the cell's own.
    void type(int row, const QString& text, int col = 1) const
    {
        clickCell(row, col);
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty())
            QTest::keyClick(box, Qt::Key_Delete);
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, letter, Qt::NoModifier);
    }

    void press(const QString& name) const
    {
        QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
    }

    QString cell(int row, int col = 1) const { return view->grid().TextMatrix(row, col); }
    QString result() const { return find<QLabel>(u"LabelResult"_s)->text(); }
    QColor photoColor() const { return image->pixmap().toImage().pixelColor(5, 5); }
    QString selected() const
    {
        const QList<QTreeWidgetItem*> items = tree->selectedItems();
        return items.isEmpty() ? QString() : items.constFirst()->text(0);
    }
    QStringList listed() const
    {
        QStringList names;
        for (int i = 0; i < list->count(); ++i)
            names.append(list->item(i)->text());
        return names;
    }

    // The real dialogs lie below the scripted ones.
    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s}};
    std::unique_ptr<maintenance::FormXGXX> form;
    library::StudentTreeView* tree = nullptr;
    grid::FlexGridView* view = nullptr;
    grid::CellTextEditor* box = nullptr;
    QLabel* image = nullptr;
    QListWidget* list = nullptr;
};

} // namespace support
