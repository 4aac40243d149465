#pragma once

#include <vector>

#include <QPointer>
#include <QTimer>

#include "workbooks/model/Application.h"
#include "workbooks/ui/WorkbookWindow.h"

namespace excel {

/// The windows of all open workbooks: each workbook of a visible spreadsheet instance gets one, and
/// loses it when it is closed or its instance hides or quits. Hears of the instances through
/// Application::observe as long as it lives, so that nobody else has to think of windows.
class WorkbookWindows : public QObject
{
    Q_OBJECT

public:
    explicit WorkbookWindows(Desktop desktop = {}, QObject* parent = nullptr);
    ~WorkbookWindows() override;

    /// Brings the windows in line with the workbooks. Runs by itself several times a second while
    /// there are windows, so that a workbook can be watched as it is filled.
    void sync();

    /// Closes all windows, asking for what was not saved; false if the user stopped that.
    bool closeAll() const;

    /// The window of a workbook, null if it has none.
    WorkbookWindow* windowOf(const Workbook& book) const;
    std::vector<WorkbookWindow*> windows() const;

Q_SIGNALS:
    /// The user chose a sheet in a workbook's window.
    void sheetChosen(excel::Workbook& book, const QString& sheet);

private:
    void noteChange(Application& application);
    void openMissing(Application& application);
    void open(Workbook& book);
    void closeIdle();
    bool isShown(const Workbook* book) const;

    Desktop m_desktop;
    Application::Observer m_former;
    std::vector<Application*> m_applications;
    std::vector<QPointer<WorkbookWindow>> m_windows;
    int m_made = 0;
    QTimer m_timer;
};

} // namespace excel
