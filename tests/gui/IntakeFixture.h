#pragma once

#include <memory>
#include <vector>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "import/ui/IntakeScreen.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// An import screen over a library with 语文, 数学 and 总分 and with 王芳 and 陈静 in class 1 (文),
/// and workbook files for it.
class IntakeFixture : public testing::Test
{
protected:
    using Rows = std::vector<std::vector<runtime::Value>>;

    IntakeFixture()
    {
        library.execute(u"delete * from 总分公式"_s);
        library.execute(u"insert into 总分公式(总分,公式) values('总分','语文+数学')"_s);
        library.reload();
        owner.show();
    }

    void addClass()
    {
        library.addStudent(1, 1, u"王芳"_s, u"文"_s);
        library.addStudent(1, 2, u"陈静"_s, u"文"_s);
        library.reload();
    }

    /// Writes a workbook file whose first sheet "一年级" holds these rows, and gives its path.
    QString workbook(const QString& name, const Rows& rows)
    {
        excel::Workbook book;
        excel::Worksheet& sheet = book.addSheet(u"一年级"_s);
        for (size_t row = 0; row < rows.size(); ++row) {
            for (size_t column = 0; column < rows[row].size(); ++column)
                sheet.setCell(int(row) + 1, int(column) + 1, rows[row][column]);
        }
        book.addSheet(u"说明"_s).setCell(1, 1, u"说明"_s);
        book.SaveAs(library.file(name));
        return library.file(name);
    }

    /// A file of that name with the first half of a workbook.
    QString cutOffWorkbook(const QString& name)
    {
        QFile file(workbook(name, {{u"班级"_s, u"学号"_s, u"姓名"_s}}));
        EXPECT_TRUE(file.resize(file.size() / 2));
        return file.fileName();
    }

    template <class Widget> Widget* find(const QString& name)
    {
        Widget* found = form->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    QString text(const QString& name) { return find<QLabel>(name)->text(); }
    QString field(const QString& name) { return find<QLineEdit>(name)->text(); }

    QStringList sheets()
    {
        QStringList names;
        for (int i = 0; i < find<QComboBox>(u"Combo1"_s)->count(); ++i)
            names.append(find<QComboBox>(u"Combo1"_s)->itemText(i));
        return names;
    }

    void press(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    /// Ticks or unticks a box by its space key.
    void toggle(const QString& name) { QTest::keyClick(find<QWidget>(name), Qt::Key_Space); }

    /// Browses for a file by the button.
    void choose(const QString& path)
    {
        dialogs.file = path;
        press(u"Command3"_s);
    }

    /// What the open workbook of a spreadsheet instance is told about itself.
    bool isOpen(size_t instance) const
    {
        return applications[instance]->isRunning()
               && applications[instance]->Workbooks().Count() == 1;
    }

    QStringList backups() const { return QDir(library.folder.path()).entryList({u"*.bak"_s}); }

    /// Stands for the main window.
    QWidget owner;
    widgets::ScreenDialogs screenDialogs;
    TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    ScriptedDialogs& dialogs = library.dialogs;
    importing::Applications applications;
    ModalBoxes boxes;
    std::unique_ptr<importing::IntakeScreen> form;
};

} // namespace support
