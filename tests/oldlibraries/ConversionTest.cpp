#include "oldlibraries/Conversion.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "oldlibraries/Converting.h"
#include "oldlibraries/OldFileError.h"
#include "platform/database/WriteBatch.h"
#include "support/ErrorOf.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"
#include "support/PrintQString.h"
#include "support/WatchedProgress.h"

using namespace Qt::StringLiterals;
using oldlibraries::OldFileError;
using oldlibraries::OldFileFailure;
using oldlibraries::OldType;
using support::errorOf;
using support::OldFileWriter;
using support::read;
using support::WatchedProgress;
using support::write;
using Existing = oldlibraries::ConversionRequest::Existing;

namespace {

class Conversion : public tests::Converting
{
protected:
    /// The old file with which the test began is there as it was, and nothing else but `others`.
    void expectNothingMade(const QByteArray& old, const QStringList& others = {})
    {
        EXPECT_EQ(read(request.oldPath), old);
        QStringList expected = others + QStringList{u"old.CJK"_s};
        expected.sort();
        EXPECT_EQ(files(), expected);
    }

    OldFileFailure failure()
    {
        try {
            convert();
        } catch (const OldFileError& error) {
            sentence = error.description();
            return error.failure();
        }
        ADD_FAILURE() << "converted";
        return {};
    }

    /// A small old library.
    QByteArray writeOld(const OldFileWriter::Header& header = {})
    {
        OldFileWriter old(request.oldPath, header);
        old.addTable(u"表一"_s, {{u"甲"_s, OldType::Long}});
        for (int row = 0; row < 120; ++row)
            old.addRow({row});
        old.addTable(u"表二"_s, {{u"乙"_s, OldType::Text}});
        old.addRow({u"甲乙丙丁"_s});
        tests::addStudents(old);
        old.save();
        return read(request.oldPath);
    }

    QString sentence;
};

/// What was reported, as "text (done/total)".
QStringList linesOf(const WatchedProgress& progress)
{
    QStringList lines;
    for (qsizetype i = 0; i < progress.texts.size(); ++i) {
        const auto [done, total] = progress.counts[size_t(i)];
        lines.append(
            u"%1 (%2/%3)"_s.arg(progress.texts[i], QString::number(done), QString::number(total)));
    }
    return lines;
}

/// Changes one text of the old file, as long as the other.
void changeText(const QString& path, const QString& text, const QString& other)
{
    const auto bytes = [](const QString& of) {
        return QByteArray(reinterpret_cast<const char*>(of.utf16()), 2 * of.size());
    };
    QByteArray content = read(path);
    ASSERT_EQ(content.count(bytes(text)), 1);
    content.replace(bytes(text), bytes(other));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.write(content) == content.size());
}

} // namespace

TEST_F(Conversion, OffersANameBesideTheOldFile)
{
    EXPECT_EQ(oldlibraries::suggestedPath(u"/学校/成绩.CJK"_s), u"/学校/成绩（转换）.CJK"_s);
    EXPECT_EQ(oldlibraries::suggestedPath(u"/学校/2009.9.cjk"_s), u"/学校/2009.9（转换）.CJK"_s);
}

TEST_F(Conversion, TellsTableAndRowsOfBothPasses)
{
    writeOld();
    WatchedProgress progress;
    ASSERT_TRUE(oldlibraries::convert(request, progress));
    EXPECT_EQ(
        linesOf(progress),
        (QStringList{u"正在复制 表一：50/120 (50/242)"_s, u"正在复制 表一：100/120 (100/242)"_s,
                     u"正在复制 表一：120/120 (120/242)"_s, u"正在复制 表二：1/1 (121/242)"_s,
                     u"正在核对 表一：50/120 (171/242)"_s, u"正在核对 表一：100/120 (221/242)"_s,
                     u"正在核对 表一：120/120 (241/242)"_s, u"正在核对 表二：1/1 (242/242)"_s,
                     u"正在补全和检查新成绩库 (242/242)"_s}));
    EXPECT_EQ(progress.finished, 1);
}

TEST_F(Conversion, TellsTheNameOfATableAsItIs)
{
    OldFileWriter old(request.oldPath);
    tests::addStudents(old);
    old.addTable(u"50%1"_s, {{u"甲"_s, OldType::Text}});
    old.addRow({u"乙"_s});
    old.save();
    WatchedProgress progress;
    ASSERT_TRUE(oldlibraries::convert(request, progress));
    EXPECT_EQ(linesOf(progress).first(), u"正在复制 50%1：1/1 (1/2)"_s);
}

TEST_F(Conversion, CancelledAtAnyMomentLeavesNothing)
{
    const QByteArray old = writeOld();
    for (qsizetype moment = 1; moment <= 9; ++moment) {
        WatchedProgress progress;
        progress.onReport = [&](int) { progress.isStopped = progress.texts.size() >= moment; };
        EXPECT_FALSE(oldlibraries::convert(request, progress)) << moment;
        EXPECT_EQ(progress.finished, 1);
        expectNothingMade(old);
    }
}

TEST_F(Conversion, KeepsAFileOfThatName)
{
    const QByteArray old = writeOld();
    write(request.newPath, "mine");
    EXPECT_EQ(errorOf([&] { convert(); }), u"文件 %1 已存在，没有转换。"_s.arg(request.newPath));
    EXPECT_EQ(read(request.newPath), "mine");
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, KeepsAFileThatTakesTheNameMeanwhile)
{
    const QByteArray old = writeOld();
    WatchedProgress progress;
    progress.onReport = [&](int) { write(request.newPath, "mine"); };
    EXPECT_EQ(errorOf([&] { oldlibraries::convert(request, progress); }),
              u"文件 %1 已存在，没有转换。"_s.arg(request.newPath));
    EXPECT_EQ(read(request.newPath), "mine");
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, ReplacesAFileIfThatIsAsked)
{
    const QByteArray old = writeOld();
    write(request.newPath, "mine");
    request.existing = Existing::Replace;
    EXPECT_TRUE(convert());
    EXPECT_TRUE(read(request.newPath).startsWith("SQLite format 3"));
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, DoesNotReplaceALibraryInUse)
{
    const QByteArray old = writeOld();
    QFile::copy(request.templateFile, request.newPath);
    const QByteArray present = read(request.newPath);
    request.existing = Existing::Replace;
    {
        database::Connection user;
        user.Open(request.newPath);
        const database::WriteBatch batch(user);
        EXPECT_EQ(errorOf([&] { convert(); }),
                  u"文件 %1 正在使用，不能覆盖。"_s.arg(request.newPath));
    }
    EXPECT_EQ(read(request.newPath), present);
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, DoesNotReplaceTheLibraryThatIsOpen)
{
    const QByteArray old = writeOld();
    QFile::copy(request.templateFile, request.newPath);
    request.openPath = request.newPath;
    for (const auto existing : {Existing::Keep, Existing::Replace}) {
        request.existing = existing;
        EXPECT_EQ(errorOf([&] { convert(); }),
                  u"文件 %1 正在使用，不能覆盖。"_s.arg(request.newPath));
    }
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, NeverReplacesTheEmptyLibrary)
{
    const QByteArray old = writeOld();
    ASSERT_TRUE(QFile::copy(request.templateFile, file(u"empty.dll"_s)));
    request.templateFile = file(u"empty.dll"_s);
    request.newPath = request.templateFile;
    request.existing = Existing::Replace;
    const QByteArray empty = read(request.templateFile);
    EXPECT_EQ(errorOf([&] { convert(); }),
              u"%1 是程序的空白成绩库，不能覆盖。"_s.arg(request.newPath));
    EXPECT_EQ(read(request.templateFile), empty);
    expectNothingMade(old, {u"empty.dll"_s});
}

TEST_F(Conversion, NeverReplacesTheOldFile)
{
    const QByteArray old = writeOld();
    request.existing = Existing::Replace;
    const QString asked = request.newPath;
    ASSERT_EQ(link(QFile::encodeName(request.oldPath).constData(),
                   QFile::encodeName(file(u"hard.CJK"_s)).constData()),
              0);
    ASSERT_TRUE(QFile::link(request.oldPath, file(u"soft.CJK"_s)));
    for (const QString& name : {u"old.CJK"_s, u"hard.CJK"_s, u"soft.CJK"_s}) {
        request.newPath = file(name);
        EXPECT_EQ(errorOf([&] { convert(); }),
                  u"%1 就是旧成绩库，不能覆盖。"_s.arg(request.newPath));
    }
    expectNothingMade(old, {u"hard.CJK"_s, u"soft.CJK"_s});
}

TEST_F(Conversion, NeverRemovesTheOldFileAsWhatACrashLeft)
{
    writeOld();
    ASSERT_TRUE(QFile::rename(request.oldPath, request.newPath + u"-journal"_s));
    request.oldPath = request.newPath + u"-journal"_s;
    EXPECT_EQ(errorOf([&] { convert(); }), u"%1 就是旧成绩库，不能覆盖。"_s.arg(request.oldPath));
    EXPECT_EQ(files(), QStringList{u"new.CJK-journal"_s});
}

TEST_F(Conversion, IsNotSpoiltByWhatACrashLeftUnderTheNewName)
{
    writeOld();
    write(request.newPath + u"-journal"_s, "a broken-off write of another library");
    EXPECT_TRUE(convert());
    EXPECT_EQ(files(), (QStringList{u"new.CJK"_s, u"old.CJK"_s}));
}

TEST_F(Conversion, WantsThePasswordOfTheOldFile)
{
    const QByteArray old = writeOld({.password = u"密码1"_s});
    EXPECT_EQ(failure(), OldFileFailure::Password);
    EXPECT_EQ(sentence, u"%1 有密码。"_s.arg(request.oldPath));
    request.password = u"密码2"_s;
    EXPECT_EQ(failure(), OldFileFailure::Password);
    EXPECT_EQ(sentence, u"%1 的密码不对。"_s.arg(request.oldPath));
    expectNothingMade(old);
    request.password = u"密码1"_s;
    EXPECT_TRUE(convert());
    expectNothingMade(old, {u"new.CJK"_s});
}

TEST_F(Conversion, TakesAnyPasswordWhereThereIsNone)
{
    writeOld();
    request.password = u"1234"_s;
    EXPECT_TRUE(convert());
}

TEST_F(Conversion, IsRefusedWhenTheOldFileIsWrittenMeanwhile)
{
    writeOld();
    WatchedProgress progress;
    progress.onReport = [&](int) {
        if (progress.texts.last().startsWith(u"正在核对 表一：50"_s))
            changeText(request.oldPath, u"甲乙丙丁"_s, u"甲乙丙戊"_s);
    };
    EXPECT_EQ(errorOf([&] { oldlibraries::convert(request, progress); }),
              u"%1 在读取时被别的程序改动了。请关闭用它的程序，再试一次。"_s.arg(request.oldPath));
    EXPECT_EQ(files(), QStringList{u"old.CJK"_s});
}

TEST_F(Conversion, IsRefusedWhenTheOldFileGrowsWhileItIsCompared)
{
    writeOld();
    WatchedProgress progress;
    progress.onReport = [&](int) {
        QFile old(request.oldPath);
        if (progress.texts.last().startsWith(u"正在核对 表二"_s)) {
            EXPECT_TRUE(old.open(QIODevice::Append) && old.write("more") == 4);
        }
    };
    EXPECT_EQ(errorOf([&] { oldlibraries::convert(request, progress); }),
              u"%1 在读取时被别的程序改动了。请关闭用它的程序，再试一次。"_s.arg(request.oldPath));
    EXPECT_EQ(files(), QStringList{u"old.CJK"_s});
}

TEST_F(Conversion, IsRefusedWhenTheSecondReadingDiffers)
{
    writeOld();
    WatchedProgress progress;
    progress.onReport = [&](int) {
        if (!progress.texts.last().startsWith(u"正在复制 表二"_s))
            return;
        QFile old(request.oldPath);
        ASSERT_TRUE(old.open(QIODevice::ReadWrite));
        const QDateTime time = old.fileTime(QFileDevice::FileModificationTime);
        changeText(request.oldPath, u"甲乙丙丁"_s, u"甲乙丙戊"_s);
        ASSERT_TRUE(old.setFileTime(time, QFileDevice::FileModificationTime));
    };
    EXPECT_EQ(
        errorOf([&] { oldlibraries::convert(request, progress); }),
        u"%1 的表“表二”前后两次读出的内容不同，没有转换。磁盘可能有问题。"_s.arg(request.oldPath));
    EXPECT_EQ(files(), QStringList{u"old.CJK"_s});
}

TEST_F(Conversion, OfAnotherProgramsDataIsRefused)
{
    const auto write = [this](const QString& table) {
        OldFileWriter old(request.oldPath);
        old.addTable(u"客户"_s, {{u"姓名"_s, OldType::Text}});
        old.addTable(table, {{u"考试名称"_s, OldType::Text}});
        old.save();
        return read(request.oldPath);
    };
    const QByteArray old = write(u"订单"_s);
    EXPECT_EQ(failure(), OldFileFailure::Foreign);
    EXPECT_EQ(sentence,
              u"%1 里没有信息表、成绩表和考试名称表，不是成绩库。"_s.arg(request.oldPath));
    expectNothingMade(old);
    for (const QString& table : {u"信息表"_s, u"成绩表"_s, u"考试名称表"_s}) {
        write(table);
        EXPECT_TRUE(convert()) << table.toStdString();
        QFile::remove(request.newPath);
    }
}

TEST_F(Conversion, OnAFullDiskLeavesNothing)
{
    useSample(u"photos.CJK"_s);
    const QByteArray old = read(request.oldPath);
    for (const rlim_t size : {4'000, 200'000, 400'000, 800'000}) {
        SCOPED_TRACE(size);
        const support::FullDisk disk(size);
        EXPECT_THAT(
            errorOf([&] { convert(); }).toStdString(),
            testing::AnyOf(testing::HasSubstr("磁盘可能已满"), testing::HasSubstr("无法写入文件")));
        expectNothingMade(old);
    }
}

TEST_F(Conversion, InAFolderThatCannotBeWrittenIsRefused)
{
    writeOld();
    const QString locked = file(u"locked"_s);
    ASSERT_TRUE(QDir().mkdir(locked));
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(locked).constData(), 0555), 0);
    request.newPath = locked + u"/new.CJK"_s;
    const support::OrdinaryUser user;
    EXPECT_EQ(errorOf([&] { convert(); }), u"无法写入文件 %1（没有权限）。"_s.arg(request.newPath));
}

TEST_F(Conversion, WithoutTheEmptyLibraryIsRefused)
{
    const QByteArray old = writeOld();
    request.templateFile = file(u"none.dll"_s);
    EXPECT_THAT(
        errorOf([&] { convert(); }).toStdString(),
        testing::StartsWith(u"找不到空白成绩库 %1"_s.arg(request.templateFile).toStdString()));
    expectNothingMade(old);
}
