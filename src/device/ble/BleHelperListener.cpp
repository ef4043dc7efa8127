// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperListener.h"

#include "device/ble/BleHelperLines.h"
#include "platform/KeepAccepting.h"

#include <QRandomGenerator>
#include <QTcpSocket>

#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype maxStrangers = 16; // so that a crowd of them takes up little memory

QByteArray newToken()
{
    QRandomGenerator64 *const random = QRandomGenerator64::system();
    const QByteArray first = QByteArray::number(random->generate(), 16);
    return first + QByteArray::number(random->generate(), 16);
}

} // namespace

BleHelperListener::BleHelperListener(QObject *parent)
    : QObject(parent)
{
    // Queued, because Qt goes on accepting as long as connections come and are taken at once. This
    // way it stops when as many wait as may, and the event loop has its turn.
    connect(&m_server, &QTcpServer::newConnection, this, &BleHelperListener::takeConnections,
            Qt::QueuedConnection);
    platform::keepAccepting(&m_server);
}

bool BleHelperListener::expectHelper()
{
    if (!m_server.isListening() && !m_server.listen(QHostAddress::LocalHost)) {
        return false;
    }
    m_token = newToken();
    return true;
}

void BleHelperListener::close()
{
    m_server.close();
    m_token.clear();
    dismissStrangers();
}

void BleHelperListener::takeConnections()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
        if (m_token.isEmpty()) { // no helper is expected
            socket->abort();
            socket->deleteLater();
        } else {
            take(socket);
        }
    }
}

void BleHelperListener::take(QTcpSocket *socket)
{
    auto *const stranger = new BleHelperSocket(socket, this);
    m_strangers.append(stranger);
    connect(stranger, &BleHelperSocket::received, this,
            [this, stranger](const QJsonObject &object) { greet(stranger, object); });
    connect(stranger, &BleHelperSocket::ended, this,
            [this, stranger] { m_strangers.removeOne(stranger); });
    if (m_strangers.size() <= maxStrangers) {
        return;
    }
    // The oldest has to go, but not unread: it may be the helper, whose hello waits for its turn.
    BleHelperSocket *const oldest = m_strangers.constFirst();
    oldest->readNow();
    if (m_strangers.removeOne(oldest)) {
        oldest->close();
    }
}

void BleHelperListener::greet(BleHelperSocket *stranger, const QJsonObject &hello)
{
    m_strangers.removeOne(stranger);
    if (!bleProvesToken(hello, m_token)) {
        stranger->close();
        return;
    }
    stranger->disconnect(this);
    stranger->trust();
    m_token.clear();
    dismissStrangers();
    Q_EMIT arrived(stranger);
}

void BleHelperListener::dismissStrangers()
{
    const QList<BleHelperSocket *> strangers = std::exchange(m_strangers, {});
    for (BleHelperSocket *const stranger : strangers) {
        stranger->close();
    }
}

} // namespace tallyforge
