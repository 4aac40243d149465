#include "maintenance/TeacherPick.h"

#include <QFile>

#include <gtest/gtest.h>

#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;

const QString tag = u" - Private Sub Form_Load/FormJiaoShiMingDan"_s;

/// 语文 is column 1 of the library, 数学 column 2.
class TeacherPick : public testing::Test
{
protected:
    QString file() const { return test.paths.dataFile(u"教师总名单.txt"_s); }

    void load(const QByteArray& bytes)
    {
        write(bytes);
        pick.load();
    }

    void write(const QByteArray& bytes)
    {
        QFile out(file());
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    QByteArray written()
    {
        QFile in(file());
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s}};
    maintenance::TeacherPick pick{test.paths, test.scores.catalogue};
};

TEST_F(TeacherPick, GivesTheNamesOfEachColumnInTheOrderOfTheFile)
{
    load("数学_李四\r\n语文_张三\r\n数学_王五\r\n");
    EXPECT_EQ(pick.names(1), QStringList{u"张三"_s});
    EXPECT_EQ(pick.names(2), (QStringList{u"李四"_s, u"王五"_s}));
    EXPECT_EQ(pick.element(0), u"+李四+张三+王五"_s);
}

TEST_F(TeacherPick, ASubjectThatTheLibraryLacksCountsAmongAllNamesOnly)
{
    load("物理_赵六\n语文_张三\n");
    EXPECT_EQ(pick.element(0), u"+赵六+张三"_s);
    EXPECT_EQ(pick.element(1), u"+张三"_s);
    EXPECT_EQ(pick.names(2), std::nullopt);
}

TEST_F(TeacherPick, ALineWithoutASeparatorIsToldAndTheNextOneCounts)
{
    load("张三\n语文\n语文_李四\n");
    EXPECT_EQ(test.dialogs.failures, (QStringList{u"教师总名单里的“张三”没有“_”。"_s + tag,
                                                  u"教师总名单里的“语文”没有“_”。"_s + tag}));
    EXPECT_EQ(pick.element(0), u"+李四"_s);
    EXPECT_EQ(pick.names(1), QStringList{u"李四"_s});
}

TEST_F(TeacherPick, EmptyLinesAreNoNames)
{
    load("语文_张三\n\n\n数学_李四\n\n");
    EXPECT_TRUE(test.dialogs.failures.isEmpty());
    EXPECT_EQ(pick.element(0), u"+张三+李四"_s);
}

TEST_F(TeacherPick, WhatFollowsASecondSeparatorIsNotPartOfTheName)
{
    load("语文_张三_班主任\n语文_\n");
    EXPECT_EQ(pick.names(1), (QStringList{u"张三"_s, u""_s}));
}

TEST_F(TeacherPick, AMissingFileLeavesNoNames)
{
    QFile::remove(file());
    pick.load();
    EXPECT_EQ(pick.element(0), u""_s);
    EXPECT_EQ(pick.names(1), std::nullopt);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(TeacherPick, ReadsTheFileAnewWhenItIsLoadedAgain)
{
    load("语文_张三\n");
    load("语文_李四\n");
    EXPECT_EQ(pick.element(0), u"+李四"_s);
}

TEST_F(TeacherPick, TheShippedListHasANameForEachSubjectAndNothingToComplainOf)
{
    pick.load();
    EXPECT_TRUE(test.dialogs.failures.isEmpty());
    EXPECT_TRUE(pick.names(1).has_value());
    EXPECT_TRUE(pick.names(2).has_value());
}

TEST_F(TeacherPick, ALongLineIsToldByItsBeginning)
{
    load(QByteArray(10'000, 'x'));
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"教师总名单里的“"_s + QString(60, u'x') + u"”没有“_”。"_s + tag});
}

TEST_F(TeacherPick, TheTextToEditHasALineBreakBehindEachLine)
{
    write("语文_张三\r\n\r\n数学_李四");
    EXPECT_EQ(maintenance::readMasterList(test.paths), u"语文_张三\n\n数学_李四\n"_s);
    QFile::remove(file());
    EXPECT_EQ(maintenance::readMasterList(test.paths), u""_s);
}

TEST_F(TeacherPick, TheFileHasOneMoreLineEndThanTheText)
{
    maintenance::writeMasterList(test.paths, u"语文_张三\n数学_李四"_s);
    EXPECT_EQ(written(), "语文_张三\n数学_李四\n");
    maintenance::writeMasterList(test.paths, u"语文_张三\n"_s);
    EXPECT_EQ(written(), "语文_张三\n\n");
    EXPECT_EQ(maintenance::readMasterList(test.paths), u"语文_张三\n\n"_s);
}

TEST_F(TeacherPick, AListInTheCodePageOfOlderProgramsIsReadAndBecomesUtf8)
{
    write(QByteArray::fromHex("d3efcec45fd5c5c8fd0a"));
    EXPECT_EQ(maintenance::readMasterList(test.paths), u"语文_张三\n"_s);
    maintenance::writeMasterList(test.paths, u"语文_张三"_s);
    EXPECT_EQ(written(), "语文_张三\n");
}

} // namespace
