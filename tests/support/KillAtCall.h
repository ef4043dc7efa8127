// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <csignal>
#include <functional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallyforge::test {

enum class End { Killed, Succeeded, Failed };

/// Runs an action in a child process, which is killed after so many system calls unless it is done
/// before. No destructor runs and nothing is flushed, as in a crash.
inline End killAtCall(int calls, const std::function<bool()> &action)
{
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        raise(SIGSTOP);
        _exit(action() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    constexpr int systemCall = SIGTRAP | 0x80;
    for (int stops = 0; stops <= 2 * calls;) { // it stops when a call begins and when it ends
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status)) {
            return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? End::Succeeded : End::Failed;
        }
        stops += WSTOPSIG(status) == systemCall ? 1 : 0;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return End::Killed;
}

} // namespace tallyforge::test
