#include "platform/runtime/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>

#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsOfADay = 86'400;
constexpr qint64 readPiece = 1 << 20;

/// A folder can be shared by several machines, whose numbers of processes mean nothing here.
QString machineMark()
{
    const QByteArray hash =
        QCryptographicHash::hash(QSysInfo::machineUniqueId(), QCryptographicHash::Md5);
    return QString::fromLatin1(hash.toHex().left(8));
}

QString folderOf(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

QString newName(const QString& folder)
{
    return u"%1/.yunshan-%2-%3-%4.tmp"_s.arg(folder, machineMark())
        .arg(getpid())
        .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'));
}

[[noreturn]] void refuse(const QString& path, int number)
{
    throw Error(u"无法写入文件 %1（%2）。"_s.arg(path, systemErrorText(number)));
}

/// The entry of a file that was renamed is safe only once its folder is.
void syncFolder(const QString& path)
{
    const int folder =
        open(QFile::encodeName(folderOf(path)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isOpen = folder >= 0;
    // Some network folders cannot be synced, which is no failure.
    const bool isSafe = isOpen && (fsync(folder) == 0 || errno == EINVAL || errno == ENOTSUP);
    const int number = errno;
    if (isOpen)
        close(folder);
    if (!isSafe)
        throw Error(u"文件 %1 可能没有存到磁盘上（%2）。"_s.arg(path, systemErrorText(number)));
}

/// 0, or the number of the error.
int renameWithoutReplacing(const QByteArray& from, const QByteArray& to)
{
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
        return errno;
    // Some file systems cannot promise it; nobody else uses the name within this moment.
    if (QFile::exists(QFile::decodeName(to)))
        return EEXIST;
    return std::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

bool isLeftOver(const QFileInfo& file, const QString& machine, qint64 maker)
{
    if (machine == machineMark())
        return kill(pid_t(maker), 0) != 0 && errno == ESRCH;
    return file.lastModified().secsTo(QDateTime::currentDateTime()) > secondsOfADay;
}

} // namespace

UnfinishedFile::UnfinishedFile(const QString& neighbour) : m_neighbour(neighbour)
{
    do {
        m_path = newName(folderOf(neighbour));
        m_file = open(QFile::encodeName(m_path).constData(),
                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (m_file < 0 && errno == EEXIST);
    if (m_file < 0)
        refuse(neighbour, errno);
}

UnfinishedFile::~UnfinishedFile()
{
    close(m_file);
    if (m_isInPlace)
        return;
    // With what an engine has left beside it.
    for (const char* ending : {"", "-journal", "-wal", "-shm"}) {
        const QByteArray name = QFile::encodeName(m_path) + ending;
        unlink(name.constData());
    }
}

void UnfinishedFile::write(const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(m_file, bytes.constData() + done, size_t(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        // Nothing taken is a full disk that says so by the next call at the latest.
        if (count <= 0)
            refuse(m_neighbour, count < 0 ? errno : ENOSPC);
        done += count;
    }
}

void UnfinishedFile::writeAllOf(const QString& file)
{
    QFile source(file);
    bool isRead = source.open(QIODevice::ReadOnly);
    while (isRead && !source.atEnd()) {
        write(source.read(readPiece));
        isRead = source.error() == QFileDevice::NoError;
    }
    if (!isRead)
        throw Error(u"无法读取文件 %1（%2）。"_s.arg(file, fileErrorText(source.error())));
}

void UnfinishedFile::finish(const QString& model)
{
    struct stat rights = {};
    if (stat(QFile::encodeName(model).constData(), &rights) == 0) {
        // Only root can give files away; for others the file stays theirs.
        (void)!fchown(m_file, rights.st_uid, rights.st_gid);
        fchmod(m_file, rights.st_mode & 07777);
    }
    if (fsync(m_file) != 0)
        refuse(m_neighbour, errno);
}

void UnfinishedFile::replace(const QString& target, const QString& model)
{
    checkReplaceable(target);
    finish(model);
    if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(target).constData())
        != 0)
        refuse(target, errno);
    m_isInPlace = true;
    syncFolder(target);
}

bool UnfinishedFile::takeName(const QString& name, const QString& model)
{
    finish(model);
    const int number = renameWithoutReplacing(QFile::encodeName(m_path), QFile::encodeName(name));
    if (number == EEXIST)
        return false;
    if (number != 0)
        refuse(name, number);
    m_isInPlace = true;
    syncFolder(name);
    return true;
}

void checkReplaceable(const QString& target)
{
    const QByteArray name = QFile::encodeName(target);
    if (QFileInfo(target).isDir())
        refuse(target, EISDIR);
    if (faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        refuse(target, errno);
}

QStringList leftOvers(const QString& neighbour)
{
    // What an engine wrote beside an unfinished file goes with it.
    static const QRegularExpression ours(QRegularExpression::anchoredPattern(
        u"\\.yunshan-([0-9a-f]{8})-(\\d{1,9})-[0-9a-f]{8}\\.tmp(-journal|-wal|-shm)?"_s));
    QStringList found;
    const auto files =
        QDir(folderOf(neighbour)).entryInfoList({u".yunshan-*.tmp*"_s}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& file : files) {
        const QRegularExpressionMatch match = ours.match(file.fileName());
        if (match.hasMatch() && isLeftOver(file, match.captured(1), match.captured(2).toLongLong()))
            found.append(file.filePath());
    }
    return found;
}

void removeLeftOvers(const QString& neighbour)
{
    for (const QString& file : leftOvers(neighbour))
        QFile::remove(file);
}

} // namespace runtime
