// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/ManifestFetch.h"

#include "updater/UpdateRequest.h"

#include <QNetworkAccessManager>

#include <utility>

namespace tallyforge {

ManifestFetch::ManifestFetch(QNetworkAccessManager *network, const QNetworkRequest &request,
                             std::chrono::milliseconds whole, QObject *parent)
    : QObject(parent)
    , m_reply(network, request, this)
{
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &ManifestFetch::read);
    // Queued, because a reply that runs out of time is still at work when it says so.
    connect(m_reply.get(), &QNetworkReply::finished, this, &ManifestFetch::finish,
            Qt::QueuedConnection);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, m_reply.get(), &QNetworkReply::abort);
    m_limit.start(whole);
}

void ManifestFetch::read()
{
    if (m_finished) {
        return;
    }
    m_body += m_reply->read(maxBytes - m_body.size());
    if (m_body.size() == maxBytes) {
        finish();
    }
}

void ManifestFetch::finish()
{
    if (std::exchange(m_finished, true)) {
        return; // the reply ended just after there was enough of it
    }
    m_limit.stop();
    if (m_reply->isReadable()) { // one that was aborted isn't
        m_body += m_reply->read(maxBytes - m_body.size());
    }
    Q_EMIT finished(succeeded(*m_reply.get()), m_body);
}

} // namespace tallyforge
