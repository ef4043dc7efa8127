// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedClient.h"

#include "platform/SocketKeepAlive.h"
#include "platform/SocketSend.h"

#include <QTcpSocket>
#include <QTimer>

#include <utility>

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
    m_socket->setReadBufferSize(maxBufferedBytes + 1);
    // A score must not wait until the one before it has been acknowledged.
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    platform::enableKeepAlive(m_socket->socketDescriptor());
    connect(m_socket, &QTcpSocket::readyRead, this, &HostedClient::onReadyRead);
    connect(m_socket, &QTcpSocket::disconnected, this, &HostedClient::onDisconnected);
}

void HostedClient::queue(const QByteArray &bytes)
{
    if (!m_closing && !m_gone) {
        m_queued.append(bytes);
    }
}

// Qt's socket would queue the bytes, and ask the event loop for a notice and take that back for
// each of them: with a thousand readers that doubles the time. So it gets only the bytes that the
// system doesn't take at once.
void HostedClient::flush()
{
    for (const QByteArrayList all = std::exchange(m_queued, {}); const QByteArray &bytes : all) {
        if (m_gone) {
            return;
        }
        const qsizetype sent = m_socket->bytesToWrite() == 0
                                   ? platform::sendNow(m_socket->socketDescriptor(), bytes)
                                   : 0;
        if (sent < bytes.size()) {
            m_socket->write(sent == 0 ? bytes : bytes.sliced(sent));
        }
    }
}

void HostedClient::close()
{
    if (m_closing) {
        return;
    }
    flush();
    m_closing = true;
    m_isRead = true;
    if (m_gone) {
        QMetaObject::invokeMethod(this, &HostedClient::disconnected, Qt::QueuedConnection);
        return;
    }
    QTimer::singleShot(m_timing.drain, m_socket, &QTcpSocket::abort);
    m_socket->disconnectFromHost();
}

// Bytes that come while lines wait stay with the socket: a program isn't cut off because this
// computer is busy.
void HostedClient::onReadyRead()
{
    if (m_closing || !m_isRead) {
        return;
    }
    m_buffer.append(m_socket->read(maxBufferedBytes + 1 - m_buffer.size()));
    if (m_buffer.size() > maxBufferedBytes) {
        close();
        return;
    }
    m_isRead = false;
    Q_EMIT readable();
}

std::optional<QByteArray> HostedClient::takeLine()
{
    while (!m_closing) {
        if (std::optional<QByteArray> line = m_buffer.takeLine()) {
            return line;
        }
        const QByteArray more = m_socket->read(maxBufferedBytes - m_buffer.size());
        if (more.isEmpty()) {
            break;
        }
        m_buffer.append(more);
    }
    if (m_buffer.size() == 0) {
        m_buffer.clear(); // gives back the memory of a long burst
    }
    if (!m_closing && m_socket->bytesAvailable() > 0) {
        close(); // the buffer is full of a line without an end
    }
    m_isRead = true;
    if (m_gone && !m_closing) {
        QMetaObject::invokeMethod(this, &HostedClient::disconnected, Qt::QueuedConnection);
    }
    return std::nullopt;
}

void HostedClient::onDisconnected()
{
    m_gone = true;
    if (m_isRead) {
        Q_EMIT disconnected();
    }
}

} // namespace tallyforge
