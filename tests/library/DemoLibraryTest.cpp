#include "library/DemoLibrary.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using library::ownDemoLibrary;
using library::shippedDemoLibrary;
using support::read;
using support::write;

class DemoLibrary : public testing::Test
{
protected:
    QTemporaryDir folder;
    const runtime::AppPaths paths{folder.path()};
    const QString documents = folder.filePath(u"文档"_s);
    const QString own = documents + u"/云杉学业册/示范成绩库.CJK"_s;
};

TEST_F(DemoLibrary, IsCopiedToTheDocumentsAtTheFirstTime)
{
    write(shippedDemoLibrary(paths), "shipped");
    ASSERT_TRUE(QFile::setPermissions(shippedDemoLibrary(paths), QFile::ReadOwner));
    EXPECT_EQ(ownDemoLibrary(paths, documents), own);
    EXPECT_EQ(read(own), "shipped");
    EXPECT_TRUE(QFile::permissions(own) & QFile::WriteOwner)
        << "what is shipped is write-protected";
}

TEST_F(DemoLibrary, TheCopyOfTheUserIsNeverReplaced)
{
    write(shippedDemoLibrary(paths), "shipped");
    ownDemoLibrary(paths, documents);
    write(own, "changed");
    EXPECT_EQ(ownDemoLibrary(paths, documents), own);
    EXPECT_EQ(read(own), "changed");
}

TEST_F(DemoLibrary, OneThatIsNotShippedIsTold)
{
    EXPECT_EQ(support::errorOf([&] { ownDemoLibrary(paths, documents); }),
              u"找不到随程序提供的示范成绩库 "_s + shippedDemoLibrary(paths)
                  + u"，请重新安装程序。"_s);
    EXPECT_FALSE(QFile::exists(documents));
}

TEST_F(DemoLibrary, AFolderThatCannotBeMadeIsTold)
{
    write(shippedDemoLibrary(paths), "shipped");
    write(documents, "a file");
    EXPECT_EQ(support::errorOf([&] { ownDemoLibrary(paths, documents); }),
              u"无法建立文件夹 "_s + documents + u"/云杉学业册"_s);
}

} // namespace
