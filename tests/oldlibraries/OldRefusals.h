#pragma once

#include <ostream>

#include "oldlibraries/OldCells.h"
#include "oldlibraries/OldFileError.h"
#include "support/PrintQString.h"

namespace tests {

/// Why a file of the old engine was refused.
struct OldRefusal
{
    oldlibraries::OldFileFailure failure = oldlibraries::OldFileFailure::Missing;
    QString sentence;

    bool operator==(const OldRefusal&) const = default;
};

inline void PrintTo(const OldRefusal& refusal, std::ostream* out)
{
    *out << int(refusal.failure) << ' ' << refusal.sentence.toStdString();
}

/// Reads the whole file, which has to be refused.
inline OldRefusal oldRefusal(const QString& path)
{
    try {
        readAllCells(path);
    } catch (const oldlibraries::OldFileError& error) {
        return {error.failure(), error.description()};
    }
    ADD_FAILURE() << "not refused";
    return {};
}

} // namespace tests
