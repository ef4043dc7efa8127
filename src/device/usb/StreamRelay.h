// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

class QJsonObject;
class QTcpSocket;

namespace tallyforge {

/// The state of a StreamRelay, for display.
struct StreamRelayStatus
{
    QStringList destinations; ///< the names that the device may open
    int activeStreams = 0;    ///< connected ones
    qint64 bytesFromDevice = 0;
    qint64 bytesToDevice = 0;
    QString lastError; ///< empty once a stream has connected after it
};

/// The host's end of the stream tunnel: opens TCP connections for a device that has no internet
/// access of its own, up to 255 at once. The device opens one by a name out of a table that came
/// with its greeting; nothing else is ever dialled, and nothing without being asked. Bytes
/// from the network wait until the device has given credit for them.
///
/// A slot of either signal may call any operation, and delete nothing. Main thread.
class StreamRelay final : public QObject
{
    Q_OBJECT

public:
    explicit StreamRelay(QObject *parent = nullptr);

    /// Replaces the table: each key a name, each value an object with "host" and "port". Entries
    /// that nobody could dial are left out. Ends all streams.
    void setDestinations(const QJsonObject &table);
    /// Handles one message; anything that isn't one is ignored.
    void fromDevice(const QByteArray &message);
    /// Relays only while enabled, which it is at the start. Disabling ends all streams.
    void setEnabled(bool enabled);
    /// Ends all streams without telling the device, and forgets the last error.
    void reset();

    [[nodiscard]] StreamRelayStatus status() const;

    /// Makes the sockets; when empty they are plain ones.
    std::function<QTcpSocket *(QObject *parent)> socketFactory;

Q_SIGNALS:
    void toDevice(const QByteArray &message);
    void statusChanged();

private:
    struct Destination
    {
        QString host;
        int port = 0;
    };

    struct Stream
    {
        QPointer<QTcpSocket> socket; // child of the relay
        bool connected = false;
        bool remoteClosed = false; // the network side has gone
        bool pumping = false;
        quint32 credit = 0; // bytes that may still go to the device
        QByteArray pending; // from the device, while dialling
    };

    void open(unsigned char id, const QString &name);
    void dial(unsigned char id, const Destination &destination);
    void takeData(unsigned char id, const QByteArray &bytes);
    void takeCredit(unsigned char id, const QByteArray &payload);
    void pump(unsigned char id);
    void fail(unsigned char id, const QString &reason);
    void sendFail(unsigned char id, const QString &reason);
    void closeStream(unsigned char id, bool notifyDevice);

    void onConnected(unsigned char id, const QTcpSocket *socket);
    void onError(unsigned char id, const QTcpSocket *socket);
    void onDisconnected(unsigned char id, const QTcpSocket *socket);
    [[nodiscard]] Stream *find(unsigned char id);
    [[nodiscard]] Stream *find(unsigned char id, const QTcpSocket *socket);

    QHash<QString, Destination> m_destinations;
    QStringList m_destinationNames;
    // An entry's address holds until the next signal only: a slot may open and close streams.
    QHash<unsigned char, Stream> m_streams;
    qint64 m_bytesFromDevice = 0;
    qint64 m_bytesToDevice = 0;
    QString m_lastError;
    bool m_enabled = true;
};

} // namespace tallyforge
