#include "ReclassImportFixture.h"

namespace {

using importing::ImportResult;
using runtime::Answer;

TEST_F(ReclassImportTest, StudentsMoveAndTheirScoresStay)
{
    const qint64 first = library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    const qint64 second = library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    library.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
    changes({{1, 2, u"陈静"_s, 4, 11}, {1, 1, u"王芳"_s, 3, 7}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(), u"3|7|王芳 / 4|11|陈静"_s);
    EXPECT_EQ(table(), u"1|2|陈静|4|11|%1 / 1|1|王芳|3|7|%2"_s.arg(second).arg(first));
    EXPECT_EQ(scoreRows(u"班级,学号,姓名"_s), u"1|1|王芳"_s);
    EXPECT_EQ(dialogs.shown.mid(1),
              (QStringList{u"移动 2 人，改名 0 人，删除 0 人（成绩 0 条），留在原班 0 人。"_s,
                           u"分班完成！"_s}));
    EXPECT_EQ(progress.texts,
              (QStringList{u"开始分班..."_s, QString(), u"开始分班..."_s, QString()}));
}

TEST_F(ReclassImportTest, TwoStudentsSwapTheirNumbers)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addStudent(1, 2, u"陈静"_s, u"文"_s);
    library.addStudent(1, 3, u"李强"_s, u"文"_s);
    changes({{1, 1, u"王芳"_s, 1, 2}, {1, 2, u"陈静"_s, 1, 3}, {1, 3, u"李强"_s, 1, 1}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(), u"1|2|王芳 / 1|3|陈静 / 1|1|李强"_s);
}

TEST_F(ReclassImportTest, ASecondRunFindsMovedStudentsAbsent)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    changes({{1, 1, u"王芳"_s, 3, 7}});
    goOn();
    dialogs.expect(isMissing, Answer::Cancel);
    goOn();
    EXPECT_EQ(dialogs.questions.last(), missing(u"3 班 7 号 王芳"_s));
    EXPECT_EQ(students(), u"3|7|王芳"_s);
    EXPECT_EQ(table(u"count(*),max(已分班)"_s), u"1|0"_s) << "each run begins with an empty table";
}

TEST_F(ReclassImportTest, CellsAreReadAsNumbersAndNamesAsTheyStand)
{
    changes({{u"1班"_s, u" 2"_s, u" 王芳 "_s, u"三"_s, u"07"_s},
             {{}, 5, u"无"_s, 1, 1},
             {u""_s, 5, u"无"_s, 1, 1},
             {2.000000000000004, {}, 12, {}, 1.5}});
    goOn();
    EXPECT_EQ(table(), u"1|2| 王芳 |0|7|0 / 2|0|12|0|1.5|0"_s) << "rows without a class are gaps";
}

TEST_F(ReclassImportTest, AnUnknownRowIsStoredAndNeverUsed)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    changes({{9, 9, u"生人"_s, 3, 8}, {1, 1, u"王芳"_s, 3, 7}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(table(u"姓名,已分班>0"_s), u"生人|0 / 王芳|1"_s);
    EXPECT_EQ(students(), u"3|7|王芳"_s);
    EXPECT_EQ(dialogs.questions.size(), 1) << "nobody is asked about him";
}

TEST_F(ReclassImportTest, AMissingStudentGoesWithEveryScoreOfHisClassAndNumber)
{
    const qint64 gone = library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    const qint64 stays = library.addStudent(2, 5, u"陈静"_s, u"文"_s);
    library.addScores(u"期初"_s, 1, 1, {{u"id"_s, stays}, {u"姓名"_s, u"陈静"_s}});
    library.addScores(u"期中"_s, 1, 1, {});
    library.addScores(u"期末"_s, 1, 9, {{u"id"_s, gone}});
    changes({{2, 5, u"陈静"_s, 2, 6}});
    dialogs.expect(isMissing, Answer::Ok);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(dialogs.questions.last(), missing(u"1 班 1 号 王芳"_s));
    EXPECT_EQ(dialogs.look(isMissing),
              (support::BoxLook{u"数据错误"_s, runtime::Buttons::OkCancel}));
    EXPECT_EQ(students(), u"2|6|陈静"_s);
    EXPECT_EQ(scoreRows(u"考试名称"_s), u"期末"_s) << "his earlier number keeps its scores";
    EXPECT_EQ(dialogs.shown[2], u"移动 1 人，改名 0 人，删除 1 人（成绩 2 条），留在原班 0 人。"_s);
}

TEST_F(ReclassImportTest, AMissingStudentStaysOnCancel)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.addScores(u"期中"_s, 1, 1, {});
    changes({});
    dialogs.expect(isMissing, Answer::Cancel);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(), u"1|1|王芳"_s);
    EXPECT_EQ(scoreRows(u"考试名称"_s), u"期中"_s);
    EXPECT_EQ(dialogs.shown[2], u"移动 0 人，改名 0 人，删除 0 人（成绩 0 条），留在原班 1 人。"_s);
}

TEST_F(ReclassImportTest, OneWhoMovesToTheNumberOfARemovedStudentStays)
{
    for (const bool isMovedFirst : {true, false}) {
        library.execute(u"delete * from 信息表"_s);
        library.addStudent(1, isMovedFirst ? 1 : 2, isMovedFirst ? u"王芳"_s : u"陈静"_s, u"文"_s);
        library.addStudent(1, isMovedFirst ? 2 : 1, isMovedFirst ? u"陈静"_s : u"王芳"_s, u"文"_s);
        changes({{1, 1, u"王芳"_s, 1, 2}});
        dialogs.expect(isMissing, Answer::Ok);
        EXPECT_EQ(goOn(), ImportResult::Finished);
        EXPECT_EQ(students(), u"1|2|王芳"_s);
    }
}

TEST_F(ReclassImportTest, ANameThatDiffersIsAskedAboutAndItsStudentStays)
{
    const struct
    {
        Answer answer;
        QString name;
        QString summary;
    } answers[] = {
        {Answer::Yes, u"王方"_s, u"改名 1 人"_s},
        {Answer::No, u"王芳"_s, u"改名 0 人"_s},
        {Answer::Cancel, u"王芳"_s, u"改名 0 人"_s},
    };
    for (const auto& tried : answers) {
        library.execute(u"delete * from 信息表"_s);
        library.execute(u"delete * from 成绩表"_s);
        dialogs.shown.clear();
        library.addStudent(1, 1, u"王芳"_s, u"文"_s);
        library.addStudent(1, 2, u"陈静"_s, u"文"_s);
        library.addScores(u"期中"_s, 1, 1, {});
        changes({{1, 1, u"王方"_s, 3, 7}, {1, 2, u"陈静"_s, 3, 8}});
        dialogs.expect(isOtherName, tried.answer);
        EXPECT_EQ(goOn(), ImportResult::Finished) << "the run does not stop";
        EXPECT_EQ(students(), u"1|1|%1 / 3|8|陈静"_s.arg(tried.name));
        EXPECT_EQ(table(u"姓名,已分班>0"_s), u"王方|0 / 陈静|1"_s);
        EXPECT_EQ(scoreRows(u"姓名"_s), u"王芳"_s);
        EXPECT_EQ(dialogs.shown[2],
                  u"移动 1 人，%1，删除 0 人（成绩 0 条），留在原班 1 人。"_s.arg(tried.summary));
    }
}

TEST_F(ReclassImportTest, TheQuestionAboutNamesTellsBoth)
{
    library.addStudent(1, 2, u"王芳"_s, u"文"_s);
    changes({{1, 2, u"王方"_s, 3, 7}});
    dialogs.expect(isOtherName, Answer::No);
    goOn();
    EXPECT_EQ(dialogs.questions.last(),
              u"Excel表格中学生的学号和姓名： [王方] 与数据库中记录的不一致！\n\n"
              "Excel表格中：1班2号 姓名为：[王方]\n"
              "数据库中记录：1班2号 姓名为：[王芳]，二者不一致！\n\n"
              "[是]用现有姓名替换掉数据库中记录的姓名\n"
              "[否]保留数据库中记录的姓名,继续录入,即将[王方]和[王芳]认为是同一人\n"
              "[取消]终止当前导入\n"_s);
    EXPECT_EQ(dialogs.look(isOtherName),
              (support::BoxLook{u"数据错误"_s, runtime::Buttons::YesNoCancel}));
}

TEST_F(ReclassImportTest, QuestionsComeInTableOrderAndOfferAnAnswerForTheRest)
{
    library.addStudent(1, 4, u"甲"_s, u"文"_s);
    library.addStudent(1, 3, u"乙"_s, u"文"_s);
    library.addStudent(1, 2, u"丙"_s, u"文"_s);
    changes({{1, 3, u"又"_s, 2, 1}});
    dialogs.expect(u"1 班 4 号 甲"_s, Answer::Cancel);
    dialogs.expect(u"[又]"_s, Answer::No);
    dialogs.expect(u"1 班 2 号 丙"_s, Answer::Cancel);
    goOn();
    EXPECT_EQ(dialogs.questions.size(), 4);
    EXPECT_EQ(dialogs.questionsOfMany.size(), 3);
}

TEST_F(ReclassImportTest, AnAnswerForTheRestStandsForItsKindOfQuestionAlone)
{
    for (int number = 1; number <= 3; ++number)
        library.addStudent(1, number, u"缺"_s, u"文"_s);
    for (int number = 4; number <= 6; ++number)
        library.addStudent(1, number, u"旧名"_s, u"文"_s);
    changes({{1, 4, u"新名"_s, 2, 1}, {1, 5, u"新名"_s, 2, 2}, {1, 6, u"新名"_s, 2, 3}});
    dialogs.expect(u"1 班 1 号"_s, Answer::Cancel);
    dialogs.expectForRest(u"1 班 2 号"_s, Answer::Ok);
    dialogs.expectForRest(isOtherName, Answer::Yes);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(), u"1|1|缺 / 1|4|新名 / 1|5|新名 / 1|6|新名"_s);
}

TEST_F(ReclassImportTest, ARecordThatAnEarlierAnswerRemovedIsPassedOver)
{
    // A library whose 信息表 came without a key.
    library.execute(u"create table t as select * from 信息表"_s);
    library.execute(u"drop table 信息表"_s);
    library.execute(u"alter table t rename to 信息表"_s);
    for (int number = 1; number <= 3; ++number)
        library.execute(u"insert into 信息表(ID,班级,学号,姓名) values(%1,1,%2,'王芳')"_s
                            .arg(number == 3 ? 8 : 7)
                            .arg(number));
    changes({});
    dialogs.expect(u"1 班 1 号"_s, Answer::Ok);
    dialogs.expect(u"1 班 3 号"_s, Answer::Cancel);
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(u"学号"_s), u"3"_s);
}

TEST_F(ReclassImportTest, OfRowsWithOneNumberTheFirstCounts)
{
    const qint64 first = library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    const qint64 second = library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    changes({{1, 1, u"王芳"_s, 3, 7}, {1, 1, u"王芳"_s, 3, 8}});
    EXPECT_EQ(goOn(), ImportResult::Finished);
    EXPECT_EQ(students(u"班级,学号,ID"_s), u"3|7|%1 / 3|7|%2"_s.arg(first).arg(second))
        << "both are found in the same row";
    EXPECT_EQ(table(u"新学号,已分班"_s), u"7|%1 / 8|0"_s.arg(second));
}

TEST_F(ReclassImportTest, AfterwardsTheNewClassesAreKnownAndTheChangeIsTold)
{
    library.addStudent(1, 1, u"王芳"_s, u"文"_s);
    library.reload();
    int told = 0;
    QObject::connect(&library.scores, &library::ScoreLibrary::changed, [&] {
        ++told;
        EXPECT_EQ(library.scores.catalogue.ClassTable.at(0).at(0).number, 3);
        EXPECT_EQ(dialogs.shown.size(), 1) << "the lists stand before the closing words";
    });
    changes({{1, 1, u"王芳"_s, 3, 7}});
    goOn();
    EXPECT_EQ(told, 1);
}

} // namespace
