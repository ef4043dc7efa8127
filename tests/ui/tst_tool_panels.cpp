// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The tabs that guard, update and reset a device, over a scripted one.

#include "tests/ui/PanelFixture.h"
#include "ui/manager/AdvancedPanel.h"
#include "ui/manager/CloudPanel.h"
#include "ui/manager/SecurityPanel.h"
#include "ui/manager/UpdatesPanel.h"
#include <QClipboard>

#include <QInputDialog>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Lines = QByteArrayList;

class TestToolPanels : public QObject, PanelFixture
{
    Q_OBJECT

    void type(const QString &name, const QString &typed) { find<QLineEdit>(name)->setText(typed); }
    CloudPanel *showCloud() { return own(std::make_unique<CloudPanel>(m_session.get(), m_settings, nullptr)); }
    void asks(const QString &button, QMessageBox::StandardButton answer, const QString &title, const QByteArray &reply)
    {
        m_device.tell({reply});
        m_device.requests.clear();
        press(button);
        confirm(answer, title + u" – "_s + m_session->deviceId());
    }

private Q_SLOTS:
    void init() { begin(R"({"device_id":"D1"})"); }
    void cleanup() { m_panel.reset(); }

    void token()
    {
        m_device.tell({R"(getStatus {"tls_fingerprint":"ab:cd","api_token_configured":true})"});
        auto *panel = show<SecurityPanel>();
        QSignalSpy made(panel, &SecurityPanel::apiToken);
        panel->refresh();
        QCOMPARE(text(u"Fingerprint"_s), u"ab:cd"_s);
        QCOMPARE(find<QLineEdit>(u"Token"_s)->placeholderText(), u"Set – make a new token to see one"_s);
        QGuiApplication::clipboard()->setText(u"mine"_s);
        press(u"CopyToken"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"mine"_s);

        asks(u"NewToken"_s, QMessageBox::No, u"New access token"_s, "none {}");
        QVERIFY(m_device.requests.isEmpty());
        asks(u"NewToken"_s, QMessageBox::Yes, u"New access token"_s, "ensureApiToken refused: Not now.");
        QCOMPARE(message(), u"!Not now."_s);
        asks(u"NewToken"_s, QMessageBox::Yes, u"New access token"_s, "ensureApiToken {}");
        QCOMPARE(message(), u"!The device did not return a token."_s);
        QVERIFY(made.isEmpty());
        asks(u"NewToken"_s, QMessageBox::Yes, u"New access token"_s, R"(ensureApiToken {"token":"t1"})");
        QCOMPARE(m_device.requests, QStringList{u"ensureApiToken{\"force_new\":true}"_s});
        QCOMPARE(message(), u"Copy the token now – it is not shown again."_s);
        QCOMPARE(made, QList<QVariantList>{{u"t1"_s}});
        panel->refresh(); // the device has nothing to say about it any more
        press(u"CopyToken"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"t1"_s);
        connect(panel, &SecurityPanel::apiToken, this, [this] { m_panel.reset(); });
        m_device.tell({R"(ensureApiToken {"token":"t2"})"});
        press(u"NewToken"_s);
        find<QMessageBox>(u"Question"_s)->button(QMessageBox::Yes)->click();
        QTRY_VERIFY(!m_panel);
    }

    void password()
    {
        auto *panel = show<SecurityPanel>();
        const auto change = [this](const QString &current, const QString &next, const QString &again) {
            type(u"CurrentPassword"_s, current);
            type(u"NextPassword"_s, next);
            type(u"NextPasswordAgain"_s, again);
            QTest::keyClick(find(u"NextPasswordAgain"_s), Qt::Key_Return);
            return message();
        };
        QCOMPARE(change({}, u"12345678"_s, u"x"_s), u"!Fill in the current and new password."_s);
        QCOMPARE(change(u"c"_s, u"1234567"_s, u"x"_s), u"!The two new passwords do not match."_s);
        const QString rule = u"!Use at least 8 characters, and not the factory password."_s;
        QCOMPARE(change(u"c"_s, u"1234567"_s, u"1234567"_s), rule);
        QCOMPARE(change(u"c"_s, u"QuietMoose"_s, u"QuietMoose"_s), rule);
        QVERIFY(m_device.requests.isEmpty());
        m_device.tell({"changePassword unauthorized: Wrong password."});
        QCOMPARE(change(u"c"_s, u"12345678"_s, u"12345678"_s), u"!Wrong password."_s);
        QCOMPARE(text(u"NextPassword"_s), u"12345678"_s);
        QSignalSpy changed(panel, &SecurityPanel::passwordChanged);
        m_device.requests.clear();
        QCOMPARE(change(u"c"_s, u"12345678"_s, u"12345678"_s), u"Password changed."_s);
        QCOMPARE(m_device.requests, QStringList{uR"(changePassword{"confirm_password":"12345678",)"
                                                R"("current_password":"c","new_password":"12345678"})"_s});
        QCOMPARE(changed, QList<QVariantList>{{u"12345678"_s}});
        QVERIFY(text(u"CurrentPassword"_s).isEmpty() && text(u"NextPasswordAgain"_s).isEmpty());
    }

    void check_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("asked"); // empty where there is nothing to install
        QTest::newRow("none") << QByteArray(R"({"current_version":"1","version":"9"})") << u"Up to date."_s
                              << QString();
        QTest::newRow("one") << QByteArray(R"({"update_available":true,"version":"2"})") << u"Version 2 is available."_s
                             << u"Install version 2 and restart the device now?"_s;
        QTest::newRow("unnamed, with an error")
            << QByteArray(R"({"update_available":true,"error":"Full."})") << u"!Error: Full."_s
            << u"Install the latest firmware and restart the device now?"_s;
        QTest::newRow("refused") << QByteArray("x: No.") << u"!No."_s << QString();
    }
    void check()
    {
        QFETCH(QByteArray, answer);
        m_device.tell({"c6OtaStatus unknown_method: No.", "otaCheck " + answer, "otaApply refused: Later."});
        show<UpdatesPanel>()->refresh();
        QVERIFY(!find(u"Chip"_s)->isVisible());
        press(u"CheckUpdate"_s);
        QTEST(message(), "said");
        QFETCH(QString, asked);
        QCOMPARE(find(u"InstallUpdate"_s)->isEnabled(), !asked.isEmpty());
        if (!asked.isEmpty()) {
            press(u"InstallUpdate"_s);
            QCOMPARE(find<QMessageBox>(u"Question"_s)->text(), asked);
            confirm(QMessageBox::Yes, u"Install update – D1"_s);
            QCOMPARE(message(), u"!Later."_s);
            QVERIFY(find(u"CheckUpdate"_s)->isEnabled() && !find(u"InstallUpdate"_s)->isEnabled());
        }
    }

    void update_data()
    {
        QTest::addColumn<bool>("ofChip");
        QTest::addColumn<Lines>("answers");
        QTest::addColumn<QString>("shown"); // by and by, with the bar's place
        const QByteArray silence = "timeout: Late.";
        const auto working = [](const char *state, int done, int total) {
            return R"({"state":"%1","bytes_read":%2,"bytes_sent":%2,"total_bytes":%3})"_L1.arg(QLatin1StringView(state))
                .arg(done)
                .arg(total)
                .toUtf8();
        };
        const auto row = [](const char *name, bool ofChip, const Lines &answers, const QString &shown) {
            QTest::newRow(name) << ofChip << answers << shown;
        };
        row("firmware", false,
            {working("downloading", 5, 0), working("downloading", 2, 3), working("strange", 0, 1), silence, silence,
             silence, silence, silence, working("applying", 0, 0), silence, R"({"state":"rebooting"})"},
            u"0 Downloading… 0%|66 Downloading… 66%|100 Verifying and applying the update…|"
            "100 Update applied. The device is restarting – reconnect in a minute."_s);
        row("firmware, failed", false, {R"({"state":"failed","error":"Bad sum"})"}, u"0 Update failed: Bad sum"_s);
        row("firmware, failed for no reason", false, {R"({"state":"failed"})"}, u"0 Update failed: unknown error"_s);
        row("firmware, silent", false, {silence, silence, silence, silence, silence, silence},
            u"0 Lost contact with the device while it updates (it is probably restarting). Reconnect in a minute."_s);
        row("chip", true, {working("sending", 3, 2), silence, working("checking", 0, 0), R"({"state":"done"})"},
            u"100 Working… (sending)|0 Working… (checking)|0 Finished. The device may restart."_s);
        row("chip, idle", true, {R"({"state":"idle"})"}, u"0 Finished. The device may restart."_s);
        row("chip, failed", true, {R"({"state":"failed","error":"Bad"})"}, u"0 Update failed: Bad"_s);
        row("chip, silent", true, {silence, silence, silence, silence, silence, silence},
            u"0 Lost contact with the device (it may be restarting)."_s);
        row("chip, refused", true, {}, u"0 No image."_s);
    }
    void update()
    {
        QFETCH(bool, ofChip);
        QFETCH(Lines, answers);
        m_device.tell(
            {R"(otaCheck {"update_available":true,"version":"2"})", R"(c6OtaStatus {"running_version":"1.1"})"});
        if (answers.isEmpty()) {
            m_device.tell({"c6OtaApply x: No image."});
        }
        auto *panel = show<UpdatesPanel>();
        panel->refresh();
        QCOMPARE(text(u"ChipVersion"_s), u"Running: 1.1"_s);
        press(u"CheckUpdate"_s);
        m_device.script[ofChip ? u"c6OtaStatus"_s : u"otaProgress"_s] = answers;
        const QString name = ofChip ? u"Chip"_s : u"Firmware"_s;
        const QString button = ofChip ? u"UpdateChip"_s : u"InstallUpdate"_s;
        asks(button, QMessageBox::Yes, ofChip ? u"Update wireless chip"_s : u"Install update"_s, "none {}");
        QStringList shown;
        for (qsizetype i = 0; i <= answers.size(); ++i) {
            const QString now =
                QString::number(find<QProgressBar>(name + u"Progress"_s)->value()) + u' ' + text(name + u"Status"_s);
            if (!now.endsWith(u' ') && !shown.contains(now)) {
                shown.append(now);
            }
            QCOMPARE(find(ofChip ? button : u"CheckUpdate"_s)->isEnabled(), i + 1 >= answers.size());
            skip(answers.value(i).startsWith('{') ? 710ms : 1010ms);
        }
        QTEST(shown.join(u'|'), "shown");
        QCOMPARE(find(name + u"Progress"_s)->isVisible(), !answers.isEmpty());
        QCOMPARE(m_device.requests.size(), 1 + answers.size());
    }

    void cloud()
    {
        m_device.tell({R"(getStatus {"mqtt_connected":true,"mqtt_transport":"usb","device_id":"D1"})", "getStatus {}",
                       "getStatus never"});
        auto *panel = showCloud();
        QVERIFY(!find(u"Share"_s)->isVisible());
        panel->refresh();
        QCOMPARE(text(u"CloudStatus"_s), u"Connected to the cloud: yes\nRoute: usb"_s);
        QCOMPARE(text(u"DeviceId"_s), u"D1"_s);
        press(u"RefreshCloud"_s);
        QCOMPARE(text(u"CloudStatus"_s), u"Connected to the cloud: no"_s);
        press(u"SaveDeviceId"_s);
        type(u"DeviceId"_s, u"  "_s);
        press(u"SaveDeviceId"_s);
        QVERIFY(m_device.requests.filter(u"setDeviceId"_s).isEmpty());
        press(u"RefreshCloud"_s);
        find<QLineEdit>(u"DeviceId"_s)->clear();
        QTest::keyClicks(find(u"DeviceId"_s), u" D2 "_s);
        m_device.answerHeld(); // after the first letters
        m_device.tell(
            {"setDeviceId taken: In use.", "setDeviceId {}", "getStatus x: No.", R"(getStatus {"device_id":"D2"})"});
        QTest::keyClick(find(u"DeviceId"_s), Qt::Key_Return);
        QCOMPARE(message(), u"!In use."_s);
        QCOMPARE(text(u"DeviceId"_s), u" D2 "_s);
        press(u"SaveDeviceId"_s);
        QCOMPARE(message(), u"Saved."_s);
        QCOMPARE(m_device.requests.filter(u"setDeviceId"_s).constLast(), u"setDeviceId{\"device_id\":\"D2\"}"_s);
        QCOMPARE(m_session->deviceId(), u"D2"_s); // which the next title shows
        QVERIFY(text(u"CloudStatus"_s).isEmpty());
        QTest::keyClicks(find(u"DeviceId"_s), u"x"_s);
        m_device.tell({R"(getStatus {"device_id":"D2"})"});
        press(u"RefreshCloud"_s);
        QCOMPARE(text(u"DeviceId"_s), u"D2"_s);
        asks(u"ForgetCloud"_s, QMessageBox::Yes, u"Forget cloud sign-in"_s, "clearMqttConfig {}");
        QCOMPARE(message(), u"Done. The device no longer has cloud credentials."_s);
        QCOMPARE(m_device.requests, (QStringList{u"clearMqttConfig{}"_s, u"getStatus{}"_s}));
    }

    void advanced()
    {
        m_device.tell({R"(getLogs {"logs":"one\ntwo"})", R"(getLogs {"logs":"","n":1})", "getLogs x: No log."});
        show<AdvancedPanel>();
        press(u"ShowLog"_s);
        QTRY_COMPARE(box(u"Log"_s), u"one\ntwo"_s);
        press(u"ShowLog"_s);
        QTRY_COMPARE(box(u"Log"_s), u"{\n    \"logs\": \"\",\n    \"n\": 1\n}\n"_s);
        QCOMPARE(message(), QString());
        press(u"ShowLog"_s);
        QCOMPARE(message(), u"!No log."_s);
        const QByteArray lines =
            QByteArray(4000, 'x') + "\\n" + QByteArray(99, 'x').append("\\n").repeated(1999) + QByteArray(9000, 'y');
        m_device.tell({"getLogs {\"logs\":\"" + lines + "\"}"});
        press(u"ShowLog"_s);
        QTRY_VERIFY(box(u"Log"_s).endsWith(u"yy"_s));
        QCOMPARE(find<QPlainTextEdit>(u"Log"_s)->blockCount(), 2003);
        QCOMPARE(box(u"Log"_s).count(u'y'), 9000);

        asks(u"ResetPassword"_s, QMessageBox::Yes, u"Reset admin password"_s, "resetLocalPassword {}");
        QCOMPARE(message(), u"Password reset."_s);
        QCOMPARE(m_device.requests, QStringList{u"resetLocalPassword{\"confirm\":true}"_s});
        m_device.requests.clear();
        for (const QString &typed : {u"reset"_s, u" RESET "_s}) {
            press(u"FactoryReset"_s);
            auto *question = find<QInputDialog>(u"TextQuestion"_s);
            QCOMPARE(question->windowTitle(), u"Factory reset – D1"_s);
            QVERIFY(m_device.requests.isEmpty());
            question->setTextValue(typed);
            question->accept();
            QTRY_VERIFY(!find<QInputDialog>(u"TextQuestion"_s));
        }
        QCOMPARE(m_device.requests, QStringList{u"factoryReset{\"confirm\":true}"_s});
        QCOMPARE(message(), u"The device is resetting."_s);
        asks(u"RestartDevice"_s, QMessageBox::Yes, u"Restart device"_s, "reboot {}");
        QCOMPARE(message(), u"Restarting…"_s);
    }

    // Whatever is asked for, the panel or the session may have gone by the time of the answer.
    void goes()
    {
        const auto all = [this](bool withSession) {
            for (const char *button : {"NewToken", "ShowPasskey", "CheckUpdate", "InstallUpdate", "UpdateChip",
                                       "RefreshCloud", "ForgetCloud", "RestartDevice", "ShowLog", "ResetPassword"}) {
                if (withSession) {
                    begin();
                    m_device.onRequest = [this](const QString &) { m_panel.reset(); };
                }
                const QString name = QString::fromLatin1(button);
                for (const auto &made : std::initializer_list<std::function<QWidget *()>>{
                         [this] { return show<SecurityPanel>(); }, [this] { return show<UpdatesPanel>(); },
                         [this]() -> QWidget * { return showCloud(); }, [this] { return show<AdvancedPanel>(); }}) {
                    if (made()->findChild<QWidget *>(u"tallyforge"_s + name)) {
                        break;
                    }
                }
                find(name)->setEnabled(true);
                press(name);
                if (auto *question = m_panel ? find<QMessageBox>(u"Question"_s) : nullptr) {
                    question->button(QMessageBox::Yes)->click();
                }
                QTRY_VERIFY2(!m_panel == withSession, button);
                QTRY_VERIFY2(withSession || message() == u"!Not connected to a device."_s, button);
                QVERIFY2(withSession || find(name == "InstallUpdate"_L1 ? u"CheckUpdate"_s : name)->isEnabled(),
                         button);
            }
        };
        all(true);
        m_session.reset();
        all(false);
    }
};

QTEST_MAIN(TestToolPanels)
#include "tst_tool_panels.moc"
