#include "oldlibraries/OldTable.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QSet>

#include "oldlibraries/OldText.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::ByteCursor;

namespace {

constexpr int definitionPageType = 2;
/// Bytes of a page ahead of what goes on from the page before.
constexpr int pageHead = 8;
constexpr int headSize = 63;
constexpr int indexSize = 12;
constexpr int columnSize = 25;
/// The old engine's own limits.
constexpr int mostColumns = 255;
constexpr int longestName = 64;
/// More than the largest definition takes; a chain of pages that is longer runs in a circle.
constexpr int mostPages = 64;

/// The pages of a definition as one piece; the first eight bytes are those of the first page.
QByteArray definitionBytes(PageFile& file, quint32 firstPage, const QString& table)
{
    QByteArray bytes;
    quint32 next = firstPage;
    for (int pages = 0; next != 0 || pages == 0; ++pages) {
        const QByteArray page = file.page(next);
        if (!isDefinitionPage(page) || pages >= mostPages)
            file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(table));
        next = ByteCursor(page).at(4).u32();
        bytes += bytes.isEmpty() ? page : page.mid(pageHead);
    }
    return bytes;
}

std::optional<OldType> typeOf(int code)
{
    switch (code) {
    case 0x01:
        return OldType::Boolean;
    case 0x02:
        return OldType::Byte;
    case 0x03:
        return OldType::Integer;
    case 0x04:
        return OldType::Long;
    case 0x05:
        return OldType::Currency;
    case 0x06:
        return OldType::Single;
    case 0x07:
        return OldType::Double;
    case 0x08:
        return OldType::DateTime;
    case 0x09:
        return OldType::Binary;
    case 0x0A:
        return OldType::Text;
    case 0x0B:
        return OldType::LongBinary;
    case 0x0C:
        return OldType::Memo;
    case 0x0F:
        return OldType::Guid;
    case 0x10:
        return OldType::Decimal;
    default:
        return std::nullopt;
    }
}

/// Bytes of a column's value at its fixed place.
int fixedSize(const OldColumn& column)
{
    switch (column.type) {
    case OldType::Text:
        return 2 * column.length;
    case OldType::Binary:
        return column.length;
    default:
        return sizeOf(column.type);
    }
}

/// One column but for its name, which stands behind all of them.
OldColumn readColumn(ByteCursor bytes)
{
    constexpr int fixedFlag = 0x01;
    constexpr int autoNumberFlag = 0x04;
    const std::optional<OldType> type = typeOf(bytes.u8());
    OldColumn column;
    column.type = type.value_or(OldType::Binary);
    column.isKnownType = type.has_value();
    bytes.skip(4);
    column.number = bytes.u16();
    const int variablePlace = bytes.u16();
    bytes.skip(3);
    column.scale = bytes.u8();
    bytes.skip(2);
    const int flags = bytes.u8();
    bytes.skip(5);
    const int fixedPlace = bytes.u16();
    const int bytesLong = bytes.u16();
    column.isFixed = (flags & fixedFlag) != 0 || column.type == OldType::Boolean;
    column.isAutoNumber = (flags & autoNumberFlag) != 0 && column.type == OldType::Long;
    column.place = column.isFixed ? fixedPlace : variablePlace;
    column.length = column.type == OldType::Text ? bytesLong / 2 : bytesLong;
    column.fixedSize = column.isFixed ? fixedSize(column) : 0;
    return column;
}

QString readName(PageFile& file, ByteCursor& bytes, const QString& table)
{
    const int size = bytes.u16();
    QString name = size > 2 * longestName ? QString() : utf16Text(bytes.take(size));
    if (!isName(name))
        file.refuseDamaged(u"表“%1”里有一列的名称读不出"_s.arg(table));
    return name;
}

/// The places where the head of a definition says what.
struct Head
{
    explicit Head(ByteCursor bytes)
        : rowCount(bytes.at(16).u32()),
          lastAutoNumber(qint32(bytes.at(20).u32())),
          columns(bytes.at(45).u16()),
          indexes(bytes.at(51).u32()),
          usedPages(RowPlace::fromPointer(bytes.at(55).u32()))
    {
    }

    quint32 rowCount;
    qint32 lastAutoNumber;
    int columns;
    quint32 indexes;
    RowPlace usedPages;
};

std::vector<OldColumn> readColumns(PageFile& file, ByteCursor bytes, const Head& head,
                                   const QString& table)
{
    bytes.seek(headSize + qint64(head.indexes) * indexSize);
    std::vector<OldColumn> columns;
    columns.reserve(size_t(head.columns));
    for (int i = 0; i < head.columns; ++i)
        columns.push_back(readColumn(ByteCursor(bytes.take(columnSize))));
    for (OldColumn& column : columns)
        column.name = readName(file, bytes, table);
    std::sort(columns.begin(), columns.end(),
              [](const OldColumn& a, const OldColumn& b) { return a.number < b.number; });
    return columns;
}

/// Two columns of one name, or of one number, are the work of no engine.
void checkColumns(PageFile& file, const OldTable& table)
{
    QSet<QString> names;
    QSet<int> numbers;
    for (const OldColumn& column : table.columns) {
        if (names.contains(column.name.toCaseFolded()) || numbers.contains(column.number))
            file.refuseDamaged(u"表“%1”里列“%2”不止一个"_s.arg(table.name, column.name));
        names.insert(column.name.toCaseFolded());
        numbers.insert(column.number);
    }
}

/// Columns that share the bytes of a row would make more of the file than it holds.
void checkPlaces(PageFile& file, const OldTable& table)
{
    std::vector<std::pair<int, int>> places; // the first byte, and the one behind the last
    QSet<int> variablePlaces;
    for (const OldColumn& column : table.columns) {
        const bool isLong = column.type == OldType::Memo || column.type == OldType::LongBinary;
        if (column.isFixed ? isLong : variablePlaces.contains(column.place))
            file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(table.name));
        if (!column.isFixed)
            variablePlaces.insert(column.place);
        else if (column.fixedSize > 0)
            places.emplace_back(column.place, column.place + column.fixedSize);
    }
    std::sort(places.begin(), places.end());
    for (size_t i = 1; i < places.size(); ++i) {
        if (places[i].first < places[i - 1].second)
            file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(table.name));
    }
}

} // namespace

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

int OldTable::find(const QString& columnName) const
{
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.compare(columnName, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

bool isDefinitionPage(const QByteArray& page)
{
    return page[0] == definitionPageType && page[1] == 1;
}

OldTable readTable(PageFile& file, quint32 definitionPage, const QString& name)
{
    const QByteArray definition = definitionBytes(file, definitionPage, name);
    try {
        const ByteCursor bytes(definition);
        const Head head(bytes);
        if (head.columns == 0 || head.columns > mostColumns)
            file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(name));
        OldTable table;
        table.name = name;
        table.columns = readColumns(file, bytes, head, name);
        table.rowCount = head.rowCount;
        table.lastAutoNumber = head.lastAutoNumber;
        table.definitionPage = definitionPage;
        table.usedPages = head.usedPages;
        checkColumns(file, table);
        checkPlaces(file, table);
        return table;
    } catch (const runtime::BytesCutOff&) {
        file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(name));
    }
}

} // namespace oldlibraries
