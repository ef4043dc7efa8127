// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"
#include "common/SlicedWork.h"

#include <QJsonObject>
#include <QObject>
#include <QTimer>

#include <chrono>

class QSslSocket;

namespace tallyforge {

/// The client of a device's live feed on the local network: one TLS connection, authenticated by
/// the device's access token, that carries a JSON object a line. While it is wanted it comes back
/// by itself after every loss; only a device that refuses the token ends it.
///
/// The device's certificate isn't checked: devices sign their own, and the token is what lets a
/// client in.
class TlsFeed final : public QObject
{
    Q_OBJECT

public:
    explicit TlsFeed(QObject *parent = nullptr);
    ~TlsFeed() override;

    static constexpr quint16 defaultPort = 1010;

    /// Starts over with another device. Port 0 means the default port.
    void connectTo(const QString &host, quint16 port, const QString &token);

    /// The same device is reached like this from now on. A connection that it has accepted goes on;
    /// without one, the feed starts over.
    void setAccess(const QString &host, const QString &token);

    /// Ends the connection and all retries. Emits connectedChanged(false, "") if it was
    /// authenticated.
    void stop();

Q_SIGNALS:
    /// True once the device has accepted the token. False, with a sentence for the user or an empty
    /// text, when such a connection has ended, when the device rejects the token, and when an
    /// attempt could not reach the device or got no answer. Silent when the device hangs up before
    /// it answered; that is retried like the others.
    void connectedChanged(bool connected, const QString &reason);
    /// Each object that follows the authentication, heartbeats included.
    void envelope(const QJsonObject &envelope);

private:
    enum class State {
        Idle,           // not wanted, or refused for good
        Connecting,     // up to the end of the TLS handshake
        Authenticating, // waiting for the answer to the token
        Live,
        Refused, // "auth_fail" came on a live connection, whose end is near
        Waiting, // for the next attempt
    };

    [[nodiscard]] bool isAuthenticated() const;
    void openSocket();
    void dropSocket();
    void sendAuth();
    bool readLine();
    void handleMessage(const QJsonObject &message);
    void handleFirstMessage(const QString &type);
    void onError();
    void onDisconnected();
    void onAttemptTimeout();
    void endIfUnconnected();
    void endAttempt();

    QSslSocket *m_socket = nullptr; // child of the feed, a new one for each attempt
    QString m_host;
    quint16 m_port = defaultPort;
    QString m_token;
    LineBuffer m_buffer;
    SlicedWork m_reading{[this] { return readLine(); }};
    bool m_isEnding = false; // the connection has ended, but lines wait
    State m_state = State::Idle;
    QString m_lastError;
    QTimer m_reconnectTimer;
    QTimer m_attemptTimer;
    std::chrono::milliseconds m_backoff;
};

} // namespace tallyforge
