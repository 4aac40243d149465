#include "workbooks/readers/CompoundFile.h"

#include <algorithm>

#include <QtEndian>

#include "workbooks/readers/ReadError.h"

namespace excel {

using runtime::ByteCursor;

namespace {

constexpr qint64 headerSize = 512;
constexpr quint32 endOfChain = 0xFFFFFFFE;
constexpr quint32 largestSector = 0xFFFFFFFA;
constexpr qint64 headerTableSectors = 109;
constexpr qint64 miniStreamBound = 4096;
constexpr int entrySize = 128;
constexpr int streamType = 2;
constexpr int rootType = 5;
constexpr qint64 untilEnd = -1;

[[noreturn]] void refuseCutOff()
{
    throw ReadFailure{Fault::CutOffXls};
}

} // namespace

bool CompoundFile::hasMagic(const QByteArray& bytes)
{
    return bytes.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

CompoundFile::CompoundFile(const QByteArray& bytes) : m_bytes(bytes)
{
    if (bytes.size() < headerSize)
        refuseCutOff();
    ByteCursor header = at(30);
    const int shift = header.u16();
    const int miniShift = header.u16();
    if (shift < 7 || shift > 16 || miniShift < 4 || miniShift >= shift)
        refuseCutOff();
    m_sectorSize = qint64{1} << shift;
    m_miniSectorSize = qint64{1} << miniShift;
    // The first sector is the header's; the last one may lack its padding.
    m_sectorCount = (bytes.size() + m_sectorSize - 1) / m_sectorSize - 1;
    readTable();
    readDirectory();
}

qint64 CompoundFile::placeOf(quint32 sector) const
{
    if (sector >= largestSector || qint64(sector) >= m_sectorCount)
        refuseCutOff();
    return (qint64(sector) + 1) * m_sectorSize;
}

/// The sectors that hold the sector table: 109 in the header, the others in a chain of their own.
std::vector<quint32> CompoundFile::tableSectors() const
{
    const qint64 count = std::min<qint64>(at(44).u32(), m_sectorCount);
    std::vector<quint32> sectors;
    ByteCursor header = at(76);
    for (qint64 i = 0; i < std::min(count, headerTableSectors); ++i)
        sectors.push_back(header.u32());
    quint32 next = at(68).u32();
    const qint64 perSector = m_sectorSize / 4 - 1;
    while (qint64(sectors.size()) < count) {
        const qint64 place = placeOf(next);
        ByteCursor words = at(place);
        for (qint64 i = 0; i < perSector && qint64(sectors.size()) < count; ++i)
            sectors.push_back(words.u32());
        next = at(place + 4 * perSector).u32();
    }
    return sectors;
}

void CompoundFile::readTable()
{
    for (const quint32 sector : tableSectors()) {
        const qint64 place = placeOf(sector);
        ByteCursor words = at(place);
        for (qint64 left = std::min(m_sectorSize, qint64(words.left())) / 4; left > 0; --left)
            m_table.push_back(words.u32());
    }
}

QByteArray CompoundFile::chain(quint32 start, qint64 size) const
{
    QByteArray bytes;
    qint64 steps = 0;
    for (quint32 sector = start; sector != endOfChain && bytes.size() != size;) {
        if (++steps > m_sectorCount)
            refuseCutOff();
        const qint64 place = placeOf(sector);
        qint64 length = std::min(m_sectorSize, m_bytes.size() - place);
        if (size != untilEnd)
            length = std::min(length, size - bytes.size());
        bytes.append(m_bytes.constData() + place, length);
        if (sector >= m_table.size())
            refuseCutOff();
        sector = m_table[sector];
    }
    if (bytes.size() < size)
        refuseCutOff();
    return bytes;
}

QByteArray CompoundFile::miniChain(quint32 start, qint64 size) const
{
    QByteArray bytes;
    qint64 steps = 0;
    for (quint32 sector = start; bytes.size() < size;) {
        const qint64 place = qint64(sector) * m_miniSectorSize;
        if (++steps > qint64(m_miniTable.size()) || sector >= m_miniTable.size()
            || place >= m_miniStream.size())
            refuseCutOff();
        const qint64 length =
            std::min({m_miniSectorSize, size - bytes.size(), m_miniStream.size() - place});
        bytes.append(m_miniStream.constData() + place, length);
        sector = m_miniTable[sector];
    }
    return bytes;
}

std::vector<quint32> CompoundFile::wordsOf(const QByteArray& bytes) const
{
    std::vector<quint32> words(size_t(bytes.size() / 4));
    qFromLittleEndian<quint32>(bytes.constData(), qsizetype(words.size()), words.data());
    return words;
}

CompoundFile::Entry CompoundFile::entryAt(std::string_view raw)
{
    const ByteCursor bytes(raw);
    const int nameBytes = std::clamp(bytes.at(64).u16(), 2, 64);
    Entry entry;
    ByteCursor name = bytes;
    for (int i = 0; i + 2 < nameBytes; i += 2)
        entry.name += QChar(name.u16());
    entry.type = bytes.at(66).u8();
    ByteCursor relatives = bytes.at(68);
    entry.left = relatives.u32();
    entry.right = relatives.u32();
    entry.child = relatives.u32();
    ByteCursor contents = bytes.at(116);
    entry.start = contents.u32();
    entry.size = contents.u32();
    return entry;
}

void CompoundFile::readDirectory()
{
    const QByteArray directory = chain(at(48).u32(), untilEnd);
    for (ByteCursor bytes{directory}; bytes.left() >= entrySize;)
        m_entries.push_back(entryAt(bytes.take(entrySize)));
    if (m_entries.empty() || m_entries[0].type != rootType)
        refuseCutOff();
    const quint32 miniTable = at(60).u32();
    if (at(64).u32() == 0 || miniTable >= largestSector)
        return;
    m_miniTable = wordsOf(chain(miniTable, untilEnd));
    m_miniStream = chain(m_entries[0].start, untilEnd);
}

/// Only what lies directly in the root: embedded objects bring streams of the same names.
std::vector<quint32> CompoundFile::rootChildren() const
{
    std::vector<quint32> found;
    std::vector<quint32> open{m_entries[0].child};
    std::vector<bool> seen(m_entries.size());
    while (!open.empty()) {
        const quint32 index = open.back();
        open.pop_back();
        if (index >= m_entries.size() || seen[index])
            continue;
        seen[index] = true;
        found.push_back(index);
        open.push_back(m_entries[index].left);
        open.push_back(m_entries[index].right);
    }
    return found;
}

const CompoundFile::Entry* CompoundFile::find(const QString& name) const
{
    for (const quint32 index : rootChildren()) {
        const Entry& entry = m_entries[index];
        if (entry.type == streamType && entry.name.compare(name, Qt::CaseInsensitive) == 0)
            return &entry;
    }
    return nullptr;
}

bool CompoundFile::contains(const QString& name) const
{
    return find(name) != nullptr;
}

QByteArray CompoundFile::stream(const QString& name) const
{
    const Entry* entry = find(name);
    if (entry == nullptr)
        throw ReadFailure{Fault::NoWorkbook};
    return entry->size < miniStreamBound ? miniChain(entry->start, entry->size)
                                         : chain(entry->start, entry->size);
}

} // namespace excel
