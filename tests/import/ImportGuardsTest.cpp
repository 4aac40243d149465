#include "import/ImportGuards.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include "GuardedImportFixture.h"

namespace {

using importing::ImportResult;
using runtime::Answer;

class ImportGuardsTest : public GuardedImport
{
protected:
    const support::BoxLook error{u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical};
    const QString whichStream = u"班级 12 还没有学生，科类设为："_s;
};

TEST_F(ImportGuardsTest, ANameThatNoRowCanHoldIsRefused)
{
    const std::vector<std::pair<QString, QString>> names{
        {QString(51, u'考'), u"考试名称最多 50 个字，现在有 51 个字。"_s},
        {u"期\n中"_s, u"考试名称里不能有换行、制表符等控制字符。"_s},
        {u"期中\u2028"_s, u"考试名称里不能有换行、制表符等控制字符。"_s},
        {u"ab期初"_s, u"已有考试“AB期初”，与“ab期初”只有字母的大小写不同，请换一个名称。"_s}};
    library.addExam(u"AB期初"_s, u"文"_s, 1, {});
    twoStudents();
    for (const auto& [name, fault] : names) {
        dialogs.shown.clear();
        request.examName = name;
        expectRefused();
        EXPECT_EQ(dialogs.shown, QStringList{u"错误: "_s + fault});
        EXPECT_EQ(dialogs.look(fault), error);
    }
    request.examName = QString(50, u'考');
    EXPECT_EQ(run(), ImportResult::Finished);
}

TEST_F(ImportGuardsTest, ExamsThatAreThereKeepNamesThatDifferInCaseOnly)
{
    library.addExam(u"AB"_s, u"文"_s, 1, {});
    library.addExam(u"ab"_s, u"文"_s, 2, {});
    library.reload();
    request.examName = u"ab"_s;
    twoStudents();
    EXPECT_EQ(run(), ImportResult::Finished) << "the other stream of an exam";
    request.examChoice = importing::ExamChoice::PickedFromList;
    twoStudents();
    dialogs.expect(u"确实要将数据到入 ab 吗"_s, Answer::Ok);
    EXPECT_EQ(run(), ImportResult::Finished);
}

TEST_F(ImportGuardsTest, ANameThatTheListWillPassOverIsAskedAbout)
{
    library.addExam(u"高一期中"_s, u"文"_s, 1, {});
    library.addExam(u"月考"_s, u"文"_s, 2, {});
    library.reload();
    twoStudents();
    dialogs.expect(u"“期中”是已有考试“高一期中”的一部分，导入以后考试列表里看不到它"_s, u"取消"_s);
    expectRefused();
    EXPECT_EQ(dialogs.safeOf(u"看不到它"_s), u"取消"_s);
    dialogs.expect(u"看不到它"_s, u"仍然导入"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.scores.catalogue.ExamList, (QStringList{u"高一期中"_s, u"月考"_s}));
}

TEST_F(ImportGuardsTest, ANameThatTheListShowsIsNotAskedAbout)
{
    library.addExam(u"期中"_s, u"理"_s, 1, {});
    library.addExam(u"高一期中"_s, u"理"_s, 2, {});
    twoStudents();
    EXPECT_EQ(run(), ImportResult::Finished);
    request.examName = u"高二期中"_s;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions, QStringList());
}

TEST_F(ImportGuardsTest, TheStreamOfANewClassServesExamStudentsAndScores)
{
    newClass();
    dialogs.expect(whichStream, u"理"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown, (QStringList{u"提示: "_s + whichStream, u"导入完成！"_s}));
    EXPECT_EQ(questions.labels, QStringList{u"理科：期中"_s});
    EXPECT_EQ(exams(), u"期中|理|1|150"_s);
    EXPECT_EQ(library.rows(u"select 姓名,科类 from 信息表 where 班级=12"_s), u"周八|理"_s);
    EXPECT_EQ(scoreRows(u"姓名,科类"_s), u"周八|理 / 王芳|文"_s);
    EXPECT_EQ(library.scores.catalogue.ClassTable[1].size(), 2U) << "the class is listed";
}

TEST_F(ImportGuardsTest, WithoutAStreamForANewClassNothingIsImported)
{
    newClass();
    dialogs.expect(whichStream, u"取消"_s);
    expectRefused();
    EXPECT_EQ(dialogs.safeOf(whichStream), u"取消"_s);
}

TEST_F(ImportGuardsTest, SeveralNewClassesAreOneQuestion)
{
    sheet({heads({u"语文"_s}),
           {12, 1, u"周八"_s, 90},
           {13, 1, u"吴九"_s, 91},
           {12, 2, u"郑十"_s, 92}});
    dialogs.expect(u"班级 12、13 还没有学生，科类设为："_s, u"文"_s);
    run();
    EXPECT_EQ(scoreRows(u"科类"_s), u"文 / 文 / 文"_s);
}

TEST_F(ImportGuardsTest, TheStreamOfRefusedStudentsStandsInTheirScores)
{
    newClass();
    request.newStudents = importing::NewStudents::Ask;
    dialogs.expect(whichStream, u"理"_s);
    dialogs.expect(u"是否添加新学生"_s, Answer::Cancel);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(u"姓名,科类"_s), u"周八|理 / 王芳|文"_s);
}

TEST_F(ImportGuardsTest, TheLibrarysOwnStreamsAreOffered)
{
    library.execute(u"update 信息表 set 科类='艺术' where 科类='理'"_s);
    newClass();
    dialogs.expect(whichStream, u"艺术"_s);
    run();
    EXPECT_EQ(exams(), u"期中|艺术|1|150"_s);
}

TEST_F(ImportGuardsTest, ALibraryOfOneStreamGivesItWithoutAQuestion)
{
    library.execute(u"update 信息表 set 科类='文'"_s);
    newClass();
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(scoreRows(u"科类"_s), u"文 / 文"_s);
}

TEST_F(ImportGuardsTest, AStreamThatWasChosenBeforeGivesWayToALibrarysOnlyOne)
{
    library.execute(u"update 信息表 set 科类='文'"_s);
    newClass();
    request.streamOfNewClasses = u"理"_s;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(u"科类"_s), u"文 / 文"_s);
}

TEST_F(ImportGuardsTest, AStreamThatWasChosenBeforeIsNotAskedFor)
{
    newClass();
    request.streamOfNewClasses = u"理"_s;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions, QStringList());
    EXPECT_EQ(scoreRows(u"科类"_s), u"理 / 文"_s) << "a class with students keeps theirs";
}

TEST_F(ImportGuardsTest, AnEmptyLibraryAsksForLiberalArtsOrScience)
{
    library.execute(u"delete from 信息表"_s);
    library.reload();
    twoStudents();
    dialogs.expect(u"班级 1、2 还没有学生"_s, u"理"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.scores.catalogue.Streams, QStringList{u"理"_s});
    EXPECT_EQ(exams(), u"期中|理|1|150"_s);
}

TEST_F(ImportGuardsTest, TextsThatAreNoScoresAreListedOnceBeforeAnythingIsWritten)
{
    sheet({heads({u"语文"_s, u"数学"_s}),
           {1, 9, u"新生"_s, u"abc"_s, u"缺考"_s},
           {1, 1, u"王芳"_s, u"abc"_s, u"请假"_s}});
    const QString text =
        u"有 3 个单元格的文字既不是缺考也不是作弊，按 0 分计：abc（2）、请假（1）"_s;
    dialogs.expect(text, u"取消"_s);
    expectRefused();
    EXPECT_EQ(dialogs.safeOf(text), u"取消"_s);
    dialogs.expect(text, u"继续"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions, (QStringList{text, text}));
    EXPECT_EQ(scoreRows(u"语文,数学"_s), u"0|-1 / 0|0"_s);
}

TEST_F(ImportGuardsTest, TextsWithANumberAtTheHeadSayThatItCounts)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, u"87分"_s}, {1, 2, u"陈静"_s, u" 缺考"_s}});
    dialogs.expect(u"有 2 个单元格的文字既不是缺考也不是作弊，按 0 分计：“ 缺考”（1）；"
                   "按开头的数字计：87分（1）"_s,
                   u"继续"_s);
    run();
    EXPECT_EQ(scoreRows(u"语文"_s), u"87 / 0"_s);
}

TEST_F(ImportGuardsTest, ManyTextsAreNotAllListed)
{
    Rows rows{heads({u"语文"_s})};
    for (int number = 10; number < 40; ++number)
        rows.push_back({1, number, u"新生"_s, u"%1文"_s.arg(number).repeated(30)});
    sheet(rows);
    dialogs.expect(u" 等 30 种"_s, u"取消"_s);
    expectRefused();
    EXPECT_LT(dialogs.questions[0].size(), 400);
}

TEST_F(ImportGuardsTest, RowsBehindTheEndAreToldBeforeTheEnd)
{
    sheet(
        {heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}, {1, {}, u"陈静"_s, 80}, {2, 1, u"李强"_s, 70}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"第 3 行没有学号，导入到此为止，从第 3 行起有内容的 2 行没有导入。"_s,
                           u"导入完成！"_s}));
    EXPECT_EQ(scoreRows(u"姓名"_s), u"王芳"_s);
}

TEST_F(ImportGuardsTest, TheSameSheetAgainIsAskedAboutWithTheNumberOfStudents)
{
    twoStudents();
    run();
    const QString text = u"考试“期中”里已有这些学生的成绩，再次导入会使 2 人的成绩重复。"_s;
    questions.labels.clear();
    dialogs.expect(text, u"取消"_s);
    expectRefused();
    EXPECT_EQ(dialogs.safeOf(text), u"取消"_s);
    dialogs.expect(text, u"继续"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(scoreRows(u"姓名"_s), u"王芳 / 李强 / 王芳 / 李强"_s);
}

TEST_F(ImportGuardsTest, TheOtherStreamOfAnExamIsNoRepetition)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    run();
    sheet({heads({u"语文"_s}), {2, 1, u"李强"_s, 80}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions, QStringList());
}

/// Texts that were statements once.
class HostileTexts : public ImportGuardsTest, public testing::WithParamInterface<const char*>
{
protected:
    const QString text = QString::fromUtf8(GetParam());
};

TEST_P(HostileTexts, AsAStudentsNameTouchesNobodyElse)
{
    library.addExam(u"期中"_s, u"文"_s, 1, {});
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 60}});
    library.addScores(u"期中"_s, 1, 2, {{u"语文"_s, 61}});
    const QString others = library.rows(u"select ID,姓名 from 信息表"_s);
    sheet({heads({u"语文"_s}), {1, 3, text, 90}});
    pick();
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select ID,姓名 from 信息表 where ID<4"_s), others);
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where ID=4"_s), text);
    EXPECT_EQ(library.rows(u"select 姓名,语文 from 成绩表 where 学号<3"_s), u"王芳|60 / 陈静|61"_s);
    EXPECT_EQ(dialogs.failures.size(), text.contains(u'\'') ? 1 : 0)
        << "a row of such a name cannot be looked for";
}

TEST_P(HostileTexts, AsAnExamsNameTouchesNoOtherExam)
{
    library.addExam(u"期初"_s, u"文"_s, 1, {{u"语文"_s, 100}});
    twoStudents();
    request.examName = text;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(exams(), u"期初|文|1|100 / %1|文|2|150"_s.arg(text));
    EXPECT_EQ(scoreRows(u"考试名称"_s), text + u" / "_s + text);
    library.execute(u"delete from 成绩表"_s);
    request.examChoice = importing::ExamChoice::PickedFromList;
    dialogs.expect(u"确实要将数据到入"_s, Answer::Ok);
    questions.fullMark = 120;
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures.size(), text.contains(u'\'') ? 1 : 0);
    const QString mark = text.contains(u'\'') ? u"150"_s : u"120"_s;
    EXPECT_EQ(exams(), u"期初|文|1|100 / %1|文|2|%2"_s.arg(text, mark));
}

TEST_P(HostileTexts, AsAStreamTouchesNoOtherStream)
{
    library.execute(u"update 信息表 set 科类='' where 班级=1"_s);
    library.scores.Conn.prepared(u"update 信息表 set 科类=? where 班级=1"_s).bind({text});
    library.scores.Conn.prepared(u"update 信息表 set 科类=? where 班级=1"_s).run();
    library.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 100}});
    library.addExam(u"期初"_s, u"文"_s, 2, {});
    library.addScores(u"期初"_s, 1, 1, {{u"语文"_s, 60}});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    pick();
    dialogs.expect(u"将覆盖 1 名学生"_s, u"只更新本考试"_s);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select 语文 from 考试名称表 where 科类='理'"_s), u"100"_s);
    EXPECT_EQ(scoreRows(u"科类"_s), text + u" / "_s + text);
}

INSTANTIATE_TEST_SUITE_P(Names, HostileTexts,
                         testing::Values("王' --", "' or ''='", "2024--2025", "a/*b", "=1+1",
                                         "张]三", "100%1%2"));

/// Another program holds the library, as long as it lives.
class Lock
{
public:
    explicit Lock(support::TestLibrary& library)
    {
        sqlite3_busy_timeout(library.scores.Conn.handle(), 0);
        m_other.Open(library.scores.Conn.path());
        sqlite3_exec(m_other.handle(), "begin exclusive", nullptr, nullptr, nullptr);
    }

private:
    database::Connection m_other;
};

TEST_F(ImportGuardsTest, ALibraryThatCannotBeReadStopsTheImportWithOneSentence)
{
    twoStudents();
    {
        const Lock lock(library);
        EXPECT_EQ(run(), ImportResult::Stopped);
    }
    EXPECT_EQ(dialogs.shown.size(), 1) << dialogs.shown.join(u'\n').toStdString();
    EXPECT_TRUE(dialogs.failures.value(0).endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
    EXPECT_EQ(questions.labels, QStringList()) << "not asked for a stream 1";
    EXPECT_EQ(exams() + scoreRows(u"*"_s), QString());
}

TEST_F(ImportGuardsTest, AGuardThatTheLibraryRefusesStopsTheImport)
{
    library.addExam(u"期中"_s, u"文"_s, 1, {});
    library.execute(u"alter table 成绩表 drop column 姓名"_s);
    sheet({heads({u"语文"_s}), {1, 9, u"新生"_s, 90}});
    pick();
    const QString before = everything();
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(questions.labels, QStringList());
    ASSERT_EQ(dialogs.failures.size(), 1) << dialogs.failures.join(u'\n').toStdString();
    EXPECT_TRUE(dialogs.failures[0].endsWith(u" - Private Sub Command1_Click/FormDaoRu"_s));
}

/// Answers 取消 to everything, and locks the library while the first question waits.
class LockingDialogs : public runtime::Dialogs
{
public:
    explicit LockingDialogs(support::TestLibrary& library) : m_library(library), m_installed(*this)
    {
    }

    std::optional<Lock> lock;
    QStringList failures;
    int questions = 0;

    Answer message(const QString&, const QString&, runtime::Buttons, runtime::Icon) override
    {
        ++questions;
        lock.emplace(m_library);
        return Answer::Ok;
    }
    void failure(const QString& text) override { failures.append(text); }

private:
    support::TestLibrary& m_library;
    runtime::InstalledDialogs m_installed;
};

TEST_F(ImportGuardsTest, ALockWhileAQuestionWaitsEndsTheImportAndKeepsWhatWasAnswered)
{
    sheet({heads({u"语文"_s}), {1, 9, u"甲"_s, 90}, {1, 10, u"乙"_s, 80}, {1, 1, u"王芳"_s, 70}});
    request.newStudents = importing::NewStudents::Ask;
    LockingDialogs locking(library);
    EXPECT_EQ(run(), ImportResult::Stopped);
    locking.lock.reset();
    EXPECT_EQ(locking.questions, 1);
    EXPECT_EQ(locking.failures.size(), 1) << locking.failures.join(u'\n').toStdString();
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 学号>8"_s), QString());
    EXPECT_EQ(exams() + scoreRows(u"*"_s), QString());
}

} // namespace
