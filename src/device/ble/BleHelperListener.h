// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleHelperSocket.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QTcpServer>

namespace tallyforge {

/// The port on loopback that the helper comes to. Any program of this computer can connect there,
/// so a connection counts as a stranger until it has proved the token. Main thread.
class BleHelperListener final : public QObject
{
    Q_OBJECT

public:
    explicit BleHelperListener(QObject *parent);

    /// Makes a new token, which is good for one connection, and listens unless it does so already.
    /// Returns false when there is no port to listen on.
    [[nodiscard]] bool expectHelper();
    [[nodiscard]] quint16 port() const { return m_server.serverPort(); }
    [[nodiscard]] QByteArray token() const { return m_token; }
    /// Ends all strangers, and listens no more.
    void close();

Q_SIGNALS:
    /// A connection has proved the token. The receiver takes it over; its further objects come when
    /// the slot has returned.
    void arrived(tallyforge::BleHelperSocket *helper);

private:
    void takeConnections();
    void take(QTcpSocket *socket);
    void greet(BleHelperSocket *stranger, const QJsonObject &hello);
    void dismissStrangers();

    QTcpServer m_server;
    QList<BleHelperSocket *> m_strangers; // children, oldest first
    QByteArray m_token;                   // empty when no helper is expected
};

} // namespace tallyforge
