// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/StreamRelay.h"

#include "device/usb/StreamMessage.h"

#include <QJsonObject>
#include <QTcpSocket>
#include <QtEndian>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr qsizetype maxReason = 32;
constexpr qsizetype maxPending = 65536;
constexpr qint64 maxPiece = 512;
constexpr quint64 maxCredit = 0x1000000;
// Bytes that a far end may have sent beyond the device's credit; past that, TCP makes it wait.
constexpr qint64 readAhead = 65536;

} // namespace

StreamRelay::StreamRelay(QObject *parent)
    : QObject(parent)
{
}

StreamRelayStatus StreamRelay::status() const
{
    const auto active = std::count_if(m_streams.cbegin(), m_streams.cend(),
                                      [](const Stream &stream) { return stream.connected; });
    return {m_destinationNames, static_cast<int>(active), m_bytesFromDevice, m_bytesToDevice,
            m_lastError};
}

void StreamRelay::setDestinations(const QJsonObject &table)
{
    // Replaced before the streams end, whose end somebody may hear of and open others.
    m_destinations.clear();
    m_destinationNames.clear();
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        const QJsonObject value = entry.value().toObject();
        const QString host = value.value("host"_L1).toString();
        const int port = value.value("port"_L1).toInt(0);
        if (!host.isEmpty() && !host.contains(u' ') && port > 0 && port <= 65535) {
            m_destinations.insert(entry.key(), {host, port});
            m_destinationNames.append(entry.key());
        }
    }
    reset();
    Q_EMIT statusChanged();
}

void StreamRelay::setEnabled(bool enabled)
{
    if (m_enabled == enabled) {
        return;
    }
    m_enabled = enabled;
    if (!enabled) {
        reset();
    }
}

void StreamRelay::reset()
{
    // Those of now: a slot that opens another one meanwhile keeps it.
    const QHash<unsigned char, Stream> ending = m_streams;
    for (auto entry = ending.begin(); entry != ending.end(); ++entry) {
        if (find(entry.key(), entry->socket) != nullptr) {
            closeStream(entry.key(), false);
        }
    }
    if (!m_lastError.isEmpty()) {
        m_lastError.clear();
        Q_EMIT statusChanged();
    }
}

void StreamRelay::fromDevice(const QByteArray &message)
{
    const std::optional<stream::Message> read = stream::decode(message);
    if (!read) {
        return;
    }
    switch (read->type) {
    case stream::Open:
        if (read->id != 0 && !read->payload.isEmpty()) {
            open(read->id, QString::fromUtf8(read->payload));
        }
        break;
    case stream::Data:
        takeData(read->id, read->payload);
        break;
    case stream::Close:
        closeStream(read->id, false);
        break;
    case stream::Credit:
        takeCredit(read->id, read->payload);
        break;
    default:
        break;
    }
}

void StreamRelay::open(unsigned char id, const QString &name)
{
    closeStream(id, false);
    if (m_streams.contains(id)) {
        return; // a slot has opened it anew: that is the later word
    }
    if (!m_enabled) {
        fail(id, u"disabled"_s);
    } else if (const auto found = m_destinations.constFind(name); found == m_destinations.cend()) {
        fail(id, u"unknown_stream"_s);
    } else {
        dial(id, *found);
    }
}

void StreamRelay::dial(unsigned char id, const Destination &destination)
{
    QTcpSocket *const socket = socketFactory ? socketFactory(this) : new QTcpSocket(this);
    if (socket == nullptr) {
        fail(id, u"dial_failed"_s);
        return;
    }
    Stream stream;
    stream.socket = socket;
    m_streams.insert(id, stream);
    connect(socket, &QTcpSocket::connected, this, [this, id, socket] { onConnected(id, socket); });
    connect(socket, &QTcpSocket::readyRead, this, [this, id, socket] {
        if (find(id, socket) != nullptr) {
            pump(id);
        }
    });
    connect(socket, &QTcpSocket::errorOccurred, this, [this, id, socket] { onError(id, socket); });
    connect(socket, &QTcpSocket::disconnected, this,
            [this, id, socket] { onDisconnected(id, socket); });
    socket->setReadBufferSize(readAhead);
    socket->connectToHost(destination.host, static_cast<quint16>(destination.port),
                          QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
}

StreamRelay::Stream *StreamRelay::find(unsigned char id)
{
    const auto found = m_streams.find(id);
    return found == m_streams.end() ? nullptr : &*found;
}

// The stream while it still has this socket: ids are used again.
StreamRelay::Stream *StreamRelay::find(unsigned char id, const QTcpSocket *socket)
{
    const auto found = m_streams.find(id);
    return found != m_streams.end() && found->socket == socket ? &*found : nullptr;
}

void StreamRelay::onConnected(unsigned char id, const QTcpSocket *socket)
{
    Stream *const stream = find(id, socket);
    // A peer that has hung up by now has no port any more; the end of the socket follows.
    if (stream == nullptr || socket->peerPort() == 0) {
        return;
    }
    stream->connected = true;
    m_lastError.clear();
    // Before the device hears of it, so that its next data goes behind its earlier data.
    if (const QByteArray pending = std::exchange(stream->pending, {}); !pending.isEmpty()) {
        stream->socket->write(pending);
    }
    Q_EMIT toDevice(stream::encode(id, stream::Opened, {}));
    Q_EMIT statusChanged();
    pump(id);
}

void StreamRelay::onError(unsigned char id, const QTcpSocket *socket)
{
    const Stream *const stream = find(id, socket);
    if (stream == nullptr || stream->connected) {
        return; // a connection's end comes as disconnected()
    }
    m_lastError = socket->errorString();
    closeStream(id, false);
    // Not when a slot has opened the id anew: the device would take it for that stream's failure.
    if (!m_streams.contains(id)) {
        sendFail(id, u"dial_failed"_s);
        Q_EMIT statusChanged();
    }
}

void StreamRelay::onDisconnected(unsigned char id, const QTcpSocket *socket)
{
    if (Stream *const stream = find(id, socket)) {
        stream->remoteClosed = true;
        pump(id);
    }
}

void StreamRelay::takeData(unsigned char id, const QByteArray &bytes)
{
    Stream *const stream = find(id);
    if (stream == nullptr || bytes.isEmpty()) {
        return;
    }
    m_bytesFromDevice += bytes.size();
    if (stream->connected && stream->socket != nullptr) {
        stream->socket->write(bytes);
    } else if (stream->pending.size() + bytes.size() <= maxPending) {
        stream->pending.append(bytes);
    }
}

void StreamRelay::takeCredit(unsigned char id, const QByteArray &payload)
{
    Stream *const stream = find(id);
    if (stream == nullptr || payload.size() != sizeof(quint32)) {
        return;
    }
    const quint64 sum = quint64(stream->credit) + qFromLittleEndian<quint32>(payload.constData());
    stream->credit = static_cast<quint32>(std::min(sum, maxCredit));
    pump(id);
}

// Sends the device as much as its credit allows. Slots may call this again; only the outermost call
// for a stream sends, so that the pieces leave in order.
void StreamRelay::pump(unsigned char id)
{
    Stream *stream = find(id);
    if (stream == nullptr || !stream->connected || stream->socket == nullptr || stream->pumping) {
        return;
    }
    const QPointer<QTcpSocket> socket = stream->socket;
    stream->pumping = true;
    while (stream->credit != 0 && socket->bytesAvailable() > 0) {
        const qint64 size = std::min({socket->bytesAvailable(), qint64(stream->credit), maxPiece});
        const QByteArray bytes = socket->read(size);
        if (bytes.isEmpty()) {
            break;
        }
        stream->credit -= static_cast<quint32>(bytes.size());
        m_bytesToDevice += bytes.size();
        Q_EMIT toDevice(stream::encode(id, stream::Data, bytes));
        stream = find(id, socket);
        if (stream == nullptr || socket == nullptr) {
            return;
        }
    }
    stream->pumping = false;
    if (stream->remoteClosed && socket->bytesAvailable() == 0) {
        closeStream(id, true);
    }
}

void StreamRelay::closeStream(unsigned char id, bool notifyDevice)
{
    const auto found = m_streams.constFind(id);
    if (found == m_streams.cend()) {
        return;
    }
    const QPointer<QTcpSocket> socket = found->socket;
    m_streams.erase(found);
    if (socket != nullptr) {
        socket->disconnect(this);
        socket->flush(); // the device may end a stream right behind the data
        socket->abort();
        socket->deleteLater();
    }
    if (notifyDevice) {
        Q_EMIT toDevice(stream::encode(id, stream::Close, {}));
    }
    Q_EMIT statusChanged();
}

void StreamRelay::fail(unsigned char id, const QString &reason)
{
    m_lastError = reason;
    sendFail(id, reason);
    Q_EMIT statusChanged();
}

void StreamRelay::sendFail(unsigned char id, const QString &reason)
{
    Q_EMIT toDevice(stream::encode(id, stream::Fail, reason.toUtf8().left(maxReason)));
}

} // namespace tallyforge
