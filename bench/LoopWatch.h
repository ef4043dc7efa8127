// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonArray>
#include <QObject>
#include <QSocketNotifier>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tallyforge::bench {

/// Knocks at the event loop a thousand times a second, as a user would, and notes how long each
/// knock waits until the main thread comes to it.
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
                                 m_waited.append(double(now() - knocked[i]) / 1e6);
                             }
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

private:
    static qint64 now()
    {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }

    int m_pipe[2] = {};
    std::optional<QSocketNotifier> m_notifier;
    QObject m_context;
    QJsonArray m_waited;
    std::atomic<bool> m_ending = false;
    std::thread m_knocking;
};

} // namespace tallyforge::bench
