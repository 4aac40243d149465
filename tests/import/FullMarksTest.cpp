#include "import/FullMarks.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "platform/runtime/TextFile.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;

class FullMarksTest : public testing::Test
{
protected:
    FullMarksTest() { QDir(folder.path()).mkpath(u"data"_s); }

    void load(const QStringList& subjects, const QString& defaults)
    {
        if (!defaults.isEmpty())
            runtime::writeTextFile(paths.dataFile(u"满分.txt"_s), defaults);
        for (const QString& subject : subjects)
            state.KMImport.push_back({subject, 0, 4});
        marks.load();
    }

    QString mark(int row) const { return marks.marks.TextMatrix(row, 1); }

    QString storedDefaults() const
    {
        QFile file(paths.dataFile(u"满分.txt"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir folder;
    runtime::AppPaths paths{folder.path()};
    support::ScriptedDialogs dialogs;
    importing::ImportState state;
    importing::FullMarks marks{state, paths};
};

TEST_F(FullMarksTest, OffersTheDefaultsOfTheFile)
{
    load({u"语文"_s, u"数学"_s, u"体育"_s}, u"数学=150\n语文=120.5\n"_s);
    EXPECT_EQ(grid::gridText(marks.marks).trimmed(), u"科目\t满分\n语文\t120.5\n数学\t150\n体育"_s);
}

TEST_F(FullMarksTest, MissingFileLeavesAllMarksEmpty)
{
    load({u"语文"_s}, {});
    EXPECT_EQ(mark(1), QString());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(FullMarksTest, LaterLineOverridesAnEarlierOne)
{
    load({u"语文"_s}, u"语文=100\n语文=150\n"_s);
    EXPECT_EQ(mark(1), u"150"_s);
}

TEST_F(FullMarksTest, NameAtTheTailOfAnotherSubjectTakesThatLineAndIsRefused)
{
    load({u"文"_s, u"学"_s}, u"文=80\n语文=120\n大文学=90\n"_s);
    EXPECT_EQ(mark(1), u"=120"_s);
    EXPECT_EQ(mark(2), u"学=90"_s);
    EXPECT_EQ(marks.accept(), 2);
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"=120成绩未设置正确的成绩！"_s, u"学=90成绩未设置正确的成绩！"_s}));
}

TEST_F(FullMarksTest, MarksAboveZeroAreStoredEvenBesideBadOnes)
{
    load({u"语文"_s, u"数学"_s, u"英语"_s}, u"语文=120.5\n数学=0\n"_s);
    EXPECT_EQ(marks.accept(), 3) << "the last bad row is edited";
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"0成绩未设置正确的成绩！"_s, u"成绩未设置正确的成绩！"_s}));
    EXPECT_EQ(state.KMImport[0].KMFull, 120.5F);
    EXPECT_EQ(state.KMImport[1].KMFull, 0.0F);
}

TEST_F(FullMarksTest, AMarkTooLargeToStoreIsToldAndLeavesTheScreenOpen)
{
    load({u"语文"_s, u"数学"_s}, u"语文=1e39\n数学=1e38\n"_s);
    EXPECT_EQ(marks.accept(), 1);
    EXPECT_EQ(dialogs.failures, QStringList{u"满分“1e39”太大，没有存入。"
                                            " - Private Sub Command1_Click/FormShuRuMF"_s});
    EXPECT_EQ(dialogs.shown, dialogs.failures);
    EXPECT_EQ(state.KMImport[0].KMFull, 0.0F);
    EXPECT_EQ(state.KMImport[1].KMFull, 1e38F);
    marks.setText(1, u"150"_s);
    EXPECT_EQ(marks.accept(), std::nullopt);
    EXPECT_EQ(state.KMImport[0].KMFull, 150.0F);
}

TEST_F(FullMarksTest, ARefusedMarkIsAskedForUntilItIsAboveZero)
{
    load({u"语文"_s, u"数学"_s}, u"语文=120\n"_s);
    EXPECT_EQ(marks.accept(), 2);
    EXPECT_EQ(dialogs.shown, QStringList{u"成绩未设置正确的成绩！"_s});
    marks.setText(2, u"-5"_s);
    EXPECT_EQ(marks.accept(), 2);
    marks.setText(2, u"150"_s);
    EXPECT_EQ(marks.accept(), std::nullopt);
    EXPECT_EQ(state.KMImport[1].KMFull, 150.0F);
}

TEST_F(FullMarksTest, OneSubjectIsAcceptedAlone)
{
    load({u"语文"_s}, u"语文=120\n"_s);
    EXPECT_EQ(marks.accept(), std::nullopt);
}

TEST_F(FullMarksTest, TheDefaultsAreThenThoseOfThisImportAlone)
{
    load({u"语文"_s, u"体育"_s}, u"数学=150\n语文=120\n"_s);
    marks.saveDefaults();
    EXPECT_EQ(storedDefaults(), u"语文=120\n体育=\n"_s);
    EXPECT_EQ(state.KMImport[0].KMFull, 0.0F) << "storing defaults accepts nothing";
}

TEST_F(FullMarksTest, DefaultsThatCannotBeWrittenAreReported)
{
    load({u"语文"_s}, {});
    QDir(folder.filePath(u"data"_s)).removeRecursively();
    marks.saveDefaults();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command2_Click/FormShuRuMF"_s));
}

TEST_F(FullMarksTest, AMarkSoSmallThatItIsNoneIsNotAccepted)
{
    load({u"语文"_s}, u"语文=1e-50\n"_s);
    EXPECT_EQ(marks.accept(), 1);
    EXPECT_EQ(dialogs.shown, QStringList{u"1e-50成绩未设置正确的成绩！"_s});
}

TEST_F(FullMarksTest, LeavingWithOpenSubjectsIsAskedAbout)
{
    load({u"语文"_s, u"数学"_s}, u"语文=120\n"_s);
    dialogs.expect(u"还有 2 个科目没有确定满分（语文、数学）。"_s, u"返回"_s);
    EXPECT_FALSE(marks.mayLeave()) << "no mark counts until it was accepted";
    EXPECT_EQ(dialogs.safeOf(u"没有确定满分"_s), u"返回"_s);
    marks.accept();
    dialogs.expect(u"还有 1 个科目没有确定满分（数学）。"_s, u"继续"_s);
    EXPECT_TRUE(marks.mayLeave());
    marks.setText(2, u"150"_s);
    marks.accept();
    EXPECT_TRUE(marks.mayLeave()) << "nothing is asked";
}

} // namespace
