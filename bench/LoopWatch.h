// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonArray>
#include <QObject>
#include <QSocketNotifier>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tallyforge::bench {

/// Knocks at the event loop a thousand times a second, as a user would, and notes how long each
/// knock waits until the main thread comes to it, and the processor time of the main thread
/// meanwhile.
class LoopWatch
{
public:
    LoopWatch()
    {
        if (pipe2(m_pipe, O_CLOEXEC) != 0) {
            qFatal("There is no pipe.");
        }
        QObject::connect(&m_notifier.emplace(m_pipe[0], QSocketNotifier::Read),
                         &QSocketNotifier::activated, &m_context, [this] {
                             // All that have come, or later ones would wait for earlier ones.
                             qint64 knocked[512] = {};
                             const ssize_t size = read(m_pipe[0], knocked, sizeof knocked);
                             for (ssize_t i = 0; i * ssize_t(sizeof(qint64)) < size; ++i) {
                                 m_waited.append(double(waitedSince(knocked[i])) / 1e6);
                             }
                             noteUsed();
                         });
        m_knocking = std::thread([this] {
            for (; !m_ending; std::this_thread::sleep_for(std::chrono::milliseconds(1))) {
                const qint64 knocks = now();
                if (write(m_pipe[1], &knocks, sizeof knocks) != sizeof knocks) {
                    qFatal("The pipe is full.");
                }
            }
        });
    }
    ~LoopWatch()
    {
        m_ending = true;
        m_knocking.join();
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
    Q_DISABLE_COPY_MOVE(LoopWatch)

    /// Milliseconds.
    [[nodiscard]] QJsonArray waited() const { return m_waited; }
    /// Milliseconds of processor time between two moments at which the loop came to the knocks.
    [[nodiscard]] QJsonArray used() const { return m_used; }

    /// Work of the measurement's own, which neither figure holds: one at a time.
    void beginOwnWork()
    {
        m_ownBegin = now();
        m_ownUsed -= processorTime();
    }
    void endOwnWork()
    {
        m_ownEnd = now();
        m_ownUsed += processorTime();
    }

private:
    static qint64 now()
    {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }
    static qint64 processorTime()
    {
        timespec used{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return used.tv_sec * 1'000'000'000LL + used.tv_nsec;
    }
    qint64 waitedSince(qint64 knock) const
    {
        return now() - knock - std::max(0LL, m_ownEnd - std::max(m_ownBegin, knock));
    }
    void noteUsed()
    {
        const qint64 used = processorTime();
        m_used.append(double(used - m_usedBefore - m_ownUsed) / 1e6);
        m_usedBefore = used;
        m_ownUsed = 0;
    }

    int m_pipe[2] = {};
    std::optional<QSocketNotifier> m_notifier;
    QObject m_context;
    QJsonArray m_waited;
    QJsonArray m_used;
    qint64 m_usedBefore = processorTime(); // these four in nanoseconds
    qint64 m_ownUsed = 0;
    qint64 m_ownBegin = 0; // of the latest work of its own
    qint64 m_ownEnd = 0;
    std::atomic<bool> m_ending = false;
    std::thread m_knocking;
};

} // namespace tallyforge::bench
