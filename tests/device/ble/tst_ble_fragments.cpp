// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleFragments.h"

#include <QTest>

using namespace tallyforge;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

QByteArray textOf(qsizetype size)
{
    QByteArray text(size, '{');
    for (qsizetype i = 1; i < size; ++i) {
        text[i] = static_cast<char>(i % 251);
    }
    return text;
}

} // namespace

class TestBleFragments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requests_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("writePayload");
        QTest::addColumn<int>("fragments");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        const auto row = [](const char *name, int size, int writePayload, int fragments, int first, int last) {
            QTest::newRow(name) << size << writePayload << fragments << first << last;
        };
        row("empty", 0, 20, 1, 0, 0);
        row("fits", 20, 20, 1, 20, 20);
        row("one byte more", 21, 20, 2, 20, 13);
        row("a whole number of pieces", 28, 20, 2, 20, 20);
        row("a size below the least", 21, -5, 2, 20, 13);
        row("fits the most", 244, 244, 1, 244, 244);
        row("a size above the most", 245, 100000, 2, 244, 13);
        row("largest, at the least size", 8192, 20, 586, 20, 8);
        row("largest, at the most size", 8192, 244, 35, 244, 106);
        row("too large", 8193, 244, 0, 0, 0);
    }
    void requests()
    {
        QFETCH(int, size);
        QFETCH(int, writePayload);
        const QByteArray text = textOf(size);
        const QList<QByteArray> fragments = bleEncodeRequest(text, writePayload, 0x1fe);
        QTEST(static_cast<int>(fragments.size()), "fragments");
        if (fragments.isEmpty()) {
            return;
        }
        QTEST(static_cast<int>(fragments.constFirst().size()), "first");
        QTEST(static_cast<int>(fragments.constLast().size()), "last");
        if (fragments.size() == 1) {
            QCOMPARE(fragments.constFirst(), text);
            return;
        }
        BleReplyAssembler assembler; // an answer in long fragments looks the same
        for (qsizetype i = 0; i < fragments.size(); ++i) {
            QByteArray header = hex("fffe");
            for (const qsizetype number : {text.size(), i}) {
                header += static_cast<char>(number >> 8);
                header += static_cast<char>(number);
            }
            QCOMPARE(fragments[i].left(6), header);
            const bool last = i + 1 == fragments.size();
            QCOMPARE(assembler.feed(fragments[i]), last ? QByteArrayList{text} : QByteArrayList{});
        }
    }

    void replies_data()
    {
        QTest::addColumn<QByteArrayList>("writes");
        QTest::addColumn<QByteArrayList>("texts");
        QTest::addColumn<int>("truncated");
        const auto row = [](const char *name, const QByteArrayList &writes, const QByteArrayList &texts,
                            int truncated = 0) { QTest::newRow(name) << writes << texts << truncated; };
        const QByteArray a = hex("ff0100040000") + "ab";
        const QByteArray b = hex("ff0100040001") + "cd";
        const QByteArray x = hex("000400") + "wx";
        const QByteArray y = hex("000401") + "yz";
        const QByteArray far = hex("000402") + "??";
        row("whole", {"{}", "{", "", "{\"a\":1}"}, {"{}", "{", "{\"a\":1}"});
        row("long fragments", {a, b}, {"abcd"});
        row("short fragments", {x, y}, {"wxyz"});
        row("both kinds in one text", {a, y}, {"abyz"});
        row("a whole one between", {a, "{}", b}, {"{}", "abcd"});
        row("a second one first", {b, y, a, b}, {"abcd"});
        row("a first one in the middle", {x, a, b}, {"abcd"});
        row("one lost", {a, far, b, x, y}, {"wxyz"}, 1);
        row("one twice", {a, b, b, x, y, x, y}, {"abcd", "wxyz", "wxyz"});
        row("the same one twice", {x, hex("000401") + "y", hex("000401") + "y", x, y}, {"wxyz"}, 1);
        row("a total of nothing", {x, hex("000000") + "ab", y, a, b}, {"abcd"});
        row("too short for its header", {hex("ff01000400"), hex("0004"), hex("ff"), a, hex("00"), b}, {"abcd"});
        row("no payload", {hex("000100"), hex("000101"), hex("000102") + "z"}, {"z"});
        row("more than promised", {a, b + "rest"}, {"abcdrest"});
    }
    void replies()
    {
        QFETCH(QByteArrayList, writes);
        BleReplyAssembler assembler;
        int truncated = 0;
        QString message;
        assembler.onTruncated = [&](const QString &text) {
            ++truncated;
            message = text;
        };
        QByteArrayList texts;
        for (const QByteArray &write : std::as_const(writes)) {
            texts += assembler.feed(write);
        }
        QTEST(texts, "texts");
        QTEST(truncated, "truncated");
        QCOMPARE(message.isEmpty(), truncated == 0);
        const QList<QByteArray> half = assembler.feed(hex("000500") + "half");
        QVERIFY(half.isEmpty());
        assembler.reset();
        QVERIFY(assembler.feed(hex("000501") + "!").isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestBleFragments)
#include "tst_ble_fragments.moc"
