#pragma once

#include <QtGlobal>

#include "workbooks/readers/ReadError.h"

namespace excel {

/// A workbook with more formats than this is refused.
constexpr size_t mostStyles = 200'000;

/// What reading one file may cost at most, so that no file, however made, takes the machine down.
/// Each call takes from what is left and throws ReadFailure when that is used up.
class Budget
{
public:
    /// Filled cells; also merged ranges and columns, which cost as much.
    void takeCells(qint64 count) { take(m_cells, count); }
    /// A new page of rows, which costs the memory of about as many cells.
    void takePage() { take(m_cells, 200); }
    /// UTF-16 units of all texts.
    void takeText(qint64 units) { take(m_text, units); }
    /// Texts of the shared table.
    void takeTexts(qint64 count) { take(m_texts, count); }
    /// Bytes that come out of a zip file.
    void takeBytes(qint64 bytes) { take(m_bytes, bytes); }
    /// Records of an .xls file; they can be read more than once if sheets overlap.
    void takeRecords(qint64 count) { take(m_records, count); }
    /// Elements of XML and their attributes.
    void takeMarkup(qint64 count) { take(m_markup, count); }
    void takeSheets(qint64 count) { take(m_sheets, count); }

private:
    static void take(qint64& left, qint64 count)
    {
        left -= count;
        if (left < 0)
            throw ReadFailure{Fault::TooLarge};
    }

    qint64 m_cells = 2'500'000;
    qint64 m_text = 50'000'000;
    qint64 m_texts = 2'000'000;
    qint64 m_bytes = 160'000'000;
    qint64 m_records = 20'000'000;
    qint64 m_markup = 14'000'000;
    qint64 m_sheets = 1024;
};

} // namespace excel
