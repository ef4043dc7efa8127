// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/http/HttpLink.h"

#include "device/http/HttpAdminTransport.h"
#include "device/http/HttpRequest.h"

#include <QNetworkReply>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds probe{8000}; // for a sign of life when the link opens

} // namespace

HttpLink::HttpLink(const QString &address, QObject *parent)
    : DeviceLink(parent)
    , m_text(address)
    , m_address(LanAddress::fromText(address))
    , m_transport(new HttpAdminTransport(m_address, this))
{
}

RpcTransport *HttpLink::transport()
{
    return m_transport;
}

void HttpLink::open()
{
    close();
    QNetworkReply *reply =
        bounded(m_network.get(httpRequest(m_address, u"/api/status"_s, probe)), probe);
    // Queued, as in the transport, because a slot may delete the link.
    connect(
        reply, &QNetworkReply::finished, this,
        [this, reply, isCurrent = m_generation.watch()] {
            reply->deleteLater();
            if (isCurrent()) {
                onProbed(reply);
            }
        },
        Qt::QueuedConnection);
}

void HttpLink::onProbed(QNetworkReply *reply)
{
    if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 0) {
        m_transport->open();
        Q_EMIT opened({});
        return;
    }
    Q_EMIT failed(u"unreachable"_s,
                  tr("Could not reach %1 on your network. Check the address, and that this "
                     "computer and the device are on the same network.")
                      .arg(m_address.host));
}

void HttpLink::close()
{
    m_generation.next();
    m_transport->close();
}

} // namespace tallyforge
