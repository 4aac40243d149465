#include "scoring/RowOrder.h"

#include <array>
#include <bit>

namespace scoring {

namespace {

constexpr int keyBytes = 8;
constexpr size_t byteValues = 256;

struct KeyedRow
{
    quint64 key;
    size_t row;
};

/// A whole number that grows as the number falls.
quint64 fallingKey(double number)
{
    constexpr quint64 sign = quint64(1) << 63;
    // Adding 0 makes one zero of both.
    const auto bits = std::bit_cast<quint64>(number + 0.0);
    return (bits & sign) != 0 ? bits : ~(bits | sign);
}

size_t byteOf(quint64 key, int byte)
{
    return (key >> (8 * byte)) & 0xff;
}

/// Sorts by one byte after the other, the lowest first. Marks have few bytes in which they differ
/// at all, so this takes a fraction of what comparing them would.
void sortByKey(std::vector<KeyedRow>& rows)
{
    std::array<std::array<size_t, byteValues>, keyBytes> counts{};
    for (const KeyedRow& row : rows) {
        for (int byte = 0; byte < keyBytes; ++byte)
            ++counts[size_t(byte)][byteOf(row.key, byte)];
    }
    std::vector<KeyedRow> sorted(rows.size());
    for (int byte = 0; byte < keyBytes; ++byte) {
        std::array<size_t, byteValues>& places = counts[size_t(byte)];
        if (rows.empty() || places[byteOf(rows[0].key, byte)] == rows.size())
            continue;
        size_t next = 0;
        for (size_t& place : places)
            next += std::exchange(place, next);
        for (const KeyedRow& row : rows)
            sorted[places[byteOf(row.key, byte)]++] = row;
        rows.swap(sorted);
    }
}

} // namespace

std::vector<size_t> descendingRows(const TableColumn& column, size_t rows)
{
    std::vector<KeyedRow> keyed;
    std::vector<size_t> nulls;
    keyed.reserve(rows);
    for (size_t row = 0; row < rows; ++row) {
        if (column.isNull(row))
            nulls.push_back(row);
        else
            keyed.push_back({fallingKey(column.value(row)), row});
    }
    sortByKey(keyed);
    std::vector<size_t> order;
    order.reserve(rows);
    for (const KeyedRow& row : keyed)
        order.push_back(row.row);
    order.insert(order.end(), nulls.begin(), nulls.end());
    return order;
}

} // namespace scoring
