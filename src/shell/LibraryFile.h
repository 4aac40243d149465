#pragma once

#include "library/ScoreLibrary.h"

namespace shell {

/// "压缩数据库": moves the open library, or without one the file that LibPath names, aside as the
/// day's backup, LIB_DATE_.bak, and writes it anew without unused space. A failing step is shown
/// and the next one runs, so that the backup is what remains if the writing fails.
void compactLibrary(library::ScoreLibrary& scoreLibrary, const QString& date);

} // namespace shell
