#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "oldlibraries/Conversion.h"
#include "platform/database/Connection.h"
#include "support/TestLibrary.h"

namespace tests {

/// A folder with old libraries and the empty library, in which conversions run.
class Converting : public testing::Test
{
protected:
    QString file(const QString& name) const { return folder.filePath(name); }

    /// The path of a sample.
    static QString sample(const QString& name)
    {
        return QStringLiteral(YUNSHAN_FIXTURES "/") + name;
    }

    /// A request for a copy of the sample in the folder.
    oldlibraries::ConversionRequest requestFor(const QString& name)
    {
        oldlibraries::ConversionRequest request;
        request.oldPath = file(QStringLiteral("old.CJK"));
        request.newPath = file(QStringLiteral("new.CJK"));
        request.templateFile = paths.templateFile();
        EXPECT_TRUE(QFile::copy(sample(name), request.oldPath));
        return request;
    }

    /// Names of all files in the folder, those that a file manager hides too.
    QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    QTemporaryDir appFolder;
    runtime::AppPaths paths = support::TestLibrary::makeAppFolder(appFolder.path());
    runtime::NoProgress progress;
};

} // namespace tests
