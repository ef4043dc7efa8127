// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The dock on the real services, with a portal and an update server on loopback.

#include "core/HostedServer.h"
#include "device/usb/UsbFrame.h"
#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "tests/support/FakeFrontend.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "tests/support/Pty.h"
#include "ui/dock/Dock.h"
#include "ui/dock/DockRegistration.h"
#include "ui/dock/ScoreLine.h"
#include "ui/dock/UpdateBanner.h"
#include "ui/dock/UpdateFooter.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;
using How = HttpReply::How;
using State = PluginUpdater::State;

namespace {

constexpr const char *userBody = R"({"user":{"email":"a&b@c.example"}})";
constexpr const char *twoDevices = R"({"devices":[{"device_id":"d1","nickname":"Gym"},{"device_id":"d2"}]})";
quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

class TestDock : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpStub> m_portal;
    std::unique_ptr<Dock> m_dock;
    QHash<QByteArray, HttpReply> m_answers; // by path
    int m_work = 0;                         // layouts, paints and polishes
    bool m_framed = false;                  // all that was asked for before has been painted

    template <class Widget = QWidget> Widget *find(const QString &name)
    {
        return m_dock->findChild<Widget *>(u"tallyforge"_s + name);
    }
    bool shown(const QString &name) { return find(name)->isVisibleTo(m_dock.get()); }
    QString text(const QString &name) { return find(name)->property("text").toString(); }
    bool isRed(const QString &name) { return find(name)->styleSheet().contains(u"#d9534f"_s); }
    void press(const QString &name) { find<QAbstractButton>(name)->click(); }

    void start(const QJsonObject &settings = {})
    {
        QFile file(m_dir->filePath(u"settings.json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(settings).toJson()) > 0);
        file.close();
        App::init(m_portal->url());
        m_dock = std::make_unique<Dock>(*App::get(), "");
    }
    void showDock()
    {
        m_dock->show();
        QTRY_VERIFY(find(u"Scoreboard"_s) && find(u"Scoreboard"_s)->isVisible());
    }
    void open(const QJsonObject &settings = {})
    {
        start(settings);
        showDock();
    }
    // Shown late: the account has answered before there is a page.
    void openSignedIn(const QJsonObject &settings = {})
    {
        m_answers["/auth/me"] = {200, userBody};
        start(settings);
        QSignalSpy listed(App::get(), &App::devicesChanged);
        QTRY_COMPARE(listed.count(), 1);
        showDock();
    }
    QByteArray lastPost()
    {
        const HttpRequest &last = m_portal->requests.last();
        return last.path + ' ' + last.body;
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        const auto type = event->type();
        m_framed |= type == QEvent::UpdateRequest;
        m_work += type == QEvent::Paint || type == QEvent::LayoutRequest || type == QEvent::StyleChange;
        return false;
    }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        setConfigFolder(m_dir->path());
        m_portal = std::make_unique<HttpStub>();
        m_answers = {{"/auth/me", {401}}, {"/devices", {200, twoDevices}}};
        m_portal->answer = [this](const HttpRequest &request) { return m_answers.value(request.path); };
        frontend() = {};
    }
    void cleanup()
    {
        m_dock.reset();
        App::shutdown();
    }

    void neverShown()
    {
        start();
        m_dock->show(); // as OBS does while it puts its window together
        m_dock->hide();
        App::get()->live().ingest({{u"home_score"_s, 1}});
        App::get()->settings().setServerPort(2000);
        QTest::qWait(0);
        QVERIFY(m_dock->children().isEmpty());
        showDock();
        QCOMPARE(text(u"Score"_s), u"1 – 0"_s);
        QCOMPARE(find<QSpinBox>(u"ServerPort"_s)->value(), 2000);
    }

    void signIn()
    {
        open();
        QVERIFY(shown(u"SignIn"_s) && !shown(u"SignedIn"_s) && !shown(u"Device"_s) && !shown(u"ManageDevice"_s));
        QVERIFY(!shown(u"Code"_s) && !shown(u"SignInMessage"_s));
        auto *password = find<QLineEdit>(u"Password"_s);
        auto *code = find<QLineEdit>(u"Code"_s);
        find<QLineEdit>(u"Email"_s)->setText(u"e"_s);
        password->setText(u" p "_s);
        const QByteArray byPassword = R"(/auth/login {"email":"e","password":" p "})";

        const auto answers = [&](const QByteArray &path, int status, const QByteArray &body, const QString &message) {
            m_answers[path] = {status, body};
            const auto before = m_portal->requests.size();
            QTest::keyClick(code->isHidden() ? password : code, Qt::Key_Return);
            QVERIFY(!find(u"SignInButton"_s)->isEnabled() && !isRed(u"SignInMessage"_s));
            QTRY_VERIFY(find(u"SignInButton"_s)->isEnabled() && m_portal->requests.size() > before);
            QCOMPARE(text(u"SignInMessage"_s), message);
            QCOMPARE(isRed(u"SignInMessage"_s), status != 200);
        };
        answers("/auth/login", 401, R"({"error":"invalid_credentials"})",
                u"That email and password did not match. Check them and try again."_s);
        QCOMPARE(lastPost(), byPassword);
        QVERIFY(password->text() == u" p "_s && code->isHidden());
        answers("/auth/login", 200, R"({"totp_required":true,"challenge_id":"h"})",
                u"Enter the code from your authenticator app."_s);
        QVERIFY(!code->isHidden() && !App::get()->portal().signedIn());
        for (const QString &wrong : {u"1"_s, u"2"_s}) { // the challenge holds
            code->setText(wrong);
            answers("/auth/login/totp", 400, R"({"error":"invalid_totp_code","detail":"x"})",
                    u"That code was not accepted. Enter the current 6-digit code from your authenticator app."_s);
            QCOMPARE(lastPost(), "/auth/login/totp {\"challenge_id\":\"h\",\"code\":\"" + wrong.toUtf8() + "\"}");
        }
        QTest::keyClick(password, Qt::Key_End);
        QVERIFY(!code->isHidden() && shown(u"SignInMessage"_s));
        for (QWidget *edit : {find(u"Email"_s), find(u"Password"_s)}) {
            QTest::keyClick(edit, Qt::Key_X); // starts over
            QTest::keyClick(edit, Qt::Key_Backspace);
            QVERIFY(code->isHidden() && !shown(u"SignInMessage"_s));
            answers("/auth/login", 200, R"({"totp_required":true,"challenge_id":"i"})",
                    u"Enter the code from your authenticator app."_s);
            QCOMPARE(lastPost(), byPassword);
        }
        m_answers["/auth/login/totp"] = {200, userBody};
        QTest::keyClick(code, Qt::Key_Return);
        QTRY_VERIFY(shown(u"SignedIn"_s));
        QVERIFY(!shown(u"SignIn"_s) && shown(u"Device"_s) && shown(u"ManageDevice"_s) && code->isHidden());
        QCOMPARE(password->text() + code->text() + text(u"SignInMessage"_s), QString());
        QCOMPARE(text(u"SignedInAs"_s), u"Signed in as <b>a&amp;b@c.example</b>"_s);

        press(u"SignOut"_s);
        QVERIFY(shown(u"SignIn"_s) && !shown(u"SignedIn"_s) && !shown(u"Device"_s));
        QCOMPARE(text(u"SignedInAs"_s), QString());
    }

    void oneRequestAtATime()
    {
        open();
        QTRY_COMPARE(m_portal->requests.size(), 1);
        m_answers["/auth/login"].how = How::Hang;
        QTest::keyClick(find(u"Password"_s), Qt::Key_Return);
        QTest::keyClick(find(u"Password"_s), Qt::Key_Return);
        QTRY_COMPARE(m_portal->requests.size(), 2);
        m_dock.reset(); // before its answer comes
        m_portal->release(userBody);
        QTRY_VERIFY(App::get()->portal().signedIn());
        QCOMPARE(m_portal->asked().count("POST /auth/login"), 1);
    }

    void devices_data()
    {
        QTest::addColumn<QByteArray>("listed");
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("expected"); // items, the current one in brackets, and what can be done with it
        const auto row = [](const char *name, const QByteArray &listed, const QByteArray &settings,
                            const QString &expected) { QTest::newRow(name) << listed << settings << expected; };
        row("none", R"({"devices":[]})", R"({"selected_device":"d1"})", u"[No devices on this account yet]"_s);
        row("no choice", twoDevices, "{}", u"[Gym (d1)] d2 manage"_s);
        row("stored", twoDevices, R"({"selected_device":"d2"})", u"Gym (d1) [d2] manage"_s);
        row("in other case", twoDevices, R"({"selected_device":"D2"})", u"[Gym (d1)] d2 manage"_s);
        const QByteArray lan = R"({"selected_device":"d2","lan":{"d2":{"host":"127.0.0.1","token":"t"}})";
        row("reachable here", twoDevices, lan + "}", u"Gym (d1) [d2] manage lan"_s);
        row("followed here", twoDevices, lan + R"(,"routes":{"d2":"lan"}})", u"Gym (d1) [d2] manage lan checked"_s);
        row("followed here, but not chosen", twoDevices,
            R"({"lan":{"d1":{"host":"127.0.0.1","token":"t"}},"routes":{"d1":"lan"}})",
            u"[Gym (d1)] d2 manage lan checked"_s);
        row("without a token", twoDevices,
            R"({"selected_device":"d2","lan":{"d2":{"host":"h"}},"routes":{"d2":"lan"}})", u"Gym (d1) [d2] manage"_s);
    }
    void devices()
    {
        QFETCH(QByteArray, listed);
        QFETCH(QByteArray, settings);
        m_answers["/devices"].body = listed;
        openSignedIn(QJsonDocument::fromJson(settings).object());
        const auto *combo = find<QComboBox>(u"Device"_s);
        QStringList words;
        for (int i = 0; i < combo->count(); ++i) {
            words.append(i == combo->currentIndex() ? u'[' + combo->itemText(i) + u']' : combo->itemText(i));
        }
        const auto note = [&words](bool so, const QString &word) {
            words.append(so ? QStringList{word} : QStringList());
        };
        note(find(u"ManageDevice"_s)->isEnabled(), u"manage"_s);
        note(shown(u"UseLan"_s), u"lan"_s);
        note(find<QCheckBox>(u"UseLan"_s)->isChecked(), u"checked"_s);
        QTEST(words.join(u' '), "expected");
        const SettingsStore &store = App::get()->settings();
        QCOMPARE(store.preferredRoute(u"d2"_s) == u"lan"_s, settings.contains("\"d2\":\"lan\"")); // shown, not set
        QCOMPARE(store.selectedDevice().isEmpty(), !settings.contains("selected_device"));
    }

    void choice()
    {
        openSignedIn(
            {{u"lan"_s, QJsonObject{{u"d2"_s, QJsonObject{{u"host"_s, u"127.0.0.1"_s}, {u"token"_s, u"t"_s}}}}}});
        const auto pick = [this](int index) {
            auto *combo = find<QComboBox>(u"Device"_s);
            combo->setCurrentIndex(index);
            Q_EMIT combo->activated(index);
        };
        const SourceManager &sources = *App::get()->sources();
        using Mode = SourceManager::Mode;
        QCOMPARE(sources.mode(), Mode::None);
        pick(1);
        QVERIFY(sources.deviceId() == u"d2"_s && sources.mode() == Mode::Cloud && shown(u"UseLan"_s));
        press(u"UseLan"_s);
        QCOMPARE(sources.mode(), Mode::Lan);
        pick(0);
        QVERIFY(sources.deviceId() == u"d1"_s && sources.mode() == Mode::Cloud && !shown(u"UseLan"_s));
        App::get()->selectCloudDevice(u"d2"_s); // as another program may
        QCOMPARE(find<QComboBox>(u"Device"_s)->currentIndex(), 1);
        QVERIFY(sources.mode() == Mode::Lan && find<QCheckBox>(u"UseLan"_s)->isChecked());
        press(u"UseLan"_s);
        QVERIFY(sources.mode() == Mode::Cloud && App::get()->settings().preferredRoute(u"d2"_s) == u"cloud"_s);

        m_answers["/devices"].body = "{}";
        App::get()->refreshDevices({});
        QTRY_COMPARE(find<QComboBox>(u"Device"_s)->count(), 1);
        pick(0);
        QCOMPARE(sources.deviceId(), u"d2"_s);
    }

    void statusAndScore()
    {
        openSignedIn();
        QCOMPARE(text(u"Status"_s), u"<span style=\"color:#d9a441\">●</span> Pick a scoreboard above."_s);
        App::get()->sources()->useLan(u"d"_s, {u"127.0.0.1"_s, u"t"_s, u"<b>&"_s});
        QVERIFY(text(u"Status"_s).startsWith(u"<span style=\"color:#d9a441\">●</span> "_s));
        QVERIFY(text(u"Status"_s).contains(u"&lt;b&gt;&amp;"_s));
        m_answers["/devices/d1/state"].body = R"({"home_score":"<i>","away_score":2})";
        App::get()->sources()->useCloud(u"d1"_s);
        QTRY_VERIFY(text(u"Status"_s).startsWith(u"<span style=\"color:#3cb371\">"_s));
        QCOMPARE(text(u"Score"_s), u"<i> – 2"_s);
        QCOMPARE(find<QLabel>(u"Score"_s)->textFormat(), Qt::PlainText);
        App::get()->live().clear();
        QVERIFY(!shown(u"Score"_s));
    }

    void scoreLine_data()
    {
        QTest::addColumn<QByteArray>("envelope");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const QByteArray &envelope, const QString &line) {
            QTest::newRow(name) << envelope << line;
        };
        row("nothing", "{}", {});
        row("one side alone", R"({"away_score":5})", u"0 – 5"_s);
        row("a score of 0", R"({"home_score":0,"away_score":""})", u"0 – 0"_s);
        row("no score", R"({"clock":"1:00","home_score":""})", u"1:00"_s);
        row("everything in order", R"({"clock":"c","inning":"i","half":"h","quarter":"q","period":"p","home_score":1})",
            u"1 – 0   ·   p   ·   q   ·   h   ·   i   ·   c"_s);
        row("other fields", R"({"d":4,"b":"","a":"<1>","c":3})", u"a: <1>   ·   b:    ·   c: 3"_s);
        row("two other fields", R"({"b":2,"a":1})", u"a: 1   ·   b: 2"_s);
    }
    void scoreLine()
    {
        QFETCH(QByteArray, envelope);
        LiveData live;
        live.ingest(QJsonDocument::fromJson(envelope).object());
        QTEST(tallyforge::scoreLine(live), "line");
    }

    void server()
    {
        const quint16 port = freePort();
        open({{u"server_port"_s, port}});
        QCOMPARE(text(u"ServerStatus"_s), u"Off."_s);
        const auto line = [](const QString &address, int number, int clients) {
            return u"Connect to %1:%2 and read one JSON line per update. %3 connected."_s.arg(address).arg(number).arg(
                clients);
        };
        press(u"ServerEnabled"_s);
        QCOMPARE(text(u"ServerStatus"_s), line(u"127.0.0.1"_s, port, 0));
        QTcpSocket program;
        program.connectToHost(QHostAddress::LocalHost, port);
        QTRY_COMPARE(text(u"ServerStatus"_s), line(u"127.0.0.1"_s, port, 1));

        auto *box = find<QSpinBox>(u"ServerPort"_s);
        Q_EMIT box->editingFinished(); // the focus has passed
        QCOMPARE(App::get()->server()->clientCount(), 1);
        box->stepUp();
        program.abort(); // a program goes while the user changes the number
        QTRY_COMPARE(App::get()->server()->clientCount(), 0);
        QCOMPARE(box->value(), port + 1);

        QTcpServer taken;
        taken.listen(QHostAddress::LocalHost);
        box->setValue(taken.serverPort());
        Q_EMIT box->editingFinished();
        const QString failure = u"Could not start - port %1 may be in use. Try another port."_s.arg(taken.serverPort());
        QCOMPARE(text(u"ServerStatus"_s), failure);
        QVERIFY(App::get()->settings().serverEnabled());
        taken.close();
        Q_EMIT box->editingFinished(); // once more
        QCOMPARE(text(u"ServerStatus"_s), line(u"127.0.0.1"_s, box->value(), 0));
        press(u"ServerAllowNetwork"_s);
        QCOMPARE(text(u"ServerStatus"_s), line(u"this computer's address"_s, box->value(), 0));
        press(u"ServerEnabled"_s);
        QCOMPARE(text(u"ServerStatus"_s), u"Off."_s);
    }

    void relays()
    {
        open({{u"share_connection"_s, true}});
        QVERIFY(!shown(u"Relays"_s) && !shown(u"StopRelays"_s));
        const Pty pty;
        auto *session = new DeviceSession(new UsbLink(pty.path()), nullptr);
        session->start({u"p"_s});
        pty.send(buildFrame(UsbFrame::Ctrl, R"({"t":"hello","device_id":"D","tunnel":{"host":"127.0.0.1","port":9}})"));
        QTRY_VERIFY(App::get()->keepUsbRelay(session));
        QVERIFY(shown(u"Relays"_s) && shown(u"StopRelays"_s));
        QCOMPARE(text(u"Relays"_s), u"USB cloud relay\nD: ready, waiting for the device"_s);
        press(u"StopRelays"_s);
        QVERIFY(!shown(u"Relays"_s) && !shown(u"StopRelays"_s));
    }

    void updates_data()
    {
        QTest::addColumn<UpdateView>("view");
        QTest::addColumn<QString>("banner");
        QTest::addColumn<QString>("footer");
        const auto row = [](const char *name, const UpdateView &view, const QString &banner, const QString &footer) {
            QTest::newRow(name) << view << banner << footer;
        };
        const auto view = [](State state, const QString &notes = {}, bool inPlace = true, bool active = false) {
            return UpdateView{state, u"m"_s, u"2"_s, notes, u"url"_s, 40, inPlace, active, 86400};
        };
        const QString offer = u"Tallyforge 2 is available (you have %1)."_s.arg(build_config::version());
        const QString restart = u"Restart OBS to finish updating to version 2."_s;
        row("idle", view(State::Idle), {}, u"m, check"_s);
        row("checking", view(State::Checking), {}, u"m"_s);
        row("up to date", view(State::UpToDate), {},
            u"m Checked %1., check"_s.arg(QDateTime::fromSecsSinceEpoch(86400).toString(Qt::TextDate)));
        UpdateView never = view(State::UpToDate);
        never.lastCheck = 0;
        row("never checked", never, {}, u"m, check"_s);
        row("on offer", view(State::Available, u"new <b>"_s), offer + u", new <b>, [Update now]"_s, u"m, check"_s);
        row("for all users", view(State::Available, {}, false), offer + u", [Open the download page]"_s, u"m, check"_s);
        row("downloading", view(State::Downloading, u"n"_s), u"m, 40 of 100"_s, u"m"_s);
        row("installing", view(State::Installing), u"m, 40 of 0"_s, u"m"_s);
        row("installed", view(State::Installed, u"n"_s), restart + u", amber"_s, u"m"_s);
        row("installed while live", view(State::Installed, {}, true, true),
            restart + u" OBS is streaming or recording right now, so wait until you are done., amber"_s, u"m"_s);
        row("failed", view(State::Failed, u"n"_s), u"The update to version 2 did not finish., [Try again]"_s,
            u"m, check, red"_s);
        UpdateView failedCheck = view(State::Failed);
        failedCheck.packageUrl.clear();
        row("failed check", failedCheck, {}, u"m, check, red"_s);
    }
    void updates()
    {
        QFETCH(UpdateView, view);
        open();
        auto *banner = find<UpdateBanner>(u"UpdateBanner"_s);
        auto *footer = find<UpdateFooter>(u"Plugin"_s);
        for (const State before : {State::Downloading, State::Installed, State::Failed}) { // whatever was shown
            UpdateView other = view;
            other.state = before;
            banner->refresh(other);
            footer->refresh(other);
            banner->refresh(view);
            footer->refresh(view);
            QStringList words;
            const auto note = [&words](bool so, const QString &word) {
                words.append(so ? QStringList{word} : QStringList());
            };
            note(shown(u"UpdateTitle"_s), text(u"UpdateTitle"_s));
            note(shown(u"UpdateNotes"_s), text(u"UpdateNotes"_s));
            auto *progress = find<QProgressBar>(u"UpdateProgress"_s);
            // An indeterminate bar has no value of its own.
            note(shown(u"UpdateProgress"_s), u"40 of %1"_s.arg(progress->maximum()));
            note(shown(u"UpdateNow"_s), u'[' + text(u"UpdateNow"_s) + u']');
            note(shown(u"OpenDownloadPage"_s), u'[' + text(u"OpenDownloadPage"_s) + u']');
            note(shown(u"UpdateBanner"_s) && banner->styleSheet().contains(u"#e8a317"_s), u"amber"_s);
            QTEST(words.join(u", "_s), "banner");
            words = {text(u"UpdateStatus"_s)};
            note(find(u"CheckForUpdates"_s)->isEnabled(), u"check"_s);
            note(isRed(u"UpdateStatus"_s), u"red"_s);
            QTEST(words.join(u", "_s), "footer");
        }
    }

    void nothingIsDrawnWhenNothingChanged()
    {
        openSignedIn({{u"selected_device"_s, u"d1"_s}, {u"server_enabled"_s, true}, {u"server_port"_s, freePort()}});
        App::get()->live().ingest({{u"home_score"_s, 1}});
        m_dock->resize(250, 1500);
        m_dock->show();
        const auto work = [this](const std::function<void()> &change) {
            m_work = 0;
            m_framed = false;
            qApp->installEventFilter(this);
            change();
            QCoreApplication::processEvents();
            m_dock->windowHandle()->requestUpdate();
            const bool framed = QTest::qWaitFor([this] { return m_framed; });
            QCoreApplication::processEvents();
            qApp->removeEventFilter(this);
            return framed ? m_work : -1;
        };
        App &app = *App::get();
        QTRY_COMPARE(work([] {}), 0);
        QVERIFY(work([&] { app.live().ingest({{u"home_score"_s, 2}}); }) > 0);
        QTRY_COMPARE(work([] {}), 0);
        QCOMPARE(work([&] {
                     Q_EMIT app.devicesChanged();
                     Q_EMIT app.sources()->statusChanged();
                     Q_EMIT app.live().changed();
                     Q_EMIT app.serverStateChanged();
                     Q_EMIT app.usbRelaysChanged();
                     Q_EMIT app.updater().stateChanged();
                     Q_EMIT app.portal().signedInChanged(true);
                 }),
                 0);
    }

    void registration()
    {
        dock_register("t"); // before there is an App
        App::init(m_portal->url());
        frontend().up = false; // a host of libobs alone
        dock_register("t");
        dock_unregister();
        QVERIFY(!frontend().dock && !frontend().onEvent);

        frontend().up = true;
        frontend().callsWhenDown = 0;
        dock_register("t");
        dock_register("t");
        QVERIFY(qobject_cast<Dock *>(frontend().dock.get()) && frontend().dockId == u"tallyforge-dock"_s);
        const auto onEvent = frontend().onEvent;
        onEvent(OBS_FRONTEND_EVENT_FINISHED_LOADING, nullptr);
        QVERIFY(frontend().dock);
        onEvent(OBS_FRONTEND_EVENT_EXIT, nullptr);
        frontend().up = false;
        dock_unregister();
        QVERIFY(!frontend().dock && !frontend().onEvent);
        QCOMPARE(frontend().callsWhenDown, 0);

        frontend().up = true; // and a module that is unloaded without that event
        dock_register("t");
        dock_unregister();
        QVERIFY(!frontend().dock && !frontend().onEvent);
    }
};

QTEST_MAIN(TestDock)
#include "tst_dock.moc"
