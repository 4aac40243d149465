#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/runtime/Value.h"

namespace jet {

/// Values assigned to the fields of one row, in ascending order of the fields.
class FieldValues
{
    using Entry = std::pair<int, runtime::Value>;

    template <class Entries> static auto place(Entries& entries, int field)
    {
        return std::lower_bound(
            entries.begin(), entries.end(), field,
            [](const Entry& entry, int wanted) { return entry.first < wanted; });
    }

public:
    /// nullptr if the field has no value here.
    const runtime::Value* find(int field) const
    {
        const auto at = place(m_entries, field);
        return at != m_entries.end() && at->first == field ? &at->second : nullptr;
    }

    void assign(int field, runtime::Value value)
    {
        const auto at = place(m_entries, field);
        if (at != m_entries.end() && at->first == field)
            at->second = std::move(value);
        else
            m_entries.emplace(at, field, std::move(value));
    }

    void clear() { m_entries.clear(); }
    bool empty() const { return m_entries.empty(); }
    size_t size() const { return m_entries.size(); }
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::vector<Entry> m_entries;
};

} // namespace jet
