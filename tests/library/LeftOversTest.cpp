#include "library/LeftOvers.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

class LeftOvers : public testing::Test
{
protected:
    void write(const QString& ending, const QByteArray& bytes)
    {
        QFile file(path + ending);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QByteArray emptyLibrary() const
    {
        QFile file(test.paths.templateFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What stands beside the library after it was opened anew.
    QStringList opened()
    {
        test.scores.OpenDB();
        return QDir(test.folder.path())
            .entryList({u"测试.CJK?*"_s, u".*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
    }

    TestLibrary test{{u"语文"_s}};
    const QString path = test.scores.LibPath;
};

TEST_F(LeftOvers, GoWhenTheLibraryIsOpened)
{
    write(u"_2026-03-09_0705.bak.tmp"_s, "half a copy");
    write(u".AbcXyz"_s, emptyLibrary().left(30'000));
    write(u".ZbcXyz"_s, QByteArray());
    write(u"_2026-03-09_070500.bak.json"_s, "what is noted of a copy that is gone");
    QFile crashed(test.file(u".yunshan-00000000-999999999-12345678.tmp"_s));
    ASSERT_TRUE(crashed.open(QIODevice::WriteOnly));
    ASSERT_TRUE(crashed.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                    QFileDevice::FileModificationTime));
    EXPECT_EQ(opened(), QStringList());
}

TEST_F(LeftOvers, AreNotWhatTheUserMade)
{
    write(u"_2026-03-09_070500.bak"_s, "a copy");
    write(u"_2026-03-09_070500.bak.json"_s, "what is noted of it");
    write(u".backup"_s, "the user's own");
    ASSERT_TRUE(QFile::copy(path, path + u".mycopy"_s));
    EXPECT_EQ(opened(), (QStringList{u"测试.CJK.backup"_s, u"测试.CJK.mycopy"_s,
                                     u"测试.CJK_2026-03-09_070500.bak"_s,
                                     u"测试.CJK_2026-03-09_070500.bak.json"_s}));
}

} // namespace
