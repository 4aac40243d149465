#include "oldlibraries/PageFile.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "oldlibraries/OldFileError.h"

using namespace Qt::StringLiterals;
using oldlibraries::PageFile;

namespace {

/// A file whose pages each hold their own number in every byte.
class PageFileTest : public testing::Test
{
protected:
    static constexpr int pages = 40;

    PageFileTest()
    {
        for (int i = 0; i < pages; ++i)
            write(i, char(i));
    }

    void write(int page, char byte)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(qint64(page) * PageFile::pageSize));
        file.write(QByteArray(PageFile::pageSize, byte));
    }

    static QByteArray pageOf(char byte) { return QByteArray(PageFile::pageSize, byte); }

    QTemporaryDir folder;
    QString path = folder.filePath(u"旧.CJK"_s);
};

} // namespace

TEST_F(PageFileTest, GivesEachPageInWhateverOrderItIsAskedFor)
{
    PageFile file(path);
    for (const quint32 page : {0, 1, 2, 17, 18, 3, 4, 39, 0, 38, 39, 20, 21, 1})
        EXPECT_EQ(file.page(page), pageOf(char(page))) << page;
    for (quint32 page = 0; page < pages; ++page)
        EXPECT_EQ(file.page(page), pageOf(char(page))) << page;
    EXPECT_THROW(file.page(pages), oldlibraries::OldFileError);
}

TEST_F(PageFileTest, ReadsAnewWhatItReadAheadOnceItIsTold)
{
    PageFile file(path);
    for (quint32 page = 0; page < 3; ++page)
        file.page(page);
    write(3, 'x');
    file.readAnew();
    EXPECT_EQ(file.page(3), pageOf('x'));
    write(4, 'y');
    file.readAnew();
    EXPECT_EQ(file.page(4), pageOf('y'));
}

TEST_F(PageFileTest, ReadsThePageThatIsThereWhereThoseBehindItAreNot)
{
    PageFile file(path);
    file.page(0);
    ASSERT_TRUE(QFile::resize(path, 21 * PageFile::pageSize));
    EXPECT_EQ(file.page(19), pageOf(19));
    EXPECT_EQ(file.page(20), pageOf(20));
    EXPECT_THROW(file.page(21), oldlibraries::OldFileError);
}
