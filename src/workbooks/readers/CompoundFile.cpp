#include "workbooks/readers/CompoundFile.h"

#include <algorithm>

#include <QtEndian>

#include "workbooks/readers/ReadError.h"

namespace excel {

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
    const int shift = qFromLittleEndian<quint16>(bytes.constData() + 30);
    const int miniShift = qFromLittleEndian<quint16>(bytes.constData() + 32);
    if (shift < 7 || shift > 16 || miniShift < 4 || miniShift >= shift)
        refuseCutOff();
    m_sectorSize = qint64{1} << shift;
    m_miniSectorSize = qint64{1} << miniShift;
    // The first sector is the header's; the last one may lack its padding.
    m_sectorCount = (bytes.size() + m_sectorSize - 1) / m_sectorSize - 1;
    readTable();
    readDirectory();
}

quint32 CompoundFile::word(qint64 at) const
{
    if (at < 0 || at + 4 > m_bytes.size())
        refuseCutOff();
    return qFromLittleEndian<quint32>(m_bytes.constData() + at);
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
    const qint64 count = std::min<qint64>(word(44), m_sectorCount);
    std::vector<quint32> sectors;
    for (qint64 i = 0; i < std::min(count, headerTableSectors); ++i)
        sectors.push_back(word(76 + 4 * i));
    quint32 next = word(68);
    const qint64 perSector = m_sectorSize / 4 - 1;
    while (qint64(sectors.size()) < count) {
        const qint64 place = placeOf(next);
        for (qint64 i = 0; i < perSector && qint64(sectors.size()) < count; ++i)
            sectors.push_back(word(place + 4 * i));
        next = word(place + 4 * perSector);
    }
    return sectors;
}

void CompoundFile::readTable()
{
    for (const quint32 sector : tableSectors()) {
        const qint64 place = placeOf(sector);
        const qint64 words = std::min(m_sectorSize, m_bytes.size() - place) / 4;
        for (qint64 i = 0; i < words; ++i)
            m_table.push_back(word(place + 4 * i));
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

void CompoundFile::readDirectory()
{
    const QByteArray directory = chain(word(48), untilEnd);
    for (qsizetype at = 0; at + entrySize <= directory.size(); at += entrySize) {
        const char* raw = directory.constData() + at;
        Entry entry;
        const int nameBytes = std::clamp<int>(qFromLittleEndian<quint16>(raw + 64), 2, 64);
        for (int i = 0; i + 2 < nameBytes; i += 2)
            entry.name += QChar(qFromLittleEndian<quint16>(raw + i));
        entry.type = uchar(raw[66]);
        entry.left = qFromLittleEndian<quint32>(raw + 68);
        entry.right = qFromLittleEndian<quint32>(raw + 72);
        entry.child = qFromLittleEndian<quint32>(raw + 76);
        entry.start = qFromLittleEndian<quint32>(raw + 116);
        entry.size = qFromLittleEndian<quint32>(raw + 120);
        m_entries.push_back(entry);
    }
    if (m_entries.empty() || m_entries[0].type != rootType)
        refuseCutOff();
    if (word(64) == 0 || word(60) >= largestSector)
        return;
    m_miniTable = wordsOf(chain(word(60), untilEnd));
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
