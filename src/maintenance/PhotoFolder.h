#pragma once

#include <map>
#include <optional>

#include <QHash>
#include <QString>
#include <QStringList>

namespace maintenance {

/// A folder with a folder for each class, named by its number, and in these the photos of its
/// students. Only what stands there is ever given: no name leads out of it.
class PhotoFolder
{
public:
    /// Both kinds of slash separate folders, at the end of the path too.
    explicit PhotoFolder(const QString& path);

    /// Where it stands, with a slash at the end.
    const QString& path() const { return m_path; }
    /// False for a folder that is not there, and for an empty path.
    bool exists() const;

    /// The file of the class's folder that is called so and ends in ".jpg", whatever the case of
    /// that; "" if there is none. Throws runtime::Error for a folder that cannot be listed.
    QString find(const QString& classNumber, const QString& name);

private:
    /// The ".jpg" files of a class by their names without it.
    const QHash<QString, QString>& filesOf(const QString& classNumber);

    QString m_path;
    std::optional<QStringList> m_classes;
    std::map<QString, QHash<QString, QString>> m_files;
};

} // namespace maintenance
