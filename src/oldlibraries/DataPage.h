#pragma once

#include <optional>
#include <string_view>

#include <QByteArray>

#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// A page of rows: of a table, of long values, or of the bits that say which pages a table uses.
/// Its rows stand from its end towards its front, and none reaches into another.
class DataPage
{
public:
    /// What the page says of whose it is, instead of the page of a table's definition.
    static constexpr quint32 ownedByLongValues = 0x4C41564C; // "LVAL"

    DataPage() = default;
    /// Throws OldFileError if the page is none of rows, or its rows overlap.
    DataPage(PageFile& file, quint32 number);

    /// The page of the definition of the table that the rows belong to, or ownedByLongValues.
    quint32 owner() const;
    int rowCount() const { return m_rowCount; }

    /// What stands in the place of a row.
    enum class Slot { Row, Deleted, Moved };
    Slot slot(int row) const;
    /// The bytes in a row's place; they are those of the page. For a moved row the pointer to its
    /// new place.
    std::string_view bytes(int row) const;

private:
    int entry(int row) const;
    int start(int row) const;
    int end(int row) const;

    QByteArray m_page;
    int m_rowCount = 0;
};

} // namespace oldlibraries
