// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"

#include <QByteArrayList>
#include <QObject>

#include <chrono>
#include <optional>

class QTcpSocket;

namespace tallyforge {

/// One program's connection to the hosted server: lines in, bytes out, each when the server has
/// time for them. Main thread.
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

    /// The next line without white space around it, which may be empty; nothing when no whole line
    /// has come. A program that has left is heard to its last line.
    [[nodiscard]] std::optional<QByteArray> takeLine();

    /// Keeps bytes for the next flush(). Does nothing after close().
    void queue(const QByteArray &bytes);
    /// Whether queued bytes wait for flush().
    [[nodiscard]] bool hasQueued() const { return !m_queued.isEmpty(); }
    /// Sends at once all that the system takes, and leaves the rest, however much it becomes, to
    /// the socket until the program reads.
    void flush();

    /// Ends the connection once all that is queued has gone out; no line comes any more.
    void close();

Q_SIGNALS:
    /// Lines may have come: takeLine() is to be called until it gives none.
    void readable();
    /// The connection is gone, and its last line has been taken. The client may be destroyed later,
    /// but not in this signal's slots.
    void disconnected();

private:
    void onReadyRead();
    void onDisconnected();

    const Timing m_timing;
    QTcpSocket *const m_socket; // child
    LineBuffer m_buffer;
    QByteArrayList m_queued;
    bool m_isRead = true; // all lines that had come have been taken
    bool m_closing = false;
    bool m_gone = false;
};

} // namespace tallyforge
