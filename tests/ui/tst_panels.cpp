// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The panels about a connected device, over a scripted one.

#include "core/SettingsStore.h"
#include "device/ControllerCatalog.h"
#include "device/DeviceSession.h"
#include "device/usb/UsbLink.h"
#include "tests/support/Pty.h"
#include "tests/support/UsbPeer.h"
#include "tests/ui/PanelFixture.h"
#include "ui/manager/ControllerPanel.h"
#include "ui/manager/NetworkTestText.h"
#include "ui/manager/PanelBase.h"
#include "ui/manager/SharePanel.h"
#include "ui/manager/StatusText.h"
#include "ui/manager/WifiPanel.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestPanels : public QObject, PanelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { m_panel.reset(); }

    void statusLines()
    {
        QCOMPARE(statusText(json(R"({"zeta":1,"Alpha":3.5,"eth_ip":"10.0.0.2","device_id":"d1","csrf_token":"s",
                                     "list":[1],"mqtt_connected":true,"uptime_s":3.0,"wifi":{"b":false,"a":2}})")),
                 u"Device ID: d1\nEthernet address: 10.0.0.2\nCloud connected: yes\nAlpha: 3.5\nUptime (s): 3\n"
                 "wifi: a=2, b=no\nzeta: 1"_s);
        QCOMPARE(scoreboardText(json(R"({"sport":"hockey","fields":{"b":true,"a":2}})")),
                 u"Sport: hockey\na: 2\nb: yes"_s);
        QCOMPARE(scoreboardText(json(R"({"sport":"","fields":{}})")), u"No scoreboard data yet."_s);
    }

    void status()
    {
        m_device.tell({R"(getStatus {"device_id":"d1"})", "getStatus timeout: Too late."});
        auto *manager = showManager();
        QVERIFY(m_device.requests.isEmpty()); // a panel that isn't visited asks nothing
        manager->showPage(0);
        QCOMPARE(box(u"DeviceStatus"_s), u"Device ID: d1"_s);
        Q_EMIT m_session->envelope(json(R"({"fields":{"home_score":7}})"));
        QCOMPARE(box(u"DeviceScoreboard"_s), u"home_score: 7"_s);
        auto *scores = find<QPlainTextEdit>(u"DeviceScoreboard"_s);
        QCOMPARE(scores->textCursor().position(), 0);
        QVERIFY(scores->find(u"home"_s));
        Q_EMIT m_session->envelope(json(R"({"sport":"hockey","fields":{"away":0,"home_score":7}})"));
        QCOMPARE(box(u"DeviceScoreboard"_s), u"Sport: hockey\naway: 0\nhome_score: 7"_s);
        QCOMPARE(scores->textCursor().selectedText(), u"home"_s);
        manager->showPage(0);
        QCOMPARE(message(), u"!Too late."_s);
        QCOMPARE(box(u"DeviceStatus"_s), u"Device ID: d1"_s);
        manager->setCurrentIndex(1);
        QCOMPARE(m_device.requests.first(4),
                 (QStringList{u"getStatus{}"_s, u"getStatus{}"_s, u"getEspNow{}"_s, u"scanWifi{}"_s}));
        m_session.reset();
        manager->showPage(0);
        QCOMPARE(message(), u"!Not connected to a device."_s);
    }

    void networkTest_data()
    {
        QTest::addColumn<QByteArrayList>("answers"); // the last one for ever
        QTest::addColumn<int>("requests");
        QTest::addColumn<QString>("result");
        const QByteArray checks = R"("checks":{"dns":{"ok":false,"detail":"no answer"},"local_network":{"ok":true}})";
        const QString lines = u"✓ Local network\n✗ DNS – no answer\n"_s;
        const QByteArray running = "{\"status\":\"running\"," + checks + '}';
        QTest::newRow("at once") << QByteArrayList{R"({"status":"done","overall":true})"} << 1
                                 << u"All checks passed."_s;
        QTest::newRow("in the end") << QByteArrayList{running, "{\"status\":\"done\"," + checks + '}'} << 2
                                    << lines + u"Some checks failed."_s;
        QTest::newRow("broken off") << QByteArrayList{running, "timeout: The device did not answer."} << 2
                                    << u"The device did not answer."_s;
        QTest::newRow("without an end") << QByteArrayList{running} << 13 << lines + u"Still running…"_s;
    }
    void networkTest()
    {
        QFETCH(QByteArrayList, answers);
        QFETCH(int, requests);
        while (answers.size() < 20) {
            answers.append(answers.constLast());
        }
        auto *manager = showManager();
        for (int run = 0; run < 2; ++run) {
            m_device.script[u"networkTest"_s] = answers;
            manager->showPage(0);
            m_device.requests.clear();
            press(u"RunNetworkTest"_s);
            manager->setCurrentIndex(1); // another tab doesn't stop it
            for (int i = 1; i < requests; ++i) {
                QVERIFY(!find(u"RunNetworkTest"_s)->isEnabled());
                skip(2200ms);
            }
            skip(5s);
            QCOMPARE(m_device.requests.filter(u"networkTest"_s).size(), requests);
            QTEST(box(u"NetworkTest"_s), "result");
            QVERIFY(find(u"RunNetworkTest"_s)->isEnabled());
        }
    }

    void wirelessLink_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<bool>("scans");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("action");
        QTest::newRow("no radio") << QByteArray("{}") << true << QString() << QString();
        QTest::newRow("transmitting")
            << QByteArray(R"({"espnow":{"role":"tx","peer_mac":"aa:bb","start_error":"No channel."}})") << false
            << u"This device is sending its scores to a Tallyforge wireless receiver (aa:bb), "
               "so its Wi-Fi is switched off.\n\nThe wireless transmitter could not start: "
               "No channel."_s
            << u"Switch off the wireless transmitter and use Wi-Fi"_s;
        QTest::newRow("paired") << QByteArray(R"({"espnow":{"role":"off","peer_mac":"aa:bb","key_set":true}})") << true
                                << u"This device connects over Wi-Fi. It is also paired with a Tallyforge wireless "
                                   "receiver (aa:bb), so it can send its scores there instead."_s
                                << u"Use the wireless receiver instead of Wi-Fi"_s;
        QTest::newRow("unpaired")
            << QByteArray(R"({"espnow":{"role":"off"}})") << true
            << u"This device connects over Wi-Fi. If the venue has no Wi-Fi it can send its scores "
               "to a Tallyforge wireless receiver instead."_s
            << u"Set up a Tallyforge wireless receiver instead of Wi-Fi…"_s;
    }
    void wirelessLink()
    {
        QFETCH(QByteArray, link);
        QFETCH(bool, scans);
        QFETCH(QString, status);
        m_device.tell({"getEspNow " + link});
        show<WifiPanel>()->refresh();
        QCOMPARE(find(u"Wireless"_s)->isVisible(), !status.isEmpty());
        if (!status.isEmpty()) {
            QCOMPARE(text(u"WirelessStatus"_s), status);
            QTEST(text(u"WirelessAction"_s), "action");
        }
        QCOMPARE(m_device.requests.contains(u"scanWifi{}"_s), scans);
        QCOMPARE(find(u"Networks"_s)->isEnabled(), scans);
    }

    void networks()
    {
        m_device.tell({R"(scanWifi {"networks":[{"ssid":"Gym","rssi":-70},{"ssid":"Venue","rssi":-60}]})",
                       R"(scanWifi {"networks":[]})", "scanWifi timeout: Too late.", "configureWifi bad: No."});
        auto *panel = show<WifiPanel>();
        QSignalSpy joined(panel, &WifiPanel::joined);
        panel->refresh();
        QCOMPARE(items(u"Network"_s), (QStringList{u"Venue   (-60 dBm)"_s, u"Gym   (-70 dBm)"_s}));
        QCOMPARE(message(), u"2 network(s) found."_s);
        find<QLineEdit>(u"WifiPassword"_s)->setText(u" key "_s);
        press(u"JoinNetwork"_s);
        QCOMPARE(m_device.requests.constLast(), uR"(configureWifi{"pass":" key ","ssid":"Venue"})"_s);
        QCOMPARE(message(), u"!No."_s);
        QVERIFY(find(u"JoinNetwork"_s)->isEnabled() && joined.isEmpty());

        find<QComboBox>(u"Network"_s)->setEditText(u" Press "_s);
        press(u"ScanNetworks"_s);
        QVERIFY(message().startsWith("No networks found."_L1));
        QCOMPARE(find<QComboBox>(u"Network"_s)->currentText(), u" Press "_s);
        press(u"ScanNetworks"_s);
        QCOMPARE(message(), u"!Too late. You can still type the network name."_s);
        m_device.tell({R"(getStatus {"wifi_provision":{"state":"ok"},"wifi_sta_ip":"10.0.0.9"})"});
        press(u"JoinNetwork"_s);
        QVERIFY(m_device.requests.filter(u"configureWifi"_s).constLast().contains("\"ssid\":\"Press\""_L1));
        for (int looks = 0; looks < 3 && joined.isEmpty(); ++looks) {
            skip(3300ms);
        }
        QCOMPARE(joined.value(0).value(0), u"10.0.0.9"_s);
        QVERIFY(message().startsWith("Joined Press"_L1));

        find<QComboBox>(u"Network"_s)->setEditText(u"  "_s);
        press(u"JoinNetwork"_s);
        QCOMPARE(message(), u"!Choose or type a network name first."_s);
    }

    void rescan()
    {
        m_device.tell({R"(scanWifi {"networks":[{"ssid":"Venue","rssi":-60},{"ssid":"Gym","rssi":-70}]})",
                       R"(scanWifi {"networks":[{"ssid":"Gym","rssi":-50},{"ssid":"Venue","rssi":-80}]})",
                       R"(scanWifi {"networks":[{"ssid":"Gym","rssi":-50}]})", "configureWifi never"});
        m_panel = std::make_unique<QDialog>();
        new WifiPanel(m_session.get(), m_panel.get());
        auto *other = new QPushButton(m_panel.get()); // another page's, made later
        other->setDefault(true);
        other->hide();
        m_panel->show();
        for (int scans = 0; scans < 3; ++scans) {
            press(u"ScanNetworks"_s);
        }
        QTest::keyClick(find(u"WifiPassword"_s), Qt::Key_Return);
        QCOMPARE(m_device.requests.filter(u"configureWifi"_s),
                 QStringList{uR"(configureWifi{"pass":"","ssid":"Venue"})"_s});
        QVERIFY(find<QPushButton>(u"JoinNetwork"_s)->isDefault());
    }

    void changeover()
    {
        m_device.tell(
            {R"(getEspNow {"espnow":{"role":"off"}})", "setEspNow bad: Refused.", R"(setEspNow {"key":"01<b>"})"});
        show<WifiPanel>()->refresh();
        const auto asked = [this] { return m_device.requests.filter(u"setEspNow"_s); };
        press(u"WirelessAction"_s);
        QVERIFY(find(u"ReceiverAddress"_s)->isVisible() && asked().isEmpty());
        press(u"WirelessAction"_s);
        QCOMPARE(message(), u"!Enter the receiver's address first. It is printed on the receiver."_s);
        find<QLineEdit>(u"ReceiverAddress"_s)->setText(u" aa:bb "_s);
        press(u"WirelessAction"_s);
        confirm(QMessageBox::No, u"Use the wireless receiver"_s);
        QVERIFY(asked().isEmpty());
        press(u"WirelessAction"_s);
        confirm(QMessageBox::Yes, u"Use the wireless receiver"_s);
        QCOMPARE(message(), u"!Refused."_s);
        QVERIFY(find(u"ReceiverAddress"_s)->isVisible() && find(u"WirelessAction"_s)->isEnabled());
        press(u"WirelessAction"_s);
        confirm(QMessageBox::Yes, u"Use the wireless receiver"_s);
        QCOMPARE(asked().size(), 2);
        QVERIFY(!find(u"Wireless"_s)->isVisible() && !find(u"Networks"_s)->isEnabled());
        QVERIFY(text(u"RestartNote"_s).endsWith("<br>01&lt;b&gt;"_L1));
        QVERIFY(text(u"RestartText"_s).contains("Wait 15 seconds"_L1));
        for (int i = 0; i < 20; ++i) {
            skip(1100ms);
        }
        QVERIFY(text(u"RestartText"_s).contains("The device should be back."_L1));
    }

    void backToWifi()
    {
        m_device.tell({R"(getEspNow {"espnow":{"role":"tx","peer_mac":"aa:bb","key_set":true}})"});
        auto *panel = show<WifiPanel>();
        panel->refresh();
        press(u"WirelessAction"_s);
        confirm(QMessageBox::Yes, u"Switch off the wireless transmitter"_s);
        QCOMPARE(m_device.requests.filter(u"setEspNow"_s).value(0), uR"(setEspNow{"role":"off"})"_s);
        QVERIFY(text(u"RestartText"_s).contains("The device is restarting to use Wi-Fi."_L1));
        QVERIFY(!find(u"RestartNote"_s)->isVisible());
        const qsizetype asked = m_device.requests.size();
        panel->refresh(); // the device is away, and has to be connected anew
        QCOMPARE(m_device.requests.size(), asked);
        QVERIFY(!find(u"Networks"_s)->isEnabled());
    }

    void controllers()
    {
        const QByteArray oes = R"("manufacturer":"oes","sport":"hockey")";
        m_device.tell({"getControllerList {\"controllers\":[{" + oes + R"(,"model":"pro","input_type":"rs485"},{)" +
                           oes + R"(,"model":"Pro","input_type":"rs232"},{)" + oes +
                           R"(,"model":"Pro","input_type":"cl"},)" +
                           R"({"manufacturer":"Acme","model":"A","sport":"ice_hockey","input_type":"rs232"}]})",
                       "getControllerConfig {" + oes + R"(,"model":"Pro","input_type":"rs232"})",
                       "setControllerConfig bad: Refused."});
        auto *panel = show<ControllerPanel>();
        QSignalSpy saved(panel, &ControllerPanel::saved);
        panel->refresh();
        QCOMPARE(message(), u"Currently set to this scoreboard."_s);
        QCOMPARE(find<QComboBox>(u"Maker"_s)->currentText(), u"OES"_s);
        QCOMPARE(items(u"Input"_s), (QStringList{u"Current loop (CL)"_s, u"RS-232"_s}));
        QCOMPARE(find<QComboBox>(u"Input"_s)->currentText(), u"RS-232"_s);
        pick(u"Maker"_s, u"Acme"_s);
        QCOMPARE(items(u"Sport"_s), QStringList{u"Ice hockey"_s});
        press(u"SaveController"_s);
        QCOMPARE(message(), u"!Refused."_s);
        press(u"SaveController"_s);
        QCOMPARE(
            m_device.requests.constLast(),
            uR"(setControllerConfig{"input_type":"rs232","manufacturer":"Acme","model":"A","sport":"ice_hockey"})"_s);
        QCOMPARE(message(), u"Saved."_s);
        QCOMPARE(saved.size(), 1);
        panel->refresh(); // the script is at its end: the device lists nothing
        QCOMPARE(message(), u"The device did not list its scoreboards."_s);
        QVERIFY(!find(u"SaveController"_s)->isEnabled());
        m_device.tell({"getControllerList timeout: Too late."});
        panel->refresh();
        QCOMPARE(message(), u"!Too late."_s);
    }

    void lateAnswers()
    {
        m_device.tell({"getStatus never", "getEspNow never", "getControllerList never"});
        showManager()->showPage(0);
        m_panel.reset();
        show<WifiPanel>()->refresh();
        m_panel.reset();
        show<ControllerPanel>()->refresh();
        m_panel.reset();
        m_device.answerHeld();
        auto *panel = show<ControllerPanel>();
        m_session.reset();
        panel->save();
        QVERIFY(message().startsWith("!Choose"_L1));
    }

    // A dialog may close when the device begins to restart, that is within the answer to a question.
    void deletedWithin_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::newRow("switch off") << QByteArray(R"({"role":"tx","peer_mac":"aa:bb","key_set":true})");
        QTest::newRow("switch on") << QByteArray(R"({"role":"off","peer_mac":"aa:bb","key_set":true})");
    }
    void deletedWithin()
    {
        QFETCH(QByteArray, link);
        m_device.tell({"getEspNow {\"espnow\":" + link + '}'});
        m_device.onRequest = [this](const QString &method) {
            if (method == "setEspNow"_L1) {
                m_panel.reset();
            }
        };
        show<WifiPanel>()->refresh();
        press(u"WirelessAction"_s);
        find<QMessageBox>(u"Question"_s)->button(QMessageBox::Yes)->click();
        QTRY_VERIFY(!m_panel && m_device.requests.filter(u"setEspNow"_s).size() == 1);
        m_device.onRequest = {};
        auto *controllers = show<ControllerPanel>();
        m_device.tell(
            {R"(getControllerList {"controllers":[{"manufacturer":"a","model":"b","sport":"c","input_type":"d"}]})"});
        controllers->refresh();
        connect(controllers, &ControllerPanel::saved, this, [this] { m_panel.reset(); });
        press(u"SaveController"_s);
        QVERIFY(!m_panel);
    }

    void share()
    {
        Pty pty;
        UsbPeer peer(pty);
        auto link = std::make_unique<UsbLink>(pty.path());
        SettingsStore settings;
        m_panel = std::make_unique<QWidget>();
        auto *share = new SharePanel(settings, m_panel.get());
        m_panel->show();
        share->setLink(link.get(), false);
        link->open();
        QTRY_VERIFY(peer.count(UsbFrame::Ctrl) > 0);
        const auto first = [this] { return text(u"ShareStatus"_s).section(u'\n', 0, 0); };
        QVERIFY(first().startsWith("The device is not asking for a cloud connection over USB."_L1));
        share->setLink(link.get(), true);
        QVERIFY(first().startsWith("Waiting for the paired device"_L1));
        peer.ctrl(
            R"({"t":"hello","tunnel":{"host":"cloud.example","port":8883,"streams":{"ota":{"host":"o","port":1}}}})");
        press(u"ShareConnection"_s);
        QVERIFY(!settings.shareConnection() && !link->cloud()->status().enabled);
        QCOMPARE(first(), u"Sharing is off, so the device cannot reach the cloud over this cable."_s);
        link.reset();
        skip(1100ms);
        QVERIFY(!share->isVisible());
        QCOMPARE((QStringList{byteCount(1023), byteCount(1024), byteCount(1048576)}),
                 (QStringList{u"1023 B"_s, u"1.0 KB"_s, u"1.0 MB"_s}));
    }
};

QTEST_MAIN(TestPanels)
#include "tst_panels.moc"
