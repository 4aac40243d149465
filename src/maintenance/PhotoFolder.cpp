#include "maintenance/PhotoFolder.h"

#include <QDir>
#include <QFileInfo>

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView ending = u".jpg";

/// A name that has a backslash where the system separates folders by slashes.
QString withSlashes(const QString& path)
{
    return QFileInfo::exists(path) ? path : QString(path).replace(u'\\', u'/');
}

QString withSlashAtTheEnd(QString path)
{
    while (path.endsWith(u'\\') || path.endsWith(u'/'))
        path.chop(1);
    return path + u'/';
}

} // namespace

PhotoFolder::PhotoFolder(const QString& path)
{
    if (path.isEmpty())
        return;
    m_path = withSlashAtTheEnd(withSlashes(path));
    m_classes = QDir(m_path).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

bool PhotoFolder::exists() const
{
    return !m_path.isEmpty() && QFileInfo(m_path).isDir();
}

QString PhotoFolder::find(const QString& classNumber, const QString& name)
{
    const QString file = filesOf(classNumber).value(name);
    return file.isEmpty() ? QString() : m_path + classNumber + u'/' + file;
}

const QHash<QString, QString>& PhotoFolder::filesOf(const QString& classNumber)
{
    const auto [files, isNew] = m_files.try_emplace(classNumber);
    if (!isNew || !m_classes.contains(classNumber))
        return files->second;
    for (const QString& file : QDir(m_path + classNumber).entryList(QDir::Files)) {
        if (!file.endsWith(ending, Qt::CaseInsensitive))
            continue;
        // Of two that differ in the case of their endings it is the small one.
        QString& known = files->second[file.chopped(ending.size())];
        if (known.isEmpty() || file.endsWith(ending))
            known = file;
    }
    return files->second;
}

} // namespace maintenance
