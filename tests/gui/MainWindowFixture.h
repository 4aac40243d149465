#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/grid/ui/FlexGridView.h"
#include "shell/ui/AFormMain.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "workbooks/ui/WorkbookWindow.h"

namespace support {

using namespace Qt::StringLiterals;

/// The main window, not started yet, and a library file with a student that it can open.
class MainWindowFixture : public testing::Test
{
protected:
    MainWindowFixture()
    {
        QStandardPaths::setTestModeEnabled(true);
        QSettings().clear();
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        path = test.scores.LibPath;
        test.scores.Conn.Close();
        test.scores.LibPath.clear();
        window = std::make_unique<shell::AFormMain>(test.scores, screenDialogs);
        window->show();
    }

    QAction* item(const QString& name)
    {
        auto* action = window->findChild<QAction*>(name);
        EXPECT_NE(action, nullptr) << name.toStdString();
        return action;
    }

    /// The name of the modal screen that the action opens, if any; it is closed at once.
    static QString screenOpenedBy(const std::function<void()>& action)
    {
        QString name;
        QTimer look;
        look.setSingleShot(true);
        QObject::connect(&look, &QTimer::timeout, &look, [&name] {
            QWidget* screen = QApplication::activeModalWidget();
            if (!screen)
                return;
            name = screen->objectName();
            screen->close();
        });
        look.start(0);
        action();
        return name;
    }

    /// Opens the library with an exam in it.
    void startWithExam()
    {
        window->start(path);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
        test.reload();
        test.scores.notifyChanged();
    }

    void press(const QString& name)
    {
        QTest::mouseClick(window->findChild<QPushButton*>(name), Qt::LeftButton);
    }

    QDockWidget* panel() { return window->findChild<QDockWidget*>(u"Panel"_s); }
    grid::FlexGridView* gridView()
    {
        return window->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
    }

    /// The windows of workbooks that are open.
    static std::vector<excel::WorkbookWindow*> books()
    {
        std::vector<excel::WorkbookWindow*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* book = qobject_cast<excel::WorkbookWindow*>(widget);
            if (book && book->isVisible())
                found.push_back(book);
        }
        return found;
    }

    bool menuEnabled(const QString& name) { return window->findChild<QMenu*>(name)->isEnabled(); }

    widgets::ScreenDialogs screenDialogs;
    TestLibrary test{{u"语文"_s}};
    QString path;
    std::unique_ptr<shell::AFormMain> window;
};

} // namespace support
