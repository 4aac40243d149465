#include "oldlibraries/fuzz/OldFileMutator.h"

#include <QtEndian>

#include "support/OldHeader.h"

namespace fuzz {

using support::ByteMutator;

namespace {

constexpr qsizetype pageSize = 4096;

enum PageType { DataPage = 1, DefinitionPage = 2 };

qsizetype u16(const QByteArray& bytes, qsizetype place)
{
    return place + 2 <= bytes.size() ? qFromLittleEndian<quint16>(bytes.constData() + place) : 0;
}

} // namespace

QByteArray OldFileMutator::mutated(QByteArray file)
{
    for (qsizetype left = 1 + m_random.below(4); left > 0; --left) {
        switch (m_random.below(24)) {
        case 0:
            mutateHeader(file);
            break;
        case 1:
            mutateSize(file);
            break;
        case 2:
        case 3:
            copyPage(file);
            break;
        case 4:
            file = m_random.mutated(file);
            break;
        default:
            mutatePage(file);
        }
    }
    return file;
}

void OldFileMutator::mutatePage(QByteArray& file)
{
    const qsizetype pages = file.size() / pageSize;
    if (pages == 0)
        return;
    // The first pages say where all others are.
    const qsizetype number = m_random.below(m_random.below(2) == 0 ? pages : qMin(pages, 24));
    const qsizetype page = number * pageSize;
    switch (m_random.below(16) == 0 ? 0 : file[page]) {
    case DataPage:
        mutateRows(file, page);
        break;
    case DefinitionPage:
        mutateDefinition(file, page);
        break;
    default:
        ByteMutator::put(file, page + m_random.below(pageSize), qsizetype{1} << m_random.below(3),
                         this->number(file));
    }
}

void OldFileMutator::mutateHeader(QByteArray& file)
{
    constexpr qsizetype from = 0x14;
    constexpr qsizetype size = 128;
    file = support::withHeaderKey(file);
    ByteMutator::put(file, from + m_random.below(size), qsizetype{1} << m_random.below(3),
                     number(file));
    file = support::withHeaderKey(file);
}

/// The list of a page's rows, or the inside of one of them.
void OldFileMutator::mutateRows(QByteArray& file, qsizetype page)
{
    constexpr qsizetype ownerPlace = 4;
    constexpr qsizetype countPlace = 12;
    constexpr qsizetype entriesPlace = 14;
    const qsizetype rows = u16(file, page + countPlace);
    const qsizetype row = m_random.below(rows);
    const qsizetype entry = page + entriesPlace + 2 * row;
    switch (m_random.below(12)) {
    case 0:
        ByteMutator::put(file, page + ownerPlace, 4, number(file));
        return;
    case 1:
        ByteMutator::put(file, page + countPlace, 2, number(file));
        return;
    case 2:
        ByteMutator::put(file, entry, 2, number(file));
        return;
    case 3: {
        constexpr quint16 flags[] = {0x2000, 0x4000, 0x8000, 0xC000};
        ByteMutator::put(file, entry, 2,
                         quint32(u16(file, entry)) ^ flags[size_t(m_random.below(4))]);
        return;
    }
    default:
        break;
    }
    constexpr qsizetype startBits = 0x1FFF;
    const qsizetype begin = page + (u16(file, entry) & startBits);
    const qsizetype end = row == 0 ? page + pageSize : page + (u16(file, entry - 2) & startBits);
    mutateRow(file, begin, end);
}

/// Most numbers that say where things are stand at the ends of a row.
void OldFileMutator::mutateRow(QByteArray& file, qsizetype begin, qsizetype end)
{
    constexpr qsizetype near = 12;
    if (begin >= end || end > file.size())
        return;
    const qsizetype size = end - begin;
    qsizetype place = begin + m_random.below(size);
    if (m_random.below(3) == 0)
        place = begin + m_random.below(qMin(size, near));
    else if (m_random.below(2) == 0)
        place = end - 1 - m_random.below(qMin(size, near));
    ByteMutator::put(file, place, qsizetype{1} << m_random.below(3), number(file));
}

void OldFileMutator::mutateDefinition(QByteArray& file, qsizetype page)
{
    constexpr qsizetype columnsPlace = 63;
    static const std::vector<std::pair<qsizetype, qsizetype>> fields{
        {4, 4}, {8, 4}, {16, 4}, {20, 4}, {41, 2}, {43, 2}, {45, 2}, {47, 4}, {51, 4}, {55, 4}};
    if (m_random.below(2) == 0) {
        const auto [place, width] = m_random.pick(fields);
        ByteMutator::put(file, page + place, width, number(file));
        return;
    }
    const qsizetype place = page + columnsPlace + m_random.below(pageSize - columnsPlace);
    ByteMutator::put(file, place, 1 + m_random.below(2), number(file));
}

void OldFileMutator::mutateSize(QByteArray& file)
{
    const qsizetype pages = file.size() / pageSize;
    switch (m_random.below(3)) {
    case 0:
        file.truncate(m_random.below(pages) * pageSize);
        break;
    case 1:
        file.truncate(m_random.below(file.size()));
        break;
    default:
        file.append(file.left(m_random.below(4) * pageSize + m_random.below(2)));
    }
}

void OldFileMutator::copyPage(QByteArray& file)
{
    const qsizetype pages = file.size() / pageSize;
    const qsizetype from = m_random.below(pages) * pageSize;
    const qsizetype to = m_random.below(pages) * pageSize;
    file.replace(to, pageSize, file.mid(from, pageSize));
}

/// A page, a pointer to a row, a small number, or one on the edge of what fields hold.
quint32 OldFileMutator::number(const QByteArray& file)
{
    const auto page = quint32(m_random.below(file.size() / pageSize + 1));
    switch (m_random.below(5)) {
    case 0:
        return page;
    case 1:
        return page << 8 | quint32(m_random.below(4));
    case 2:
        return quint32(m_random.below(64));
    case 3:
        return quint32(m_random.random());
    default:
        return m_random.edge();
    }
}

} // namespace fuzz
