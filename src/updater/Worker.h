// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QMetaObject>
#include <QThreadPool>

#include <utility>

namespace tallyforge {

/// A thread for tasks that would hold the main thread too long: it runs tasks one after the other.
/// Destroying it lets the task under way end and drops the others. Main thread only.
class Worker final
{
public:
    /// Results go to the thread of context, which outlives the worker.
    explicit Worker(QObject *context)
        : m_context(context)
    {
        m_pool.setMaxThreadCount(1);
    }
    ~Worker()
    {
        m_pool.clear();
        m_pool.waitForDone();
    }
    Q_DISABLE_COPY_MOVE(Worker)

    /// Calls then with the result of task, once the event loop comes to it and unless context has
    /// gone. A task touches nothing that isn't its own.
    template <typename Task, typename Then> void run(Task task, Then then)
    {
        m_pool.start(
            [context = m_context, task = std::move(task), then = std::move(then)]() mutable {
                QMetaObject::invokeMethod(
                    context, [result = task(), then] { then(result); }, Qt::QueuedConnection);
            });
    }

private:
    QObject *const m_context;
    QThreadPool m_pool;
};

} // namespace tallyforge
