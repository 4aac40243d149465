#include "oldlibraries/ConversionNote.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/database/OpenFile.h"
#include "platform/runtime/Trap.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// Notes are unfinished files of this folder: their names say who wrote them.
QString notesFolder(const runtime::AppPaths& paths)
{
    return paths.dataFile(u"转换/"_s);
}

QString notedPath(const QString& note)
{
    constexpr qint64 longestPath = 4096;
    QFile file(note);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longestPath)) : QString();
}

} // namespace

ConversionNote::ConversionNote(const runtime::AppPaths& paths, const QString& newPath)
{
    runtime::Trap::silent()([&] {
        QDir().mkpath(notesFolder(paths));
        m_note.emplace(notesFolder(paths));
        // An older file of that name can be a link into another folder.
        const QFileInfo file(database::realPath(newPath));
        m_note->write(file.absoluteFilePath().toUtf8());
    });
}

void removeLeftOvers(const runtime::AppPaths& paths)
{
    for (const QString& note : runtime::leftOvers(notesFolder(paths))) {
        const QString path = notedPath(note);
        if (!path.isEmpty() && !QFileInfo(path).dir().exists())
            continue;
        if (!path.isEmpty())
            runtime::removeLeftOvers(path);
        QFile::remove(note);
    }
}

} // namespace oldlibraries
