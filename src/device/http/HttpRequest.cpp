// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpRequest.h"

#include "device/http/LanAddress.h"

#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tallyforge {

QNetworkRequest httpRequest(const LanAddress &address, const QString &path,
                            std::chrono::milliseconds transfer)
{
    QUrl url;
    url.setScheme(u"http"_s);
    url.setHost(address.host);
    if (address.port >= 1) {
        url.setPort(address.port);
    }
    url.setPath(path);
    // A text that isn't a host leaves none in the URL, and a proxy might answer such a request. An
    // empty URL fails by itself.
    QNetworkRequest request(url.host().isEmpty() ? QUrl() : url);
    request.setTransferTimeout(transfer);
    // The device's secrets would go to any host that a redirect names.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::SameOriginRedirectPolicy);
    // The transport keeps the one cookie that counts, and only a sign-in may change it.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

QNetworkReply *bounded(QNetworkReply *reply, std::chrono::milliseconds limit)
{
    reply->setReadBufferSize(maxHttpAnswer + 1);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > maxHttpAnswer) {
            reply->abort();
        }
    });
    QTimer::singleShot(limit, reply, &QNetworkReply::abort);
    return reply;
}

} // namespace tallyforge
