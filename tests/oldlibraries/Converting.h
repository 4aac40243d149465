#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "oldlibraries/Conversion.h"
#include "platform/database/Connection.h"
#include "support/OldFileWriter.h"
#include "support/OldSamples.h"
#include "support/TestLibrary.h"

namespace tests {

/// A table without which a file is no library.
inline void addStudents(support::OldFileWriter& old)
{
    old.addTable(QStringLiteral("信息表"), {{QStringLiteral("姓名"), oldlibraries::OldType::Text}});
}

/// A folder in which an old library, old.CJK, is converted to new.CJK.
class Converting : public testing::Test
{
protected:
    Converting()
    {
        request.oldPath = file(QStringLiteral("old.CJK"));
        request.newPath = file(QStringLiteral("new.CJK"));
        request.templateFile = paths.templateFile();
    }

    QString file(const QString& name) const { return folder.filePath(name); }

    void useSample(const QString& name)
    {
        EXPECT_TRUE(QFile::copy(support::oldSamplePath(name), request.oldPath));
    }

    std::optional<oldlibraries::ConversionReport> convert()
    {
        runtime::NoProgress progress;
        return oldlibraries::convert(request, progress);
    }

    /// Names of all files in the folder, those that a file manager hides too.
    QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    QTemporaryDir appFolder;
    runtime::AppPaths paths = support::TestLibrary::makeAppFolder(appFolder.path());
    oldlibraries::ConversionRequest request;
};

} // namespace tests
