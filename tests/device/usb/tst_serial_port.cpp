// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/SerialPort.h"
#include "tests/support/Pty.h"
#include "tests/support/SkippedTime.h"

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <termios.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

QByteArray everyByte()
{
    QByteArray bytes(256, '\0');
    for (int i = 0; i < 256; ++i) {
        bytes[i] = static_cast<char>(i);
    }
    return bytes;
}

} // namespace

class TestSerialPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatCannotBeOpened()
    {
        SerialPort port;
        QString error;
        QVERIFY(!port.open(u"/dev/none"_s, 115200, &error));
        QCOMPARE(error, u"Could not open the USB port: No such file or directory"_s);
        QTemporaryFile file;
        QVERIFY(file.open());
        QVERIFY(!port.open(file.fileName(), 115200, &error));
        QCOMPARE(error, u"That is not a serial port."_s);
        QVERIFY(!port.open(file.fileName(), 115200, nullptr));
        QVERIFY(!port.isOpen() && !port.write("x"));

        const Pty pty;
        SerialPort first;
        QVERIFY(first.open(pty.path(), 115200, &error));
        if (port.open(pty.path(), 115200, &error)) {
            QSKIP("this user may open what another program has claimed");
        }
        QCOMPARE(error,
                 u"That USB port is in use by another program (close any serial monitor) or access was denied."_s);
    }

    void rawAndAtTheRightSpeed_data()
    {
        QTest::addColumn<int>("baud");
        QTest::addColumn<speed_t>("speed");
        QTest::newRow("usual") << 9600 << B9600;
        QTest::newRow("fastest") << 230400 << B230400;
        QTest::newRow("no speed of a port") << 12345 << B115200;
    }
    void rawAndAtTheRightSpeed()
    {
        const Pty pty;
        SerialPort port;
        QFETCH(int, baud);
        QVERIFY(port.open(pty.path(), baud, nullptr));
        termios settings{};
        QCOMPARE(tcgetattr(pty.fd(), &settings), 0);
        QTEST(cfgetospeed(&settings), "speed");
        QCOMPARE(settings.c_lflag & (ICANON | ECHO | ISIG), 0U);
        QCOMPARE(settings.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS | HUPCL), tcflag_t(CS8));
        QByteArray got;
        connect(&port, &SerialPort::readyRead, this, [&](const QByteArray &bytes) { got += bytes; });
        pty.send(everyByte());
        QTRY_COMPARE(got, everyByte());
        QVERIFY(port.write(everyByte()) && port.write({}));
        QByteArray sent;
        const auto sentSoFar = [&] { return sent += pty.take(); };
        QTRY_COMPARE(sentSoFar(), everyByte());
    }

    void whatWasThereBeforeIsDropped()
    {
        const Pty pty;
        SerialPort port;
        QSignalSpy read(&port, &SerialPort::readyRead);
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        pty.send("old");
        QVERIFY(port.open(pty.path(), 115200, nullptr)); // closes, and opens anew
        pty.send("new");
        QTRY_COMPARE(read.count(), 1);
        QCOMPARE(read[0][0].toByteArray(), "new");
    }

    void slotMayCloseThePort()
    {
        const Pty pty;
        SerialPort port;
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        int reads = 0;
        connect(&port, &SerialPort::readyRead, this, [&] {
            ++reads;
            port.close();
        });
        pty.send(QByteArray(3000, 'x'));
        QTRY_COMPARE(reads, 1);
        QTest::qWait(50);
        QCOMPARE(reads, 1);
    }

    void unplugged()
    {
        Pty pty;
        SerialPort port;
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        QSignalSpy lost(&port, &SerialPort::errorOccurred);
        pty.unplug();
        QVERIFY(!port.write("x"));
        QTRY_COMPARE(lost.count(), 1);
        QCOMPARE(lost[0][0].toString(), u"The USB device was unplugged or stopped responding."_s);
        QVERIFY(!port.isOpen());
        QTest::qWait(50);
        QCOMPARE(lost.count(), 1);
    }

    void fullBuffer()
    {
        const Pty pty;
        SerialPort port;
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        QSignalSpy ended(&port, &SerialPort::writeEnded);
        const QByteArray large(100000, 'x'); // far more than the buffer holds
        QVERIFY(port.write(large) && port.isWriting());
        QVERIFY(port.write("!") && !port.write(large)); // so much doesn't wait
        QByteArray got;
        const auto gotSoFar = [&] { return got += pty.take(); };
        QTRY_COMPARE(gotSoFar(), large + '!');
        QTRY_COMPARE(ended.count(), 1);
        QVERIFY(ended[0][0].toBool() && !port.isWriting());
    }

    void deviceThatTakesNothing()
    {
        const Pty pty;
        SerialPort port;
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        QSignalSpy ended(&port, &SerialPort::writeEnded);
        QVERIFY(port.write(QByteArray(100000, 'x')));
        for (int i = 0; i < 2; ++i) { // it takes a part in time, and the wait begins anew
            skippedTime += 2500ms;
            QVERIFY(!pty.take().isEmpty());
            QTest::qWait(50);
        }
        QVERIFY(port.isWriting() && ended.isEmpty());
        skippedTime += 3100ms;
        QTRY_COMPARE(ended.count(), 1);
        QVERIFY(!ended[0][0].toBool() && !port.isWriting() && port.isOpen());
    }
};

QTEST_GUILESS_MAIN(TestSerialPort)
#include "tst_serial_port.moc"
