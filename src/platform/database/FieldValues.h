#pragma once

#include <utility>
#include <vector>

#include "platform/runtime/Value.h"

namespace database {

/// Values assigned to the fields of one row, in the order of the first assignments.
class FieldValues
{
    using Entry = std::pair<int, runtime::Value>;

public:
    /// nullptr if the field has no value here.
    const runtime::Value* find(int field) const
    {
        const int entry = entryOf(field);
        return entry < 0 ? nullptr : &m_entries[size_t(entry)].second;
    }

    runtime::Value* find(int field)
    {
        const int entry = entryOf(field);
        return entry < 0 ? nullptr : &m_entries[size_t(entry)].second;
    }

    void assign(int field, runtime::Value value)
    {
        const int entry = entryOf(field);
        if (entry >= 0) {
            m_entries[size_t(entry)].second = std::move(value);
            return;
        }
        if (size_t(field) >= m_entryOf.size())
            m_entryOf.resize(size_t(field) + 1, none);
        m_entryOf[size_t(field)] = int(m_entries.size());
        m_entries.emplace_back(field, std::move(value));
    }

    void remove(int field)
    {
        const int removed = entryOf(field);
        if (removed < 0)
            return;
        m_entries.erase(m_entries.begin() + removed);
        for (int& entry : m_entryOf)
            entry -= entry > removed;
        m_entryOf[size_t(field)] = none;
    }

    /// Keeps its memory for the next row.
    void clear()
    {
        for (const Entry& entry : m_entries)
            m_entryOf[size_t(entry.first)] = none;
        m_entries.clear();
    }
    bool empty() const { return m_entries.empty(); }
    size_t size() const { return m_entries.size(); }
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    static constexpr int none = -1;

    int entryOf(int field) const
    {
        return size_t(field) < m_entryOf.size() ? m_entryOf[size_t(field)] : none;
    }

    std::vector<Entry> m_entries;
    std::vector<int> m_entryOf; // by field
};

} // namespace database
