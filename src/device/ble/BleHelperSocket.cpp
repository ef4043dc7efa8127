// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperSocket.h"

#include "common/JsonText.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTcpSocket>

#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype strangersLine = 1024;                // the hello takes some fifty bytes
constexpr qint64 strangersRead = 4096;                   // more waits with the system
constexpr qsizetype helpersLine = qsizetype(128) * 1024; // a scan of a thousand devices
constexpr qint64 helpersRead = 64L * 1024;
constexpr qint64 piece = 4096; // small, because the time is looked at only between pieces and lines

constexpr std::chrono::milliseconds helloLimit{5000}; // until it must have proved the token
constexpr std::chrono::milliseconds turnLimit{3};     // no further line is handled after it
constexpr std::chrono::milliseconds pause{5};         // in which OBS comes to its own work

} // namespace

BleHelperSocket::BleHelperSocket(QTcpSocket *socket, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
{
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); // no line waits for the next one
    m_socket->setReadBufferSize(strangersRead);
    // Both are queued: a slot of received() may wait in an event loop of its own, in which the
    // socket must be able to go on.
    connect(m_socket, &QTcpSocket::readyRead, this, &BleHelperSocket::handle, Qt::QueuedConnection);
    connect(
        m_socket, &QTcpSocket::disconnected, this,
        [this] {
            m_peerGone = true;
            handle();
        },
        Qt::QueuedConnection);
    m_rest.setSingleShot(true);
    m_rest.setInterval(pause);
    connect(&m_rest, &QTimer::timeout, this, &BleHelperSocket::handle);
    connect(&m_helloTimer, &QTimer::timeout, this, &BleHelperSocket::onHelloLimit);
    m_helloTimer.start(helloLimit);
    QMetaObject::invokeMethod(this, &BleHelperSocket::handle, Qt::QueuedConnection); // is it here?
}

void BleHelperSocket::trust()
{
    m_helloTimer.stop();
    m_socket->setReadBufferSize(helpersRead);
}

void BleHelperSocket::send(const QJsonObject &object)
{
    m_socket->write(jsonLine(object));
    m_socket->flush(); // not only when the event loop comes round
}

void BleHelperSocket::readNow()
{
    m_socket->waitForReadyRead(0);
    handle();
}

void BleHelperSocket::onHelloLimit()
{
    const QPointer<BleHelperSocket> self = this;
    readNow(); // the hello may be here, and only this thread was late
    if (self && isStranger()) {
        end();
    }
}

void BleHelperSocket::handle()
{
    if (m_ended || m_rest.isActive()) {
        return;
    }
    const QPointer<BleHelperSocket> self = this;
    const QDeadlineTimer turn(turnLimit, Qt::PreciseTimer);
    do {
        if (const std::optional<QJsonObject> object = m_lines.take()) {
            Q_EMIT received(*object);
            if (!self || m_ended) {
                return;
            }
        } else if (!readMore()) {
            return;
        }
    } while (!turn.hasExpired());
    m_rest.start();
}

// Called when no whole line is left. Returns false when there is nothing to read, or no more.
bool BleHelperSocket::readMore()
{
    const QByteArray bytes = m_socket->read(piece);
    if (m_lines.size() > (isStranger() ? strangersLine : helpersLine) ||
        (bytes.isEmpty() && m_peerGone)) {
        end();
        return false;
    }
    m_lines.append(bytes);
    return !bytes.isEmpty();
}

void BleHelperSocket::end()
{
    if (!m_ended) {
        close();
        Q_EMIT ended();
    }
}

void BleHelperSocket::close()
{
    if (std::exchange(m_ended, true)) {
        return;
    }
    m_helloTimer.stop();
    m_rest.stop();
    m_socket->disconnect(this);
    m_socket->flush();
    m_socket->close();
    m_socket->abort(); // a peer that doesn't read would keep it open
    deleteLater();
}

} // namespace tallyforge
