#pragma once

#include <optional>
#include <vector>

#include "library/StudentTree.h"
#include "platform/runtime/Pinyin.h"

namespace library {

/// Finds students of a tree by what a user types: the beginning of 学号姓名, a part of the name, or
/// the beginning of the name's pinyin, its first letters or all of them.
class StudentFinder
{
public:
    explicit StudentFinder(const StudentTree& tree);

    int count() const { return int(m_students.size()); }
    /// The students in the order of the tree, counted from 0.
    const StudentNode& student(int place) const { return m_students[size_t(place)].node; }

    /// The next student behind `place` (-1 for the first), around the end and `place` itself last;
    /// -1 if there is none. Throws runtime::Error where names cannot be spelled.
    int next(const QString& typed, int place);
    /// The one before, likewise.
    int previous(const QString& typed, int place);

    /// Spells some more names ahead of a search; false if none was left.
    bool spellSome(int names);

private:
    struct Entry
    {
        StudentNode node;
        std::optional<runtime::Spelling> spelling;
    };

    int find(const QString& typed, int place, int step);
    bool matches(Entry& entry, const QString& typed, const QString& letters);
    const runtime::Spelling& spelling(Entry& entry);

    std::vector<Entry> m_students;
    size_t m_spelled = 0;
    runtime::Pinyin m_pinyin;
};

} // namespace library
