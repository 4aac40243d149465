#pragma once

#include <QString>

namespace runtime {

/// Where the program finds what stands beside it, and the files of data/ that it reads and writes.
class AppPaths
{
public:
    /// `AppPath` is the program's folder if its data/ can be written (portable use, build tree),
    /// otherwise the user's data folder, which is filled with the shipped defaults first and shows
    /// the shipped documents. What is shipped stands in the program's folder, or for installed
    /// programs in ../share/yunshan/. `programFolder` is the folder of the executable. Throws Error
    /// if no data folder can be made.
    static AppPaths locate(const QString& programFolder);

    /// `appPath` for both the shipped and the written files; used by tests.
    explicit AppPaths(const QString& appPath);

    /// With a trailing slash.
    const QString& AppPath() const { return m_appPath; }

    /// A file of data/, such as "满分.txt".
    QString dataFile(const QString& name) const;

    /// The empty library that new ones are copied from.
    QString templateFile() const;

private:
    AppPaths(const QString& appPath, const QString& shippedFolder);

    QString m_appPath;
    QString m_shippedFolder;
};

} // namespace runtime
