#pragma once

#include <string_view>

#include "oldlibraries/DataPage.h"

namespace oldlibraries {

/// The rows to which one kind of a table's pointers leads: those of rows that were moved, or of
/// long values. The file is refused if they lead to more bytes than it has; see
/// PageFile::countReached.
class PointedRows
{
public:
    /// `owner` is what the pages say of whose they are; `leastBytes` what a row takes at least,
    /// with what points to it.
    PointedRows(PageFile& file, quint32 definitionPage, quint32 owner, qint64 leastBytes);

    /// What is asked for again in one pass was counted the first time.
    enum class Visit { First, Again };

    /// Goes to a place. Throws OldFileError if no row of the owner stands there.
    void go(RowPlace place, Visit visit = Visit::First);
    /// True if the row was moved on; its bytes are the pointer then.
    bool isPointer() const { return m_page.isPointer(m_row); }
    /// Valid until the next go().
    std::string_view bytes() const { return m_page.bytes(m_row); }

private:
    PageFile& m_file;
    quint64 m_pointers;
    quint32 m_owner;
    qint64 m_leastBytes;
    qint64 m_reached = 0;
    quint32 m_number = 0xFFFFFFFF; // no pointer leads so far
    DataPage m_page;
    int m_row = 0;
};

} // namespace oldlibraries
