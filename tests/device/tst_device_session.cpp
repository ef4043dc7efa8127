// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/DeviceSession.h"
#include "tests/support/FakeLink.h"

#include <QPointer>
#include <QTest>
#include <QVariant>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

QJsonObject json(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

const char *const okReply = R"({"ok":true})";
const char *const timeout = R"({"error":{"code":"timeout","message":"Late."}})";

} // namespace

class TestDeviceSession : public QObject
{
    Q_OBJECT

    FakeLink *m_link = nullptr; // the session's
    std::unique_ptr<DeviceSession> m_session;
    QStringList m_events; // of signals and callbacks

    [[nodiscard]] QString asked() const
    {
        return m_link->carrier.sent.isEmpty() ? QString()
                                              : m_link->carrier.sent.constLast().value(u"method"_s).toString();
    }
    [[nodiscard]] QJsonObject params() const { return m_link->carrier.sent.constLast().value(u"params"_s).toObject(); }
    void answer(const QByteArray &reply = okReply) { m_link->carrier.answer(json(reply)); }
    DeviceSession::Done keep()
    {
        return [this](bool ok, const QString &error) { m_events.append((ok ? u"done "_s : u"failed "_s) + error); };
    }
    void signIn()
    {
        m_session->start({u"right"_s});
        answer();
        answer();
        m_events.clear();
    }
    QStringList takeEvents() { return std::exchange(m_events, {}); }

private Q_SLOTS:
    void init()
    {
        m_link = new FakeLink;
        m_session = std::make_unique<DeviceSession>(m_link, DeviceSession::Timing{10ms, 1ms}, nullptr);
        m_events.clear();
        connect(m_session.get(), &DeviceSession::stateChanged, this,
                [this](DeviceSession::State state, const QString &detail) {
                    const QString name = QVariant::fromValue(state).toString();
                    m_events.append((name + u' ' + detail).trimmed());
                });
        connect(m_session.get(), &DeviceSession::envelope, this, [this] { m_events.append(u"envelope"_s); });
    }

    void signInRepliesAndTheirStates_data()
    {
        QTest::addColumn<QByteArrayList>("replies");
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<int>("requests");
        const auto row = [](const char *name, const QByteArrayList &replies, const QStringList &events, int requests) {
            QTest::newRow(name) << replies << QStringList{u"Connecting"_s, u"SigningIn"_s} + events << requests;
        };
        const QByteArray wrong = R"({"error":{"code":"bad_password"}})";
        row("the second is right", {wrong, okReply, okReply}, {u"Ready"_s}, 3);
        row("all are wrong", {wrong, R"({"error":{"code":"unauthorized"}})"}, {u"NeedsPassword"_s}, 2);
        row("rate limited: the user is asked at once", {R"({"error":{"code":"rate_limited","message":"Wait."}})"},
            {u"NeedsPassword"_s}, 1);
        row("the carrier fails: no other is tried", {timeout}, {u"Error Late."_s}, 1);
        row("a new password is demanded", {R"({"ok":true,"result":{"must_change_password":true}})", okReply},
            {u"NeedsNewPassword"_s}, 2);
        row("a failing status doesn't hold it back", {okReply, timeout}, {u"Ready"_s}, 2);
    }
    void signInRepliesAndTheirStates()
    {
        QFETCH(QByteArrayList, replies);
        m_session->start({u"one"_s, u"two"_s});
        for (const QByteArray &reply : std::as_const(replies)) {
            answer(reply);
        }
        QTEST(m_events, "events");
        QTEST(static_cast<int>(m_link->carrier.sent.size()), "requests");
    }

    void whatItKnowsOfTheDevice()
    {
        m_link->info = json(R"({"device_id":"A","fw":"1"})");
        m_session->start({});
        QCOMPARE(m_session->deviceId() + m_session->firmware(), u"A1"_s);
        m_session->submitPassword(u"p"_s);
        QCOMPARE(params(), json(R"({"password":"p"})"));
        answer();
        answer(R"({"ok":true,"result":{"device_id":"B","firmware_version":"2","wifi_sta_ip":"10.0.0.9"}})");
        QCOMPARE(m_session->deviceId() + m_session->firmware() + m_session->wifiIp(), u"B210.0.0.9"_s);
    }

    void theLinkEnds_data()
    {
        QTest::addColumn<int>("replies");
        QTest::newRow("while signing in") << 0;
        QTest::newRow("while asking for the status") << 1;
        QTest::newRow("when ready") << 2;
    }
    void theLinkEnds()
    {
        QFETCH(int, replies);
        m_session->start({u"right"_s, u"other"_s});
        for (int i = 0; i < replies; ++i) {
            answer();
        }
        m_events.clear();
        m_session->rpc()->call(u"x"_s, {}, [this](const RpcResult &r) { m_events.append(r.errorMessage); });
        m_link->lose(u"Unplugged."_s);
        QCOMPARE(takeEvents(), (QStringList{u"The connection to the device was lost"_s, u"Lost Unplugged."_s}));

        m_session->start({u"new"_s}); // it may start over, and knows a password that has worked
        if (m_session->state() == DeviceSession::State::SigningIn) {
            QCOMPARE(params().value(u"password"_s).toString(), replies > 0 ? u"right"_s : u"new"_s);
        }
        m_session->stop();
        m_session->stop();
        m_link->lose(u"x"_s);
        QCOMPARE(m_session->state(), DeviceSession::State::Idle);
        QCOMPARE(takeEvents(), (QStringList{u"Connecting"_s, u"SigningIn"_s}));
    }

    void linkThatCannotOpen()
    {
        m_link->opensAtOnce = false;
        m_session->start({});
        Q_EMIT m_link->failed(u"open_failed"_s, u"No port."_s);
        QCOMPARE(m_events, (QStringList{u"Connecting"_s, u"Error No port."_s}));
        QCOMPARE(m_session->detail(), u"No port."_s);
    }

    void receivers()
    {
        m_link->info = json(R"({"receiver":true})");
        m_session->start({u"p"_s});
        QCOMPARE(takeEvents(), (QStringList{u"Connecting"_s, u"Ready"_s}));
        QVERIFY(m_session->receiverMode() && m_link->carrier.sent.isEmpty());
        m_session->manageViaReceiver({u"p"_s});
        QVERIFY(!m_session->receiverMode());
        answer(timeout);
        QCOMPARE(m_events.constLast().left(59), u"Error The paired device did not answer through the receiver"_s);
        Q_EMIT m_link->opened(m_link->info); // the receiver came back: still the paired device is meant
        QCOMPARE(m_session->state(), DeviceSession::State::NeedsPassword);
    }

    void polling()
    {
        m_link->polls = true;
        signIn();
        QTRY_COMPARE(asked(), u"getState"_s);
        const qsizetype sent = m_link->carrier.sent.size();
        QTest::qWait(40);
        QCOMPARE(m_link->carrier.sent.size(), sent); // one at a time
        answer(R"({"error":{"code":"unauthorized"}})");
        QCOMPARE(asked(), u"login"_s); // once more with what has worked
        QCOMPARE(params(), json(R"({"password":"right"})"));
        answer();
        answer();
        for (const char *reply : {timeout, timeout, okReply, timeout, timeout, timeout}) {
            QCOMPARE(m_link->closes, 0);
            QTRY_COMPARE(m_session->rpc()->pending(), 1);
            answer(reply);
        }
        QCOMPARE(m_link->closes, 1);
        QCOMPARE(m_events, (QStringList{u"Ready"_s, u"envelope"_s, u"Lost"_s}));
    }

    void wifiIsVerified_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<int>("looks");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const char *status, int looks, const QString &outcome) {
            QTest::newRow(name) << QByteArray(R"({"ok":true,"result":)") + status + '}' << looks << outcome;
        };
        row("joined", R"({"wifi_provision":{"state":"ok"},"wifi_sta_ip":"10.0.0.9"})", 1,
            u"done Joined Gym (10.0.0.9)."_s);
        row("joined without an address", R"({"wifi_provision":{"state":"ok"}})", 1, u"done Joined Gym."_s);
        row("refused", R"({"wifi_provision":{"state":"reverted","detail":"bad key"}})", 1,
            u"failed The device could not join Gym: bad key. Check the password and try again."_s);
        row("refused without a reason", R"({"wifi_provision":{"state":"reverted"}})", 1,
            u"failed The device could not join Gym. Check the password and try again."_s);
        row("never comes to an end", R"({"wifi_provision":{"state":"x","elapsed_ms":4999}})", 13,
            u"failed The device is still working on joining Gym. Check back in a minute."_s);
    }
    void wifiIsVerified()
    {
        QFETCH(QByteArray, status);
        QFETCH(int, looks);
        signIn();
        m_session->configureWifi(u"Gym"_s, {}, [this](const QString &text) { m_events.append(text); }, keep());
        QCOMPARE(params(), json(R"({"ssid":"Gym","pass":""})"));
        answer();
        for (int i = 0; i < looks; ++i) {
            QTRY_COMPARE(m_session->rpc()->pending(), 1);
            answer(status);
        }
        QTEST(m_events.constLast(), "outcome");
        QCOMPARE(m_events.size(), looks + 1);
        QCOMPARE(m_events.constFirst(), u"Checking that the device can join Gym…"_s);
        QVERIFY(looks == 1 || m_events[1] == u"Checking that the device can join Gym… (4 s)"_s);
    }

    void scan()
    {
        signIn();
        QString found;
        const auto show = [&found](bool ok, const QList<WifiNetwork> &networks, const QString &note) {
            found = ok ? u"ok "_s : u"failed "_s;
            for (const WifiNetwork &network : networks) {
                found += network.ssid + u':' + QString::number(network.rssi) + u':' + network.auth + u' ';
            }
            found += note.left(38);
        };
        m_session->scanWifi(show);
        answer(R"({"ok":true,"result":{"networks":[{"ssid":"weak","rssi":-80,"auth":3},{"ssid":""},
            {"ssid":"near","rssi":-40,"auth":"wpa2"},{"ssid":"weak","rssi":-10}]}})");
        QCOMPARE(found, u"ok near:-40:wpa2 weak:-80:3 "_s);
        m_session->scanWifi(show);
        answer();
        QCOMPARE(asked(), u"getEspNow"_s);
        answer(R"({"ok":true,"result":{"espnow":{"role":"off","configured_role":"tx","key_set":true}}})");
        QVERIFY2(found.startsWith(u"ok This device is set to send its"_s), qPrintable(found));
        QVERIFY(m_session->wirelessActive());
    }

    void restarts_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QStringList>("events");
        QTest::newRow("answered") << QByteArray(okReply) << QStringList{u"done "_s, u"Restarting"_s};
        QTest::newRow("fell silent over it") << QByteArray(timeout) << QStringList{u"done "_s, u"Restarting"_s};
        QTest::newRow("refused") << QByteArray(R"({"error":{"code":"denied","message":"No."}})")
                                 << QStringList{u"failed No."_s, u"Lost x"_s};
        QTest::newRow("hung up over it") << QByteArray() << QStringList{u"done "_s, u"Restarting"_s};
    }
    void restarts()
    {
        QFETCH(QByteArray, reply);
        signIn();
        m_session->reboot(keep());
        if (!reply.isEmpty()) {
            answer(reply);
        }
        m_link->lose(u"x"_s);
        QTEST(m_events, "events");
    }

    void otherOperations()
    {
        signIn();
        m_session->changePassword(u"old"_s, u"new"_s, keep());
        QCOMPARE(params(), json(R"({"current_password":"old","new_password":"new","confirm_password":"new"})"));
        answer();
        QCOMPARE(takeEvents(), (QStringList{u"Ready"_s, u"done "_s}));
        QString key;
        m_session->enableWirelessTransmitter(
            u" aa "_s, u"k"_s, true, [&](bool ok, const QString &, const QString &k) { key = ok ? k : u"?"_s; });
        QCOMPARE(params(), json(R"({"role":"tx","peer_mac":"aa","generate_key":true})"));
        answer(R"({"ok":true,"result":{"key":"K"}})");
        QCOMPARE(asked(), u"reboot"_s);
        answer();
        QCOMPARE(key, u"K"_s);
        m_session->disableEspNowSender({});
        QCOMPARE(params(), json(R"({"role":"off"})"));
        answer();
        answer();
        QVERIFY(!m_session->wirelessActive());
        m_session->listControllers([this](bool, const QList<ControllerChoice> &choices, const QString &) {
            m_events.append(QString::number(choices.size()) + choices.constFirst().inputType);
        });
        answer(
            R"({"ok":true,"result":{"controllers":[{"model":"m","input_type":"cl"},{"input_type":"cl","model":"m"}]}})");
        QCOMPARE(takeEvents(), QStringList{u"1cl"_s});
    }

    // A callback may be the end of the session that calls it, however the call ends.
    void callbacksMayDeleteTheSession_data()
    {
        QTest::addColumn<int>("ending");
        QTest::newRow("success") << 0;
        QTest::newRow("refusal") << 1;
        QTest::newRow("link lost") << 2;
        QTest::newRow("stop") << 3;
    }
    void callbacksMayDeleteTheSession()
    {
        QFETCH(int, ending);
        using Call = std::function<void(DeviceSession &, const std::function<void()> &)>;
        const std::vector<Call> calls{
            [](auto &s, const auto &end) { s.refreshStatus([end](bool, const QString &) { end(); }); },
            [](auto &s, const auto &end) { s.changePassword({}, {}, [end](bool, const QString &) { end(); }); },
            [](auto &s, const auto &end) { s.scanWifi([end](bool, const auto &, const QString &) { end(); }); },
            [](auto &s, const auto &end) { s.wirelessLink([end](const WirelessLink &) { end(); }); },
            [](auto &s, const auto &end) { s.setController({}, [end](bool, const QString &) { end(); }); },
            [](auto &s, const auto &end) { s.reboot([end](bool, const QString &) { end(); }); },
            [](auto &s, const auto &end) { s.configureWifi({}, {}, {}, [end](bool, const QString &) { end(); }); },
        };
        for (const Call &call : calls) {
            init();
            signIn();
            int ends = 0;
            const QPointer<DeviceSession> session = m_session.get();
            call(*m_session, [&] {
                ++ends;
                m_session.reset();
            });
            for (int tries = 0; session && tries < 3; ++tries) {
                if (ending == 2) {
                    m_link->lose({});
                } else if (ending == 3) {
                    session->stop();
                } else if (m_session->rpc()->pending() > 0) {
                    answer(ending == 0
                               ? R"({"ok":true,"result":{"networks":[{"ssid":"a"}],"wifi_provision":{"state":"ok"}}})"
                               : R"({"error":{"code":"denied"}})");
                } else {
                    QTRY_COMPARE(m_session->rpc()->pending(), 1);
                }
            }
            QVERIFY(!session);
            QCOMPARE(ends, 1);
        }
    }
};

QTEST_GUILESS_MAIN(TestDeviceSession)
#include "tst_device_session.moc"
