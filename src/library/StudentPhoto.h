#pragma once

#include <QString>

#include "library/ScoreLibrary.h"

namespace library {

/// The scratch file that GetPic writes.
QString scratchPicture(const runtime::AppPaths& paths);

/// The file with the student's photo for a screen to show: what GetPic gives, but never the picture
/// of the student before; data/nopic.gif if there is none, or it could not be written. A photo that
/// has a name and no bytes gives a file that is not there.
QString studentPhoto(ScoreLibrary& scores, qint64 id);

} // namespace library
