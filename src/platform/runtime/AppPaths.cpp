#include "platform/runtime/AppPaths.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/runtime/Error.h"

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

QString withSlash(const QString& folder)
{
    return folder.endsWith(u'/') ? folder : folder + u'/';
}

/// What comes with the program is in its own folder if its data/ is there. Installed programs stand
/// in bin/, their files in share/yunshan/ beside it.
QString shippedFolder(const QString& programFolder)
{
    QString installed = QDir::cleanPath(programFolder + u"/../share/yunshan"_s);
    if (!QFileInfo::exists(programFolder + u"/data"_s) && QFileInfo::exists(installed + u"/data"_s))
        return installed;
    return programFolder;
}

void copyMissingFiles(const QString& from, const QString& to)
{
    if (!QDir().mkpath(to))
        throw Error(u"无法建立数据文件夹 %1"_s.arg(to));
    const auto files = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
        const QString target = to + u'/' + file.fileName();
        if (QFileInfo::exists(target))
            continue;
        // A second program that starts at the same moment may have been faster.
        if (!QFile::copy(file.filePath(), target) && !QFileInfo::exists(target))
            throw Error(u"无法写入文件 %1"_s.arg(target));
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
}

/// Documents that stand beside the program are linked, so that each update of the program shows.
/// Without the link the user lacks no more than the help, so a failure is none.
void linkDocuments(const QString& from, const QString& to)
{
    const auto documents = QDir(from).entryInfoList({u"*.doc"_s}, QDir::Files);
    for (const QFileInfo& document : documents) {
        const QFileInfo link(to + u'/' + document.fileName());
        if (link.isSymLink() && link.symLinkTarget() != document.filePath())
            QFile::remove(link.filePath());
        QFile::link(document.filePath(), link.filePath());
    }
}

} // namespace

AppPaths AppPaths::locate(const QString& programFolder)
{
    const QString shipped = shippedFolder(programFolder);
    const QFileInfo besideProgram(programFolder + u"/data"_s);
    if (besideProgram.isDir() && besideProgram.isWritable())
        return AppPaths(programFolder, shipped);
    const QString own =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/yunshan"_s;
    copyMissingFiles(shipped + u"/data"_s, own + u"/data"_s);
    linkDocuments(shipped, own);
    return AppPaths(own, shipped);
}

AppPaths::AppPaths(const QString& appPath) : AppPaths(appPath, appPath) {}

AppPaths::AppPaths(const QString& appPath, const QString& shippedFolder)
    : m_appPath(withSlash(appPath)), m_shippedFolder(withSlash(shippedFolder))
{
}

QString AppPaths::dataFile(const QString& name) const
{
    return m_appPath + u"data/"_s + name;
}

QString AppPaths::templateFile() const
{
    return m_shippedFolder + u"MFC.dll"_s;
}

} // namespace runtime
