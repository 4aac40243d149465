#pragma once

#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace shell {

/// "压缩数据库": copies the open library, or without one the file that LibPath names, to the day's
/// backup, LIB_DATE_.bak, and puts a copy of that without unused space in its place. Other programs
/// cannot write it meanwhile. A failing step is shown, and the library stays as it was; it is
/// opened in any case.
void compactLibrary(library::ScoreLibrary& scoreLibrary, const QString& date,
                    runtime::Progress& progress);

} // namespace shell
