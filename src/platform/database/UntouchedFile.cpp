#include "platform/database/UntouchedFile.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>

#include "platform/database/Error.h"
#include "platform/database/LockedBytes.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

const QStringList logEndings{u"-journal"_s, u"-wal"_s};

/// By its header another program writes it with a log, which an opening of ours ends.
bool isMadeForLogs(const QString& path)
{
    constexpr int writeVersion = 18;
    constexpr int readVersion = 19;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(readVersion + 1);
    return header.size() > readVersion && (header[writeVersion] == 2 || header[readVersion] == 2);
}

bool isChangedByOpening(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return false;
    const auto stands = [&](const QString& ending) { return QFileInfo(path + ending).isFile(); };
    return std::any_of(logEndings.begin(), logEndings.end(), stands) || isMadeForLogs(path);
}

} // namespace

UntouchedFile::UntouchedFile(const QString& path) : m_original(path), m_path(path)
{
    const QString file = realPath(path);
    if (!isChangedByOpening(file))
        return;
    try {
        copy(file);
    } catch (const Error&) {
        throw;
    } catch (const runtime::Error& error) {
        throw Error(Failure::Other,
                    u"读 %1 要先在临时文件夹里复制一份，没有成功：%2"_s.arg(
                        path, QString(error.description()).replace(m_path, u"这份副本"_s)));
    }
}

void UntouchedFile::copy(const QString& file)
{
    m_folder = std::make_unique<QTemporaryDir>();
    if (!m_folder->isValid())
        throw Error(Failure::Other, u"无法建立临时文件夹（%1）。"_s.arg(m_folder->errorString()));
    m_path = realPath(m_folder->path()) + u"/copy"_s;
    const LockedBytes bytes(file, LockedBytes::BrokenWrite::LeftAlone);
    runtime::UnfinishedFile unfinished(m_path);
    bytes.copyTo(unfinished, [](qint64) { return true; });
    unfinished.replace(m_path, {});
    for (const QString& ending : logEndings) {
        if (!QFileInfo(file + ending).isFile())
            continue;
        runtime::UnfinishedFile log(m_path);
        log.writeAllOf(file + ending);
        log.replace(m_path + ending, {});
    }
}

void UntouchedFile::open(Connection& connection, const FileShape& shape) const
{
    try {
        connection.Open(m_path, shape);
    } catch (const Error& error) {
        throw Error(error.failure(), QString(error.description()).replace(m_path, m_original));
    }
}

} // namespace database
