#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "workbooks/model/Points.h"
#include "workbooks/model/Workbook.h"

namespace excel {

/// A spreadsheet instance with its open workbooks. Quitting one leaves the others' books open.
class Application
{
public:
    /// The open workbooks, counted from 1 in the order of their opening.
    class BookList
    {
    public:
        int Count() const;
        /// Throws runtime::Error if there is no such workbook.
        Workbook& Item(int index) const;
        /// Reads a workbook file. Throws ReadError with a sentence that says what is wrong with it.
        Workbook& Open(const QString& path) const;
        /// A new workbook with the sheets Sheet1 to Sheet3.
        Workbook& Add() const;
        /// Takes in a workbook that was put together elsewhere, as it is.
        Workbook& Add(std::unique_ptr<Workbook> book) const;

    private:
        friend class Application;
        explicit BookList(Application& application) : m_application(application) {}
        Application& m_application;
    };

    Application() = default;
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Hears of every instance: that it showed or hid itself, got a workbook, or quit.
    using Observer = std::function<void(Application&)>;
    /// Installs the one observer (the desktop's windows) and gives the former one back.
    static Observer observe(Observer observer);

    /// Points of a length in inches.
    static double InchesToPoints(double inches) { return inches * pointsPerInch; }

    /// Throws runtime::Error after Quit.
    BookList Workbooks();

    bool Visible() const;
    void setVisible(bool visible);

    /// False while a run fills workbooks that are to be shown when they are complete: windows open
    /// for them once it is true again.
    bool ScreenUpdating() const { return m_screenUpdating; }
    void setScreenUpdating(bool updating);

    /// Closes the workbooks without asking and ends the instance. Quitting twice does nothing.
    void Quit();
    /// False after Quit.
    bool isRunning() const { return m_running; }

private:
    void check() const;
    void changed();
    std::vector<Workbook*> openBooks() const;
    Workbook& keep(std::unique_ptr<Workbook> book);

    // Closed books stay: screens may still hold references to them.
    std::vector<std::unique_ptr<Workbook>> m_books;
    bool m_visible = false;
    bool m_screenUpdating = true;
    bool m_running = true;
};

/// Every spreadsheet instance that was started, the latest last.
using Applications = std::vector<std::unique_ptr<Application>>;

/// The latest instance that still answers, as it is; if there is none, a new one, made visible.
Application& OpenExcel(Applications& applications);

} // namespace excel
