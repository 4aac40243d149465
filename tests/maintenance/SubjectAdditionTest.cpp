#include "maintenance/SubjectAddition.h"

#include <QDir>

#include <gtest/gtest.h>

#include "library/NewLibrary.h"
#include "platform/database/ColumnDeclaration.h"
#include "support/FileBytes.h"
#include "support/NoRoom.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using library::Backup;
using maintenance::NewSubject;
using maintenance::SubjectAddition;

const QString tag = u" - Sub AddSubject/SubjectAddition"_s;

class SubjectAdditions : public testing::Test
{
protected:
    SubjectAdditions()
    {
        test.addStudent(1, 1, u"甲"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 70}});
        test.reload();
    }

    bool add(const NewSubject& subject, Backup backup = Backup::SwitchedOff)
    {
        return addition.run(subject, progress, backup);
    }

    QString columns(const QString& table)
    {
        return database::columnNames(test.scores.Conn, table).join(u' ');
    }

    QString allColumns()
    {
        return columns(u"成绩表"_s) + u" / "_s + columns(u"考试名称表"_s) + u" / "_s
               + columns(u"教师表"_s);
    }

    qsizetype copies() const
    {
        return QDir(test.folder.path()).entryList({u"*.bak"_s}, QDir::Files).size();
    }

    /// Adds nothing and says this.
    void refuse(const NewSubject& subject, const QString& message)
    {
        const QString before = allColumns();
        test.dialogs.shown.clear();
        EXPECT_FALSE(add(subject, Backup::Make)) << subject.name.left(50).toStdString();
        EXPECT_EQ(test.dialogs.shown, QStringList{message});
        EXPECT_EQ(allColumns(), before);
        EXPECT_EQ(copies(), 0);
    }

    support::TestLibrary test{{u"语文"_s, u"总分"_s}};
    SubjectAddition addition{test.scores};
    runtime::NoProgress progress;
};

TEST_F(SubjectAdditions, GiveASubjectItsColumnsBehindTheOthers)
{
    EXPECT_TRUE(add({u"信息技术"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(columns(u"成绩表"_s),
              u"id 考试编号 类别代码 班级 学号 姓名 科类 考试名称 语文 语文年名 语文班名 语文Z分 "
              "语文T分 总分 总分年名 总分班名 总分Z分 总分T分 总分T分年名 备注 信息技术 "
              "信息技术年名 信息技术班名 信息技术Z分 信息技术T分"_s);
    EXPECT_EQ(columns(u"考试名称表"_s), u"ID 考试名称 科类 考试编号 备注 语文 总分 信息技术"_s);
    EXPECT_EQ(columns(u"教师表"_s), u"考试名称 班级 语文 总分 信息技术"_s);
    EXPECT_EQ(test.scores.catalogue.SubjectColumns, (QStringList{u"语文"_s, u"信息技术"_s}));
    EXPECT_EQ(test.rows(u"select 姓名, 语文, 信息技术 from 成绩表"_s), u"甲|70|NULL"_s);
}

/// Names and types of the columns of a subject in the three tables.
QStringList declared(database::Connection& connection, const QString& subject)
{
    QStringList found;
    for (const QString& table : {u"成绩表"_s, u"考试名称表"_s, u"教师表"_s}) {
        for (const auto& column : database::columnDeclarations(connection, table)) {
            if (column.name.startsWith(subject))
                found.append(column.name + u' ' + column.type + u' ' + column.collation);
        }
    }
    return found;
}

TEST_F(SubjectAdditions, MakeTheColumnsThatANewLibraryHas)
{
    support::TestLibrary made{{u"物理"_s, u"理综总分"_s}};
    EXPECT_TRUE(add({u"物理"_s}));
    EXPECT_TRUE(add({u"理综总分"_s, u"语文"_s}));
    for (const QString& subject : {u"物理"_s, u"理综总分"_s})
        EXPECT_EQ(declared(test.scores.Conn, subject), declared(made.scores.Conn, subject));
    EXPECT_EQ(declared(made.scores.Conn, u"理综总分"_s).size(), 8);
}

TEST_F(SubjectAdditions, OfATotalStoreItsFormulaForTheExamsToCome)
{
    EXPECT_EQ(addition.knownFormula(u"三科总分"_s), u"语文+数学+英语"_s);
    EXPECT_EQ(addition.knownFormula(u"两科总分"_s), QString());
    EXPECT_EQ(addition.knownFormula(u"' or ''='总分"_s), QString());
    EXPECT_TRUE(add({u"三科总分"_s, u"语文"_s}));
    EXPECT_TRUE(add({u"两科总分"_s, u"语文+语文"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList());
    EXPECT_EQ(test.rows(u"select 公式 from 总分公式 where 总分 in ('三科总分','两科总分')"_s),
              u"语文 / 语文+语文"_s);
    EXPECT_EQ(test.scores.catalogue.TotalColumns,
              (QStringList{u"总分"_s, u"三科总分"_s, u"两科总分"_s}));
    EXPECT_EQ(test.rows(u"select 三科总分 from 考试名称表"_s), u"NULL"_s);
}

TEST_F(SubjectAdditions, RefuseNamesThatNoColumnCanHave)
{
    const QString letters = u"科目名称只能由汉字、字母、数字和下划线组成，不能以数字开头。"_s;
    refuse({u""_s}, u"请输入科目名称。"_s);
    refuse({QString(10'000, u'长')}, u"科目名称最多 50 个字，现在有 10000 个字。"_s);
    for (const QString& name : {u"'"_s, u"--"_s, u"' or ''='"_s, u"a]b"_s, u"[a"_s, u"语 文"_s,
                                u"语\n文"_s, u"语+文"_s, u"语,文"_s, u"1班"_s, u"a;b"_s, u"%1"_s})
        refuse({name}, letters);
    for (const QString& name : {u"order"_s, u"SELECT"_s, u"rowid"_s})
        refuse({name}, u"“%1”是数据库的保留字，不能作科目名称，请换一个名称。"_s.arg(name));
}

TEST_F(SubjectAdditions, RefuseNamesThatColumnsHave)
{
    refuse({u"语文"_s}, u"“成绩表”里已经有“语文”这一列，请换一个名称。"_s);
    refuse({u"姓名"_s}, u"“成绩表”里已经有“姓名”这一列，请换一个名称。"_s);
    test.execute(u"ALTER TABLE 考试名称表 add COLUMN [Music] Single"_s);
    refuse({u"music"_s}, u"“考试名称表”里已经有“music”这一列，请换一个名称。"_s);
    test.execute(u"ALTER TABLE 成绩表 add COLUMN [体育Z分] Double"_s);
    refuse({u"体育"_s}, u"“成绩表”里已经有“体育Z分”这一列，科目不能叫“体育”。"_s);
    for (const QString& ending : {u"年名"_s, u"班名"_s, u"Z分"_s, u"T分"_s, u"t分"_s})
        refuse({u"化学"_s + ending},
               u"科目名称不能以“%1”结尾，程序用这样的名称存名次和标准分。"_s.arg(ending.toUpper()));
}

TEST_F(SubjectAdditions, RefuseFormulasAsTheScreenOfTotalsDoes)
{
    refuse({u"三科总分"_s, u"语文+物理"_s},
           u"总分公式中添加的科目： 物理 无效！只能添加现有科目。"_s);
    refuse({u"三科总分"_s, u"语文+"_s}, u"总分公式中添加的科目：  无效！只能添加现有科目。"_s);
    refuse({u"加权总分"_s, u"总分+语文"_s},
           u"公式里的“总分”是总分：总分没有满分，每次计算都会出错。请写出它所加的各科。"_s);
    refuse({u"三科总分"_s, QString(51, u'语')}, u"总分公式最多 50 个字，现在有 51 个字。"_s);
    EXPECT_TRUE(add({u"三科总分"_s, u" 　"_s})) << "a total can wait for its formula";
    EXPECT_TRUE(add({u"两科总分"_s, u" 语文 ＋　语文 "_s})) << "as it is meant";
    EXPECT_EQ(test.rows(u"select 公式 from 总分公式 where 总分='两科总分'"_s), u"语文+语文"_s);
}

TEST_F(SubjectAdditions, NeedTheThreeTables)
{
    test.execute(u"drop table 教师表"_s);
    EXPECT_FALSE(add({u"物理"_s}));
    EXPECT_EQ(test.dialogs.shown, QStringList{u"成绩库里没有“教师表”，不能添加科目。"_s});
}

TEST_F(SubjectAdditions, NoticeWhatAnotherProgramAddedMeanwhile)
{
    support::OtherProgram other(test.scores.LibPath);
    other.run("alter table 成绩表 add column 物理班名 Long");
    EXPECT_FALSE(add({u"物理"_s}));
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"“成绩表”里已经有“物理班名”这一列，科目不能叫“物理”。"_s});
}

TEST_F(SubjectAdditions, OfALibraryThatIsLockedAddNothing)
{
    const QByteArray before = support::read(test.scores.LibPath);
    support::OtherProgram other(test.scores.LibPath);
    other.run("begin immediate");
    EXPECT_FALSE(add({u"物理"_s}));
    other.run("rollback");
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(tag));
    EXPECT_EQ(support::read(test.scores.LibPath), before);
    EXPECT_TRUE(add({u"物理"_s})) << "and can be repeated";
}

TEST_F(SubjectAdditions, MakeOneCopyOfTheLibraryAsItWasAndAreFollowedOnce)
{
    int told = 0;
    QObject::connect(&test.scores, &library::ScoreLibrary::changed, &test.scores, [&] { ++told; });
    const QByteArray before = support::read(test.scores.LibPath);
    EXPECT_TRUE(add({u"物理"_s}, Backup::Make));
    const QDir folder(test.folder.path());
    const QStringList made = folder.entryList({u"*.bak"_s}, QDir::Files);
    ASSERT_EQ(made.size(), 1);
    EXPECT_EQ(support::read(folder.filePath(made[0])), before);
    EXPECT_EQ(library::notedOccasions(folder.filePath(made[0])).back().occasion.text,
              u"添加科目 物理"_s);
    EXPECT_EQ(told, 1);
}

TEST(SubjectAddition, SaysWhatComesNext)
{
    EXPECT_EQ(SubjectAddition::nextSteps({u"物理"_s}),
              u"已添加科目“物理”。\n\n以后导入考试时，工作表里有“物理”这一列就会导入，并询问满分。"
              "要计入总分，请在“数据维护”的“总分设置”里把它加进各次考试的公式。"_s);
    EXPECT_EQ(
        SubjectAddition::nextSteps({u"三科总分"_s, u"语文"_s}),
        u"已添加总分“三科总分”，以后导入的考试都按它的公式计算。\n\n以前的考试还没有它的公式："
        "请在“数据维护”的“总分设置”里选中这些考试，设好公式，再计算总分。"_s);
    EXPECT_EQ(
        SubjectAddition::nextSteps({u"三科总分"_s, u" "_s}),
        u"已添加总分“三科总分”，它还没有公式，不会计算。\n\n请在“数据维护”的“总分设置”里选中考试，"
        "设好公式，再计算总分。以后导入的考试也要这样设。"_s);
}

TEST_F(SubjectAdditions, AreNotBegunWhereTheCopyDoesNotFit)
{
    support::outgrowDisk(test);
    EXPECT_FALSE(add({u"信息技术"_s}, Backup::Make));
    support::expectOnlyNoRoomTold(test.dialogs.shown);
}

} // namespace
