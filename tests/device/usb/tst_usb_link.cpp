// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The link over a real pseudo-terminal, with a device in software at its far end.

#include "device/usb/UsbLink.h"
#include "tests/support/SkippedTime.h"
#include "tests/support/UsbPeer.h"

#include <QJsonDocument>
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

struct Rig
{
    [[nodiscard]] qsizetype greetings() { return device.count(UsbFrame::Ctrl, R"("hello")"); }

    Pty pty;
    UsbPeer device{pty};
    UsbLink link{pty.path()};
    QSignalSpy opened{&link, &DeviceLink::opened};
    QSignalSpy failed{&link, &DeviceLink::failed};
    QSignalSpy closed{&link, &DeviceLink::closed};
};

} // namespace

class TestUsbLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void greetings_data()
    {
        QTest::addColumn<QByteArrayList>("answers");
        QTest::addColumn<bool>("receiver");
        const QByteArray hello = R"({"t":"hello","device_id":"A"})";
        const QByteArray status = R"({"t":"rx_status","device_id":"A","link":true})";
        QTest::newRow("a device") << QByteArrayList{hello, hello} << false;
        QTest::newRow("a receiver, then a hello") << QByteArrayList{status, hello} << true;
        QTest::newRow("a hello, then a receiver") << QByteArrayList{hello, status} << false;
        QTest::newRow("noise before") << QByteArrayList{"[1]", "{", R"({"t":5})", R"({"t":"what"})", hello} << false;
    }
    void greetings()
    {
        QFETCH(QByteArrayList, answers);
        QFETCH(bool, receiver);
        Rig r;
        r.link.open();
        for (int asked = 1; asked <= 3; ++asked) { // again and again
            QTRY_COMPARE(r.greetings(), asked);
            skip(2600ms);
            QCOMPARE(r.greetings(), asked);
            skip(500ms);
        }
        QCOMPARE(json(r.device.frames.constFirst().payload), json(R"({"t":"hello","streams":1})"));
        QCOMPARE(r.opened.count(), 0);
        for (const QByteArray &answer : std::as_const(answers)) {
            r.device.ctrl(answer);
        }
        QTRY_COMPARE(r.opened.count(), 1);
        const QJsonObject info = r.opened[0][0].toJsonObject();
        QCOMPARE(info.value(u"device_id"_s).toString(), u"A"_s);
        QCOMPARE(info.value(u"receiver"_s).toBool(), receiver);
        const qsizetype greetings = r.greetings();
        skip(60s);
        QTest::qWait(20);
        QCOMPARE(r.opened.count() + r.failed.count(), 1);
        QCOMPARE(r.greetings(), greetings);
    }

    void nobodyAnswers()
    {
        Rig r;
        r.link.open();
        for (int second = 0; second < 45; ++second) {
            QCOMPARE(r.failed.count(), 0);
            skip(1s);
        }
        QTRY_COMPARE(r.device.count(UsbFrame::Ctrl, R"({"t":"ping"})"), 9);
        skip(4s);
        QTRY_COMPARE(r.failed.count(), 1);
        QCOMPARE(r.failed[0][0].toString(), u"no_response"_s);
        QVERIFY(r.link.transport()->isOpen()); // the port stays open until it is closed
        UsbLink missing(u"/dev/none"_s);
        QSignalSpy failed(&missing, &DeviceLink::failed);
        missing.open();
        QCOMPARE(failed[0][0].toString(), u"open_failed"_s);
        missing.close();
    }

    // A slot that closes the link in the middle of open() has the later word, and no signal follows.
    void slotClosesWhileItOpens()
    {
        for (const bool early : {true, false}) {
            Rig r;
            bool closed = false;
            connect(&r.link, &UsbLink::tunnelChanged, this, [&] {
                if (r.link.transport()->isOpen() != early && !std::exchange(closed, true)) {
                    r.link.close();
                }
            });
            r.link.open();
            QVERIFY(closed && !r.link.transport()->isOpen());
            skip(50s);
            QCOMPARE(r.failed.count(), 0);
        }
    }

    void openedAgain()
    {
        Rig r;
        QSignalSpy envelopes(&r.link, &DeviceLink::envelope);
        QSignalSpy received(r.link.transport(), &RpcTransport::message);
        const QByteArray text = R"({"id":1,"ok":true})";
        const QByteArray size("\0\x12", 2);
        const QByteArray envelope = buildFrame(UsbFrame::Envelope, "{}");
        r.link.open();
        r.device.ctrl(R"({"t":"hello","tunnel":{"host":"c","port":1,"streams":{"ota":{"host":"o","port":2}}}})");
        r.pty.send(buildFrame(UsbFrame::Admin, size + '\0' + text.first(9)) + envelope);
        QTRY_COMPARE(envelopes.count(), 1);
        r.link.close();
        r.link.open();
        QVERIFY(!r.link.cloud()->status().configured && r.link.streams()->status().destinations.isEmpty());
        r.device.ctrl(R"({"t":"hello"})");
        r.pty.send(buildFrame(UsbFrame::Admin, size + '\1' + text.sliced(9)) + envelope);
        QTRY_COMPARE(envelopes.count(), 2);
        QCOMPARE(received.count(), 0);
    }

    void brokenUseAndUnplugging()
    {
        Rig r;
        r.link.open();
        r.device.ctrl(R"({"t":"hello"})");
        QSignalSpy envelopes(&r.link, &DeviceLink::envelope);
        r.pty.send(buildFrame(UsbFrame::Envelope, "[]") + buildFrame(UsbFrame::Envelope, "{}"));
        QTRY_COMPARE(envelopes.count(), 1);
        QSignalSpy sendFailed(r.link.transport(), &RpcTransport::sendFailed);
        r.link.transport()->send(QByteArray(65536, 'x'));
        QCOMPARE(sendFailed[0][0].toString(), u"request_too_large"_s);
        r.pty.unplug();
        r.link.transport()->send("{}"); // before that has been noticed
        QCOMPARE(sendFailed[1][0].toString(), u"write_failed"_s);
        QTRY_COMPARE(r.closed.count(), 1);
        r.link.transport()->send("{}");
        QCOMPARE(sendFailed[2][1].toString(), u"The USB device is not connected"_s);
    }

    void deviceThatHangs()
    {
        const Pty pty; // nobody reads from it
        UsbLink link(pty.path());
        QSignalSpy sendFailed(link.transport(), &RpcTransport::sendFailed);
        link.open();
        link.transport()->send(QByteArray(60000, 'x'));
        QVERIFY(sendFailed.isEmpty()); // yet, and OBS hasn't waited
        skip(2900ms);
        QVERIFY(sendFailed.isEmpty());
        skip(300ms);
        QTRY_COMPARE(sendFailed.count(), 1);
        QCOMPARE(sendFailed[0][0].toString(), u"write_failed"_s);
        QVERIFY(!pty.take().isEmpty());
        QByteArray got;
        const auto gotSoFar = [&] { return got += pty.take(); };
        skip(11s);
        QVERIFY(!gotSoFar().contains("ping")); // none before it gives a sign of life
        pty.send("x");
        QVERIFY(skipUntil([&] { return gotSoFar().contains("ping"); }));
    }

    void deviceThatFloods()
    {
        constexpr int frames = 100;
        Rig r;
        r.link.open();
        int got = 0;
        int inThisTurn = 0;
        int most = 0;
        connect(&r.link, &DeviceLink::envelope, this, [&](const QJsonObject &envelope) {
            skippedTime += 1ms; // that long it takes
            most = std::max(most, ++inThisTurn);
            QCOMPARE(envelope.value(u"n"_s).toInt(), got++);
        });
        QTimer turns;
        turns.callOnTimeout(this, [&] { inThisTurn = 0; });
        turns.start(0);
        for (int i = 0; i < frames; ++i) {
            r.pty.send(buildFrame(UsbFrame::Envelope, R"({"n":)" + QByteArray::number(i) + '}'));
        }
        QTRY_COMPARE(got, frames);
        QVERIFY2(most <= 8, qPrintable(QString::number(most)));
    }

    void tunnelTargets()
    {
        Rig r;
        r.link.open();
        r.device.ctrl(R"({"t":"hello","tunnel":{"host":"c","port":1,"streams":{"ota":{"host":"o","port":2}}}})");
        QTRY_VERIFY(r.link.cloud()->status().configured);
        QCOMPARE(r.link.streams()->status().destinations, QStringList{u"ota"_s});
        r.device.ctrl(R"({"t":"hello","tunnel":{"host":"c","port":0}})");
        QTRY_VERIFY(!r.link.cloud()->status().configured);
        QVERIFY(r.link.streams()->status().destinations.isEmpty());
        QCOMPARE(r.opened.count(), 1);
        r.link.cloud()->setEnabled(false); // one switch for both
        QTRY_VERIFY(r.device.count(UsbFrame::Ctrl) > 0);
        r.device.ctrl(R"({"t":"hello","tunnel":{"streams":{"ota":{"host":"127.0.0.1","port":9}}}})");
        r.pty.send(buildFrame(UsbFrame::Stream, "\x01\x01ota"));
        QTRY_COMPARE(r.device.count(UsbFrame::Stream, "\x01\x03"
                                                      "disabled"),
                     1);
    }

    void receiverRequests()
    {
        Rig r;
        r.link.open();
        r.device.ctrl(R"({"t":"rx_set","key":"unasked"})");
        r.device.ctrl(R"({"t":"rx_status"})");
        QTRY_COMPARE(r.opened.count(), 1);
        QStringList outcomes;
        const auto keep = [&](bool ok, const QString &key, const QString &error) {
            outcomes.append(ok ? u"key "_s + key : error);
        };
        r.link.receiverSet({}, false, 0, keep);
        r.link.receiverSet(u"  "_s, false, 3, keep);
        r.link.receiverSet({}, true, 0, keep);
        QTRY_COMPARE(r.device.count(UsbFrame::Ctrl, "rx_set"), 1);
        QCOMPARE(json(r.device.frames.constLast().payload), json(R"({"t":"rx_set","key":"","channel":3})"));
        skip(4600ms);
        QCOMPARE(outcomes.size(), 2);
        skip(500ms);
        QTRY_COMPARE(outcomes.size(), 3);
        r.link.receiverSet({}, true, 0, keep);
        r.device.ctrl(R"({"t":"rx_set","key":"K"})");
        QTRY_COMPARE(outcomes.size(), 4);
        r.link.receiverSet(u"k"_s, false, 0, keep);
        r.device.ctrl(R"({"t":"rx_reboot","ok":false})");
        QTRY_COMPARE(outcomes.size(), 5);
        r.link.receiverSet(u"k"_s, false, 0, keep);
        r.device.ctrl(R"({"t":"rx_error","error":"No."})");
        QTRY_COMPARE(outcomes,
                     (QStringList{u"Give a key, ask for a new key, or choose a channel"_s,
                                  u"Another receiver request is still in progress"_s, u"The receiver did not answer"_s,
                                  u"key K"_s, u"The receiver refused the settings"_s, u"No."_s}));
    }

    void queueIsBounded_data()
    {
        QTest::addColumn<int>("frames");
        QTest::addColumn<bool>("kept");
        QTest::newRow("as many as may wait") << 1024 << true;
        QTest::newRow("one more drops all") << 1025 << false;
    }
    void queueIsBounded()
    {
        QFETCH(int, frames);
        QFETCH(bool, kept);
        Rig r;
        r.link.open();
        r.device.ctrl(R"({"t":"hello","tunnel":{"host":"c","port":1}})");
        QTRY_COMPARE(r.opened.count(), 1);
        QSignalSpy changed(r.link.cloud(), &CloudRelay::statusChanged);
        Q_EMIT r.link.cloud()->toDevice(QByteArray((frames - 1) * 512 + 1, 'x'));
        QCOMPARE(changed.count() > 0, !kept); // the relays are torn down
        if (kept) {
            skip(30ms);
            QCOMPARE(r.device.count(UsbFrame::Pipe), 1);
            for (int sent = 1; sent < 20; ++sent) {
                QTRY_COMPARE(r.device.count(UsbFrame::Pipe, QByteArray(512, 'x')), sent);
                skip(40ms);
            }
        } else {
            skip(1s);
            QCOMPARE(r.device.count(UsbFrame::Pipe), 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestUsbLink)
#include "tst_usb_link.moc"
