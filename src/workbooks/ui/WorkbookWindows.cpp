#include "workbooks/ui/WorkbookWindows.h"

#include <algorithm>

#include <QApplication>

namespace excel {

using namespace Qt::StringLiterals;

namespace {

constexpr int syncEveryMs = 200;

} // namespace

WorkbookWindows::WorkbookWindows(Desktop desktop, QObject* parent)
    : QObject(parent), m_desktop(std::move(desktop))
{
    m_former = Application::observe([this](Application& application) { noteChange(application); });
    connect(&m_timer, &QTimer::timeout, this, &WorkbookWindows::sync);
}

WorkbookWindows::~WorkbookWindows()
{
    Application::observe(m_former);
    for (const QPointer<WorkbookWindow>& window : m_windows)
        delete window.data();
}

void WorkbookWindows::noteChange(Application& application)
{
    if (!application.isRunning())
        std::erase(m_applications, &application);
    else if (std::find(m_applications.begin(), m_applications.end(), &application)
             == m_applications.end())
        m_applications.push_back(&application);
    sync();
}

bool WorkbookWindows::isShown(const Workbook* book) const
{
    for (Application* application : m_applications) {
        if (!application->Visible())
            continue;
        for (int i = 1; i <= application->Workbooks().Count(); ++i) {
            if (&application->Workbooks().Item(i) == book)
                return true;
        }
    }
    return false;
}

void WorkbookWindows::closeIdle()
{
    for (const QPointer<WorkbookWindow>& window : m_windows) {
        if (window != nullptr && window->workbook() != nullptr && !isShown(window->workbook()))
            window->giveUp();
    }
    std::erase_if(m_windows, [](const QPointer<WorkbookWindow>& window) {
        return window == nullptr || window->workbook() == nullptr;
    });
}

void WorkbookWindows::openMissing(Application& application)
{
    if (!application.Visible() || !application.ScreenUpdating())
        return;
    for (int i = 1; i <= application.Workbooks().Count(); ++i) {
        Workbook& book = application.Workbooks().Item(i);
        if (windowOf(book) == nullptr)
            open(book);
    }
}

/// A screen that waits for an answer stays in front of the workbook that it opened to be read. One
/// that it made is what the user wants to see next.
void WorkbookWindows::open(Workbook& book)
{
    if (book.path().isEmpty())
        ++m_made;
    auto* window = new WorkbookWindow(book, u"工作簿%1"_s.arg(m_made), m_desktop);
    m_windows.emplace_back(window);
    connect(window, &WorkbookWindow::sheetChosen, this, &WorkbookWindows::sheetChosen);
    QWidget* waiting = book.path().isEmpty() ? nullptr : QApplication::activeModalWidget();
    window->setAttribute(Qt::WA_ShowWithoutActivating, waiting != nullptr);
    window->show();
    QWidget* front = waiting != nullptr ? waiting : window;
    front->raise();
    front->activateWindow();
    // Some window managers give a new window the keyboard whatever it asks for.
    if (waiting != nullptr)
        QTimer::singleShot(syncEveryMs, waiting, [waiting] { waiting->activateWindow(); });
}

void WorkbookWindows::sync()
{
    closeIdle();
    for (Application* application : m_applications)
        openMissing(*application);
    for (const QPointer<WorkbookWindow>& window : m_windows)
        window->refresh();
    if (m_windows.empty())
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(syncEveryMs);
}

bool WorkbookWindows::closeAll() const
{
    const std::vector<WorkbookWindow*> all = windows();
    return std::all_of(all.begin(), all.end(),
                       [](WorkbookWindow* window) { return window->close(); });
}

WorkbookWindow* WorkbookWindows::windowOf(const Workbook& book) const
{
    for (WorkbookWindow* window : windows()) {
        if (window->workbook() == &book)
            return window;
    }
    return nullptr;
}

std::vector<WorkbookWindow*> WorkbookWindows::windows() const
{
    std::vector<WorkbookWindow*> all;
    for (const QPointer<WorkbookWindow>& window : m_windows) {
        if (window != nullptr)
            all.push_back(window);
    }
    return all;
}

} // namespace excel
