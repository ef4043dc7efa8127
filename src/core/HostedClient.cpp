// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedClient.h"

#include "platform/SocketSend.h"

#include <QTcpSocket>
#include <QTimer>

namespace tallyforge {

namespace {

constexpr qsizetype maxBufferedBytes = 65536;

} // namespace

HostedClient::HostedClient(QTcpSocket *socket, const Timing &timing, QObject *parent)
    : QObject(parent)
    , m_timing(timing)
    , m_socket(socket)
{
    m_socket->setParent(this);
    // A score must not wait until the one before it has been acknowledged.
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(m_socket, &QTcpSocket::readyRead, this, &HostedClient::readLines);
    connect(m_socket, &QTcpSocket::disconnected, this, &HostedClient::disconnected);
}

// Qt's socket would queue the bytes, and ask the event loop for a notice and take that back for
// each of them: with a thousand readers that doubles the time. So it gets only what the system
// doesn't take at once.
void HostedClient::send(const QByteArray &bytes)
{
    if (m_closing) {
        return;
    }
    const qsizetype sent =
        m_socket->bytesToWrite() == 0 ? platform::sendNow(m_socket->socketDescriptor(), bytes) : 0;
    if (sent < bytes.size()) {
        m_socket->write(sent == 0 ? bytes : bytes.sliced(sent));
    }
}

void HostedClient::close()
{
    if (m_closing) {
        return;
    }
    m_closing = true;
    QTimer::singleShot(m_timing.drain, m_socket, &QTcpSocket::abort);
    m_socket->disconnectFromHost();
}

void HostedClient::readLines()
{
    if (m_closing) {
        return;
    }
    m_buffer.append(m_socket->readAll());
    if (m_buffer.size() > maxBufferedBytes) {
        close();
        return;
    }
    // Whoever handles a line may close this connection.
    while (!m_closing) {
        const std::optional<QByteArray> line = m_buffer.takeLine();
        if (!line) {
            break;
        }
        if (!line->isEmpty()) {
            Q_EMIT lineReceived(*line);
        }
    }
    if (m_buffer.size() == 0) {
        m_buffer.clear(); // gives back what a long burst has taken
    }
}

} // namespace tallyforge
