// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/TlsFeed.h"

#include "platform/SocketKeepAlive.h"

#include <QJsonDocument>
#include <QSslSocket>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// The bytes that are read ahead; the rest stays with the system while lines wait.
constexpr qint64 readBufferSize = 16384;
constexpr std::chrono::milliseconds attempt{10000}; // from the first packet to "auth_ok"
constexpr std::chrono::milliseconds firstBackoff{
    1000}; // before the first retry; doubles from there
constexpr std::chrono::milliseconds maxBackoff{15000};

} // namespace

TlsFeed::TlsFeed(QObject *parent)
    : QObject(parent)
    , m_backoff(firstBackoff)
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
    m_backoff = firstBackoff;
    openSocket();
}

void TlsFeed::setAccess(const QString &host, const QString &token)
{
    if (isAuthenticated()) {
        m_host = host;
        m_token = token;
    } else {
        connectTo(host, m_port, token);
    }
}

void TlsFeed::stop()
{
    const bool wasAuthenticated = isAuthenticated();
    m_state = State::Idle;
    m_reconnectTimer.stop();
    m_attemptTimer.stop();
    dropSocket();
    if (wasAuthenticated) {
        Q_EMIT connectedChanged(false, QString());
    }
}

bool TlsFeed::isAuthenticated() const
{
    return m_state == State::Live || m_state == State::Refused;
}

void TlsFeed::dropSocket()
{
    m_isEnding = false;
    m_buffer.clear();
    if (m_socket == nullptr) {
        return;
    }
    m_socket->disconnect(this);
    m_socket->disconnect(&m_reading);
    m_socket->abort();
    m_socket->deleteLater();
    m_socket = nullptr;
}

void TlsFeed::openSocket()
{
    dropSocket();
    m_state = State::Connecting;

    m_socket = new QSslSocket(this);
    m_socket->setReadBufferSize(readBufferSize);
    connect(m_socket, &QSslSocket::sslErrors, m_socket,
            [socket = m_socket] { socket->ignoreSslErrors(); });
    connect(m_socket, &QSslSocket::encrypted, this, &TlsFeed::sendAuth);
    connect(m_socket, &QSslSocket::readyRead, &m_reading, &SlicedWork::go);
    connect(m_socket, &QSslSocket::errorOccurred, this, &TlsFeed::onError);
    connect(m_socket, &QSslSocket::disconnected, this, &TlsFeed::onDisconnected);

    m_attemptTimer.start(attempt);
    m_socket->connectToHostEncrypted(m_host, m_port, QIODevice::ReadWrite,
                                     QAbstractSocket::AnyIPProtocol);
}

void TlsFeed::sendAuth()
{
    m_state = State::Authenticating;
    platform::enableKeepAlive(m_socket->socketDescriptor());
    const QJsonObject auth{{u"type"_s, u"auth"_s}, {u"token"_s, m_token}};
    m_socket->write(QJsonDocument(auth).toJson(QJsonDocument::Compact) + "\r\n");
}

// A slot may stop the feed or send it to another device, which drops all that was read.
bool TlsFeed::readLine()
{
    if (m_socket == nullptr || m_state == State::Idle) {
        return false;
    }
    if (const std::optional<QByteArray> line = m_buffer.takeLine()) {
        const QJsonDocument document = QJsonDocument::fromJson(*line);
        if (document.isObject()) {
            handleMessage(document.object());
        }
        return true;
    }
    if (m_socket->bytesAvailable() > 0) {
        m_buffer.append(m_socket->readAll());
        return true;
    }
    if (std::exchange(m_isEnding, false)) {
        endAttempt();
    }
    return false;
}

void TlsFeed::handleMessage(const QJsonObject &message)
{
    const QString type = message.value("type"_L1).toString();
    if (!isAuthenticated()) {
        handleFirstMessage(type);
    } else if (type == "auth_fail"_L1) {
        m_lastError = tr("The device rejected the connection.");
        m_state = State::Refused;
    } else {
        Q_EMIT envelope(message);
    }
}

void TlsFeed::handleFirstMessage(const QString &type)
{
    m_attemptTimer.stop();
    if (type == "auth_ok"_L1) {
        m_state = State::Live;
        m_backoff = firstBackoff;
        if (!m_isEnding) {
            m_lastError.clear();
        }
        Q_EMIT connectedChanged(true, QString());
        return;
    }
    m_state = State::Idle;
    m_socket->abort();
    m_buffer.clear();
    Q_EMIT connectedChanged(
        false,
        tr("The device rejected the connection. Re-run device setup to refresh its access."));
}

void TlsFeed::onError()
{
    // A device that hangs up after its "auth_fail" has given the better reason already.
    if (m_state != State::Refused || m_socket->error() != QAbstractSocket::RemoteHostClosedError) {
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

// Lines that came before the end count before it.
void TlsFeed::onDisconnected()
{
    m_isEnding = true;
    m_reading.go();
}

void TlsFeed::onAttemptTimeout()
{
    m_lastError = tr("Could not reach the device on your network (%1).")
                      .arg(tr("The device did not answer in time"));
    dropSocket();
    m_state = State::Connecting; // even a device that did not answer the token was not reached
    endAttempt();
}

void TlsFeed::endAttempt()
{
    if (m_state == State::Idle || m_state == State::Waiting) {
        return;
    }
    // A device that hangs up before it answered the token is merely tried again.
    const bool isNews = m_state != State::Authenticating;
    m_state = State::Waiting;
    m_attemptTimer.stop();
    m_reconnectTimer.start(m_backoff);
    m_backoff = std::min(m_backoff * 2, maxBackoff);
    if (isNews) {
        const QString reason = m_lastError; // a slot may start over with another device
        Q_EMIT connectedChanged(false, reason);
    }
}

} // namespace tallyforge
