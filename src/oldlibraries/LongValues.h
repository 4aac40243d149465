#pragma once

#include <string_view>

#include <QByteArray>

#include "oldlibraries/PageFile.h"

namespace oldlibraries {

/// Memos and pictures, which stand in the row if they are short and on pages of their own if not.
/// In a sound file no two values share bytes, so what is read for one pass over a table is at most
/// as long as the file: a file that makes more of itself is refused.
class LongValues
{
public:
    explicit LongValues(PageFile& file) : m_file(file), m_bytesLeft(file.size()) {}

    /// All bytes of the value; `inRow` is what its row holds of it. Throws OldFileError.
    QByteArray bytes(std::string_view inRow);

private:
    QByteArray fromPages(RowPlace place, qsizetype size, bool isChain);
    [[noreturn]] void refuse() const;

    PageFile& m_file;
    qint64 m_bytesLeft;
};

} // namespace oldlibraries
