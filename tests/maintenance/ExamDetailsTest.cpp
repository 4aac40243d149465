#include "maintenance/ExamDetails.h"

#include <QDir>

#include <gtest/gtest.h>

#include "platform/grid/GridText.h"
#include "scoring/Scoring.h"
#include "support/FileBytes.h"
#include "support/NoRoom.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;
using maintenance::DetailsSave;
using maintenance::ExamDetails;

const QString tag = u" - Sub SaveExam/ExamDetails"_s;
const QString scoreQuestion =
    u"已保存。满分或公式变了，“期中”的总分、名次、Z分和T分还是按原来的算的。\n现在重新计算吗？"_s;
const QString stale =
    u"“期中”的总分、名次、Z分和T分还是旧的。请在考试列表里选中它，再按“计算总分”。"_s;
const QString setting = u"select 设置 from 设置表 where 名称='进行对比分析的考试'"_s;

/// Columns of the grid.
enum Col { Item, ArtsNow, Arts, ScienceNow, Science };
/// Rows of the grid.
enum Row { Heading, Remark, Chinese, Maths, Geography, Total };

class ExamDetailsOf : public testing::Test
{
protected:
    ExamDetailsOf()
    {
        test.addStudent(1, 1, u"甲"_s, u"文"_s);
        test.addStudent(2, 1, u"乙"_s, u"理"_s);
        test.addStudent(2, 2, u"丙"_s, u"理"_s);
        test.addExam(u"期中"_s, u"文"_s, 1,
                     {{u"语文"_s, 150}, {u"地理"_s, 100.5F}, {u"总分"_s, u"语文+地理"_s}});
        test.addExam(u"期中"_s, u"理"_s, 1,
                     {{u"语文"_s, 150}, {u"数学"_s, 120}, {u"总分"_s, u"语文+数学"_s}});
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 100}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 100}, {u"地理"_s, 90}});
        test.addScores(u"期中"_s, 2, 1, {{u"语文"_s, 110}, {u"数学"_s, 100}});
        test.addScores(u"期中"_s, 2, 2, {{u"语文"_s, 90}, {u"数学"_s, -1}});
        test.addScores(u"期末"_s, 2, 1, {{u"语文"_s, 60}});
        test.execute(u"insert into 教师表(考试名称, 班级) values('期中', 1)"_s);
        test.reload();
        EXPECT_TRUE(details.load(u"期中"_s));
    }

    void type(int row, int col, const QString& text)
    {
        EXPECT_TRUE(details.isTypedInto(row, col));
        details.items.setTextMatrix(row, col, text);
    }

    DetailsSave save(Backup backup = Backup::SwitchedOff) { return details.save(progress, backup); }

    QString exams() { return test.rows(u"select * from 考试名称表 order by ID"_s); }

    /// Saves nothing and says this.
    void refuse(const QString& message)
    {
        const QString before = exams();
        test.dialogs.shown.clear();
        EXPECT_EQ(save(Backup::Make), DetailsSave::NotSaved);
        EXPECT_EQ(test.dialogs.shown, QStringList{message});
        EXPECT_EQ(exams(), before);
        EXPECT_TRUE(details.isChanged()) << "what was typed stays";
        EXPECT_EQ(copies().size(), 0);
    }

    void refuseName(const QString& name, const QString& message)
    {
        details.name = name;
        refuse(message);
        EXPECT_FALSE(details.refusedCell());
    }

    QStringList copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files);
    }

    support::TestLibrary test{{u"语文"_s, u"数学"_s, u"地理"_s, u"总分"_s}};
    ExamDetails details{test.scores};
    runtime::NoProgress progress;
};

TEST_F(ExamDetailsOf, AnExamShowEachStreamAsItIsAndAsItIsChanged)
{
    EXPECT_EQ(grid::gridText(details.items).replace(u'\t', u'|'),
              u"项目|文：现在|文：改为|理：现在|理：改为\n"
              "备注||||\n"
              "语文 满分|150|150|150|150\n"
              "数学 满分|未考||120|120\n"
              "地理 满分|100.5|100.5|未考|\n"
              "总分 公式|语文+地理|语文+地理|语文+数学|语文+数学\n"_s);
    EXPECT_FALSE(details.isChanged());
    EXPECT_FALSE(details.isTypedInto(Heading, Arts));
    EXPECT_FALSE(details.isTypedInto(Chinese, ArtsNow));
    EXPECT_FALSE(details.isTypedInto(Chinese, Item));
    EXPECT_EQ(details.exams(), (QStringList{u"期中"_s, u"期末"_s}));
}

TEST_F(ExamDetailsOf, AnExamThatIsNotThereAreTold)
{
    EXPECT_FALSE(details.load(u"' or ''='"_s));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里已经没有考试“' or ''='”了。"_s});
    EXPECT_EQ(details.exam(), u"期中"_s);
}

TEST_F(ExamDetailsOf, AnExamListItsChanges)
{
    details.name = u"期中考试"_s;
    type(Remark, Science, u"补考"_s);
    type(Chinese, Arts, u"１２０"_s);
    type(Maths, Arts, u"100"_s);
    type(Geography, Arts, u"0"_s);
    type(Total, Arts, u"语文＋数学 ＋地理"_s);
    type(Total, Science, {});
    EXPECT_EQ(details.changes(),
              (QStringList{u"考试名称：期中 → 期中考试"_s, u"备注（理）：（空） → 补考"_s,
                           u"语文（文）满分：150 → 120"_s, u"数学（文）满分：未考 → 100"_s,
                           u"地理（文）满分：100.5 → 未考"_s,
                           u"总分（文）：语文+地理 → 语文+数学+地理（没有考地理，不计入）"_s,
                           u"总分（理）：语文+数学 → （空）"_s}));
}

TEST_F(ExamDetailsOf, AnExamTakeTheSameNumberWrittenOtherwiseForNoChange)
{
    type(Chinese, Arts, u" 150.0 "_s);
    type(Maths, Arts, u"0"_s);
    type(Total, Arts, u" 语文 + 地理 "_s);
    EXPECT_FALSE(details.isChanged());
}

TEST_F(ExamDetailsOf, AnExamSaveEverythingInOneBatchBehindACopy)
{
    const QByteArray before = support::read(test.scores.LibPath);
    details.name = u"期中考试"_s;
    type(Remark, Science, u"'; --\n补考"_s);
    EXPECT_EQ(save(Backup::Make), DetailsSave::Saved);
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(test.rows(u"select 考试名称, 科类, 备注 from 考试名称表"_s),
              u"期中考试|文|NULL / 期中考试|理|'; --\n补考 / 期末|理|NULL"_s);
    EXPECT_EQ(details.exam(), u"期中考试"_s);
    EXPECT_FALSE(details.isChanged());
    ASSERT_EQ(copies().size(), 1);
    EXPECT_EQ(support::read(test.file(copies()[0])), before);
    EXPECT_EQ(library::notedOccasions(test.file(copies()[0])).back().occasion.text,
              u"考试信息 期中"_s);
}

TEST_F(ExamDetailsOf, AnExamRenameItWhereverItIsNamed)
{
    test.execute(u"update 设置表 set 设置='期末,期中,期中x', 选项='期中' "
                 "where 名称='进行对比分析的考试'"_s);
    test.execute(u"create table 附表(考试名称 text(50), 期中 text(50))"_s);
    test.execute(u"insert into 附表 values('期中', '期中')"_s);
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores, [&] { ++told; });
    details.name = u"甲\"]--"_s;
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(test.rows(u"select distinct 考试名称 from 成绩表"_s), u"期末 / 甲\"]--"_s);
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表 where 考试名称='甲\"]--'"_s), u"3"_s);
    EXPECT_EQ(test.rows(u"select 考试名称 from 教师表"_s), u"甲\"]--"_s);
    EXPECT_EQ(test.rows(u"select * from 附表"_s), u"甲\"]--|期中"_s);
    EXPECT_EQ(test.rows(setting), u"期末,甲\"]--,期中x"_s);
    EXPECT_EQ(test.rows(u"select 选项 from 设置表 where 名称='进行对比分析的考试'"_s),
              u"甲\"]--"_s);
    EXPECT_EQ(test.scores.catalogue.ExamList, (QStringList{u"甲\"]--"_s, u"期末"_s}));
    EXPECT_EQ(told, 1);
}

TEST_F(ExamDetailsOf, AnExamRefuseNamesThatCannotBe)
{
    refuseName(u" "_s, u"考试名称不能是空的。"_s);
    refuseName(u" 期中"_s, u"考试名称的两端不能有空格。"_s);
    refuseName(u"期,中"_s, u"考试名称里不能有逗号“,”，几次考试的名称之间用它隔开。"_s);
    refuseName(u"' or ''='"_s, u"考试名称里不能有单引号“'”，这样的考试不能浏览和统计。"_s);
    refuseName(u"(全部)"_s, u"“(全部)”在分析设置里代表所有考试，不能作考试名称。"_s);
    refuseName(QString(10'000, u'长'), u"考试名称最多 50 个字，现在有 10000 个字。"_s);
    refuseName(u"期\n中"_s, u"考试名称里不能有换行、制表符等控制字符。"_s);
    refuseName(u"期末"_s, u"已有考试“期末”，请换一个名称。"_s);
    test.addExam(u"Test"_s, u"理"_s, 3, {});
    refuseName(u"TEST"_s, u"已有考试“Test”，与“TEST”只有字母的大小写不同，请换一个名称。"_s);
    test.execute(u"insert into 教师表(考试名称, 班级) values('旧', 1),('旧', 2)"_s);
    refuseName(u"旧"_s, u"“教师表”里还有 2 行写着考试“旧”，请换一个名称。"_s);
}

TEST_F(ExamDetailsOf, AnExamCanChangeTheCaseOfItsOwnLetters)
{
    test.addExam(u"abc"_s, u"理"_s, 3, {});
    test.execute(u"update 成绩表 set 考试名称='abc' where 考试名称='期末'"_s);
    ASSERT_TRUE(details.load(u"abc"_s));
    details.name = u"ABC"_s;
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(test.rows(u"select count(*) from 成绩表 where 考试名称='ABC' collate binary"_s),
              u"1"_s);
}

TEST_F(ExamDetailsOf, AnExamWhoseNameNoStatementTakesCanBeRenamed)
{
    for (const QString& table : {u"考试名称表"_s, u"成绩表"_s})
        test.execute(u"update %1 set 考试名称='a''b' where 考试名称='期末'"_s.arg(table));
    ASSERT_TRUE(details.load(u"a'b"_s));
    details.name = u"期末"_s;
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(test.rows(u"select 考试名称 from 成绩表 where 语文=60"_s), u"期末"_s);
}

TEST_F(ExamDetailsOf, AnExamTellTwoApartThatDifferInTheCaseOfLetters)
{
    test.addExam(u"abc"_s, u"理"_s, 3, {});
    test.addExam(u"ABC"_s, u"理"_s, 4, {});
    ASSERT_TRUE(details.load(u"abc"_s));
    details.name = u"新"_s;
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(test.rows(u"select 考试名称 from 考试名称表 where 考试编号>2"_s), u"新 / ABC"_s);
}

TEST_F(ExamDetailsOf, AnExamAskBeforeARenameHidesOne)
{
    const QString question =
        u"改名以后考试列表里看不到“期末”，也就不能浏览和统计：列表不列出名称包含在前面的"
        "考试名称里的考试。\n请换一个互不包含的名称。"_s;
    details.name = u"期末之前"_s;
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(Backup::Make), DetailsSave::NotSaved);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(copies().size(), 0);
    test.dialogs.expect(question, u"仍然改名"_s);
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(details.exams(), (QStringList{u"期末之前"_s, u"期末"_s})) << "it can be mended here";
    EXPECT_EQ(test.scores.catalogue.ExamList, QStringList{u"期末之前"_s});
}

TEST_F(ExamDetailsOf, AnExamStoreFullMarksAndFormulasAndSayWhatIsStale)
{
    type(Chinese, Science, u"120"_s);
    type(Geography, Science, u"89.7"_s);
    type(Total, Arts, u"语文"_s);
    test.dialogs.expect(scoreQuestion, u"以后再算"_s);
    EXPECT_EQ(save(), DetailsSave::Stale);
    EXPECT_EQ(test.dialogs.safeOf(scoreQuestion), u"以后再算"_s);
    EXPECT_EQ(test.dialogs.shown.last(), stale);
    EXPECT_EQ(test.rows(u"select 语文, 数学, 地理, 总分 from 考试名称表 where 考试名称='期中'"_s),
              u"150|NULL|100.5|语文 / 120|120|89.7|语文+数学"_s);
    EXPECT_EQ(test.rows(u"select 总分 from 成绩表 where 考试名称='期中'"_s),
              u"NULL / NULL / NULL"_s);
}

TEST_F(ExamDetailsOf, AnExamScoreItAnewIfTheUserWants)
{
    scoring::Scoring(test.scores).score(u"期中"_s, progress);
    type(Total, Science, u"语文"_s);
    test.dialogs.expect(scoreQuestion, u"重新计算"_s);
    EXPECT_EQ(save(), DetailsSave::Scored);
    EXPECT_EQ(test.rows(u"select 总分, 总分年名 from 成绩表 where 考试名称='期中' and 科类='理'"_s),
              u"110|1 / 90|2"_s);
    EXPECT_FALSE(test.dialogs.shown.contains(stale));
}

TEST_F(ExamDetailsOf, AnExamCanLoseAFullMarkThatNobodyHasScoresOf)
{
    test.execute(u"update 成绩表 set 数学=-1"_s);
    type(Maths, Science, u" "_s);
    test.dialogs.expect(scoreQuestion, u"以后再算"_s);
    EXPECT_EQ(save(), DetailsSave::Stale);
    EXPECT_EQ(test.rows(u"select 数学 from 考试名称表 where 考试名称='期中'"_s), u"NULL / NULL"_s);
}

TEST_F(ExamDetailsOf, AnExamAskAboutFullMarksThatScoresContradict)
{
    const QString question = u"这些满分和已有的成绩不符：\n\n语文（理）：1 人的成绩高于 100\n"
                             "数学（理）：改为未考，已有 1 人的成绩\n\n成绩本身不会改变，"
                             "但是统计会按新的满分，未考的科目不再统计。"_s;
    type(Chinese, Arts, u"100"_s);
    type(Chinese, Science, u"100"_s);
    type(Maths, Science, {});
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_EQ(save(Backup::Make), DetailsSave::NotSaved);
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(copies().size(), 0);
    test.dialogs.expect(question, u"仍然保存"_s);
    test.dialogs.expect(scoreQuestion, u"以后再算"_s);
    EXPECT_EQ(save(), DetailsSave::Stale);
}

TEST_F(ExamDetailsOf, AnExamRefuseWhatIsNoFullMark)
{
    for (const QString& bad :
         {u"-1"_s, u"abc"_s, u"' or ''='"_s, u"150分"_s, u"1e3"_s, u"1234567890123456"_s}) {
        type(Geography, Science, bad);
        refuse(u"地理（理）的满分“%1”不是大于 0 的数。没有考的科目请留空。"_s.arg(bad));
        EXPECT_EQ(details.refusedCell(), (grid::CellPlace{Geography, Science}));
    }
}

TEST_F(ExamDetailsOf, AnExamRefuseFormulasAsTheScreenOfTotalsDoes)
{
    type(Total, Arts, u"语文+物理"_s);
    refuse(u"总分公式中添加的科目： 物理 无效！只能添加现有科目。"_s);
    EXPECT_EQ(details.refusedCell(), (grid::CellPlace{Total, Arts}));
    type(Total, Arts, u"'; drop table 成绩表; --"_s);
    refuse(u"总分公式中添加的科目： ';droptable成绩表;-- 无效！只能添加现有科目。"_s);
    type(Total, Arts, u"总分+语文"_s);
    refuse(u"公式里的“总分”是总分：总分没有满分，每次计算都会出错。请写出它所加的各科。"_s);
    type(Total, Arts, QString(10'000, u'语'));
    refuse(u"总分（文）的公式最多 50 个字，现在有 10000 个字。"_s);
}

TEST_F(ExamDetailsOf, AnExamLeaveStrangeValuesThatNobodyTouched)
{
    test.execute(u"update 考试名称表 set 总分='没有的科目', 地理=-5 where 考试名称='期末'"_s);
    ASSERT_TRUE(details.load(u"期末"_s));
    type(Remark, Arts, u"注"_s);
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(test.rows(u"select 总分, 地理, 备注 from 考试名称表 where 考试名称='期末'"_s),
              u"没有的科目|-5|注"_s);
}

TEST_F(ExamDetailsOf, AnExamNoteTheNewNameForTheUndoOfItsImportAheadOfTheWrite)
{
    const QString copy =
        library::backUpLibrary(test.scores.Conn.path(), QDateTime(QDate(2026, 3, 9), QTime(7, 1)),
                               library::Occasion::examImport(u"期中"_s), progress);
    const auto names = [&] { return library::notedOccasions(copy).front().occasion.examNames(); };
    details.name = u"期中甲"_s;
    EXPECT_EQ(save(), DetailsSave::Saved);
    EXPECT_EQ(names(), (QStringList{u"期中甲"_s, u"期中"_s}));

    // One that is not renamed after all is known as before.
    test.execute(u"update 考试名称表 set 备注='别人写的' where 考试名称='期中甲'"_s);
    details.name = u"期中乙"_s;
    EXPECT_EQ(save(), DetailsSave::NotSaved);
    EXPECT_EQ(names(), (QStringList{u"期中乙"_s, u"期中甲"_s, u"期中"_s}));
}

TEST_F(ExamDetailsOf, AnExamNoticeWhatAnotherProgramChangedMeanwhile)
{
    const QString changed = u"打开以后，别的程序改动了这次考试的信息，没有保存。"
                            "请关闭后重新打开，看过现在的内容再改。"_s;
    support::OtherProgram other(test.scores.LibPath);
    details.name = u"期中考试"_s;
    for (const char* sql : {"update 考试名称表 set 语文=140 where 考试名称='期中' and 科类='文'",
                            "insert into 考试名称表(考试名称, 科类) values('期中', '艺')"}) {
        other.run(sql);
        refuse(changed);
        details.load(u"期中"_s);
        details.name = u"期中考试"_s;
    }
    other.run("update 考试名称表 set 语文=99 where 考试名称='期末'");
    EXPECT_EQ(save(), DetailsSave::Saved) << "another exam is none of its business";
    other.run("alter table 考试名称表 drop column 数学");
    details.name = u"期中"_s;
    EXPECT_EQ(save(), DetailsSave::NotSaved);
    EXPECT_EQ(test.dialogs.shown.last(), changed);
}

TEST_F(ExamDetailsOf, AnExamThatWasRemovedMeanwhileSaveNothing)
{
    support::OtherProgram other(test.scores.LibPath);
    details.name = u"期中考试"_s;
    other.run("delete from 考试名称表 where 考试名称='期中'");
    test.dialogs.shown.clear();
    EXPECT_EQ(save(), DetailsSave::NotSaved);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里已经没有考试“期中”了。"_s});
    EXPECT_EQ(test.rows(u"select distinct 考试名称 from 成绩表"_s), u"期中 / 期末"_s);
}

TEST_F(ExamDetailsOf, ALibraryThatCannotBeWrittenSaveNothing)
{
    const auto forAll = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup;
    for (const QString& path : {test.scores.LibPath, test.folder.path()})
        ASSERT_TRUE(QFile::setPermissions(path, forAll));
    const support::OrdinaryUser user;
    test.scores.OpenDB();
    ASSERT_TRUE(details.load(u"期中"_s));
    details.name = u"期中考试"_s;
    test.dialogs.shown.clear();
    EXPECT_EQ(save(), DetailsSave::NotSaved);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库是只读的，不能写入。"_s + tag});
    EXPECT_EQ(test.rows(u"select 考试名称 from 考试名称表"_s), u"期中 / 期中 / 期末"_s);
    EXPECT_EQ(details.changes(), QStringList{u"考试名称：期中 → 期中考试"_s});
}

TEST_F(ExamDetailsOf, ALibraryThatIsLockedSaveNothing)
{
    const QByteArray before = support::read(test.scores.LibPath);
    details.name = u"期中考试"_s;
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_EQ(save(), DetailsSave::NotSaved);
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_EQ(save(), DetailsSave::Saved);
}

TEST_F(ExamDetailsOf, ACopyThatDoesNotFitIsToldBeforeTheQuestions)
{
    type(Chinese, Science, u"90"_s);
    support::outgrowDisk(test);
    EXPECT_EQ(save(Backup::Make), DetailsSave::NotSaved);
    support::expectOnlyNoRoomTold(test.dialogs.shown);
    EXPECT_TRUE(details.isChanged()) << "what was typed stays";
}

} // namespace
