#include <sys/stat.h>

#include <random>

#include <QTemporaryDir>

#include "oldlibraries/OldRefusals.h"
#include "support/OldFilePages.h"
#include "support/OldHeader.h"
#include "support/OldSamples.h"
#include "support/OrdinaryUser.h"

using namespace Qt::StringLiterals;
using oldlibraries::FileHeader;
using oldlibraries::OldDatabase;
using oldlibraries::OldFileFailure;
using oldlibraries::OldTable;
using oldlibraries::PageFile;
using support::withPassword;
using tests::OldRefusal;

namespace {

constexpr qsizetype pageSize = PageFile::pageSize;

QByteArray noise(qsizetype size, unsigned seed)
{
    std::mt19937 random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = char(random());
    return bytes;
}

template <typename Change> QByteArray withHeader(const QByteArray& file, const Change& change)
{
    QByteArray plain = support::withHeaderKey(file);
    change(plain);
    return support::withHeaderKey(plain);
}

QByteArray withPageKey(const QByteArray& file, quint32 key)
{
    return withHeader(file, [&](QByteArray& header) { support::put(header, 0x3E, key); });
}

class RefusedOldFile : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(u"旧.CJK"_s); }

    OldRefusal refusalOf(const QByteArray& bytes) const
    {
        support::write(path(), bytes);
        return tests::oldRefusal(path());
    }

    OldRefusal refusal(OldFileFailure failure, const QString& sentence) const
    {
        return {failure, sentence.arg(path())};
    }
    OldRefusal foreign() const
    {
        return refusal(OldFileFailure::Foreign, u"%1 不是旧格式的成绩库。"_s);
    }
    OldRefusal otherVersion() const
    {
        return refusal(OldFileFailure::OtherVersion, u"%1 是另一种版本的数据库，不能转换。"_s);
    }
    OldRefusal cutOff() const
    {
        return refusal(OldFileFailure::CutOff, u"%1 不完整（后面一部分丢失了），不能转换。"_s);
    }
    OldRefusal withoutTables() const
    {
        return refusal(OldFileFailure::Damaged, u"%1 已损坏，不能转换：表的目录读不出。"_s);
    }
    OldRefusal encryptedOrDamaged() const
    {
        return refusal(OldFileFailure::Encrypted, u"%1 的内容加密了，或者已损坏，不能转换。"_s);
    }
    OldRefusal changed() const
    {
        return refusal(OldFileFailure::Changed,
                       u"%1 在读取时被别的程序改动了。请关闭用它的程序，再试一次。"_s);
    }

    QByteArray whole = support::oldSample(u"small-two-streams"_s);

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(RefusedOldFile, IsMissing)
{
    EXPECT_EQ(tests::oldRefusal(path()), refusal(OldFileFailure::Missing, u"找不到文件 %1。"_s));
    EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
}

TEST_F(RefusedOldFile, IsAFolder)
{
    ASSERT_TRUE(QDir().mkdir(path()));
    EXPECT_EQ(tests::oldRefusal(path()),
              refusal(OldFileFailure::Foreign, u"%1 是文件夹，不是成绩库。"_s));
    EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
}

TEST_F(RefusedOldFile, IsAPipeOnWhichNobodyWaits)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_EQ(tests::oldRefusal(path()),
              refusal(OldFileFailure::Foreign, u"%1 不是普通文件，不是成绩库。"_s));
    EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
}

TEST_F(RefusedOldFile, MayNotBeRead)
{
    support::write(path(), whole);
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0), 0);
    ASSERT_EQ(chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0755), 0);
    const support::OrdinaryUser user;
    EXPECT_EQ(tests::oldRefusal(path()),
              refusal(OldFileFailure::Unreadable,
                      u"无法读取文件 %1（不能打开：没有权限，或文件、文件夹不存在）。"_s));
    EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
}

TEST_F(RefusedOldFile, IsEmpty)
{
    EXPECT_EQ(refusalOf(""), refusal(OldFileFailure::Foreign, u"%1 是空文件，不是成绩库。"_s));
    EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
}

TEST_F(RefusedOldFile, IsSomethingElse)
{
    for (const QByteArray& bytes :
         {QByteArray(1, '\0'), QByteArray("\0\1\0\0Standard Jet D", 18),
          QByteArray("姓名,班级\r\n"),
          QByteArray("SQLite format 3").leftJustified(2 * pageSize, '\0'),
          QByteArray("\0\1\0\0Standard ACE DB\0", 20).leftJustified(3 * pageSize, '\0'),
          noise(10'000, 1)}) {
        EXPECT_EQ(refusalOf(bytes), foreign());
        EXPECT_FALSE(oldlibraries::isOldLibrary(path()));
    }
}

TEST_F(RefusedOldFile, IsKnownByItsFirstBytesAlone)
{
    support::write(path(), whole.left(20));
    EXPECT_TRUE(oldlibraries::isOldLibrary(path()));
    EXPECT_EQ(refusalOf(whole.left(20)), cutOff());
}

TEST_F(RefusedOldFile, IsLargerThanTheOldEngineMakesThem)
{
    support::write(path(), whole);
    ASSERT_TRUE(QFile::resize(path(), (qint64(2) << 30) + 1));
    EXPECT_EQ(tests::oldRefusal(path()),
              refusal(OldFileFailure::Foreign, u"%1 超过 2 GB，不是旧格式的成绩库。"_s));
    ASSERT_TRUE(QFile::resize(path(), qint64(2) << 30));
    EXPECT_NO_THROW(tests::readAllCells(path()));
}

TEST_F(RefusedOldFile, IsOfAnotherVersion)
{
    for (const char version : {'\0', '\2', '\3', '\xFF'}) {
        whole[0x14] = version;
        EXPECT_EQ(refusalOf(whole), otherVersion());
    }
}

TEST_F(RefusedOldFile, IsEncrypted)
{
    constexpr quint32 key = 0x12345678;
    QByteArray encrypted = withPageKey(whole, key);
    for (quint32 page = 1; page < encrypted.size() / pageSize; ++page) {
        const QByteArray bytes = encrypted.mid(page * pageSize, pageSize);
        encrypted.replace(page * pageSize, pageSize, oldlibraries::withKey(bytes, key ^ page));
    }
    const OldRefusal told = refusal(OldFileFailure::Encrypted,
                                    u"%1 的内容加密了，不能转换。请先用原来的程序取消加密。"_s);
    EXPECT_EQ(refusalOf(encrypted), told);
    EXPECT_EQ(refusalOf(encrypted.left(encrypted.size() / 2 + 1)), told);
    EXPECT_EQ(refusalOf(withPassword(encrypted, u"1234"_s)), told);
}

TEST_F(RefusedOldFile, HasAKeyThatOpensNothing)
{
    whole = withPageKey(whole, 1);
    whole.replace(2 * pageSize, pageSize, noise(pageSize, 1));
    EXPECT_EQ(refusalOf(whole), encryptedOrDamaged());
}

TEST_F(RefusedOldFile, IsReadInSpiteOfAKeyWithoutUse)
{
    support::write(path(), withPageKey(whole, 1));
    EXPECT_NO_THROW(tests::readAllCells(path()));
}

TEST_F(RefusedOldFile, IsNoiseBehindARightSignature)
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        for (const qsizetype size : {10 * pageSize, 10 * pageSize - 960, 3 * pageSize}) {
            const QByteArray bytes = noise(size, seed).replace(0, 0x18, whole.left(0x18));
            EXPECT_EQ(refusalOf(bytes), encryptedOrDamaged());
            EXPECT_EQ(refusalOf(withPageKey(bytes, 0)), withoutTables());
        }
    }
}

TEST_F(RefusedOldFile, IsCutOffWithinAPage)
{
    for (const qsizetype size : {pageSize - 1, pageSize, pageSize + 1, 3 * pageSize - 1,
                                 3 * pageSize + 1, 50 * pageSize + 2048, whole.size() - 1})
        EXPECT_EQ(refusalOf(whole.left(size)), cutOff()) << size;
    EXPECT_EQ(refusalOf(whole + '\0'), cutOff());
}

// A file may lose pages that hold no rows, such as those of an index, and still give all it had.
TEST_F(RefusedOldFile, IsCutOffBetweenPagesOrGivesEveryCell)
{
    support::write(path(), whole);
    const auto allCells = [&] {
        OldDatabase database(path());
        std::vector<tests::OldCells> cells;
        for (const OldTable& table : database.readTables())
            cells.push_back(tests::oldCells(database.file(), table));
        return cells;
    };
    const std::vector<tests::OldCells> cells = allCells();
    for (qsizetype size = whole.size() - pageSize; size > 0; size -= pageSize) {
        support::write(path(), whole.left(size));
        try {
            EXPECT_EQ(allCells(), cells) << size;
        } catch (const oldlibraries::OldFileError& error) {
            EXPECT_EQ((OldRefusal{error.failure(), error.description()}), cutOff()) << size;
        }
    }
}

TEST_F(RefusedOldFile, HasLostItsLastTwoFifths)
{
    EXPECT_EQ(refusalOf(whole.left(369'874)), cutOff());
    EXPECT_EQ(refusalOf(whole.left(369'874 / pageSize * pageSize)), cutOff());
}

TEST_F(RefusedOldFile, HasAPasswordThatHasToBeTypedRight)
{
    support::write(path(), withPassword(whole, u"1234"_s));
    const OldDatabase database(path());
    EXPECT_TRUE(database.hasPassword());
    EXPECT_TRUE(database.isPassword(u"1234"_s));
    for (const QString& wrong : {u""_s, u"123"_s, u"12345"_s, u"1234 "_s, u"１２３４"_s})
        EXPECT_FALSE(database.isPassword(wrong));
    EXPECT_NO_THROW(tests::readAllCells(path()));
}

TEST_F(RefusedOldFile, MayHaveAnyPasswordOfUpToTwentyCharacters)
{
    for (const QString& password : {u"密码Ab"_s, u"12345678901234567890"_s, u"𬭎"_s}) {
        support::write(path(), withPassword(whole, password));
        const OldDatabase database(path());
        EXPECT_TRUE(database.isPassword(password));
        EXPECT_FALSE(database.isPassword(password.toLower() + u'x'));
        EXPECT_FALSE(database.isPassword(password.left(1)));
    }
}

TEST_F(RefusedOldFile, WithoutAPasswordTakesAnything)
{
    support::write(path(), whole);
    const OldDatabase database(path());
    EXPECT_FALSE(database.hasPassword());
    EXPECT_TRUE(database.isPassword(u""_s));
    EXPECT_TRUE(database.isPassword(u"1234"_s));
}

TEST_F(RefusedOldFile, ThatNoDayWasMadeHasItsPasswordPlain)
{
    const double noDays[] = {qQNaN(), qInf(), -qInf(), 1e300, -1e300};
    for (const double noDay : noDays) {
        whole = withHeader(whole, [&](QByteArray& header) {
            support::put(header, 0x72, std::bit_cast<quint64>(noDay));
            header.replace(0x42, 40, QByteArray(40, '\0'));
            support::put(header, 0x42, quint16(u'甲'));
        });
        support::write(path(), whole);
        EXPECT_TRUE(OldDatabase(path()).isPassword(u"甲"_s));
        EXPECT_FALSE(OldDatabase(path()).isPassword(u""_s));
    }
}

TEST_F(RefusedOldFile, GrowsWhileItIsRead)
{
    support::write(path(), whole);
    OldDatabase database(path());
    EXPECT_NO_THROW(database.file().checkUnchanged());
    support::write(path(), whole + QByteArray(pageSize, '\0'));
    try {
        database.file().checkUnchanged();
        ADD_FAILURE();
    } catch (const oldlibraries::OldFileError& error) {
        EXPECT_EQ((OldRefusal{error.failure(), error.description()}), changed());
    }
}

TEST_F(RefusedOldFile, ShrinksWhileItIsRead)
{
    support::write(path(), whole);
    OldDatabase database(path());
    const OldTable table = tests::oldTable(database, u"成绩表"_s);
    ASSERT_TRUE(QFile::resize(path(), 10 * pageSize));
    try {
        tests::oldCells(database.file(), table);
        ADD_FAILURE();
    } catch (const oldlibraries::OldFileError& error) {
        EXPECT_EQ((OldRefusal{error.failure(), error.description()}), changed());
    }
}

TEST_F(RefusedOldFile, BecomesAnotherWhileItIsRead)
{
    support::write(path(), whole);
    OldDatabase database(path());
    const std::vector<OldTable> tables = database.readTables();
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(noise(whole.size(), 1));
    file.flush();
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(10),
                                 QFileDevice::FileModificationTime));
    try {
        tests::oldCells(database.file(), tables.front());
        ADD_FAILURE();
    } catch (const oldlibraries::OldFileError& error) {
        EXPECT_EQ((OldRefusal{error.failure(), error.description()}), changed());
    }
}
