// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleRequests.h"

#include <QCoreApplication>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

int BleRequests::add(const Callback &callback, std::chrono::milliseconds limit)
{
    const int id = m_nextId++;
    m_pending.insert(id, {callback, startTimer(limit)});
    return id;
}

void BleRequests::finish(int id, const BleReply &reply)
{
    if (!m_pending.contains(id)) {
        return;
    }
    const Pending pending = m_pending.take(id);
    killTimer(pending.timer);
    if (pending.callback) {
        pending.callback(reply);
    }
}

void BleRequests::finishAll(const BleReply &reply)
{
    const auto isCurrent = m_generation.watch();
    const QMap<int, Pending> pending = takeAll();
    for (const Pending &entry : pending) {
        if (entry.callback) {
            entry.callback(reply);
            if (!isCurrent()) {
                return;
            }
        }
    }
}

void BleRequests::drop()
{
    m_generation.next();
    static_cast<void>(takeAll());
}

QMap<int, BleRequests::Pending> BleRequests::takeAll()
{
    QMap<int, Pending> all = std::exchange(m_pending, {});
    for (const Pending &entry : std::as_const(all)) {
        killTimer(entry.timer);
    }
    return all;
}

void BleRequests::timerEvent(QTimerEvent *event)
{
    const auto late = std::ranges::find_if(
        m_pending, [event](const Pending &pending) { return pending.timer == event->timerId(); });
    if (late != m_pending.end()) {
        finish(late.key(), {false,
                            {},
                            u"timeout"_s,
                            QCoreApplication::translate("tallyforge::BleBridge",
                                                        "Bluetooth did not respond in time.")});
    }
}

} // namespace tallyforge
