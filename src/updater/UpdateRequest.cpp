// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/UpdateRequest.h"

#include "updater/UpdateTypes.h"

#include <QNetworkAccessManager>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr qint64 readBuffer = qint64(64) * 1024;

} // namespace

QNetworkRequest updateRequest(const QString &url, const UpdateConfig &config,
                              std::chrono::milliseconds silence)
{
    QNetworkRequest request{QUrl(url)};
    const QString agent = u"Tallyforge-OBS/%1 (%2)"_s;
    request.setRawHeader("User-Agent",
                         agent.arg(config.currentVersion, config.platformKey).toUtf8());
    // Bytes are counted, bounded and summed up as they are sent: not after they were inflated.
    request.setRawHeader("Accept-Encoding", "identity");
    // Over HTTP/2 a reader that is slower than the network can't hold the server back.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(silence);
    return request;
}

UpdateReply::UpdateReply(QNetworkAccessManager *network, const QNetworkRequest &request,
                         QObject *owner)
    : m_reply(network->get(request))
    , m_owner(owner)
{
    m_reply->setReadBufferSize(readBuffer);
}

UpdateReply::~UpdateReply()
{
    m_reply->disconnect(m_owner);
    m_reply->abort();
    m_reply->deleteLater();
}

bool succeeded(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return reply.error() == QNetworkReply::NoError && status >= 200 && status <= 299;
}

} // namespace tallyforge
