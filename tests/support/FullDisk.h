#pragma once

#include <sys/resource.h>

#include <csignal>

namespace support {

/// No file of this process grows beyond a size as long as it lives, as if the disk were full: the
/// last write takes what there is room for, the next one fails.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

} // namespace support
