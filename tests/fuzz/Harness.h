// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QTcpSocket>

#include <cstdlib>

namespace tallyforge::fuzz {

inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

inline QByteArray bytesOf(const uint8_t *data, size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

/// Reads an input as a row of steps: what, how many bytes, the bytes.
template <typename Step> void forEachStep(const QByteArray &input, Step step)
{
    for (qsizetype at = 0; at + 2 <= input.size();) {
        const auto length = qsizetype(static_cast<unsigned char>(input[at + 1]));
        step(static_cast<unsigned char>(input[at]), input.mid(at + 2, length));
        at += 2 + length;
    }
}

/// A socket whose network is the fuzzer.
class FakeSocket final : public QTcpSocket
{
public:
    using QTcpSocket::QTcpSocket;

    void connectToHost(const QString &host, quint16 port, OpenMode mode, NetworkLayerProtocol) override
    {
        require(!host.isEmpty() && port != 0);
        setOpenMode(mode | Unbuffered);
        setSocketState(ConnectingState);
    }
    void disconnectFromHost() override { setSocketState(UnconnectedState); }
    [[nodiscard]] qint64 bytesAvailable() const override { return m_incoming.size(); }

    void comeUp()
    {
        if (state() == ConnectingState) {
            setSocketState(ConnectedState);
            setPeerPort(1);
            Q_EMIT connected();
        }
    }
    void deliver(const QByteArray &bytes)
    {
        if (state() == ConnectedState) {
            m_incoming += bytes;
            Q_EMIT readyRead();
        }
    }
    void end(bool error)
    {
        if (state() != UnconnectedState) {
            const bool wasUp = state() == ConnectedState;
            if (error || !wasUp) {
                Q_EMIT errorOccurred(ConnectionRefusedError);
            }
            setSocketState(UnconnectedState);
            if (wasUp) {
                Q_EMIT disconnected();
            }
        }
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const QByteArray bytes = m_incoming.left(size);
        std::copy(bytes.begin(), bytes.end(), data);
        m_incoming.remove(0, bytes.size());
        return bytes.size();
    }
    qint64 writeData(const char *, qint64 size) override { return state() == ConnectedState ? size : -1; }

private:
    QByteArray m_incoming;
};

} // namespace tallyforge::fuzz
