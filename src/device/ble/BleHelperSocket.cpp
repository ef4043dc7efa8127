// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperSocket.h"

#include "common/JsonText.h"

#include <QPointer>
#include <QTcpSocket>

#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype strangersLine = 1024;       // the hello takes some fifty bytes
constexpr qint64 strangersRead = 4096;          // the rest waits with the system
constexpr qsizetype helpersLine = 1024L * 1024; // a scan of thousands of devices

} // namespace

BleHelperSocket::BleHelperSocket(QTcpSocket *socket, std::chrono::milliseconds helloLimit,
                                 QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_lineLimit(strangersLine)
{
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); // no line waits for the next one
    m_socket->setReadBufferSize(strangersRead);
    // Queued, since Qt emits it no second time while a receiver waits in an event loop of its own.
    connect(m_socket, &QTcpSocket::readyRead, this, &BleHelperSocket::read, Qt::QueuedConnection);
    connect(m_socket, &QTcpSocket::disconnected, this, &BleHelperSocket::onDisconnected);
    connect(&m_helloTimer, &QTimer::timeout, this, &BleHelperSocket::onHelloLimit);
    m_helloTimer.setSingleShot(true);
    m_helloTimer.start(helloLimit);
}

void BleHelperSocket::trust()
{
    m_helloTimer.stop();
    m_socket->setReadBufferSize(0);
    m_lineLimit = helpersLine;
}

void BleHelperSocket::send(const QJsonObject &object)
{
    m_socket->write(jsonLine(object));
    m_socket->flush(); // not only when the event loop comes round
}

void BleHelperSocket::onDisconnected()
{
    if (read()) {
        end();
    }
}

void BleHelperSocket::onHelloLimit()
{
    m_socket->waitForReadyRead(0); // the hello may be here, and only this thread was late
    if (read() && m_lineLimit == strangersLine) {
        end();
    }
}

bool BleHelperSocket::read()
{
    if (m_ended) {
        return false;
    }
    const QPointer<BleHelperSocket> self = this;
    m_lines.append(m_socket->readAll());
    while (const std::optional<QJsonObject> object = m_lines.take()) {
        Q_EMIT received(*object);
        if (!self || m_ended) {
            return false;
        }
    }
    if (m_lines.size() > m_lineLimit) {
        end();
        return false;
    }
    return true;
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
    m_socket->disconnect(this);
    m_socket->flush();
    m_socket->close();
    m_socket->abort(); // a peer that doesn't read would keep it open
    deleteLater();
}

} // namespace tallyforge
