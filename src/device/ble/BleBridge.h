// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleTypes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <QTimer>

#include <chrono>
#include <functional>

class QProcess;

namespace tallyforge {

class BleHelperSocket;

/// The plug-in's one way to Bluetooth: starts the helper program when it is first needed and has it
/// do operations. The helper comes to a port on loopback and proves itself by a token that was made
/// for this one start; nothing else is taken from a connection before. A callback is called exactly
/// once, maybe before the call returns, but never after shutdown(); it may call again. Main thread.
class BleBridge final : public QObject
{
    Q_OBJECT

public:
    struct Timing
    {
        std::chrono::milliseconds launch{20000};    ///< until a helper must have proved itself
        std::chrono::milliseconds hello{5000};      ///< the same for one connection
        std::chrono::milliseconds start{30000};     ///< the user may be asked for a permission
        std::chrono::milliseconds scanExtra{15000}; ///< beyond the scan itself
    };
    using ReadyCallback = std::function<void(bool ok, const QString &message)>;
    using ReplyCallback = std::function<void(const BleReply &)>;
    /// seen counts the Bluetooth devices of any kind that were there.
    using ScanCallback = std::function<void(bool ok, const QList<BleDeviceInfo> &devices, int seen,
                                            const QString &code, const QString &message)>;

    /// The bridge of this process. It is never destroyed.
    static BleBridge *instance();

    explicit BleBridge(QObject *parent = nullptr);
    BleBridge(const Timing &timing, QObject *parent);

    /// Where the helper lies, empty when it isn't installed. Ends a shutdown().
    void setHelperPath(const QString &path);

    /// Has the helper running.
    void ensureHelper(const ReadyCallback &callback);
    /// Whether the helper is running, so that a request starts none.
    [[nodiscard]] bool isReady() const { return m_helper != nullptr; }

    /// Has the helper do an operation, and starts it if need be. The callback may be empty.
    void request(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
                 std::chrono::milliseconds timeout);
    /// What becomes of requests when the helper goes.
    [[nodiscard]] static BleReply stopped();
    /// Has the helper bring Bluetooth up, unless it has done so.
    void start(const ReplyCallback &callback);
    /// Looks for devices for so long.
    void scan(std::chrono::milliseconds duration, const ScanCallback &callback);

    /// Ends the helper. Calls nobody back any more, and requests do nothing; what is left only
    /// waits for its own end.
    void shutdown();

Q_SIGNALS:
    /// One write of the connected device.
    void dataReceived(const QByteArray &bytes);
    /// The connected device has gone by itself; the reason may be empty.
    void disconnected(const QString &reason);
    /// The helper has gone by itself, and with it the connection to a device.
    void helperStopped(const QString &reason);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Pending
    {
        ReplyCallback callback;
        int timer;
    };

    void launchHelper();
    void retireProcess();
    void onLaunchFailed();
    void settleWaiters(bool ok, const QString &message);

    void onNewConnection();
    void onObject(BleHelperSocket *from, const QJsonObject &object);
    void greet(BleHelperSocket *stranger, const QJsonObject &hello);
    void onSocketEnded(BleHelperSocket *socket);
    void handleReply(const QJsonObject &line);
    void handleEvent(const QJsonObject &line);

    void send(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
              std::chrono::milliseconds timeout);
    void finish(int id, const BleReply &reply);
    void failAll(const BleReply &reply);

    const Timing m_timing;
    QString m_helperPath;
    QTcpServer m_server;
    QList<BleHelperSocket *> m_strangers; // children; connections that have proved nothing yet
    BleHelperSocket *m_helper = nullptr;  // child; the one that has
    QProcess *m_process = nullptr;        // child; the latest start's
    QByteArray m_token;                   // of the latest start, empty once it was used
    QTimer m_launchTimer;
    QList<ReadyCallback> m_waiters;
    QMap<int, Pending> m_pending; // oldest first
    int m_nextId = 1;
    bool m_started = false;
    bool m_shutDown = false;
};

} // namespace tallyforge
