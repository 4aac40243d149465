#pragma once

#include <memory>
#include <vector>

#include <QString>

#include "platform/excel/Worksheet.h"

namespace excel {

/// A workbook. Once it was closed its object still stands, so that a screen that holds it gets a
/// runtime::Error from every call instead of reaching into nothing.
class Workbook
{
public:
    /// The sheets of a workbook, counted from 1.
    class SheetList
    {
    public:
        int Count() const;
        /// Throws runtime::Error if there is no such sheet. Names ignore case.
        Worksheet& Item(int index) const;
        Worksheet& Item(const QString& name) const;
        Worksheet& Item(const char*) const = delete;

    private:
        friend class Workbook;
        explicit SheetList(Workbook& book) : m_book(book) {}
        Workbook& m_book;
    };

    /// An empty workbook that belongs to no file, or to the file that it was read from.
    explicit Workbook(QString path = {}) : m_path(std::move(path)) {}
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    /// Full path of the file, empty if there is none.
    const QString& path() const;

    SheetList Worksheets();
    Worksheet& addSheet(const QString& name);

    /// The sheet in front; throws runtime::Error if there are no sheets.
    Worksheet& activeSheet();
    void setActiveSheet(const Worksheet& sheet);

    /// Gives the content up without asking. Closing twice does nothing.
    void Close();
    bool isOpen() const { return m_open; }

private:
    void check() const;

    QString m_path;
    std::vector<std::unique_ptr<Worksheet>> m_sheets;
    const Worksheet* m_active = nullptr;
    bool m_open = true;
};

} // namespace excel
