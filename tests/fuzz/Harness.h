// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QTcpSocket>

#include <cstdlib>
#include <deque>
#include <utility>

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
        const bool wasUp = state() == ConnectedState;
        if (error || state() == ConnectingState) {
            Q_EMIT errorOccurred(ConnectionRefusedError);
        }
        setSocketState(UnconnectedState);
        if (wasUp) {
            Q_EMIT disconnected();
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

/// An input played as steps. One whose upper bit is set waits until a slot calls runPutOff().
class Scenario
{
public:
    Scenario() = default;
    virtual ~Scenario() = default;
    Scenario(const Scenario &) = delete;
    Scenario &operator=(const Scenario &) = delete;

    void play(const QByteArray &input)
    {
        forEachStep(input, [this](unsigned char what, const QByteArray &bytes) {
            if ((what & 0x80) != 0) {
                m_putOff.emplace_back(what & 0x7f, bytes);
            } else {
                run(what, bytes);
                afterStep(what, bytes);
            }
        });
        m_putOff.clear();
    }

protected:
    virtual void run(unsigned char what, const QByteArray &bytes) = 0;
    virtual void afterStep(unsigned char, const QByteArray &) {}

    void runPutOff()
    {
        if (!m_putOff.empty()) {
            const auto [what, bytes] = m_putOff.front();
            m_putOff.pop_front();
            run(what, bytes);
        }
    }

    QTcpSocket *makeSocket(QObject *parent)
    {
        m_sockets.append(new FakeSocket(parent));
        return m_sockets.last();
    }
    /// Something happens to the socket that the first byte chooses.
    void network(unsigned what, const QByteArray &bytes)
    {
        m_sockets.removeAll(nullptr);
        if (m_sockets.isEmpty() || bytes.isEmpty()) {
            return;
        }
        FakeSocket *const socket = m_sockets[static_cast<unsigned char>(bytes[0]) % m_sockets.size()];
        switch (what % 3) {
        case 0:
            socket->end(bytes.size() > 1);
            break;
        case 1:
            socket->deliver(bytes.repeated(10));
            break;
        default:
            socket->comeUp();
            break;
        }
    }

private:
    QList<QPointer<FakeSocket>> m_sockets;
    std::deque<std::pair<unsigned char, QByteArray>> m_putOff;
};

} // namespace tallyforge::fuzz
