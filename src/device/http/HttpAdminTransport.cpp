// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpAdminTransport.h"

#include "device/http/HttpAnswer.h"
#include "device/http/HttpRequest.h"
#include "device/http/HttpRoutes.h"

#include <QJsonDocument>
#include <QNetworkReply>
#include <QUrl>
#include <QUrlQuery>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds transferLimit{30000}; // without any progress of a request
constexpr std::chrono::milliseconds wholeLimit{45000};    // of a request; no call waits as long

// A Wi-Fi password may hold "%41", which QUrlQuery takes for an "A", or "+", which QUrlQuery leaves
// and a form's reader takes for a blank. So all texts are encoded before.
QByteArray formBody(const QJsonObject &params)
{
    const auto encoded = [](const QString &text) {
        return QString::fromLatin1(QUrl::toPercentEncoding(text));
    };
    QUrlQuery query;
    for (auto it = params.begin(); it != params.end(); ++it) {
        query.addQueryItem(encoded(it.key()), encoded(it.value().toVariant().toString()));
    }
    return query.toString(QUrl::FullyEncoded).toUtf8();
}

// The cookie of a "Set-Cookie" header without its attributes. Several headers stand in one text, a
// line each.
QByteArray cookieOf(const QByteArray &setCookie)
{
    const QByteArray first = setCookie.split('\n').constFirst();
    const qsizetype end = first.indexOf(';');
    return end >= 1 ? first.left(end) : first;
}

} // namespace

HttpAdminTransport::HttpAdminTransport(const LanAddress &address, QObject *parent)
    : RpcTransport(parent)
    , m_address(address)
{
}

void HttpAdminTransport::close()
{
    m_generation.next();
    m_open = false;
    m_cookie.clear();
    m_csrf.clear();
}

void HttpAdminTransport::send(const QByteArray &json)
{
    const QJsonObject request = QJsonDocument::fromJson(json).object();
    const int id = request.value("id"_L1).toInt();
    if (!m_open) {
        refuse(id, u"disconnected"_s, tr("Not connected to a device"));
        return;
    }
    const QString method = request.value("method"_L1).toString();
    const HttpRoute route = httpRouteFor(method);
    if (!route.found) {
        refuse(id, u"not_available_here"_s,
               tr("This is only available over USB or Bluetooth, not over the network."));
        return;
    }
    QNetworkReply *reply = start(route, request.value("params"_L1).toObject());
    // Queued: a reply that runs out of time is still at work when it emits finished(), and a slot
    // of message() may delete the session with all that belongs to it.
    connect(
        reply, &QNetworkReply::finished, this,
        [this, reply, id, method, isCurrent = m_generation.watch()] {
            finish(reply, id, method, isCurrent());
        },
        Qt::QueuedConnection);
}

void HttpAdminTransport::refuse(int id, const QString &code, const QString &text)
{
    Q_EMIT message(HttpAnswer::failure(code, text).toJson(id));
}

QNetworkReply *HttpAdminTransport::start(const HttpRoute &route, const QJsonObject &params)
{
    QNetworkRequest request = httpRequest(m_address, route.path, transferLimit);
    request.setRawHeader("Accept", "application/json");
    if (!m_cookie.isEmpty()) {
        request.setRawHeader("Cookie", m_cookie);
    }
    if (!m_csrf.isEmpty()) {
        request.setRawHeader("X-CSRF-Token", m_csrf);
    }
    if (route.verb == "GET") {
        return bounded(m_network.get(request), wholeLimit);
    }
    const QByteArray type = route.form ? QByteArrayLiteral("application/x-www-form-urlencoded")
                                       : QByteArrayLiteral("application/json");
    request.setHeader(QNetworkRequest::ContentTypeHeader, type);
    return bounded(
        m_network.post(request, route.form ? formBody(params)
                                           : QJsonDocument(params).toJson(QJsonDocument::Compact)),
        wholeLimit);
}

void HttpAdminTransport::finish(QNetworkReply *reply, int id, const QString &method,
                                bool mayTakeSession)
{
    // The status alone decides, because a request whose answer broke off has had its effect on the
    // device.
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->isReadable() ? reply->read(maxHttpAnswer) : QByteArray();
    const HttpAnswer answer = HttpAnswer::read(method, status, body);
    if (answer.ok && method == "login"_L1 && mayTakeSession) {
        takeSession(reply->rawHeader("Set-Cookie"), answer);
    }
    reply->deleteLater();
    Q_EMIT message(answer.toJson(id));
}

void HttpAdminTransport::takeSession(const QByteArray &setCookie, const HttpAnswer &login)
{
    m_cookie = cookieOf(setCookie);
    m_csrf = login.result.value("csrf_token"_L1).toString().toUtf8();
}

} // namespace tallyforge
