// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/SlicedWork.h"
#include "core/HostedClient.h"
#include "core/HostedListener.h"
#include "core/HostedRequest.h"

#include <QJsonObject>
#include <QList>
#include <QObject>

#include <functional>

namespace tallyforge {

class LiveData;

/// Offers the live data to other programs as lines of JSON on a TCP port (docs/tcp-protocol.md):
/// pushes a snapshot to each when it comes and whenever the data change, and answers requests. It
/// knows "get" alone; every other request goes to the command handler. Whatever programs do, it
/// holds the event loop for a few milliseconds at a time, and serves them in turn. Main thread.
class HostedServer final : public QObject
{
    Q_OBJECT

public:
    /// Answers a request. Of the keys of its result, "op" is set by the server, and "ok" is true
    /// unless the result says otherwise.
    using CommandHandler =
        std::function<QJsonObject(const QString &op, const QJsonObject &request)>;

    /// live isn't owned and must outlive the server.
    explicit HostedServer(LiveData *live, QObject *parent = nullptr);
    ~HostedServer() override;

    /// Starts over on another port, and for this computer alone unless the network is allowed. On
    /// failure the server is stopped and error, unless null, holds a sentence for the log.
    bool start(quint16 port, bool allowNetwork, QString *error);
    /// Ends all connections and listens no more.
    void stop();

    /// The reply to a request that can't be met.
    [[nodiscard]] static QJsonObject failure(const QString &error);

    /// The whole reply to any request but "get".
    [[nodiscard]] QJsonObject reply(const HostedRequest &request) const;

    void setCommandHandler(const CommandHandler &handler) { m_commandHandler = handler; }

    [[nodiscard]] bool isListening() const { return m_tcpServer.isListening(); }
    /// The port that is listened on, 0 for none.
    [[nodiscard]] quint16 port() const { return m_tcpServer.serverPort(); }
    [[nodiscard]] int clientCount() const { return int(m_clients.size()); }

Q_SIGNALS:
    /// A program has come or gone, or the server has been stopped.
    void clientsChanged(int count);

private:
    bool step();
    bool takeConnection();
    bool sendQueued();
    bool serveLine();
    void removeClient(HostedClient *client);
    void broadcast();
    void send(HostedClient *client, const QByteArray &bytes);
    void sendJson(HostedClient *client, const QJsonObject &object);
    void handleLine(HostedClient *client, const QByteArray &line);
    [[nodiscard]] QByteArray snapshot() const;

    LiveData *const m_live;
    HostedListener m_tcpServer;
    QList<HostedClient *> m_clients; // children, in the order of their coming
    QList<HostedClient *> m_unsent;  // those with queued bytes
    QList<HostedClient *> m_asking;  // those with lines that wait, the next to be served first
    SlicedWork m_work{[this] { return step(); }};
    CommandHandler m_commandHandler;
};

} // namespace tallyforge
