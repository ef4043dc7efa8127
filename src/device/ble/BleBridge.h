// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/ble/BleHelperListener.h"
#include "device/ble/BleHelperProcess.h"
#include "device/ble/BleRequests.h"
#include "device/ble/BleTypes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>

namespace tallyforge {

/// The plug-in's one way to Bluetooth: starts the helper program when it is first needed, and has
/// it do operations. A callback is called exactly once, maybe before the call returns, but never
/// after shutdown(); it may call the bridge again. Main thread.
class BleBridge final : public QObject
{
    Q_OBJECT

public:
    using ReadyCallback = std::function<void(bool ok, const QString &message)>;
    using ReplyCallback = BleRequests::Callback;
    /// seen counts the Bluetooth devices of any kind that were there.
    using ScanCallback = std::function<void(bool ok, const QList<BleDeviceInfo> &devices, int seen,
                                            const QString &code, const QString &message)>;

    /// The bridge of this process. It is never destroyed.
    static BleBridge *instance();

    explicit BleBridge(QObject *parent = nullptr);

    /// Where the helper lies, empty when it isn't installed. Ends a shutdown().
    void setHelperPath(const QString &path);

    /// Has the helper running.
    void ensureHelper(const ReadyCallback &callback);
    /// Whether the helper is running, so that a request starts none.
    [[nodiscard]] bool isReady() const { return m_helper != nullptr; }

    /// Has the helper do an operation, and starts the helper if need be. The callback may be empty.
    void request(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
                 std::chrono::milliseconds timeout);
    /// The reply to requests whose helper has gone.
    [[nodiscard]] static BleReply stopped();
    /// Has the helper bring Bluetooth up, unless it has done so.
    void start(const ReplyCallback &callback);
    /// Looks for devices for so long. A scan that still runs then ends with the code "cancelled".
    void scan(std::chrono::milliseconds duration, const ScanCallback &callback);

    /// Ends the helper. No callback is called any more, and requests do nothing.
    void shutdown();

Q_SIGNALS:
    /// One write of the connected device.
    void dataReceived(const QByteArray &bytes);
    /// The connected device has gone by itself; the reason may be empty.
    void disconnected(const QString &reason);
    /// The helper has gone by itself, and with it the connection to a device.
    void helperStopped(const QString &reason);

private:
    void launchHelper();
    void settleWaiters(bool ok, const QString &message);
    void onHelperArrived(BleHelperSocket *helper);
    void onHelperEnded();
    void onObject(const QJsonObject &object);
    void handleEvent(const QJsonObject &event);
    void send(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
              std::chrono::milliseconds timeout);

    QString m_helperPath;
    BleHelperProcess m_process;
    BleHelperListener m_listener;
    BleRequests m_requests;
    BleHelperSocket *m_helper = nullptr; // child; null when no helper has proved itself
    QList<ReadyCallback> m_waiters;      // for the helper that is being started
    bool m_started = false;              // the helper has brought Bluetooth up
    bool m_shutDown = false;
    Generation m_generation; // ends with shutdown()
};

} // namespace tallyforge
