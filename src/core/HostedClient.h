// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/LineBuffer.h"
#include "platform/StreamSocket.h"

#include <QByteArrayList>
#include <QObject>
#include <QSocketNotifier>

#include <optional>

namespace tallyforge {

/// One program's connection to the hosted server: lines in, bytes out. It says when there is work,
/// and does it when the server has time for it, because a thousand programs may come up with some
/// at once. Main thread.
class HostedClient final : public QObject
{
    Q_OBJECT

public:
    /// Takes the descriptor of a connected socket over.
    HostedClient(qintptr descriptor, QObject *parent);

    /// The next line without white space around it, which may be empty; nothing when no whole line
    /// has come. Finds out whether the program has left.
    [[nodiscard]] std::optional<QByteArray> takeLine();

    /// Queues bytes, however many there are by then, until the program reads. True if flush() is to
    /// be called. Does nothing after close().
    bool queue(const QByteArray &bytes);
    /// Hands queued bytes to the system. True if it is to be called again.
    bool flush();

    /// Ends the connection once all that is queued has gone out; no line comes any more.
    void close();

Q_SIGNALS:
    /// takeLine() is to be called until it gives none.
    void readable();
    /// flush() is to be called.
    void writable();
    /// The connection is gone. The client may be destroyed later, but not in this signal's slots.
    void disconnected();

private:
    void onReadable();
    void onWritable();
    void end();

    platform::StreamSocket m_socket;
    QSocketNotifier m_readNotice;
    QSocketNotifier m_writeNotice; // on while the system has no room
    LineBuffer m_buffer;
    bool m_isFresh = false; // nothing has been read since the system gave notice
    QByteArrayList m_queued;
    qsizetype m_sent = 0; // bytes of the first one that is queued
    bool m_closing = false;
    bool m_gone = false;
};

} // namespace tallyforge
