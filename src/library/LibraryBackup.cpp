#include "library/LibraryBackup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype copiesKept = 5;

/// Removes the oldest dated copies; their names sort by date. The one just made stays, even if the
/// clock was put back since the others.
void removeOldCopies(const QFileInfo& file, const QString& justMade)
{
    const QRegularExpression dated(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(file.fileName()) + u"_\\d{4}-\\d{2}-\\d{2}_\\d{4}\\.bak"_s));
    QStringList copies = file.dir().entryList(QDir::Files, QDir::Name).filter(dated);
    copies.removeOne(QFileInfo(justMade).fileName());
    while (copies.size() > copiesKept - 1)
        file.dir().remove(copies.takeFirst());
}

} // namespace

QString backUpLibrary(const QString& libraryPath, const QDateTime& now)
{
    QString copy = libraryPath + now.toString(u"'_'yyyy-MM-dd'_'HHmm'.bak'"_s);
    const QString unfinished = copy + u".tmp"_s;
    QFile::remove(unfinished);
    QFile source(libraryPath);
    if (!source.copy(unfinished)) {
        const QString why = runtime::fileErrorText(source.error());
        QFile::remove(unfinished);
        throw runtime::Error(u"导入前的备份没有成功，什么也没有导入：%1（%2）。"_s.arg(copy, why));
    }
    QFile::remove(copy);
    if (!QFile::rename(unfinished, copy)) {
        QFile::remove(unfinished);
        throw runtime::Error(u"导入前的备份没有成功，什么也没有导入：%1。"_s.arg(copy));
    }
    removeOldCopies(QFileInfo(libraryPath), copy);
    return copy;
}

} // namespace library
