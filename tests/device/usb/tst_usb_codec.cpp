// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/AdminFragments.h"
#include "device/usb/UsbFrame.h"

#include <QElapsedTimer>
#include <QTest>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// Payloads as "<type>:<bytes>", fed in pieces of one size.
QByteArrayList parse(const QByteArray &stream, qsizetype piece)
{
    UsbFrameParser parser;
    QByteArrayList found;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        const QList<UsbFrame> frames = parser.feed(stream.mid(at, piece));
        for (const UsbFrame &frame : frames) {
            found.append(QByteArray::number(frame.type) + ':' + frame.payload);
        }
    }
    return found;
}

// The payload of an admin frame, as it lies on the wire.
QByteArray payloadOf(const QByteArray &frame)
{
    return frame.mid(6, frame.size() - 8);
}

} // namespace

class TestUsbCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wireFormat()
    {
        // 0x29b1 is the check value that CRC catalogues give for "123456789".
        QCOMPARE(buildFrame(4, "123456789"), hex("00544604 0900") + "123456789" + hex("b129"));
        QCOMPARE(buildFrame(9, {}), hex("00544609 0000 ffff"));
        QCOMPARE(buildCtrlFrame({{u"t"_s, u"ping"_s}}).mid(3, 3), hex("030c00"));
        QCOMPARE(buildFrame(1, QByteArray(2048, 'x')).size(), 2056);
        QVERIFY(buildFrame(1, QByteArray(2049, 'x')).isEmpty());
    }

    void streams_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QByteArrayList>("found");
        const QByteArray one = buildFrame(1, "one");
        QByteArray corrupt = one;
        corrupt[7] = 'N';
        const auto row = [](const char *name, const QByteArray &stream, const QByteArrayList &found) {
            QTest::newRow(name) << stream << found;
        };
        row("frames and noise", "noise" + one + hex("005400000054") + buildFrame(200, {}) + one + hex("0054"),
            {"1:one", "200:", "1:one"});
        row("a frame inside a payload stays there", buildFrame(2, "a" + one + "b"), {"2:a" + one + "b"});
        row("a corrupt frame loses itself alone", corrupt + one, {"1:one"});
        row("a frame that begins inside a corrupt one", corrupt.left(8) + one, {"1:one"});
        row("a length beyond the limit", hex("005446010108") + one, {"1:one"});
        row("the largest", buildFrame(5, QByteArray(2048, '\0')), {"5:" + QByteArray(2048, '\0')});
        row("false syncs in a row", hex("005446005446005446") + one + QByteArray(2100, 'x'), {"1:one"});
    }
    void streams()
    {
        QFETCH(QByteArray, stream);
        QFETCH(QByteArrayList, found);
        for (const qsizetype piece : {1, 2, 3, 5, 7, 64, 1000, 100000}) {
            QCOMPARE(parse(stream, piece), found);
        }
        const QByteArray one = buildFrame(1, "one");
        for (qsizetype split = 1; split < one.size(); ++split) {
            UsbFrameParser parser;
            QVERIFY(parser.feed(one.left(split)).isEmpty());
            QCOMPARE(parser.feed(one.mid(split)).size(), 1);
        }
    }

    // Removing from the front byte by byte, or summing up without a bound, would take minutes.
    void costIsInProportion()
    {
        QElapsedTimer timer;
        timer.start();
        QByteArray falseSyncs;
        for (int i = 0; i < 350000; ++i) {
            falseSyncs += hex("005446010008"); // promises 2048 bytes
        }
        QCOMPARE(parse(falseSyncs, falseSyncs.size()).size(), 0);
        QCOMPARE(parse(falseSyncs.left(600000), 1).size(), 0);
        QCOMPARE(parse(QByteArray(8000000, '\0'), 4096).size(), 0);
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    }

    void adminTexts_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("frames");
        QTest::newRow("empty") << 0 << 1;
        QTest::newRow("fits") << 2048 << 1;
        QTest::newRow("one byte more") << 2049 << 2;
        QTest::newRow("largest") << 65535 << 33;
        QTest::newRow("too large") << 65536 << 0;
    }
    void adminTexts()
    {
        QFETCH(int, size);
        QByteArray text(size, '"');
        for (int i = 0; i < size; ++i) {
            text[i] = i == 0 ? '{' : static_cast<char>('0' + i % 70);
        }
        const QList<QByteArray> frames = buildAdminFrames(text);
        QTEST(static_cast<int>(frames.size()), "frames");
        AdminReassembler reassembler;
        for (qsizetype i = 0; i < frames.size(); ++i) {
            const QByteArray done = reassembler.feed(payloadOf(frames[i]));
            QCOMPARE(done, i + 1 == frames.size() ? text : QByteArray());
        }
        if (size == 2049) {
            QCOMPARE(frames[1].size(), 8 + 3 + 4);
            QCOMPARE(payloadOf(frames[1]).left(3), hex("080101"));
        }
    }

    void adminFragmentsOutOfOrder_data()
    {
        QTest::addColumn<QByteArrayList>("payloads");
        QTest::addColumn<QByteArrayList>("texts");
        const QByteArray a = hex("000400") + "{\"";
        const QByteArray b = hex("000401") + "\"}";
        const auto row = [](const char *name, const QByteArrayList &payloads, const QByteArrayList &texts) {
            QTest::newRow(name) << payloads << texts;
        };
        row("in order", {a, b}, {"{\"\"}"});
        row("a second one first", {b, a, b}, {"{\"\"}"});
        row("a first one in the middle abandons both", {a, a, b, a, b}, {"{\"\"}"});
        row("another total", {a, hex("000501") + "\"}", b, a, b}, {"{\"\"}"});
        row("too short to be one", {a, hex("0004"), QByteArray(), b}, {"{\"\"}"});
        row("more than promised", {a, b + "rest"}, {"{\"\"}"});
        row("total of nothing", {hex("000000"), a, b}, {"{\"\"}"});
        QByteArrayList many; // the sequence begins anew after 255
        for (int i = 0; i < 300; ++i) {
            many.append(hex("012c") + static_cast<char>(i) + 'x');
        }
        row("more than 256 of them", many, {QByteArray(300, 'x')});
        row("whole texts between", {"{}", a, "{}", b, "{1}"}, {"{}", "{\"\"}", "{1}"});
    }
    void adminFragmentsOutOfOrder()
    {
        QFETCH(QByteArrayList, payloads);
        AdminReassembler reassembler;
        QByteArrayList texts;
        for (const QByteArray &payload : std::as_const(payloads)) {
            if (const QByteArray text = reassembler.feed(payload); !text.isEmpty()) {
                texts.append(text);
            }
        }
        QTEST(texts, "texts");
    }
};

QTEST_GUILESS_MAIN(TestUsbCodec)
#include "tst_usb_codec.moc"
