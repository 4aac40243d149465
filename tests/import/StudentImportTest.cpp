#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "StudentImportFixture.h"
#include "support/NoRoom.h"

namespace {

using importing::Backup;
using importing::ImportResult;

TEST_F(StudentImportTest, BringsInTheColumnsThatTheHeadingsName)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"备注"_s, u"科类"_s, u"性别"_s, u"类别代码"_s},
           {1, 2, u"王芳"_s, u"转学"_s, u"文"_s, u"女"_s, 3},
           {u"2"_s, u"03"_s, u"李强"_s, {}, {}, u"男"_s, u"abc"_s}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown, QStringList{u"导入完成！"_s});
    EXPECT_EQ(students(u"班级,学号,姓名,备注,科类,性别,类别代码"_s),
              u"1|2|王芳|转学|文|女|3 / 2|3|李强|NULL|理|男|0"_s);
}

TEST_F(StudentImportTest, WithoutAStreamColumnEveryoneIsInTheSciences)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 2, u"陈静"_s}});
    run();
    EXPECT_EQ(students(u"科类"_s), u"理 / 理"_s);
}

TEST_F(StudentImportTest, EmptyClassEndsTheSheet)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s},
           {1, {}, u"王芳"_s},
           {{}, 2, u"陈静"_s},
           {1, 3, u"李强"_s}});
    run();
    EXPECT_EQ(students(u"学号,姓名"_s), u"0|王芳"_s);
}

TEST_F(StudentImportTest, RowsBelowTheEndOfTheListAreCountedAheadOfTheClosingWords)
{
    const runtime::Value none;
    const struct
    {
        Rows below;
        int rows;
    } sheets[] = {
        {{{none, 2, u"陈静"_s}, {1, 3, u"李强"_s}, {none, none, u""_s}, {1, 4, u"赵六"_s}}, 3},
        {{{none, none, none}, {1, 3, u"李强"_s}}, 1},
        {{{none, 2, u"陈静"_s}}, 1},
        {{{none, none, u""_s}}, 0},
        {{{none, none, none, u"备注，不在列名下面"_s}}, 0},
        {{}, 0},
    };
    for (const auto& tried : sheets) {
        library.execute(u"delete * from 信息表"_s);
        dialogs.shown.clear();
        Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}};
        rows.insert(rows.end(), tried.below.begin(), tried.below.end());
        sheet(rows);
        EXPECT_EQ(run(), ImportResult::Finished);
        QStringList expected{u"导入完成！"_s};
        if (tried.rows > 0)
            expected.prepend(
                u"第 3 行的班级是空的，名单到此为止：从这一行起还有 %1 行有内容，没有导入。"_s.arg(
                    tried.rows));
        EXPECT_EQ(dialogs.shown, expected);
        EXPECT_EQ(students(u"姓名"_s), u"王芳"_s);
    }
}

TEST_F(StudentImportTest, TakesEveryRowOfALongSheet)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s}};
    for (int number = 1; number <= 65'555; ++number)
        rows.push_back({1, number, u"王芳"_s});
    rows.push_back({2, 2, u"最后"_s});
    sheet(rows);
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(students(u"count(*),max(姓名)"_s), u"65556|王芳"_s);
    EXPECT_EQ(library.rows(u"select 学号 from 信息表 where 姓名='最后'"_s), u"2"_s);
}

TEST_F(StudentImportTest, EmptyHeadingEndsTheColumns)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"性别"_s, {}, u"民族"_s},
           {1, 1, u"王芳"_s, u"女"_s, {}, u"汉"_s}});
    run();
    EXPECT_EQ(students(u"性别,民族"_s), u"女|NULL"_s);
}

TEST_F(StudentImportTest, ColumnsAreReadUpToNumber255)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}};
    for (int column = 4; column <= 254; ++column) {
        rows[0].push_back(u"备注"_s);
        rows[1].emplace_back();
    }
    rows[0].insert(rows[0].end(), {u"民族"_s, u"性别"_s});
    rows[1].insert(rows[1].end(), {u"汉"_s, u"女"_s});
    sheet(rows);
    run();
    EXPECT_EQ(students(u"民族,性别"_s), u"汉|NULL"_s);
}

TEST_F(StudentImportTest, HeadingThatIsNoColumnIsReportedOnEachRowAndTheRecordsAreAdded)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"电话"_s, u"性别"_s},
           {1, 1, u"王芳"_s, u"1"_s, u"女"_s},
           {1, 2, u"陈静"_s, u"2"_s, u"女"_s}});
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(dialogs.failures.size(), 2);
    for (const QString& failure : dialogs.failures)
        EXPECT_TRUE(failure.endsWith(tag)) << failure.toStdString();
    EXPECT_EQ(students(u"姓名,性别"_s), u"王芳|女 / 陈静|女"_s);
}

TEST_F(StudentImportTest, DatesAreStoredAsYearMonthDay)
{
    const QDateTime day(QDate(2009, 7, 31), QTime(0, 0));
    column(u"出生时间"_s, {day, u"2009年7月31日"_s, 40025.0});
    run();
    EXPECT_EQ(students(u"出生时间"_s), u"2009-07-31 / 2009-07-31 / 2009-07-31"_s);
}

TEST_F(StudentImportTest, ATimeOfDayIsStoredBehindTheDate)
{
    const QDateTime moment(QDate(2009, 7, 31), QTime(8, 30), Qt::UTC);
    column(u"出生时间"_s, {moment, u"2009-07-31 08:30"_s});
    run();
    EXPECT_EQ(students(u"出生时间"_s), u"2009-07-31 08:30:00 / 2009-07-31 08:30:00"_s);
    EXPECT_EQ(dialogs.failures, QStringList());
}

TEST_F(StudentImportTest, CellThatIsNoDateIsReportedAndItsFieldStaysEmpty)
{
    column(u"入学时间"_s, {u"不详"_s, u"2009.9.1"_s});
    run();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_EQ(dialogs.failures[0], u"“不详”不是日期。"_s + tag);
    EXPECT_EQ(students(u"入学时间"_s), u"NULL / 2009-09-01"_s);
}

TEST_F(StudentImportTest, EmptyDateCellGivesNoDateAndNoMessage)
{
    column(u"出生时间"_s, {{}, u""_s});
    run();
    EXPECT_EQ(dialogs.failures, QStringList());
    EXPECT_EQ(students(u"出生时间"_s), u"NULL / NULL"_s);
}

TEST_F(StudentImportTest, OtherCellsAreStoredAsTheyStand)
{
    column(u"学籍号"_s, {u"0805"_s, 20090101.0, 123456789012345.0, u" 12 "_s, 1.5});
    run();
    EXPECT_EQ(students(u"学籍号"_s), u"0805 / 20090101 / 123456789012345 /  12  / 1.5"_s);
}

TEST_F(StudentImportTest, ValueThatDoesNotFitCostsItsFieldAndTheRecordIsAdded)
{
    column(u"性别"_s, {QString(1000, u'女'), u"女"_s});
    run();
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(students(u"姓名,性别"_s), u"学生|NULL / 学生|女"_s);
}

TEST_F(StudentImportTest, WhatDoesNotFitAColumnIsToldInOneWayAndNothingElseIsLost)
{
    library.execute(u"ALTER TABLE 信息表 add COLUMN 身高 Single"_s);
    const struct
    {
        QString heading;
        std::vector<runtime::Value> cells;
        QString message;
        QString stored;
    } columns[] = {
        {u"出生时间"_s,
         {u"不详"_s, u"春天"_s, u"2009-7-31"_s},
         u"“不详”不是日期。"_s,
         u"NULL / NULL / 2009-07-31"_s},
        {u"性别"_s,
         {QString(60, u'女'), QString(61, u'男'), u"男"_s},
         u"“%1”不能存入列“性别”：文字超过 50 个字符。"_s.arg(QString(60, u'女')),
         u"NULL / NULL / 男"_s},
        {u"身高"_s,
         {1e39, u"2e39"_s, 170},
         u"“1E+39”不能存入列“身高”：数字太大。"_s,
         u"NULL / NULL / 170"_s},
    };
    for (const auto& tried : columns) {
        SCOPED_TRACE(tried.heading.toStdString());
        library.execute(u"delete * from 信息表"_s);
        dialogs.failures.clear();
        column(tried.heading, tried.cells);
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(dialogs.failures, QStringList(2, tried.message + tag));
        EXPECT_EQ(students(tried.heading), tried.stored);
        EXPECT_EQ(students(u"学号,姓名"_s), u"1|学生 / 2|学生 / 3|学生"_s);
    }
}

TEST_F(StudentImportTest, EachReasonOfAColumnIsToldInItsOwnWords)
{
    library.execute(u"ALTER TABLE 信息表 add COLUMN 身高 Single"_s);
    const QString told = u"“%1”不能存入列“身高”：%2。"_s + tag;
    const QString tooLarge = told.arg(u"1E+39"_s, u"数字太大"_s);
    const QString noNumber = told.arg(u"高"_s, u"不是数字"_s);
    column(u"身高"_s, {1e39, u"高"_s, u"2e39"_s, u"矮”"_s, 170});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures, (QStringList{tooLarge, noNumber, tooLarge, noNumber}));
    EXPECT_EQ(students(u"身高"_s), u"NULL / NULL / NULL / NULL / 170"_s);
}

TEST_F(StudentImportTest, EachPhotoThatIsTooLargeIsNamed)
{
    QStringList expected;
    for (const QString& name : {u"大.jpg"_s, u"更大.jpg"_s}) {
        QFile large(library.file(name));
        ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(100'000'001));
        expected.append(u"照片“%1”太大，没有存入；最大 99 MB。"_s.arg(name) + tag);
    }
    column(u"照片名"_s, {u"大.jpg"_s, u"更大.jpg"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures, expected);
}

TEST_F(StudentImportTest, APhotoThatIsTooLargeCostsAMessageAndTheRecordIsAddedWithoutIt)
{
    writeFile(library.file(u"小.jpg"_s), "small");
    QFile large(library.file(u"大.jpg"_s));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(100'000'001));
    large.close();
    column(u"照片名"_s, {u"大.jpg"_s, u"小.jpg"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures, QStringList{u"照片“大.jpg”太大，没有存入；最大 99 MB。"_s + tag});
    EXPECT_EQ(students(u"学号,照片名,cast(照片 as text)"_s), u"1|NULL|NULL / 2|小.jpg|small"_s);
}

TEST_F(StudentImportTest, AnErrorCellCostsAMessageAndItsFieldStaysEmpty)
{
    const runtime::Value error = runtime::Value::error(u"#N/A"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"备注"_s, u"类别代码"_s, u"出生时间"_s, u"照片名"_s},
           {1, error, u"王芳"_s, error, error, error, error},
           {1, 2, u"陈静"_s, u"转学"_s, 3, u"2009.7.31"_s, {}}});
    EXPECT_EQ(run(), ImportResult::Finished);
    const QString message = u"单元格里是错误值“#N/A”，没有存入。"_s + tag;
    EXPECT_EQ(dialogs.failures, QStringList(5, message));
    EXPECT_EQ(students(u"学号,姓名,备注,出生时间,照片名"_s),
              u"NULL|王芳|NULL|NULL|NULL / 2|陈静|转学|2009-07-31|NULL"_s);
}

TEST_F(StudentImportTest, EachErrorValueOfAColumnIsToldByItself)
{
    column(u"备注"_s, {runtime::Value::error(u"#N/A"_s), runtime::Value::error(u"#REF!"_s)});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.failures, (QStringList{u"单元格里是错误值“#N/A”，没有存入。"_s + tag,
                                             u"单元格里是错误值“#REF!”，没有存入。"_s + tag}));
}

TEST_F(StudentImportTest, AColumnThatTheLibraryLacksIsToldWhateverItsCellsHold)
{
    library.execute(u"ALTER TABLE 信息表 DROP COLUMN 出生时间"_s);
    column(u"出生时间"_s, {u"昨天"_s, runtime::Value()});
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(dialogs.failures.size(), 2);
    EXPECT_EQ(dialogs.failures[0], dialogs.failures[1]);
    EXPECT_TRUE(dialogs.failures[0].contains(u"出生时间"_s));
    EXPECT_EQ(students(u"学号"_s), u"1 / 2"_s);
}

TEST_F(StudentImportTest, AHeadingThatNamesTheKeyIsPassedOverWithOneSentence)
{
    for (const QString& heading : {u"ID"_s, u"id"_s, u"Id"_s}) {
        library.execute(u"delete * from 信息表"_s);
        dialogs.failures.clear();
        column(heading, {700, 700, u"八"_s});
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(
            dialogs.failures,
            QStringList{
                u"“%1”是成绩库给学生编的号，不能由名单规定，名单里的这一列没有导入。"_s.arg(heading)
                + tag});
        EXPECT_EQ(students(u"学号"_s), u"1 / 2 / 3"_s);
        EXPECT_EQ(students(u"count(*) filter (where ID=700)"_s), u"0"_s);
    }
}

TEST_F(StudentImportTest, ARecordThatTheLibraryRefusesIsLeftOutAndTheNextRowsComeIn)
{
    library.execute(u"create unique index 学籍号_once on 信息表(学籍号)"_s);
    column(u"学籍号"_s, {u"7"_s, u"7"_s, u"8"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_EQ(dialogs.failures[0], u"已经有同样的内容，或缺少必需的内容，没有写入。"
                                   "（UNIQUE constraint failed: 信息表.学籍号）"_s
                                       + tag);
    EXPECT_EQ(students(u"学籍号,学号"_s), u"7|1 / 8|3"_s);
}

TEST_F(StudentImportTest, ATextUnderThePhotosThemselvesIsRefusedAndTheRecordIsAdded)
{
    column(u"照片"_s, {u"王芳.jpg"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].contains(u"这一列只存二进制数据"_s));
    EXPECT_TRUE(dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(students(u"姓名,照片"_s), u"学生|NULL"_s);
}

TEST_F(StudentImportTest, PhotoIsFoundAsWrittenOrBesideTheWorkbook)
{
    const QDir folder(library.folder.path());
    folder.mkpath(u"照片/一班"_s);
    writeFile(library.file(u"照片/一班/王芳.jpg"_s), "far");
    writeFile(library.file(u"陈静.jpg"_s), "near");
    const QString full = library.file(u"照片/一班/王芳.jpg"_s);
    column(u"照片名"_s, {full, u"陈静.jpg"_s, u"照片\\一班\\王芳.jpg"_s, u"没有.jpg"_s, {}});
    run();
    EXPECT_EQ(dialogs.failures, QStringList());
    EXPECT_EQ(students(u"照片名,cast(照片 as text)"_s),
              u"王芳.jpg|far / 陈静.jpg|near / 王芳.jpg|far / NULL|NULL / NULL|NULL"_s);
}

TEST_F(StudentImportTest, RefusesAnotherFirstRow)
{
    sheet({{u"班级"_s, u"姓名"_s, u"学号"_s}, {1, u"王芳"_s, 1}});
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 指定的工作表格式不对！\n\n"
                                         "前3列为 班级、学号、姓名"_s});
    EXPECT_EQ(dialogs.look(u"格式不对"_s), errorBox);
    EXPECT_EQ(students(u"*"_s), QString());
}

TEST_F(StudentImportTest, NeedsAnOpenWorkbook)
{
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown, QStringList{u"错误: 要分析的工作簿未打开！"_s});
    EXPECT_EQ(dialogs.look(u"未打开"_s), errorBox);
}

TEST_F(StudentImportTest, ClosesTheSpreadsheetApplicationSoThatASecondRunNeedsANewBrowse)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    run();
    dialogs.shown.clear();
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_TRUE(dialogs.shown.contains(u"错误: 要分析的工作簿未打开！"_s));
}

TEST_F(StudentImportTest, CancelWritesNothing)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 2, u"陈静"_s}});
    progress.cancelAfter = 1;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(students(u"*"_s), QString());
    EXPECT_EQ(dialogs.shown, QStringList());
}

TEST_F(StudentImportTest, AFullDiskStopsItInOneSentenceAndNothingIsWritten)
{
    column(u"备注"_s, std::vector<runtime::Value>(2000, QString(500, u'长')));
    allowPages(20);
    EXPECT_EQ(run(), ImportResult::Stopped);
    ASSERT_EQ(dialogs.shown.size(), 1);
    EXPECT_TRUE(dialogs.failures.value(0).startsWith(u"磁盘已满，没有写入。"_s));
    EXPECT_TRUE(dialogs.failures.value(0).endsWith(u"什么也没有写入。"_s + tag));
    EXPECT_EQ(students(u"*"_s), QString());
}

TEST_F(StudentImportTest, ALibraryThatAnotherProgramWritesIsToldOnceAndNothingIsWritten)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 2, u"陈静"_s}});
    database::Connection other;
    other.Open(library.scores.LibPath);
    sqlite3_exec(other.handle(), "begin immediate", nullptr, nullptr, nullptr);
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_EQ(dialogs.shown,
              QStringList{u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s
                          + tag});
    other.Close();
    EXPECT_EQ(students(u"*"_s), QString());
}

TEST_F(StudentImportTest, OnceFinishedTheNewClassesAreKnownAndTheChangeIsTold)
{
    QStringList told;
    QObject::connect(&library.scores, &library::ScoreLibrary::changed, [&] {
        told = library.scores.catalogue.Streams;
        EXPECT_EQ(dialogs.shown, QStringList()) << "the lists stand before the message";
    });
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {1, 1, u"王芳"_s, u"文"_s},
           {3, 1, u"陈静"_s, u"理"_s},
           {3, 2, u"李强"_s, u"理"_s}});
    run();
    EXPECT_EQ(told, (QStringList{u"文"_s, u"理"_s}));
    const auto& classes = library.scores.catalogue.ClassTable;
    ASSERT_EQ(classes.size(), 2U);
    ASSERT_EQ(classes[1].size(), 1U);
    EXPECT_EQ(classes[1][0].number, 3);
    EXPECT_EQ(classes[1][0].students, 2);
}

TEST_F(StudentImportTest, ThirdStreamIsToldOnceTheListIsIn)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {1, 1, u"王芳"_s, u"文"_s},
           {2, 1, u"陈静"_s, u"理"_s},
           {3, 1, u"李强"_s, u"医"_s}});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(dialogs.shown, (QStringList{u"科类设置不正确，请重新设置科类。"_s, u"导入完成！"_s}));
}

TEST_F(StudentImportTest, StoppedImportTellsOfNoChange)
{
    bool told = false;
    QObject::connect(&library.scores, &library::ScoreLibrary::changed, [&] { told = true; });
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 2, u"陈静"_s}});
    progress.cancelAfter = 1;
    EXPECT_EQ(run(), ImportResult::Stopped);
    EXPECT_FALSE(told);
}

TEST_F(StudentImportTest, TellsWhereItStands)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    run();
    EXPECT_EQ(progress.texts, (QStringList{u"导入数据..."_s, QString()}));
}

TEST_F(StudentImportTest, MakesADatedCopyFirstAndWritesNothingWithoutIt)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    EXPECT_EQ(run(Backup::Make), ImportResult::Finished);
    EXPECT_EQ(QDir(library.folder.path()).entryList({u"*.bak"_s}).size(), 1);

    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 2, u"陈静"_s}});
    QFile::remove(library.scores.LibPath);
    EXPECT_EQ(run(Backup::Make), ImportResult::Stopped);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(students(u"姓名"_s), u"王芳"_s);
}

TEST_F(StudentImportTest, ACopyThatDoesNotFitIsToldBeforeTheQuestion)
{
    library.addStudent(1, 1, u"王芳"_s, u"理"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    support::outgrowDisk(library);
    EXPECT_EQ(run(library::Backup::Make), ImportResult::Stopped);
    support::expectOnlyNoRoomTold(dialogs.shown);
}

} // namespace
