#include "library/CopyKeeping.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using library::DatedSize;

// A Sunday.
const QDateTime now(QDate(2026, 11, 22), QTime(12, 0));
constexpr qint64 muchRoom = 1'000'000;

/// Copies of ten bytes each; texts as in "11-22 08:00", in order.
std::vector<DatedSize> copiesAt(const QStringList& times)
{
    std::vector<DatedSize> copies;
    for (const QString& time : times)
        copies.push_back({QDateTime::fromString(u"2026-"_s + time, u"yyyy-MM-dd HH:mm"_s), 10});
    return copies;
}

/// Five copies of this hour, which stand behind all others.
const QStringList newest{u"11-22 11:00"_s, u"11-22 11:10"_s, u"11-22 11:20"_s, u"11-22 11:30"_s,
                         u"11-22 11:40"_s};

struct Keeping
{
    const char* name;
    QStringList older;
    std::vector<size_t> gone;
    qint64 room = muchRoom;
};

class CopyKeeping : public testing::TestWithParam<Keeping>
{
};

TEST_P(CopyKeeping, RemovesWhatTheTableSays)
{
    EXPECT_EQ(library::copiesToRemove(copiesAt(GetParam().older + newest), now, GetParam().room),
              GetParam().gone);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CopyKeeping,
    testing::Values(
        Keeping{"none older", {}, {}},
        Keeping{
            "the first of a day", {u"11-22 08:00"_s, u"11-22 09:00"_s, u"11-22 10:00"_s}, {1, 2}},
        Keeping{"each of two weeks of days",
                {u"11-09 08:00"_s, u"11-10 08:00"_s, u"11-10 09:00"_s, u"11-20 08:00"_s},
                {2}},
        // 2 to 8 November is a week; its 9th day ago begins the next one.
        Keeping{"the first of an older week",
                {u"11-02 08:00"_s, u"11-03 08:00"_s, u"11-07 08:00"_s, u"11-09 08:00"_s},
                {1, 2}},
        Keeping{"eight weeks and no more",
                {u"09-27 08:00"_s, u"09-28 08:00"_s, u"10-05 08:00"_s, u"10-06 08:00"_s},
                {0, 3}},
        Keeping{"those of a clock that was ahead, one a day",
                {u"12-24 08:00"_s, u"12-24 09:00"_s, u"12-25 08:00"_s, u"12-25 09:00"_s,
                 u"12-26 08:00"_s, u"12-26 09:00"_s, u"12-26 10:00"_s},
                {1}},
        Keeping{"the newest five of those without any room",
                {u"12-24 08:00"_s, u"12-24 09:00"_s, u"12-25 08:00"_s, u"12-25 09:00"_s,
                 u"12-26 08:00"_s, u"12-26 09:00"_s},
                {0},
                0},
        Keeping{"the newest of them while there is room",
                {u"11-19 08:00"_s, u"11-20 08:00"_s, u"11-21 08:00"_s},
                {0},
                71},
        Keeping{"none where all together take what there is",
                {u"11-19 08:00"_s, u"11-20 08:00"_s, u"11-21 08:00"_s},
                {0, 1},
                70},
        Keeping{"the newest five without any room", {u"11-21 08:00"_s}, {0}, 0}),
    [](const auto& each) {
        return QString::fromUtf8(each.param.name)
            .replace(u',', QString())
            .replace(u' ', u'_')
            .toStdString();
    });

TEST(CopyKeeping, TheOneJustMadeStaysUnderAClockPutBack)
{
    const QStringList times{u"11-30 08:00"_s, u"12-01 08:00"_s, u"12-02 08:00"_s, u"12-03 08:00"_s,
                            u"12-04 08:00"_s, u"12-05 08:00"_s, u"11-22 12:00"_s};
    EXPECT_EQ(library::copiesToRemove(copiesAt(times), now, 0), std::vector<size_t>{0});
}

TEST(CopyKeeping, ThoseOfAClockThatWasAheadTakeNoPlaceOfTheOthers)
{
    const QStringList times{u"11-22 11:00"_s, u"11-22 11:10"_s, u"11-22 11:20"_s, u"11-22 11:30"_s,
                            u"12-01 08:00"_s, u"12-02 08:00"_s, u"12-03 08:00"_s, u"12-04 08:00"_s,
                            u"12-05 08:00"_s, u"11-22 12:00"_s};
    EXPECT_EQ(library::copiesToRemove(copiesAt(times), now, 0), std::vector<size_t>());
}

TEST(CopyKeeping, ThatOfTheLastImportStaysWithinTheRoom)
{
    std::vector<DatedSize> copies =
        copiesAt(QStringList{u"11-22 08:00"_s, u"11-22 09:00"_s} + newest);
    copies[1].isOfLastImport = true;
    EXPECT_EQ(library::copiesToRemove(copies, now, muchRoom), std::vector<size_t>());
    EXPECT_EQ(library::copiesToRemove(copies, now, 61), std::vector<size_t>{0});
    EXPECT_EQ(library::copiesToRemove(copies, now, 60), (std::vector<size_t>{0, 1}));
}

TEST(CopyKeeping, FewerThanFiveStay)
{
    EXPECT_EQ(library::copiesToRemove({}, now, 0), std::vector<size_t>());
    EXPECT_EQ(library::copiesToRemove(copiesAt({u"01-01 08:00"_s}), now, 0), std::vector<size_t>());
}

TEST(CopyRoom, IsTwoGigabytesOrATenthOfWhatIsFree)
{
    constexpr qint64 gibibyte = 1LL << 30;
    EXPECT_EQ(library::roomForCopies(5000), 500);
    EXPECT_EQ(library::roomForCopies(20 * gibibyte), 2 * gibibyte);
    EXPECT_EQ(library::roomForCopies(100 * gibibyte), 2 * gibibyte);
}

TEST(CopyRoom, ThatDoesNotSufficeIsToldWithBothSizes)
{
    library::checkRoomForCopy(5 << 20, 5 << 20);
    EXPECT_EQ(support::errorOf([] { library::checkRoomForCopy(5 << 20, 3 << 19); }),
              u"磁盘上放不下成绩库的备份：备份要 5.0 MB，磁盘只剩 1.5 MB。请先腾出空间。"_s);
}

TEST(CopyRoom, IsWhatTheDiskOfAFileHasFree)
{
    const QTemporaryDir folder;
    EXPECT_GT(library::freeBytesBeside(folder.filePath(u"一中.CJK"_s)), 0);
    EXPECT_GT(library::freeBytesBeside(u"/没有/一中.CJK"_s), 1LL << 60);
}

} // namespace
