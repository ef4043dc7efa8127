// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/PluginSocket.h"

#include "common/JsonText.h"

#include <QHostAddress>
#include <QJsonDocument>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge::helper {

namespace {

using namespace std::chrono_literals;

constexpr auto connectLimit = 10s;
constexpr qsizetype lineLimit = 64L * 1024; // a write takes a few hundred bytes

} // namespace

PluginSocket::PluginSocket(QObject *parent)
    : QObject(parent)
{
    connect(&m_socket, &QTcpSocket::readyRead, this, &PluginSocket::read);
    connect(&m_socket, &QTcpSocket::disconnected, this, &PluginSocket::end);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &PluginSocket::end);
    connect(&m_connectTimer, &QTimer::timeout, this, &PluginSocket::end);
    connect(&m_socket, &QTcpSocket::connected, &m_connectTimer, &QTimer::stop);
    m_connectTimer.setSingleShot(true);
    m_connectTimer.setInterval(connectLimit);
}

void PluginSocket::open(quint16 port, const QString &token)
{
    connect(&m_socket, &QTcpSocket::connected, this, [this, token] {
        // The device answers in many small writes: none waits for the plug-in to have acknowledged
        // another.
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        send({{u"hello"_s, token}});
    });
    m_connectTimer.start();
    m_socket.connectToHost(QHostAddress::LocalHost, port);
}

void PluginSocket::send(const QJsonObject &object)
{
    if (m_socket.state() == QAbstractSocket::ConnectedState) {
        m_socket.write(jsonLine(object));
    }
}

void PluginSocket::replyOk(int id, const QJsonObject &result)
{
    send({{u"reqId"_s, id}, {u"ok"_s, true}, {u"result"_s, result}});
}

void PluginSocket::replyFailed(int id, const Failure &failure)
{
    const QJsonObject error{{u"code"_s, failure.code}, {u"message"_s, failure.message}};
    send({{u"reqId"_s, id}, {u"ok"_s, false}, {u"error"_s, error}});
}

void PluginSocket::sendEvent(const QString &name, const QString &key, const QString &value)
{
    send({{u"ev"_s, name}, {key, value}});
}

void PluginSocket::read()
{
    m_buffer.append(m_socket.readAll());
    while (const std::optional<QByteArray> line = m_buffer.takeLine()) {
        const QJsonObject object = QJsonDocument::fromJson(*line).object();
        if (const QString name = object.value("op"_L1).toString(); !name.isEmpty() && !m_ended) {
            Q_EMIT operation(name, object.value("reqId"_L1).toInt(), object);
        }
    }
    if (m_buffer.size() > lineLimit) {
        m_socket.abort();
    }
}

void PluginSocket::end()
{
    if (!std::exchange(m_ended, true)) {
        Q_EMIT ended();
    }
}

} // namespace tallyforge::helper
