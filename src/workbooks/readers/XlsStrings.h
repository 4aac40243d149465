#pragma once

#include <string_view>
#include <vector>

#include <QString>

#include "platform/runtime/CodePage.h"
#include "workbooks/readers/Budget.h"
#include "workbooks/readers/XlsRecords.h"

namespace excel {

/// Reads texts out of a record and the CONTINUE records behind it.
class XlsTextReader
{
public:
    explicit XlsTextReader(const std::vector<std::string_view>& pieces) : m_pieces(pieces) {}

    int u8();
    int u16();
    quint32 u32();
    void skip(qint64 count);

    /// `length` characters that follow a flag byte, with the rich and phonetic parts behind them
    /// passed over. Where a text goes on in the next piece, a new flag byte stands.
    QString unicodeText(int length);
    /// `length` bytes.
    QString byteText(int length, const runtime::CodePage& page);

private:
    bool atEnd();
    std::string_view rest();
    QString characters(int length, bool wide);

    const std::vector<std::string_view>& m_pieces;
    size_t m_piece = 0;
    size_t m_at = 0;
};

} // namespace excel
