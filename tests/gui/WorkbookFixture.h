#pragma once

#include <QAction>
#include <QPointer>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"
#include "workbooks/model/Application.h"
#include "workbooks/ui/WorkbookWindow.h"
#include "workbooks/ui/WorksheetView.h"

namespace support {

using namespace Qt::StringLiterals;
using excel::Application;
using excel::Workbook;
using excel::WorkbookWindow;
using excel::Worksheet;
using excel::WorksheetView;

/// Two sheets that are seen and one that is hidden, in an instance of their own.
class WorkbookFixture : public testing::Test
{
protected:
    WorkbookFixture()
    {
        desktop.openFile = [this](const QUrl& url) {
            opened = url.toLocalFile();
            return answers;
        };
        desktop.hasPrinter = [] { return false; };
        Worksheet& first = sheet(1);
        first.setName(u"考试分析"_s);
        first.setCell(1, 1, u"班级"_s);
        first.setCell(1, 2, u"学号"_s);
        first.setCell(1, 3, u"姓名"_s);
        first.setCell(2, 1, 1);
        first.setCell(2, 2, u"0805"_s);
        first.setCell(2, 3, u"张三"_s);
        first.setCell(3, 1, 2);
        first.setCell(3, 2, 66.66666666666667);
        first.setCell(3, 3, true);
        sheet(2).setName(u"对比&分析"_s);
        sheet(2).setCell(1, 1, u"对比"_s);
        sheet(3).setVisibility(excel::Visibility::Hidden);
        first.Activate();
        alive = new WorkbookWindow(book, u"工作簿1"_s, desktop);
        window().show();
        window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    ~WorkbookFixture() override { delete alive.data(); }

    WorkbookWindow& window() { return *alive; }

    Worksheet& sheet(int number) { return book.Worksheets().Item(number); }
    template <class Widget> Widget* part(const QString& name)
    {
        return window().findChild<Widget*>(name);
    }
    WorksheetView& view() { return *part<WorksheetView>(u"SheetView"_s); }
    QTabBar& tabs() { return *part<QTabBar>(u"SheetTabs"_s); }
    QString shown(int row, int column)
    {
        return view().model()->index(row - 1, column - 1).data().toString();
    }
    void click(const QString& action)
    {
        auto* bar = part<QToolBar>(u"ToolBar"_s);
        QTest::mouseClick(bar->widgetForAction(part<QAction>(action)), Qt::LeftButton);
    }
    void clickCell(int row, int column, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(view().viewport(), Qt::LeftButton, keys,
                          view().visualRect(view().model()->index(row - 1, column - 1)).center());
    }

    QString file(const QString& name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    support::ScriptedDialogs dialogs;
    excel::Desktop desktop;
    QString opened;
    bool answers = true;
    Application application;
    Workbook& book = application.Workbooks().Add();
    QPointer<WorkbookWindow> alive;
};

} // namespace support
