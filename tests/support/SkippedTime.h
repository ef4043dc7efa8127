// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QTest>

#include <chrono>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

namespace tallyforge::test {

/// How far the program's clock is ahead: a test adds the time that it doesn't want to wait for.
inline std::chrono::nanoseconds skippedTime{0};

/// The clock doesn't run of itself, so that a run can be repeated to the nanosecond.
inline bool timeStandsStill = false;

/// Lets time pass, and what is due by then happen.
inline void skip(std::chrono::milliseconds time)
{
    skippedTime += time;
    QTest::qWait(1);
}

/// Lets time pass, so much in a millisecond, until a condition holds. False if that takes minutes.
template <typename Condition>
[[nodiscard]] bool skipUntil(Condition holds, std::chrono::milliseconds step = std::chrono::milliseconds(20))
{
    using namespace std::chrono_literals;
    for (auto passed = 0ms; !holds(); passed += step) {
        if (passed > 4min) {
            return false;
        }
        skip(step);
    }
    return true;
}

} // namespace tallyforge::test

// In place of the system's, for Qt's library as well, whose timers have no other clock. Several files of a program may
// bring it along.
extern "C" [[gnu::visibility("default"), gnu::weak]] int clock_gettime(clockid_t clock, timespec *time)
{
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (clock == CLOCK_MONOTONIC || clock == CLOCK_REALTIME) {
        using namespace std::chrono_literals;
        const auto real = tallyforge::test::timeStandsStill
                              ? 1h
                              : std::chrono::seconds(time->tv_sec) + std::chrono::nanoseconds(time->tv_nsec);
        const auto now = real + tallyforge::test::skippedTime;
        *time = {now / 1s, (now % 1s).count()};
    }
    return result;
}
