#include "platform/runtime/QuietLibraries.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include <QString>
#include <QtGlobal>

namespace runtime {

namespace {

/// The program ends by a fatal one, which whoever looks for the fault must see.
void print(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

void quietQt()
{
    qInstallMessageHandler(print);
}

QuietStderr::QuietStderr() : m_stderr(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3))
{
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

QuietStderr::~QuietStderr()
{
    std::fflush(stderr);
    if (m_stderr >= 0) {
        dup2(m_stderr, STDERR_FILENO);
        close(m_stderr);
    }
}

} // namespace runtime
