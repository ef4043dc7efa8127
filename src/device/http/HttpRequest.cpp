// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpRequest.h"

#include "device/http/LanAddress.h"

#include <QNetworkReply>
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
    // What is no host leaves none in the URL, and a proxy might answer to such a one: an empty URL
    // fails by itself.
    QNetworkRequest request(url.host().isEmpty() ? QUrl() : url);
    request.setTransferTimeout(transfer);
    // The one cookie that counts is kept by the transport, and only a sign-in may change it.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

QNetworkReply *bounded(QNetworkReply *reply)
{
    reply->setReadBufferSize(maxHttpAnswer);
    return reply;
}

} // namespace tallyforge
