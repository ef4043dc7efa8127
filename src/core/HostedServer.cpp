// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedServer.h"

#include "common/JsonText.h"
#include "core/HostedRequest.h"
#include "core/LiveData.h"
#include "platform/KeepAccepting.h"
#include "platform/OpenFiles.h"

#include <QTcpSocket>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// Programs that all come at once, as after a change of the port, are let in without a second try.
constexpr int backlog = 1024;

} // namespace

HostedServer::HostedServer(LiveData *live, QObject *parent)
    : HostedServer(live, HostedClient::Timing(), parent)
{
}

HostedServer::HostedServer(LiveData *live, const HostedClient::Timing &timing, QObject *parent)
    : QObject(parent)
    , m_timing(timing)
    , m_live(live)
{
    m_tcpServer.setListenBacklogSize(backlog);
    connect(&m_tcpServer, &QTcpServer::newConnection, this, &HostedServer::takeConnections);
    platform::keepAccepting(&m_tcpServer, m_timing.rest);
    connect(m_live, &LiveData::changed, this, &HostedServer::broadcast);
}

HostedServer::~HostedServer() = default;

bool HostedServer::start(quint16 port, bool allowNetwork, QString *error)
{
    stop();
    const QHostAddress address(allowNetwork ? QHostAddress::Any : QHostAddress::LocalHost);
    const bool listens = m_tcpServer.listen(address, port);
    if (!listens && error) {
        *error = tr("Could not listen on port %1: %2").arg(port).arg(m_tcpServer.errorString());
    }
    return listens;
}

void HostedServer::stop()
{
    // Out of the list first: each of them may be gone before its close() returns.
    for (const QList<HostedClient *> clients = std::exchange(m_clients, {});
         HostedClient *client : clients) {
        client->close();
    }
    m_tcpServer.close();
    Q_EMIT clientsChanged(0);
}

void HostedServer::takeConnections()
{
    while (QTcpSocket *socket = m_tcpServer.nextPendingConnection()) {
        // However many programs come, OBS can still open its recording.
        if (platform::isNearlyTheLast(socket->socketDescriptor())) {
            delete socket;
            continue;
        }
        auto *client = new HostedClient(socket, m_timing, this);
        m_clients.append(client);
        connect(client, &HostedClient::lineReceived, this,
                [this, client](const QByteArray &line) { handleLine(client, line); });
        connect(client, &HostedClient::disconnected, this,
                [this, client] { removeClient(client); });
        client->send(snapshot());
        Q_EMIT clientsChanged(clientCount());
    }
}

void HostedServer::removeClient(HostedClient *client)
{
    client->deleteLater();
    if (m_clients.removeOne(client)) {
        Q_EMIT clientsChanged(clientCount());
    }
}

void HostedServer::broadcast()
{
    if (m_clients.isEmpty()) {
        return;
    }
    const QByteArray bytes = snapshot();
    for (const QList<HostedClient *> clients = m_clients; HostedClient *client : clients) {
        client->send(bytes);
    }
}

QJsonObject HostedServer::failure(const QString &error)
{
    return {{u"ok"_s, false}, {u"error"_s, error}};
}

QByteArray HostedServer::snapshot() const
{
    return m_live->toCompactJson().append('\n');
}

void HostedServer::sendJson(HostedClient *client, const QJsonObject &object)
{
    client->send(jsonLine(object));
}

void HostedServer::handleLine(HostedClient *client, const QByteArray &line)
{
    const std::optional<HostedRequest> request = parseHostedRequest(line);
    if (!request) {
        sendJson(client, failure(u"invalid_json"_s));
    } else if (request->op == "get"_L1) {
        client->send(snapshot());
    } else {
        sendJson(client, reply(*request));
    }
}

QJsonObject HostedServer::reply(const HostedRequest &request) const
{
    if (!m_commandHandler) {
        return failure(u"unavailable"_s);
    }
    QJsonObject result = m_commandHandler(request.op, request.body);
    const QLatin1StringView ok = "ok"_L1;
    if (!result.contains(ok)) {
        result.insert(ok, true);
    }
    result.insert("op"_L1, request.op);
    return result;
}

} // namespace tallyforge
