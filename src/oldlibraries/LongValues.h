#pragma once

#include <string_view>

#include <QByteArray>

#include "oldlibraries/PointedRows.h"

namespace oldlibraries {

/// Memos and pictures of a table, which stand in the row if they are short and on pages of their
/// own if not.
class LongValues
{
public:
    LongValues(PageFile& file, quint32 definitionPage);

    /// All bytes of the value; `inRow` is what its row holds of it, `visit` says whether it was
    /// asked for ahead in this pass. Throws OldFileError.
    QByteArray bytes(std::string_view inRow, PointedRows::Visit visit);

private:
    enum class Pieces { One, Chain };

    QByteArray fromPages(RowPlace place, qsizetype size, Pieces pieces, PointedRows::Visit visit);
    [[noreturn]] void refuse() const;

    PageFile& m_file;
    PointedRows m_rows;
};

} // namespace oldlibraries
