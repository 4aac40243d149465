#pragma once

#include <QDateTime>

#include <vector>

namespace library {

/// Whether what an import brought is in the library now, as far as restores tell.
enum class Presence {
    InLibrary,
    TakenBack,
    /// A restore was broken off, or nobody knows of which time its copy was.
    Unknown
};

/// A moment in the history of a library.
struct HistoryStep
{
    enum class Kind {
        /// The library was what a copy holds.
        Copied,
        /// The same, and an import began.
        Imported,
        /// The library became what it was at `restored`.
        Restored,
        /// The same, or it was broken off.
        MaybeRestored
    };

    Kind kind = Kind::Copied;
    QDateTime time;
    /// The number of the copy of Copied and Imported.
    size_t copy = 0;
    /// Not valid where it is not known.
    QDateTime restored = {};
};

/// What equals the library at the end, if that is one of the copies.
struct EqualCopy
{
    bool isThere = false;
    size_t copy = 0;
};

/// Sorts steps by their time; ahead of all others those of a time still to come, by a clock that
/// was ahead.
void sortSteps(std::vector<HistoryStep>& steps, const QDateTime& now);

/// Follows the sorted steps: what became of each of the imports, in their order. A restore to a
/// time takes back each import since that time and gives back those that were in the library then.
std::vector<Presence> importsAfter(const std::vector<HistoryStep>& steps, const QDateTime& now,
                                   const EqualCopy& equal);

} // namespace library
