#include "import/preview/StudentPreview.h"

#include "../StudentImportFixture.h"
#include "support/FileBytes.h"

namespace {

using namespace Qt::StringLiterals;
using importing::ImportResult;
using importing::Preview;
using importing::PreviewEntry;
using importing::PreviewKind;
using importing::TakenStudents;

/// A library with 王芳 as number 1 of class 1 and 陈静 as number 2.
class StudentPreviewTest : public StudentImportTest
{
protected:
    StudentPreviewTest()
    {
        library.addStudent(1, 1, u"王芳"_s, u"文"_s);
        library.addStudent(1, 2, u"陈静"_s, u"文"_s);
        library.reload();
    }

    Preview preview(TakenStudents taken = TakenStudents::Ask)
    {
        const QByteArray bytes = support::read(library.scores.LibPath);
        const std::optional<Preview> found =
            previewStudents(library.scores, intake, sheetName, taken);
        EXPECT_EQ(support::read(library.scores.LibPath), bytes);
        EXPECT_EQ(dialogs.shown, QStringList());
        EXPECT_TRUE(found);
        return found.value_or(Preview());
    }

    static QStringList told(const Preview& preview, PreviewKind kind)
    {
        QStringList texts;
        for (const PreviewEntry& one : preview.entries(kind))
            texts.append(u"%1: %2|%3|%4|%5 %6 → %7: %8"_s.arg(
                QString::number(one.row), one.classNumber, one.number, one.name, one.subject,
                one.before, one.after, one.remark));
        return texts;
    }

    int students() { return library.rows(u"select count(*) from 信息表"_s).toInt(); }

    /// A sheet of all kinds of rows.
    void mixed()
    {
        sheet({{u"班级"_s, u"学号"_s, u"姓名"_s},
               {1, 1, u"王芳"_s},
               {1, 2, u"陈婧"_s},
               {1, 3, u"新生"_s},
               {1, 3, u"又一"_s},
               {1, runtime::Value(), u"无号"_s},
               {1, runtime::Value(), u"无号二"_s}});
    }
};

TEST_F(StudentPreviewTest, CountsWhatEachAnswerWouldAdd)
{
    for (const QString& answer : {u"跳过已有"_s, u"全部添加"_s}) {
        mixed();
        const Preview found = preview();
        const int before = students();
        dialogs.expect(u"的班级和学号在"_s, answer);
        EXPECT_EQ(run(), ImportResult::Finished);
        EXPECT_EQ(students() - before,
                  answer == u"跳过已有"_s ? found.count(PreviewKind::NewStudent) : found.rows);
        library.execute(u"delete from 信息表 where ID>2"_s);
        dialogs.shown.clear();
    }
}

TEST_F(StudentPreviewTest, TellsWhoseNumbersAreTakenAndByWhom)
{
    mixed();
    const Preview found = preview();
    const QString taken = u"成绩库里已有这个班级和学号，导入时会询问：跳过，或者再添加一条。"
                          "成绩库里的那一条不会改。"_s;
    EXPECT_EQ(found.title, u"学生名单，数据表“一年级”"_s);
    EXPECT_EQ(found.warning, u"名单里有 2 人的班级和学号成绩库里已经有了！导入时会询问；"
                             "如果选“全部添加”，他们就会有两条以上的记录。"_s);
    EXPECT_EQ(told(found, PreviewKind::TakenNumber), QStringList{u"2: 1|1|王芳|  → : "_s + taken});
    EXPECT_EQ(told(found, PreviewKind::OtherName),
              QStringList{u"3: 1|2|陈婧| 陈静 → 陈婧: "_s + taken});
    const QString twice =
        u"第 4、5 行的班级和学号相同；导入时会询问：只取最前面的一行，或者全部添加。"_s;
    EXPECT_EQ(told(found, PreviewKind::Twice),
              (QStringList{u"4: 1|3|新生|  → : "_s + twice, u"5: 1|3|又一|  → : "_s + twice}));
    EXPECT_EQ(found.count(PreviewKind::NewStudent), 3);
    EXPECT_EQ(found.notes, (QStringList{u"3 人没有科类，会设为“理”。"_s,
                                        u"选“全部添加”时，还有 3 行没有科类，也会设为“理”。"_s}));
}

TEST_F(StudentPreviewTest, WhoIsThereAlreadyAndStandsTwiceCountsOnce)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 1, u"王芳"_s}});
    const Preview found = preview();
    EXPECT_TRUE(found.warning.startsWith(u"名单里有 1 人的班级和学号成绩库里已经有了！"_s));
    const QString twice = u"第 2、3 行的班级和学号相同，成绩库里也已经有了；"
                          "导入时会询问：都跳过，或者全部添加。"_s;
    EXPECT_EQ(told(found, PreviewKind::Twice),
              (QStringList{u"2: 1|1|王芳|  → : "_s + twice, u"3: 1|1|王芳|  → : "_s + twice}));
}

TEST_F(StudentPreviewTest, WhoHasNoNameInTheLibraryIsNotCountedAsMatched)
{
    library.execute(u"update 信息表 set 姓名=NULL where 学号=1"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}});
    const Preview found = preview();
    EXPECT_EQ(found.matched, 0);
    EXPECT_EQ(found.count(PreviewKind::OtherName), 1);
}

TEST_F(StudentPreviewTest, AStreamThatIsRefusedIsNone)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {2, 1, u"甲"_s, QString(300, u'文')},
           {2, 2, u"乙"_s, runtime::Value::error(u"#N/A"_s)},
           {2, 3, u"丙"_s, u"文"_s}});
    const Preview found = preview();
    EXPECT_EQ(found.notes, QStringList{u"2 人没有科类，会设为“理”。"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select count(*) from 信息表 where 班级=2 and 科类='理'"_s), u"2"_s);
}

/// The end of a warning of so many streams.
QString tooMany(int count, const QString& names)
{
    return u"导入后会有 %1 个科类（%2）！成绩库最多两个科类，再多就打不开班级列表和统计，"
           "请先改正表里的科类。"_s.arg(QString::number(count), names);
}

TEST_F(StudentPreviewTest, AThirdStreamIsSaidLoudlyAndRowByRow)
{
    library.addStudent(2, 1, u"李强"_s, u"理"_s);
    library.reload();
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {11, 1, u"甲一"_s, u"物理类"_s},
           {11, 2, u"甲二"_s, 1},
           {11, 3, u"甲三"_s, u"文"_s},
           {11, 4, u"甲四"_s, runtime::Value()}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, tooMany(4, u"“文”、“理”、“物理类”、“1”"_s));
    const QString why = u"成绩库最多两个科类，除了“文”、“理”不能再有别的。"_s;
    EXPECT_EQ(told(found, PreviewKind::BadCell),
              (QStringList{u"2: 11|1|甲一|科类 物理类 → 物理类: "_s + why,
                           u"3: 11|2|甲二|科类 1 → 1: "_s + why}));
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select count(distinct 科类) from 信息表"_s), u"4"_s);
    EXPECT_EQ(dialogs.shown.filter(u"科类设置不正确，请重新设置科类。"_s).size(), 1);
}

TEST_F(StudentPreviewTest, WithoutAStreamOneCanBeTheThird)
{
    library.execute(u"update 信息表 set 科类='物理类' where 学号=1"_s);
    library.execute(u"update 信息表 set 科类='历史类' where 学号=2"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {11, 1, u"甲一"_s}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, tooMany(3, u"“历史类”、“物理类”、“理”"_s));
    EXPECT_EQ(told(found, PreviewKind::BadCell),
              QStringList{u"2: 11|1|甲一|科类  → 理: 成绩库最多两个科类，"
                          "除了“历史类”、“物理类”不能再有别的。"_s});
    EXPECT_EQ(run(), ImportResult::Finished);
    EXPECT_EQ(library.rows(u"select count(distinct 科类) from 信息表"_s), u"3"_s);
}

TEST_F(StudentPreviewTest, AListIsNotBlamedForAThirdStreamOfTheLibrary)
{
    library.addStudent(2, 1, u"李强"_s, u"理"_s);
    library.addStudent(3, 1, u"赵六"_s, u"物理类"_s);
    const QString warning = u"成绩库里已经有 3 个科类（“文”、“物理类”、“理”）！成绩库最多两个科类，"
                            "再多就打不开班级列表和统计，请先在“修改信息”里改正。"_s;
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {11, 1, u"甲一"_s, u"文"_s},
           {11, 2, u"甲二"_s, u"理"_s}});
    Preview found = preview();
    EXPECT_EQ(found.warning, warning);
    EXPECT_EQ(found.count(PreviewKind::BadCell), 0);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s}, {11, 1, u"甲一"_s, u"历史类"_s}});
    found = preview();
    EXPECT_EQ(found.warning, warning + u"表里还有别的科类，也请改正。"_s);
    EXPECT_EQ(found.count(PreviewKind::BadCell), 1);
}

TEST_F(StudentPreviewTest, WhereTheLibraryHasRoomThoseOfTheFewestRowsAreTooMany)
{
    library.execute(u"delete from 信息表"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {1, 1, u"甲"_s, u"理科"_s},
           {1, 2, u"乙"_s, u"文"_s},
           {1, 3, u"丙"_s, u"理"_s},
           {1, 4, u"丁"_s, u"文"_s},
           {1, 5, u"戊"_s, u"理"_s}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, tooMany(3, u"“理科”、“文”、“理”"_s));
    ASSERT_EQ(found.count(PreviewKind::BadCell), 1);
    EXPECT_EQ(found.entries(PreviewKind::BadCell)[0].name, u"甲"_s);
}

TEST_F(StudentPreviewTest, AThirdStreamOfOneWhoIsTakenCountsIfHeIsAdded)
{
    library.addStudent(2, 1, u"李强"_s, u"理"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s}, {1, 1, u"王芳"_s, u"物理类"_s}});
    const QString warning = tooMany(3, u"“文”、“理”、“物理类”"_s);
    EXPECT_TRUE(preview().warning.endsWith(u"。选“全部添加”时，"_s + warning));
    EXPECT_EQ(preview(TakenStudents::Add).warning,
              u"名单里有 1 人的班级和学号成绩库里已经有了！会全部添加，"
              "他们就会有两条以上的记录。"_s
                  + warning);
    const Preview skipped = preview(TakenStudents::Skip);
    EXPECT_EQ(skipped.warning, u"名单里有 1 人的班级和学号成绩库里已经有了！他们会跳过。"_s);
    EXPECT_EQ(skipped.count(PreviewKind::BadCell), 0);
}

TEST_F(StudentPreviewTest, AStreamOfItsOwnIsNotedWhereThereIsRoom)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s},
           {2, 1, u"甲"_s, u"  "_s},
           {2, 2, u"乙"_s, u"文"_s},
           {2, 3, u"丙"_s, u"  "_s}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, QString());
    EXPECT_EQ(found.notes,
              QStringList{u"成绩库里还没有科类“  ”（2 人），会照样存入；写错了的请先改正。"_s});
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s}, {2, 1, u"甲"_s, u"理"_s}});
    EXPECT_EQ(preview().notes, QStringList()) << "as common as 文";
}

TEST_F(StudentPreviewTest, OfManyStreamsTheFirstAreNamed)
{
    Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s, u"科类"_s}};
    for (int number = 1; number <= 3000; ++number)
        rows.push_back({2, number, u"学生"_s, u"' or %1\n"_s.arg(number)});
    sheet(rows);
    const Preview found = preview();
    EXPECT_EQ(found.warning,
              tooMany(3001, u"“文”、“' or 1⏎”、“' or 2⏎”、“' or 3⏎”、“' or 4⏎” 等"_s));
    EXPECT_EQ(found.count(PreviewKind::BadCell), 2999);
}

TEST_F(StudentPreviewTest, WhatIsDoneWithWhoIsTakenCanBeKnown)
{
    mixed();
    Preview found = preview(TakenStudents::Skip);
    const QString skipped = u"成绩库里已有这个班级和学号，会跳过。"_s;
    EXPECT_EQ(found.warning, u"名单里有 2 人的班级和学号成绩库里已经有了！他们会跳过。"_s);
    EXPECT_EQ(told(found, PreviewKind::TakenNumber),
              QStringList{u"2: 1|1|王芳|  → : "_s + skipped});
    EXPECT_EQ(found.entries(PreviewKind::OtherName)[0].remark, skipped);
    EXPECT_EQ(found.entries(PreviewKind::Twice)[0].remark,
              u"第 4、5 行的班级和学号相同，只取最前面的一行。"_s);
    EXPECT_EQ(found.notes, QStringList{u"3 人没有科类，会设为“理”。"_s});
    found = preview(TakenStudents::Add);
    EXPECT_EQ(found.entries(PreviewKind::TakenNumber)[0].remark,
              u"成绩库里已有这个班级和学号，会再添加一条。成绩库里的那一条不会改。"_s);
    EXPECT_EQ(found.entries(PreviewKind::Twice)[0].remark,
              u"第 4、5 行的班级和学号相同，会全部添加。"_s);
    EXPECT_EQ(found.notes, QStringList{u"6 人没有科类，会设为“理”。"_s});
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 1, u"王芳"_s}});
    EXPECT_EQ(preview(TakenStudents::Skip).entries(PreviewKind::Twice)[0].remark,
              u"第 2、3 行的班级和学号相同，成绩库里也已经有了，都会跳过。"_s);
    EXPECT_EQ(preview(TakenStudents::Add).entries(PreviewKind::Twice)[0].remark,
              u"第 2、3 行的班级和学号相同，成绩库里也已经有了，会全部添加。"_s);
}

TEST_F(StudentPreviewTest, AnImportThatStopsAtWhoIsTakenAddsNobody)
{
    mixed();
    Preview found = preview(TakenStudents::Cancel);
    EXPECT_EQ(found.warning,
              u"名单里有 2 人的班级和学号成绩库里已经有了！导入会停下，什么也不存入。"_s);
    EXPECT_EQ(found.count(PreviewKind::NewStudent), 0);
    EXPECT_EQ(found.entries(PreviewKind::TakenNumber)[0].remark,
              u"成绩库里已有这个班级和学号，导入会停下。"_s);
    EXPECT_EQ(found.entries(PreviewKind::Twice)[0].remark,
              u"第 4、5 行的班级和学号相同，导入会停下。"_s);
    EXPECT_EQ(found.notes, QStringList());
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 1, u"王芳"_s}, {1, 1, u"王芳"_s}});
    EXPECT_EQ(preview(TakenStudents::Cancel).entries(PreviewKind::Twice)[0].remark,
              u"第 2、3 行的班级和学号相同，成绩库里也已经有了，导入会停下。"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 3, u"新生"_s}, {1, 3, u"又一"_s}});
    EXPECT_EQ(preview(TakenStudents::Cancel).warning,
              u"名单里有几行的班级和学号相同！导入会停下，什么也不存入。"_s);
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s}, {1, 3, u"新生"_s}});
    found = preview(TakenStudents::Cancel);
    EXPECT_EQ(found.warning, QString());
    EXPECT_EQ(found.count(PreviewKind::NewStudent), 1);
}

TEST_F(StudentPreviewTest, TellsWhatWouldNotBeStored)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"ID"_s, u"电话"_s, u"出生时间"_s, u"照片名"_s,
            u"科类"_s, u"类别代码"_s},
           {2, 1, QString(10'000, u'长'), 5, u"1"_s, u"昨天"_s, u"没有.jpg"_s, u"理"_s, u"abc"_s},
           {u"3班"_s, 1, u"赵六"_s, 6, u"2"_s, u"2009-7-31"_s, u""_s, u"理"_s, 2},
           {u""_s, 1, u"后面"_s, 7}});
    const Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::Column),
              (QStringList{u"1: |||ID  → : “ID”是成绩库给学生编的号，不能由名单规定，"
                           "名单里的这一列没有导入。"_s,
                           u"1: |||电话  → : 成绩库的名单里没有“电话”这一项，导入时会提示，"
                           "这一列不会存入。"_s}));
    const auto& bad = found.entries(PreviewKind::BadCell);
    ASSERT_EQ(bad.size(), 3U);
    EXPECT_EQ(bad[0].subject, u"姓名"_s);
    EXPECT_TRUE(bad[0].remark.contains(u"长"_s)) << bad[0].remark.toStdString();
    EXPECT_EQ(bad[1].remark, u"“昨天”不是日期。"_s);
    EXPECT_EQ(bad[2].remark, u"找不到这个照片文件，不会有照片。"_s);
    const QString asNumber = u"不是数字，按这个数存入。"_s;
    EXPECT_EQ(told(found, PreviewKind::TextCell).last(),
              u"3: 3|1|赵六|班级 3班 → 3: "_s + asNumber);
    EXPECT_EQ(found.entries(PreviewKind::TextCell)[0].after, u"0"_s);
    EXPECT_EQ(told(found, PreviewKind::RowLeft),
              QStringList{u"4: |1|后面|  → : 第 4 行的班级是空的，名单到此为止。"_s});
    EXPECT_EQ(found.notes, QStringList());
}

TEST_F(StudentPreviewTest, WhatIsRefusedIsRefusedByTheImportToo)
{
    sheet({{u"班级"_s, u"学号"_s, u"姓名"_s, u"出生时间"_s, u"性别"_s},
           {2, 1, u"甲"_s, u"昨天"_s, u"男"_s},
           {2, 2, u"乙"_s, u"2009-7-31"_s, QString(300, u'女')},
           {2, 3, u"丙"_s, runtime::Value::error(u"#N/A"_s), runtime::Value()}});
    const Preview found = preview();
    EXPECT_EQ(run(), ImportResult::Finished);
    QStringList remarks;
    for (const PreviewEntry& one : found.entries(PreviewKind::BadCell))
        remarks.append(one.remark + tag);
    EXPECT_EQ(dialogs.failures, remarks);
    EXPECT_EQ(remarks.size(), 3);
}

TEST_F(StudentPreviewTest, ASheetWithOtherHeadingsIsRefusedAsByTheImport)
{
    sheet({{u"班级"_s, u"号"_s, u"姓名"_s}});
    EXPECT_FALSE(previewStudents(library.scores, intake, sheetName));
    EXPECT_EQ(dialogs.shown,
              QStringList{u"错误: 指定的工作表格式不对！\n\n前3列为 班级、学号、姓名"_s});
}

} // namespace
