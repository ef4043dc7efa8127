// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

namespace tallyforge {

/// A server on loopback that keeps the bytes that its newest client sends.
class TcpPeer
{
public:
    TcpPeer()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
            client = m_server.nextPendingConnection();
            ++connects;
            QObject::connect(client, &QTcpSocket::readyRead, &m_server,
                             [this, socket = client.data()] { received += socket->readAll(); });
        });
    }

    [[nodiscard]] int port() const { return m_server.serverPort(); }
    /// From now on the port refuses connections.
    void close() { m_server.close(); }
    [[nodiscard]] bool hasClient() const { return client && client->state() == QAbstractSocket::ConnectedState; }

    QPointer<QTcpSocket> client;
    int connects = 0;
    QByteArray received;

private:
    QTcpServer m_server;
};

} // namespace tallyforge
