// The files that are delivered in data/.
#include <QFile>

#include <gtest/gtest.h>

#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

class ShippedData : public testing::Test
{
protected:
    QStringList lines(const QString& name)
    {
        QStringList list;
        runtime::ReadTxtSet(test.paths.dataFile(name), list);
        return list;
    }

    support::TestLibrary test{{u"语文"_s}};
};

TEST_F(ShippedData, OffersNineSubjectsAndThenSixTotals)
{
    EXPECT_EQ(lines(u"科目.txt"_s).join(u' '),
              u"语文 数学 英语 物理 化学 生物 政治 历史 地理 总分 文科总分 理科总分 三科总分 "
              "文综总分 理综总分"_s);
}

TEST_F(ShippedData, HasTheFormulasOfTheTemplate)
{
    EXPECT_EQ(lines(u"总分公式.txt"_s).join(u" / "_s),
              test.rows(u"select 总分||'='||公式 from 总分公式 order by rowid"_s));
}

TEST_F(ShippedData, HasTheFullMarksOfNineSubjects)
{
    EXPECT_EQ(lines(u"满分.txt"_s).join(u' '),
              u"语文=150 数学=150 英语=150 物理=100 化学=100 生物=100 政治=100 历史=100 "
              "地理=100"_s);
}

TEST_F(ShippedData, HasThePicturesInTheFormatsThatTheirNamesSay)
{
    const std::pair<QString, QByteArray> pictures[] = {
        {u"bj.jpg"_s, "\xFF\xD8\xFF"},
        {u"bj1.jpg"_s, "\xFF\xD8\xFF"},
        {u"nopic.gif"_s, "GIF8"},
        {u"CJK.ico"_s, QByteArray("\0\0\1\0", 4)},
    };
    for (const auto& [name, head] : pictures) {
        QFile file(test.paths.dataFile(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        EXPECT_EQ(file.read(head.size()), head) << name.toStdString();
    }
}

} // namespace
