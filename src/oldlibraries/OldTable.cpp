#include "oldlibraries/OldTable.h"

#include <algorithm>
#include <optional>

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

/// One column but for its name, which stands behind all of them. Throws for a type that nobody
/// knows.
OldColumn readColumn(PageFile& file, ByteCursor bytes, const QString& table)
{
    constexpr int fixedFlag = 0x01;
    constexpr int autoNumberFlag = 0x04;
    const std::optional<OldType> type = typeOf(bytes.u8());
    if (!type)
        file.refuseDamaged(u"表“%1”里有一列的类型不认识"_s.arg(table));
    OldColumn column;
    column.type = *type;
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
    column.isFixed = (flags & fixedFlag) != 0;
    column.isAutoNumber = (flags & autoNumberFlag) != 0 && *type == OldType::Long;
    column.place = column.isFixed ? fixedPlace : variablePlace;
    column.length = *type == OldType::Text ? bytesLong / 2 : bytesLong;
    return column;
}

QString readName(PageFile& file, ByteCursor& bytes, const QString& table)
{
    const int size = bytes.u16();
    QString name = size > 2 * longestName ? QString() : utf16Text(bytes.take(size));
    if (name.isEmpty())
        file.refuseDamaged(u"表“%1”里有一列的名称读不出"_s.arg(table));
    return name;
}

/// The places where the head of a definition says what.
struct Head
{
    explicit Head(ByteCursor bytes)
        : rowCount(bytes.at(16).u32()),
          lastAutoNumber(qint32(bytes.at(20).u32())),
          variableColumns(bytes.at(43).u16()),
          columns(bytes.at(45).u16()),
          indexes(bytes.at(51).u32()),
          usedPages(RowPlace::fromPointer(bytes.at(55).u32()))
    {
    }

    quint32 rowCount;
    qint32 lastAutoNumber;
    int variableColumns;
    int columns;
    quint32 indexes;
    RowPlace usedPages;
};

std::vector<OldColumn> readColumns(PageFile& file, ByteCursor bytes, const Head& head,
                                   const QString& table)
{
    bytes.seek(headSize + qint64(head.indexes) * indexSize);
    std::vector<OldColumn> columns;
    for (int i = 0; i < head.columns; ++i)
        columns.push_back(readColumn(file, ByteCursor(bytes.take(columnSize)), table));
    for (OldColumn& column : columns)
        column.name = readName(file, bytes, table);
    std::sort(columns.begin(), columns.end(),
              [](const OldColumn& a, const OldColumn& b) { return a.number < b.number; });
    return columns;
}

/// Two columns of one name, or of one number, are the work of no engine.
void checkColumns(PageFile& file, const OldTable& table)
{
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const OldColumn& column = table.columns[i];
        const bool sameNumber = i > 0 && table.columns[i - 1].number == column.number;
        if (sameNumber || table.find(column.name) != int(i))
            file.refuseDamaged(u"表“%1”里列“%2”不止一个"_s.arg(table.name, column.name));
    }
}

} // namespace

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
        table.variableColumns = head.variableColumns;
        checkColumns(file, table);
        return table;
    } catch (const runtime::BytesCutOff&) {
        file.refuseDamaged(u"表“%1”的结构读不出"_s.arg(name));
    }
}

} // namespace oldlibraries
