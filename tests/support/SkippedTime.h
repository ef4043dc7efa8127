// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <chrono>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

namespace tallyforge::test {

/// How far the program's clock is ahead: a test adds the time that it doesn't want to wait for. Only one file of a
/// program may include this.
inline std::chrono::nanoseconds skippedTime{0};

} // namespace tallyforge::test

// In place of the system's, for Qt's library as well. Its timers have no other clock.
extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec *time)
{
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (clock == CLOCK_MONOTONIC) {
        using namespace std::chrono_literals;
        const auto now = std::chrono::seconds(time->tv_sec) + std::chrono::nanoseconds(time->tv_nsec) +
                         tallyforge::test::skippedTime;
        *time = {now / 1s, (now % 1s).count()};
    }
    return result;
}
