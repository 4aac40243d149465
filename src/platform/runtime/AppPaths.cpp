#include "platform/runtime/AppPaths.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/runtime/Error.h"

namespace runtime {

namespace {

QString withSlash(const QString& folder)
{
    return folder.endsWith(u'/') ? folder : folder + u'/';
}

/// Installed programs stand in bin/, their files in share/yunshan/.
QString shippedFolder(const QString& programFolder)
{
    const QString installed = programFolder + QStringLiteral("/../share/yunshan");
    return QFileInfo::exists(installed + QStringLiteral("/data")) ? QDir::cleanPath(installed)
                                                                  : programFolder;
}

void copyMissingFiles(const QString& from, const QString& to)
{
    if (!QDir().mkpath(to))
        throw Error(QStringLiteral("无法建立数据文件夹 %1").arg(to));
    const auto files = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
        const QString target = to + u'/' + file.fileName();
        if (QFileInfo::exists(target))
            continue;
        if (!QFile::copy(file.filePath(), target))
            throw Error(QStringLiteral("无法写入文件 %1").arg(target));
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
}

} // namespace

AppPaths AppPaths::locate(const QString& programFolder)
{
    const QString shipped = shippedFolder(programFolder);
    const QFileInfo besideProgram(programFolder + QStringLiteral("/data"));
    if (besideProgram.isDir() && besideProgram.isWritable())
        return AppPaths(programFolder, shipped);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                        + QStringLiteral("/yunshan");
    copyMissingFiles(shipped + QStringLiteral("/data"), own + QStringLiteral("/data"));
    return AppPaths(own, shipped);
}

AppPaths::AppPaths(const QString& appPath) : AppPaths(appPath, appPath) {}

AppPaths::AppPaths(const QString& appPath, const QString& shippedFolder)
    : m_appPath(withSlash(appPath)), m_shippedFolder(withSlash(shippedFolder))
{
}

QString AppPaths::dataFile(const QString& name) const
{
    return m_appPath + QStringLiteral("data/") + name;
}

QString AppPaths::templateFile() const
{
    return m_shippedFolder + QStringLiteral("MFC.dll");
}

} // namespace runtime
