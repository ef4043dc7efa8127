// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/CloudRelay.h"
#include "tests/support/TcpPeer.h"

#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

// The relay, aimed at a peer that it hasn't dialled yet, with a count of its dials.
struct Recorded
{
    Recorded()
    {
        relay.configure(u"127.0.0.1"_s, peer.port());
        relay.socketFactory = [this](QObject *parent) {
            ++dials;
            return socket = new QTcpSocket(parent);
        };
        QObject::connect(&relay, &CloudRelay::toDevice, &relay, [this](const QByteArray &bytes) { data += bytes; });
    }
    bool connected()
    {
        relay.fromDevice("hello");
        return QTest::qWaitFor([this] { return relay.status().connected && peer.received == "hello"; });
    }

    TcpPeer peer;
    CloudRelay relay;
    QPointer<QTcpSocket> socket;
    int dials = 0;
    QByteArray data;
};

using Action = std::function<void(Recorded &)>;

} // namespace

class TestCloudRelay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unusableTargets()
    {
        Recorded r;
        const auto refuses = [&r](const QString &host, int port) {
            r.relay.configure(host, port);
            r.relay.fromDevice("lost");
            const CloudRelayStatus status = r.relay.status();
            return !status.configured && r.dials == 0 && status.bytesToCloud == 0 && status.host == host &&
                   status.port == port;
        };
        QVERIFY(refuses(u"127.0.0.1"_s, 0));
        QVERIFY(refuses(u"127.0.0.1"_s, -1));
        QVERIFY(refuses(u"127.0.0.1"_s, 65537)); // would be cut to port 1
        QVERIFY(refuses({}, 443));
    }

    void relaysBothWays()
    {
        Recorded r;
        r.relay.fromDevice({});
        QCOMPARE(r.dials, 0);
        QVERIFY(r.connected());
        r.relay.fromDevice("more");
        r.peer.client->write("answer");
        QTRY_COMPARE(r.peer.received, "hellomore");
        QTRY_COMPARE(r.data, "answer");
        QCOMPARE(r.relay.status().bytesToCloud, 9);
        QCOMPARE(r.relay.status().bytesFromCloud, 6);
        QCOMPARE(r.dials, 1);
    }

    void bytesBeforeTheConnection_data()
    {
        QTest::addColumn<QList<int>>("pieces"); // their sizes; below 0 when the piece is lost
        QTest::newRow("as much as is held") << QList{1, 2, 262141};
        QTest::newRow("one byte more") << QList{262144, -1};
        QTest::newRow("too large at once") << QList{-262145, 1};
        QTest::newRow("a smaller one after the loss") << QList{262000, -145, 144};
    }
    void bytesBeforeTheConnection()
    {
        QFETCH(QList<int>, pieces);
        Recorded r;
        QByteArray expected;
        for (const int size : std::as_const(pieces)) {
            const QByteArray piece(std::abs(size), static_cast<char>(size));
            r.relay.fromDevice(piece);
            expected += size > 0 ? piece : QByteArray();
        }
        QTRY_VERIFY(r.relay.status().connected);
        r.relay.fromDevice("end");
        QTRY_VERIFY(r.peer.received.endsWith("end"));
        QVERIFY(r.peer.received == expected + "end");
    }

    void redialsOnDemandAfterALoss()
    {
        Recorded r;
        QVERIFY(r.connected());
        r.peer.client->disconnectFromHost();
        QTRY_VERIFY(!r.relay.status().connected && !r.socket);
        QVERIFY(!r.relay.status().lastError.isEmpty());
        QCOMPARE(r.dials, 1);
        r.peer.received.clear();
        QVERIFY(r.connected());
        QCOMPARE(r.dials, 2);
        QCOMPARE(r.relay.status().lastError, QString());
    }

    // All that drops a connection (done by a slot that reads from it) and a dial that failed. Only the next bytes dial
    // again, and nothing of before goes out with them.
    void drops_data()
    {
        QTest::addColumn<Action>("drop");
        const auto row = [](const char *name, const Action &drop) { QTest::newRow(name) << drop; };
        row("configure", [](Recorded &r) { r.relay.configure(u"127.0.0.1"_s, r.peer.port()); });
        row("reset", [](Recorded &r) { r.relay.reset(); });
        row("clear", [](Recorded &r) { r.relay.clearTarget(), r.relay.fromDevice("lost"); });
        row("disable and enable", [](Recorded &r) {
            r.relay.setEnabled(false);
            r.relay.fromDevice("lost");
            r.relay.setEnabled(true);
        });
    }
    void drops()
    {
        QFETCH(Action, drop);
        Recorded r;
        QVERIFY(r.connected());
        connect(
            &r.relay, &CloudRelay::toDevice, this, [&] { r.relay.fromDevice("last"), drop(r); },
            Qt::SingleShotConnection);
        r.peer.client->write("x");
        QTRY_VERIFY(!r.peer.hasClient());
        QCOMPARE(r.peer.received, "hellolast");
        QVERIFY(!r.relay.status().connected);

        const int refusing = std::make_unique<TcpPeer>()->port();
        r.relay.configure(u"127.0.0.1"_s, refusing);
        r.relay.fromDevice("old");
        QTRY_VERIFY(!r.relay.status().lastError.isEmpty());
        r.relay.fromDevice("old");
        QVERIFY(r.socket);
        drop(r);
        QTRY_VERIFY(!r.socket);
        QCOMPARE(r.dials, 2);
        r.relay.configure(u"127.0.0.1"_s, r.peer.port());
        r.peer.received.clear();
        QVERIFY(r.connected());
        QCOMPARE(r.dials, 3);
    }

    void slotSendsAtTheLoss()
    {
        Recorded r;
        QVERIFY(r.connected());
        connect(&r.relay, &CloudRelay::statusChanged, this, [&] {
            if (!r.relay.status().connected) {
                r.relay.fromDevice("again");
            }
        });
        r.peer.client->disconnectFromHost();
        QTRY_VERIFY(r.peer.received.startsWith("helloagain"));
        QCOMPARE(r.dials, 2);
    }
};

QTEST_GUILESS_MAIN(TestCloudRelay)
#include "tst_cloud_relay.moc"
