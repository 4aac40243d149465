#pragma once

#include <memory>

#include <QTemporaryDir>

#include "platform/database/Connection.h"

namespace database {

/// A library file that is looked at and stays as it is, byte for byte. Opening one takes back a
/// write that was broken off in it and folds in a log beside it; such a file is read as a copy of
/// all of them, which is gone with this.
class UntouchedFile
{
public:
    /// A missing file is for open() to refuse. Throws Error if a copy is needed and cannot be made.
    explicit UntouchedFile(const QString& path);

    /// Opens it. Throws Error, with the name of the file itself.
    void open(Connection& connection, const FileShape& shape) const;

    /// Where its content is read.
    const QString& path() const { return m_path; }

private:
    void copy(const QString& file);

    const QString m_original;
    QString m_path;
    std::unique_ptr<QTemporaryDir> m_folder;
};

} // namespace database
