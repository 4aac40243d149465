#include "workbooks/model/Application.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/Error.h"
#include "workbooks/readers/Reader.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

Application::Observer& installedObserver()
{
    static Application::Observer observer;
    return observer;
}

} // namespace

Application::~Application()
{
    Quit();
}

Application::Observer Application::observe(Observer observer)
{
    return std::exchange(installedObserver(), std::move(observer));
}

void Application::changed()
{
    if (installedObserver())
        installedObserver()(*this);
}

int Application::BookList::Count() const
{
    m_application.check();
    return int(m_application.openBooks().size());
}

Workbook& Application::BookList::Item(int index) const
{
    if (index < 1 || index > Count())
        throw runtime::Error(u"没有打开第 %1 个工作簿。"_s.arg(index));
    return *m_application.openBooks()[size_t(index - 1)];
}

Workbook& Application::BookList::Open(const QString& path) const
{
    m_application.check();
    Workbook& book = m_application.keep(readWorkbook(path));
    m_application.changed();
    return book;
}

Workbook& Application::BookList::Add() const
{
    m_application.check();
    Workbook& book = m_application.keep(std::make_unique<Workbook>());
    for (int number = 1; number <= 3; ++number)
        book.addSheet(u"Sheet%1"_s.arg(number));
    book.setSaved(true);
    m_application.changed();
    return book;
}

Workbook& Application::BookList::Add(std::unique_ptr<Workbook> book) const
{
    m_application.check();
    Workbook& added = m_application.keep(std::move(book));
    m_application.changed();
    return added;
}

void Application::check() const
{
    if (!m_running)
        throw runtime::Error(u"电子表格已经退出。"_s);
}

std::vector<Workbook*> Application::openBooks() const
{
    std::vector<Workbook*> open;
    for (const std::unique_ptr<Workbook>& book : m_books) {
        if (book->isOpen())
            open.push_back(book.get());
    }
    return open;
}

Workbook& Application::keep(std::unique_ptr<Workbook> book)
{
    m_books.push_back(std::move(book));
    return *m_books.back();
}

Application::BookList Application::Workbooks()
{
    check();
    return BookList(*this);
}

bool Application::Visible() const
{
    check();
    return m_visible;
}

void Application::setVisible(bool visible)
{
    check();
    m_visible = visible;
    changed();
}

void Application::setScreenUpdating(bool updating)
{
    m_screenUpdating = updating;
    changed();
}

void Application::Quit()
{
    for (const std::unique_ptr<Workbook>& book : m_books)
        book->Close();
    if (!std::exchange(m_running, false))
        return;
    changed();
}

Application& OpenExcel(Applications& applications)
{
    const auto answering =
        std::find_if(applications.rbegin(), applications.rend(),
                     [](const auto& application) { return application->isRunning(); });
    if (answering != applications.rend())
        return **answering;
    applications.push_back(std::make_unique<Application>());
    applications.back()->setVisible(true);
    return *applications.back();
}

} // namespace excel
