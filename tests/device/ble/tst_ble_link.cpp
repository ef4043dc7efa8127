// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/RpcClient.h"
#include "device/ble/BleBridge.h"
#include "device/ble/BleLink.h"
#include "tests/support/BleHelperDouble.h"
#include "tests/support/SkippedTime.h"

#include <QSignalSpy>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

struct Rig
{
    Rig() { bridge.setHelperPath(helper.path()); }
    void open()
    {
        link.open();
        QTRY_COMPARE(opened.count(), 1);
    }
    /// Leaves writes unanswered.
    void holdWrites()
    {
        helper.onOp = [this](const QJsonObject &op) {
            if (op.value(u"op"_s) != u"write"_s) {
                helper.answer(op);
            } else {
                held.append(op);
            }
        };
    }
    void confirm() { helper.send(BleHelperDouble::okLine(held.takeFirst())); }

    BleHelperDouble helper;
    BleBridge bridge;
    BleLink link{&bridge, u"id-1"_s, u"Main gym"_s, nullptr};
    QList<QJsonObject> held;
    QSignalSpy opened{&link, &DeviceLink::opened};
    QSignalSpy closed{&link, &DeviceLink::closed};
    QSignalSpy failed{&link, &DeviceLink::failed};
    QSignalSpy sendFailed{link.transport(), &RpcTransport::sendFailed};
    QSignalSpy messages{link.transport(), &RpcTransport::message};
};

} // namespace

class TestBleLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failedOpenings()
    {
        for (const QString &failing : {u"start"_s, u"connect"_s}) {
            Rig r;
            r.helper.onOp = [&](const QJsonObject &op) {
                op.value(u"op"_s) == failing ? r.helper.fail(op, u"code"_s, u"No."_s) : r.helper.answer(op);
            };
            r.link.open();
            QTRY_COMPARE(r.failed.count(), 1);
            QCOMPARE(r.failed[0], (QVariantList{u"code"_s, u"No."_s}));
            QVERIFY(r.helper.asked().endsWith(failing) && !r.link.transport()->isOpen());
        }
    }

    void closeWhileConnecting()
    {
        Rig r;
        QList<QJsonObject> connects;
        r.helper.onOp = [&](const QJsonObject &op) {
            op.value(u"op"_s) == u"connect"_s ? connects.append(op) : r.helper.answer(op);
        };
        r.link.open();
        QTRY_COMPARE(connects.size(), 1);
        r.link.close();
        r.helper.answer(connects[0]);
        r.link.transport()->send("{}");
        QCOMPARE(r.sendFailed[0], (QVariantList{u"disconnected"_s, u"Not connected to a device"_s}));
        r.link.open(); // the late answer must not pass for this one's
        QTRY_COMPARE(connects.size(), 2);
        QCOMPARE(r.opened.count() + r.failed.count() + r.closed.count(), 0);
        QCOMPARE(connects[1].value(u"id"_s).toString(), u"id-1"_s);
        r.helper.answer(connects[1]);
        QTRY_COMPARE(r.opened.count(), 1);
        QCOMPARE(r.helper.asked(), u"start connect connect"_s);
    }

    void writesGoOneByOneInOrder()
    {
        Rig r;
        r.holdWrites();
        r.open();
        const QByteArray one(30, '1');
        const QByteArray two(20, '2');
        r.link.transport()->send(one);
        r.link.transport()->send(two);
        QByteArrayList written;
        for (int i = 0; i < 4; ++i) {
            QTRY_COMPARE(r.held.size(), 1);
            written.append(BleHelperDouble::bytesOf(r.held.constFirst()));
            r.confirm();
        }
        QCOMPARE(written, bleEncodeRequest(one, 20, 1) + bleEncodeRequest(two, 20, 2));
        r.helper.onOp = [&](const QJsonObject &op) {
            written.append(BleHelperDouble::bytesOf(op));
            r.helper.answer(op);
        };
        for (int i = 3; i <= 256; ++i) {
            r.link.transport()->send(one);
        }
        QTRY_COMPARE(written.size(), 4 + 254 * 3);
        QCOMPARE(written.sliced(4 + 252 * 3), bleEncodeRequest(one, 20, 255) + bleEncodeRequest(one, 20, 1));
    }

    void failedWrites_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("of any kind") << u"write_failed"_s << u"No."_s;
        QTest::newRow("not paired")
            << u"not_paired"_s
            << u"This computer is not paired with the device yet. Pair it once with the 6-digit passkey from the "
               "device's label or your Tallyforge account (macOS asks automatically; on Windows pair it in Bluetooth "
               "settings first), then connect again."_s;
        QTest::newRow("timeout") << u"timeout"_s << u"Bluetooth did not respond in time."_s;
    }
    void failedWrites()
    {
        QFETCH(QString, code);
        Rig r;
        r.holdWrites();
        r.open();
        r.link.transport()->send(QByteArray(100, 'x'));
        r.link.transport()->send(QByteArray(8193, 'x'));
        QCOMPARE(r.sendFailed[0],
                 (QVariantList{u"request_too_large"_s, u"That request is too large for the device"_s}));
        QTRY_COMPARE(r.held.size(), 1);
        if (code != u"timeout"_s) {
            r.helper.fail(r.held.takeFirst(), code, u"No."_s);
        } else {
            skip(14s);
            QCOMPARE(r.sendFailed.count(), 1);
            skip(2s);
        }
        QTRY_COMPARE(r.sendFailed.count(), 2);
        QCOMPARE(r.sendFailed[1][0].toString(), code);
        QTEST(r.sendFailed[1][1].toString(), "message");
        r.held.clear();
        r.link.transport()->send("{}"); // the link is still good, and nothing of the rest goes out
        QTRY_COMPARE(r.held.size(), 1);
        QCOMPARE(BleHelperDouble::bytesOf(r.held[0]), "{}");
    }

    void losses_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("reason");
        QTest::newRow("with a reason") << QByteArray("{\"ev\":\"disconnected\",\"reason\":\"Away\"}\n") << u"Away"_s;
        QTest::newRow("without") << QByteArray("{\"ev\":\"disconnected\"}\n") << u"Bluetooth link lost"_s;
        QTest::newRow("the helper, in the middle of a write") << QByteArray() << u"The Bluetooth helper stopped"_s;
    }
    void losses()
    {
        QFETCH(QByteArray, line);
        Rig r;
        r.holdWrites();
        r.open();
        RpcClient rpc(r.link.transport(), nullptr);
        QStringList codes;
        for (int i = 0; i < 2; ++i) {
            rpc.call(u"x"_s, {}, [&](const RpcResult &result) { codes.append(result.errorCode); });
        }
        QTRY_COMPARE(r.held.size(), 1);
        line.isEmpty() ? r.helper.kill() : r.helper.send(BleHelperDouble::dataLine("\xff") + line + line);
        QTRY_COMPARE(r.closed.count(), 1);
        QTEST(r.closed[0][0].toString(), "reason");
        QVERIFY(!r.link.transport()->isOpen());
        if (line.isEmpty()) {
            QCOMPARE(codes, (QStringList{u"bluetooth_unavailable"_s, u"bluetooth_unavailable"_s}));
        } else {
            r.confirm(); // of a connection that is over
        }
        skip(10s);
        QCOMPARE(r.helper.starts, 1); // nobody has asked for a new helper
        QCOMPARE(r.closed.count() + r.sendFailed.count(), line.isEmpty() ? 3 : 1);
        r.helper.onOp = [&](const QJsonObject &op) { r.helper.answer(op); };
        r.link.open();
        QTRY_COMPARE(r.opened.count(), 2);
        r.link.transport()->send("{}"); // the request before the loss is not in its way
        QTRY_VERIFY(r.helper.asked().endsWith(u"connect write"_s));
    }

    void closing()
    {
        Rig r;
        r.open();
        r.helper.send(BleHelperDouble::dataLine(QByteArray::fromHex("000400") + "ab")); // half of an answer
        r.helper.send(BleHelperDouble::dataLine("{\"whole\":1}"));
        QTRY_COMPARE(r.messages.count(), 1);
        r.link.close();
        r.helper.send(BleHelperDouble::dataLine("{}") + "{\"ev\":\"disconnected\"}\n");
        QTRY_COMPARE(r.helper.asked(), u"start connect disconnect"_s);
        r.link.open();
        QTRY_COMPARE(r.opened.count(), 2);
        r.helper.send(BleHelperDouble::dataLine(QByteArray::fromHex("000401") + "cd"));
        r.helper.send(BleHelperDouble::dataLine("{\"next\":1}"));
        QTRY_COMPARE(r.messages.count(), 2);
        QCOMPARE(r.closed.count() + r.sendFailed.count(), 0);
        r.helper.send(BleHelperDouble::dataLine(QByteArray::fromHex("000400") + "a"));
        r.helper.send(BleHelperDouble::dataLine(QByteArray::fromHex("000402") + "c"));
        QTRY_COMPARE(r.sendFailed.count(), 1);
        QCOMPARE(r.sendFailed[0][0].toString(), u"truncated"_s);
        {
            BleLink other(&r.bridge, u"id-2"_s, {}, nullptr);
            other.open();
            QTRY_VERIFY(other.transport()->isOpen());
        }
        QTRY_VERIFY(r.helper.asked().endsWith(u"connect disconnect"_s)); // a link that goes takes its connection along
    }
};

QTEST_GUILESS_MAIN(TestBleLink)
#include "tst_ble_link.moc"
