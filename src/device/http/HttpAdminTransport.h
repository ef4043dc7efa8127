// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/RpcTransport.h"
#include "device/http/LanAddress.h"

#include <QByteArray>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QString>

class QNetworkReply;

namespace tallyforge {

struct HttpAnswer;
struct HttpRoute;

/// Carries each admin request as one HTTP request on the method's route. Every request ends in one
/// message(), a failure too; sendFailed() never comes. A "login" that succeeds yields the session
/// cookie and the CSRF token that go with all later requests: both are secrets.
class HttpAdminTransport final : public RpcTransport
{
    Q_OBJECT

public:
    HttpAdminTransport(const LanAddress &address, QObject *parent);

    [[nodiscard]] bool isOpen() const override { return m_open; }
    void send(const QByteArray &json) override;

    void open() { m_open = true; }
    /// Forgets the sign-in. Requests that are under way are still answered.
    void close();

private:
    void refuse(int id, const QString &code, const QString &text);
    [[nodiscard]] QNetworkReply *start(const HttpRoute &route, const QJsonObject &params);
    void finish(QNetworkReply *reply, int id, const QString &method, bool mayTakeSession);
    void takeSession(const QByteArray &setCookie, const HttpAnswer &login);

    const LanAddress m_address;
    QNetworkAccessManager m_network;
    bool m_open = false;
    Generation m_generation; // ends with close(); a sign-in that outlives it yields nothing
    QByteArray m_cookie;     // name=value
    QByteArray m_csrf;
};

} // namespace tallyforge
