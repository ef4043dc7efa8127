// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceLink.h"
#include "device/DeviceSession.h"
#include "device/RpcTransport.h"
#include "tests/support/DeviceOperations.h"
#include "tests/support/ScriptedDevice.h"
#include "tests/support/SkippedTime.h"

#include <QDeadlineTimer>
#include <QTest>
#include <QVariant>

#include <algorithm>
#include <memory>

// As QTRY_COMPARE, which looks every 50 ms only.
#define AWAIT(actual, expected)                                                                                        \
    do {                                                                                                               \
        await([&] { return (actual) == (expected); });                                                                 \
        QCOMPARE(actual, expected);                                                                                    \
    } while (false)

// The same for what takes seconds: the clock runs ahead while the session waits for no answer, or for one that the
// device keeps to itself.
#define AWAIT_LATER(actual, expected)                                                                                  \
    do {                                                                                                               \
        awaitLater([&] { return (actual) == (expected); });                                                            \
        QCOMPARE(actual, expected);                                                                                    \
    } while (false)

namespace tallyforge::test {

using namespace std::chrono_literals;

/// The promises of a session to its users over any link, and of a link to the session. A test program derives from this
/// class, says how its carrier reaches the scripted device, and has Qt Test run the slots.
class SessionContract : public QObject
{
    Q_OBJECT

protected:
    /// A link to the device, which is plugged in; the session will own it.
    virtual DeviceLink *makeLink() = 0;
    /// The device goes away in the middle of everything, and comes back.
    virtual void unplug() = 0;
    virtual void plugIn() = 0;
    /// The device sends live data unasked: for links that don't poll.
    virtual void push(const QJsonObject &envelope) { Q_UNUSED(envelope) }
    /// Whether an idle link notices that the device has gone.
    [[nodiscard]] virtual bool noticesUnplugging() const { return true; }
    /// Whether the device's description of itself comes with opened(); it may say that it is a receiver.
    [[nodiscard]] virtual bool introducesTheDevice() const { return true; }
    /// Whether each effect comes within the call that causes it.
    [[nodiscard]] virtual bool answersAtOnce() const { return false; }
    /// Whether the carrier leaves it to the session how long an answer may take.
    [[nodiscard]] virtual bool waitsForever() const { return true; }
    /// Whether the carrier has a way for this method.
    [[nodiscard]] virtual bool carries(QStringView method) const { return !method.isEmpty(); }

    ScriptedDevice m_device;

private:
    using State = DeviceSession::State;

    static void await(const std::function<bool()> &condition)
    {
        QTimer tick;
        tick.start(2ms);
        const QDeadlineTimer limit(10s);
        while (!condition() && !limit.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    void awaitLater(const std::function<bool()> &condition)
    {
        for (auto passed = 0ms; !condition() && passed < 5min; passed += 500ms) {
            if (m_session && m_session->rpc()->pending() > 0 && m_device.held.isEmpty()) {
                await([&] {
                    return condition() || !m_session || m_session->rpc()->pending() == 0 || !m_device.held.isEmpty();
                });
            } else {
                skip(500ms);
            }
        }
    }
    static QString name(State state) { return QVariant::fromValue(state).toString(); }
    static QString login(const QString &password) { return u"login{\"password\":\""_s + password + u"\"}"_s; }
    [[nodiscard]] QStringList logins() const { return m_device.requests.filter(u"login"_s); }
    Callback keep()
    {
        return {[this](const QString &values) { m_outcomes.append(values); }};
    }

    void begin()
    {
        m_session.reset();
        m_device = {};
        m_session = std::make_unique<DeviceSession>(makeLink(), nullptr);
        m_polls = m_session->link()->pollsState();
        m_states.clear();
        m_outcomes.clear();
        m_envelopes.clear();
        connect(m_session.get(), &DeviceSession::stateChanged, this, [this](State state, const QString &detail) {
            m_states.append((name(state) + u' ' + detail).trimmed());
        });
        connect(m_session.get(), &DeviceSession::envelope, this,
                [this](const QJsonObject &envelope) { m_envelopes.append(envelope); });
    }

    void bringTo(State state)
    {
        if (state == State::Idle) {
            return;
        }
        const QHash<State, QByteArray> answers{{State::SigningIn, "login never"},
                                               {State::NeedsPassword, "login bad_password: Wrong."},
                                               {State::NeedsNewPassword, "login {\"must_change_password\":true}"},
                                               {State::Error, "login broken: Broken."}};
        m_device.greets = state != State::Connecting;
        m_device.tell({answers.value(state, "login {}")});
        m_session->start({u"right"_s});
        if (state == State::Lost || state == State::Restarting) {
            AWAIT(m_session->state(), State::Ready);
            if (state == State::Restarting) {
                m_session->reboot({});
            }
            unplug();
        }
        AWAIT(m_session->state(), state);
        AWAIT(state != State::SigningIn || !m_device.held.isEmpty(), true);
    }

    // The session starts as if nothing had been, and tries this password alone.
    void expectFreshStart(const QString &password)
    {
        m_device.greets = true;
        m_device.script.clear();
        m_device.requests.clear();
        m_session->start({u"new"_s});
        AWAIT(m_session->state(), State::Ready);
        QCOMPARE(logins(), QStringList{login(password)});
        QVERIFY(m_session->detail().isEmpty());
    }

    static QString methodOf(const QString &request) { return request.section(u'{', 0, 0); }
    QList<Operation> carriedOperations() const
    {
        QList<Operation> all = allOperations();
        all.removeIf([this](const Operation &operation) {
            const auto carried = [this](const QString &request) { return carries(methodOf(request)); };
            return !std::ranges::all_of(operation.requests, carried);
        });
        return all;
    }

    std::unique_ptr<DeviceSession> m_session;
    bool m_polls = false;   // its link does
    QStringList m_states;   // of stateChanged()
    QStringList m_outcomes; // of callbacks
    QList<QJsonObject> m_envelopes;
    int m_calls = 0; // of callbacks, for callbacksComeOnce()
    int m_again = 0; // calls that callbacks have made, less those that came back

private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc needs it said
    void init() { begin(); }
    void cleanup()
    {
        m_session.reset();
        QVERIFY(m_polls || m_device.polls == 0);
    }

    void signIn_data()
    {
        QTest::addColumn<QByteArrayList>("script");
        QTest::addColumn<int>("tried");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("detail");
        const auto row = [](const char *name, const QByteArrayList &script, int tried, const QString &end,
                            const QString &detail = {}) { QTest::newRow(name) << script << tried << end << detail; };
        row("the first is right", {}, 1, u"Ready"_s);
        row("the second is right", {"login bad_password: x"}, 2, u"Ready"_s);
        row("the last is right", {"login unauthorized: x", "login forbidden: x"}, 3, u"Ready"_s);
        row("all are wrong", {"login invalid_credentials: x", "login bad_password: x", "login forbidden: x"}, 3,
            u"NeedsPassword"_s);
        row("rate limited: no other is tried", {"login bad_password: x", "login rate_limited: Wait."}, 2,
            u"NeedsPassword"_s, u"Wait."_s);
        row("the carrier fails: no other is tried", {"login broken: Late."}, 1, u"Error Late."_s, u"Late."_s);
        row("a new password is demanded", {"login {\"must_change_password\":true}"}, 1, u"NeedsNewPassword"_s);
        row("a failing status doesn't hold it back", {"getStatus broken: x"}, 1, u"Ready"_s);
    }
    void signIn()
    {
        QFETCH(QByteArrayList, script);
        QFETCH(int, tried);
        QFETCH(QString, end);
        m_device.tell(script);
        m_session->start({u"one"_s, u"two"_s, u"three"_s});
        AWAIT(m_states, (QStringList{u"Connecting"_s, u"SigningIn"_s, end}));
        const QStringList all{login(u"one"_s), login(u"two"_s), login(u"three"_s)};
        QCOMPARE(logins(), all.first(tried));
        QTEST(m_session->detail(), "detail");
        QCOMPARE(m_session->mustChangePassword(), m_session->state() == State::NeedsNewPassword);
        if (m_session->state() == State::NeedsPassword) {
            m_session->submitPassword(u"four"_s);
            AWAIT(m_states.mid(3), (QStringList{u"SigningIn"_s, u"Ready"_s}));
            QCOMPARE(logins().constLast(), login(u"four"_s));
        }
    }

    void newPassword()
    {
        bringTo(State::NeedsNewPassword);
        m_states.clear();
        m_device.tell({"changePassword weak: Too short."});
        m_session->changePassword(u"right"_s, u"x"_s, keep());
        AWAIT(m_outcomes, QStringList{u"failed Too short."_s});
        QVERIFY(m_session->mustChangePassword() && m_states.isEmpty());
        m_session->changePassword(u"right"_s, u"better"_s, keep());
        AWAIT(m_outcomes.size(), 2);
        QCOMPARE(m_states, QStringList{u"Ready"_s});
        QVERIFY(!m_session->mustChangePassword());
        expectFreshStart(u"better"_s);
    }

    void whatItKnowsOfTheDevice()
    {
        const auto known = [this] { return m_session->deviceId() + m_session->firmware() + m_session->wifiIp(); };
        m_device.info = {{u"device_id"_s, u"A"_s}, {u"fw"_s, u"1"_s}};
        m_session->start({});
        AWAIT(m_session->state(), State::NeedsPassword);
        QCOMPARE(known(), introducesTheDevice() ? u"A1"_s : QString());
        m_device.tell({"getStatus {\"device_id\":\"B\", \"firmware_version\":\"2\", \"wifi_sta_ip\":\"10.0.0.9\"}"});
        m_session->submitPassword(u"p"_s);
        AWAIT(known(), u"B210.0.0.9"_s);
    }

    void receiver()
    {
        if (!introducesTheDevice()) {
            QSKIP("This carrier doesn't reach receivers");
        }
        m_device.info = {{u"receiver"_s, true}};
        m_session->start({u"p"_s});
        AWAIT(m_states, (QStringList{u"Connecting"_s, u"Ready"_s}));
        QVERIFY(m_session->receiverMode() && m_device.requests.isEmpty());
        m_device.tell({"login timeout: x"});
        m_session->manageViaReceiver({u"p"_s});
        QVERIFY(!m_session->receiverMode());
        AWAIT(m_session->state(), State::Error);
        QCOMPARE(m_session->detail(), u"The paired device did not answer through the receiver. Check that the device "
                                      "is powered, in range of the receiver and linked to it, then try again."_s);
        Q_EMIT m_session->link()->opened(m_device.info); // it came back by itself: still the paired device is meant
        AWAIT(m_session->state(), State::NeedsPassword);
    }

    void noDevice()
    {
        unplug();
        m_session->start({u"p"_s});
        AWAIT(m_session->state(), State::Error);
        QVERIFY(!m_session->detail().isEmpty());
        QCOMPARE(m_states, (QStringList{u"Connecting"_s, u"Error "_s + m_session->detail()}));
        plugIn();
        expectFreshStart(u"new"_s);
    }

    void everyEnd_data()
    {
        QTest::addColumn<State>("state");
        QTest::addColumn<QString>("end");
        for (const QString &end : {u"lost"_s, u"stopped"_s, u"started again"_s}) {
            for (int i = 0; i <= static_cast<int>(State::Restarting); ++i) {
                const auto state = static_cast<State>(i);
                if (end != u"lost" || (state != State::Idle && state != State::Lost && state != State::Restarting)) {
                    QTest::addRow("%s: %s", qPrintable(end), qPrintable(name(state))) << state << end;
                }
            }
        }
    }
    // Whatever state a connection ends in: calls under way fail, and the next start is a fresh one.
    void everyEnd()
    {
        QFETCH(State, state);
        QFETCH(QString, end);
        const bool gone = end == u"lost" || state == State::Lost || state == State::Restarting;
        if (gone && !noticesUnplugging()) {
            QSKIP("This carrier has no connection to lose");
        }
        bringTo(state);
        m_device.tell({"getStatus never"});
        QString outcome = m_session->link()->transport()->isOpen() ? u"Disconnected"_s : u"Not connected to a device"_s;
        m_session->refreshStatus([this](bool, const QString &error) {
            m_outcomes.append(name(m_session->state()) + u": "_s + error); // the state before
        });
        m_states.clear();
        if (end == u"lost") {
            outcome.replace(u"Disconnected"_s, u"The connection to the device was lost"_s);
            unplug();
            AWAIT(m_states.size(), 1); // where a link that isn't open yet may as well say that it can't be opened
            QVERIFY(m_states[0].startsWith(state == State::Connecting ? u"" : u"Lost "));
        } else if (end == u"stopped") {
            m_session->stop();
            m_session->stop();
            m_device.answerHeld(); // too late
            Q_EMIT m_session->link()->closed({});
            QCOMPARE(m_session->state(), State::Idle);
            QVERIFY(m_states.isEmpty() && !m_session->link()->transport()->isOpen());
        }
        if (gone) {
            plugIn();
        }
        // Until it is stopped it keeps the password that worked.
        const QList<State> afterSignIn{State::NeedsNewPassword, State::Ready, State::Lost, State::Restarting};
        expectFreshStart(end != u"stopped" && afterSignIn.contains(state) ? u"right"_s : u"new"_s);
        m_device.answerHeld();
        QCOMPARE(m_outcomes, QStringList{name(state) + u": "_s + outcome});
        QCOMPARE(m_session->state(), State::Ready);
        unplug();
        AWAIT(m_session->state(), noticesUnplugging() ? State::Lost : State::Ready);
    }

    void stoppedBetweenSignInAndStatus()
    {
        m_device.tell({"getStatus never"});
        m_session->start({u"right"_s});
        AWAIT(m_device.held.size(), 1);
        m_session->stop();
        m_device.answerHeld();
        QVERIFY(m_session->state() == State::Idle && !m_states.contains(u"Ready"_s));
    }

    void slowWifiScan()
    {
        if (!waitsForever()) {
            QSKIP("This carrier has a limit of its own");
        }
        bringTo(State::Ready);
        m_device.tell({"scanWifi never"});
        m_session->scanWifi(keep());
        AWAIT(m_device.held.size(), 1);
        skip(38s);
        QVERIFY(m_outcomes.isEmpty());
        AWAIT_LATER(m_outcomes.size(), 1);
    }

    void callbacksStopAndRestart()
    {
        const auto restart = [this](bool, const QString &) {
            plugIn();
            m_session->start({});
        };
        const QStringList restarted{u"Connecting"_s, u"SigningIn"_s, u"NeedsPassword"_s};
        bringTo(State::Ready);
        m_states.clear();
        m_device.tell({"getStatus never", "getStatus never", "reboot never"});
        m_session->refreshStatus(restart);
        m_session->stop();
        AWAIT(m_states, restarted);
        if (noticesUnplugging()) {
            m_session->refreshStatus(restart);
            unplug();
            AWAIT(m_states, restarted + restarted);
            m_session->reboot([this](bool, const QString &) { m_session->stop(); });
            unplug();
            AWAIT(m_session->state(), State::Idle);
            QCOMPARE(m_states.size(), 6);
        }
    }

    void liveData()
    {
        const QJsonObject score{{u"home_score"_s, 3}};
        bringTo(State::Ready);
        if (!m_session->link()->pollsState()) {
            push(score);
            AWAIT(m_envelopes, QList{score});
            return;
        }
        m_device.tell({"getState {\"home_score\":3}", "getState never", "getStatus never"});
        skip(800ms);
        QCOMPARE(m_device.polls, 0);
        AWAIT_LATER(m_device.held.size(), 1);
        QCOMPARE(m_envelopes.constLast(), score);
        const int polls = m_device.polls;
        skip(3s);
        m_session->refreshStatus({});
        m_device.answerHeld();
        AWAIT(m_device.held.size(), 1);
        skip(3s);
        QCOMPARE(m_device.polls, polls); // one at a time, and none behind the user's own calls
        m_device.answerHeld();
        AWAIT_LATER(m_device.polls > polls, true);
        m_device.tell({"getState never"});
        AWAIT_LATER(m_device.held.size(), 1);
        m_session->stop();
        m_session->start({u"right"_s});
        AWAIT_LATER(m_device.polls > polls + 2, true);
    }

    void pollsThatFail_data()
    {
        QTest::addColumn<QByteArrayList>("script");
        QTest::addColumn<int>("failures");
        QTest::addColumn<QStringList>("states");
        const QByteArrayList twoSilent{"getState never", "getState never"};
        QTest::newRow("two in a row, twice")
            << twoSilent + QByteArrayList{"getState {}"} + twoSilent << 5 << QStringList();
        QTest::newRow("three in a row") << twoSilent + twoSilent.first(1) << 3 << QStringList{u"Lost"_s};
        QTest::newRow("refused") << QByteArrayList(3, "getState denied: x") << 3 << QStringList();
        QTest::newRow("expired login") << QByteArrayList{"getState unauthorized: x"} << 1 << QStringList{u"Ready"_s};
        QTest::newRow("another password") << QByteArrayList{"getState unauthorized: x", "login unauthorized: x"} << 1
                                          << QStringList{u"NeedsPassword"_s};
    }
    void pollsThatFail()
    {
        QFETCH(QByteArrayList, script);
        QFETCH(int, failures);
        QFETCH(QStringList, states);
        if (!m_session->link()->pollsState()) {
            QSKIP("This link doesn't poll");
        }
        bringTo(State::Ready);
        m_states.clear();
        m_device.requests.clear();
        const int polls = m_device.polls;
        m_device.tell(script);
        AWAIT_LATER(states.isEmpty() ? m_device.polls > polls + failures : m_states == states, true);
        QVERIFY(m_states == states && m_device.polls >= polls + failures);
        QCOMPARE(m_session->link()->transport()->isOpen(), m_session->state() != State::Lost);
        QCOMPARE(logins(), failures == 1 ? QStringList{login(u"right"_s)} : QStringList());
    }

    void operations_data()
    {
        QTest::addColumn<Operation>("operation");
        const QList<Operation> all = carriedOperations();
        for (const Operation &operation : all) {
            QTest::newRow(operation.name) << operation;
        }
    }
    void operations()
    {
        QFETCH(Operation, operation);
        m_session->start({});
        AWAIT(m_session->state(), State::NeedsPassword); // which is as good as any here, and soon reached
        m_device.tell(operation.script);
        operation.run(*m_session, {[this](const QString &values) {
            m_outcomes.append(m_session->wirelessActive() ? values + u" [transmits]"_s : values);
        }});
        AWAIT_LATER(m_outcomes, operation.outcomes);
        QCOMPARE(m_device.requests, operation.requests);
    }

    void reboot()
    {
        const QByteArrayList answers{"reboot {}", "reboot never", "reboot denied: No."};
        for (const QByteArray &answer : answers) {
            const bool refused = answer.endsWith("No.");
            begin();
            bringTo(State::Ready);
            m_device.tell({answer});
            m_session->reboot(keep());
            AWAIT_LATER(m_outcomes, QStringList{refused ? u"failed No."_s : u"ok"_s});
            if (noticesUnplugging()) {
                unplug();
                AWAIT(m_session->state(), refused ? State::Lost : State::Restarting);
            }
        }
    }

    void wifiVerificationThatWaits()
    {
        m_session->verifyWifi(u"Gym"_s, 0, {}, keep());
        m_session->stop();
        skip(2700ms);
        QVERIFY(m_outcomes.isEmpty());
        AWAIT_LATER(m_outcomes, QStringList{u"failed Not connected to a device"_s});
        m_session->verifyWifi(u"Gym"_s, 0, {}, keep());
        m_session.reset();
        skip(4s);
        begin();
        bringTo(State::Ready);
        m_session->configureWifi(u"Gym"_s, {}, [this](const QString &) { m_session.reset(); }, keep());
        AWAIT(m_session == nullptr, true);
        QVERIFY(m_outcomes.isEmpty());
    }

    void callbacksComeOnce_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QByteArray>("ending");
        QList<Operation> plain = carriedOperations();
        plain.removeIf([](const Operation &operation) { return QByteArrayView(operation.name).contains(':'); });
        if (!answersAtOnce()) { // which of the operations it is makes no difference to a carrier
            plain.resize(3);
        }
        for (const Operation &operation : std::as_const(plain)) {
            for (const QString &request : operation.requests) {
                for (const char *ending : {"{\"wifi_provision\":{\"state\":\"ok\"}}", "denied: No.", "timeout: Late.",
                                           "lost", "stopped", "deleted"}) {
                    if (*ending != '{' || request == operation.requests.constLast()) {
                        QTest::addRow("%s, %s, %s", operation.name, qPrintable(methodOf(request)), ending)
                            << operation << methodOf(request) << QByteArray(ending);
                    }
                }
            }
        }
    }
    // Each kind of callback. One call of the operation is answered, or under way when the connection ends.
    void callbacksComeOnce()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, method);
        QFETCH(QByteArray, ending);
        const bool answered = ending.contains(':');
        m_device.tell(QByteArrayList(9, method.toUtf8() + (answered ? ' ' + ending : " never")));
        m_device.tell(QByteArrayList(9, "getStatus {\"wifi_provision\":{\"state\":\"ok\"}}"));
        m_session->start({});
        AWAIT(m_session->state(), State::NeedsPassword);
        DeviceSession *const session = m_session.get(); // good also while it is being deleted
        int expected = m_calls = m_again = 0;
        const auto run = [&](const std::function<void()> &then) {
            if (m_session) {
                ++expected;
                operation.run(*session, {[this, then](const QString &) {
                    ++m_calls;
                    then();
                }});
            }
        };
        operation.run(*session, {});
        run([this, session] {
            ++m_again;
            session->refreshStatus([this](bool, const QString &) { --m_again; });
        });
        if (answered) {
            AWAIT_LATER(m_calls, 1);
            AWAIT(m_again, 0);
        }
        run([this] { m_session.reset(); });
        if (!answered) {
            run([] {});
            AWAIT_LATER(session->rpc()->pending(), 4);
        }
        if (ending == "lost") {
            // Qt leaves a request without an end when its connection is reset before the request is sent.
            AWAIT(m_device.requests.isEmpty(), false);
            unplug();
        } else if (ending == "stopped") {
            m_session->stop();
        } else if (ending == "deleted") {
            m_session.reset();
        }
        AWAIT_LATER(m_session == nullptr, true);
        m_device.answerHeld(); // too late
        QCoreApplication::processEvents();
        QCOMPARE(m_calls, expected);
        QCOMPARE(m_again, 0);
    }
};

} // namespace tallyforge::test
