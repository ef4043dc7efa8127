// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/StreamMessage.h"
#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "tests/support/FakeLink.h"
#include "tests/support/FakeModule.h"
#include "tests/support/Pty.h"
#include "tests/support/TcpPeer.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

/// A session with something on a port, as a dialog holds it.
struct Plugged
{
    explicit Plugged(const QByteArray &answer, const Pty &at, const QString &path = {})
        : pty(at)
        , session(new DeviceSession(new UsbLink(path.isEmpty() ? pty.path() : path), nullptr))
    {
        session->start({u"p"_s});
        hello(answer);
    }
    ~Plugged() { delete session; }
    void hello(const QByteArray &answer) const { pty.send(buildFrame(UsbFrame::Ctrl, answer)); }

    const Pty &pty;
    QPointer<DeviceSession> session;
};

QByteArray helloFor(int port)
{
    const QByteArray number = QByteArray::number(port);
    return R"({"t":"hello","device_id":"D","tunnel":{"host":"127.0.0.1","port":)" + number +
           R"(,"streams":{"ota":{"host":"127.0.0.1","port":)" + number + "}}}}";
}

} // namespace

class TestUsbRelays : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void init()
    {
        setConfigFolder(m_dir.path());
        App::init(u"https://127.0.0.1:9"_s);
        App::get()->settings().setShareConnection(true);
    }
    void cleanup() { App::shutdown(); }

    void whatIsKept_data()
    {
        QTest::addColumn<QByteArray>("hello");
        QTest::addColumn<bool>("shared");
        QTest::addColumn<QString>("summary");
        QTest::newRow("a device") << helloFor(9) << true << u"D: ready, waiting for the device"_s;
        QTest::newRow("a device without a name") << QByteArray(R"({"t":"hello","tunnel":{"host":"c","port":1}})")
                                                 << true << u"USB device: ready, waiting for the device"_s;
        QTest::newRow("a receiver whose device is away")
            << QByteArray(R"({"t":"rx_status"})") << true << u"wireless receiver: waiting for the paired device"_s;
        QTest::newRow("a device without a cloud") << QByteArray(R"({"t":"hello"})") << true << QString();
        QTest::newRow("the connection isn't shared") << helloFor(9) << false << QString();
    }
    void whatIsKept()
    {
        QFETCH(QByteArray, hello);
        QFETCH(bool, shared);
        QFETCH(QString, summary);
        App &app = *App::get();
        app.settings().setShareConnection(shared);
        const Pty pty;
        Plugged usb(hello, pty);
        QVERIFY(!app.keepUsbRelay(nullptr));
        QTRY_VERIFY(usb.session->state() != DeviceSession::State::Connecting);
        QSignalSpy changed(&app, &App::usbRelaysChanged);
        QCOMPARE(app.keepUsbRelay(usb.session), !summary.isEmpty());
        QCOMPARE(app.usbRelaySummaries().join(u'\n'), summary);
        QCOMPARE(usb.session->parent() != nullptr, !summary.isEmpty());
        QCOMPARE(changed.isEmpty(), summary.isEmpty());

        usb.session->stop();
        QVERIFY(!app.keepUsbRelay(usb.session)); // idle
        DeviceSession wireless(new FakeLink, nullptr);
        wireless.start({});
        QVERIFY(!app.keepUsbRelay(&wireless));
    }

    void keptSessionGoes_data()
    {
        QTest::addColumn<std::function<void(Pty &, Plugged &)>>("how");
        const auto row = [](const char *name, const std::function<void(Pty &, Plugged &)> &how) {
            QTest::newRow(name) << how;
        };
        row("the port vanishes", [](Pty &pty, Plugged &) { pty.unplug(); });
        row("the device restarts", [](Pty &pty, Plugged &usb) {
            usb.session->reboot({});
            pty.unplug();
        });
        row("the dialog wants the port", [](Pty &pty, Plugged &) {
            QSignalSpy changed(App::get(), &App::usbRelaysChanged);
            App::get()->releaseUsbRelay(u"/dev/other"_s);
            QCOMPARE(changed.count(), 1);
            QCOMPARE(App::get()->usbRelaySummaries().size(), 1);
            App::get()->releaseUsbRelay(pty.path());
            SerialPort again;
            QString error;
            QVERIFY2(again.open(pty.path(), 115200, &error), qPrintable(error));
        });
        row("all are stopped", [](Pty &, Plugged &) { App::get()->stopUsbRelays(); });
        row("somebody deletes it", [](Pty &, Plugged &usb) { delete usb.session; });
    }
    void keptSessionGoes()
    {
        QFETCH(std::function<void(Pty & pty, Plugged & usb)>, how);
        Pty pty;
        Plugged usb(helloFor(9), pty);
        QTRY_COMPARE(usb.session->state(), DeviceSession::State::SigningIn);
        App &app = *App::get();
        QVERIFY(app.keepUsbRelay(usb.session));
        QStringList shown = app.usbRelaySummaries();
        connect(&app, &App::usbRelaysChanged, &app, [&] { shown = app.usbRelaySummaries(); });
        how(pty, usb);
        QTRY_VERIFY(!usb.session);
        QTRY_COMPARE(shown, QStringList());
    }

    // The data may come over another route from now on; the cable is then kept for the tunnel, or let go.
    void sessionThatFedTheData()
    {
        App &app = *App::get();
        const Pty first;
        const Pty second;
        Plugged tunnel(helloFor(9), first);
        Plugged plain(R"({"t":"hello"})", second);
        for (const Plugged *usb : {&tunnel, &plain}) {
            QTRY_COMPARE(usb->session->state(), DeviceSession::State::SigningIn);
            app.sources()->useSession(usb->session, u"Gym"_s);
            app.sources()->useSession(usb->session, u"Gym"_s);
            usb->session->setParent(app.sources());
        }
        app.sources()->useCloud(u"D"_s);
        QTRY_VERIFY(!plain.session);
        app.sources()->useSession(tunnel.session, u"Gym"_s); // which is kept by now
        tunnel.session->setParent(app.sources());
        app.sources()->useCloud(u"D"_s);
        QVERIFY(tunnel.session->parent() != app.sources());
        QCOMPARE(app.usbRelaySummaries(), QStringList{u"D: ready, waiting for the device"_s});
    }

    // A device was pulled out and plugged in again before anybody noticed.
    void samePortIsKeptOnce()
    {
        const QString path = m_dir.filePath(u"port"_s);
        App &app = *App::get();
        const Pty before;
        const Pty after;
        QFile::link(before.path(), path);
        Plugged first(helloFor(9), before, path);
        QTRY_COMPARE(first.session->state(), DeviceSession::State::SigningIn);
        QVERIFY(app.keepUsbRelay(first.session));
        QFile::remove(path);
        QFile::link(after.path(), path);
        Plugged second(helloFor(9), after, path);
        QTRY_COMPARE(second.session->state(), DeviceSession::State::SigningIn);
        QVERIFY(app.keepUsbRelay(second.session) && app.keepUsbRelay(second.session));
        QCOMPARE(app.usbRelaySummaries().size(), 1);
        QTRY_VERIFY(!first.session);
        QVERIFY(second.session);

        // The end of the one before may be the end of the next.
        const Pty last;
        QFile::remove(path);
        QFile::link(last.path(), path);
        Plugged third(helloFor(9), last, path);
        QTRY_COMPARE(third.session->state(), DeviceSession::State::SigningIn);
        second.session->refreshStatus([&](bool, const QString &) { delete third.session; });
        QVERIFY(!app.keepUsbRelay(third.session));
        QCOMPARE(app.usbRelaySummaries(), QStringList());
    }

    void leftSessionIsDeletedInItsEnd()
    {
        App &app = *App::get();
        const Pty pty;
        Plugged usb(R"({"t":"hello"})", pty);
        QTRY_COMPARE(usb.session->state(), DeviceSession::State::SigningIn);
        app.sources()->useSession(usb.session, u"Gym"_s);
        usb.session->setParent(app.sources());
        usb.session->refreshStatus([&](bool, const QString &) { delete usb.session; });
        app.sources()->useCloud(u"D"_s);
        QVERIFY(!usb.session);
    }

    // Bytes come and go in both tunnels, more than the cable carries, when the plug-in ends.
    void shutdownWhileTheTunnelsAreBusy()
    {
        TcpPeer cloud;
        const Pty pty;
        Plugged usb(helloFor(cloud.port()), pty);
        QTRY_COMPARE(usb.session->state(), DeviceSession::State::SigningIn);
        App &app = *App::get();
        QVERIFY(app.keepUsbRelay(usb.session));
        pty.send(buildFrame(UsbFrame::Pipe, "bytes"));
        QTRY_COMPARE(app.usbRelaySummaries(), QStringList{u"D: connected to the cloud through this computer"_s});
        const QPointer<QTcpSocket> pipe = cloud.client;
        pty.send(buildFrame(UsbFrame::Stream, stream::encode(1, stream::Open, "ota")));
        pty.send(buildFrame(UsbFrame::Stream, stream::encode(1, stream::Credit, QByteArray("\0\0\0\1", 4))));
        QTRY_COMPARE(cloud.connects, 2);
        pipe->write(QByteArray(400'000, 'x'));
        cloud.client->write(QByteArray(4'000'000, 'y'));
        pty.send(buildFrame(UsbFrame::Pipe, QByteArray(2000, 'z')));
        QTest::qWait(200);
        QElapsedTimer timer;
        timer.start();
        App::shutdown();
        QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(!usb.session);
        QTRY_VERIFY(!cloud.hasClient() && pipe->state() == QAbstractSocket::UnconnectedState);
    }
};

QTEST_GUILESS_MAIN(TestUsbRelays)
#include "tst_usb_relays.moc"
