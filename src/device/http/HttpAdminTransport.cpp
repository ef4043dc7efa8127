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

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// QUrlQuery takes "%41" for an "A" and leaves "+", which a form's reader takes for a blank; a Wi-Fi
// password may hold either, so that it's encoded before.
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

HttpAdminTransport::HttpAdminTransport(const LanAddress &address,
                                       std::chrono::milliseconds transfer, QObject *parent)
    : RpcTransport(parent)
    , m_address(address)
    , m_transfer(transfer)
{
}

void HttpAdminTransport::close()
{
    ++m_openings;
    m_open = false;
    m_cookie.clear();
    m_csrf.clear();
}

void HttpAdminTransport::send(const QByteArray &json)
{
    const QJsonObject request = QJsonDocument::fromJson(json).object();
    const int id = request.value("id"_L1).toInt();
    if (!m_open) {
        Q_EMIT message(
            HttpAnswer::failure(u"disconnected"_s, tr("Not connected to a device")).toJson(id));
        return;
    }
    const QString method = request.value("method"_L1).toString();
    const HttpRoute route = httpRouteFor(method);
    if (!route.found) {
        Q_EMIT message(
            HttpAnswer::failure(
                u"not_available_here"_s,
                tr("This is only available over USB or Bluetooth, not over the network."))
                .toJson(id));
        return;
    }
    QNetworkReply *reply = start(route, request.value("params"_L1).toObject());
    // Queued, for a reply that runs out of time is still at work when it says so, and whoever hears
    // of it may delete the session with all that belongs to it.
    connect(
        reply, &QNetworkReply::finished, this,
        [this, reply, id, method, opening = m_openings] { finish(reply, id, method, opening); },
        Qt::QueuedConnection);
}

QNetworkReply *HttpAdminTransport::start(const HttpRoute &route, const QJsonObject &params)
{
    QNetworkRequest request = httpRequest(m_address, route.path, m_transfer);
    request.setRawHeader("Accept", "application/json");
    if (!m_cookie.isEmpty()) {
        request.setRawHeader("Cookie", m_cookie);
    }
    if (!m_csrf.isEmpty()) {
        request.setRawHeader("X-CSRF-Token", m_csrf);
    }
    if (route.verb == "GET") {
        return bounded(m_network.get(request));
    }
    const QByteArray type = route.form ? QByteArrayLiteral("application/x-www-form-urlencoded")
                                       : QByteArrayLiteral("application/json");
    request.setHeader(QNetworkRequest::ContentTypeHeader, type);
    return bounded(
        m_network.post(request, route.form ? formBody(params)
                                           : QJsonDocument(params).toJson(QJsonDocument::Compact)));
}

void HttpAdminTransport::finish(QNetworkReply *reply, int id, const QString &method,
                                unsigned opening)
{
    // The status alone decides: an answer that broke off has had its effect on the device.
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->isReadable() ? reply->read(maxHttpAnswer) : QByteArray();
    const HttpAnswer answer = HttpAnswer::read(method, status, body);
    if (answer.ok && method == "login"_L1 && opening == m_openings) {
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
