#pragma once

#include <optional>

#include "platform/runtime/AppPaths.h"
#include "platform/runtime/UnfinishedFile.h"

namespace oldlibraries {

/// Notes in data/, as long as it lives, where a conversion writes: so the next start of the program
/// finds what a killed one left there, whichever library it opens.
class ConversionNote
{
public:
    /// Where nothing can be noted, the conversion goes on without a note.
    ConversionNote(const runtime::AppPaths& paths, const QString& newPath);

private:
    std::optional<runtime::UnfinishedFile> m_note;
};

/// Removes what killed conversions left in the folders that they noted. The note of a folder that
/// is not there, as on a stick that is not plugged in, stays.
void removeLeftOvers(const runtime::AppPaths& paths);

} // namespace oldlibraries
