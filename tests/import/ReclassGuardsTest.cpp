#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "ReclassImportFixture.h"
#include "support/FreeFile.h"
#include "support/FullDisk.h"
#include "support/NoRoom.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"

namespace {

using importing::Backup;
using importing::ImportResult;
using runtime::Answer;

/// What a re-classing counts, refuses and survives.
class ReclassGuards : public ReclassImportTest
{
protected:
    /// A school of so many students in class 1, and a sheet that moves each to class 2.
    void school(int size)
    {
        Rows rows;
        for (int number = 1; number <= size; ++number) {
            library.addStudent(1, number, u"学生"_s, u"理"_s);
            rows.push_back({1, number, u"学生"_s, 2, number});
        }
        changes(rows);
    }

    QStringList copies() const { return QDir(library.folder.path()).entryList({u"*.bak"_s}); }
};

TEST_F(ReclassGuards, WhatWillHappenIsCountedAheadOfTheFirstQuestion)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    const qint64 missing = library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    library.addStudent(1, 3, u"李强"_s, u"文"_s);
    library.addStudent(1, 4, u"赵六"_s, u"文"_s);
    library.addStudent(1, 5, u"孙七"_s, u"文"_s);
    library.addStudent(1, 6, u"周八"_s, u"文"_s);
    library.addStudent(1, 7, u"吴九"_s, u"文"_s);
    library.execute(u"insert into 信息表(姓名) values('无号')"_s);
    library.addScores(u"期中"_s, 1, 2, {{u"id"_s, missing}});
    library.addScores(u"期末"_s, 1, 2, {{u"id"_s, 999}});
    library.addScores(u"月考"_s, 1, 2, {{u"id"_s, {}}});
    changes({{1, 1, u"王芳"_s, 3, 7},
             {1, 3, u"李 强"_s, 3, 8},
             {1, 4, {}, 3, 9},
             {1, 5, u"孙七"_s, 3, 7},
             {1, 6, u"周八"_s, u"三"_s, {}},
             {1, 7, u"吴九"_s, runtime::Value::error(u"#N/A"_s), 1},
             {9, 9, u"生人"_s, 3, 1},
             {1, 1, u"王芳"_s, 4, 4}});
    dialogs.expect(counted, u"取消"_s);
    EXPECT_EQ(run(), ImportResult::Stopped);
    ASSERT_EQ(dialogs.questions.size(), 1);
    EXPECT_EQ(dialogs.questions[0],
              u"分班表有 8 行，其中 2 行没有用到。\n"
              "移到新班级和新学号：3 人\n"
              "姓名不一致，要问是否改名，都留在原班：2 人\n"
              "分班表中没有，要问是否删除：1 人\n"
              "　　全部删除会连同他们现在的班级和学号名下的成绩 3 条一并删去\n"
              "　　这些成绩中有 2 条是别人以前的成绩\n"
              "注意：1 人在表格中没有姓名，改名会把姓名清空\n"
              "注意：1 人的新班级或新学号是 0（空单元格和文字都按 0 计）\n"
              "注意：2 人移动以后和别人的班级、学号相同（谁也不删除时）\n"
              "注意：1 人的新班级或新学号是错误值，留在原班\n"
              "注意：1 人在成绩库中没有班级或学号，不能分班\n"
              "\n"
              "继续：问完以后一次写入。\n"
              "取消：学生和成绩都不改动。"_s);
    EXPECT_EQ(dialogs.safeOf(counted), u"取消"_s);
}

TEST_F(ReclassGuards, OfTwoMissingStudentsOnOneNumberTheScoresAreNobodyElsesAndTheyAreTold)
{
    for (const QString& name : {u"王芳"_s, u"陈静"_s}) {
        const qint64 id = library.addStudent(1, 1, name, u"文"_s);
        library.addScores(u"期中"_s, 1, 1, {{u"id"_s, id}});
    }
    changes({});
    dialogs.expect(counted, u"取消"_s);
    run();
    EXPECT_TRUE(dialogs.questions[0].contains(u"分班表中没有，要问是否删除：2 人\n"
                                              "　　全部删除会连同他们现在的班级和学号名下的成绩 2 "
                                              "条一并删去\n"
                                              "注意：2 人与别人同班同号，删除其中一人会连同另一人的"
                                              "成绩一并删去\n\n"_s))
        << dialogs.questions[0].toStdString();
}

TEST_F(ReclassGuards, ASoundSheetIsCountedInFourLines)
{
    school(2);
    goOn();
    EXPECT_EQ(dialogs.questions, QStringList{u"分班表有 2 行，其中 0 行没有用到。\n"
                                             "移到新班级和新学号：2 人\n"
                                             "姓名不一致，要问是否改名，都留在原班：0 人\n"
                                             "分班表中没有，要问是否删除：0 人\n"
                                             "\n"
                                             "继续：问完以后一次写入。\n"
                                             "取消：学生和成绩都不改动。"_s});
}

TEST_F(ReclassGuards, AfterCancelOfTheCountsOnlyTheWorkTableIsWritten)
{
    school(2);
    bool told = false;
    QObject::connect(&library.scores, &library::ScoreLibrary::changed, [&] { told = true; });
    dialogs.expect(counted, u"取消"_s);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown.size(), 1);
    EXPECT_EQ(students(u"班级,学号"_s), u"1|1 / 1|2"_s);
    EXPECT_EQ(table(u"count(*),max(已分班)"_s), u"2|0"_s);
    EXPECT_FALSE(told);
}

TEST_F(ReclassGuards, AnErrorCellIsToldAndMovesNobody)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    const runtime::Value error = runtime::Value::error(u"#N/A"_s);
    changes({{1, 1, u"王芳"_s, 3, error}, {1, 2, error, 3, 2}});
    dialogs.expect(isOtherName, Answer::No);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures, QStringList(2, u"单元格里是错误值“#N/A”，没有存入。"_s + tag));
    EXPECT_EQ(students(), u"1|1|王芳 / 1|2|陈静"_s);
    EXPECT_EQ(table(), u"1|1|王芳|3|NULL|0 / 1|2|NULL|3|2|0"_s);
}

TEST_F(ReclassGuards, AStudentWithoutClassOrNumberIsToldAndPassedOver)
{
    library.execute(u"insert into 信息表(学号,姓名) values(1,'无班')"_s);
    library.execute(u"insert into 信息表(班级,姓名) values(1,'无号')"_s);
    changes({{0, 1, u"无班"_s, 3, 1}, {1, 0, u"无号"_s, 3, 2}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures,
              (QStringList{u"“无班”在成绩库中没有班级或学号，不能分班。"_s + tag,
                           u"“无号”在成绩库中没有班级或学号，不能分班。"_s + tag}));
    EXPECT_EQ(students(), u"NULL|1|无班 / 1|NULL|无号"_s);
}

TEST_F(ReclassGuards, NamesOfAnyLettersMoveAndAreTakenOver)
{
    for (const QString& name : {u"O'Neil"_s, u"--"_s, u"甲\n乙"_s, u"%1"_s, u"\"); drop"_s}) {
        library.execute(u"delete * from 信息表"_s);
        library.addStudent(1, 1, name, u"文"_s);
        library.addStudent(1, 2, u"陈静"_s, u"文"_s);
        changes({{1, 1, name, 3, 7}, {1, 2, name, 3, 8}});
        dialogs.expect(isOtherName, Answer::Yes);
        EXPECT_EQ(goOn(), ImportResult::Finished);
        EXPECT_EQ(students(), u"3|7|"_s + name + u" / 1|2|"_s + name);
        EXPECT_TRUE(dialogs.questions.last().contains(u"号 姓名为：["_s + name + u"]\n"_s));
    }
    EXPECT_EQ(dialogs.failures, QStringList());
}

TEST_F(ReclassGuards, ANameThatIsTooLongIsToldAndItsRowStays)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    const QString name(10'000, u'长');
    changes({{1, 1, name, 3, 7}});
    dialogs.expect(isOtherName, Answer::No);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(
        dialogs.failures,
        QStringList{u"“%1”不能存入列“姓名”：文字超过 50 个字符。"_s.arg(name.left(60)) + tag});
    EXPECT_EQ(table(u"姓名,新学号"_s), u"NULL|7"_s);
}

TEST_F(ReclassGuards, ALongNameOfTheLibraryIsAskedAboutWhole)
{
    const QString name(10'000, u'\'');
    library.execute(u"insert into 信息表(班级,学号,姓名) values(1,1,replace(hex(zeroblob(5000)),"
                    "'0',''''))"_s);
    changes({});
    dialogs.expect(isMissing, Answer::Ok);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_TRUE(dialogs.questions.last() == missing(u"1 班 1 号 "_s + name));
    EXPECT_EQ(students(), QString());
}

TEST_F(ReclassGuards, AnEmptySheetLeavesEveryoneToTheQuestions)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.execute(u"insert into 分班表(班级) values(9)"_s);
    changes({});
    dialogs.expect(isMissing, Answer::Cancel);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(table(), QString());
}

TEST_F(ReclassGuards, RefusesAnotherFirstRowAndWritesNothing)
{
    library.execute(u"insert into 分班表(班级) values(9)"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号 "_s}});
    EXPECT_EQ(run(Backup::Make), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前5列为：班级、学号、姓名、新班级、新学号"_s});
    EXPECT_EQ(dialogs.look(u"格式不对"_s), errorBox);
    EXPECT_EQ(table(u"班级"_s), u"9"_s);
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(ReclassGuards, NeedsAnOpenWorkbook)
{
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
}

TEST_F(ReclassGuards, OneCopyIsMadeAheadOfTheFirstWrite)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.execute(u"insert into 分班表(班级) values(9)"_s);
    changes({{1, 1, u"王芳"_s, 3, 7}});
    dialogs.expect(counted, u"继续"_s);
    EXPECT_EQ(run(Backup::Make), ImportResult::Finished);
    ASSERT_EQ(copies().size(), 1);
    library.scores.LibPath = library.file(copies()[0]);
    library.scores.OpenDB();
    EXPECT_EQ(students(), u"1|1|王芳"_s);
    EXPECT_EQ(table(u"班级"_s), u"9"_s);
}

TEST_F(ReclassGuards, NothingHoldsTheFileWhileAQuestionWaits)
{
    WatchedQuestions watched;
    int asked = 0;
    watched.whileWaiting = [&] {
        ++asked;
        EXPECT_TRUE(support::isFree(library.scores.LibPath));
    };
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    changes({{1, 1, u"王方"_s, 3, 7}});
    watched.expect(counted, u"继续"_s);
    watched.expect(isOtherName, Answer::Yes);
    watched.expect(isMissing, Answer::Ok);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(students(), u"1|1|王方"_s);
}

TEST_F(ReclassGuards, WhatAnotherProgramWroteMeanwhileEndsTheRun)
{
    WatchedQuestions watched;
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    library.addScores(u"期中"_s, 1, 2, {});
    changes({{1, 1, u"王芳"_s, 3, 7}});
    watched.expect(counted, u"继续"_s);
    watched.expect(isMissing, Answer::Ok);
    support::OtherProgram other(library.scores.LibPath);
    watched.whileWaiting = [&] { other.run("update 信息表 set 备注='改' where 学号=2"); };
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(
        watched.shown.mid(2),
        QStringList{u"回答问题期间，别的程序改动了成绩库，学生和成绩都没有写入。请重新分班。"_s
                    + tag});
    EXPECT_EQ(students(u"班级,学号,备注"_s), u"1|1|NULL / 1|2|改"_s);
    EXPECT_EQ(scoreRows(u"学号"_s), u"2"_s);
}

TEST_F(ReclassGuards, CancelWhileTheTableIsFilledWritesNothing)
{
    school(5);
    library.execute(u"insert into 分班表(班级) values(9)"_s);
    progress.cancelAfter = 3;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(table(u"班级"_s), u"9"_s);
}

TEST_F(ReclassGuards, CancelWhileStudentsAreWrittenLeavesThemAll)
{
    school(5);
    for (const int after : {5, 7, 9}) {
        dialogs.shown.clear();
        progress = {};
        progress.cancelAfter = after;
        EXPECT_EQ(goOn(), ImportResult::Stopped);
        EXPECT_EQ(dialogs.shown.size(), 1) << "the counts alone";
        EXPECT_EQ(students(u"sum(班级),count(*)"_s), u"5|5"_s);
        EXPECT_EQ(table(u"count(*),max(已分班)"_s), u"5|0"_s);
    }
}

TEST_F(ReclassGuards, ARefusedStatementIsToldAheadOfTheClosingWords)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    library.execute(u"create unique index once on 信息表(班级, 学号)"_s);
    changes({{1, 1, u"王芳"_s, 3, 7}, {1, 2, u"陈静"_s, 3, 7}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown.mid(1),
              (QStringList{u"已经有同样的内容，或缺少必需的内容，没有写入。"
                           "（UNIQUE constraint failed: 信息表.班级, 信息表.学号）"_s
                               + tag,
                           u"移动 1 人，改名 0 人，删除 0 人（成绩 0 条），留在原班 1 人。"_s,
                           u"分班完成！"_s}));
    EXPECT_EQ(students(), u"3|7|王芳 / 1|2|陈静"_s);
}

TEST_F(ReclassGuards, AFullDiskStopsItInOneSentence)
{
    school(400);
    const qint64 size = QFile(library.scores.LibPath).size();
    {
        const support::FullDisk disk{rlim_t(size)};
        EXPECT_EQ(run(), ImportResult::Stopped);
    }
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].endsWith(tag)) << dialogs.shown[0].toStdString();
    EXPECT_EQ(table(), QString());
    EXPECT_EQ(students(u"sum(班级)"_s), u"400"_s);
}

TEST_F(ReclassGuards, ADiskThatIsFullAfterTheQuestionsLeavesTheStudents)
{
    WatchedQuestions watched;
    school(400);
    std::optional<support::FullDisk> disk;
    watched.whileWaiting = [&] { disk.emplace(1); };
    watched.expect(counted, u"继续"_s);
    EXPECT_EQ(run(), ImportResult::Stopped);
    disk.reset();
    ASSERT_EQ(watched.shown.size(), 2);
    EXPECT_TRUE(watched.shown[1].endsWith(tag)) << watched.shown[1].toStdString();
    EXPECT_EQ(students(u"sum(班级)"_s), u"400"_s);
    EXPECT_EQ(table(u"count(*),max(已分班)"_s), u"400|0"_s);
}

TEST_F(ReclassGuards, AReadOnlyLibraryIsToldOnce)
{
    school(2);
    library.scores.Conn.Close();
    QFile::setPermissions(library.folder.path(), QFile::Permissions(0x7777));
    QFile::setPermissions(library.scores.LibPath,
                          QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    {
        const support::OrdinaryUser user;
        library.scores.OpenDB();
    }
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"成绩库是只读的，不能写入。"_s + tag});
}

TEST_F(ReclassGuards, ALibraryThatAnotherProgramWritesIsToldOnce)
{
    school(2);
    support::OtherProgram other(library.scores.LibPath);
    other.run("begin immediate");
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s
                          + tag});
}

TEST_F(ReclassGuards, ALibraryWithoutTheWorkTableIsToldOnce)
{
    school(2);
    library.execute(u"drop table 分班表"_s);
    EXPECT_EQ(run(), ImportResult::Stopped);
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.shown[0].endsWith(tag));
    EXPECT_EQ(students(u"班级,学号"_s), u"1|1 / 1|2"_s);
}

TEST_F(ReclassGuards, AllRowsOfALongSheetComeIn)
{
    Rows rows;
    for (int number = 1; number <= 70'000; ++number)
        rows.push_back({1, number, u"王芳"_s, 2, number});
    changes(rows);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(table(u"count(*),max(新学号)"_s), u"70000|70000"_s);
}

TEST_F(ReclassGuards, ACopyThatDoesNotFitIsToldBeforeTheQuestions)
{
    school(1);
    support::outgrowDisk(library);
    EXPECT_EQ(run(library::Backup::Make), ImportResult::Stopped);
    support::expectOnlyNoRoomTold(dialogs.shown);
}

} // namespace
