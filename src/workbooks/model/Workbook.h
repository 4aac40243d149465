#pragma once

#include <memory>
#include <vector>

#include <QString>

#include "workbooks/model/Loss.h"
#include "workbooks/model/Worksheet.h"

namespace excel {

/// Where a new sheet goes, seen from another one.
enum class Beside { Before, After };

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
        /// A new sheet beside another one of this workbook, in front, under the next free name
        /// "SheetN".
        Worksheet& Add(Beside side, const Worksheet& neighbour) const;

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
    SheetList Sheets() { return Worksheets(); }
    /// For readers: a sheet behind the last one, whatever its name.
    Worksheet& addSheet(const QString& name);
    /// All sheets, for writers.
    std::vector<const Worksheet*> sheets() const;

    /// The sheet in front; throws runtime::Error if there are no sheets.
    Worksheet& activeSheet();
    const Worksheet& activeSheet() const;
    void setActiveSheet(const Worksheet& sheet);

    /// True while nothing was changed since the workbook was made, read or saved.
    bool Saved() const;
    void setSaved(bool saved);
    /// Grows with every change, so that a window can tell whether to paint anew.
    quint64 revision() const { return m_changes.revision(); }

    /// What the file that it was read from holds beside what was read, in words for the user; empty
    /// for a workbook that was made here, and once it was saved.
    QStringList notKept() const;
    /// For readers: adds to `notKept`.
    void addLosses(const Losses& losses);

    /// Writes the workbook as an .xlsx file and belongs to that file from then on. Throws
    /// runtime::Error, as `writeXlsx` does.
    void SaveAs(const QString& path);

    /// Gives the content up without asking. Closing twice does nothing.
    void Close();
    bool isOpen() const { return m_open; }

private:
    friend class Worksheet;

    void check() const;
    bool hasSheet(const QString& name) const;
    QString freeName() const;
    void remove(const Worksheet& sheet);

    QString m_path;
    Changes m_changes;
    std::vector<std::unique_ptr<Worksheet>> m_sheets;
    std::vector<std::unique_ptr<Worksheet>> m_deleted; // screens may still hold references
    const Worksheet* m_active = nullptr;
    Losses m_losses;
    bool m_open = true;
};

} // namespace excel
