#include "cli/CliProgress.h"

#include <cstdio>

#include <unistd.h>

namespace cli {

CliProgress::CliProgress() : m_watched(::isatty(STDERR_FILENO) != 0) {}

CliProgress::~CliProgress()
{
    if (m_lineOpen)
        std::fputc('\n', stderr);
}

void CliProgress::report(const QString& text, int done, int total)
{
    if (!m_watched)
        return;
    m_lineOpen = true;
    std::fprintf(stderr, "\r\033[K%s", text.toUtf8().constData());
    if (total > 0)
        std::fprintf(stderr, " %d/%d", done, total);
    std::fflush(stderr);
}

/// Leaves the line empty for what comes next.
void CliProgress::finish()
{
    if (!m_watched)
        return;
    m_lineOpen = false;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
}

} // namespace cli
