#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>

/// While it lives, no file of the process grows beyond a length; what stands behind it is lost.
class FileLimit
{
public:
    explicit FileLimit(qsizetype bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit tight = m_before;
        tight.rlim_cur = static_cast<rlim_t>(bytes);
        if (setrlimit(RLIMIT_FSIZE, &tight) != 0)
            qFatal("no limit for the length of files");
    }
    ~FileLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileLimit)

private:
    void (*m_handler)(int);
    rlimit m_before{};
};
#endif
