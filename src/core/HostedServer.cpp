// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedServer.h"

#include "common/JsonText.h"
#include "core/HostedRequest.h"
#include "core/LiveData.h"
#include "platform/KeepAccepting.h"
#include "platform/OpenFiles.h"
#include "platform/StreamSocket.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

HostedServer::HostedServer(LiveData *live, QObject *parent)
    : QObject(parent)
    , m_live(live)
{
    connect(&m_tcpServer, &HostedListener::arrived, &m_work, &SlicedWork::go);
    platform::keepAccepting(&m_tcpServer);
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
    m_tcpServer.stop();
    Q_EMIT clientsChanged(0);
}

// One of each, so that no kind of work waits for the end of another.
bool HostedServer::step()
{
    const bool taken = takeConnection();
    const bool sent = sendQueued();
    const bool served = serveLine();
    return taken || sent || served;
}

bool HostedServer::takeConnection()
{
    const std::optional<qintptr> descriptor = m_tcpServer.take();
    if (!descriptor) {
        return false;
    }
    // However many programs come, OBS can still open its recording.
    if (platform::isNearlyTheLast(*descriptor)) {
        platform::StreamSocket(*descriptor).close();
        return true;
    }
    auto *client = new HostedClient(*descriptor, this);
    m_clients.append(client);
    connect(client, &HostedClient::readable, this, [this, client] {
        m_asking.append(client);
        m_work.go();
    });
    connect(client, &HostedClient::writable, this, [this, client] {
        m_unsent.append(client);
        m_work.go();
    });
    connect(client, &HostedClient::disconnected, this, [this, client] { removeClient(client); });
    send(client, snapshot());
    Q_EMIT clientsChanged(clientCount());
    return true;
}

bool HostedServer::sendQueued()
{
    if (m_unsent.isEmpty()) {
        return false;
    }
    HostedClient *client = m_unsent.takeFirst();
    if (client->flush()) {
        m_unsent.append(client);
    }
    return true;
}

bool HostedServer::serveLine()
{
    if (m_asking.isEmpty()) {
        return false;
    }
    HostedClient *client = m_asking.takeFirst();
    if (const std::optional<QByteArray> line = client->takeLine()) {
        m_asking.append(client);
        if (!line->isEmpty()) {
            handleLine(client, *line);
        }
    }
    return true;
}

void HostedServer::removeClient(HostedClient *client)
{
    client->deleteLater();
    m_unsent.removeAll(client);
    m_asking.removeAll(client);
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
    for (HostedClient *client : std::as_const(m_clients)) {
        if (client->queue(bytes)) {
            m_unsent.append(client);
        }
    }
    m_work.go();
}

QJsonObject HostedServer::failure(const QString &error)
{
    return {{u"ok"_s, false}, {u"error"_s, error}};
}

QByteArray HostedServer::snapshot() const
{
    return m_live->toCompactJson().append('\n');
}

void HostedServer::send(HostedClient *client, const QByteArray &bytes)
{
    if (client->queue(bytes)) {
        m_unsent.append(client);
        m_work.go();
    }
}

void HostedServer::sendJson(HostedClient *client, const QJsonObject &object)
{
    send(client, jsonLine(object));
}

void HostedServer::handleLine(HostedClient *client, const QByteArray &line)
{
    const std::optional<HostedRequest> request = parseHostedRequest(line);
    if (!request) {
        sendJson(client, failure(u"invalid_json"_s));
    } else if (request->op == "get"_L1) {
        send(client, snapshot());
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
