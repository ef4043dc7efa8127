// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/StreamMessage.h"
#include "device/usb/StreamRelay.h"
#include "tests/support/TcpPeer.h"

#include <QJsonObject>
#include <QTest>
#include <QtEndian>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

QByteArray credit(unsigned char id, quint32 bytes)
{
    QByteArray payload(4, '\0');
    qToLittleEndian(bytes, payload.data());
    return stream::encode(id, stream::Credit, payload);
}

QJsonObject to(const QString &host, const QJsonValue &port)
{
    return {{u"host"_s, host}, {u"port"_s, port}};
}

// The relay with two destinations, "a" and "b", and a record of what it sends: data as one text,
// the rest as "<id> <type> <payload>".
struct Recorded
{
    Recorded()
    {
        relay.setDestinations(table());
        relay.socketFactory = [this](QObject *parent) { return socket = new QTcpSocket(parent); };
        QObject::connect(&relay, &StreamRelay::toDevice, &relay, [this](const QByteArray &bytes) {
            const stream::Message message = stream::decode(bytes).value_or(stream::Message());
            if (message.type == stream::Data) {
                largest = std::max(largest, message.payload.size());
                data += message.payload;
            } else {
                sent.append(QByteArray::number(message.id) + ' ' + QByteArray::number(message.type) + ' ' +
                            message.payload);
            }
        });
    }
    [[nodiscard]] QJsonObject table() const
    {
        return {{u"a"_s, to(u"127.0.0.1"_s, a.port())}, {u"b"_s, to(u"127.0.0.1"_s, b.port())}};
    }
    void send(unsigned char id, stream::Type type, const QByteArray &payload = {})
    {
        relay.fromDevice(stream::encode(id, type, payload));
    }
    // Opens stream 1 to "a".
    bool connected()
    {
        send(1, stream::Open, "a");
        return QTest::qWaitFor([this] { return a.hasClient() && sent.contains("1 2 "); });
    }

    TcpPeer a, b;
    StreamRelay relay;
    QPointer<QTcpSocket> socket; // the newest
    QByteArrayList sent;
    QByteArray data;
    qsizetype largest = 0;
};

using Action = std::function<void(Recorded &)>;

} // namespace

class TestStreamRelay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void destinations()
    {
        StreamRelay relay;
        relay.setDestinations({{u"highest port"_s, to(u"h"_s, 65535)},
                               {u"lowest port"_s, to(u"h"_s, 1)},
                               {u"not: port 0"_s, to(u"h"_s, 0)},
                               {u"not: port 65536"_s, to(u"h"_s, 65536)},
                               {u"not: port below 0"_s, to(u"h"_s, -1)},
                               {u"not: port as text"_s, to(u"h"_s, u"443"_s)},
                               {u"not: no port"_s, QJsonObject{{u"host"_s, u"h"_s}}},
                               {u"not: no host"_s, to({}, 443)},
                               {u"not: host with a space"_s, to(u"h .x"_s, 443)},
                               {u"not: no object"_s, u"h:443"_s}});
        QCOMPARE(relay.status().destinations, (QStringList{u"highest port"_s, u"lowest port"_s}));
        relay.setDestinations({});
        QCOMPARE(relay.status().destinations, QStringList());
    }

    // Messages that mustn't dial, and the reason that the device is told, if any.
    void refusals_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QString>("reason");
        QTest::newRow("id 0") << QByteArray("\0\1a", 3) << QString();
        QTest::newRow("no name") << QByteArray("\1\1") << QString();
        QTest::newRow("too short") << QByteArray("\1") << QString();
        QTest::newRow("type unknown") << QByteArray("\1\11a") << QString();
        QTest::newRow("data for no stream") << QByteArray("\1\4a") << QString();
        QTest::newRow("credit for no stream") << credit(1, 1) << QString();
        QTest::newRow("name unknown") << QByteArray("\1\1host") << u"unknown_stream"_s;
        QTest::newRow("disabled") << QByteArray("\1\1a") << u"disabled"_s;
    }
    void refusals()
    {
        QFETCH(QByteArray, message);
        QFETCH(QString, reason);
        Recorded r;
        r.relay.setEnabled(reason != u"disabled"_s);
        r.relay.fromDevice(message);
        QVERIFY(!r.socket);
        QCOMPARE(r.sent, reason.isEmpty() ? QByteArrayList() : QByteArrayList{"1 3 " + reason.toUtf8()});
        QCOMPARE(r.relay.status().lastError, reason);
        QCOMPARE(r.relay.status().bytesFromDevice, 0);
        r.relay.reset();
        QCOMPARE(r.relay.status().lastError, QString());
    }

    void dialFails()
    {
        Recorded r;
        r.a.close();
        r.send(1, stream::Open, "a");
        QTRY_COMPARE(r.sent, QByteArrayList{"1 3 dial_failed"});
        QVERIFY(!r.relay.status().lastError.isEmpty());
        QVERIFY(r.relay.status().lastError != u"dial_failed"_s);
        r.send(1, stream::Open, "b");
        QTRY_COMPARE(r.sent.value(1), "1 2 ");
        QCOMPARE(r.relay.status().lastError, QString());
        QCOMPARE(r.relay.status().activeStreams, 1);
    }

    void creditHoldsTheNetworkBack()
    {
        Recorded r;
        QVERIFY(r.connected());
        const QByteArray download = QByteArray("0123456789abcdef").repeated(20000); // larger than any read-ahead
        r.a.client->write(download);
        r.a.client->disconnectFromHost();
        QTRY_VERIFY(r.a.client->bytesToWrite() == 0 && r.socket->bytesAvailable() >= 65536);
        QCOMPARE(r.socket->bytesAvailable(), 65536); // the rest is left to TCP
        r.send(1, stream::Credit, QByteArray(3, '\1'));
        r.send(1, stream::Credit, QByteArray(5, '\1'));
        QCOMPARE(r.data, QByteArray());
        r.relay.fromDevice(credit(1, 513));
        QTRY_COMPARE(r.data, download.left(513));
        QCOMPARE(r.largest, 512);
        r.relay.fromDevice(credit(1, 319486)); // leaves one byte
        QTRY_COMPARE(r.data.size(), 319999);
        QTRY_COMPARE(r.socket->state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(r.sent, QByteArrayList{"1 2 "});
        r.relay.fromDevice(credit(1, 1));
        QCOMPARE(r.data, download);
        QCOMPARE(r.sent.value(1), "1 5 ");
        QCOMPARE(r.relay.status().bytesToDevice, download.size());
        QCOMPARE(r.relay.status().activeStreams, 0);
    }

    void creditIsCapped()
    {
        constexpr int most = 16777216;
        for (const quint32 rest : {1U, 2U, 0xffffffffU}) { // the last would wrap a 32-bit sum
            Recorded r;
            QVERIFY(r.connected());
            r.relay.fromDevice(credit(1, most - 1));
            r.relay.fromDevice(credit(1, rest));
            r.a.client->write(QByteArray(most + 1, 'x'));
            r.a.client->disconnectFromHost();
            QTRY_COMPARE_WITH_TIMEOUT(r.socket->state(), QAbstractSocket::UnconnectedState, 30000);
            QCOMPARE(r.data.size(), most);
            r.relay.fromDevice(credit(1, 1));
            QCOMPARE(r.data.size(), most + 1);
            QCOMPARE(r.sent, (QByteArrayList{"1 2 ", "1 5 "}));
        }
    }

    void dataBeforeTheConnection_data()
    {
        QTest::addColumn<QList<int>>("pieces"); // their sizes; below 0 when the piece is lost
        QTest::newRow("as much as is held") << QList{1, 2, 65533};
        QTest::newRow("one byte more") << QList{65536, -1};
        QTest::newRow("too large at once") << QList{-65537, 1};
        QTest::newRow("a smaller one after the loss") << QList{65000, -537, 536};
    }
    void dataBeforeTheConnection()
    {
        QFETCH(QList<int>, pieces);
        Recorded r;
        r.send(1, stream::Open, "a");
        QByteArray expected;
        qint64 sum = 0;
        for (const int size : std::as_const(pieces)) {
            const QByteArray piece(std::abs(size), static_cast<char>(size));
            r.send(1, stream::Data, piece);
            expected += size > 0 ? piece : QByteArray();
            sum += piece.size();
        }
        // The device's answer to the opened message comes after the data that waited.
        connect(&r.relay, &StreamRelay::toDevice, this, [&] { r.send(1, stream::Data, "end"); });
        QTRY_VERIFY(r.a.received.endsWith("end"));
        QVERIFY(r.a.received == expected + "end");
        QCOMPARE(r.relay.status().bytesFromDevice, sum + 3);
    }

    void newOpenWins()
    {
        Recorded r;
        QVERIFY(r.connected());
        r.relay.fromDevice(credit(1, 100));
        r.send(1, stream::Open, "b");
        r.a.client->write("late");
        QTRY_COMPARE(r.sent, (QByteArrayList{"1 2 ", "1 2 "}));
        QTRY_VERIFY(!r.a.hasClient() && r.b.hasClient());
        r.b.client->write("b"); // without credit: the old stream's isn't this one's
        QTRY_COMPARE(r.socket->bytesAvailable(), 1);
        r.relay.fromDevice(credit(1, 1));
        QCOMPARE(r.data, "b");
        QCOMPARE(r.relay.status().activeStreams, 1);
    }

    // All that ends streams without a word to the device, one connected and one dialling, done by a
    // slot in the middle of a read.
    void endings_data()
    {
        QTest::addColumn<Action>("end");
        QTest::addColumn<QByteArray>("reopened");
        const auto row = [](const char *name, const Action &end, const char *reopened) {
            QTest::newRow(name) << end << QByteArray(reopened);
        };
        row("close", [](Recorded &r) { r.send(1, stream::Close), r.send(2, stream::Close); }, "3 2 ");
        row("reset", [](Recorded &r) { r.relay.reset(); }, "3 2 ");
        row("disabled", [](Recorded &r) { r.relay.setEnabled(false); }, "3 3 disabled");
        row("empty table", [](Recorded &r) { r.relay.setDestinations({}); }, "3 3 unknown_stream");
        row("the same table", [](Recorded &r) { r.relay.setDestinations(r.table()); }, "3 2 ");
    }
    void endings()
    {
        QFETCH(Action, end);
        QFETCH(QByteArray, reopened);
        Recorded r;
        QVERIFY(r.connected());
        connect(&r.relay, &StreamRelay::toDevice, this, [&, ended = false]() mutable {
            if (!r.data.isEmpty() && !std::exchange(ended, true)) {
                r.send(2, stream::Open, "b");
                r.send(1, stream::Data, "last");
                end(r);
            }
        });
        r.a.client->write(QByteArray(2000, 'x'));
        r.relay.fromDevice(credit(1, 2000));
        QTRY_VERIFY(!r.data.isEmpty());
        QTRY_VERIFY(!r.a.hasClient() && !r.b.hasClient());
        QCOMPARE(r.a.received, "last"); // reaches the network all the same
        QCOMPARE(r.relay.status().activeStreams, 0);
        r.send(3, stream::Open, "a");
        QTRY_VERIFY(r.sent.contains(reopened));
        QVERIFY(!r.sent.contains("1 5 ") && !r.sent.contains("2 2 "));
        QCOMPARE(r.data.size(), 512);
    }

    // A device's answer from inside the slot neither mixes up the pieces nor loses the stream.
    void slotAnswers()
    {
        Recorded r;
        QVERIFY(r.connected());
        const QByteArray download = QByteArray("0123456789").repeated(3000);
        QByteArray seen;
        connect(&r.relay, &StreamRelay::toDevice, this, [&](const QByteArray &message) {
            r.relay.fromDevice(credit(1, 7));
            seen += message.sliced(2);
        });
        r.a.client->write(download);
        r.a.client->disconnectFromHost();
        r.relay.fromDevice(credit(1, 1));
        QTRY_COMPARE(r.sent.value(1), "1 5 ");
        QCOMPARE(seen, download);
    }

    // The slot that hears of a stream's end opens it anew, and that one stays.
    void slotReopens()
    {
        Recorded r;
        r.a.close();
        connect(
            &r.relay, &StreamRelay::statusChanged, this, [&] { r.send(1, stream::Open, "b"); },
            Qt::SingleShotConnection);
        r.send(1, stream::Open, "a");
        QTRY_VERIFY(r.b.hasClient());
        QTRY_COMPARE(r.sent, QByteArrayList{"1 2 "});
    }
};

QTEST_GUILESS_MAIN(TestStreamRelay)
#include "tst_stream_relay.moc"
