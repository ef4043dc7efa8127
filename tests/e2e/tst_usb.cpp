// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A simulated device on a serial port, from finding it to its scores in libobs's picture, with all
// that one can wish of it and both tunnels busy meanwhile.

#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "sources/sources.h"
#include "tests/support/FakeModule.h"
#include "tests/support/ObsHost.h"
#include "tests/support/ObsSource.h"
#include "tests/support/SimProcess.h"
#include "tests/support/SkippedTime.h"

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

using State = DeviceSession::State;

constexpr const char *style = R"({"font":{"face":"DejaVu Sans","size":64,"style":"Bold","flags":1},)";
// By libobs and by us.
QByteArray &logged()
{
    static QByteArray log;
    return log;
}

void keepLog(int, const char *message, va_list arguments, void *)
{
    logged() += QString::vasprintf(message, arguments).toUtf8() + '\n';
}

constexpr int pace = 25; // the device's own waits are that much shorter

} // namespace

class TestUsb : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<ObsHost> m_host;
    std::unique_ptr<SimProcess> m_sim;
    std::unique_ptr<ObsSource> m_score;
    QPointer<DeviceSession> m_session;
    int m_stream = 0;
    std::pair<qint64, qint64> m_before;

    QJsonObject deviceState(const QString &part)
    {
        const QJsonObject devices = m_sim->call(u"/state"_s).value(u"devices"_s).toObject();
        return devices.value(u"TF-1001"_s).toObject().value(part).toObject();
    }

    // What an operation told its callback: that it went well or not, and a text.
    using Told = std::function<void(bool ok, const QString &text)>;
    static QString outcome(const std::function<void(const Told &)> &operation)
    {
        QString outcome;
        operation([&outcome](bool ok, const QString &text) { outcome += (ok ? u"ok "_s : u"failed "_s) + text; });
        static_cast<void>(skipUntil([&outcome] { return !outcome.isEmpty(); }, 15ms)); // as the device's own waits
        return outcome.trimmed();
    }

    // Changes the score at the venue; it must come to stand in the picture as ordinary text would.
    void scoreReachesThePicture(int home)
    {
        m_sim->call(u"/set"_s, {{u"fields"_s, QJsonObject{{u"home_score"_s, home}, {u"away_score"_s, 7}}}});
        const ObsSource plain("text_ft2_source_v2",
                              QByteArray(style) + "\"text\":\"" + QByteArray::number(home) + " - 7\"}");
        ObsHost::show(plain);
        const QByteArray expected = m_host->settledPicture();
        ObsHost::show(*m_score);
        QTRY_COMPARE(m_host->settledPicture(), expected);
    }

    // Both tunnels carry bytes in both directions from now on.
    void makeTunnelsBusy()
    {
        m_sim->call(u"/usb/pipe"_s, {{u"reset"_s, true}});
        m_sim->call(u"/usb/pipe"_s, {{u"send"_s, 4000000}, {u"rate"_s, 4000}});
        m_stream = m_sim->call(u"/usb/stream"_s, {{u"open"_s, u"echo"_s}}).value(u"id"_s).toInt();
        m_sim->call(u"/usb/stream"_s, {{u"id"_s, m_stream}, {u"send"_s, 4000000}, {u"rate"_s, 4000}});
        m_before = received();
    }
    // The bytes that have come back from the cloud, through the one tunnel and the other.
    std::pair<qint64, qint64> received()
    {
        const QJsonValue usb = deviceState(u"usb"_s);
        const auto bytes = [](const QJsonValue &end) { return end[u"received"_s][u"bytes"_s].toInteger(); };
        return {bytes(usb[u"pipe"_s]), bytes(usb[u"streams"_s][QString::number(m_stream)])};
    }
    void tunnelsHaveCarriedMore()
    {
        const auto [pipe, stream] = std::exchange(m_before, received());
        QVERIFY(m_before.first > pipe && m_before.second > stream);
    }
    // All of it came back as it had been sent.
    void tunnelsKeepTheBytes()
    {
        m_sim->call(u"/usb/pipe"_s, {{u"reset"_s, true}});
        m_sim->call(u"/usb/pipe"_s, {{u"send"_s, 20001}});
        m_stream = m_sim->call(u"/usb/stream"_s, {{u"open"_s, u"echo"_s}}).value(u"id"_s).toInt();
        m_sim->call(u"/usb/stream"_s, {{u"id"_s, m_stream}, {u"send"_s, 20001}});
        QTRY_COMPARE_WITH_TIMEOUT(received(), std::pair(20001LL, 20001LL), 15000);
        const QJsonValue usb = deviceState(u"usb"_s);
        for (const QJsonValue &tunnel : {usb[u"pipe"_s], usb[u"streams"_s][QString::number(m_stream)]}) {
            QCOMPARE(tunnel[u"received"_s][u"sha256"_s], tunnel[u"sent"_s][u"sha256"_s]);
        }
    }

    void backAfterTheRestart(int home)
    {
        QTRY_COMPARE(m_session->state(), State::Restarting);
        QTRY_VERIFY(QFile::exists(u"/dev/ttyACM0"_s));
        m_session->start({u"longenough"_s});
        QTRY_COMPARE(m_session->state(), State::Ready);
        makeTunnelsBusy();
        scoreReachesThePicture(home);
    }

private Q_SLOTS:
    void initTestCase()
    {
        base_set_log_handler(keepLog, nullptr);
        setConfigFolder(m_dir.path());
        m_host = std::make_unique<ObsHost>();
        QVERIFY(m_host->isUp());
        sources_register();
        App::init(u"http://127.0.0.1:9"_s);
        sources_connect_live_data();
        m_score =
            std::make_unique<ObsSource>("tallyforge_text", style + "\"template\":\"{home_score} - {away_score}\"}"_ba);
        m_sim = std::make_unique<SimProcess>(QStringList{u"--account=a@venue.example:correct horse"_s,
                                                         u"--usb=TF-1001"_s, u"--admin-password=TF-1001=courtside"_s,
                                                         u"--pace"_s, QString::number(pace)});
        QVERIFY(!m_sim->ready.isEmpty());
    }
    void cleanupTestCase()
    {
        QCOMPARE(m_sim->call(u"/state"_s).value(u"violations"_s).toArray(), QJsonArray());
        const QJsonArray secrets = m_sim->call(u"/secrets"_s).value(u"secrets"_s).toArray();
        QVERIFY(secrets.size() > 5 && logged().contains("[tallyforge] live data: Live from Main gym"));
        for (const QJsonValueConstRef secret : secrets) {
            QVERIFY2(!logged().contains(secret.toString().toUtf8()), logged().constData());
        }
        ObsHost::show(nullptr);
        m_score.reset();
        App::shutdown();
        QVERIFY(!m_session);
        m_host.reset();
        QCOMPARE(ObsHost::shutdown(), 0);
    }

    void scoresOfAPortThatIsFound()
    {
        const QList<SerialPortInfo> ports = listSerialPorts();
        QCOMPARE(ports.size(), 1);
        QVERIFY(ports[0].likelyDevice);
        auto *link = new UsbLink(ports[0].path);
        m_session = new DeviceSession(link, App::get());
        m_session->start({u"wrong"_s, u"courtside"_s});
        QTRY_COMPARE(m_session->state(), State::Ready);
        QCOMPARE(m_session->deviceId(), u"TF-1001"_s);
        App &app = *App::get();
        app.sources()->useSession(m_session, u"Main gym"_s);
        scoreReachesThePicture(3);
        QCOMPARE(app.sources()->statusText(), u"Live from Main gym"_s);
        tunnelsKeepTheBytes();
    }

    void everyOperationWhileTheTunnelsAreBusy()
    {
        DeviceSession &s = *m_session;
        makeTunnelsBusy();
        QCOMPARE(outcome([&](const Told &told) {
                     s.scanWifi([told](bool ok, const QList<WifiNetwork> &networks, const QString &note) {
                         told(ok, QString::number(networks.size()) + networks.value(0).ssid + note);
                     });
                 }),
                 u"ok 5Venue"_s);
        const auto join = [&](const QString &ssid, const QString &password) {
            return outcome([&](const Told &told) { s.configureWifi(ssid, password, {}, told); });
        };
        QCOMPARE(join(u"Locker room"_s, {}), u"ok Joined Locker room (127.0.0.1)."_s);
        QCOMPARE(join(u"Venue"_s, u"wrong-one"_s),
                 u"failed The device could not join Venue: authentication failed. Check the password and try again."_s);
        QCOMPARE(join(u"Basement"_s, u"below-the-stands"_s),
                 u"failed The device is still working on joining Basement. Check back in a minute."_s);

        ControllerChoice wish;
        QCOMPARE(outcome([&](const Told &told) {
                     s.listControllers([&wish, told](bool ok, const QList<ControllerChoice> &all, const QString &e) {
                         wish = all.value(2);
                         told(ok && all.size() > 5, e);
                     });
                 }),
                 u"ok"_s);
        QCOMPARE(outcome([&](const Told &told) { s.setController(wish, told); }), u"ok"_s);
        QCOMPARE(outcome([&](const Told &told) {
                     s.getControllerConfig([&wish, told](bool ok, const QJsonObject &config, const QString &e) {
                         told(ok && ControllerChoice::fromJson(config) == wish, e);
                     });
                 }),
                 u"ok"_s);
        QCOMPARE(outcome([&](const Told &told) {
                     s.ensureApiToken(
                         [told](bool ok, const QString &token, const QString &e) { told(ok && !token.isEmpty(), e); });
                 }),
                 u"ok"_s);
        QCOMPARE(outcome([&](const Told &told) { s.changePassword(u"wrong"_s, u"longenough"_s, told); }),
                 u"failed The current password is wrong."_s);
        QCOMPARE(outcome([&](const Told &told) { s.changePassword(u"courtside"_s, u"longenough"_s, told); }), u"ok"_s);
        tunnelsHaveCarriedMore();
        scoreReachesThePicture(4);
    }

    void operationsThatRestartTheDevice()
    {
        DeviceSession &s = *m_session;
        const QString peer = u"02:00:00:00:00:01"_s;
        QCOMPARE(outcome([&](const Told &told) {
                     s.enableWirelessTransmitter(peer, {}, true, [told](bool ok, const QString &e, const QString &key) {
                         told(ok && key.size() == 32, e);
                     });
                 }),
                 u"ok"_s);
        backAfterTheRestart(5);
        QCOMPARE(outcome([&](const Told &told) {
                     s.wirelessLink([told](const WirelessLink &link) {
                         told(link.available && link.transmitting && link.paired, link.peerMac);
                     });
                 }),
                 u"ok "_s + peer);
        QVERIFY(outcome([&](const Told &told) {
                    s.scanWifi([told](bool ok, const auto &, const QString &note) { told(ok, note); });
                }).startsWith(u"ok This device is set to send its scores to a wireless receiver"));
        QCOMPARE(outcome([&](const Told &told) { s.disableEspNowSender(told); }), u"ok"_s);
        backAfterTheRestart(6);
        QVERIFY(!s.wirelessActive());
        QCOMPARE(outcome([&](const Told &told) { s.reboot(told); }), u"ok"_s);
        backAfterTheRestart(7);
    }

    void keptForItsTunnels()
    {
        App &app = *App::get();
        QVERIFY(app.keepUsbRelay(m_session));
        QTRY_COMPARE(app.usbRelaySummaries(), QStringList{u"TF-1001: connected to the cloud through this computer"_s});
        QTRY_VERIFY(received() > m_before);
        tunnelsHaveCarriedMore();
        m_sim->call(u"/usb/replug"_s, {{u"device"_s, u"TF-1001"_s}});
        QTRY_VERIFY(!m_session);
        QCOMPARE(app.usbRelaySummaries(), QStringList());
        QCOMPARE(app.sources()->statusText(), u"The USB device was unplugged or stopped responding."_s);
    }
};

QTEST_GUILESS_MAIN(TestUsb)
#include "tst_usb.moc"
