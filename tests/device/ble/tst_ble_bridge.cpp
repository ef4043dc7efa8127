// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleBridge.h"
#include "tests/support/BleHelperDouble.h"
#include "tests/support/OpenFilesLeft.h"
#include "tests/support/SkippedTime.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

#include <ctime>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

struct Rig
{
    Rig() { bridge.setHelperPath(helper.path()); }
    /// A reply is noted as "<code>|<message>", or as the result when it went well.
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
        QTest::newRow("something else first")
            << QByteArrayList{"{\"ev\":\"data\",\"b64\":\"eHg=\"}\n{\"hello\":\"T\"}\n"} << false;
        QTest::newRow("never") << QByteArrayList{"{\"hello\":\"T\"}"} << false;
        QTest::newRow("an endless line") << QByteArrayList{"{\"hello\":\"" + QByteArray(100000, 'x')} << false;
    }
    void hellos()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(bool, accepted);
        Rig r;
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
            skip(4s);
            QTest::qWait(5);
            const bool isStillThere = pieces.constFirst().endsWith("}");
            QVERIFY(!isStillThere || !Rig::isGone(*visitor));
            skip(1200ms);
            QTRY_VERIFY(Rig::isGone(*visitor));
            QVERIFY(r.readiness.isEmpty());
            r.helper.come(); // a wrong program does not keep the right one out
            QTRY_VERIFY(r.bridge.isReady());
            QCOMPARE(data.count(), 0);
        }
    }

    void oneHelperAmongStrangers()
    {
        Rig r;
        r.startUnmanned();
        QVERIFY(r.helper.token.size() > 16 && r.helper.token.size() <= 32);
        r.bridge.request(u"a"_s, {{u"key"_s, 1}}, r.note(), 20s);
        r.ask(u"b"_s);
        std::vector<std::unique_ptr<QTcpSocket>> crowd;
        const auto gone = [&] { return std::ranges::count_if(crowd, [](const auto &s) { return Rig::isGone(*s); }); };
        for (int i = 0; i < 40; ++i) {
            crowd.push_back(r.helper.knock());
        }
        QTRY_COMPARE(gone(), 24); // sixteen may stay for a while
        r.helper.come();
        for (int i = 0; i < 20; ++i) { // a flood between the helper's hello and the event loop's next turn
            crowd.push_back(r.helper.knock());
        }
        QTRY_VERIFY(r.bridge.isReady());
        QTRY_COMPARE(gone(), 60);
        crowd.push_back(r.helper.knock());
        crowd.back()->write(r.helper.hello()); // the token is good once
        QTRY_COMPARE(gone(), 61);
        QTRY_COMPARE(r.replies.size(), 2);
        QCOMPARE(r.helper.received, "{\"key\":1,\"op\":\"a\",\"reqId\":1}\n{\"op\":\"b\",\"reqId\":2}\n");
        QCOMPARE(r.helper.starts, 1);
    }

    void noOpenFileLeft()
    {
        Rig r;
        r.startUnmanned();
        auto limit = std::make_unique<OpenFilesLeft>(1); // for the helper's own end
        r.helper.come();
        for (int tries = 0; tries < 3; ++tries) {
            skip(1s);
        }
        QVERIFY(!r.bridge.isReady());
        limit.reset();
        skip(1s);
        QTRY_VERIFY(r.bridge.isReady());
    }

    void launchFailures_data()
    {
        QTest::addColumn<QByteArray>("script"); // empty: no file
        QTest::newRow("no file") << QByteArray();
        QTest::newRow("not a program") << QByteArray("#!/no/such/shell\n");
        QTest::newRow("silence") << QByteArray("#!/bin/sh\nexec sleep 1000\n");
        QTest::newRow("ends at once") << QByteArray("#!/bin/sh\n");
    }
    void launchFailures()
    {
        QFETCH(QByteArray, script);
        const bool silent = script.contains("sleep");
        Rig r;
        script.isEmpty() ? r.bridge.setHelperPath(r.helper.path() + u"not"_s) : r.helper.writeScript(script);
        r.ask(u"a"_s);
        r.ask(u"b"_s);
        const QString failure = u"bluetooth_unavailable|The Bluetooth helper "_s +
                                (script.isEmpty() ? u"is missing from this install. Reinstall the Tallyforge plugin."
                                                  : u"did not start. Bluetooth setup is unavailable on this system.");
        if (silent) { // what is known is told at once
            QTRY_VERIFY(r.bridge.findChild<QProcess *>()->state() == QProcess::Running);
            skip(19s);
            QVERIFY(r.replies.isEmpty());
            skip(2s);
        }
        QTRY_COMPARE(r.replies, (QStringList{failure, failure}));
        if (const auto *const process = r.bridge.findChild<QProcess *>()) {
            QTRY_COMPARE(process->state(), QProcess::NotRunning); // a program that doesn't come in time is ended
        }
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("lines"); // "#" stands for the request's number
        QTest::addColumn<QString>("reply");
        const QString stopped = u"bluetooth_unavailable|The Bluetooth helper stopped."_s;
        QTest::newRow("result") << QByteArray("{\"reqId\":#,\"ok\":true,\"result\":{\"a\":1}}\n") << u"{\"a\":1}"_s;
        QTest::newRow("error") << QByteArray(
                                      "{\"reqId\":#,\"ok\":false,\"error\":{\"code\":\"c\",\"message\":\"m\"}}\n")
                               << u"c|m"_s;
        QTest::newRow("no details") << QByteArray("{\"reqId\":#}\n") << u"ble_error|Bluetooth error"_s;
        QTest::newRow("unknown numbers before")
            << QByteArray("{\"reqId\":99,\"ok\":true}\n{\"ok\":true}\n{\"reqId\":\"#\"}\n{\"reqId\":#}\n")
            << u"ble_error|Bluetooth error"_s;
        QTest::newRow("twice") << QByteArray("{\"reqId\":#,\"ok\":true}\n{\"reqId\":#}\n") << u"{}"_s;
        QTest::newRow("noise before")
            << QByteArray(
                   "[]\n\n{\"ev\":\"what\",\"reqId\":#}\n{\"ev\":\"data\",\"b64\":\"?\"}\n{\"reqId\":#,\"ok\":true}\n")
            << u"{}"_s;
        QTest::newRow("gone instead") << QByteArray("gone") << stopped;
        QTest::newRow("a line without end") << QByteArray("long") << stopped;
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
        r.ask(u"a"_s);
        QTRY_COMPARE(r.replies.size(), 1);
        QTEST(r.replies.constFirst(), "reply");
        QTest::qWait(20);
        QCOMPARE(r.replies.size(), 1);
        QCOMPARE(data.count(), 0);
    }

    void sentencesOfTheHelperAreTranslated()
    {
        struct German : QTranslator
        {
            [[nodiscard]] bool isEmpty() const override { return false; }
            [[nodiscard]] QString translate(const char *context, const char *text, const char *, int) const override
            {
                return qstrcmp(context, "tallyforge::BluetoothHelper") == 0 && qstrcmp(text, "It is off.") == 0
                           ? u"Es ist aus."_s
                           : QString();
            }
        } german;
        QCoreApplication::installTranslator(&german);
        Rig r;
        QSignalSpy disconnected(&r.bridge, &BleBridge::disconnected);
        QString message = u"It is off."_s;
        r.helper.onOp = [&](const QJsonObject &op) { r.helper.fail(op, u"c"_s, message); };
        r.ask(u"a"_s);
        QTRY_COMPARE(r.replies, QStringList{u"c|Es ist aus."_s});
        r.helper.send("{\"ev\":\"disconnected\",\"reason\":\"It is off.\"}\n");
        QTRY_COMPARE(disconnected.count(), 1);
        QCOMPARE(disconnected[0][0].toString(), u"Es ist aus."_s);
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

    void floodOfNotifications()
    {
        Rig r;
        connect(&r.bridge, &BleBridge::dataReceived, &r.bridge, [] { // a receiver that takes its time
            for (const clock_t end = clock() + CLOCKS_PER_SEC / 20000; clock() < end;) {
            }
        });
        bool sends = false; // in this turn, which takes this process's time as well
        r.helper.onOp = [&](const QJsonObject &op) {
            sends = true;
            r.helper.send(BleHelperDouble::dataLine("x").repeated(8000) + BleHelperDouble::okLine(op));
        };
        r.ask(u"a"_s);
        clock_t longest = 0;
        while (r.replies.isEmpty()) {
            sends = false;
            const clock_t begin = clock(); // the processor's time, so that a busy computer doesn't count
            QCoreApplication::processEvents();
            longest = sends ? longest : std::max(longest, clock() - begin);
        }
        QVERIFY2(longest < CLOCKS_PER_SEC / 125, QByteArray::number(qlonglong(longest))); // 8 ms
    }

    void callbackWithAnEventLoopOfItsOwn()
    {
        Rig r;
        QSignalSpy data(&r.bridge, &BleBridge::dataReceived);
        r.bridge.request(
            u"a"_s, {},
            [&](const BleReply &) { // as a message box
                r.ask(u"b"_s);
                QTRY_COMPARE(r.replies.size(), 1);
                r.helper.send(BleHelperDouble::dataLine("last words"));
                r.helper.kill();
                QTRY_VERIFY(!r.bridge.isReady());
            },
            20s);
        QTRY_COMPARE(data.count(), 1);
    }

    void helloThatWaitedForABusyThread()
    {
        Rig r;
        r.startUnmanned();
        const auto visitor = r.helper.knock();
        while (r.bridge.findChild<QTcpSocket *>() == nullptr) {
            QCoreApplication::processEvents();
        }
        visitor->write(r.helper.hello());
        visitor->flush();
        skippedTime += 6s;
        QTRY_COMPARE(r.readiness, QStringList{u"ok"_s});
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

    void scans()
    {
        Rig r;
        QStringList outcomes;
        const auto note = [&](bool ok, const QList<BleDeviceInfo> &devices, int seen, const QString &code,
                              const QString &message) {
            outcomes += u"%1 %2"_s.arg(ok ? u"ok"_s : code + u'|' + message).arg(seen);
            for (const BleDeviceInfo &device : devices) {
                outcomes += u"%1/%2/%3"_s.arg(device.id, device.name).arg(device.rssi);
            }
        };
        r.helper.scanResult = QJsonDocument::fromJson("{\"devices\":[{\"id\":\"b\",\"name\":\"B\",\"rssi\":-50},"
                                                      "{\"id\":\"a\"},null],\"seen\":7}")
                                  .object();
        r.bridge.scan(6000ms, note);
        QTRY_COMPARE(outcomes, (QStringList{u"ok 7"_s, u"b/B/-50"_s, u"a//0"_s, u"//0"_s}));
        QCOMPARE(r.helper.asked(), u"start scan"_s);
        QCOMPARE(r.helper.ops.constLast().value(u"ms"_s).toInt(), 6000);
        r.helper.onOp = [&](const QJsonObject &op) { r.helper.fail(op, u"permission_denied"_s, u"No."_s); };
        r.bridge.scan(6000ms, note);
        QTRY_COMPARE(outcomes.constLast(), u"permission_denied|No. 0"_s);
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
        QTRY_VERIFY(ready ? r.helper.ops.size() == 1 : r.helper.starts == 1);
        r.bridge.shutdown();
        r.ask(u"c"_s);
        if (ready) {
            QTRY_VERIFY(Rig::isGone(*r.helper.socket));
            QVERIFY(r.helper.received.endsWith("\n{\"op\":\"quit\",\"reqId\":0}\n"));
        } else {
            QCOMPARE(r.helper.knock()->error(), QTcpSocket::ConnectionRefusedError);
        }
        QTest::qWait(20);
        QCOMPARE(r.replies.size() + stopped.count(), 0);
        QCOMPARE(r.helper.starts, 1);
    }
};

QTEST_GUILESS_MAIN(TestBleBridge)
#include "tst_ble_bridge.moc"
