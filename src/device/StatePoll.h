// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"

#include <QJsonObject>
#include <QObject>
#include <QTimer>

namespace tallyforge {

class RpcClient;
struct RpcResult;

/// Asks a device for its live data again and again: one request at a time, and none while other
/// calls wait. Main thread.
class StatePoll final : public QObject
{
    Q_OBJECT

public:
    /// The client isn't owned and must outlive the poll.
    StatePoll(RpcClient *rpc, QObject *parent);

    void start() { m_timer.start(); }
    /// The answer to a request under way counts no more.
    void stop();

Q_SIGNALS:
    void envelope(const QJsonObject &env);
    /// The device wants a sign-in first.
    void unauthorized();
    /// The device has left several requests in a row without an answer.
    void silent();

private:
    void ask();
    void onReply(const RpcResult &result);

    RpcClient *const m_rpc;
    Generation m_generation; // begins with stop()
    QTimer m_timer;
    bool m_inFlight = false;
    int m_timeouts = 0; // in a row
};

} // namespace tallyforge
