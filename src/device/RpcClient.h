// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>

namespace tallyforge {

class RpcTransport;

/// The outcome of a call to a device.
struct RpcResult
{
    bool ok = false;      ///< the device answered that it did as asked
    QJsonObject result;   ///< the device's answer, empty on failure
    QString errorCode;    ///< a machine word, empty on success
    QString errorMessage; ///< a sentence for the user, empty on success
};

/// Calls a device's methods over a transport, one at a time: the next call goes out when the one
/// before has been answered, has failed or has run out of time. A device that is busy is asked
/// again a few times. Each callback is called exactly once, unless the client is destroyed before;
/// it may be empty, call again, abort, or destroy the client. Main thread; nothing is logged.
class RpcClient final : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(const RpcResult &)>;

    static constexpr int defaultTimeoutMs = 20000;

    /// The transport isn't owned and must outlive the client.
    RpcClient(RpcTransport *transport, QObject *parent);

    /// Queues a call. On a closed transport it fails before this returns.
    void call(const QString &method, const QJsonObject &params, const Callback &callback,
              int timeoutMs = defaultTimeoutMs);

    /// Fails the call in flight and all that wait, oldest first.
    void abortAll(const QString &code, const QString &message);

    /// Calls that have not been answered yet.
    [[nodiscard]] int pending() const;

private:
    struct Job
    {
        QString method;
        QJsonObject params;
        Callback callback;
        int timeoutMs = defaultTimeoutMs;
        int busyRetries = 0;
    };

    void onMessage(const QByteArray &json);
    void onSendFailed(const QString &code, const QString &message);
    void onTimeout();

    void pump();
    void sendCurrent();
    void retryCurrent();
    void finish(const RpcResult &result);
    [[nodiscard]] RpcResult readReply(const QJsonObject &reply) const;

    RpcTransport *const m_transport;
    std::deque<Job> m_queue;   // in the order of sending; a retry re-enters at the front
    std::deque<Job> m_aborted; // to be told so
    bool m_inFlight = false;
    Job m_current;
    int m_currentId = 0;
    int m_nextId = 1;
    QTimer m_timer;
};

} // namespace tallyforge
