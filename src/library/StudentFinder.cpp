#include "library/StudentFinder.h"

#include <algorithm>

namespace library {

using runtime::Pinyin;
using runtime::Spelling;

namespace {

/// Pinyin is typed in Latin letters only.
bool isPinyin(const QString& letters)
{
    return !letters.isEmpty() && std::all_of(letters.begin(), letters.end(), [](QChar letter) {
        return letter >= u'a' && letter <= u'z';
    });
}

} // namespace

StudentFinder::StudentFinder(const StudentTree& tree)
{
    for (const ClassNode& one : tree) {
        for (const StudentNode& student : one.students)
            m_students.push_back({student, {}});
    }
}

const Spelling& StudentFinder::spelling(Entry& entry)
{
    if (!entry.spelling)
        entry.spelling = m_pinyin.spell(entry.node.name);
    return *entry.spelling;
}

bool StudentFinder::matches(Entry& entry, const QString& typed, const QString& letters)
{
    // A number counts from its beginning on, otherwise 5 would stop at 15 and 25.
    if (entry.node.text().startsWith(typed, Qt::CaseInsensitive)
        || entry.node.name.contains(typed, Qt::CaseInsensitive))
        return true;
    if (letters.isEmpty())
        return false;
    const Spelling& spoken = spelling(entry);
    return spoken.initials.startsWith(letters) || spoken.letters.startsWith(letters);
}

int StudentFinder::find(const QString& typed, int place, int step)
{
    const QString text = typed.trimmed();
    if (text.isEmpty() || m_students.empty())
        return -1;
    QString letters = Pinyin::folded(text);
    if (!isPinyin(letters))
        letters.clear();
    int at = place < 0 && step < 0 ? 0 : place;
    for (int tried = 0; tried < count(); ++tried) {
        at = (at + step + count()) % count();
        if (matches(m_students[size_t(at)], text, letters))
            return at;
    }
    return -1;
}

int StudentFinder::next(const QString& typed, int place)
{
    return find(typed, place, 1);
}

int StudentFinder::previous(const QString& typed, int place)
{
    return find(typed, place, -1);
}

bool StudentFinder::spellSome(int names)
{
    const size_t end = std::min(m_spelled + size_t(names), m_students.size());
    for (; m_spelled < end; ++m_spelled)
        spelling(m_students[m_spelled]);
    return m_spelled < m_students.size();
}

} // namespace library
