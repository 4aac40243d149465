#include "shell/FileLook.h"

#include <mutex>
#include <system_error>
#include <thread>

#include <QFile>

#include <sys/stat.h>

namespace shell {

/// Who hears of what was seen; nobody once the asker is gone.
struct FileLook::Receiver
{
    std::mutex mutex;
    FileLook* asker = nullptr;
};

FileState FileLook::ofSystem(const QString& path)
{
    struct stat found = {};
    if (::stat(QFile::encodeName(path).constData(), &found) != 0 || !S_ISREG(found.st_mode))
        return {};
    return {true, QDateTime::fromSecsSinceEpoch(found.st_mtime)};
}

FileLook::FileLook(QObject* parent, Look look)
    : QObject(parent), m_look(std::move(look)), m_receiver(std::make_shared<Receiver>())
{
    m_receiver->asker = this;
}

FileLook::~FileLook()
{
    const std::scoped_lock lock(m_receiver->mutex);
    m_receiver->asker = nullptr;
}

void FileLook::start(const QStringList& paths)
{
    for (const QString& path : paths) {
        if (m_running.contains(path))
            continue;
        m_running.insert(path);
        look(path);
    }
}

void FileLook::look(const QString& path)
{
    const auto work = [ask = m_look, receiver = m_receiver, path] {
        const FileState state = ask(path);
        const std::scoped_lock lock(receiver->mutex);
        if (FileLook* asker = receiver->asker)
            QMetaObject::invokeMethod(
                asker, [asker, path, state] { asker->take(path, state); }, Qt::QueuedConnection);
    };
    try {
        std::thread(work).detach();
    } catch (const std::system_error&) {
        m_running.remove(path);
    }
}

void FileLook::take(const QString& path, const FileState& state)
{
    m_running.remove(path);
    Q_EMIT seen(path, state);
}

} // namespace shell
