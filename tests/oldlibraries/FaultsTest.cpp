#include <gtest/gtest.h>

#include "CopiedLibrary.h"
#include "oldlibraries/Converting.h"
#include "oldlibraries/FaultKind.h"
#include "platform/database/Statement.h"
#include "support/FileBytes.h"
#include "support/PrintQString.h"

using namespace Qt::StringLiterals;

namespace {

/// Two students and one exam of both streams with their scores, without a fault.
class FaultsLibrary : public CopiedLibrary
{
public:
    FaultsLibrary()
    {
        execute(u"insert into 信息表(ID,班级,学号,姓名,科类) values "
                "(1,3,5,'甲','文'),(2,4,5,'乙','理')"_s);
        execute(u"insert into 考试名称表(考试名称,科类,考试编号,语文,总分) values "
                "('期中','文',1,150,'语文'),('期中','理',1,120,'语文')"_s);
        execute(u"insert into 成绩表(id,班级,学号,姓名,科类,考试名称,语文,总分) values "
                "(1,3,5,'甲','文','期中',150,150),(2,4,5,'乙','理','期中',-1,-1)"_s);
        execute(u"update 总分公式 set 公式='语文'"_s);
    }
};

struct Fault
{
    QString change;
    QString findings;
};

void expectFaults(std::initializer_list<Fault> faults)
{
    for (const Fault& fault : faults) {
        SCOPED_TRACE(qPrintable(fault.change));
        FaultsLibrary library;
        library.execute(fault.change);
        EXPECT_EQ(library.faults(), fault.findings);
    }
}

} // namespace

TEST(Faults, ASoundLibraryHasNone)
{
    FaultsLibrary library;
    const QByteArray before = support::read(library.path());
    EXPECT_EQ(library.faults(), QString());
    EXPECT_EQ(support::read(library.path()), before);
    EXPECT_EQ(CopiedLibrary({u"语文"_s}).faults(), QString());
}

TEST(Faults, StudentsWhoCannotBeToldApartOrFoundAreTold)
{
    const QString same = u"班级和学号与前面的学生相同，原样转入；请改正其中一个。"_s;
    const QString without = u"没有班级或学号，原样转入；请补上。"_s;
    const QString text = u"不是数值，原样转入；程序按数值找班级和学号。"_s;
    expectFaults({
        {u"insert into 信息表(班级,学号,姓名,科类) values (3,5,'丙','文')"_s,
         u"信息表|3|学号|3 班 5 号 丙|"_s + same},
        {u"insert into 信息表(班级,学号,姓名,科类) values (null,7,'丙','文'),(3,null,'丁','文')"_s,
         u"信息表|3|班级| 班 7 号 丙|"_s + without + u"\n信息表|4|班级|3 班  号 丁|"_s + without},
        {u"insert into 信息表(班级,学号,姓名,科类) values ('三班','七号','丙','文')"_s,
         u"信息表|3|班级|三班|"_s + text + u"\n信息表|3|学号|七号|"_s + text},
    });
}

TEST(Faults, StreamsThatTheProgramCannotReadAreTold)
{
    const QString none = u"没有科类，原样转入；不分文理的学校请填“理”。"_s;
    const QString many = u"科类多于两种，程序读不出科类；请在转换后改为“文”和“理”。"_s;
    expectFaults({
        {u"insert into 信息表(班级,学号,姓名,科类) values (5,1,'丙',''),(5,2,'丁',null)"_s,
         u"信息表|3|科类|5 班 1 号 丙|"_s + none + u"\n信息表|4|科类|5 班 2 号 丁|"_s + none
             + u"\n信息表|0|科类|文、理、（空）、（没有值）|"_s + many},
        {u"insert into 信息表(班级,学号,姓名,科类) values (5,1,'丙','艺术')"_s,
         u"信息表|0|科类|文、理、艺术|"_s + many},
    });
}

TEST(Faults, ExamsThatAreTwiceOrUnnumberedOrWithoutScoresAreTold)
{
    expectFaults({
        {u"insert into 考试名称表(考试名称,科类,考试编号) values ('期中','文',2)"_s,
         u"考试名称表|3|考试名称|期中 文|"
         "考试名称和科类与前面的一行相同，原样转入；程序只用前面的一行。"_s},
        {u"update 考试名称表 set 考试编号=null where 科类='理'"_s,
         u"考试名称表|2|考试编号|期中 理|没有考试编号，原样转入；请在转换后调整考试的顺序。"_s},
        {u"delete from 成绩表 where 科类='理'"_s,
         u"考试名称表|2|考试名称|期中 理|成绩表里没有这次考试的成绩；原样转入。"_s},
    });
}

TEST(Faults, ScoresOfUnknownExamsAreCounted)
{
    expectFaults(
        {{u"insert into 成绩表(id,班级,学号,姓名,科类,考试名称) values "
          "(1,3,5,'甲','文','期末'),(1,3,5,'甲','文','50%1'),(2,4,5,'乙','理','50%1'),"
          "(2,4,5,'乙','理',null)"_s,
          u"成绩表|0|考试名称|期末（1 行）|考试名称表里没有这次考试，程序里看不到；原样转入。\n"
          "成绩表|0|考试名称|50%1（2 行）|考试名称表里没有这次考试，程序里看不到；原样转入。\n"
          "成绩表|0|考试名称|（1 行）|考试名称表里没有这次考试，程序里看不到；原样转入。"_s}});
}

TEST(Faults, NamesOfExamsIgnoreCaseAsTheEngineDoes)
{
    FaultsLibrary library;
    library.execute(u"update 考试名称表 set 考试名称='Test ｘ'"_s);
    library.execute(u"update 成绩表 set 考试名称='tEST ｘ'"_s);
    EXPECT_EQ(library.faults(), QString());
    library.execute(u"update 成绩表 set 考试名称='tEST Ｘ'"_s);
    EXPECT_NE(library.faults(), QString());
}

TEST(Faults, ScoresOfNobodyAndScoresTwiceAreTold)
{
    const QString nobody = u"信息表里没有这个 ID 的学生；原样转入。"_s;
    expectFaults({
        {u"update 成绩表 set id=99 where id=2"_s,
         u"成绩表|2|id|99（期中，4 班 5 号 乙）|"_s + nobody},
        {u"update 成绩表 set id=null where id=2"_s,
         u"成绩表|2|id|（期中，4 班 5 号 乙）|没有学生的 ID，个人分析里看不到；原样转入。"_s},
        {u"insert into 成绩表(id,班级,学号,姓名,科类,考试名称) values (1,3,5,'甲','理','期中')"_s,
         u"成绩表|3|id|1（期中，3 班 5 号 甲）|这个学生这次考试前面已有一行成绩；原样转入。"_s},
    });
}

TEST(Faults, ScoresOutsideTheMarksAreTold)
{
    const QString below = u"分数小于 0，又不是表示缺考的 -1；原样转入。"_s;
    const QString above = u"分数高于满分；原样转入。"_s;
    const QString student = u"（期中，3 班 5 号 甲）|"_s;
    expectFaults({
        {u"update 成绩表 set 语文=-2 where id=1"_s, u"成绩表|1|语文|-2"_s + student + below},
        {u"update 成绩表 set 总分=-0.5 where id=1"_s, u"成绩表|1|总分|-0.5"_s + student + below},
        {u"update 成绩表 set 语文=150.5 where id=1"_s, u"成绩表|1|语文|150.5"_s + student + above},
        // A total has no full mark of its own.
        {u"update 成绩表 set 总分=900 where id=1"_s, QString()},
        {u"update 成绩表 set 语文=null where id=1"_s, QString()},
        // The other stream lends its marks.
        {u"update 成绩表 set 语文=121, 科类='艺' where id=2"_s,
         u"考试名称表|2|考试名称|期中 理|成绩表里没有这次考试的成绩；原样转入。"_s},
        {u"update 成绩表 set 语文=151, 科类='艺' where id=2"_s,
         u"成绩表|2|语文|151（期中，4 班 5 号 乙）|"_s + above
             + u"\n考试名称表|2|考试名称|期中 理|成绩表里没有这次考试的成绩；原样转入。"_s},
        {u"delete from 考试名称表 where 科类='文'"_s, u"成绩表|1|语文|150"_s + student + above},
        // What was not examined has no mark that could be passed.
        {u"update 考试名称表 set 语文=0"_s, QString()},
        {u"update 考试名称表 set 语文=null"_s, QString()},
        {u"update 成绩表 set 语文='优' where id=1"_s,
         u"成绩表|1|语文|优"_s + student + u"分数不是数值；原样转入。"_s},
        {u"update 成绩表 set 班级='三' where id=1"_s,
         u"成绩表|1|班级|三|不是数值，原样转入；程序按数值找班级。"_s},
    });
}

TEST(Faults, AFullScoreIsNotAboveTheMarkForTheDigitsOfASingle)
{
    FaultsLibrary library;
    library.execute(u"update 考试名称表 set 语文=89.3"_s);
    library.execute(u"update 成绩表 set 语文=89.30000305175781 where id=1"_s);
    EXPECT_EQ(library.faults(), QString());
    library.execute(u"update 成绩表 set 语文=89.3001 where id=1"_s);
    EXPECT_EQ(library.faults(),
              u"成绩表|1|语文|89.3001（期中，3 班 5 号 甲）|分数高于满分；原样转入。"_s);
}

TEST(Faults, FormulasThatNameAnUnknownSubjectAreTold)
{
    FaultsLibrary library;
    library.execute(u"update 考试名称表 set 总分='语文+生物+O''Neil' where 科类='理'"_s);
    library.execute(u"insert into 总分公式 values ('没有的总分','物理')"_s);
    library.execute(u"update 总分公式 set 公式='语文+生物' where 总分='总分'"_s);
    EXPECT_EQ(library.faults(), u"考试名称表|2|总分|生物、O'Neil（语文+生物+O'Neil）|"
                                "总分公式里有成绩库没有的科目，原样转入；请修改公式。\n"
                                "总分公式|1|总分|生物（语文+生物）|"
                                "默认公式里有成绩库没有的科目，原样转入；导入成绩后请修改公式。"_s);
}

TEST(Faults, SubjectsThatTheExamsDoNotKnowAreTold)
{
    const QString sentence = u"考试名称表里没有这个科目，程序里看不到；原样转入。"_s;
    FaultsLibrary library;
    library.execute(u"alter table 成绩表 add column 体育 single"_s);
    EXPECT_EQ(library.faults(), QString());
    for (const QString& column : {u"体育年名"_s, u"体育班名"_s})
        library.execute(u"alter table 成绩表 add column "_s + column + u" long"_s);
    library.execute(u"alter table 教师表 add column 美术 text(50)"_s);
    EXPECT_EQ(library.faults(),
              QString(u"成绩表|0|体育||"_s + sentence + u"\n教师表|0|美术||"_s + sentence));
}

TEST(Faults, SettingsAndColorsThatAreNotUsedAreTold)
{
    const QString unused = u"程序只用 0 到 15 号颜色，打开“个人分析”时会提示；原样转入。"_s;
    expectFaults({
        {u"insert into 设置表(ID,名称) values (22,'T分 '),(23,''),(24,null)"_s,
         u"设置表|22|名称|T分|名称与前面的设置相同，原样转入；程序只用前面的一行。\n"
         "设置表|23|名称||设置没有名称；原样转入。\n设置表|24|名称||设置没有名称；原样转入。"_s},
        {u"insert into 颜色表 values (16,1),(-1,2),(null,3)"_s,
         u"颜色表|17|ID|16|"_s + unused + u"\n颜色表|18|ID|-1|"_s + unused + u"\n颜色表|19|ID||"_s
             + unused},
    });
}

TEST(Faults, SettingsBySubjectThatNoSubjectHasAreTold)
{
    FaultsLibrary library;
    library.execute(u"update 设置表 set 设置='(使用自定义数据)' where ID in (3,6)"_s);
    library.execute(u"insert into 详细设置表(设置名称) values ('各科良好率 '),(null)"_s);
    EXPECT_EQ(library.faults(), u"设置表|3|设置|高分段：(使用自定义数据)|详细设置表里没有它的各科"
                                "条件，统计会出错；请在“分析设置”里重新设置。"_s);
}

TEST(Faults, OfManyFaultsTheFirstAreListedAndTheOthersCounted)
{
    const qint64 most = oldlibraries::mostFindingsOfKind;
    FaultsLibrary library;
    library.execute(u"with recursive n(x) as (select 10 union all select x+1 from n where x<1311) "
                    "insert into 成绩表(id,班级,学号,姓名,科类,考试名称,语文) "
                    "select 1000+x,1,x,'丙','文','期中',-3 from n"_s);
    const QStringList lines = library.faults().split(u'\n');
    EXPECT_EQ(lines.size(), 2 * (most + 1));
    EXPECT_EQ(
        lines[most - 1],
        u"成绩表|1002|id|2009（期中，1 班 1009 号 丙）|信息表里没有这个 ID 的学生；原样转入。"_s);
    EXPECT_EQ(lines[most], u"成绩表|0|||这样的还有 302 处，没有一一列出："
                           "信息表里没有这个 ID 的学生；原样转入。"_s);
    EXPECT_EQ(lines.last(), u"成绩表|0|||这样的还有 302 处，没有一一列出："
                            "分数小于 0，又不是表示缺考的 -1；原样转入。"_s);
}

TEST(Faults, NamesOfAnyKindAreOnlyTold)
{
    const QString hostile = u"'; drop table 信息表 --\n\t"_s + QString(10'000, u'甲');
    FaultsLibrary library;
    for (const auto& [sql, place] : {std::pair{u"select * from 信息表"_s, u"姓名"_s},
                                     {u"select * from 成绩表"_s, u"姓名"_s},
                                     {u"select * from 成绩表"_s, u"考试名称"_s},
                                     {u"select * from 考试名称表"_s, u"总分"_s},
                                     {u"select * from 考试名称表"_s, u"科类"_s}}) {
        const QString table = sql.section(u' ', -1);
        database::Statement row(library.conn, u"update "_s + table + u" set "_s + place + u"=?"_s);
        row.bind({hostile});
        row.run();
    }
    const QString faults = library.faults();
    EXPECT_TRUE(faults.contains(hostile.left(oldlibraries::longestFindingValue - 50)));
    EXPECT_FALSE(faults.contains(QString(oldlibraries::longestFindingValue, u'甲')));
    EXPECT_EQ(library.rows(u"select count(*) from 信息表"_s), u"2"_s);
}

/// What the samples, which lack nothing, have in them that is told.
using FaultsOfSamples = tests::Converting;

TEST_F(FaultsOfSamples, AreAllThatTheirConversionFinds)
{
    const struct
    {
        QString sample;
        qint64 row;
        QString value;
    } samples[] = {{u"small-two-streams.CJK"_s, 176, u"高一期中，56 班 1 号 转走生"_s},
                   {u"one-stream.CJK"_s, 87, u"高一期中，53 班 1 号 转走生"_s},
                   {u"wide.CJK"_s, 96, u"高一期中，254 班 1 号 转走生"_s},
                   {u"photos.CJK"_s, 59, u"高一期中，252 班 1 号 转走生"_s}};
    for (const auto& sample : samples) {
        SCOPED_TRACE(qPrintable(sample.sample));
        useSample(sample.sample);
        const auto report = convert();
        ASSERT_TRUE(report.has_value());
        EXPECT_EQ(findingTexts(report->findings),
                  QString(u"成绩表|%1|id|（%2）|没有学生的 ID，个人分析里看不到；原样转入。\n"
                          "颜色表|16|ID|16|"
                          "程序只用 0 到 15 号颜色，打开“个人分析”时会提示；原样转入。"_s)
                      .arg(sample.row)
                      .arg(sample.value));
        QFile::remove(request.oldPath);
        QFile::remove(request.newPath);
    }
}
