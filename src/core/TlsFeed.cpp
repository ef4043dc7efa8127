// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/TlsFeed.h"

#include "platform/SocketKeepAlive.h"

#include <QJsonDocument>
#include <QPointer>
#include <QSslSocket>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

TlsFeed::TlsFeed(QObject *parent)
    : TlsFeed(Timing{}, parent)
{
}

TlsFeed::TlsFeed(const Timing &timing, QObject *parent)
    : QObject(parent)
    , m_timing(timing)
    , m_backoff(timing.firstBackoff)
{
    m_reconnectTimer.setSingleShot(true);
    connect(&m_reconnectTimer, &QTimer::timeout, this, &TlsFeed::openSocket);
    m_attemptTimer.setSingleShot(true);
    connect(&m_attemptTimer, &QTimer::timeout, this, &TlsFeed::onAttemptTimeout);
}

TlsFeed::~TlsFeed()
{
    stop();
}

void TlsFeed::connectTo(const QString &host, quint16 port, const QString &token)
{
    stop();
    m_host = host;
    m_port = port == 0 ? defaultPort : port;
    m_token = token;
    m_lastError.clear();
    m_wanted = true;
    m_backoff = m_timing.firstBackoff;
    openSocket();
}

void TlsFeed::stop()
{
    m_wanted = false;
    m_attemptOver = true;
    m_reconnectTimer.stop();
    m_attemptTimer.stop();
    dropSocket();
    if (std::exchange(m_authed, false)) {
        Q_EMIT connectedChanged(false, QString());
    }
}

void TlsFeed::dropSocket()
{
    if (m_socket == nullptr) {
        return;
    }
    m_socket->disconnect(this);
    m_socket->abort();
    m_socket->deleteLater();
    m_socket = nullptr;
}

void TlsFeed::openSocket()
{
    if (!m_wanted) {
        return;
    }
    dropSocket();
    m_buffer.clear();
    m_encrypted = false;
    m_authed = false;
    m_refused = false;
    m_attemptOver = false;

    m_socket = new QSslSocket(this);
    connect(m_socket, &QSslSocket::sslErrors, m_socket,
            [socket = m_socket] { socket->ignoreSslErrors(); });
    connect(m_socket, &QSslSocket::encrypted, this, &TlsFeed::sendAuth);
    connect(m_socket, &QSslSocket::readyRead, this, &TlsFeed::readLines);
    connect(m_socket, &QSslSocket::errorOccurred, this, &TlsFeed::onError);
    connect(m_socket, &QSslSocket::disconnected, this, &TlsFeed::onDisconnected);

    m_attemptTimer.start(m_timing.attempt);
    m_socket->connectToHostEncrypted(m_host, m_port, QIODevice::ReadWrite,
                                     QAbstractSocket::AnyIPProtocol);
}

void TlsFeed::sendAuth()
{
    m_encrypted = true;
    platform::enableKeepAlive(m_socket->socketDescriptor());
    const QJsonObject auth{{u"type"_s, u"auth"_s}, {u"token"_s, m_token}};
    m_socket->write(QJsonDocument(auth).toJson(QJsonDocument::Compact) + "\r\n");
}

void TlsFeed::readLines()
{
    const QPointer<QSslSocket> socket = m_socket;
    m_buffer.append(m_socket->readAll());
    while (const std::optional<QByteArray> line = m_buffer.takeLine()) {
        const QJsonDocument document = QJsonDocument::fromJson(*line);
        if (!document.isObject()) {
            continue;
        }
        handleMessage(document.object());
        // A slot may have stopped the feed or sent it to another device, and a rejection ends it.
        if (socket != m_socket || !m_wanted) {
            return;
        }
    }
}

void TlsFeed::handleMessage(const QJsonObject &message)
{
    const QString type = message.value("type"_L1).toString();
    if (!m_authed) {
        handleFirstMessage(type);
    } else if (type == "auth_fail"_L1) {
        m_lastError = tr("The device rejected the connection.");
        m_refused = true;
    } else {
        Q_EMIT envelope(message);
    }
}

void TlsFeed::handleFirstMessage(const QString &type)
{
    m_attemptTimer.stop();
    if (type == "auth_ok"_L1) {
        m_authed = true;
        m_backoff = m_timing.firstBackoff;
        m_lastError.clear();
        Q_EMIT connectedChanged(true, QString());
        return;
    }
    m_lastError =
        tr("The device rejected the connection. Re-run device setup to refresh its access.");
    m_wanted = false;
    m_attemptOver = true;
    m_socket->abort();
    Q_EMIT connectedChanged(false, m_lastError);
}

void TlsFeed::onError()
{
    // A device that hangs up after its "auth_fail" has given the better reason already.
    if (!m_refused || m_socket->error() != QAbstractSocket::RemoteHostClosedError) {
        m_lastError =
            tr("Could not reach the device on your network (%1).").arg(m_socket->errorString());
    }
    // A socket that never got a connection emits no disconnected(), so look once it has settled.
    QMetaObject::invokeMethod(this, &TlsFeed::endIfUnconnected, Qt::QueuedConnection);
}

void TlsFeed::endIfUnconnected()
{
    if (m_socket != nullptr && m_socket->state() == QAbstractSocket::UnconnectedState) {
        onDisconnected();
    }
}

void TlsFeed::onDisconnected()
{
    endAttempt(m_authed || !m_encrypted);
}

void TlsFeed::onAttemptTimeout()
{
    m_lastError = tr("Could not reach the device on your network (%1).")
                      .arg(tr("The device did not answer in time"));
    dropSocket();
    endAttempt(true);
}

void TlsFeed::endAttempt(bool report)
{
    if (std::exchange(m_attemptOver, true)) {
        return;
    }
    m_attemptTimer.stop();
    m_authed = false;
    if (m_wanted && !m_reconnectTimer.isActive()) {
        m_reconnectTimer.start(m_backoff);
        m_backoff = std::min(m_backoff * 2, m_timing.maxBackoff);
    }
    // Last, for a slot may start over with another device.
    if (report) {
        Q_EMIT connectedChanged(false, m_lastError);
    }
}

} // namespace tallyforge
