// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The setup dialog on the real services, with devices that the test plays.

#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "tests/support/ScriptedLink.h"
#include "tests/support/SkippedTime.h"
#include "tests/support/UsbPeer.h"
#include "ui/manager/ControllerPanel.h"
#include "ui/manager/DeviceManager.h"
#include "ui/manager/WifiPanel.h"
#include "ui/setup/SetupDialog.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Lines = QByteArrayList;
using State = DeviceSession::State;

namespace {

constexpr char onWifi[] = R"(getStatus {"device_id":"D1","firmware_version":"2.0","wifi_sta_ip":"10.0.0.9"})";
constexpr char offWifi[] = R"(getStatus {"device_id":"D1","firmware_version":"2.0"})";
constexpr char factoryNew[] = R"(login {"must_change_password":true})";
constexpr char wrong[] = "login unauthorized: no";

} // namespace

class TestSetupDialog : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<HttpStub> m_portal;
    QHash<QByteArray, HttpReply> m_answers; // by path
    ScriptedDevice m_device;
    QList<SerialPortInfo> m_ports;
    QList<BleBridge::ScanCallback> m_scans;
    QList<QPointer<ScriptedLink>> m_links;
    std::function<DeviceLink *()> m_makeLink;
    QPointer<SetupDialog> m_dialog;

    Carriers carriers()
    {
        return {[this] { return m_ports; }, [this](auto, const auto &callback) { m_scans.append(callback); },
                [this](const DeviceChoice &choice) { return m_makeLink ? m_makeLink() : plug(choice); }};
    }
    DeviceLink *plug(const DeviceChoice &choice)
    {
        auto *link = new ScriptedLink(m_device);
        link->type = choice.carrier;
        link->place = choice.address;
        m_links.append(link);
        return link;
    }

    template <class Widget = QWidget> Widget *find(const QString &name)
    {
        return m_dialog->findChild<Widget *>(u"tallyforge"_s + name);
    }
    void press(const QString &name) { find<QPushButton>(name)->click(); }
    void type(const QString &name, const QString &text) { find<QLineEdit>(name)->setText(text); }
    QString text(const QString &name) { return find<QLabel>(name)->text(); }
    bool isRed(const QString &name) { return find(name)->styleSheet().contains(u"#d9534f"_s); }
    QStackedWidget *pages() { return m_dialog->findChild<QStackedWidget *>(); }
    int page() { return pages()->currentIndex(); }
    DeviceSession *session() { return m_dialog->findChild<DeviceSession *>(); }
    static SourceManager &sources() { return *App::get()->sources(); }

    void open()
    {
        m_dialog = new SetupDialog(*App::get(), carriers(), nullptr);
        m_dialog->show();
        QTRY_VERIFY(!text(u"ConnectHint"_s).isEmpty());
    }
    /// Opens the dialog and connects to a device that answers like this.
    void connectTo(const Lines &script, const QString &carrier = u"usb"_s)
    {
        m_device.tell(script);
        open();
        reconnect(carrier);
    }
    void reconnect(const QString &carrier = u"usb"_s)
    {
        if (carrier == u"lan"_s) {
            find<QRadioButton>(u"OverNetwork"_s)->click();
            find<QComboBox>(u"LanHost"_s)->setEditText(u"10.0.0.7"_s);
        } else if (carrier == u"ble"_s) {
            find<QRadioButton>(u"OverBluetooth"_s)->click();
            m_scans.last()(true, {{u"b1"_s, u"Gym"_s}}, 1, {}, {});
        }
        press(u"Connect"_s);
    }
    void close()
    {
        m_dialog->close();
        QTRY_VERIFY(!m_dialog);
    }
    void signIn()
    {
        m_answers["/auth/me"] = {200, R"({"user":{"email":"e"}})"};
        App::get()->portal().restoreSession({});
        QTRY_VERIFY(App::get()->portal().signedIn());
    }
    QByteArray lastRequest()
    {
        const HttpRequest &last = m_portal->requests.last();
        return last.verb + ' ' + last.path + ' ' + last.body;
    }
    /// What the sign-in page shows: title, message, and what is there.
    QString signInPage()
    {
        QStringList words{text(u"SetupTitle"_s), text(u"SetupMessage"_s)};
        for (const char *name : {"SetupBusy", "AdminPassword", "NewPassword"}) {
            if (find(QLatin1StringView(name))->isVisible()) {
                words.append(QLatin1StringView(name));
            }
        }
        return (isRed(u"SetupMessage"_s) ? u"red "_s : QString()) + words.join(u'|');
    }
    void feed(const QJsonObject &envelope) { Q_EMIT m_links.last()->envelope(envelope); }
    static QString score() { return App::get()->live().value(u"home_score"_s); }

private Q_SLOTS:
    void init()
    {
        setConfigFolder(m_dir.path());
        QFile::remove(m_dir.filePath(u"settings.json"_s));
        m_portal = std::make_unique<HttpStub>();
        m_answers = {{"/auth/me", {401}}, {"/devices", {200, "{}"}}};
        m_portal->answer = [this](const HttpRequest &request) { return m_answers.value(request.path); };
        m_device = {};
        m_ports = {{u"/dev/p"_s, u"p<1>"_s, true}};
        m_scans.clear();
        m_links.clear();
        m_makeLink = {};
        App::init(m_portal->url());
    }
    void cleanup()
    {
        delete m_dialog;
        App::shutdown();
        QCOMPARE(m_links.count(nullptr), m_links.size());
    }

    void usbPorts_data()
    {
        QTest::addColumn<QByteArray>("likely"); // a letter for each port
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("status");
        const QString found = u"%1 USB port(s) found. Pick the Tallyforge device."_s;
        QTest::newRow("none") << QByteArray() << -1
                              << u"No USB devices found. Plug the device in and press Scan again."_s;
        QTest::newRow("one, not flagged") << QByteArray("n") << 0 << found.arg(1);
        QTest::newRow("one of three flagged") << QByteArray("nyn") << 1 << found.arg(3);
        QTest::newRow("two flagged") << QByteArray("ynY") << 0 << found.arg(3);
        QTest::newRow("two of three flagged") << QByteArray("yny") << -1 << found.arg(3);
        QTest::newRow("two, none flagged") << QByteArray("nn") << -1 << found.arg(2);
    }
    void usbPorts()
    {
        QFETCH(QByteArray, likely);
        QFETCH(int, row);
        m_ports.clear();
        for (const char flag : std::as_const(likely)) {
            m_ports.append({u"/dev/p"_s, u"p"_s, flag == 'y'});
        }
        open();
        auto *list = find<QListWidget>(u"DeviceList"_s);
        QCOMPARE(list->currentRow(), row);
        QTEST(text(u"ConnectStatus"_s), "status");
        QCOMPARE(find(u"Connect"_s)->isEnabled(), row >= 0);
        for (int i = 0; i < list->count(); ++i) {
            QCOMPARE(list->item(i)->text(), likely[i] == 'y' ? u"p  – likely a Tallyforge device"_s : u"p"_s);
        }
        if (!likely.isEmpty()) {
            Q_EMIT list->itemDoubleClicked(list->item(0));
            QCOMPARE(page(), row < 0 ? 0 : 2);
        }
    }

    void bluetooth()
    {
        open();
        find<QRadioButton>(u"OverBluetooth"_s)->click();
        QVERIFY(!find(u"Scan"_s)->isEnabled() && !find(u"Connect"_s)->isEnabled());
        const QString waiting = text(u"ConnectStatus"_s);
        find<QRadioButton>(u"OverUsb"_s)->click();
        QVERIFY(find(u"Scan"_s)->isEnabled());
        m_scans[0](true, {{u"late"_s, u"late"_s}}, 1, {}, {});
        QCOMPARE(find<QListWidget>(u"DeviceList"_s)->count(), 1);
        find<QRadioButton>(u"OverBluetooth"_s)->click();
        m_scans[0](false, {}, 0, u"x"_s, u"late"_s);
        QCOMPARE(text(u"ConnectStatus"_s), waiting);
        const auto shows = [this](const QString &status, bool ok, int seen, const QString &code = {},
                                  const QString &message = {}, const QList<BleDeviceInfo> &devices = {}) {
            const BleBridge::ScanCallback answer = m_scans.last();
            answer(ok, devices, seen, code, message);
            QCOMPARE(text(u"ConnectStatus"_s), status);
            QCOMPARE(find(u"Connect"_s)->isEnabled(), devices.size() == 1);
            press(u"Scan"_s);
        };
        shows(u"No Bluetooth devices were seen at all. Check that Bluetooth is on."_s, true, 0);
        shows(u"Bluetooth is working but no Tallyforge device is in range. Move closer and scan again."_s, true, 3);
        shows(u"Bluetooth access was denied. Allow \"Tallyforge Bluetooth Helper\" in your system's "
              "Privacy & Security → Bluetooth settings, then scan again."_s,
              false, 0, u"permission_denied"_s, u"m"_s);
        shows(u"off"_s, false, 0, u"bluetooth_unavailable"_s, u"off"_s);
        shows(u"Bluetooth is turned off or unavailable on this computer."_s, false, 0, u"bluetooth_unavailable"_s);
        shows(u"m"_s, false, 0, u"other"_s, u"m"_s);
        shows(u"2 device(s) found."_s, true, 2, {}, {}, {{u"a"_s, u"A"_s}, {u"b"_s, u"B"_s}});
        shows(u"1 device(s) found."_s, true, 2, {}, {}, {{u"a"_s, u"A"_s}});
        const auto late = m_scans.last();
        close();
        late(true, {}, 0, {}, {});
    }

    void states_data()
    {
        QTest::addColumn<Lines>("script");
        QTest::addColumn<QString>("carrier");
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, const Lines &script, int page, const QString &shown,
                            const QString &carrier = u"usb"_s) {
            QTest::newRow(name) << script << carrier << page << shown;
        };
        const QString usb = u"<b>Connecting to p&lt;1&gt;</b>|Waiting for the device to answer. If it just powered on "
                            "this can take up to a minute.|SetupBusy"_s;
        row("no answer", {"silent"}, 1, usb);
        row("no answer by Bluetooth", {"silent"}, 1,
            u"<b>Connecting to Gym</b>|Connecting over Bluetooth. If your computer asks for a passkey, enter the "
            "6-digit number from the device's label.|SetupBusy"_s,
            u"ble"_s);
        row("signing in", {"login never"}, 1, usb);
        row("another password", {wrong}, 1, u"<b>Device password needed</b>||AdminPassword"_s);
        row("factory-new", {factoryNew}, 1, u"<b>Choose a new device password</b>||NewPassword"_s);
        row("broken", {"login x: Broken"}, 1, u"red <b>Could not connect</b>|Broken"_s);
        row("no Wi-Fi", {offWifi}, 2, usb);
        row("no Wi-Fi, by Bluetooth", {offWifi}, 2, {}, u"ble"_s);
        row("no Wi-Fi, but on the network", {offWifi}, 6, {}, u"lan"_s);
        row("Wi-Fi", {onWifi}, 6, {});
        row("receiver", {"receiver"}, 4, {});
    }
    void states()
    {
        QFETCH(Lines, script);
        QFETCH(QString, carrier);
        QFETCH(QString, shown);
        m_device.greets = !script.contains("silent");
        m_device.info = {{u"receiver"_s, script.contains("receiver")}};
        connectTo(script.first().contains(' ') ? script : Lines(), carrier);
        QTEST(page(), "page");
        if (page() == 1) {
            QCOMPARE(signInPage(), shown);
            QWidget *focus = m_dialog->focusWidget();
            QVERIFY(focus != nullptr && focus == find(shown.contains(u"AdminPassword"_s) ? u"AdminPassword"_s
                                                      : shown.contains(u"NewPassword"_s) ? u"NewPassword"_s
                                                                                         : u"Cancel"_s));
        }
        if (m_device.greets) {
            m_links.last()->unplug({});
            QCOMPARE(signInPage(),
                     u"red <b>Connection lost</b>|The connection to the device was lost. Check the cable, "
                     "Bluetooth or network and try again."_s);
            QVERIFY(page() == 1 && find(u"Cancel"_s)->hasFocus() && find<QPushButton>(u"Cancel"_s)->isDefault());
        } else {
            Q_EMIT m_links.last()->failed(u"bluetooth_unavailable"_s, {});
            QCOMPARE(signInPage(),
                     u"red <b>Could not connect</b>|Bluetooth is turned off or unavailable on this computer."_s);
        }
        const QPointer ended = session();
        press(u"Cancel"_s);
        Q_EMIT ended->stateChanged(State::Ready, {}); // it isn't followed any more
        QCOMPARE(page(), 0);
        QTRY_VERIFY(!ended);
        m_device.greets = true;
        m_device.info = {};
        m_device.tell({offWifi});
        reconnect(carrier); // nothing is left of it
        QCOMPARE(page(), carrier == u"lan"_s ? 6 : 2);
    }

    void comingBack()
    {
        connectTo({onWifi});
        Q_EMIT session()->stateChanged(State::Restarting, {});
        QCOMPARE(page(), 6);
        const auto *manager = m_dialog->findChild<DeviceManager *>();
        m_links.last()->unplug(u"Gone."_s);
        QCOMPARE(signInPage(), u"red <b>Connection lost</b>|Gone."_s);
        m_links.last()->plugged = true;
        m_device.tell({wrong, "login {}"});
        session()->start({}); // as a panel does, once the device is there again
        QCOMPARE(signInPage(), u"<b>Device password needed</b>||AdminPassword"_s);
        type(u"AdminPassword"_s, u"p"_s);
        QTest::keyClick(find(u"AdminPassword"_s), Qt::Key_Return);
        QVERIFY(page() == 6 && m_dialog->findChild<DeviceManager *>() == manager);
        pages()->setCurrentIndex(0);
        m_links.last()->unplug({});
        QVERIFY(page() == 0 && text(u"SetupTitle"_s) == u"<b>Device password needed</b>"_s);
    }

    void accountPassword_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("meanwhile");
        QTest::addColumn<int>("page");
        const QByteArray good = R"({"pairing":{"admin_password":"saved"}})";
        QTest::newRow("known") << good << QString() << 2;
        QTest::newRow("unknown") << QByteArray(R"({"pairing":{}})") << QString() << 1;
        QTest::newRow("known, after a cancel") << good << u"Cancel"_s << 0;
        QTest::newRow("known, after the typed one") << good << u"SignInToDevice"_s << 2;
        QTest::newRow("known, after the dialog") << good << u"close"_s << -1;
    }
    void accountPassword()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, meanwhile);
        signIn();
        App::get()->settings().setSelectedDevice(u"D9"_s);
        m_portal->answer = [&](const HttpRequest &request) {
            return request.path.contains("D9") ? HttpReply{200, "{}", "", HttpReply::How::Hang}
                                               : m_answers.value(request.path);
        };
        const auto asked = [this] {
            return std::count_if(m_portal->requests.begin(), m_portal->requests.end(),
                                 [](const HttpRequest &request) { return request.path.contains("D9"); });
        };
        connectTo({wrong, meanwhile.isEmpty() && answer.contains("saved") ? wrong : "login {}", "login {}"});
        QTRY_COMPARE(asked(), 1);
        if (meanwhile == u"close"_s) {
            close();
        } else if (!meanwhile.isEmpty()) {
            type(u"AdminPassword"_s, u"typed"_s);
            press(meanwhile);
        }
        m_portal->release(answer);
        App::get()->portal().listDevices([this](const PortalResult &) { m_answers.insert("done", {}); });
        QTRY_VERIFY(m_answers.contains("done"));
        if (meanwhile.isEmpty() && answer.contains("saved")) {
            QTRY_COMPARE(m_device.requests.filter(u"saved"_s).size(), 1);
            QCOMPARE(signInPage(), u"<b>Device password needed</b>||AdminPassword"_s); // it was wrong
            QCOMPARE(find<QLineEdit>(u"AdminPassword"_s)->text(), u"saved"_s);
            press(u"SignInToDevice"_s);
        }
        if (m_dialog) {
            QTEST(page(), "page");
        }
        QCOMPARE(asked(), 1);
        QVERIFY(m_device.requests.filter(u"saved"_s).isEmpty() == (!meanwhile.isEmpty() || !answer.contains("saved")));
    }

    void guidedWay()
    {
        signIn();
        connectTo({offWifi, R"(getStatus {"device_id":"D1","wifi_sta_ip":"10.0.0.9"})"});
        auto *wifi = m_dialog->findChild<WifiPanel *>();
        session()->refreshStatus({});
        m_device.tell({R"(ensureApiToken {"token":"t"})"});
        Q_EMIT wifi->joined(u"10.0.0.9"_s);
        skippedTime += 1100ms;
        QTest::qWait(1);
        QCOMPARE(page(), 2);
        skippedTime += 100ms;
        QTRY_COMPARE(page(), 3);
        const QPointer controller = m_dialog->findChild<ControllerPanel *>();
        m_device.tell({R"(getStatus {"device_id":"D1","firmware_version":"2.0","wifi_sta_ip":"10.0.0.9"})"});
        Q_EMIT controller->saved();
        QCOMPARE(page(), 5);
        QCOMPARE(text(u"Summary"_s), u"Device: D1\nFirmware: 2.0\nWi-Fi: connected (10.0.0.9)"_s);
        const LanDevice stored = App::get()->settings().lanDevice(u"D1"_s);
        QCOMPARE(stored.host + stored.token + stored.name, u"10.0.0.9tD1"_s);
        QVERIFY(find(u"Claim"_s)->isVisible() && find(u"UseDevice"_s)->hasFocus());

        const auto claim = [this](const HttpReply &answer, const QString &message) {
            m_portal->answer = [this, answer](const HttpRequest &request) {
                return request.verb == "POST" ? answer : m_answers.value(request.path);
            };
            type(u"ClaimCode"_s, u" c "_s);
            QTest::keyClick(find(u"ClaimCode"_s), Qt::Key_Return);
            QVERIFY(!find(u"Claim"_s)->isEnabled());
            QTRY_VERIFY(find(u"Claim"_s)->isEnabled());
            QVERIFY(message.isEmpty() || text(u"Summary"_s) == message);
            QCOMPARE(isRed(u"Summary"_s), answer.status != 200);
            QCOMPARE(find(u"Claim"_s)->isVisible() && find(u"ClaimCode"_s)->isVisible(), answer.status != 200);
        };
        claim({400, R"({"error":"bad_code"})"}, {});
        const QByteArray sent = lastRequest();
        QVERIFY2(sent.contains("\"c\"") && sent.contains("\"usb\""), sent);
        claim({200}, u"Added to your account."_s);
        QTRY_VERIFY(lastRequest().startsWith("GET /devices"));
        press(u"MoreSettings"_s);
        const QPointer first = m_dialog->findChild<DeviceManager *>();
        QVERIFY(page() == 6 && text(u"ManagerTitle"_s) == u"<b>D1</b>"_s);
        pages()->setCurrentIndex(5);
        press(u"MoreSettings"_s);
        QTRY_VERIFY(!first);
        QCOMPARE(m_dialog->findChildren<DeviceManager *>().size(), 1);
        press(u"Disconnect"_s);
        QCOMPARE(page(), 0);
        QTRY_VERIFY(!controller && !m_links.last());
    }

    void skipped()
    {
        connectTo({"getStatus {}", "getStatus x: No"});
        Q_EMIT m_dialog->findChild<WifiPanel *>()->joined({});
        QVERIFY(m_dialog->findChild<WifiPanel *>()->isAncestorOf(m_dialog->focusWidget()));
        press(u"SkipWifi"_s);
        QCOMPARE(page(), 3);
        QVERIFY(m_dialog->findChild<ControllerPanel *>()->isAncestorOf(m_dialog->focusWidget()));
        press(u"SkipController"_s);
        QCOMPARE(text(u"Summary"_s), u"Device: p<1>\nWi-Fi: not connected"_s);
        QVERIFY(page() == 5 && !find(u"Claim"_s)->isVisible() && !find(u"ClaimCode"_s)->isVisible());
        skippedTime += 2s; // the page that joining leads to isn't for this step any more
        QTest::qWait(1);
        QCOMPARE(page(), 5);
        QTest::keyClick(m_dialog, Qt::Key_Return);
        QTRY_VERIFY(!m_dialog);
        QCOMPARE(sources().label(), u"p<1>"_s);
    }

    void live_data()
    {
        QTest::addColumn<QString>("carrier");
        QTest::addColumn<QString>("end");
        for (const char *end : {"close", "Disconnect", "UseManaged", "route", "lost"}) {
            for (const char *carrier : {"usb", "ble", "lan"}) {
                QTest::addRow("%s over %s", end, carrier) << QString::fromLatin1(carrier) << QString::fromLatin1(end);
            }
        }
    }
    void live()
    {
        QFETCH(QString, carrier);
        QFETCH(QString, end);
        connectTo({onWifi, onWifi}, carrier);
        const QPointer followed = session();
        press(u"UseManaged"_s);
        QTRY_VERIFY(!m_dialog);
        feed({{u"home_score"_s, 1}});
        QVERIFY(sources().isLive() && followed->parent() == &sources());

        const auto requests = m_device.requests;
        open();
        reconnect(carrier);
        QVERIFY(page() == 6 && session() == followed && m_links.size() == 1);
        QVERIFY(m_device.requests.filter(u"login"_s) == requests.filter(u"login"_s) && sources().isLive());
        feed({{u"home_score"_s, 2}});
        QCOMPARE(score(), u"2"_s);
        if (end == u"close"_s) {
            close();
        } else if (end == u"route"_s) {
            sources().useCloud(u"other"_s); // the dialog goes on, and ends the session
            QCOMPARE(session(), followed);
            close();
            QTRY_VERIFY(!followed);
            return;
        } else if (end == u"lost"_s) {
            m_links[0]->unplug({});
            QVERIFY(page() == 1 && !sources().isLive());
            press(u"Cancel"_s);
            QVERIFY(page() == 0 && followed->parent() == &sources() && followed->state() == State::Idle);
            m_links[0]->plugged = true;
            m_device.script[u"getStatus"_s] = {QByteArray(onWifi).sliced(10)};
            reconnect(carrier); // the same session comes back, and the scores with it
            QVERIFY(page() == 6 && session() == followed && m_links.size() == 1);
            close();
        } else {
            press(end);
        }
        if (end == u"Disconnect"_s) {
            QCOMPARE(sources().statusText(), u"Disconnected from D1. Its scores have stopped."_s);
            QTRY_VERIFY(!followed);
            QCOMPARE(sources().statusText(), u"Disconnected from D1. Its scores have stopped."_s);
            QVERIFY(!sources().isLive() && page() == 0);
            return;
        }
        QTRY_VERIFY(!m_dialog);
        feed({{u"home_score"_s, 3}});
        QVERIFY(score() == u"3"_s && sources().isLive() && followed->parent() == &sources());
    }

    // The receiver goes on sending, whatever has become of the sign-in to the device behind it.
    void liveReceiver()
    {
        m_device.info = {{u"receiver"_s, true}};
        m_ports.first().name.clear();
        connectTo({});
        press(u"UseReceiver"_s);
        QTRY_VERIFY(!m_dialog);
        QCOMPARE(sources().label(), u"wireless receiver"_s);
        for (const char *answer : {"login x: No", "login unauthorized: no", "login never"}) {
            m_device.tell({answer});
            open();
            reconnect();
            QCOMPARE(page(), 4);
            press(u"ManagePaired"_s);
            QCOMPARE(page(), 1);
            press(u"Cancel"_s);
            feed({{u"home_score"_s, QString::fromLatin1(answer)}});
            QVERIFY(score() == QLatin1StringView(answer) && sources().isLive());
            close();
        }
    }

    void dialogOrSessionGoes_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("dialogToo");
        for (const State state : {State::Connecting, State::SigningIn, State::NeedsPassword, State::NeedsNewPassword,
                                  State::Ready, State::Lost, State::Error}) {
            for (const bool too : {false, true}) {
                QTest::addRow("%d, %s", int(state), too ? "dialog" : "session") << int(state) << too;
            }
        }
    }
    void dialogOrSessionGoes()
    {
        QFETCH(int, state);
        QFETCH(bool, dialogToo);
        m_device.greets = false;
        const Lines logins[] = {{}, {}, {}, {wrong}, {factoryNew}, {offWifi}, {offWifi}, {"login x: Broken"}};
        connectTo(logins[state]);
        const QPointer ends = session();
        connect(ends, &DeviceSession::stateChanged, this, [&](State now) {
            if (int(now) == state && ends) {
                if (dialogToo) {
                    delete m_dialog;
                } else {
                    delete ends;
                }
            }
        });
        const QPointer link = m_links.last();
        m_device.greets = true;
        ends->start({u"p"_s});
        if (link && state == int(State::Lost)) {
            link->unplug({});
        }
        QVERIFY(!ends && !m_dialog == dialogToo);
        if (!dialogToo) { // every button of every page, without a session
            const QList<QPushButton *> buttons = m_dialog->findChildren<QPushButton *>();
            for (QPushButton *button : buttons) {
                button->click();
            }
        }
    }

    // The application may end while the dialog is there.
    void applicationGoes()
    {
        connectTo({onWifi});
        press(u"UseManaged"_s);
        QTRY_VERIFY(!m_dialog);
        open();
        reconnect();
        App::shutdown();
        QVERIFY(session());
        delete m_dialog;
    }

    // On a screen of 640 by 360 points, each page is usable by keyboard, and each control has a name.
    void smallScreen()
    {
        connectTo({offWifi});
        m_dialog->resize(620, 300);
        press(u"SkipWifi"_s);
        press(u"SkipController"_s);
        press(u"MoreSettings"_s);
        for (int index = 0; index < pages()->count(); ++index) {
            pages()->setCurrentIndex(index);
            QCoreApplication::processEvents();
            QVERIFY(m_dialog->width() <= 620 && m_dialog->height() <= 300);
            const QList<QWidget *> controls = pages()->currentWidget()->findChildren<QWidget *>();
            for (QWidget *control : controls) {
                if ((control->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !control->focusProxy() &&
                    control->objectName().startsWith("tallyforge"_L1)) {
                    auto *forScreenReaders = QAccessible::queryAccessibleInterface(control);
                    QVERIFY2(!forScreenReaders->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
                }
            }
        }
    }
};

QTEST_MAIN(TestSetupDialog)
#include "tst_setup_dialog.moc"
