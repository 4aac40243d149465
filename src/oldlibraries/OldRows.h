#pragma once

#include <string_view>
#include <vector>

#include "oldlibraries/DataPage.h"
#include "oldlibraries/LongValues.h"
#include "oldlibraries/OldTable.h"

namespace oldlibraries {

/// Goes through the rows of a table in the order in which they came; deleted ones are left out, and
/// one that was moved stands where it was first.
///
///     OldRows rows(file, table);
///     while (rows.next()) rows.text(column);
///
/// Columns are counted from 0 in the order of the table's definition. All calls throw OldFileError
/// where the file is damaged.
class OldRows
{
public:
    OldRows(PageFile& file, const OldTable& table);

    /// Goes to the next row; false behind the last one.
    bool next();

    /// Also true for a row stored before the column came. A Boolean is never null.
    bool isNull(int column) const
    {
        return m_values[size_t(column)].data() == nullptr
               && m_table.columns[size_t(column)].type != OldType::Boolean;
    }
    bool boolean(int column) const;
    /// Of Byte, Integer and Long.
    qint64 integer(int column) const;
    /// Of Single (exactly its 32-bit value) and Double, and of DateTime as days since 1899-12-30.
    double real(int column) const;
    /// The bytes of a Text, which storedText() reads; they stay until the next row.
    std::string_view storedBytes(int column) const { return value(column); }
    /// Of Text and Memo as stored; of Guid, Decimal and Currency as they are written, with all
    /// decimals.
    QString text(int column);
    /// Of Binary (also of a type that is not known) and LongBinary.
    QByteArray bytes(int column);

private:
    bool nextPage();
    bool readPage(quint32 number);
    /// Finds the values of the row that stands at a place of the current page, there or where it
    /// was moved to.
    void takeRow();
    std::string_view movedRow(std::string_view pointer);
    void splitRow(std::string_view row);
    void checkOtherPage(const QByteArray& page);
    void checkEnd() const;
    [[noreturn]] void refuse() const;
    /// The bytes of a value; the file is refused if they are fewer than given.
    std::string_view value(int column, int leastSize = 0) const;
    QByteArray longBytes(int column);

    PageFile& m_file;
    const OldTable& m_table;
    /// The lowest number of a column of changing length.
    int m_firstVariable;
    LongValues m_longValues;
    PointedRows m_movedRows;
    std::vector<quint32> m_pages;
    size_t m_nextPage = 0;
    qint64 m_otherPages = 0;
    DataPage m_page;
    int m_row = -1;
    qint64 m_rowsFound = 0;
    /// Without an address for NULL.
    std::vector<std::string_view> m_values;
    /// Columns that the row knows, the first ones.
    size_t m_knownColumns = 0;
    /// Columns whose long value was asked for in this row.
    std::vector<bool> m_isLongRead;
};

} // namespace oldlibraries
