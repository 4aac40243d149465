#include "import/preview/ExamPreview.h"

#include <limits>

#include <sqlite3.h>

#include "ExamPreviewFixture.h"

namespace {

using namespace Qt::StringLiterals;
using importing::NameAnswer;
using importing::NewStudents;
using importing::Preview;
using importing::PreviewKind;
using importing::ScoreTarget;

/// The first remark of a kind.
QString remark(const Preview& preview, PreviewKind kind)
{
    const auto& entries = preview.entries(kind);
    return entries.empty() ? QString() : entries.front().remark;
}

TEST_F(ExamPreviewTest, TellsWhoIsNewUnknownMatchedOrNamedOtherwise)
{
    sheet({heads({u"语文"_s}),
           {1, 1, u"王芳"_s, 90},
           {1, 2, u"陈婧"_s, 91},
           {1, 8, u"赵六"_s, 92},
           {12, 1, u"周八"_s, 93}});
    Preview found = preview();
    EXPECT_EQ(found.title, u"考试“期中”，“文”科，数据表“一年级”"_s);
    EXPECT_EQ(found.warning, QString());
    EXPECT_EQ(found.headline(), u"表中 4 行：与成绩库一致 1 人，新班级 1 个，新学生 2 人，"
                                "姓名不一致 1 行。"_s);
    EXPECT_EQ(told(found, PreviewKind::NewClass), QStringList{u"12|||科类"_s});
    EXPECT_EQ(remark(found, PreviewKind::NewClass),
              u"成绩库里没有这个班的学生，导入时会询问科类。"_s);
    EXPECT_EQ(told(found, PreviewKind::NewStudent),
              (QStringList{u"4: 1|8|赵六"_s, u"5: 12|1|周八"_s}));
    EXPECT_EQ(remark(found, PreviewKind::NewStudent), u"会添加到成绩库。"_s);
    EXPECT_EQ(told(found, PreviewKind::OtherName), QStringList{u"3: 1|2|陈婧 陈静 → 陈婧"_s});
    EXPECT_EQ(remark(found, PreviewKind::OtherName),
              u"导入时会询问：选“是”，全部考试里都改成表里的姓名；选“否”，成绩库的名单不变。"_s);

    request.newStudents = NewStudents::Ask;
    request.streamOfNewClasses = u"理"_s;
    found = preview();
    EXPECT_EQ(told(found, PreviewKind::UnknownStudent),
              (QStringList{u"4: 1|8|赵六"_s, u"5: 12|1|周八"_s}));
    EXPECT_EQ(remark(found, PreviewKind::UnknownStudent),
              u"导入时会询问是否添加；不添加，成绩也会导入。"_s);
    EXPECT_EQ(told(found, PreviewKind::NewClass), QStringList{u"12|||科类  → 理"_s});
    EXPECT_EQ(remark(found, PreviewKind::NewClass), u"成绩库里没有这个班的学生。"_s);
}

TEST_F(ExamPreviewTest, TellsOfBadCellsAndOfTextsThatAreReadAsNumbers)
{
    sheet({heads({u"语文"_s, u"数学"_s}),
           {1, 1, u"王芳"_s, 151, runtime::Value()},
           {1, 2, u"陈静"_s, -1, u"缺考"_s},
           {2, 1, u"李强"_s, u"abc"_s, u"87分"_s},
           {2, 2, u"孙七"_s, u"作弊"_s, 150}});
    const Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::BadCell),
              (QStringList{u"2: 1|1|王芳|语文 151 → 151"_s, u"2: 1|1|王芳|数学  → 0"_s,
                           u"3: 1|2|陈静|语文 -1 → -1"_s}));
    const auto& bad = found.entries(PreviewKind::BadCell);
    EXPECT_EQ(bad[0].remark,
              u"超过总分（给出的满分 150），导入时会列出来要求修改；不改就按这个数存入。"_s);
    EXPECT_EQ(bad[1].remark, u"分值不能为空，导入时会列出来要求修改；不改就按这个数存入。"_s);
    EXPECT_EQ(bad[2].remark,
              u"分值不能为负，导入时会列出来要求修改；不改就按这个数存入，也就是缺考。"_s);
    EXPECT_EQ(told(found, PreviewKind::TextCell),
              (QStringList{u"4: 2|1|李强|语文 abc → 0"_s, u"4: 2|1|李强|数学 87分 → 87"_s}));
    EXPECT_EQ(remark(found, PreviewKind::TextCell), u"既不是缺考也不是作弊，按这个数存入。"_s);
}

TEST_F(ExamPreviewTest, TellsBothRowsOfAStudentWhoStandsTwiceAndTheRowsBehindTheEnd)
{
    sheet({heads({u"语文"_s}),
           {1, 1, u"王芳"_s, 90},
           {1, 2, u"陈静"_s, 91},
           {1, 1, u"王芳"_s, 92},
           {1, runtime::Value(), u"某某"_s, 93}});
    Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::Twice), (QStringList{u"2: 1|1|王芳"_s, u"4: 1|1|王芳"_s}));
    EXPECT_EQ(remark(found, PreviewKind::Twice),
              u"第 2、4 行的班级和学号相同，导入后有几条成绩。"_s);
    EXPECT_EQ(told(found, PreviewKind::RowLeft), QStringList{u"5: 1||某某"_s});
    EXPECT_EQ(remark(found, PreviewKind::RowLeft), u"第 5 行没有学号，导入到此为止。"_s);
    addExam();
    pickList();
    found = preview();
    EXPECT_EQ(remark(found, PreviewKind::Twice),
              u"第 2、4 行的班级和学号相同，最后一行的成绩算数。"_s);
}

TEST_F(ExamPreviewTest, OfTwoNamesOfOneNumberEachHasScoresOfItsOwn)
{
    addExam();
    pickList();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 55}, {1, 1, u"换名"_s, 66}, {1, 1, u"a'b"_s, 77}});
    overwritten = ScoreTarget::FirstRows;
    names = NameAnswer::Keep;
    const QString twice = u"第 2、3、4 行的班级和学号相同，姓名不同，导入后会有 2 条成绩。"_s;
    Preview found = preview();
    EXPECT_EQ(remark(found, PreviewKind::Twice), twice);
    EXPECT_EQ(told(found, PreviewKind::Changed), QStringList{u"2: 1|1|王芳|语文 90 → 55"_s});
    EXPECT_EQ(told(found, PreviewKind::NewInExam), QStringList{u"3: 1|1|换名"_s});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 55}, {1, 1, u"换名"_s, 66}});
    names = NameAnswer::Ask;
    found = preview();
    EXPECT_EQ(remark(found, PreviewKind::Twice),
              u"第 2、3 行的班级和学号相同，姓名不同，导入后会有 2 条成绩。"_s);
    EXPECT_EQ(told(found, PreviewKind::Changed), QStringList{u"3: 1|1|换名|语文 90 → 66"_s});
    EXPECT_EQ(told(found, PreviewKind::NewInExam), QStringList{u"2: 1|1|王芳"_s});
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 55}, {1, 1, u"a'b"_s, 66}});
    found = preview();
    EXPECT_EQ(remark(found, PreviewKind::Twice),
              u"第 2、3 行的班级和学号相同，最后一行的成绩算数。"_s);
    EXPECT_EQ(told(found, PreviewKind::Changed), QStringList{u"2: 1|1|王芳|语文 90 → 55"_s})
        << "nobody is renamed to a name with an apostrophe";
}

TEST_F(ExamPreviewTest, WhichNameCountsCanBeKnown)
{
    addExam();
    sheet({heads({u"语文"_s}), {1, 1, u"换名"_s, 66}});
    const auto toldWith = [this](NameAnswer answer) {
        names = answer;
        return remark(preview(), PreviewKind::OtherName);
    };
    EXPECT_EQ(toldWith(NameAnswer::Replace), u"全部考试里都改成表里的姓名。"_s);
    EXPECT_EQ(toldWith(NameAnswer::Keep), u"成绩库的名单不变。"_s);
    EXPECT_EQ(toldWith(NameAnswer::Cancel), u"导入会在这一行停下，什么成绩也不存入。"_s);
    EXPECT_EQ(toldWith(NameAnswer::Ask),
              u"导入时会询问：选“是”，全部考试里都改成表里的姓名；选“否”，成绩库的名单不变。"_s);
    pickList();
    EXPECT_EQ(toldWith(NameAnswer::Keep),
              u"成绩库的名单不变。按表里的姓名另找他的成绩，没有就新增一条。"_s);
    EXPECT_EQ(toldWith(NameAnswer::Replace), u"全部考试里都改成表里的姓名。"_s);
    EXPECT_TRUE(toldWith(NameAnswer::Ask)
                    .endsWith(u"选“否”时按表里的姓名另找他的成绩，没有就新增一条。"_s));
}

TEST_F(ExamPreviewTest, ARowIsComparedWithTheNameThatTheRowsAboveLeave)
{
    sheet(
        {heads({u"语文"_s}), {1, 1, u"换名"_s, 66}, {1, 1, u"换名"_s, 67}, {1, 1, u"王芳"_s, 68}});
    Preview found = preview();
    EXPECT_EQ(found.matched, 1);
    EXPECT_EQ(told(found, PreviewKind::OtherName),
              (QStringList{u"2: 1|1|换名 王芳 → 换名"_s, u"4: 1|1|王芳 换名 → 王芳"_s}));
    EXPECT_EQ(found.entries(PreviewKind::OtherName)[1].remark,
              u"前面的行选“是”以后，导入时会询问：选“是”，全部考试里都改成表里的姓名；"
              "选“否”，成绩库的名单不变。"_s);
    names = NameAnswer::Replace;
    EXPECT_EQ(preview().entries(PreviewKind::OtherName)[1].remark,
              u"全部考试里都改成表里的姓名。"_s);
    names = NameAnswer::Keep;
    found = preview();
    EXPECT_EQ(found.matched, 1);
    EXPECT_EQ(told(found, PreviewKind::OtherName),
              (QStringList{u"2: 1|1|换名 王芳 → 换名"_s, u"3: 1|1|换名 王芳 → 换名"_s}));
}

TEST_F(ExamPreviewTest, AnImportThatANameStopsChangesNothing)
{
    addExam();
    pick();
    names = NameAnswer::Cancel;
    sheet({heads({u"语文"_s}),
           {1, 1, u"王芳"_s, 55},
           {1, 2, u"换名"_s, 66},
           {1, 2, u"换名"_s, 67},
           {1, 7, u"新生"_s, 77}});
    const Preview found = preview();
    EXPECT_EQ(
        found.warning,
        u"导入会在第 3 行停下，那里的姓名与成绩库的不一致；什么也不存入。如果不停下：考试“期中”"
        "已经在成绩库里（“文”科）！导入会用表里的成绩改写原有的成绩。"_s);
    for (const PreviewKind kind :
         {PreviewKind::Changed, PreviewKind::NewInExam, PreviewKind::NewStudent})
        EXPECT_EQ(found.count(kind), 0);
    EXPECT_EQ(found.unchanged, 0);
    const auto late = u"导入在第 3 行就停下了，到不了这一行。"_s;
    EXPECT_EQ(remark(found, PreviewKind::UnknownStudent), late);
    EXPECT_EQ(found.entries(PreviewKind::OtherName)[1].remark, late);
    EXPECT_EQ(remark(found, PreviewKind::Twice), u"第 3、4 行的班级和学号相同。"_s);
    const QString all = u"select 学号, 姓名 from 信息表 union all select 语文, 姓名 from 成绩表"_s;
    const QString before = library.rows(all);
    dialogs.expect(u"不一致"_s, runtime::Answer::Cancel);
    EXPECT_EQ(run(), importing::ImportResult::Stopped);
    EXPECT_EQ(library.rows(all), before);
}

TEST_F(ExamPreviewTest, OfAnImportThatANameStopsTheNewStudentsAboveStay)
{
    names = NameAnswer::Cancel;
    sheet(
        {heads({u"语文"_s}), {1, 7, u"新生"_s, 77}, {1, 2, u"换名"_s, 66}, {1, 8, u"又新"_s, 78}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, u"导入会在第 3 行停下，那里的姓名与成绩库的不一致；"
                             "只添加前面的 1 名新学生，什么成绩也不存入。"_s);
    EXPECT_EQ(told(found, PreviewKind::NewStudent), QStringList{u"2: 1|7|新生"_s});
    dialogs.expect(u"不一致"_s, runtime::Answer::Cancel);
    EXPECT_EQ(run(), importing::ImportResult::Stopped);
    EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where ID>3"_s), u"新生"_s);
    EXPECT_EQ(library.rows(u"select count(*) from 成绩表"_s), u"0"_s);
}

TEST_F(ExamPreviewTest, AScoreThatItsColumnRefusesIsNotSaidToBeStored)
{
    addExam();
    sheet({heads({u"语文"_s, u"数学"_s}),
           {1, 1, u"王芳"_s, 1e300, 80},
           {1, 2, u"陈静"_s, 70, u"1e300分"_s}});
    Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::BadCell),
              (QStringList{u"2: 1|1|王芳|语文 1E+300 → "_s, u"3: 1|2|陈静|数学 1e300分 → "_s}));
    const auto judged = u"超过总分（给出的满分 150），导入时会列出来要求修改；不改就"_s;
    EXPECT_EQ(remark(found, PreviewKind::BadCell), judged + u"存不进去，没有这一科的成绩。"_s);
    pickList();
    found = preview();
    EXPECT_EQ(remark(found, PreviewKind::BadCell), judged + u"存不进去，原来的成绩不变。"_s);
    EXPECT_EQ(told(found, PreviewKind::Changed), QStringList());
    EXPECT_EQ(found.unchanged, 4);
    fullMark = std::numeric_limits<float>::infinity();
    EXPECT_EQ(remark(preview(), PreviewKind::BadCell), u"这个数存不进去，原来的成绩不变。"_s);
}

TEST_F(ExamPreviewTest, ATextInTheLibraryBecomesANumberEvenOfTheSameWorth)
{
    addExam();
    pickList();
    library.execute(u"update 成绩表 set 语文='abc' where 学号=1"_s);
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 0}});
    EXPECT_EQ(told(preview(), PreviewKind::Changed), QStringList{u"2: 1|1|王芳|语文 abc → 0"_s});
}

TEST_F(ExamPreviewTest, SaysLoudlyThatATypedExamIsThereAlready)
{
    addExam();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    const Preview found = preview();
    EXPECT_EQ(found.warning,
              u"成绩库里已经有考试“期中”（“文”科）！名称是输入的，导入会再添一套成绩，"
              "原有的成绩不变，其中 1 人会有两套成绩。要改写原有的成绩，"
              "请先在考试名称的列表里选择它。"_s);
    EXPECT_EQ(told(found, PreviewKind::Repeated), QStringList{u"2: 1|1|王芳"_s});
    EXPECT_EQ(remark(found, PreviewKind::Repeated), u"这次考试里已有他的成绩，导入后有两条。"_s);
}

TEST_F(ExamPreviewTest, TheOtherStreamOfAnExamIsNoReasonToWarn)
{
    addExam();
    sheet({heads({u"语文"_s}), {2, 1, u"李强"_s, 90}});
    const Preview found = preview();
    EXPECT_EQ(found.warning, QString());
    EXPECT_TRUE(found.notes.contains(u"考试“期中”已有别的科类，这张表作为“理”科加入。"_s));
}

TEST_F(ExamPreviewTest, TellsOldAndNewOfEveryScoreThatIsOverwritten)
{
    addExam();
    pickList();
    sheet({heads({u"语文"_s, u"数学"_s}),
           {1, 1, u"王芳"_s, 90, u"缺考"_s},
           {2, 1, u"李强"_s, 60, 61}});
    const Preview found = preview();
    EXPECT_EQ(found.warning,
              u"考试“期中”已经在成绩库里（“文”科）！导入会用表里的成绩改写原有的成绩。"_s);
    EXPECT_EQ(told(found, PreviewKind::Changed), QStringList{u"2: 1|1|王芳|数学 80 → 缺考"_s});
    EXPECT_EQ(found.unchanged, 1);
    EXPECT_EQ(told(found, PreviewKind::NewInExam), QStringList{u"3: 2|1|李强"_s});
    EXPECT_EQ(remark(found, PreviewKind::NewInExam), u"这次考试里还没有他的成绩，会新增一条。"_s);
    EXPECT_EQ(told(found, PreviewKind::Missing), QStringList{u"1|2|陈静"_s});
    EXPECT_EQ(remark(found, PreviewKind::Missing),
              u"有这次考试的成绩，表里没有他；他的成绩保持不变。"_s);
    EXPECT_EQ(found.headline(), u"表中 2 行：与成绩库一致 2 人，改动的成绩 1 处，新增的成绩 1 人，"
                                "不在表中 1 人，没有改动的成绩 1 处。"_s);
}

TEST_F(ExamPreviewTest, AStudentOfAnotherStreamIsNotMissedOnTheSheet)
{
    addExam();
    library.addScores(u"期中"_s, 2, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 70}});
    pickList();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}, {1, 2, u"陈静"_s, 70}});
    const Preview found = preview();
    EXPECT_EQ(found.count(PreviewKind::Missing), 0);
    EXPECT_TRUE(found.notes.contains(
        u"这次考试里还有别的科类 1 人的成绩，不在这张表的范围里，保持不变。"_s));
}

TEST_F(ExamPreviewTest, OfANewClassTheStreamOfThePickedExamIsAssumed)
{
    addExam();
    pickList();
    sheet({heads({u"语文"_s}), {12, 1, u"周八"_s, 90}, {1, 1, u"王芳"_s, 90}});
    const Preview found = preview();
    EXPECT_EQ(found.title, u"考试“期中”，“文”科，数据表“一年级”"_s);
    EXPECT_TRUE(found.notes.contains(u"第一名学生的班级 12 还没有学生，它的科类导入时会询问；"
                                     "这里先当作和成绩库里的这次考试一样（“文”科）。"_s))
        << found.notes.join(u'\n').toStdString();
    EXPECT_EQ(told(found, PreviewKind::Missing), QStringList{u"1|2|陈静"_s});
    EXPECT_EQ(found.notes.filter(u"没有科类"_s), QStringList());
    EXPECT_EQ(found.notes.filter(u"别的科类"_s), QStringList());
    EXPECT_EQ(found.notes.filter(u"满分和总分公式"_s), QStringList());
}

TEST_F(ExamPreviewTest, OfANewClassWhoseStreamNothingTellsItIsSaidThatItWillBeAsked)
{
    addExam();
    library.addExam(u"期中"_s, u"理"_s, 2, {});
    library.reload();
    pickList();
    sheet({heads({u"语文"_s}), {12, 1, u"周八"_s, 90}});
    const Preview found = preview();
    EXPECT_EQ(found.title, u"考试“期中”，科类待定，数据表“一年级”"_s);
    EXPECT_TRUE(found.warning.startsWith(u"考试“期中”已经在成绩库里（“文”科、“理”科）！"_s))
        << found.warning.toStdString();
    EXPECT_TRUE(
        found.notes.contains(u"第一名学生的班级 12 还没有学生，它的科类导入时会询问；"
                             "谁不在表中、满分和总分公式写到哪一行，要看科类，这里没有列出。"_s));
    EXPECT_EQ(found.count(PreviewKind::Missing), 0);
    EXPECT_EQ(found.notes.filter(u"没有科类"_s), QStringList());
    EXPECT_EQ(found.notes.filter(u"别的科类"_s), QStringList());
}

TEST_F(ExamPreviewTest, ANewNameThatTheLibraryRefusesIsABadCell)
{
    const QString name(60, u'长');
    sheet({heads({u"语文"_s}), {1, 3, name, 92}});
    const Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::BadCell),
              QStringList{u"2: 1|3|"_s + name + u"|姓名 "_s + name + u" → "_s});
    EXPECT_EQ(remark(found, PreviewKind::BadCell),
              u"“%1”不能存入列“姓名”：文字超过 50 个字符。"_s.arg(name));
}

TEST_F(ExamPreviewTest, AStudentWhoHasNoNameInTheLibraryIsNotCountedAsMatched)
{
    library.addStudent(1, 3, u""_s, u"文"_s);
    library.addExam(u"期初"_s, u"文"_s, 0, {});
    library.addScores(u"期初"_s, 1, 3, {{u"考试编号"_s, 0}, {u"语文"_s, 10}});
    addExam();
    pickList();
    sheet({heads({u"语文"_s}), {1, 3, u"赵六"_s, 92}});
    const Preview found = preview();
    EXPECT_EQ(found.matched, 0);
    EXPECT_EQ(told(found, PreviewKind::OtherName), QStringList{u"2: 1|3|赵六  → 赵六"_s});
    EXPECT_EQ(remark(found, PreviewKind::OtherName),
              u"成绩库里的这名学生没有姓名，导入不会给他加上。"_s);
    EXPECT_EQ(found.count(PreviewKind::OtherExam), 0) << "he is not renamed, so it is not his";
    EXPECT_EQ(found.count(PreviewKind::NewInExam), 1);
}

TEST_F(ExamPreviewTest, SaysWhatTheOriginalRuleWouldCost)
{
    library.addExam(u"期初"_s, u"理"_s, 0, {});
    library.addScores(u"期初"_s, 1, 1, {{u"考试编号"_s, 0}, {u"语文"_s, 10}});
    library.addExam(u"期中"_s, u"理"_s, 1, {});
    library.reload();
    pickList();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    Preview found = preview();
    EXPECT_TRUE(found.warning.endsWith(
        u"导入时会询问“按原规则导入”还是“只更新本考试”，下面的改动是只更新本考试的。"_s));
    EXPECT_EQ(told(found, PreviewKind::OtherExam), QStringList{u"2: 1|1|王芳 期初 → 期中"_s});
    EXPECT_EQ(remark(found, PreviewKind::OtherExam), u"按原规则导入会改写他在这次考试的成绩。"_s);
    EXPECT_TRUE(found.notes.contains(
        u"按原规则导入，满分和总分公式会写到“理”科的考试行，不是“文”科的。"_s));
    EXPECT_EQ(found.count(PreviewKind::NewInExam), 1);
    overwritten = ScoreTarget::FirstRows;
    found = preview();
    EXPECT_EQ(found.count(PreviewKind::OtherExam), 1);
    EXPECT_EQ(found.count(PreviewKind::NewInExam), 0) << "the first row is there";
    overwritten = ScoreTarget::ExamRows;
    EXPECT_EQ(preview().count(PreviewKind::OtherExam), 0);
}

TEST_F(ExamPreviewTest, SaysWhereTheFullMarksComeFrom)
{
    addExam();
    library.execute(u"update 考试名称表 set 语文=100"_s);
    support::write(library.paths.dataFile(u"满分.txt"_s), u"语文=150\n"_s.toUtf8());
    library.execute(u"update 考试名称表 set 数学=NULL"_s);
    pickList();
    sheet({heads({u"语文"_s, u"数学"_s}), {1, 1, u"王芳"_s, 101, 1000}});
    std::optional<Preview> found = previewExam(library.scores, intake, {request});
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->notes.contains(u"满分要到导入时才输入；先用考试“期中”里的：语文 100；"
                                      "数学没有满分，没有检查是否超过。"_s));
    EXPECT_EQ(told(*found, PreviewKind::BadCell), QStringList{u"2: 1|1|王芳|语文 101 → 101"_s});
    library.execute(u"update 考试名称表 set 语文=NULL"_s);
    found = previewExam(library.scores, intake, {request, {}, {{u"数学"_s, 120.5F}}});
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->notes.contains(u"满分要到导入时才输入；先用给出的：数学 120.5；"
                                      "先用默认的：语文 150。"_s));
}

TEST_F(ExamPreviewTest, SaysThatTheListWillPassOverTheName)
{
    library.addExam(u"高一期中"_s, u"文"_s, 1, {});
    library.reload();
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    EXPECT_TRUE(
        preview().notes.contains(u"“期中”是已有考试“高一期中”的一部分，导入以后考试列表里看不到它，"
                                 "也就不能浏览和统计。请换一个不被别的考试名称包含的名称。"_s));
}

TEST_F(ExamPreviewTest, SaysThatTheFirstRowHasNoClassOfTheLibrary)
{
    sheet({heads({u"语文"_s}), {u"1班"_s, 1, u"王芳"_s, 90}});
    const Preview found = preview();
    EXPECT_TRUE(found.notes.contains(
        u"第一名学生的班级“1班”不是成绩库里的班级，读不出考试的科类，请先改成班级的数字。"_s));
    sheet({heads({u"语文"_s}), {QString(u'1' + QString(10'000, u'班')), 1, u"王芳"_s, 90}});
    EXPECT_EQ(preview().notes.filter(QString(199, u'班') + u'…').size(), 1);
    EXPECT_EQ(preview().notes.filter(QString(200, u'班')), QStringList());
    sheet({heads({u"语文"_s})});
    EXPECT_TRUE(preview().notes.contains(u"表里没有学生，第 2 行没有学号。"_s));
}

TEST_F(ExamPreviewTest, HostileAndLongNamesAreTold)
{
    const QString longName(10'000, u'长');
    addExam();
    pickList();
    sheet({heads({u"语文"_s}),
           {1, 1, u"' or ''='"_s, 90},
           {1, 2, longName, 91},
           {1, 3, u"--\n甲"_s, 92}});
    const Preview found = preview();
    EXPECT_EQ(told(found, PreviewKind::OtherName),
              (QStringList{u"2: 1|1|' or ''=' 王芳 → ' or ''='"_s,
                           u"3: 1|2|"_s + longName + u" 陈静 → "_s + longName}));
    EXPECT_EQ(told(found, PreviewKind::NewStudent), QStringList{u"4: 1|3|--\n甲"_s});
    EXPECT_EQ(told(found, PreviewKind::BadCell), QStringList{u"2: 1|1|' or ''='"_s});
    EXPECT_EQ(remark(found, PreviewKind::BadCell),
              u"姓名里有单引号，按原规则找不到他的成绩，这一行不会存入。"_s);
}

TEST_F(ExamPreviewTest, WhereTheImportWouldNotBeginItSaysTheSame)
{
    const auto refused = [this](const QString& message) {
        dialogs.shown.clear();
        EXPECT_FALSE(previewExam(library.scores, intake, {request}));
        EXPECT_EQ(dialogs.shown, QStringList{message});
    };
    refused(u"错误: 要分析的工作簿未打开！"_s);
    sheet({{u"班级"_s, u"学号"_s, u"名字"_s}, {1, 1, u"王芳"_s, 90}});
    refused(u"错误: 指定的工作表格式不对！\n\n前3列名称应为：班级,学号,姓名"_s);
    sheet({heads({u"体育"_s}), {1, 1, u"王芳"_s, 90}});
    refused(u"错误: 没有找到科目，程序退出！"_s);
    request.examName.clear();
    refused(u"错误: 请输入考试名称！"_s);
    request.workbookPath = u"没有.xlsx"_s;
    dialogs.shown.clear();
    EXPECT_FALSE(previewExam(library.scores, intake, {request}));
    EXPECT_EQ(dialogs.shown, QStringList()) << "a file that is gone stops in silence";
}

TEST_F(ExamPreviewTest, ALibraryThatAnotherProgramHoldsIsSaidInOneSentence)
{
    sheet({heads({u"语文"_s}), {1, 1, u"王芳"_s, 90}});
    database::Connection other;
    other.Open(library.scores.LibPath);
    sqlite3_exec(other.handle(), "begin exclusive", nullptr, nullptr, nullptr);
    try {
        (void)previewExam(library.scores, intake, {request});
        ADD_FAILURE();
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.description(),
                  u"成绩库正被别的程序使用，请关闭那个程序后再试。（database is locked）"_s);
    }
    other.Close();
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(preview().matched, 1);
}

} // namespace
