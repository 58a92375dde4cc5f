#pragma once

#include <QtGlobal>

#include <csignal>

#include <sys/resource.h>

/// No file can grow beyond `bytes` meanwhile, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(qint64 bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit full = m_before;
        full.rlim_cur = rlim_t(bytes);
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_signal)(int);
    rlimit m_before{};
};
