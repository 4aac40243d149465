#pragma once

#include <memory>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/ModalBoxes.h"
#include "import/ui/TidyScreen.h"
#include "platform/grid/ui/FlexGridView.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// The screen that tidies workbooks, over a library with 语文 and 数学 and two students, and
/// workbooks of two-row headings for it.
class TidyFixture : public testing::Test
{
protected:
    using Rows = std::vector<std::vector<runtime::Value>>;

    TidyFixture()
    {
        QStandardPaths::setTestModeEnabled(true);
        QSettings().clear();
        library.addStudent(1, 1, u"王芳"_s, u"理"_s);
        library.addStudent(1, 2, u"李娜"_s, u"理"_s);
        library.addStudent(2, 1, u"赵六"_s, u"理"_s);
        library.reload();
        open();
    }

    void open(tidy::Goal goal = tidy::Goal::ExamScores)
    {
        screen = std::make_unique<importing::TidyScreen>(
            library.scores, screenDialogs, applications, goal,
            importing::TidyScreen::GoalChoice::Free, nullptr);
        screen->show();
        screen->activateWindow();
        (void)QTest::qWaitForWindowActive(screen.get());
    }

    QString workbook(const QString& name, const std::vector<std::pair<QString, Rows>>& sheets)
    {
        excel::Workbook book;
        for (const auto& [title, cells] : sheets) {
            excel::Worksheet& sheet = book.addSheet(title);
            for (size_t row = 0; row < cells.size(); ++row) {
                for (size_t column = 0; column < cells[row].size(); ++column)
                    sheet.setCell(int(row) + 1, int(column) + 1, cells[row][column]);
            }
        }
        book.SaveAs(library.file(name));
        return library.file(name);
    }

    /// A title, headings in two rows, two students and their sum.
    QString scores() { return workbook(u"期中.xlsx"_s, {{u"高一(1)班"_s, rows}}); }

    template <class Widget> Widget* find(const QString& name)
    {
        auto* found = screen->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    QComboBox* choice(int column) { return find<QComboBox>(u"comboColumn%1"_s.arg(column)); }
    QString text(const QString& name) { return find<QLabel>(name)->text(); }
    grid::FlexGridView* table(const QString& name) { return find<grid::FlexGridView>(name); }
    QPushButton* button(const QString& name) { return find<QPushButton>(name); }
    void press(const QString& name) { QTest::mouseClick(button(name), Qt::LeftButton); }

    /// Picks an entry from the open list of a box by keys.
    static void pick(QComboBox* box, const QString& entry)
    {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(box->view(), Qt::Key_Home);
        for (int i = 0; i < box->findText(entry); ++i)
            QTest::keyClick(box->view(), Qt::Key_Down);
        QTest::keyClick(box->view(), Qt::Key_Return);
        EXPECT_EQ(box->currentText(), entry);
    }

    /// The rows of the tidied workbook's first sheet, as texts.
    QString made() const
    {
        if (!screen->tidiedBook())
            return u"nothing"_s;
        const excel::Worksheet& sheet = screen->tidiedBook()->book->Worksheets().Item(1);
        QStringList lines;
        for (int row = 1; row <= sheet.lastUsedRow(); ++row) {
            QStringList cells;
            for (int column = 1; column <= sheet.lastUsedColumn(); ++column)
                cells.append(sheet.Cells(row, column).text());
            lines.append(cells.join(u'|'));
        }
        return lines.join(u" / "_s);
    }

    // The real dialogs lie below the scripted ones.
    widgets::ScreenDialogs screenDialogs;
    TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    importing::Applications applications;
    std::unique_ptr<importing::TidyScreen> screen;
    const Rows rows{{u"期中考试成绩"_s},
                    {u"学号"_s, u"姓名"_s, u"语文"_s, {}, u"数学"_s},
                    {{}, {}, u"分数"_s, u"名次"_s, u"分数"_s},
                    {1, u"王 芳"_s, 120, 1, 90},
                    {2, u"李娜"_s, u"缺"_s, {}, 88},
                    {u"合计"_s, {}, 120, {}, 178}};
};

} // namespace support
