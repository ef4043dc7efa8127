// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/RpcClient.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/SkippedTime.h"

#include <QSignalSpy>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

} // namespace

class TestRpcClient : public QObject
{
    Q_OBJECT

    std::unique_ptr<FakeTransport> m_transport;
    std::unique_ptr<RpcClient> m_client;
    QStringList m_results; // of each call: "<name> ok <result>" or "<name> <code> <message>"

    RpcClient::Callback keep(const QString &name = u"a"_s)
    {
        return [this, name](const RpcResult &r) {
            const QString text = QString::fromUtf8(QJsonDocument(r.result).toJson(QJsonDocument::Compact));
            m_results.append(r.ok ? name + u" ok "_s + text : name + u' ' + r.errorCode + u' ' + r.errorMessage);
        };
    }

private Q_SLOTS:
    void init()
    {
        m_transport = std::make_unique<FakeTransport>();
        m_client = std::make_unique<RpcClient>(m_transport.get(), nullptr);
        m_results.clear();
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("result");
        const auto row = [](const char *name, const char *reply, const char *result) {
            QTest::newRow(name) << QByteArray(reply) << QString::fromUtf8(result);
        };
        row("object", R"({"ok":true,"result":{"x":1}})", R"(a ok {"x":1})");
        row("number", R"({"ok":true,"result":5})", R"(a ok {"value":5})");
        row("null", R"({"ok":true,"result":null})", R"(a ok {"value":null})");
        row("no result", R"({"ok":true})", "a ok {}");
        row("ok isn't a boolean", R"({"ok":1})", "a device_error The device rejected 'm'");
        row("code without a message", R"({"error":{"code":"denied"}})", "a denied The device rejected 'm'");
        row("message without a code", R"({"ok":false,"error":{"message":"No."}})", "a device_error No.");
        row("error is a text", R"({"ok":false,"error":"No."})", "a device_error The device rejected 'm'");
    }
    void replies()
    {
        QFETCH(QByteArray, reply);
        m_client->call(u"m"_s, {}, keep());
        QCOMPARE(m_transport->sent, QList{json(R"({"id":1,"method":"m","params":{}})")});
        m_transport->answer(json(reply));
        QCOMPARE(m_results.size(), 1);
        QTEST(m_results[0], "result");
        m_transport->answer(json(reply));
        QCOMPARE(m_results.size(), 1);
    }

    void oneAtATimeInOrder()
    {
        m_client->call(u"m"_s, {}, keep(u"a"_s));
        m_client->call(u"m"_s, {}, {}); // finishes in silence
        m_client->call(u"m"_s, {{u"x"_s, 1}}, keep(u"c"_s));
        QCOMPARE(m_client->pending(), 3);
        for (int i = 1; i <= 3; ++i) {
            QCOMPARE(m_transport->sent.size(), i);
            QCOMPARE(m_transport->sent.constLast().value(u"id"_s).toInt(), i);
            m_transport->answer(json(R"({"ok":true})"));
        }
        QCOMPARE(m_results, (QStringList{u"a ok {}"_s, u"c ok {}"_s}));
        QCOMPARE(m_client->pending(), 0);
    }

    void whatIsNoReplyIsDropped()
    {
        m_client->call(u"slow"_s, {}, keep());
        const QByteArrayList noises{"", "[1]", "{", R"({"ok":true})", R"({"id":2,"ok":true})"};
        for (const QByteArray &noise : noises) {
            Q_EMIT m_transport->message(noise);
        }
        skip(18s);
        QVERIFY(m_results.isEmpty());
        skip(3s);
        QCOMPARE(m_results, QStringList{u"a timeout The device did not answer 'slow' in time"_s});
        m_client->call(u"next"_s, {}, keep(u"b"_s));
        m_transport->answer(json(R"({"ok":true})"), 0); // to the one that ran out of time
        QCOMPARE(m_results.size(), 1);
        m_transport->answer(json(R"({"ok":true})"));
        QCOMPARE(m_results.constLast(), u"b ok {}"_s);
    }

    void busyDeviceIsAskedAgain()
    {
        const QJsonObject busy = json(R"({"ok":false,"error":{"code":"busy","message":"Later."}})");
        m_client->call(u"m"_s, {}, keep());
        for (int tries = 1; tries <= 3; ++tries) {
            m_transport->answer(busy);
            m_client->call(u"other"_s, {}, {}); // in the pause: it waits behind the retry
            QCOMPARE(m_transport->sent.constLast().value(u"method"_s).toString(), u"m"_s);
            QCOMPARE(m_transport->sent.constLast().value(u"id"_s).toInt(), tries + 1);
        }
        QVERIFY(m_results.isEmpty());
        m_transport->answer(busy); // the fourth time
        QCOMPARE(m_results, QStringList{u"a busy Later."_s});

        m_client->abortAll({}, {});
        m_client->call(u"m"_s, {}, keep());
        m_transport->answer(busy);
        const qsizetype sent = m_transport->sent.size();
        skip(220ms);
        QCOMPARE(m_transport->sent.size(), sent);
        skip(50ms);
        QCOMPARE(m_transport->sent.size(), sent + 1); // by itself, after the pause
        m_transport->answer(json(R"({"ok":true})"));
        QCOMPARE(m_results.constLast(), u"a ok {}"_s);
    }

    void carrierFailures()
    {
        m_transport->open = false;
        m_client->call(u"m"_s, {}, keep());
        QCOMPARE(m_results, QStringList{u"a disconnected Not connected to a device"_s});
        m_transport->open = true;
        m_transport->failsAtOnce = true;
        m_client->call(u"m"_s, {}, keep(u"b"_s));
        QCOMPARE(m_results.constLast(), u"b write_failed No."_s);
        Q_EMIT m_transport->sendFailed(u"x"_s, u"y"_s);
        QCOMPARE(m_results.size(), 2);
    }

    void abortAll()
    {
        m_client->abortAll(u"x"_s, u"y"_s);
        m_client->call(u"m"_s, {}, keep(u"a"_s));
        m_client->call(u"m"_s, {}, [this](const RpcResult &) { m_client->call(u"again"_s, {}, keep(u"d"_s)); });
        m_client->call(u"m"_s, {}, keep(u"c"_s));
        m_client->abortAll(u"gone"_s, u"Gone."_s);
        QCOMPARE(m_results, (QStringList{u"a gone Gone."_s, u"c gone Gone."_s}));
        m_transport->answer(json(R"({"ok":true})"));
        QCOMPARE(m_results.constLast(), u"d ok {}"_s);
    }

    // A callback may destroy the client, in every way that a call can end.
    void callbackDestroysTheClient_data()
    {
        QTest::addColumn<int>("ending");
        QTest::newRow("reply") << 0;
        QTest::newRow("failed at once") << 1;
        QTest::newRow("closed") << 2;
        QTest::newRow("abort") << 3;
        QTest::newRow("time-out") << 4;
    }
    void callbackDestroysTheClient()
    {
        QFETCH(int, ending);
        m_transport->failsAtOnce = ending == 1;
        m_transport->open = ending != 2;
        int calls = 0;
        RpcClient *client = m_client.release();
        const auto destroy = [&](const RpcResult &) {
            ++calls;
            delete std::exchange(client, nullptr);
        };
        client->call(u"m"_s, {}, destroy);
        if (client) {
            client->call(u"m"_s, {}, [&](const RpcResult &) { ++calls; });
        }
        if (ending == 0) {
            m_transport->answer(json(R"({"ok":true})"));
        } else if (ending == 3) {
            client->abortAll(u"x"_s, u"y"_s);
        }
        skip(21s);
        QVERIFY(!client);
        QCOMPARE(calls, 1);
    }
};

QTEST_GUILESS_MAIN(TestRpcClient)
#include "tst_rpc_client.moc"
