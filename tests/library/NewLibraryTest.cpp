#include "library/NewLibrary.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "platform/runtime/TextFile.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::Icon;
using support::BoxLook;
using support::ScriptedDialogs;
using support::TestLibrary;

const QString tag = u" - Private Sub Command1_Click/FormNew"_s;

class NewLibraryRun : public testing::Test
{
protected:
    bool create(const QStringList& subjects)
    {
        dialogs.always(u"总分公式里有成绩库没有的科目"_s, u"保持不变"_s);
        return library::NewLibrary(scores).createAsked(subjects, path);
    }

    QStringList columns(const QString& table)
    {
        QStringList names;
        for (const database::Column& column : scores.Conn.columns(table))
            names.append(column.name);
        return names;
    }

    QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void writeOld(const QByteArray& bytes) const
    {
        QFile old(path);
        EXPECT_TRUE(old.open(QIODevice::WriteOnly) && old.write(bytes) == bytes.size());
    }

    /// Names of libraries and of what stands beside them.
    QStringList files() const
    {
        return QDir(folder.path())
            .entryList({u"*.CJK*"_s, u".*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// So many that their columns need more pages than the template has.
    static QStringList manySubjects()
    {
        QStringList names;
        for (int i = 0; i < 60; ++i)
            names.append(u"科目%1"_s.arg(i));
        return names;
    }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    runtime::AppPaths paths = TestLibrary::makeAppFolder(folder.path());
    library::ScoreLibrary scores{paths};
    QString path = folder.filePath(u"新.CJK"_s);
};

TEST_F(NewLibraryRun, ColumnsFollowTheOrderGiven)
{
    EXPECT_TRUE(create({u"数学"_s, u"总分"_s, u"语文"_s}));
    EXPECT_EQ(dialogs.shown.last(), u"新建数据库成功，现在将设置学生信息。"_s);
    EXPECT_EQ(columns(u"考试名称表"_s),
              (QStringList{u"ID"_s, u"考试名称"_s, u"科类"_s, u"考试编号"_s, u"备注"_s, u"数学"_s,
                           u"总分"_s, u"语文"_s}));
    EXPECT_EQ(columns(u"成绩表"_s).mid(8),
              (QStringList{u"数学"_s, u"数学年名"_s, u"数学班名"_s, u"数学Z分"_s, u"数学T分"_s,
                           u"总分"_s, u"总分年名"_s, u"总分班名"_s, u"总分Z分"_s, u"总分T分"_s,
                           u"语文"_s, u"语文年名"_s, u"语文班名"_s, u"语文Z分"_s, u"语文T分"_s,
                           u"总分T分年名"_s, u"备注"_s}));
    EXPECT_EQ(columns(u"教师表"_s).mid(2), (QStringList{u"数学"_s, u"总分"_s, u"语文"_s}));
    EXPECT_EQ(scores.catalogue.ExamList, QStringList());
    EXPECT_EQ(scores.catalogue.AllColumns, (QStringList{u"数学"_s, u"总分"_s, u"语文"_s}));
}

TEST_F(NewLibraryRun, ATotalIsATextOfFiftyCharactersAndASubjectASingle)
{
    create({u"语文"_s, u"总分"_s});
    const database::TableColumns& exam = scores.Conn.columns(u"考试名称表"_s);
    EXPECT_EQ(exam.at(exam.find(u"语文"_s)).type.kind, database::ColumnType::Kind::Single);
    EXPECT_EQ(exam.at(exam.find(u"总分"_s)).type.kind, database::ColumnType::Kind::Text);
    EXPECT_EQ(exam.at(exam.find(u"总分"_s)).type.length, 50);
}

TEST_F(NewLibraryRun, AFormulaOfMoreThanFiftyCharactersDoesNotFit)
{
    create({u"语文"_s, u"总分"_s});
    database::Recordset rows;
    rows.Open(u"select * from 考试名称表"_s, scores.Conn);
    rows.AddNew();
    rows.Fields(u"总分"_s).setValue(QString(50, u'文'));
    EXPECT_THROW(rows.Fields(u"总分"_s).setValue(QString(51, u'文')), runtime::Error);
}

TEST_F(NewLibraryRun, ATotalWithoutItsPartsIsAccepted)
{
    EXPECT_TRUE(create({u"理科总分"_s}));
    EXPECT_TRUE(dialogs.failures.isEmpty());
}

TEST_F(NewLibraryRun, WithoutASubjectNothingHappens)
{
    EXPECT_FALSE(create({}));
    EXPECT_EQ(dialogs.shown, QStringList{u"请选择科目！"_s});
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(scores.LibPath, u""_s);
}

TEST_F(NewLibraryRun, WithoutAPathItStopsInSilence)
{
    path.clear();
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(NewLibraryRun, WithoutAPathTheOpenLibraryStaysOpenUnderNoPath)
{
    const QString open = path;
    ASSERT_TRUE(create({u"语文"_s}));
    dialogs.shown.clear();
    path.clear();
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_EQ(scores.LibPath, u""_s);
    EXPECT_TRUE(scores.Conn.isOpen());
    EXPECT_EQ(scores.Conn.path(), open);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(NewLibraryRun, RefusingToOverwriteLeavesTheOldFileButTakesThePath)
{
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    dialogs.expect(u"文件已存在"_s, Answer::Cancel);
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_EQ(dialogs.shown, (QStringList{u"文件已存在: 文件已存在,是否覆盖原文件？"_s,
                                          u"用户取消，新建成绩库失败。"_s}));
    EXPECT_EQ(dialogs.look(u"是否覆盖原文件"_s),
              (BoxLook{u"文件已存在"_s, Buttons::OkCancel, Icon::Question}));
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
    EXPECT_EQ(scores.LibPath, path);
}

TEST_F(NewLibraryRun, TheSameNameTwiceCostsAMessageForEachStatementAndTheRunGoesOn)
{
    EXPECT_TRUE(create({u"语文"_s, u"语文"_s, u"数学"_s}));
    EXPECT_EQ(dialogs.failures.size(), 7);
    EXPECT_TRUE(dialogs.failures.first().startsWith(u"列“语文”已经存在。"_s));
    EXPECT_TRUE(dialogs.failures.first().endsWith(tag));
    EXPECT_EQ(scores.catalogue.AllColumns, (QStringList{u"语文"_s, u"数学"_s}));
    EXPECT_EQ(dialogs.shown.last(), u"新建数据库成功，现在将设置学生信息。"_s);
}

TEST_F(NewLibraryRun, ANameThatIsNoColumnNameIsLeftOut)
{
    EXPECT_TRUE(create({u"体 育"_s, u"数学"_s}));
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"数学"_s});
    EXPECT_EQ(dialogs.failures.size(), 7);
}

TEST_F(NewLibraryRun, TheOpenLibraryCannotBeOverwritten)
{
    ASSERT_TRUE(create({u"语文"_s}));
    scores.Conn.Execute(u"insert into 考试名称表(考试名称,科类,考试编号) values('期中','理',1)"_s);
    dialogs.shown.clear();
    dialogs.expect(u"文件已存在"_s, Answer::Ok);
    create({u"数学"_s});
    ASSERT_FALSE(dialogs.failures.isEmpty());
    EXPECT_TRUE(dialogs.failures.first().contains(u"正在使用，不能覆盖"_s));
    EXPECT_EQ(dialogs.failures.size(), 1) << "no column is added to the old file";
    // The steps go on against the old file, and the list of exams is emptied all the same.
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"语文"_s});
    EXPECT_EQ(scores.catalogue.ExamList, QStringList());
    scores.catalogue.GetKSXX();
    EXPECT_EQ(scores.catalogue.ExamList, QStringList{u"期中"_s});
}

TEST_F(NewLibraryRun, ALibraryThatAnotherProgramWritesCannotBeOverwritten)
{
    ASSERT_TRUE(create({u"语文"_s}));
    scores.Conn.Close();
    {
        support::OtherProgram other(path);
        other.run("begin; insert into 考试名称表(考试名称,科类,考试编号) values('期中','理',1)");
        const QByteArray before = content();
        dialogs.expect(u"文件已存在"_s, Answer::Ok);
        create({u"数学"_s});
        EXPECT_EQ(dialogs.failures, QStringList{u"文件 %1 正在使用，不能覆盖。"_s.arg(path) + tag});
        // The steps go on against the old file.
        EXPECT_TRUE(scores.Conn.isOpen());
        EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"语文"_s});
        EXPECT_EQ(content(), before);
        scores.Conn.Close();
        other.run("commit");
    }
    scores.LibPath = path;
    scores.OpenDB();
    EXPECT_EQ(scores.catalogue.ExamList, QStringList{u"期中"_s});
}

TEST_F(NewLibraryRun, AFolderOfThatNameIsNotAskedAboutAndNothingIsMade)
{
    path = folder.filePath(u"夹"_s);
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_EQ(dialogs.questions, QStringList());
    EXPECT_EQ(dialogs.shown, (QStringList{u"无法写入文件 "_s + path + u"（它是文件夹）。"_s + tag,
                                          path + u"\n库文件不存在！"_s}));
}

TEST_F(NewLibraryRun, AReadOnlyFileIsNotReplaced)
{
    ASSERT_TRUE(create({u"语文"_s}));
    scores.Conn.Close();
    dialogs.shown.clear();
    dialogs.expect(u"文件已存在"_s, Answer::Ok);
    ASSERT_EQ(chmod(folder.path().toUtf8().constData(), 0777), 0);
    ASSERT_EQ(chmod(path.toUtf8().constData(), 0444), 0);
    const support::OrdinaryUser user;
    EXPECT_TRUE(create({u"数学"_s, u"英语"_s}));
    EXPECT_EQ(dialogs.shown.mid(1), (QStringList{u"无法写入文件 %1（没有权限）。"_s.arg(path) + tag,
                                                 u"新建数据库成功，现在将设置学生信息。"_s}));
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"语文"_s});
}

TEST_F(NewLibraryRun, OnADiskThatGetsFullTheOldFileStaysAsItWas)
{
    ASSERT_TRUE(create({u"语文"_s}));
    scores.Conn.Close();
    const QByteArray before = content();
    const qint64 room = QFileInfo(paths.templateFile()).size();
    // There is no room for the template, for a part of it, or for the columns.
    for (const qint64 size : {qint64(0), room - 10'000, room}) {
        dialogs.shown.clear();
        dialogs.expect(u"文件已存在"_s, Answer::Ok);
        {
            const support::FullDisk disk(static_cast<rlim_t>(size));
            EXPECT_TRUE(create(manySubjects())) << "the old file is opened";
        }
        ASSERT_EQ(dialogs.shown.size(), 3) << dialogs.shown.join(u'\n').toStdString();
        EXPECT_TRUE(dialogs.shown[1].endsWith(tag)) << dialogs.shown[1].toStdString();
        EXPECT_EQ(dialogs.shown[2], u"新建数据库成功，现在将设置学生信息。"_s);
        scores.Conn.Close();
        EXPECT_EQ(content(), before) << size;
        EXPECT_EQ(files(), QStringList{u"新.CJK"_s}) << size;
    }
}

TEST_F(NewLibraryRun, OnADiskThatIsFullNothingIsMade)
{
    {
        const support::FullDisk disk(30'000);
        EXPECT_FALSE(create({u"语文"_s}));
    }
    EXPECT_EQ(dialogs.shown,
              (QStringList{u"无法写入文件 %1（磁盘已满，或文件的大小受到限制）。"_s.arg(path) + tag,
                           path + u"\n库文件不存在！"_s}));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(NewLibraryRun, APathThatTheEngineHasNoRoomForIsTold)
{
    QString deep = folder.path();
    while (deep.toUtf8().size() < 500)
        deep += u"/一层又一层的文件夹"_s;
    ASSERT_TRUE(QDir().mkpath(deep));
    path = deep + u"/新.CJK"_s;
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_EQ(dialogs.shown.first(),
              u"%1 的路径太长（超过 500 字节），请把它移到路径较短的文件夹里。"_s.arg(path) + tag);
    EXPECT_TRUE(QDir(deep).isEmpty());
}

TEST_F(NewLibraryRun, AJournalOfTheOldFileThatCannotBeRemovedStopsIt)
{
    writeOld("old");
    ASSERT_TRUE(QDir().mkpath(path + u"-journal/voll"_s));
    dialogs.expect(u"文件已存在"_s, Answer::Ok);
    EXPECT_FALSE(create({u"语文"_s}));
    EXPECT_EQ(dialogs.failures.first(), u"无法删除原文件留下的 %1-journal。"_s.arg(path) + tag);
    EXPECT_EQ(content(), "old");
}

TEST_F(NewLibraryRun, ThroughALinkTheFileThatItLeadsToIsReplaced)
{
    writeOld("old");
    QString link = folder.filePath(u"链接.CJK"_s);
    ASSERT_TRUE(QFile::link(path, link));
    QFile journal(path + u"-journal"_s);
    ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
    std::swap(path, link);
    dialogs.expect(u"文件已存在"_s, Answer::Ok);
    EXPECT_TRUE(create({u"语文"_s}));
    EXPECT_EQ(dialogs.failures, QStringList());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(files(), (QStringList{u"新.CJK"_s, u"链接.CJK"_s}));
    EXPECT_EQ(scores.Conn.path(), link);
}

TEST_F(NewLibraryRun, AKeywordOfTheEngineIsNoSubject)
{
    EXPECT_TRUE(create({u"order"_s, u"Select"_s, u"数学"_s}));
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"数学"_s});
    EXPECT_EQ(columns(u"成绩表"_s).filter(QRegularExpression(u"^(order|Select)$"_s)),
              QStringList());
    const QString sentence = u"“%1”是数据库的保留字，不能作列名。"_s + tag;
    for (const QString& word : {u"order"_s, u"Select"_s})
        EXPECT_EQ(dialogs.failures.count(sentence.arg(word)), 3) << word.toStdString();
    EXPECT_EQ(dialogs.failures.size(), 6);
}

TEST_F(NewLibraryRun, ALibraryWhoseFileIsGoneDoesNotBlockANewOne)
{
    ASSERT_TRUE(create({u"语文"_s}));
    ASSERT_TRUE(QFile::remove(path));
    dialogs.shown.clear();
    EXPECT_TRUE(create({u"数学"_s}));
    EXPECT_TRUE(dialogs.failures.isEmpty());
    EXPECT_EQ(scores.catalogue.AllColumns, QStringList{u"数学"_s});
}

TEST_F(NewLibraryRun, AMissingTemplateIsToldAndNothingIsMade)
{
    ASSERT_TRUE(QFile::remove(paths.templateFile()));
    EXPECT_FALSE(create({u"语文"_s}));
    ASSERT_EQ(dialogs.shown.size(), 2);
    EXPECT_TRUE(dialogs.shown[0].startsWith(u"找不到空白成绩库"_s));
    EXPECT_TRUE(dialogs.shown[0].endsWith(tag));
    EXPECT_EQ(dialogs.shown[1], path + u"\n库文件不存在！"_s);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(NewLibraryRun, TheListsComeFromTheTextFiles)
{
    runtime::writeTextFile(paths.dataFile(u"科目.txt"_s), u"语文\n\n总分\n"_s);
    runtime::writeTextFile(paths.dataFile(u"总分公式.txt"_s), u"总分=语文\n总分=语文+数学\n"_s);
    library::NewLibrary screen(scores);
    screen.init();
    EXPECT_EQ(screen.lists.subjects, (QStringList{u"语文"_s, u"总分"_s}));
    EXPECT_EQ(screen.lists.totals, (QStringList{u"总分"_s, u"总分"_s}));
    EXPECT_EQ(screen.lists.formulas, (QStringList{u"语文"_s, u"语文+数学"_s}));
    EXPECT_EQ(screen.formulaLine(u"总分"_s), u"总分=语文+数学"_s);
    EXPECT_EQ(screen.formulaLine(u"语文"_s), u""_s);
}

TEST_F(NewLibraryRun, AFormulaLineWithoutAnEqualsSignIsToldAndHasNoFormula)
{
    runtime::writeTextFile(paths.dataFile(u"总分公式.txt"_s), u"总分\n理科总分=语文\n"_s);
    library::NewLibrary screen(scores);
    screen.init();
    EXPECT_EQ(screen.formulaLine(u"总分"_s), u"总分="_s);
    EXPECT_EQ(screen.formulaLine(u"理科总分"_s), u"理科总分=语文"_s);
    ASSERT_EQ(dialogs.failures.size(), 1);
    EXPECT_TRUE(dialogs.failures.first().endsWith(u" - Sub init/FormNew"_s));
}

TEST_F(NewLibraryRun, WithoutTheFormulaFileThereIsNoFormula)
{
    ASSERT_TRUE(QFile::remove(paths.dataFile(u"总分公式.txt"_s)));
    library::NewLibrary screen(scores);
    screen.init();
    EXPECT_EQ(screen.lists.totals, QStringList());
    EXPECT_EQ(screen.formulaLine(u"总分"_s), u""_s);
}

TEST_F(NewLibraryRun, FilesThatAreGoneLeaveTheListsAsTheyWere)
{
    library::NewLibrary screen(scores);
    screen.init();
    const library::NewLibraryLists before = screen.lists;
    ASSERT_FALSE(before.formulas.isEmpty());
    for (const QString& name : {u"科目.txt"_s, u"总分公式.txt"_s})
        ASSERT_TRUE(QFile::remove(paths.dataFile(name)));
    screen.init();
    EXPECT_EQ(screen.lists.subjects, before.subjects);
    EXPECT_EQ(screen.lists.totals, before.totals);
    EXPECT_EQ(screen.lists.formulas, before.formulas);
}

TEST_F(NewLibraryRun, ANewLibraryThatCannotBeMadeLeavesNoneOpenAndTheFormerAsItWas)
{
    ASSERT_TRUE(create({u"语文"_s}));
    const QByteArray before = content();
    ASSERT_TRUE(QFile::remove(paths.templateFile()));
    path = folder.filePath(u"另一个.CJK"_s);
    EXPECT_FALSE(create({u"数学"_s}));
    EXPECT_FALSE(scores.Conn.isOpen());
    EXPECT_EQ(scores.LibPath, u""_s);
    path = folder.filePath(u"新.CJK"_s);
    EXPECT_EQ(content(), before);
}

TEST_F(NewLibraryRun, WhoeverListensIsToldOnceTheColumnsAreThere)
{
    QList<QStringList> told;
    QObject::connect(&scores, &library::ScoreLibrary::changed,
                     [&] { told.append(scores.catalogue.AllColumns); });
    ASSERT_TRUE(create({u"语文"_s, u"总分"_s}));
    EXPECT_EQ(told, QList<QStringList>({{u"语文"_s, u"总分"_s}}));
}

} // namespace
