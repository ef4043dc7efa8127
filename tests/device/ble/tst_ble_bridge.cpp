// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleBridge.h"
#include "tests/support/BleHelperDouble.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr BleBridge::Timing patient{20s, 20s, 20s, 20s};
constexpr BleBridge::Timing hasty{300ms, 20s, 20s, 20s};

const auto didNotStart = "The Bluetooth helper did not start. Bluetooth setup is unavailable on this system."_L1;

struct Rig
{
    explicit Rig(const BleBridge::Timing &timing = patient)
        : bridge(timing, nullptr)
    {
        bridge.setHelperPath(helper.path());
    }
    /// What came back is noted as "<code>|<message>", or as the result when it went well.
    BleBridge::ReplyCallback note()
    {
        return [this](const BleReply &reply) {
            replies.append(reply.ok ? QString::fromUtf8(QJsonDocument(reply.result).toJson(QJsonDocument::Compact))
                                    : reply.code + u'|' + reply.message);
        };
    }
    void ask(const QString &op, std::chrono::milliseconds limit = 20s) { bridge.request(op, {}, note(), limit); }
    /// Starts the helper, and leaves its script noted but nobody come.
    void startUnmanned()
    {
        helper.comesBySelf = false;
        bridge.ensureHelper([this](bool ok, const QString &message) { readiness.append(ok ? u"ok"_s : message); });
        QTRY_COMPARE(helper.starts, 1);
    }
    [[nodiscard]] static bool isGone(const QTcpSocket &socket)
    {
        return socket.state() == QAbstractSocket::UnconnectedState;
    }

    BleHelperDouble helper;
    BleBridge bridge;
    QStringList replies;
    QStringList readiness;
};

} // namespace

class TestBleBridge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hellos_data()
    {
        QTest::addColumn<QByteArrayList>("pieces"); // "T" stands for the token
        QTest::addColumn<bool>("accepted");
        QTest::newRow("at once") << QByteArrayList{"{\"hello\":\"T\"}\n"} << true;
        QTest::newRow("split over reads") << QByteArrayList{"{\"hel", "lo\":\"T", "\"}", "\n"} << true;
        QTest::newRow("after lines that say nothing")
            << QByteArrayList{"\n \r\n[1]\nno\n", " {\"hello\":\"T\"}\r\n"} << true;
        QTest::newRow("with much behind it")
            << QByteArrayList{"{\"hello\":\"T\"}\n" + QByteArray("{\"ev\":\"what\"}\n").repeated(20000)} << true;
        QTest::newRow("wrong") << QByteArrayList{"{\"hello\":\"0123456789abcdef0123456789abcdef\"}\n"} << false;
        QTest::newRow("more than the token") << QByteArrayList{"{\"hello\":\"T0\"}\n"} << false;
        QTest::newRow("empty") << QByteArrayList{"{\"hello\":\"\"}\n"} << false;
        QTest::newRow("no text") << QByteArrayList{"{\"hello\":0}\n"} << false;
        QTest::newRow("something else first")
            << QByteArrayList{"{\"ev\":\"data\",\"b64\":\"eHg=\"}\n{\"hello\":\"T\"}\n"} << false;
        QTest::newRow("never") << QByteArrayList{"{\"hello\":\"T\"}"} << false;
        QTest::newRow("an endless line") << QByteArrayList{"{\"hello\":\"" + QByteArray(100000, 'x')} << false;
    }
    void hellos()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(bool, accepted);
        Rig r({20s, 200ms, 20s, 20s});
        QSignalSpy data(&r.bridge, &BleBridge::dataReceived);
        r.startUnmanned();
        const auto visitor = r.helper.knock();
        for (QByteArray &piece : pieces) {
            visitor->write(piece.replace("T", r.helper.token));
            visitor->flush();
            QTest::qWait(1);
        }
        if (accepted) {
            QTRY_COMPARE(r.readiness, QStringList{u"ok"_s});
            visitor->write(BleHelperDouble::dataLine("x"));
            QTRY_COMPARE(data.count(), 1);
        } else {
            QTRY_VERIFY(Rig::isGone(*visitor));
            QVERIFY(r.readiness.isEmpty());
            r.helper.come(); // nobody who was wrong keeps the right one out
            QTRY_VERIFY(r.bridge.isReady());
            QCOMPARE(data.count(), 0);
        }
    }

    void strangers()
    {
        Rig r;
        r.startUnmanned();
        QVERIFY(r.helper.token.size() > 16 && r.helper.token.size() <= 32);
        std::vector<std::unique_ptr<QTcpSocket>> crowd;
        const auto gone = [&] { return std::ranges::count_if(crowd, [](const auto &s) { return Rig::isGone(*s); }); };
        for (int i = 0; i < 40; ++i) {
            crowd.push_back(r.helper.knock());
        }
        QTRY_COMPARE(gone(), 24); // sixteen may stay for a while
        r.helper.come();
        QTRY_VERIFY(r.bridge.isReady());
        QTRY_COMPARE(gone(), 40);
        crowd.push_back(r.helper.knock());
        crowd.back()->write(r.helper.hello()); // the token is good once
        QTRY_COMPARE(gone(), 41);
        r.ask(u"a"_s);
        QTRY_COMPARE(r.replies, QStringList{u"{}"_s});
    }

    void launchFailures_data()
    {
        QTest::addColumn<QByteArray>("script"); // empty: no file
        QTest::addColumn<QString>("message");
        const QString missing =
            u"The Bluetooth helper is missing from this install. Reinstall the Tallyforge plugin."_s;
        QTest::newRow("no file") << QByteArray() << missing;
        QTest::newRow("not a program") << QByteArray("#!/no/such/shell\n") << QString(didNotStart);
        QTest::newRow("silence") << QByteArray("#!/bin/sh\necho $$ >\"$0.pid\"; exec sleep 1000\n")
                                 << QString(didNotStart);
        QTest::newRow("ends at once") << QByteArray("#!/bin/sh\n") << QString(didNotStart);
    }
    void launchFailures()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, message);
        Rig r(hasty);
        script.isEmpty() ? r.bridge.setHelperPath(r.helper.path() + u"not"_s) : r.helper.writeScript(script);
        r.ask(u"a"_s);
        r.ask(u"b"_s);
        const QString failure = u"bluetooth_unavailable|"_s + message;
        QTRY_COMPARE(r.replies, (QStringList{failure, failure}));
        if (QFile pid(r.helper.path() + u".pid"_s); pid.open(QIODevice::ReadOnly)) {
            const auto id = static_cast<pid_t>(pid.readAll().trimmed().toInt());
            QTRY_COMPARE(::kill(id, 0), -1); // what doesn't come in time is ended
        }
    }

    void oneLaunchForAll()
    {
        Rig r;
        for (const auto &op : {u"a"_s, u"b"_s, u"c"_s}) {
            r.bridge.request(op, {{u"key"_s, op}}, r.note(), 20s);
        }
        QTRY_COMPARE(r.replies.size(), 3);
        QCOMPARE(r.helper.starts, 1);
        QCOMPARE(r.helper.received, "{\"key\":\"a\",\"op\":\"a\",\"reqId\":1}\n"
                                    "{\"key\":\"b\",\"op\":\"b\",\"reqId\":2}\n"
                                    "{\"key\":\"c\",\"op\":\"c\",\"reqId\":3}\n");
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("lines"); // "#" stands for the request's number
        QTest::addColumn<QString>("reply");
        const auto row = [](const char *name, const QByteArray &lines, const QString &reply) {
            QTest::newRow(name) << lines << reply;
        };
        row("result", "{\"reqId\":#,\"ok\":true,\"result\":{\"a\":1}}\n", u"{\"a\":1}"_s);
        row("no result", "{\"reqId\":#,\"ok\":true}\n", u"{}"_s);
        row("result of another kind", "{\"reqId\":#,\"ok\":true,\"result\":5}\n", u"{}"_s);
        row("error", "{\"reqId\":#,\"ok\":false,\"error\":{\"code\":\"c\",\"message\":\"m\"}}\n", u"c|m"_s);
        row("no details", "{\"reqId\":#}\n", u"ble_error|Bluetooth error"_s);
        row("a code alone", "{\"reqId\":#,\"error\":{\"code\":\"c\"}}\n", u"c|Bluetooth error"_s);
        row("unknown numbers before", "{\"reqId\":99,\"ok\":true}\n{\"ok\":true}\n{\"reqId\":\"#\"}\n{\"reqId\":#}\n",
            u"ble_error|Bluetooth error"_s);
        row("twice", "{\"reqId\":#,\"ok\":true}\n{\"reqId\":#}\n", u"{}"_s);
        row("noise before",
            "[]\n\n{\"ev\":\"what\",\"reqId\":#}\n{\"ev\":\"data\",\"b64\":\"?\"}\n{\"reqId\":#,\"ok\":true}\n",
            u"{}"_s);
        row("never", "{\"reqId\":#,\"ok\":true}", u"timeout|Bluetooth did not respond in time."_s);
        row("gone instead", "gone", u"bluetooth_unavailable|The Bluetooth helper stopped."_s);
        row("a line without end", "long", u"bluetooth_unavailable|The Bluetooth helper stopped."_s);
    }
    void replies()
    {
        QFETCH(QByteArray, lines);
        Rig r;
        QSignalSpy data(&r.bridge, &BleBridge::dataReceived);
        r.helper.onOp = [&](const QJsonObject &op) {
            if (lines == "gone") {
                r.helper.kill();
            } else if (lines == "long") {
                r.helper.send(QByteArray(2 << 20, 'x'));
            } else {
                r.helper.send(QByteArray(lines).replace('#', QByteArray::number(op.value(u"reqId"_s).toInt())));
            }
        };
        r.ask(u"a"_s, lines.endsWith('}') ? 100ms : 20s);
        QTRY_COMPARE(r.replies.size(), 1);
        QTEST(r.replies.constFirst(), "reply");
        QTest::qWait(20);
        QCOMPARE(r.replies.size(), 1);
        QCOMPARE(data.count(), 0);
    }

    void lateReply()
    {
        Rig r;
        QList<QJsonObject> ops;
        r.helper.onOp = [&](const QJsonObject &op) { ops.append(op); };
        r.ask(u"a"_s, 10ms);
        QTRY_COMPARE(r.replies.size(), 1);
        r.ask(u"b"_s);
        QTRY_COMPARE(ops.size(), 2);
        r.helper.send(BleHelperDouble::okLine(ops[0], {{u"late"_s, 1}}) + BleHelperDouble::okLine(ops[1]));
        QTRY_COMPARE(r.replies, (QStringList{u"timeout|Bluetooth did not respond in time."_s, u"{}"_s}));
    }

    void thousandsOfNotificationsInOneRead()
    {
        Rig r;
        QByteArray seen;
        connect(&r.bridge, &BleBridge::dataReceived, &r.bridge, [&](const QByteArray &bytes) { seen += bytes + ' '; });
        QByteArray expected;
        r.helper.onOp = [&](const QJsonObject &op) {
            QByteArray lines;
            for (int i = 0; i < 20000; ++i) {
                lines += BleHelperDouble::dataLine(QByteArray::number(i));
                expected += QByteArray::number(i) + ' ';
                if (i == 10000) {
                    lines += BleHelperDouble::okLine(op, {{u"seen"_s, 1}});
                    expected += "reply ";
                }
            }
            r.helper.send(lines);
        };
        r.bridge.request(u"a"_s, {}, [&](const BleReply &) { seen += "reply "; }, 20s);
        QTRY_COMPARE_WITH_TIMEOUT(seen.size(), 108896, 20000);
        QCOMPARE(seen, expected);
    }

    void helperStops()
    {
        Rig r;
        QSignalSpy stopped(&r.bridge, &BleBridge::helperStopped);
        r.bridge.start(r.note());
        QTRY_COMPARE(r.replies.size(), 1);
        r.bridge.start(r.note());
        QCOMPARE(r.replies.size(), 2); // at once, from what is known
        QByteArray first = r.helper.token;
        r.helper.onOp = [&](const QJsonObject &) { r.helper.kill(); };
        r.replies.clear();
        r.ask(u"a"_s);
        r.bridge.request(
            u"b"_s, {},
            [&](const BleReply &) {
                r.helper.onOp = [&](const QJsonObject &op) { r.helper.answer(op); };
                r.bridge.start(r.note()); // from inside the failure, with another helper
            },
            20s);
        QTRY_COMPARE(r.replies, (QStringList{u"bluetooth_unavailable|The Bluetooth helper stopped."_s, u"{}"_s}));
        QCOMPARE(stopped.count(), 1);
        QCOMPARE(stopped[0][0].toString(), u"stopped"_s);
        QCOMPARE(r.helper.starts, 2);
        QVERIFY(r.helper.token != first);
        QCOMPARE(r.helper.ops.constLast().value(u"op"_s).toString(), u"start"_s);
        QCOMPARE(r.helper.ops.constLast().value(u"reqId"_s).toInt(), 4); // numbers are never used again
    }

    void scans_data()
    {
        QTest::addColumn<QByteArray>("result"); // empty: the helper refuses
        QTest::addColumn<QString>("outcome");
        QTest::newRow("none of many") << QByteArray("{\"devices\":[],\"seen\":0}") << u"ok 0:"_s;
        QTest::newRow("two") << QByteArray("{\"devices\":[{\"id\":\"b\",\"name\":\"B\",\"rssi\":-50},{\"id\":\"a\"}],"
                                           "\"seen\":7}")
                             << u"ok 7: b/B/-50 a//0"_s;
        QTest::newRow("of other kinds") << QByteArray("{\"devices\":[5,null],\"seen\":\"x\"}") << u"ok 0: //0 //0"_s;
        QTest::newRow("refused") << QByteArray() << u"permission_denied No. 0:"_s;
    }
    void scans()
    {
        QFETCH(QByteArray, result);
        Rig r;
        r.helper.scanResult = QJsonDocument::fromJson(result).object();
        if (result.isEmpty()) {
            r.helper.onOp = [&](const QJsonObject &op) { r.helper.fail(op, u"permission_denied"_s, u"No."_s); };
        }
        QString outcome;
        r.bridge.scan(6000ms, [&](bool ok, const QList<BleDeviceInfo> &devices, int seen, const QString &code,
                                  const QString &message) {
            outcome = u"%1 %2:"_s.arg(ok ? u"ok"_s : code + u' ' + message).arg(seen);
            for (const BleDeviceInfo &device : devices) {
                outcome += u" %1/%2/%3"_s.arg(device.id, device.name).arg(device.rssi);
            }
        });
        QTRY_VERIFY(!outcome.isEmpty());
        QTEST(outcome, "outcome");
        if (!result.isEmpty()) {
            QCOMPARE(r.helper.ops.constLast().value(u"ms"_s).toInt(), 6000);
        }
    }

    void theRealHelper()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere"); // this computer's Bluetooth is left alone
        BleBridge bridge(patient, nullptr);
        bridge.setHelperPath(QStringLiteral(TEST_HELPER));
        QString code;
        bridge.scan(100ms,
                    [&](bool, const QList<BleDeviceInfo> &, int, const QString &c, const QString &) { code = c; });
        QTRY_COMPARE(code, u"bluetooth_unavailable"_s);
        const auto *const process = bridge.findChild<QProcess *>();
        QCOMPARE(process->state(), QProcess::Running);
        bridge.shutdown();
        QTRY_COMPARE(process->state(), QProcess::NotRunning);
        QCOMPARE(process->exitCode(), 0);
    }

    void shutdowns_data()
    {
        QTest::addColumn<bool>("ready");
        QTest::newRow("with a helper") << true;
        QTest::newRow("while one starts") << false;
    }
    void shutdowns()
    {
        QFETCH(bool, ready);
        Rig r;
        r.helper.onOp = [](const QJsonObject &) {};
        r.helper.comesBySelf = ready;
        QSignalSpy stopped(&r.bridge, &BleBridge::helperStopped);
        r.ask(u"a"_s);
        r.ask(u"b"_s);
        QTRY_VERIFY(ready ? r.helper.ops.size() == 2 : r.helper.starts == 1);
        r.bridge.shutdown();
        r.ask(u"c"_s);
        QVERIFY(!r.bridge.isReady());
        if (ready) {
            QTRY_VERIFY(Rig::isGone(*r.helper.socket));
            QVERIFY(r.helper.received.endsWith("\n{\"op\":\"quit\",\"reqId\":0}\n"));
        } else {
            const auto late = r.helper.knock();
            QTRY_VERIFY(late->error() == QTcpSocket::ConnectionRefusedError);
        }
        QTest::qWait(20);
        QVERIFY(r.replies.isEmpty());
        QCOMPARE(stopped.count(), 0);
        QCOMPARE(r.helper.starts, 1);
    }
};

QTEST_GUILESS_MAIN(TestBleBridge)
#include "tst_ble_bridge.moc"
