// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QtTypes>

namespace tallyforge::platform {

/// A connected TCP socket of the system that never blocks. Owns its descriptor.
class StreamSocket final
{
public:
    /// Takes the descriptor of a connected socket over.
    explicit StreamSocket(qintptr descriptor);
    ~StreamSocket();
    Q_DISABLE_COPY_MOVE(StreamSocket)

    /// For notices of the event loop; -1 after close().
    [[nodiscard]] qintptr descriptor() const { return m_descriptor; }
    /// Has the system send each write at once instead of waiting for more.
    void setLowDelay();

    /// Bytes that have come, size at most; none when nothing is there or the connection has ended.
    [[nodiscard]] QByteArray receive(qsizetype size);
    /// Hands bytes over with one call to the system. Returns how many it took, 0 when it has no
    /// room.
    qsizetype send(QByteArrayView bytes);

    /// receive() has found the peer's end of the connection.
    [[nodiscard]] bool isEnded() const { return m_ended; }
    /// receive() or send() has found the connection broken.
    [[nodiscard]] bool isBroken() const { return m_broken; }

    void close();

private:
    int m_descriptor;
    bool m_ended = false;
    bool m_broken = false;
};

} // namespace tallyforge::platform
