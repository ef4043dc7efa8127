// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/ble/BleTypes.h"

#include <QMap>
#include <QObject>

#include <chrono>
#include <functional>

namespace tallyforge {

/// The operations that wait for the helper's replies, each with a time limit of its own. A callback
/// is called exactly once, unless drop() comes first; it may make new requests. Main thread.
class BleRequests final : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(const BleReply &)>;

    explicit BleRequests(QObject *parent)
        : QObject(parent)
    {
    }

    /// Returns the new request's number, which is never used again. The callback may be empty.
    [[nodiscard]] int add(const Callback &callback, std::chrono::milliseconds limit);
    /// Calls back. Does nothing when no request of this number waits, because its reply came too
    /// late or twice.
    void finish(int id, const BleReply &reply);
    /// Calls back for all requests, oldest first.
    void finishAll(const BleReply &reply);
    /// Forgets all requests.
    void drop();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Pending
    {
        Callback callback;
        int timer;
    };

    [[nodiscard]] QMap<int, Pending> takeAll();

    QMap<int, Pending> m_pending; // by number
    int m_nextId = 1;
    Generation m_generation; // ends with drop()
};

} // namespace tallyforge
