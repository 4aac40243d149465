#include "maintenance/StudentRecord.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "platform/database/Error.h"
#include "support/FileBytes.h"
#include "support/FixedPhotoFiles.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using maintenance::RecordSave;
using maintenance::StudentRecord;

const QString showTag = u" - Sub ShowGeRenXX/FormXGXX"_s;
const QString saveTag = u" - Private Sub Command1_Click/FormXGXX"_s;

/// 王芳 and 李四 of class 1, 陈静 of class 2; the first two with scores in two exams.
class Record : public testing::Test
{
protected:
    Record()
    {
        wang = test.addStudent(1, 1, u"王芳"_s, u"文"_s);
        test.addStudent(1, 2, u"李四"_s, u"文"_s);
        test.addStudent(2, 1, u"陈静"_s, u"理"_s);
        test.execute(u"update 信息表 set 性别='女', 出生时间='2009-07-31', 备注='好' where ID=1"_s);
        for (const QString& exam : {u"期中"_s, u"期末"_s}) {
            test.addScores(exam, 1, 1, {{u"语文"_s, 90}});
            test.addScores(exam, 1, 2, {{u"语文"_s, 80}});
        }
        test.reload();
    }

    void type(int row, const QString& text)
    {
        record.MSFlexGrid1.setTextMatrix(row, StudentRecord::ValueCol, text);
    }

    void relabel(int row, const QString& text)
    {
        record.MSFlexGrid1.setTextMatrix(row, StudentRecord::LabelCol, text);
    }

    void typeInto(const QString& field, const QString& text)
    {
        type(int(StudentRecord::fields().indexOf(field)), text);
    }

    QString cell(int row, int col = StudentRecord::ValueCol) const
    {
        return record.MSFlexGrid1.TextMatrix(row, col);
    }

    QString field(const QString& name, qint64 id = 1)
    {
        return test.rows(u"select %1 from 信息表 where ID=%2"_s.arg(name).arg(id));
    }

    QString photoFile(const QString& name, const QByteArray& bytes)
    {
        support::write(test.file(name), bytes);
        return test.file(name);
    }

    support::TestLibrary test{{u"语文"_s}};
    support::FixedPhotoFiles photos;
    StudentRecord record{test.scores, photos};
    qint64 wang = 0;
};

TEST_F(Record, HasTheFifteenFieldsInTheirRows)
{
    const QStringList labels{u"班级"_s,     u"学号"_s,   u"姓名"_s,       u"类别"_s,
                             u"科类"_s,     u"性别"_s,   u"照片名"_s,     u"出生时间"_s,
                             u"入学时间"_s, u"学籍号"_s, u"原毕业学校"_s, u"身份证"_s,
                             u"民族"_s,     u"籍贯"_s,   u"备注"_s};
    EXPECT_EQ(record.MSFlexGrid1.Rows(), 15);
    EXPECT_EQ(record.MSFlexGrid1.Cols(), 2);
    EXPECT_EQ(record.MSFlexGrid1.FixedRows, 0);
    EXPECT_EQ(record.MSFlexGrid1.FixedCols, 0);
    EXPECT_EQ(record.MSFlexGrid1.ColAlignment(1), 1);
    EXPECT_EQ(record.MSFlexGrid1.RowHeight(14), 630);
    EXPECT_EQ(record.MSFlexGrid1.RowHeight(13), grid::FlexGrid::DefaultRowHeight);
    for (int row = 0; row < labels.size(); ++row) {
        EXPECT_EQ(cell(row, 0), labels[row]);
        EXPECT_EQ(cell(row), u""_s);
    }
    EXPECT_EQ(StudentRecord::fields(), labels);
}

TEST_F(Record, ShowsTheFieldsOfAStudentAsTexts)
{
    EXPECT_TRUE(record.ShowGeRenXX(wang));
    EXPECT_EQ(record.StuID, wang);
    const QStringList values{u"1"_s,  u"1"_s,  u"王芳"_s, u""_s,
                             u"文"_s, u"女"_s, u""_s,     u"2009-07-31"_s};
    for (int row = 0; row < values.size(); ++row)
        EXPECT_EQ(cell(row), values[row]);
    EXPECT_EQ(cell(14), u"好"_s);
    EXPECT_FALSE(record.isChanged());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Record, NobodyIsShownForIdZero)
{
    record.ShowGeRenXX(wang);
    EXPECT_FALSE(record.ShowGeRenXX(0));
    EXPECT_EQ(record.StuID, wang);
    EXPECT_EQ(cell(2), u"王芳"_s);
}

TEST_F(Record, AStudentWhoIsGoneIsTold)
{
    record.ShowGeRenXX(wang);
    EXPECT_FALSE(record.ShowGeRenXX(99));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里已经没有这名学生了。"_s});
    EXPECT_EQ(record.StuID, 0);
    EXPECT_EQ(cell(2), u""_s);
}

TEST_F(Record, WithoutAStudentNothingIsSaved)
{
    EXPECT_EQ(record.Command1_Click(), RecordSave::GivenUp);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"请先选择一名学生。"_s});
}

TEST_F(Record, SavesEveryFieldThatWasTyped)
{
    record.ShowGeRenXX(wang);
    for (int row = 0; row < 15; ++row) {
        if (row > 4 && row != StudentRecord::PhotoRow)
            type(row, u"新%1"_s.arg(row));
    }
    typeInto(u"类别"_s, u"借读"_s);
    EXPECT_TRUE(record.isChanged());
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(test.rows(u"select 班级,学号,姓名,类别,科类,性别,照片名,出生时间,入学时间,学籍号,"
                        "原毕业学校,身份证,民族,籍贯,备注 from 信息表 where ID=1"_s),
              u"1|1|王芳|借读|文|新5|NULL|新7|新8|新9|新10|新11|新12|新13|新14"_s);
    EXPECT_EQ(field(u"姓名"_s, 2), u"李四"_s);
    EXPECT_FALSE(record.isChanged());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Record, AnEmptiedCellKeepsTheOldValueAndShowsIt)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u""_s);
    EXPECT_FALSE(record.isChanged());
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(field(u"性别"_s), u"女"_s);
    EXPECT_EQ(cell(5), u"女"_s);
}

TEST_F(Record, ADateIsATextThatNothingTurns)
{
    record.ShowGeRenXX(wang);
    typeInto(u"出生时间"_s, u"2009年7月"_s);
    typeInto(u"入学时间"_s, u"45000"_s);
    record.Command1_Click();
    EXPECT_EQ(field(u"出生时间"_s), u"2009年7月"_s);
    EXPECT_EQ(test.rows(u"select 入学时间, typeof(入学时间) from 信息表 where ID=1"_s),
              u"45000|text"_s);
}

TEST_F(Record, ATextForANumberIsRefusedAndTheOtherFieldsAreSaved)
{
    record.ShowGeRenXX(wang);
    typeInto(u"班级"_s, u"三班"_s);
    typeInto(u"学号"_s, u"x"_s);
    typeInto(u"性别"_s, u"男"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(test.dialogs.failures, (QStringList{u"“三班”不能存入列“班级”：不是数字。"_s + saveTag,
                                                  u"“x”不能存入列“学号”：不是数字。"_s + saveTag}));
    EXPECT_EQ(test.rows(u"select 班级,学号,性别 from 信息表 where ID=1"_s), u"1|1|男"_s);
    // What was refused can be put right.
    EXPECT_EQ(cell(0), u"三班"_s);
    EXPECT_TRUE(record.isChanged());
}

TEST_F(Record, ATextThatIsTooLongIsRefused)
{
    record.ShowGeRenXX(wang);
    typeInto(u"民族"_s, QString(51, u'汉'));
    typeInto(u"备注"_s, QString(10'000, u'长') + u"'--\n"_s);
    record.Command1_Click();
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"“"_s + QString(51, u'汉') + u"”不能存入列“民族”：文字超过 50 个字符。"_s
                          + saveTag});
    EXPECT_EQ(field(u"length(备注)"_s), u"10004"_s);
    EXPECT_EQ(field(u"民族"_s), u"NULL"_s);
}

TEST_F(Record, HostileTextsAreStoredAsTheyStand)
{
    record.ShowGeRenXX(wang);
    const QString hostile = u"O'Brien\"; drop table 信息表 -- %1"_s;
    typeInto(u"姓名"_s, hostile);
    typeInto(u"籍贯"_s, u"'"_s);
    test.dialogs.expect(u"改名为"_s, u"以前的成绩也改"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(field(u"姓名"_s), hostile);
    EXPECT_EQ(field(u"籍贯"_s), u"'"_s);
    EXPECT_EQ(test.rows(u"select distinct 姓名 from 成绩表 where id=1"_s), hostile);
}

TEST_F(Record, AnEditedLabelSaysWhichFieldTheRowMeans)
{
    relabel(9, u"类别代码"_s);
    record.ShowGeRenXX(wang);
    EXPECT_EQ(cell(9), u"1"_s);
    type(9, u"2"_s);
    record.Command1_Click();
    EXPECT_EQ(field(u"类别代码"_s), u"2"_s);
    relabel(5, u"民族"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(field(u"民族"_s), u"女"_s);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Record, OfTwoRowsOfOneFieldTheLowerCounts)
{
    record.ShowGeRenXX(wang);
    relabel(3, u"性别"_s);
    type(3, u"男"_s);
    record.Command1_Click();
    EXPECT_EQ(field(u"性别"_s), u"女"_s);
    relabel(8, u"性别"_s);
    type(8, u"男"_s);
    record.Command1_Click();
    EXPECT_EQ(field(u"性别"_s), u"男"_s);
}

TEST_F(Record, AnUnknownFieldFailsWithItsTag)
{
    record.ShowGeRenXX(wang);
    relabel(13, u"爱好"_s);
    type(13, u"下棋"_s);
    typeInto(u"民族"_s, u"汉"_s);
    record.Command1_Click();
    EXPECT_EQ(test.dialogs.failures.value(0), database::noSuchColumn(u"爱好"_s) + saveTag);
    EXPECT_EQ(field(u"民族"_s), u"汉"_s);
    test.dialogs.failures.clear();
    record.ShowGeRenXX(2);
    EXPECT_EQ(test.dialogs.failures, QStringList{database::noSuchColumn(u"爱好"_s) + showTag});
    EXPECT_EQ(cell(13), u""_s);
    EXPECT_EQ(cell(2), u"李四"_s);
}

TEST_F(Record, TheNumberThatTheLibraryGivesAStudentStays)
{
    record.ShowGeRenXX(wang);
    relabel(13, u"id"_s);
    type(13, u"77"_s);
    relabel(12, u"照片"_s);
    type(12, u"字"_s);
    record.Command1_Click();
    EXPECT_EQ(test.dialogs.failures.mid(0, 2),
              (QStringList{u"“字”不能存入列“照片”：这一列只存二进制数据。"_s + saveTag,
                           u"“id”是成绩库给学生编的号，不能修改。"_s + saveTag}));
    EXPECT_EQ(test.rows(u"select ID from 信息表"_s), u"1 / 2 / 3"_s);
}

TEST_F(Record, APhotoGoesInWithItsNameAndItsBytes)
{
    record.ShowGeRenXX(wang);
    const QString path = photoFile(u"王芳.jpg"_s, "picture of Wang");
    EXPECT_TRUE(record.choosePhoto(path));
    EXPECT_EQ(cell(6), path);
    EXPECT_TRUE(record.isChanged());
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(field(u"照片名"_s), u"王芳.jpg"_s);
    EXPECT_EQ(field(u"cast(照片 as text)"_s), u"picture of Wang"_s);
    EXPECT_EQ(cell(6), u"王芳.jpg"_s);
    EXPECT_FALSE(record.isChanged());
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
}

TEST_F(Record, TheNameOfAPhotoIsCutToItsLastFiftyCharacters)
{
    record.ShowGeRenXX(wang);
    const QString name = QString(56, u'x') + u".jpg"_s;
    record.choosePhoto(photoFile(name, "picture"));
    record.Command1_Click();
    EXPECT_EQ(field(u"照片名"_s), name.right(50));
}

TEST_F(Record, AnUnchangedPhotoRowIsNotLookedFor)
{
    test.execute(u"update 信息表 set 照片名='没有这个文件.jpg', 照片=x'31' where ID=1"_s);
    record.ShowGeRenXX(wang);
    EXPECT_EQ(cell(6), u"没有这个文件.jpg"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_TRUE(test.dialogs.shown.isEmpty());
    EXPECT_EQ(field(u"照片名"_s), u"没有这个文件.jpg"_s);
}

TEST_F(Record, APhotoFileThatDoesNotExistIsToldAndTheRestIsSaved)
{
    test.execute(u"update 信息表 set 照片名='a.jpg', 照片=x'31' where ID=1"_s);
    for (const QString& path : {test.file(u"没有.jpg"_s), QString(), test.folder.path()}) {
        test.dialogs.shown.clear();
        record.ShowGeRenXX(wang);
        EXPECT_TRUE(record.choosePhoto(path));
        typeInto(u"民族"_s, u"族"_s + path.right(3));
        EXPECT_EQ(record.Command1_Click(), RecordSave::WithoutPhoto);
        EXPECT_EQ(test.dialogs.shown, QStringList{u"照片文件不存在：\n"_s + path});
        EXPECT_EQ(field(u"民族"_s), u"族"_s + path.right(3));
        EXPECT_EQ(test.rows(u"select 照片名, hex(照片) from 信息表 where ID=1"_s), u"a.jpg|31"_s);
        EXPECT_EQ(cell(6), path);
    }
}

TEST_F(Record, WhatIsNoPictureIsRefusedWithItsName)
{
    record.ShowGeRenXX(wang);
    const QString path = photoFile(u"成绩.xls"_s, "no such thing");
    photos.refused.append(path);
    EXPECT_FALSE(record.choosePhoto(path));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"照片文件“%1”不是图片，或已损坏。"_s.arg(path)});
    EXPECT_EQ(cell(6), u""_s);
    EXPECT_FALSE(record.isChanged());
}

TEST_F(Record, WhatIsNoPictureWhenItIsSavedIsRefusedToo)
{
    record.ShowGeRenXX(wang);
    const QString path = test.file(u"王芳.jpg"_s);
    EXPECT_TRUE(record.choosePhoto(path));
    photoFile(u"王芳.jpg"_s, "not copied to its end");
    photos.refused.append(path);
    typeInto(u"性别"_s, u"男"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::WithoutPhoto);
    EXPECT_EQ(test.dialogs.failures,
              QStringList{u"照片文件“%1”不是图片，或已损坏。"_s.arg(path) + saveTag});
    EXPECT_EQ(test.rows(u"select 性别, 照片名, 照片 from 信息表 where ID=1"_s), u"男|NULL|NULL"_s);
    EXPECT_TRUE(record.isChanged());
}

TEST_F(Record, ALargePhotoGoesInSmallerIfTheUserSaysSo)
{
    record.ShowGeRenXX(wang);
    const QString path = photoFile(u"大.jpg"_s, "picture large");
    photos.large.append(path);
    test.dialogs.expect(u"很大"_s, u"改存较小的图片"_s);
    record.choosePhoto(path);
    record.Command1_Click();
    EXPECT_EQ(field(u"cast(照片 as text)"_s), u"smaller 大.jpg"_s);
    test.dialogs.expect(u"很大"_s, u"原样存入"_s);
    record.choosePhoto(path);
    record.Command1_Click();
    EXPECT_EQ(field(u"cast(照片 as text)"_s), u"picture large"_s);
}

TEST_F(Record, AnotherStudentForgetsTheChosenPhoto)
{
    record.ShowGeRenXX(wang);
    record.choosePhoto(photoFile(u"王芳.jpg"_s, "picture"));
    record.ShowGeRenXX(2);
    EXPECT_FALSE(record.isChanged());
    record.Command1_Click();
    EXPECT_EQ(test.rows(u"select 照片名 from 信息表"_s), u"NULL / NULL / NULL"_s);
}

TEST_F(Record, WhatAnotherProgramStoredMeanwhileStays)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u"男"_s);
    support::OtherProgram other(test.scores.Conn.path());
    other.run("update 信息表 set 民族='回', 备注='新' where ID=1");
    EXPECT_EQ(record.Command1_Click(), RecordSave::Saved);
    EXPECT_EQ(test.rows(u"select 性别, 民族, 备注 from 信息表 where ID=1"_s), u"男|回|新"_s);
    EXPECT_EQ(cell(12), u"回"_s);
}

TEST_F(Record, RefreshKeepsWhatWasTypedAndReadsTheRest)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u"男"_s);
    test.execute(u"update 信息表 set 性别='无', 民族='回' where ID=1"_s);
    EXPECT_TRUE(record.refresh());
    EXPECT_EQ(cell(5), u"男"_s);
    EXPECT_EQ(cell(12), u"回"_s);
    EXPECT_TRUE(record.isChanged());
}

TEST_F(Record, RefreshKeepsWhatStandsThereIfTheLibraryCannotBeRead)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u"男"_s);
    support::OtherProgram other(test.scores.Conn.path());
    other.run("begin exclusive");
    EXPECT_FALSE(record.refresh());
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(showTag));
    EXPECT_EQ(record.StuID, wang);
    EXPECT_EQ(cell(2), u"王芳"_s);
    EXPECT_EQ(cell(5), u"男"_s);
    EXPECT_TRUE(record.isChanged());
}

TEST_F(Record, NobodyIsShownIfTheNextStudentCannotBeRead)
{
    record.ShowGeRenXX(wang);
    support::OtherProgram other(test.scores.Conn.path());
    other.run("begin exclusive");
    EXPECT_FALSE(record.ShowGeRenXX(2));
    other.run("rollback");
    EXPECT_EQ(record.StuID, 0);
    EXPECT_EQ(cell(2), u""_s);
}

TEST_F(Record, AStudentWhoWentMeanwhileIsNotSaved)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u"男"_s);
    test.execute(u"delete from 信息表 where ID=1"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::GivenUp);
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里已经没有这名学生了。"_s});
    EXPECT_FALSE(record.refresh());
    EXPECT_EQ(record.StuID, 0);
}

TEST_F(Record, ALockedLibraryKeepsTheRecordAndWhatWasTyped)
{
    record.ShowGeRenXX(wang);
    typeInto(u"性别"_s, u"男"_s);
    support::OtherProgram other(test.scores.Conn.path());
    other.run("begin immediate");
    EXPECT_EQ(record.Command1_Click(), RecordSave::Failed);
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(saveTag))
        << test.dialogs.failures[0].toStdString();
    EXPECT_EQ(field(u"性别"_s), u"女"_s);
    EXPECT_EQ(cell(5), u"男"_s);
    EXPECT_TRUE(record.isChanged());
}

TEST_F(Record, AReadOnlyLibraryIsToldOnceAndKeepsWhatWasTyped)
{
    const QByteArray library = test.scores.Conn.path().toUtf8();
    test.scores.Conn.Close();
    ASSERT_EQ(chmod(test.folder.path().toUtf8().constData(), 0755), 0);
    ASSERT_EQ(chmod(library.constData(), 0444), 0);
    const support::OrdinaryUser user;
    test.scores.OpenDB();
    EXPECT_TRUE(record.ShowGeRenXX(wang));
    typeInto(u"性别"_s, u"男"_s);
    typeInto(u"民族"_s, u"汉"_s);
    EXPECT_EQ(record.Command1_Click(), RecordSave::Failed);
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.shown[0].startsWith(u"成绩库是只读的，不能写入。"_s))
        << test.dialogs.shown[0].toStdString();
    EXPECT_TRUE(test.dialogs.shown[0].endsWith(saveTag));
    EXPECT_EQ(cell(5), u"男"_s);
    EXPECT_EQ(field(u"性别"_s), u"女"_s);
}

TEST_F(Record, TheLibraryTellsOfNamesClassesNumbersAndStreamsAlone)
{
    record.ShowGeRenXX(wang);
    int changed = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, [&changed] { ++changed; });
    typeInto(u"备注"_s, u"新"_s);
    record.Command1_Click();
    EXPECT_EQ(changed, 0);
    typeInto(u"班级"_s, u"3"_s);
    record.Command1_Click();
    EXPECT_EQ(changed, 1);
    ASSERT_EQ(test.scores.catalogue.ClassTable.size(), 2u);
    EXPECT_EQ(test.scores.catalogue.ClassTable[0].back().number, 3);
    typeInto(u"学号"_s, u"9"_s);
    record.Command1_Click();
    typeInto(u"科类"_s, u"理"_s);
    record.Command1_Click();
    EXPECT_EQ(changed, 3);
    EXPECT_EQ(test.scores.catalogue.ClassTable[0].size()
                  + test.scores.catalogue.ClassTable[1].size(),
              3u);
    // Earlier scores keep the class and number that he had then.
    EXPECT_EQ(test.rows(u"select distinct 班级, 学号, 科类 from 成绩表 where id=1"_s), u"1|1|文"_s);
}

} // namespace
