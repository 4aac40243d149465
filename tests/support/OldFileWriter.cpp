#include "support/OldFileWriter.h"

#include <algorithm>
#include <bit>

#include "oldlibraries/DataPage.h"
#include "oldlibraries/PageFile.h"
#include "platform/runtime/Error.h"
#include "support/OldHeader.h"

namespace support {

using namespace Qt::StringLiterals;
using oldlibraries::OldColumn;
using oldlibraries::OldType;
using runtime::Value;

namespace {

constexpr qsizetype pageSize = oldlibraries::PageFile::pageSize;
constexpr quint32 freePagesPage = 1;
constexpr quint32 objectsPage = 2;
constexpr quint32 firstFreePage = 3;

constexpr quint32 systemFlags = 0x80000000;
constexpr int tableObject = 1;
constexpr int containerObject = 3;
constexpr qint32 tablesContainer = 0x0F000001;

constexpr double creationDate = 39814.375; // 2009-01-01 09:00

bool isOfChangingLength(OldType type)
{
    return type == OldType::Text || type == OldType::Binary || type == OldType::Memo
           || type == OldType::LongBinary;
}

bool isFixed(const OldColumnPlan& plan)
{
    switch (plan.place) {
    case OldColumnPlan::Place::Fixed:
        return true;
    case OldColumnPlan::Place::Variable:
        return false;
    default:
        return !isOfChangingLength(plan.type);
    }
}

/// The byte that a definition has for a type.
quint8 typeCode(OldType type)
{
    constexpr quint8 codes[] = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07,
                                0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0F, 0x10};
    return codes[size_t(type)];
}

quint16 storedLength(const OldColumn& column)
{
    if (column.type == OldType::Memo || column.type == OldType::LongBinary)
        return 0;
    if (column.type == OldType::Boolean)
        return 1;
    return quint16(column.type == OldType::Text ? 2 * column.length : oldFixedSize(column));
}

QByteArray columnBytes(const OldColumn& column)
{
    constexpr int size = 25;
    constexpr int nullableFlag = 0x02;
    constexpr quint8 precision = 18;
    QByteArray bytes(size, '\0');
    bytes[0] = char(typeCode(column.type));
    put(bytes, 5, quint16(column.number));
    put(bytes, 7, quint16(column.isFixed ? 0 : column.place));
    put(bytes, 9, quint16(column.number));
    if (column.type == OldType::Decimal) {
        bytes[11] = char(precision);
        bytes[12] = char(column.scale);
    }
    bytes[15] = char(nullableFlag | (column.isFixed ? 1 : 0) | (column.isAutoNumber ? 4 : 0));
    bytes[16] = column.type == OldType::Text || column.type == OldType::Memo ? 1 : 0;
    put(bytes, 21, quint16(column.isFixed ? column.place : 0));
    put(bytes, 23, storedLength(column));
    return bytes;
}

QByteArray nameBytes(const QString& name)
{
    const QByteArray letters = oldText(name, OldTextForm::Plain);
    QByteArray bytes;
    append(bytes, quint16(letters.size()));
    return bytes + letters;
}

/// The day on which the file was made lies over the password.
QByteArray passwordBytes(const QString& password)
{
    constexpr qsizetype size = 40;
    QByteArray bytes = oldText(password, OldTextForm::Plain).leftJustified(size, '\0', true);
    QByteArray mask;
    append(mask, qint32(creationDate));
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = char(bytes[i] ^ mask[i % mask.size()]);
    return bytes;
}

} // namespace

struct OldFileWriter::Table
{
    QString name;
    TableKind kind = TableKind::User;
    quint32 definitionPage = 0;
    quint32 mapPage = 0;
    std::vector<OldColumn> columns;
    OldRowShape shape;
    quint32 rowCount = 0;
    qint32 lastAutoNumber = 0;

    std::vector<quint32> pages;
    std::optional<OldRowsPage> open;
    std::optional<OldRowsPage> movedTo;

    void add(const OldColumnPlan& plan);
    QByteArray definition() const;
};

void OldFileWriter::Table::add(const OldColumnPlan& plan)
{
    OldColumn column;
    column.name = plan.name;
    column.type = plan.type;
    column.length = plan.length;
    column.scale = plan.scale;
    column.isAutoNumber = plan.isAutoNumber;
    column.number = shape.columns++;
    column.isFixed = isFixed(plan);
    column.place = column.isFixed ? shape.fixedSize : shape.variableColumns++;
    if (column.isFixed)
        shape.fixedSize += oldFixedSize(column);
    columns.push_back(column);
}

QByteArray OldFileWriter::Table::definition() const
{
    constexpr qsizetype headSize = 63;
    QByteArray bytes(headSize, '\0');
    put(bytes, 0, quint16(0x0102));
    put(bytes, 16, rowCount);
    put(bytes, 20, lastAutoNumber);
    bytes[24] = 1;
    bytes[40] = kind == TableKind::System ? 'S' : 'N';
    put(bytes, 41, quint16(shape.columns));
    put(bytes, 43, quint16(shape.variableColumns));
    put(bytes, 45, quint16(columns.size()));
    put(bytes, 55, mapPage << 8);
    put(bytes, 59, mapPage << 8 | 1);
    for (const OldColumn& column : columns)
        bytes.append(columnBytes(column));
    for (const OldColumn& column : columns)
        bytes.append(nameBytes(column.name));
    append(bytes, quint16(0xFFFF));
    put(bytes, 8, quint32(bytes.size() - 8));
    return bytes;
}

OldFileWriter::OldFileWriter(const QString& path) : OldFileWriter(path, Header()) {}

OldFileWriter::OldFileWriter(const QString& path, Header header)
    : m_header(std::move(header)), m_sink(path, m_header.pageKey)
{
    m_sink.newPages(firstFreePage);
    addObject(tablesContainer, u"Tables"_s, containerObject, systemFlags);
    addObject(qint32(objectsPage), u"MSysObjects"_s, tableObject, systemFlags);
}

OldFileWriter::~OldFileWriter() = default;

void OldFileWriter::addObject(const QString& name, int type)
{
    addObject(qint32(systemFlags + m_objects.size()), name, type, 0);
}

void OldFileWriter::addObject(qint32 id, const QString& name, int type, quint32 flags)
{
    m_objects.push_back(
        {id, tablesContainer, name, type, creationDate, creationDate, qint32(flags), {}});
}

void OldFileWriter::addTable(const QString& name, const std::vector<OldColumnPlan>& columns,
                             TableKind kind)
{
    if (m_table)
        finish(*m_table);
    m_table = makeTable(name, m_sink.newPages(), columns, kind);
    addObject(qint32(m_table->definitionPage), name, tableObject,
              kind == TableKind::System ? systemFlags : 0);
}

std::unique_ptr<OldFileWriter::Table>
OldFileWriter::makeTable(const QString& name, quint32 definitionPage,
                         const std::vector<OldColumnPlan>& columns, TableKind kind)
{
    auto table = std::make_unique<Table>();
    table->name = name;
    table->kind = kind;
    table->definitionPage = definitionPage;
    table->mapPage = m_sink.newPages();
    for (const OldColumnPlan& column : columns)
        table->add(column);
    return table;
}

void OldFileWriter::addColumn(const OldColumnPlan& column)
{
    m_table->add(column);
}

void OldFileWriter::dropColumn(const QString& name)
{
    std::erase_if(m_table->columns, [&](const OldColumn& column) { return column.name == name; });
}

void OldFileWriter::addRow(const std::vector<Value>& values, RowKind kind)
{
    storeRow(*m_table, values, kind);
}

void OldFileWriter::storeRow(Table& table, const std::vector<Value>& values, RowKind kind)
{
    std::vector<OldPart> parts;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        parts.push_back(part(table.columns[i], values.at(i)));
        if (table.columns[i].isAutoNumber)
            table.lastAutoNumber = qMax(table.lastAutoNumber, qint32(values[i].toDouble()));
    }
    QByteArray row = oldRow(table.shape, parts);
    OldRowsPage::Flag flag = kind == RowKind::Deleted ? OldRowsPage::Deleted : OldRowsPage::Stored;
    if (kind == RowKind::Moved) {
        const quint32 pointer =
            place(table.pages, table.movedTo, table.definitionPage, row, OldRowsPage::MovedHere);
        row.clear();
        append(row, pointer);
        flag = OldRowsPage::Moved;
    }
    place(table.pages, table.open, table.definitionPage, row, flag);
    if (kind != RowKind::Deleted)
        ++table.rowCount;
}

/// Puts a row on the open page, or on a new one if it has no room.
quint32 OldFileWriter::place(std::vector<quint32>& pages, std::optional<OldRowsPage>& open,
                             quint32 owner, const QByteArray& row, OldRowsPage::Flag flag)
{
    if (open && !open->hasRoom(row.size())) {
        m_sink.write(open->number(), open->bytes());
        open.reset();
    }
    if (!open) {
        open.emplace(m_sink.newPages(), owner);
        pages.push_back(open->number());
    }
    return open->add(row, flag);
}

OldPart OldFileWriter::part(const OldColumn& column, const Value& value)
{
    if (column.type == OldType::Boolean)
        return {&column, false, value.toDouble() != 0};
    if (value.isNull())
        return {&column, true};
    switch (column.type) {
    case OldType::Text:
        if (column.isFixed)
            return {&column, false, false,
                    oldText(value.text().leftJustified(column.length), OldTextForm::Plain)};
        return {&column, false, false, oldText(value.text(), m_textForm)};
    case OldType::Memo:
        return {&column, false, false, longValue(oldText(value.text(), m_textForm))};
    case OldType::LongBinary:
        return {&column, false, false, longValue(value.toBytes())};
    default:
        return {&column, false, false, oldValue(column, value)};
    }
}

QByteArray OldFileWriter::longValue(const QByteArray& bytes)
{
    constexpr qsizetype largestInRow = 64;
    constexpr qsizetype largestPiece = 4076;
    constexpr quint32 inRowFlag = 0x80000000;
    constexpr quint32 onePieceFlag = 0x40000000;
    LongForm form = m_longForm;
    if (form == LongForm::Usual)
        form = bytes.size() <= largestInRow   ? LongForm::InRow
               : bytes.size() <= largestPiece ? LongForm::OnePiece
                                              : LongForm::Chain;
    const auto head = [&](quint32 flag, quint32 pointer) {
        QByteArray inRow;
        append(inRow, quint32(bytes.size()) | flag);
        append(inRow, pointer);
        append(inRow, quint32(0));
        return inRow;
    };
    if (form == LongForm::InRow)
        return head(inRowFlag, 0) + bytes;
    std::vector<quint32> pages;
    return form == LongForm::OnePiece ? head(
               onePieceFlag, place(pages, m_longValues, oldlibraries::DataPage::ownedByLongValues,
                                   bytes, OldRowsPage::Stored))
                                      : head(0, placeChain(bytes));
}

/// The pointer to the first piece.
quint32 OldFileWriter::placeChain(const QByteArray& bytes)
{
    constexpr qsizetype largestPiece = 4072;
    const qsizetype pieces = (bytes.size() + largestPiece - 1) / largestPiece;
    const quint32 first = m_sink.newPages(quint32(pieces));
    for (qsizetype i = 0; i < pieces; ++i) {
        const quint32 number = first + quint32(i);
        QByteArray piece;
        append(piece, i + 1 < pieces ? (number + 1) << 8 : 0);
        OldRowsPage page(number, oldlibraries::DataPage::ownedByLongValues);
        page.add(piece + bytes.mid(i * largestPiece, largestPiece));
        m_sink.write(number, page.bytes());
    }
    return first << 8;
}

void OldFileWriter::finish(Table& table)
{
    for (const std::optional<OldRowsPage>* open : {&table.open, &table.movedTo}) {
        if (*open)
            m_sink.write((*open)->number(), (*open)->bytes());
    }
    std::sort(table.pages.begin(), table.pages.end());
    OldRowsPage maps(table.mapPage, table.definitionPage);
    maps.add(oldUsedPages(m_sink, table.pages, m_mapForm));
    maps.add(oldUsedPages(m_sink, {}, OldMapForm::Bits));
    m_sink.write(table.mapPage, maps.bytes());
    writeDefinition(table);
}

void OldFileWriter::writeDefinition(const Table& table)
{
    constexpr qsizetype pageHead = 8;
    const QByteArray definition = table.definition();
    QByteArray page = definition.left(pageSize);
    quint32 number = table.definitionPage;
    for (qsizetype done = pageSize; done < definition.size(); done += pageSize - pageHead) {
        const quint32 next = m_sink.newPages();
        put(page, 4, next);
        m_sink.write(number, page);
        number = next;
        page = definition.left(2).leftJustified(pageHead, '\0')
               + definition.mid(done, pageSize - pageHead);
    }
    m_sink.write(number, page);
}

void OldFileWriter::writeHeader()
{
    QByteArray page = QByteArray("\0\1\0\0Standard Jet DB", 19).leftJustified(pageSize, '\0');
    put(page, 0x14, quint32(m_header.version));
    put(page, 0x3C, quint16(936)); // the code page
    put(page, 0x3E, m_header.pageKey);
    page.replace(0x42, 40, passwordBytes(m_header.password));
    put(page, 0x72, std::bit_cast<quint64>(creationDate));
    m_sink.write(0, withHeaderKey(page));
}

void OldFileWriter::writeObjects()
{
    const std::unique_ptr<Table> objects = makeTable(u"MSysObjects"_s, objectsPage,
                                                     {{u"Id"_s, OldType::Long},
                                                      {u"ParentId"_s, OldType::Long},
                                                      {u"Name"_s, OldType::Text, 255},
                                                      {u"Type"_s, OldType::Integer},
                                                      {u"DateCreate"_s, OldType::DateTime},
                                                      {u"DateUpdate"_s, OldType::DateTime},
                                                      {u"Flags"_s, OldType::Long},
                                                      {u"LvProp"_s, OldType::LongBinary}},
                                                     TableKind::System);
    for (const std::vector<Value>& object : m_objects)
        storeRow(*objects, object, RowKind::Stored);
    finish(*objects);
}

void OldFileWriter::save()
{
    if (m_table)
        finish(*m_table);
    m_table.reset();
    writeObjects();
    if (m_longValues)
        m_sink.write(m_longValues->number(), m_longValues->bytes());
    OldRowsPage freePages(freePagesPage, 0);
    freePages.add(oldUsedPages(m_sink, {}, OldMapForm::Bits));
    m_sink.write(freePagesPage, freePages.bytes());
    writeHeader();
    m_sink.close();
}

} // namespace support
