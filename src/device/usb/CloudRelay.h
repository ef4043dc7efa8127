// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QTcpSocket;

namespace tallyforge {

/// The state of a CloudRelay, for display.
struct CloudRelayStatus
{
    bool enabled = true;     ///< the user shares this computer's connection
    bool configured = false; ///< the device has named a target that can be dialled
    bool connected = false;
    QString host;
    int port = 0;
    qint64 bytesToCloud = 0;
    qint64 bytesFromCloud = 0;
    QString lastError; ///< of the last connection, empty once another one stands
};

/// The one TCP connection that stands in for a USB device's own way to the cloud. It is dialled
/// when the device first sends something, and again with the next bytes after it has ended. A dial
/// that failed isn't repeated until configure(), reset() or setEnabled(false). The device is told
/// nothing of all this.
///
/// A slot of either signal may call any operation, and delete nothing. Main thread.
class CloudRelay final : public QObject
{
    Q_OBJECT

public:
    explicit CloudRelay(QObject *parent = nullptr);

    /// Ends the connection and sets the next one's target.
    void configure(const QString &host, int port);
    void clearTarget();
    /// Relays only while enabled, which it is at the start. Disabling ends the connection.
    void setEnabled(bool enabled);
    /// Ends the connection and forgets the bytes that waited for it; the target stays.
    void reset();
    /// Bytes for the cloud. While there is no target, or the relay is disabled, they are dropped.
    void fromDevice(const QByteArray &bytes);

    [[nodiscard]] CloudRelayStatus status() const;

    /// Makes the socket; when empty it is a plain one.
    std::function<QTcpSocket *(QObject *parent)> socketFactory;

Q_SIGNALS:
    void toDevice(const QByteArray &bytes);
    void statusChanged();

private:
    void ensureConnected();
    void dropSocket();
    void onConnected();
    void onReadyRead();
    void onError();
    void onDisconnected();

    QPointer<QTcpSocket> m_socket; // child of the relay; stays after a dial that failed
    bool m_enabled = true;
    bool m_configured = false;
    bool m_connected = false;
    QString m_host;
    int m_port = 0;
    qint64 m_bytesToCloud = 0;
    qint64 m_bytesFromCloud = 0;
    QString m_lastError;
    QByteArray m_pending; // from the device, while there is no connection
};

} // namespace tallyforge
