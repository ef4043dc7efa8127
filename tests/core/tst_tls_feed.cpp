// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/TlsFeed.h"
#include "tests/support/SkippedTime.h"

#include <QFile>
#include <QJsonDocument>
#include <QPointer>
#include <QSslKey>
#include <QSslServer>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// A device in software: it records what the client sends and sends what the test says.
class Device
{
public:
    explicit Device(bool tls = true)
        : m_server(tls ? std::make_unique<QSslServer>() : std::make_unique<QTcpServer>())
    {
        if (tls) {
            QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
            configuration.setLocalCertificateChain(QSslCertificate::fromPath(QStringLiteral(TEST_CERTIFICATE)));
            QFile key(QStringLiteral(TEST_KEY));
            if (key.open(QIODevice::ReadOnly)) {
                configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
            }
            static_cast<QSslServer *>(m_server.get())->setSslConfiguration(configuration);
        }
        m_server->listen(QHostAddress::LocalHost);
        QObject::connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, m_server.get(), [this] {
            client = m_server->nextPendingConnection();
            ++connects;
            QObject::connect(client, &QTcpSocket::readyRead, m_server.get(), [this] {
                received += client->readAll();
                if (!greeting.isEmpty() && received.endsWith("\r\n")) {
                    client->write(greeting);
                }
            });
        });
    }

    [[nodiscard]] quint16 port() const { return m_server->serverPort(); }
    void close() { m_server->close(); }

    QPointer<QTcpSocket> client;
    int connects = 0;
    QByteArray received;
    QByteArray greeting = "{\"type\":\"auth_ok\"}\n";

private:
    std::unique_ptr<QTcpServer> m_server;
};

// The feed with a record of its signals, as "up", "down <reason>" and envelopes as compact JSON.
struct Recorded
{
    Recorded()
    {
        QObject::connect(&feed, &TlsFeed::connectedChanged, &feed,
                         [this](bool up, const QString &reason) { events.append(up ? u"up"_s : u"down "_s + reason); });
        QObject::connect(&feed, &TlsFeed::envelope, &feed, [this](const QJsonObject &object) {
            events.append(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
        });
    }
    void to(const Device &device) { feed.connectTo(u"127.0.0.1"_s, device.port(), u"to\"ken"_s); }

    QStringList events;
    TlsFeed feed{nullptr};
};

} // namespace

class TestTlsFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void authenticatesAndHandsUpLines()
    {
        Device device;
        device.greeting = "\n[1]\nnoise\n{\"type\":\"auth_ok\"}\r\n{\"type\":\"state\",\"a\":1}\n{\"ty";
        Recorded r;
        r.to(device);
        QTRY_COMPARE(r.events.size(), 2);
        device.client->write("pe\":\"heartbeat\"}\n\xff\xfe\n[]\n\n");
        device.client->flush();
        device.client->write("{\"b\":2}\n");
        QTRY_COMPARE(r.events, (QStringList{u"up"_s, u"{\"a\":1,\"type\":\"state\"}"_s, u"{\"type\":\"heartbeat\"}"_s,
                                            u"{\"b\":2}"_s}));
        QCOMPARE(device.received, "{\"token\":\"to\\\"ken\",\"type\":\"auth\"}\r\n");

        r.feed.stop();
        r.feed.stop();
        QCOMPARE(r.events.sliced(4), QStringList{u"down "_s});
    }

    void rejectionEndsTheFeed_data()
    {
        QTest::addColumn<QByteArray>("greeting");
        QTest::newRow("refused") << QByteArray("{\"type\":\"auth_fail\"}\n{\"type\":\"auth_ok\"}\n");
        QTest::newRow("data before the answer") << QByteArray("{\"type\":\"state\",\"a\":1}\n");
    }
    void rejectionEndsTheFeed()
    {
        Device device;
        QFETCH(QByteArray, greeting);
        device.greeting = greeting;
        Recorded r;
        r.to(device);
        QTRY_COMPARE(r.events, QStringList{u"down The device rejected the connection. Re-run "
                                           "device setup to refresh its access."_s});
        skip(40s); // well past the first retries of any feed that would go on
        QTest::qWait(20);
        QCOMPARE(device.connects, 1);
        r.feed.stop();
        QCOMPARE(r.events.size(), 1);
        device.greeting = "{\"type\":\"auth_ok\"}\n";
        r.to(device);
        QTRY_COMPARE(r.events.last(), u"up"_s);
    }

    void refusalAfterAcceptanceIsGivenAtTheLoss()
    {
        Device device;
        device.greeting = "{\"type\":\"auth_ok\"}\n{\"type\":\"auth_fail\"}\n{\"a\":1}\n";
        Recorded r;
        r.to(device);
        QTRY_COMPARE(r.events.size(), 2);
        device.client->disconnectFromHost();
        QTRY_COMPARE(r.events.value(2), u"down The device rejected the connection."_s);
        QVERIFY(skipUntil([&] { return device.connects == 2; }));
    }

    void comesBackAfterALoss()
    {
        Device device;
        Recorded r;
        r.to(device);
        QTRY_COMPARE(r.events, QStringList{u"up"_s});
        for (int loss = 0; loss < 2; ++loss) { // a connection that came about ends the longer waits
            device.client->abort();
            QTRY_COMPARE(r.events.size(), 2 + 2 * loss);
            skip(800ms);
            QCOMPARE(device.connects, 1 + loss);
            skip(250ms);
            QTRY_COMPARE(r.events.size(), 3 + 2 * loss);
        }
        QVERIFY2(r.events[1].startsWith(u"down Could not reach the device on your network ("_s),
                 qPrintable(r.events[1]));
        QCOMPARE(r.events[4], u"up"_s);
        QCOMPARE(device.connects, 3);
    }

    // Whatever way an attempt fails, it is reported, and it schedules one retry.
    void failedAttempts_data()
    {
        QTest::addColumn<bool>("listens");
        QTest::addColumn<bool>("tls");
        QTest::addColumn<QByteArray>("plainAnswer");
        QTest::newRow("refused") << false << true << QByteArray();
        QTest::newRow("no TLS there") << true << false << QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n");
        QTest::newRow("handshake hangs") << true << false << QByteArray();
        QTest::newRow("never answers the token") << true << true << QByteArray();
    }
    void failedAttempts()
    {
        QFETCH(bool, listens);
        QFETCH(bool, tls);
        QFETCH(QByteArray, plainAnswer);
        Device device(tls);
        device.greeting = {};
        const quint16 port = device.port();
        if (!listens) {
            device.close();
        }
        Recorded r;
        const bool hangs = listens && plainAnswer.isEmpty();
        r.feed.connectTo(u"127.0.0.1"_s, port, u"t"_s);
        qsizetype attempts = 0;
        for (const std::chrono::milliseconds wait : {1s, 2s, 4s, 8s, 15s, 15s}) {
            ++attempts;
            if (listens) {
                QTRY_COMPARE(device.connects, attempts);
            }
            if (!plainAnswer.isEmpty()) {
                device.client->write(plainAnswer);
            }
            if (hangs) {
                skip(9s);
                QCOMPARE(r.events.size(), attempts - 1);
                skip(1200ms);
            }
            QTRY_COMPARE(r.events.size(), attempts);
            QVERIFY2(r.events.last().startsWith(u"down Could not reach the device on your network ("_s),
                     qPrintable(r.events.last()));
            skip(wait * 4 / 5); // a second retry for one end would come sooner
            QCOMPARE(r.events.size(), attempts);
            QVERIFY(!listens || device.connects == attempts);
            skip(wait / 3);
        }
    }

    void hangUpBeforeTheAnswerIsRetriedInSilence()
    {
        Device device;
        device.greeting = {};
        Recorded r;
        r.to(device);
        for (int attempt = 1; attempt <= 3; ++attempt) {
            QVERIFY(skipUntil([&] { return device.connects == attempt && device.received.endsWith("\n"); }));
            device.received.clear();
            device.client->abort();
        }
        QCOMPARE(r.events, QStringList());
    }

    void stopDuringTheWaitForARetry()
    {
        Device device;
        Recorded r;
        r.to(device);
        QTRY_COMPARE(r.events.size(), 1);
        device.client->abort();
        QTRY_COMPARE(r.events.size(), 2);
        r.feed.stop();
        skip(20s);
        QTest::qWait(20);
        QCOMPARE(device.connects, 1);
        QCOMPARE(r.events.size(), 2);
    }

    // A slot that changes the feed in the middle of a read must not be handed the old device's
    // lines.
    void slotSendsTheFeedElsewhere()
    {
        Device first;
        first.greeting = "{\"type\":\"auth_ok\"}\n{\"a\":1}\n{\"a\":2}\n{\"a\":3}\n";
        Device second;
        Recorded r;
        connect(&r.feed, &TlsFeed::envelope, this, [&] { r.to(second); }, Qt::SingleShotConnection);
        r.to(first);
        QTRY_COMPARE(r.events, (QStringList{u"up"_s, u"{\"a\":1}"_s, u"down "_s, u"up"_s}));
    }

    void listenerThatStartsOverLeavesTheReasonToTheNext()
    {
        Device device;
        QStringList reasons;
        TlsFeed feed(nullptr);
        connect(&feed, &TlsFeed::connectedChanged, this, [&](bool up) {
            if (!up) {
                feed.connectTo(u"127.0.0.1"_s, device.port(), u"t"_s);
            }
        });
        connect(&feed, &TlsFeed::connectedChanged, this,
                [&](bool, const QString &reason) { reasons.append(reason.left(5)); });
        feed.connectTo(u"127.0.0.1"_s, device.port(), u"t"_s);
        QTRY_COMPARE(reasons.size(), 1);
        device.client->abort();
        QTRY_COMPARE(reasons, (QStringList{QString(), u"Could"_s, QString()}));
        feed.disconnect(this); // The end of the feed must not start it over.
    }

    void floodArrivesWholeBeforeTheEnd()
    {
        constexpr int count = 20000;
        Device device;
        for (int i = 0; i < count; ++i) {
            device.greeting += "{\"a\":" + QByteArray::number(i) + "}\n";
        }
        Recorded r;
        r.to(device);
        QTRY_VERIFY(!r.events.isEmpty());
        device.client->disconnectFromHost();
        QTRY_VERIFY(r.events.size() >= count + 2);
        QCOMPARE(r.events[count], u"{\"a\":%1}"_s.arg(count - 1));
        QVERIFY(r.events[count + 1].startsWith(u"down "_s));
    }
};

QTEST_GUILESS_MAIN(TestTlsFeed)
#include "tst_tls_feed.moc"
