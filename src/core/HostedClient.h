// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"

#include <QObject>

#include <chrono>

class QTcpSocket;

namespace tallyforge {

/// One program's connection to the hosted server: lines in, bytes out. Main thread.
class HostedClient final : public QObject
{
    Q_OBJECT

public:
    struct Timing
    {
        /// How long a connection that is to end may still take to carry what is queued.
        std::chrono::milliseconds drain{5000};
        /// How long the server accepts nobody after the system has refused a connection.
        std::chrono::milliseconds rest{1000};
    };

    /// Takes the connected socket over.
    HostedClient(QTcpSocket *socket, const Timing &timing, QObject *parent);

    /// Sends at once what the system takes, and queues the rest, however much it becomes, until the
    /// program reads. Does nothing after close().
    void send(const QByteArray &bytes);

    /// Ends the connection once all that is queued has gone out; no line comes any more.
    void close();

Q_SIGNALS:
    /// A line that isn't empty, without white space around it.
    void lineReceived(const QByteArray &line);
    /// The connection is gone. The client may be destroyed later, but not in this signal's slots.
    void disconnected();

private:
    void readLines();

    const Timing m_timing;
    QTcpSocket *const m_socket; // child
    LineBuffer m_buffer;
    bool m_closing = false;
};

} // namespace tallyforge
