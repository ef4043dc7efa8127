// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/CloudRelay.h"

#include <QTcpSocket>

#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype maxPending = 262144;
constexpr qint64 readAhead = 65536; // read in one turn of the event loop; the next brings the rest

} // namespace

CloudRelay::CloudRelay(QObject *parent)
    : QObject(parent)
{
}

CloudRelayStatus CloudRelay::status() const
{
    return {m_enabled, m_configured,   m_connected,      m_host,
            m_port,    m_bytesToCloud, m_bytesFromCloud, m_lastError};
}

void CloudRelay::configure(const QString &host, int port)
{
    dropSocket();
    m_host = host;
    m_port = port;
    m_configured = port > 0 && port <= 65535 && !host.isEmpty();
    m_lastError.clear();
    Q_EMIT statusChanged();
}

void CloudRelay::clearTarget()
{
    configure(QString(), 0);
}

void CloudRelay::setEnabled(bool enabled)
{
    if (m_enabled == enabled) {
        return;
    }
    m_enabled = enabled;
    if (!enabled) {
        dropSocket();
    }
    Q_EMIT statusChanged();
}

void CloudRelay::reset()
{
    dropSocket();
    Q_EMIT statusChanged();
}

void CloudRelay::dropSocket()
{
    m_connected = false;
    m_pending.clear();
    // Forgotten first, because slots that abort() calls must not find it again.
    const QPointer<QTcpSocket> socket = std::exchange(m_socket, nullptr);
    if (socket != nullptr) {
        socket->disconnect(this);
        socket->flush(); // the device takes its bytes for sent
        socket->abort();
        socket->deleteLater();
    }
}

void CloudRelay::fromDevice(const QByteArray &bytes)
{
    if (bytes.isEmpty() || !m_enabled || !m_configured) {
        return;
    }
    m_bytesToCloud += bytes.size();
    // Both are asked, because a socket calls itself connected before the waiting bytes have gone,
    // and still does while it reports its end.
    if (m_connected && m_socket != nullptr &&
        m_socket->state() == QAbstractSocket::ConnectedState) {
        m_socket->write(bytes);
        return;
    }
    if (m_pending.size() + bytes.size() <= maxPending) {
        m_pending.append(bytes);
    }
    ensureConnected();
}

void CloudRelay::ensureConnected()
{
    if (m_socket != nullptr) {
        return;
    }
    QTcpSocket *const socket = socketFactory ? socketFactory(this) : new QTcpSocket(this);
    if (socket == nullptr) {
        return;
    }
    m_socket = socket;
    // A dropped socket has no connections any more, so these slots always mean the present one.
    connect(socket, &QTcpSocket::connected, this, &CloudRelay::onConnected);
    connect(socket, &QTcpSocket::readyRead, this, &CloudRelay::onReadyRead);
    connect(socket, &QTcpSocket::errorOccurred, this, &CloudRelay::onError);
    connect(socket, &QTcpSocket::disconnected, this, &CloudRelay::onDisconnected);
    socket->setReadBufferSize(readAhead);
    socket->connectToHost(m_host, static_cast<quint16>(m_port), QIODevice::ReadWrite,
                          QAbstractSocket::AnyIPProtocol);
}

void CloudRelay::onConnected()
{
    m_connected = true;
    m_lastError.clear();
    if (const QByteArray pending = std::exchange(m_pending, {}); !pending.isEmpty()) {
        m_socket->write(pending);
    }
    Q_EMIT statusChanged();
}

void CloudRelay::onReadyRead()
{
    const QByteArray bytes = m_socket->readAll();
    if (!bytes.isEmpty()) {
        m_bytesFromCloud += bytes.size();
        Q_EMIT toDevice(bytes);
    }
}

void CloudRelay::onError()
{
    m_lastError = m_socket->errorString();
    m_connected = false;
    Q_EMIT statusChanged();
}

void CloudRelay::onDisconnected()
{
    QTcpSocket *const socket = std::exchange(m_socket, nullptr);
    socket->disconnect(this);
    socket->deleteLater();
    m_connected = false;
    Q_EMIT statusChanged();
}

} // namespace tallyforge
