// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/SerialPort.h"
#include "tests/support/Pty.h"

#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <functional>
#include <thread>

#include <poll.h>
#include <termios.h>

using namespace tallyforge;
using namespace tallyforge::test;
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

const std::function<int()> *onWait = nullptr; // gives the milliseconds to wait

} // namespace

// In place of the system's, so that a test knows of the waits and shortens them.
extern "C" int poll(pollfd *states, nfds_t count, int timeout)
{
    const int ms = timeout > 0 && onWait != nullptr ? (*onWait)() : timeout;
    const timespec limit{ms / 1000, ms % 1000 * 1000000L};
    return ppoll(states, count, &limit, nullptr);
}

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
        QByteArray got;
        std::atomic<bool> stop = false;
        std::thread reader([&] {
            while (!stop || !got.endsWith('!')) {
                got += pty.take();
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        });
        const QByteArray large = QByteArray(20000, 'x') + '!';
        const bool written = port.write(large); // far more than the buffer holds: it has to wait
        stop = true;
        reader.join();
        QVERIFY(written);
        QCOMPARE(got, large);
    }

    void waitsOfAFullBuffer_data()
    {
        QTest::addColumn<int>("drainedAt");
        QTest::addColumn<bool>("written");
        QTest::newRow("room in the last wait") << 31 << true;
        QTest::newRow("room too late") << 32 << false;
    }
    void waitsOfAFullBuffer()
    {
        QFETCH(int, drainedAt);
        const Pty pty;
        SerialPort port;
        QVERIFY(port.open(pty.path(), 115200, nullptr));
        int waits = -1000000;
        const std::function<int()> wait = [&] { return ++waits == drainedAt && !pty.take().isEmpty() ? 5000 : 1; };
        onWait = &wait;
        const auto restore = qScopeGuard([] { onWait = nullptr; });
        QVERIFY(!port.write(QByteArray(20000, 'x'))); // the buffer is full, and stays so
        waits = 0;
        QTEST(port.write("x"), "written");
        QCOMPARE(waits, 31);
    }
};

QTEST_GUILESS_MAIN(TestSerialPort)
#include "tst_serial_port.moc"
