#include "platform/database/FileIdentity.h"

#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>

#include "platform/database/Error.h"

namespace database {

using namespace Qt::StringLiterals;

FileIdentity FileIdentity::of(const QString& path)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {quint64(info.st_dev), quint64(info.st_ino)};
}

void FileIdentity::check(const QString& path) const
{
    if (of(path) != *this)
        throw Error(Failure::Missing,
                    u"成绩库文件 %1 已被移走、删除或替换，没有写入。"_s.arg(path));
}

void FileIdentity::checkWritten(const QString& path) const
{
    if (of(path) != *this)
        throw Error(
            Failure::Missing,
            u"成绩库文件 %1 在写入时被移走、删除或替换，刚才的写入不在它里面。"_s.arg(path));
}

bool isSameFile(const QString& path, const QString& other)
{
    const FileIdentity file = FileIdentity::of(path);
    return file != FileIdentity() && file == FileIdentity::of(other);
}

bool isSamePlace(const QString& path, const QString& other)
{
    const QFileInfo file(path);
    const QFileInfo otherFile(other);
    return isSameFile(path, other)
           || (file.fileName() == otherFile.fileName()
               && isSameFile(file.absolutePath(), otherFile.absolutePath()));
}

} // namespace database
