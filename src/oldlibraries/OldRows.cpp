#include "oldlibraries/OldRows.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "oldlibraries/OldNumbers.h"
#include "oldlibraries/OldText.h"
#include "oldlibraries/UsedPages.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

/// Bytes of a row ahead of its first column: how many columns the table had when it was stored.
constexpr int rowHead = 2;

/// What a row that was moved takes at least, with what points to it.
constexpr qint64 leastMovedBytes = 18;

/// A row is moved by leaving a pointer where it was; the old engine makes no chains of them that
/// are longer than this.
constexpr int mostMoves = 16;

bool isSet(std::string_view mask, int bit)
{
    return (quint8(mask[size_t(bit / 8)]) >> (bit % 8) & 1) != 0;
}

/// The parts of changing length of a row. Behind the last of them stands where each begins, the
/// first one last, and how many there are.
class VariableParts
{
public:
    /// A row without them.
    VariableParts() = default;

    /// `row` ends with their count. Throws BytesCutOff if they reach out of the row or into each
    /// other.
    explicit VariableParts(std::string_view row) : m_row(row)
    {
        const ByteCursor cursor(row);
        m_count = cursor.at(qint64(row.size()) - 2).u16();
        const qint64 end = qint64(row.size()) - 4 - qint64(2) * m_count;
        cursor.at(end); // the places themselves are within the row
        for (int i = 0; i < m_count; ++i) {
            if (begin(i) > begin(i + 1))
                throw runtime::BytesCutOff();
        }
        if (begin(0) < int(rowHead) || begin(m_count) > end)
            throw runtime::BytesCutOff();
    }

    int count() const { return m_count; }
    /// The byte of the row where a part begins; that of the last but one is where the last ends.
    int begin(int part) const
    {
        return qFromLittleEndian<quint16>(m_row.data() + m_row.size() - 4 - qsizetype(2) * part);
    }
    std::string_view bytes(int part) const
    {
        return m_row.substr(size_t(begin(part)), size_t(begin(part + 1) - begin(part)));
    }

private:
    std::string_view m_row;
    int m_count = 0;
};

/// Takes the marks off the end of a row that say which of its columns have a value.
std::string_view takeMarks(std::string_view& row, int columns)
{
    const int size = (columns + 7) / 8;
    ByteCursor cursor(row);
    cursor.skip(rowHead);
    cursor.skip(cursor.left() - size);
    const std::string_view marks = cursor.take(size);
    row.remove_suffix(size_t(size));
    return marks;
}

/// A value at its fixed place in a row, of which `fixed` is what stands ahead of the parts of
/// changing length.
std::string_view fixedValue(std::string_view fixed, const OldColumn& column)
{
    // A Boolean takes no bytes; its mark is its value.
    if (column.type == OldType::Boolean)
        return fixed.substr(0, 0);
    return ByteCursor(fixed).at(rowHead + column.place).take(column.fixedSize);
}

/// None for a part that came to the table behind the row.
std::string_view variableValue(const VariableParts& parts, const OldColumn& column)
{
    return column.place < parts.count() ? parts.bytes(column.place) : std::string_view();
}

int firstVariable(const OldTable& table)
{
    int first = std::numeric_limits<int>::max();
    for (const OldColumn& column : table.columns) {
        if (!column.isFixed)
            first = std::min(first, column.number);
    }
    return first;
}

} // namespace

OldRows::OldRows(PageFile& file, const OldTable& table)
    : m_file(file),
      m_table(table),
      m_firstVariable(firstVariable(table)),
      m_longValues(file, table.definitionPage),
      m_movedRows(file, table.definitionPage, table.definitionPage, leastMovedBytes),
      m_pages(usedPages(file, table.usedPages)),
      m_values(table.columns.size()),
      m_isLongRead(table.columns.size())
{
}

bool OldRows::next()
{
    do {
        if (++m_row >= m_page.rowCount() && !nextPage()) {
            checkEnd();
            return false;
        }
    } while (m_page.slot(m_row) == DataPage::Slot::Deleted);
    ++m_rowsFound;
    m_isLongRead.assign(m_isLongRead.size(), false);
    takeRow();
    return true;
}

bool OldRows::nextPage()
{
    do {
        if (m_nextPage == m_pages.size())
            return false;
    } while (!readPage(m_pages[m_nextPage++]) || m_page.rowCount() == 0);
    m_row = 0;
    return true;
}

/// False for a page that is not one of the table's.
bool OldRows::readPage(quint32 number)
{
    const QByteArray page = m_file.page(number);
    if (!DataPage::isDataPage(page)) {
        checkOtherPage(page);
        return false;
    }
    m_page = DataPage(m_file, number, page);
    if (m_page.owner() != m_table.definitionPage) {
        checkOtherPage(page);
        return false;
    }
    m_page.checkRows();
    return true;
}

/// The list of a table's pages may hold one that has become another's; each page's owner stands on
/// it. Whether rows are missing shows at the end.
void OldRows::checkOtherPage(const QByteArray& page)
{
    constexpr int lastPageType = 5;
    if (page[0] < 0 || page[0] > lastPageType)
        refuse();
    m_otherPages += PageFile::pageSize;
    m_file.countReached(m_table.definitionPage, m_otherPages);
}

void OldRows::checkEnd() const
{
    if (m_otherPages > 0 && m_rowsFound < m_table.rowCount)
        m_file.refuseDamaged(u"表“%1”里有行找不到"_s.arg(m_table.name));
}

void OldRows::takeRow()
{
    try {
        const std::string_view bytes = m_page.bytes(m_row);
        splitRow(m_page.slot(m_row) == DataPage::Slot::Moved ? movedRow(bytes) : bytes);
    } catch (const runtime::BytesCutOff&) {
        refuse();
    }
}

std::string_view OldRows::movedRow(std::string_view pointer)
{
    for (int moves = 0; moves < mostMoves; ++moves) {
        m_movedRows.go(RowPlace::fromPointer(ByteCursor(pointer).u32()));
        if (!m_movedRows.isPointer())
            return m_movedRows.bytes();
        pointer = m_movedRows.bytes();
    }
    refuse();
}

void OldRows::splitRow(std::string_view row)
{
    const int columns = ByteCursor(row).u16();
    const std::string_view marks = takeMarks(row, columns);
    // A row stored before the first such column came may be without their places.
    const bool hasVariable = m_firstVariable < columns;
    const VariableParts variables = hasVariable ? VariableParts(row) : VariableParts();
    const std::string_view fixed = hasVariable ? row.substr(0, size_t(variables.begin(0))) : row;
    std::fill_n(m_values.begin(), m_knownColumns, std::string_view());
    m_knownColumns = 0;
    for (const OldColumn& column : m_table.columns) {
        if (column.number >= columns)
            break;
        const size_t i = m_knownColumns++;
        if (isSet(marks, column.number))
            m_values[i] =
                column.isFixed ? fixedValue(fixed, column) : variableValue(variables, column);
    }
}

std::string_view OldRows::value(int column, int leastSize) const
{
    const std::string_view found = m_values[size_t(column)];
    if (found.size() < size_t(leastSize))
        refuse();
    return found;
}

bool OldRows::boolean(int column) const
{
    return m_values[size_t(column)].data() != nullptr;
}

qint64 OldRows::integer(int column) const
{
    switch (m_table.columns[size_t(column)].type) {
    case OldType::Byte:
        return quint8(value(column, 1)[0]);
    case OldType::Integer:
        return qFromLittleEndian<qint16>(value(column, 2).data());
    default:
        return qFromLittleEndian<qint32>(value(column, 4).data());
    }
}

double OldRows::real(int column) const
{
    if (m_table.columns[size_t(column)].type == OldType::Single)
        return double(std::bit_cast<float>(qFromLittleEndian<quint32>(value(column, 4).data())));
    return std::bit_cast<double>(qFromLittleEndian<quint64>(value(column, 8).data()));
}

QString OldRows::text(int column)
{
    const OldColumn& description = m_table.columns[size_t(column)];
    const std::string_view bytes = value(column, sizeOf(description.type));
    switch (description.type) {
    case OldType::Memo: {
        const QByteArray memo = longBytes(column);
        return storedText({memo.constData(), size_t(memo.size())});
    }
    case OldType::Currency:
        return currencyText(qFromLittleEndian<qint64>(bytes.data()));
    case OldType::Guid:
        return guidText(bytes);
    case OldType::Decimal:
        return decimalText(ByteCursor(bytes), description.scale);
    default:
        return storedText(bytes);
    }
}

QByteArray OldRows::longBytes(int column)
{
    using Visit = PointedRows::Visit;
    const Visit visit = m_isLongRead[size_t(column)] ? Visit::Again : Visit::First;
    QByteArray found = m_longValues.bytes(value(column), visit);
    m_isLongRead[size_t(column)] = true;
    return found;
}

QByteArray OldRows::bytes(int column)
{
    const std::string_view found = value(column);
    if (m_table.columns[size_t(column)].type == OldType::LongBinary)
        return longBytes(column);
    return QByteArray(found.data(), qsizetype(found.size()));
}

void OldRows::refuse() const
{
    m_file.refuseDamaged(u"表“%1”里有一行读不出"_s.arg(m_table.name));
}

} // namespace oldlibraries
