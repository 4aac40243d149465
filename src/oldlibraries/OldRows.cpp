#include "oldlibraries/OldRows.h"

#include <cmath>

#include <QDateTime>
#include <QUuid>

#include "oldlibraries/OldText.h"
#include "oldlibraries/UsedPages.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

/// A row is moved by leaving a pointer where it was; the old engine makes no chains of them that
/// are longer than this.
constexpr int mostMoves = 16;

/// Bytes that a value of this type takes; 0 where that differs from value to value.
int sizeOf(OldType type)
{
    switch (type) {
    case OldType::Boolean:
        return 0;
    case OldType::Byte:
        return 1;
    case OldType::Integer:
        return 2;
    case OldType::Long:
    case OldType::Single:
        return 4;
    case OldType::Currency:
    case OldType::Double:
    case OldType::DateTime:
        return 8;
    case OldType::Guid:
        return 16;
    case OldType::Decimal:
        return 17;
    case OldType::Binary:
    case OldType::Text:
    case OldType::LongBinary:
    case OldType::Memo:
        break;
    }
    return 0;
}

bool isSet(std::string_view mask, int bit)
{
    return (quint8(mask[size_t(bit / 8)]) >> (bit % 8) & 1) != 0;
}

/// A whole number of 128 bits, stored as four words, the highest first, as decimal digits.
QString wholeDigits(ByteCursor bytes)
{
    std::array<quint32, 4> words = {};
    for (quint32& word : words)
        word = bytes.u32();
    QString digits;
    while (std::any_of(words.begin(), words.end(), [](quint32 word) { return word != 0; })) {
        quint64 remainder = 0;
        for (quint32& word : words) {
            const quint64 part = remainder << 32 | word;
            word = quint32(part / 10);
            remainder = part % 10;
        }
        digits.prepend(QChar(u'0' + char16_t(remainder)));
    }
    return digits;
}

QString decimalText(ByteCursor bytes, int scale)
{
    const bool isNegative = bytes.u8() != 0;
    QString digits = wholeDigits(bytes).rightJustified(scale + 1, u'0');
    if (scale > 0)
        digits.insert(digits.size() - scale, u'.');
    return (isNegative ? u"-"_s : QString()) + digits;
}

QString guidText(std::string_view bytes)
{
    ByteCursor cursor(bytes);
    const quint32 first = cursor.u32();
    const auto second = quint16(cursor.u16());
    const auto third = quint16(cursor.u16());
    const std::string_view rest = cursor.take(8);
    const auto at = [&](size_t i) { return uchar(rest[i]); };
    return QUuid(first, second, third, at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7))
        .toString();
}

} // namespace

OldRows::OldRows(PageFile& file, const OldTable& table)
    : m_file(file),
      m_table(table),
      m_longValues(file),
      m_pages(usedPages(file, table.usedPages)),
      m_movedLeft(file.size()),
      m_parts(table.columns.size())
{
}

bool OldRows::next()
{
    do {
        if (++m_row >= m_page.rowCount() && !nextPage())
            return false;
    } while (m_page.slot(m_row) == DataPage::Slot::Deleted);
    takeRow();
    return true;
}

bool OldRows::nextPage()
{
    do {
        if (m_nextPage == m_pages.size())
            return false;
        m_page = DataPage(m_file, m_pages[m_nextPage++]);
        if (m_page.owner() != m_table.definitionPage)
            refuse();
    } while (m_page.rowCount() == 0);
    m_row = 0;
    return true;
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
        const RowPlace place = RowPlace::fromPointer(ByteCursor(pointer).u32());
        m_movedTo = DataPage(m_file, place.page);
        if (m_movedTo.owner() != m_table.definitionPage || place.row >= m_movedTo.rowCount())
            break;
        const std::string_view bytes = m_movedTo.bytes(place.row);
        m_movedLeft -= qint64(bytes.size());
        if (m_movedLeft < 0)
            break;
        if (m_movedTo.slot(place.row) != DataPage::Slot::Moved)
            return bytes;
        pointer = bytes;
    }
    refuse();
}

void OldRows::splitRow(std::string_view row)
{
    ByteCursor cursor(row);
    const int columns = cursor.u16();
    const int maskSize = (columns + 7) / 8;
    const std::string_view mask = cursor.at(qint64(row.size()) - maskSize).take(maskSize);
    // Behind the parts of changing length: where each of them begins, the last one first, and how
    // many there are.
    const qint64 countPlace = qint64(row.size()) - maskSize - 2;
    const bool hasVariable = m_table.variableColumns > 0;
    const int variables = hasVariable ? cursor.at(countPlace).u16() : 0;
    const auto begin = [&](int part) { return cursor.at(countPlace - 2 - 2 * part).u16(); };
    const int fixedEnd = hasVariable ? begin(0) : int(countPlace + 2);
    for (size_t i = 0; i < m_parts.size(); ++i) {
        const OldColumn& column = m_table.columns[i];
        m_parts[i] = {};
        if (column.number >= columns || !isSet(mask, column.number))
            continue;
        if (column.isFixed) {
            m_parts[i] = fixedPart(row, column, fixedEnd);
        } else if (column.place < variables) {
            const int from = begin(column.place);
            const std::string_view bytes = cursor.at(from).take(begin(column.place + 1) - from);
            m_parts[i] = {bytes.data(), int(bytes.size())};
        }
    }
}

OldRows::Part OldRows::fixedPart(std::string_view row, const OldColumn& column, int fixedEnd) const
{
    constexpr int fixedBegin = 2;
    const int from = fixedBegin + column.place;
    const int size = column.type == OldType::Text || column.type == OldType::Binary
                         ? column.length * (column.type == OldType::Text ? 2 : 1)
                         : sizeOf(column.type);
    if (from + size > fixedEnd || fixedEnd > int(row.size()))
        refuse();
    return {row.data() + from, size};
}

bool OldRows::isNull(int column) const
{
    return m_table.columns[size_t(column)].type != OldType::Boolean
           && m_parts[size_t(column)].data == nullptr;
}

std::string_view OldRows::part(int column) const
{
    const Part& found = m_parts[size_t(column)];
    // A value of fixed size may stand among the parts of changing length.
    if (found.size < sizeOf(m_table.columns[size_t(column)].type))
        refuse();
    return {found.data, size_t(found.size)};
}

bool OldRows::boolean(int column) const
{
    return m_parts[size_t(column)].data != nullptr;
}

qint64 OldRows::integer(int column) const
{
    const char* bytes = part(column).data();
    switch (m_table.columns[size_t(column)].type) {
    case OldType::Byte:
        return quint8(*bytes);
    case OldType::Integer:
        return qFromLittleEndian<qint16>(bytes);
    default:
        return qFromLittleEndian<qint32>(bytes);
    }
}

double OldRows::real(int column) const
{
    constexpr double currencyUnits = 10000;
    const char* bytes = part(column).data();
    switch (m_table.columns[size_t(column)].type) {
    case OldType::Single:
        return double(std::bit_cast<float>(qFromLittleEndian<quint32>(bytes)));
    case OldType::Currency:
        return double(qFromLittleEndian<qint64>(bytes)) / currencyUnits;
    default:
        return std::bit_cast<double>(qFromLittleEndian<quint64>(bytes));
    }
}

QString OldRows::text(int column)
{
    const std::string_view bytes = part(column);
    const OldColumn& description = m_table.columns[size_t(column)];
    switch (description.type) {
    case OldType::Memo: {
        const QByteArray memo = m_longValues.bytes(bytes);
        return storedText({memo.constData(), size_t(memo.size())});
    }
    case OldType::Guid:
        return guidText(bytes);
    case OldType::Decimal:
        return decimalText(ByteCursor(bytes), description.scale);
    default:
        return storedText(bytes);
    }
}

QByteArray OldRows::bytes(int column)
{
    const std::string_view found = part(column);
    if (m_table.columns[size_t(column)].type == OldType::LongBinary)
        return m_longValues.bytes(found);
    return QByteArray(found.data(), qsizetype(found.size()));
}

void OldRows::refuse() const
{
    m_file.refuseDamaged(u"表“%1”里有一行读不出"_s.arg(m_table.name));
}

} // namespace oldlibraries
