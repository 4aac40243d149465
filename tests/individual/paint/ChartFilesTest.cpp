#include "individual/paint/ChartFiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"

namespace individual {

namespace {

class FilesOfAChart : public testing::Test
{
protected:
    QString file(const QString& name) const { return folder.filePath(name); }
    QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    RankChart chart = rankChart({9000,
                                 4000,
                                 u"王五"_s,
                                 RankKind::Grade,
                                 {u"一模"_s},
                                 {{u"语文"_s, 0x0000FF, {u"150"_s}}},
                                 300});
};

TEST_F(FilesOfAChart, HaveTheSizeOfTheSurfaceOnAScreen)
{
    for (const QString& name : {u"图.png"_s, u"图.BMP"_s}) {
        saveChart(chart, file(name));
        const QImage image(file(name));
        EXPECT_EQ(image.size(), QSize(600, 267)) << name.toStdString();
        EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white)) << name.toStdString();
        EXPECT_EQ(image.pixelColor(300, 133), QColor(255, 0, 0)) << name.toStdString();
    }
}

TEST_F(FilesOfAChart, AreOfTheKindThatTheirEndingSays)
{
    for (const auto& [name, head] :
         {std::pair(u"a.png"_s, QByteArray("\x89PNG")), {u"a.bmp"_s, "BM"}, {u"a.pdf"_s, "%PDF"}}) {
        saveChart(chart, file(name));
        EXPECT_TRUE(support::read(file(name)).startsWith(head)) << name.toStdString();
    }
}

TEST_F(FilesOfAChart, APdfHasOnePageOfTheSizeOfTheSurface)
{
    saveChart(chart, file(u"图.pdf"_s));
    EXPECT_TRUE(support::read(file(u"图.pdf"_s)).contains("/MediaBox [0 0 450.000000 200.000000]"));
}

TEST_F(FilesOfAChart, OnlyThreeEndingsAreKnown)
{
    EXPECT_TRUE(isChartFile(u"/a.b/图.PNG"_s));
    EXPECT_TRUE(isChartFile(u"图.bmp"_s));
    EXPECT_TRUE(isChartFile(u"图.pdf"_s));
    for (const QString& name : {u"图.jpg"_s, u"图"_s, u"png"_s, u"/a.png/图"_s})
        EXPECT_FALSE(isChartFile(name)) << name.toStdString();
}

TEST_F(FilesOfAChart, AFolderThatTakesNoFileIsTold)
{
    EXPECT_EQ(support::errorOf([&] { saveChart(chart, file(u"没有/图.png"_s)); }),
              u"无法写入文件 %1（文件夹不存在）。"_s.arg(file(u"没有/图.png"_s)));
    QDir(folder.path()).mkdir(u"图.png"_s);
    EXPECT_FALSE(support::errorOf([&] { saveChart(chart, file(u"图.png"_s)); }).isEmpty());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(FilesOfAChart, AFullDiskLeavesTheOlderFileAsItWas)
{
    support::write(file(u"图.png"_s), "old");
    const support::FullDisk disk(100);
    EXPECT_FALSE(support::errorOf([&] { saveChart(chart, file(u"图.png"_s)); }).isEmpty());
    EXPECT_EQ(support::read(file(u"图.png"_s)), "old");
    EXPECT_EQ(files(), QStringList{u"图.png"_s});
}

TEST_F(FilesOfAChart, APictureThatNoMemoryHoldsIsRefused)
{
    chart.width = 2e9;
    chart.height = 2e9;
    EXPECT_EQ(support::errorOf([&] { saveChart(chart, file(u"图.png"_s)); }),
              u"图片太大，无法生成。"_s);
}

} // namespace

} // namespace individual
