#include "library/StudentPhoto.h"

#include <QFile>

namespace library {

using namespace Qt::StringLiterals;

QString scratchPicture(const runtime::AppPaths& paths)
{
    return paths.dataFile(u"tmp.tmp"_s);
}

QString studentPhoto(ScoreLibrary& scores, qint64 id)
{
    const QString scratch = scratchPicture(scores.paths());
    // Where the file can be neither removed nor emptied, GetPic cannot write it and says so.
    const bool isGone =
        !QFile::exists(scratch) || QFile::remove(scratch) || QFile::resize(scratch, 0);
    const QString picture = scores.GetPic(id);
    return picture.isEmpty() || !isGone ? scores.paths().dataFile(u"nopic.gif"_s) : picture;
}

} // namespace library
