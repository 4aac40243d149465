#include "library/CopyOccasion.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using library::NotedOccasion;
using library::NotedRestore;
using library::Occasion;
using support::write;

class CopyOccasions : public testing::Test
{
protected:
    void SetUp() override { write(copy, "a copy"); }

    static QDateTime at(int minute) { return {QDate(2026, 3, 9), QTime(7, minute)}; }

    QStringList texts() const
    {
        QStringList lines;
        for (const NotedOccasion& noted : library::notedOccasions(copy))
            lines.append(noted.time.toString(u"HH:mm "_s) + noted.occasion.text);
        return lines;
    }

    QTemporaryDir folder;
    const QString copy = folder.filePath(u"一中.CJK_2026-03-09_070500.bak"_s);
};

TEST_F(CopyOccasions, AreNotedOneBehindTheOtherInAFileBesideTheCopy)
{
    library::noteOccasion(copy, {at(5), Occasion::examImport(u"高一期中"_s)});
    library::noteOccasion(copy, {at(6), Occasion::studentImport()});
    library::noteOccasion(copy, {at(7), {u"删除科目 语文、数学"_s}});
    EXPECT_EQ(texts(), (QStringList{u"07:05 导入 高一期中"_s, u"07:06 导入学生名单"_s,
                                    u"07:07 删除科目 语文、数学"_s}));
    EXPECT_EQ(library::notedOccasions(copy)[0].occasion, Occasion::examImport(u"高一期中"_s));
    EXPECT_EQ(library::notedOccasions(copy)[1].occasion, Occasion::studentImport());
    EXPECT_TRUE(QFile::exists(copy + u".json"_s));
}

TEST_F(CopyOccasions, NeverLeaveMoreThanTheNewestTwenty)
{
    for (int i = 0; i < 25; ++i)
        library::noteOccasion(copy, {at(i), {u"第%1次"_s.arg(i)}});
    ASSERT_EQ(texts().size(), 20);
    EXPECT_EQ(texts().first(), u"07:05 第5次"_s);
    EXPECT_EQ(texts().last(), u"07:24 第24次"_s);
}

TEST_F(CopyOccasions, OfAnyNameAreOneLineAndComeBackAsTheyWere)
{
    for (const QString& name : {u"'"_s, u"--"_s, u"' or ''='"_s, u"a\nb"_s, u"\"}]"_s}) {
        library::noteOccasion(copy, {at(1), Occasion::examImport(name)});
        const Occasion noted = library::notedOccasions(copy).back().occasion;
        EXPECT_EQ(noted.exam, name);
        EXPECT_FALSE(noted.text.contains(u'\n'));
    }
    library::noteOccasion(copy, {at(2), {QString(10'000, u'长')}});
    EXPECT_EQ(library::notedOccasions(copy).back().occasion.text, QString(299, u'长') + u'…');
}

TEST_F(CopyOccasions, AreKnownToTheMillisecond)
{
    const QDateTime time = at(5).addMSecs(7);
    library::noteOccasion(copy, {time, Occasion::studentImport()});
    EXPECT_EQ(library::notedOccasions(copy).back().time, time);
}

TEST_F(CopyOccasions, KeepAllNamesThatTheirExamGot)
{
    library::noteOccasion(copy, {at(5), Occasion::examImport(u"期中"_s)});
    library::noteOccasion(copy, {at(6), Occasion::examImport(u"会考"_s)});
    library::noteOccasion(copy, {at(7), {u"重新分班"_s}});
    library::renameNotedExam(copy, u"期中"_s, u"高一期中"_s);
    library::renameNotedExam(copy, u"高一期中"_s, u"\"}]\n'"_s);
    library::renameNotedExam(copy, {}, u"无名"_s);
    const auto noted = [&](size_t place) { return library::notedOccasions(copy)[place].occasion; };
    EXPECT_EQ(noted(0).examNames(), (QStringList{u"\"}]\n'"_s, u"高一期中"_s, u"期中"_s}));
    EXPECT_EQ(noted(0).text, u"导入 期中"_s);
    EXPECT_EQ(noted(1).examNames(), QStringList{u"会考"_s});
    EXPECT_EQ(noted(2), Occasion{u"重新分班"_s});
    library::renameNotedExam(copy, u"期中"_s, u"高一期中"_s);
    EXPECT_EQ(noted(0).examNames(), (QStringList{u"高一期中"_s, u"\"}]\n'"_s, u"期中"_s}));
    for (int i = 0; i < 25; ++i)
        library::renameNotedExam(copy, u"期中"_s, QString::number(i));
    EXPECT_EQ(noted(0).examNames().size(), 21);
    EXPECT_EQ(noted(0).examNames().first(), u"24"_s);
}

TEST_F(CopyOccasions, StandBesideTheRestoresThatACopyHolds)
{
    const QDateTime time = at(6).addMSecs(7);
    library::noteOccasion(copy, {at(5), Occasion::examImport(u"期中"_s)});
    library::noteRestores(copy, {{time, at(5)}});
    library::noteOccasion(copy, {at(7), Occasion::restoring()});
    library::renameNotedExam(copy, u"期中"_s, u"高一期中"_s);
    const NotedRestore broken{time, at(5)};
    const NotedRestore done{time, at(5), true};
    EXPECT_EQ(library::notedRestores(copy), std::vector{broken});
    EXPECT_EQ(texts(), (QStringList{u"07:05 导入 期中"_s, u"07:07 恢复备份"_s}));
    EXPECT_EQ(library::notedOccasions(copy)[1].occasion, Occasion::restoring());
    library::noteRestores(copy, {done, {at(4), {}, true}});
    library::noteRestores(copy, {broken});
    EXPECT_EQ(library::notedRestores(copy), (std::vector{NotedRestore{at(4), {}, true}, done}));
    for (int i = 0; i < 150; ++i)
        library::noteRestores(copy, {{at(8).addSecs(i), at(5)}});
    ASSERT_EQ(library::notedRestores(copy).size(), 100U);
    EXPECT_EQ(library::notedRestores(copy).back().time, at(8).addSecs(149));
}

TEST_F(CopyOccasions, OfEarlierVersionsAreKnown)
{
    write(library::occasionFile(copy),
          R"({"occasions":[
          {"time":"2026-03-09T07:05:00.000","what":"导入 期中","kind":"exam-import","exam":"期中",
           "undone":true},
          {"time":"2026-03-09T07:06:00.000","what":"恢复备份","kind":"change"},
          {"time":"2026-03-09T07:07:00.000","what":"撤消 导入学生名单","kind":"change"},
          {"time":"2026-03-09T07:08:00.000","what":"撤消什么","kind":"change"}]})");
    const std::vector<NotedOccasion> noted = library::notedOccasions(copy);
    EXPECT_EQ(noted[0], (NotedOccasion{at(5), Occasion::examImport(u"期中"_s), true}));
    EXPECT_EQ(noted[1].occasion, Occasion::restoring());
    EXPECT_EQ(noted[2].occasion, Occasion::undoing(Occasion::studentImport()));
    EXPECT_EQ(noted[3].occasion, Occasion{u"撤消什么"_s});
    EXPECT_TRUE(library::notedRestores(copy).empty());
    // What was undone stays so when more is noted.
    library::renameNotedExam(copy, u"期中"_s, u"高一期中"_s);
    EXPECT_TRUE(library::notedOccasions(copy)[0].isUndone);
}

TEST_F(CopyOccasions, OfAFileThatIsNoneOfOursAreNone)
{
    const QString noted = library::occasionFile(copy);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("{"), QByteArray("[1,2]"), QByteArray("{\"occasions\":7}"),
          QByteArray("{\"restores\":[7,{}]}"), QByteArray(300'000, ' '),
          QByteArray("\xff\xfe\0x", 4)}) {
        write(noted, bytes);
        EXPECT_EQ(texts(), QStringList());
    }
    QFile::remove(noted);
    ASSERT_EQ(mkfifo(QFile::encodeName(noted).constData(), 0600), 0);
    EXPECT_EQ(texts(), QStringList());
}

TEST_F(CopyOccasions, ThatCannotBeNotedHarmNothing)
{
    {
        const support::FullDisk disk(10);
        library::noteOccasion(copy, {at(1), {u"重新分班"_s}});
    }
    EXPECT_EQ(texts(), QStringList());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

} // namespace
