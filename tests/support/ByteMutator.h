#pragma once

#include <algorithm>
#include <random>
#include <vector>

#include <QByteArray>

namespace support {

/// Changes bytes at random; the same seed makes the same changes.
class ByteMutator
{
public:
    explicit ByteMutator(unsigned seed) : m_random(seed) {}

    qsizetype below(qsizetype bound)
    {
        return bound <= 1 ? 0 : qsizetype(m_random() % quint64(bound));
    }

    template <typename Item> const Item& pick(const std::vector<Item>& from)
    {
        return from[size_t(below(qsizetype(from.size())))];
    }

    /// A number on the edge of what some field holds.
    quint32 edge()
    {
        static const std::vector<quint32> numbers{0,          1,          0x7F,       0x80,
                                                  0xFF,       0x7FFF,     0x8000,     0xFFFF,
                                                  0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
        return pick(numbers);
    }

    quint64 random() { return m_random(); }

    /// Changes bytes, numbers and blocks at one to eight places.
    QByteArray mutated(QByteArray bytes)
    {
        const bool keepsPlaces = below(2) == 0; // most shifted files fail at once
        for (qsizetype left = 1 + below(8); left > 0 && !bytes.isEmpty(); --left)
            mutateOnce(bytes, keepsPlaces ? 5 : 0);
        return bytes;
    }

    /// Writes the lowest bytes of a number, as many as fit.
    static void put(QByteArray& bytes, qsizetype place, qsizetype width, quint32 number)
    {
        for (qsizetype i = 0; i < std::min(width, bytes.size() - place); ++i)
            bytes[place + i] = char(number >> (8 * i));
    }

private:
    void mutateOnce(QByteArray& bytes, qsizetype leastKind)
    {
        const qsizetype at = below(bytes.size());
        const qsizetype length = 1 + below(std::min<qsizetype>(bytes.size() - at, 64));
        switch (leastKind + below(9 - leastKind)) {
        case 0:
            bytes.remove(at, length);
            break;
        case 1:
            bytes.insert(at, bytes.mid(below(bytes.size()), length));
            break;
        case 2:
            bytes.truncate(at);
            break;
        case 3:
        case 4:
            bytes.replace(at, length, bytes.mid(below(bytes.size()), length));
            break;
        case 5:
            bytes[at] = char(m_random());
            break;
        case 6:
            bytes[at] = char(bytes[at] ^ (1 << below(8)));
            break;
        default: {
            const quint32 number = edge();
            put(bytes, at, qsizetype{1} << below(3), number);
        }
        }
    }

    std::mt19937_64 m_random;
};

} // namespace support
