#pragma once

#include <string_view>

#include <QByteArray>

#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// A page of rows: of a table, of long values, or of the bits that say which pages a table uses.
/// Its rows stand from its end towards its front. No row reaches out of the page.
class DataPage
{
public:
    /// What the page says of whose it is, instead of the page of a table's definition.
    static constexpr quint32 ownedByLongValues = 0x4C41564C; // "LVAL"

    /// A page without rows.
    DataPage() = default;
    /// Throws OldFileError if the page is none of rows. Asks for the page only.
    DataPage(const PageFile& file, quint32 number, const QByteArray& page);
    DataPage(PageFile& file, quint32 number) : DataPage(file, number, file.page(number)) {}

    /// True for the bytes of a page of rows.
    static bool isDataPage(const QByteArray& page);

    /// The page of the definition of the table that the rows belong to, or ownedByLongValues.
    quint32 owner() const;
    int rowCount() const { return m_rowCount; }

    /// What stands in the place of a row.
    enum class Slot { Row, Deleted, Moved };
    Slot slot(int row) const;
    /// True for a pointer to a row's new place, also where a row was moved to and on from there.
    bool isPointer(int row) const;
    /// The bytes in a row's place; they are those of the page. For a moved row the pointer to its
    /// new place. Throws OldFileError.
    std::string_view bytes(int row) const;
    /// Throws OldFileError if one row reaches into another.
    void checkRows() const;

private:
    int entry(int row) const;
    int start(int row) const;
    int end(int row) const;
    int entriesEnd() const;
    [[noreturn]] void refuse() const;

    const PageFile* m_file = nullptr;
    quint32 m_number = 0;
    QByteArray m_page;
    int m_rowCount = 0;
};

} // namespace oldlibraries
