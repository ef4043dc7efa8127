// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QtClassHelperMacros>

#include <sys/resource.h>
#include <unistd.h>

namespace tallyforge::test {

/// Lets this process open only so many more files while it lives.
class OpenFilesLeft
{
public:
    explicit OpenFilesLeft(rlim_t count)
    {
        const int next = dup(0);
        close(next);
        getrlimit(RLIMIT_NOFILE, &m_normal);
        const rlimit few{rlim_t(next) + count, m_normal.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
    }
    ~OpenFilesLeft() { setrlimit(RLIMIT_NOFILE, &m_normal); }
    Q_DISABLE_COPY_MOVE(OpenFilesLeft)

private:
    rlimit m_normal{};
};

} // namespace tallyforge::test
