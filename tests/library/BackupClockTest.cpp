#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

TEST(DatedCopiesUnderAClockPutBack, KeepTheOneJustMade)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"一中.CJK"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("library");
    file.close();
    for (int day = 1; day <= 5; ++day)
        library::backUpLibrary(path, QDateTime(QDate(2027, 1, day), QTime(8, 0)));
    const QString made = library::backUpLibrary(path, QDateTime(QDate(2026, 1, 1), QTime(8, 0)));
    EXPECT_TRUE(QFile::exists(made));
    EXPECT_EQ(QDir(folder.path()).entryList({u"*.bak"_s}, QDir::Files).size(), 5);
}

} // namespace
