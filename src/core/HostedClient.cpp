// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedClient.h"

#include "platform/SocketKeepAlive.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype maxBufferedBytes = 65536;
// How long a connection that is to end may still take to carry what is queued.
constexpr std::chrono::milliseconds drainLimit{5000};
constexpr qsizetype flushedAtOnce = 262144; // bytes, so that nobody waits long for a full queue

} // namespace

HostedClient::HostedClient(qintptr descriptor, QObject *parent)
    : QObject(parent)
    , m_socket(descriptor)
    , m_readNotice(m_socket.descriptor(), QSocketNotifier::Read)
    , m_writeNotice(m_socket.descriptor(), QSocketNotifier::Write)
{
    m_writeNotice.setEnabled(false);
    // A score must not wait until the one before it has been acknowledged.
    m_socket.setLowDelay();
    platform::enableKeepAlive(m_socket.descriptor());
    connect(&m_readNotice, &QSocketNotifier::activated, this, &HostedClient::onReadable);
    connect(&m_writeNotice, &QSocketNotifier::activated, this, &HostedClient::onWritable);
}

void HostedClient::onReadable()
{
    m_readNotice.setEnabled(false);
    m_isFresh = true;
    Q_EMIT readable();
}

// All that comes at once counts, whole lines included. Bytes that come while lines wait stay with
// the system: a program isn't cut off because this computer is busy.
std::optional<QByteArray> HostedClient::takeLine()
{
    while (!m_closing) {
        if (std::optional<QByteArray> line = m_buffer.takeLine()) {
            return line;
        }
        if (m_buffer.size() > maxBufferedBytes) {
            close();
            break;
        }
        const QByteArray more = m_socket.receive(maxBufferedBytes + 1 - m_buffer.size());
        if (more.isEmpty()) {
            break;
        }
        m_buffer.append(more);
        if (std::exchange(m_isFresh, false) && m_buffer.size() > maxBufferedBytes) {
            close();
        }
    }
    if (m_buffer.size() == 0) {
        m_buffer.clear(); // gives back the memory of a long burst
    }
    if (m_socket.isBroken()) {
        end();
    } else if (m_socket.isEnded()) {
        close();
    } else if (!m_closing) {
        m_readNotice.setEnabled(true);
    }
    return std::nullopt;
}

bool HostedClient::queue(const QByteArray &bytes)
{
    if (m_closing || m_gone) {
        return false;
    }
    m_queued.append(bytes);
    return m_queued.size() == 1;
}

bool HostedClient::flush()
{
    qsizetype flushed = 0;
    while (!m_queued.isEmpty() && flushed < flushedAtOnce) {
        const QByteArrayView rest = QByteArrayView(m_queued.constFirst()).sliced(m_sent);
        const qsizetype taken = m_socket.send(rest);
        if (m_socket.isBroken()) {
            end();
            return false;
        }
        if (taken < rest.size()) {
            m_sent += taken;
            m_writeNotice.setEnabled(true);
            return false;
        }
        flushed += taken;
        m_sent = 0;
        m_queued.removeFirst();
    }
    if (m_closing && m_queued.isEmpty()) {
        end();
    }
    return !m_queued.isEmpty();
}

void HostedClient::onWritable()
{
    m_writeNotice.setEnabled(false);
    Q_EMIT writable();
}

void HostedClient::close()
{
    if (m_closing || m_gone) {
        return;
    }
    m_closing = true;
    m_readNotice.setEnabled(false);
    if (m_queued.isEmpty()) {
        end();
        return;
    }
    QTimer::singleShot(drainLimit, this, &HostedClient::end);
}

void HostedClient::end()
{
    if (std::exchange(m_gone, true)) {
        return;
    }
    m_closing = true;
    m_queued.clear();
    m_readNotice.setEnabled(false);
    m_writeNotice.setEnabled(false);
    m_socket.close();
    Q_EMIT disconnected();
}

} // namespace tallyforge
