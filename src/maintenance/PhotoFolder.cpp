#include "maintenance/PhotoFolder.h"

#include <filesystem>

#include <QFile>
#include <QFileInfo>

#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"

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

enum class Wanted { Folders, Files };

/// The names that stand in a folder, sorted, without hidden ones. Throws runtime::Error: what
/// cannot be listed would pass for empty.
QStringList namesIn(const QString& folder, Wanted wanted)
{
    namespace fs = std::filesystem;
    QStringList names;
    std::error_code error;
    fs::directory_iterator entries(fs::path(QFile::encodeName(folder).toStdString()), error);
    for (; !error && entries != fs::end(entries); entries.increment(error)) {
        std::error_code ignored;
        const QString name =
            QFile::decodeName(QByteArray::fromStdString(entries->path().filename().string()));
        const bool isWanted = wanted == Wanted::Folders ? entries->is_directory(ignored)
                                                        : entries->is_regular_file(ignored);
        if (isWanted && !name.startsWith(u'.'))
            names.append(name);
    }
    if (error)
        throw runtime::Error(
            u"无法读取文件夹“%1”（%2）。"_s.arg(folder, runtime::systemErrorText(error.value())));
    names.sort();
    return names;
}

} // namespace

PhotoFolder::PhotoFolder(const QString& path)
{
    if (path.isEmpty())
        return;
    m_path = withSlashAtTheEnd(withSlashes(path));
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
    if (!isNew)
        return files->second;
    if (!m_classes)
        m_classes = exists() ? namesIn(m_path, Wanted::Folders) : QStringList();
    if (!m_classes->contains(classNumber))
        return files->second;
    for (const QString& file : namesIn(m_path + classNumber, Wanted::Files)) {
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
