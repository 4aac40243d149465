#include "oldlibraries/AskedConversion.h"

#include <sys/stat.h>

#include <QDir>
#include <QtEndian>

#include "oldlibraries/FileHeader.h"
#include "oldlibraries/OldCells.h"
#include "support/OldSamples.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProgram.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "support/WatchedProgress.h"

namespace oldlibraries {
namespace {

using namespace Qt::StringLiterals;
using Existing = ConversionRequest::Existing;

const QString question = u"这是旧格式的成绩库"_s;
const QString passwordQuestion = u"这个文件设有密码，输入密码才能转换："_s;
const QString secondQuestion = u"密码不对。这个文件设有密码，请再输入一次："_s;

/// An old library beside the one that is open.
class AskedConversion : public testing::Test
{
protected:
    AskedConversion()
    {
        bytes = support::oldSample(u"one-stream"_s);
        support::write(old, bytes);
    }
    ~AskedConversion() override
    {
        EXPECT_EQ(support::read(old), bytes) << "the old library was written";
        EXPECT_EQ(test.scores.Conn.path(), open) << "the library that was open is not";
    }

    void setBytes(const QByteArray& content)
    {
        bytes = content;
        support::write(old, bytes);
    }
    std::optional<ConversionRequest> ask()
    {
        return askForConversion(old, test.scores.Conn, test.paths);
    }
    std::optional<ConversionRequest> askAndAgree()
    {
        test.dialogs.expect(question, u"转换"_s);
        return ask();
    }
    /// The files beside the old library, hidden ones too.
    QStringList files() const
    {
        return QDir(test.folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    support::TestLibrary test{{u"语文"_s}};
    const QString open = test.scores.Conn.path();
    const QString old = test.file(u"2008级.CJK"_s);
    const QString suggested = test.file(u"2008级（转换）.CJK"_s);
    QByteArray bytes;
};

TEST_F(AskedConversion, TheQuestionSaysWhatBecomesOfBothFiles)
{
    const QStringList before = files();
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_FALSE(ask());
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"这是旧格式的成绩库，要转换成新的成绩库才能打开。\n\n"
                          "旧的“2008级.CJK”保持原样。\n"
                          "新的放在它旁边，名称是“2008级（转换）.CJK”。"_s});
    EXPECT_EQ(test.dialogs.safeOf(question), u"取消"_s);
    EXPECT_EQ(files(), before);
}

TEST_F(AskedConversion, WithoutPasswordAndWithAFreeNameNothingElseIsAsked)
{
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->oldPath, old);
    EXPECT_EQ(request->newPath, suggested);
    EXPECT_EQ(request->templateFile, test.paths.templateFile());
    EXPECT_EQ(request->password, QString());
    EXPECT_EQ(request->existing, Existing::Keep);
    EXPECT_EQ(test.dialogs.shown.size(), 1);
}

TEST_F(AskedConversion, NamesOfFilesAreShownAsTheyStand)
{
    const QString hostile = test.file(u"%1 '--%2\n<b>.CJK"_s);
    support::write(hostile, bytes);
    test.dialogs.expect(question, u"取消"_s);
    EXPECT_FALSE(askForConversion(hostile, test.scores.Conn, test.paths));
    EXPECT_TRUE(test.dialogs.shown[0].contains(u"旧的“%1 '--%2\n<b>.CJK”保持原样"_s));
    EXPECT_TRUE(test.dialogs.shown[0].contains(u"名称是“%1 '--%2\n<b>（转换）.CJK”"_s));
}

TEST_F(AskedConversion, APasswordIsAskedForUntilItIsRight)
{
    setBytes(support::oldSampleWithPassword(u"one-stream"_s, u"1234"_s));
    test.dialogs.expectPassword(passwordQuestion, u"4321"_s);
    test.dialogs.expectPassword(secondQuestion, u""_s);
    test.dialogs.expectPassword(secondQuestion, u"1234"_s);
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->password, u"1234"_s);
    EXPECT_EQ(test.dialogs.questions.mid(1),
              (QStringList{passwordQuestion, secondQuestion, secondQuestion}));
}

TEST_F(AskedConversion, APasswordCountsToTheLetter)
{
    setBytes(support::oldSampleWithPassword(u"one-stream"_s, u"密Ab"_s));
    test.dialogs.expectPassword(passwordQuestion, u"密ab"_s);
    test.dialogs.expectPassword(secondQuestion, u"密Ab "_s);
    test.dialogs.expectPassword(secondQuestion, u"密Ab"_s);
    EXPECT_TRUE(askAndAgree());
}

TEST_F(AskedConversion, WithoutThePasswordNothingHappens)
{
    setBytes(support::oldSampleWithPassword(u"one-stream"_s, u"1234"_s));
    test.dialogs.expectPassword(passwordQuestion, std::nullopt);
    EXPECT_FALSE(askAndAgree());
    test.dialogs.expectPassword(passwordQuestion, u"4321"_s);
    test.dialogs.expectPassword(secondQuestion, std::nullopt);
    EXPECT_FALSE(askAndAgree());
    EXPECT_FALSE(QFile::exists(suggested));
}

TEST_F(AskedConversion, WhereTheSuggestedNameIsTakenAnotherOneIsAskedFor)
{
    support::write(suggested, "taken");
    const QString other = test.file(u"另一个.CJK"_s);
    test.dialogs.file = other;
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, other);
    EXPECT_EQ(request->existing, Existing::Keep);
    EXPECT_EQ(test.dialogs.fileTitle, u"保存文件"_s);
    EXPECT_EQ(test.dialogs.fileFilter, u"成绩库|*.CJK"_s);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"这是旧格式的成绩库，要转换成新的成绩库才能打开。\n\n"
                          "旧的“2008级.CJK”保持原样。\n"
                          "“2008级（转换）.CJK”已经有了，接下来请另取一个名称。"_s});
}

TEST_F(AskedConversion, ALinkThatLeadsNowhereTakesTheSuggestedName)
{
    ASSERT_TRUE(QFile::link(test.file(u"没有/库.CJK"_s), suggested));
    test.dialogs.file = test.file(u"另一个.CJK"_s);
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, *test.dialogs.file);
}

TEST_F(AskedConversion, WhereTheSuggestedNameIsTooLongAnotherOneIsAskedFor)
{
    const QString longest = test.file(QString(83, u'长') + u".CJK"_s);
    support::write(longest, bytes);
    test.dialogs.file = test.file(u"短.CJK"_s);
    test.dialogs.expect(question, u"转换"_s);
    const std::optional<ConversionRequest> request =
        askForConversion(longest, test.scores.Conn, test.paths);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, *test.dialogs.file);
    EXPECT_TRUE(test.dialogs.shown[0].endsWith(
        u"旧的名称太长，加不上“（转换）”，接下来请另取一个名称。"_s));
}

TEST_F(AskedConversion, AFileIsReplacedOnlyIfTheUserSaysSo)
{
    support::write(suggested, "taken");
    test.dialogs.file = suggested;
    test.dialogs.expect(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Cancel);
    EXPECT_FALSE(askAndAgree());
    test.dialogs.expect(u"同名文件已存在，是否覆盖原文件？"_s, runtime::Answer::Ok);
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, suggested);
    EXPECT_EQ(request->existing, Existing::Replace);
    EXPECT_EQ(support::read(suggested), "taken");
}

TEST_F(AskedConversion, AFileDialogThatIsCancelledEndsIt)
{
    support::write(suggested, "taken");
    EXPECT_FALSE(askAndAgree());
    EXPECT_EQ(test.dialogs.fileTitle, u"保存文件"_s);
}

TEST_F(AskedConversion, TheOldFileIsNeverTheNewOne)
{
    support::write(suggested, "taken");
    const QString link = test.file(u"连接.CJK"_s);
    ASSERT_TRUE(QFile::link(old, link));
    const QString other = test.file(u"另一个.CJK"_s);
    test.dialogs.files = {old, link, other};
    test.dialogs.always(u"是否覆盖原文件"_s, runtime::Answer::Ok);
    const std::optional<ConversionRequest> request = askAndAgree();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, other);
    EXPECT_EQ(request->existing, Existing::Keep) << "nothing stands there";
    const QString refusal = u"%1 就是旧成绩库，不能覆盖。请另取一个名称。"_s;
    EXPECT_TRUE(test.dialogs.shown.contains(refusal.arg(old)));
    EXPECT_TRUE(test.dialogs.shown.contains(refusal.arg(link)));
    EXPECT_EQ(test.dialogs.look(refusal.arg(link)).icon, runtime::Icon::Warning);
}

TEST_F(AskedConversion, TheEmptyLibraryOfTheProgramIsNotReplaced)
{
    support::write(suggested, "taken");
    test.dialogs.files = {test.paths.templateFile(), test.file(u"另一个.CJK"_s)};
    test.dialogs.expect(u"是否覆盖原文件"_s, runtime::Answer::Ok);
    EXPECT_TRUE(askAndAgree());
    EXPECT_EQ(test.dialogs.shown.last(), u"%1 是程序的空白成绩库，不能覆盖。请另取一个名称。"_s.arg(
                                             test.paths.templateFile()));
}

TEST_F(AskedConversion, ALibraryInUseIsNotReplaced)
{
    support::write(suggested, "taken");
    const QString used = test.file(u"别人的.CJK"_s);
    ASSERT_TRUE(QFile::copy(open, used));
    support::OtherProgram program(used);
    program.run("begin exclusive");
    test.dialogs.files = {open, used};
    test.dialogs.always(u"是否覆盖原文件"_s, runtime::Answer::Ok);
    EXPECT_FALSE(askAndAgree());
    const QString refusal = u"文件 %1 正在使用，不能覆盖。请另取一个名称。"_s;
    EXPECT_TRUE(test.dialogs.shown.contains(refusal.arg(open)));
    EXPECT_TRUE(test.dialogs.shown.contains(refusal.arg(used)));
}

TEST_F(AskedConversion, OfAFolderThatCannotBeWrittenTheNewOneGoesElsewhere)
{
    const QString folder = test.file(u"光盘"_s);
    ASSERT_TRUE(QDir().mkdir(folder));
    const QString there = folder + u"/库.CJK"_s;
    support::write(there, bytes);
    ASSERT_EQ(chmod(QFile::encodeName(test.folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder).constData(), 0555), 0);
    const QTemporaryDir elsewhere;
    ASSERT_EQ(chmod(QFile::encodeName(elsewhere.path()).constData(), 0777), 0);
    const support::OrdinaryUser user;
    test.dialogs.file = elsewhere.filePath(u"库（转换）.CJK"_s);
    test.dialogs.expect(question, u"转换"_s);
    const std::optional<ConversionRequest> request =
        askForConversion(there, test.scores.Conn, test.paths);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->newPath, *test.dialogs.file);
    EXPECT_EQ(test.dialogs.shown,
              QStringList{u"这是旧格式的成绩库，要转换成新的成绩库才能打开。\n\n"
                          "旧的“库.CJK”保持原样。\n"
                          "旧成绩库的文件夹不能写入，接下来请另选一个文件夹。"_s});
}

TEST_F(AskedConversion, AFileThatCannotBeConvertedIsTold)
{
    setBytes(bytes.left(bytes.size() - 100));
    EXPECT_FALSE(askAndAgree());
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].contains(old));
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub Convert/OldLibraries"_s));
}

TEST_F(AskedConversion, WhatAKilledOneLeftBesideTheOldLibraryGoes)
{
    const QString leftOver = test.file(u".yunshan-00000000-999999999-12345678.tmp"_s);
    QFile file(leftOver);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                 QFileDevice::FileModificationTime));
    file.close();
    EXPECT_TRUE(askAndAgree());
    EXPECT_FALSE(QFile::exists(leftOver));
}

class RunningConversion : public AskedConversion
{
protected:
    RunningConversion()
    {
        progress.onFinish = [this] { toldBefore = test.dialogs.shown.size(); };
    }
    std::optional<ConversionReport> convertTo(const QString& path)
    {
        ConversionRequest request{
            .oldPath = old, .newPath = path, .templateFile = test.paths.templateFile()};
        return convertAsked(request, test.paths, progress);
    }
    QStringList notes() const
    {
        return QDir(test.paths.dataFile(u"转换"_s)).entryList(QDir::Files | QDir::Hidden);
    }

    support::WatchedProgress progress;
    /// How much was told when the progress ended.
    qsizetype toldBefore = -1;
};

TEST_F(RunningConversion, GivesALibraryAndItsReport)
{
    const std::optional<ConversionReport> report = convertTo(suggested);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->newPath, suggested);
    EXPECT_FALSE(isOldLibrary(suggested));
    EXPECT_TRUE(QFile::exists(suggested));
    EXPECT_FALSE(progress.texts.isEmpty());
    EXPECT_EQ(toldBefore, 0) << "the window of the progress is gone";
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(RunningConversion, AsksBeforeItGoesOnWithoutRowsThatAreMissing)
{
    // 信息表 says that it has 100 students instead of 91.
    OldDatabase database(old);
    const qsizetype page = tests::oldTable(database, u"信息表"_s).definitionPage;
    QByteArray damaged = bytes;
    qToLittleEndian<quint32>(100, damaged.data() + page * PageFile::pageSize + 16);
    setBytes(damaged);
    const QString part = u"的表“信息表”记着 100 行，只读到 91 行，文件可能已损坏，没有转换。"_s;
    const QStringList before = files();
    test.dialogs.expect(part, u"取消"_s);
    EXPECT_FALSE(convertTo(suggested));
    EXPECT_EQ(files(), before);
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(test.dialogs.safeOf(part), u"取消"_s);
    EXPECT_TRUE(test.dialogs.shown.last().endsWith(
        u"请先找找有没有完好的备份。照样转换，读到的行都转入，少了的不再能找回，报告里会写明。"_s));
    test.dialogs.expect(part, u"照样转换"_s);
    const std::optional<ConversionReport> report = convertTo(suggested);
    ASSERT_TRUE(report);
    EXPECT_EQ(report->tables[0].rows, 91);
    EXPECT_EQ(report->findings[0].value, u"100"_s);
}

TEST_F(RunningConversion, LeavesNothingWhenItIsCancelled)
{
    const QStringList before = files();
    progress.isStopped = true;
    EXPECT_FALSE(convertTo(suggested));
    EXPECT_EQ(files(), before);
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(test.dialogs.shown, QStringList());
}

TEST_F(RunningConversion, TellsInOneBoxWhyThereIsNoNewLibrary)
{
    const QStringList before = files();
    EXPECT_FALSE(convertTo(test.file(u"没有/库.CJK"_s)));
    ASSERT_EQ(test.dialogs.shown.size(), 1);
    EXPECT_TRUE(test.dialogs.failures[0].endsWith(u" - Sub Convert/OldLibraries"_s));
    EXPECT_EQ(toldBefore, 0) << "the progress stands beside the box";
    EXPECT_EQ(files(), before);
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(AskedConversion, AtTheEndTablesRowsAndFindingsAreCounted)
{
    ConversionReport report{old, suggested, {{u"信息表"_s, 1181}, {u"成绩表"_s, 20}}, {}};
    test.dialogs.expect(u"转换完成"_s, u"关闭"_s);
    EXPECT_FALSE(isReportWanted(report));
    EXPECT_EQ(test.dialogs.shown.last(),
              u"转换完成：2 个表，共 1,201 行。没有发现需要说明的值。\n\n"
              "现在打开的是新的成绩库：\n%1"_s.arg(suggested));
    EXPECT_EQ(test.dialogs.safeOf(u"转换完成"_s), u"关闭"_s);
    report.findings.resize(1234);
    test.dialogs.expect(u"转换完成"_s, u"查看报告"_s);
    EXPECT_TRUE(isReportWanted(report));
    EXPECT_EQ(test.dialogs.shown.last(),
              u"转换完成：2 个表，共 1,201 行。有 1,234 处需要您看一看，写在报告里。\n\n"
              "现在打开的是新的成绩库：\n%1"_s.arg(suggested));
}

} // namespace
} // namespace oldlibraries
