#pragma once

#include <functional>
#include <memory>

#include <QDateTime>
#include <QObject>
#include <QSet>

namespace shell {

/// What is known about a file from outside.
struct FileState
{
    bool exists = false;
    QDateTime lastChanged = {};
};

/// Looks at files without waiting for them: a folder of a network that does not answer holds up
/// nobody, neither while it is looked at nor when the program ends.
class FileLook : public QObject
{
    Q_OBJECT

public:
    using Look = std::function<FileState(const QString& path)>;

    /// The state of a file as the system tells it.
    static FileState ofSystem(const QString& path);

    explicit FileLook(QObject* parent = nullptr, Look look = ofSystem);
    ~FileLook() override;

    /// Each of the files that is not being looked at already is seen() later, from the event loop.
    void start(const QStringList& paths);

Q_SIGNALS:
    void seen(const QString& path, const shell::FileState& state);

private:
    struct Receiver;

    void look(const QString& path);
    void take(const QString& path, const FileState& state);

    Look m_look;
    std::shared_ptr<Receiver> m_receiver;
    QSet<QString> m_running;
};

} // namespace shell
