// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A session with the simulated device over its HTTP interface, which minds every header and body.

#include "device/DeviceSession.h"
#include "device/http/HttpLink.h"
#include "tests/support/SimProcess.h"
#include "tests/support/SkippedTime.h"

#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

using State = DeviceSession::State;
constexpr auto step = 15ms; // of the clock, in a millisecond in which the device comes to its work

} // namespace

class TestLan : public QObject
{
    Q_OBJECT

    SimProcess m_sim{{u"--lan-port=0"_s, u"--admin-password=TF-1001=court+side %41"_s, u"--pace=25"_s}};
    std::unique_ptr<DeviceSession> m_session;
    QStringList m_states;

    void fault(const QJsonObject &what)
    {
        QJsonObject fault{{u"where"_s, u"lan"_s}};
        for (auto entry = what.begin(); entry != what.end(); ++entry) {
            fault.insert(entry.key(), entry.value());
        }
        QVERIFY(m_sim.call(u"/fault"_s, fault).contains(u"faults"_s));
    }
    int logins()
    {
        const QJsonValue state = m_sim.call(u"/state"_s);
        return state[u"devices"_s][u"TF-1001"_s][u"admin"_s][u"logins"_s].toInt();
    }
    // The score as the session's own polls bring it.
    void scoreArrives(int home)
    {
        QSignalSpy envelopes(m_session.get(), &DeviceSession::envelope);
        m_sim.call(u"/set"_s, {{u"fields"_s, QJsonObject{{u"home_score"_s, home}}}});
        const auto hasCome = [&] {
            return !envelopes.isEmpty() &&
                   envelopes.constLast()[0].toJsonObject().value(u"fields"_s)[u"home_score"_s] == home;
        };
        QVERIFY(skipUntil(hasCome, step));
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QUrl address(m_sim.ready[u"devices"_s][0][u"lan"_s].toString());
        m_session = std::make_unique<DeviceSession>(new HttpLink(address.authority()), nullptr);
        connect(m_session.get(), &DeviceSession::stateChanged, this, [this](State state, const QString &detail) {
            m_states.append(QVariant::fromValue(state).toString() + detail);
        });
        m_session->start({u"wrong"_s, u"court+side %41"_s});
        QTRY_COMPARE(m_session->state(), State::Ready);
        scoreArrives(1);
        m_states.clear();
    }
    void cleanupTestCase()
    {
        m_session.reset();
        QCOMPARE(m_sim.call(u"/state"_s).value(u"violations"_s).toArray(), QJsonArray());
    }

    void operations()
    {
        QString outcome;
        const auto keep = [&outcome](bool ok, const QString &text) { outcome = (ok ? u"ok "_s : u"no "_s) + text; };
        m_session->configureWifi(u"Venue"_s, u"courtside-7"_s, {}, keep);
        QVERIFY(skipUntil([&] { return !outcome.isEmpty(); }, step));
        QCOMPARE(outcome, u"ok Joined Venue (127.0.0.1)."_s);
        m_session->scanWifi([&](bool ok, const QList<WifiNetwork> &all, const QString &) { keep(ok, all[0].ssid); });
        QTRY_COMPARE(outcome, u"ok Venue"_s);
        ControllerChoice wish;
        m_session->listControllers([&](bool ok, const QList<ControllerChoice> &all, const QString &) {
            wish = all.constLast();
            keep(ok, u"listed"_s);
        });
        QTRY_COMPARE(outcome, u"ok listed"_s);
        m_session->setController(wish, keep);
        m_session->getControllerConfig([&](bool ok, const QJsonObject &config, const QString &) {
            keep(ok && ControllerChoice::fromJson(config) == wish, u"chosen"_s);
        });
        QTRY_COMPARE(outcome, u"ok chosen"_s);
        m_session->ensureApiToken(
            [&](bool ok, const QString &token, const QString &) { keep(ok && !token.isEmpty(), u"token"_s); });
        QTRY_COMPARE(outcome, u"ok token"_s);
        m_session->changePassword(u"court+side %41"_s, u"an=other&one"_s, keep);
        QTRY_COMPARE(outcome, u"ok "_s);
        m_session->disableEspNowSender(keep);
        QTRY_COMPARE(outcome, u"no This is only available over USB or Bluetooth, not over the network."_s);
    }

    void faults_data()
    {
        QTest::addColumn<QByteArray>("fault");
        QTest::addColumn<int>("logins");
        QTest::newRow("the cookie expires") << QByteArray(R"({"kind":"expire"})") << 1;
        QTest::newRow("the token is renewed") << QByteArray(R"({"kind":"renew-token"})") << 1;
        for (const char *kind : {"hang", "cut", "garbage", "drop"}) {
            QTest::addRow("%s", kind) << QByteArray(R"({"method":"getState","count":2,"kind":")") + kind + "\"}" << 0;
        }
        for (const int status : {400, 403, 404, 429, 500, 503}) {
            QTest::addRow("%d", status) << R"({"kind":"status","method":"getState","count":2,"status":)" +
                                               QByteArray::number(status) + '}'
                                        << (status == 403 ? 2 : 0); // which blames the token
        }
    }
    void faults()
    {
        static int score = 10;
        QFETCH(QByteArray, fault);
        const int before = logins();
        m_states.clear();
        this->fault(QJsonDocument::fromJson(fault).object());
        scoreArrives(++score);
        QTEST(logins() - before, "logins");
        QCOMPARE(m_states, QStringList(logins() - before, u"Ready"_s)); // of sign-ins in passing
    }

    // The device goes down before it has answered, and is asked only once.
    void restart()
    {
        fault({{u"kind"_s, u"drop"_s}, {u"method"_s, u"reboot"_s}});
        bool went = false;
        m_session->reboot([&went](bool ok, const QString &) { went = ok; });
        QTRY_VERIFY(went);
        scoreArrives(99);
        const QJsonValue admin = m_sim.call(u"/state"_s).value(u"devices"_s)[u"TF-1001"_s][u"admin"_s];
        QCOMPARE(admin[u"restarts"_s], 1);
        QCOMPARE(admin[u"requests"_s][u"reboot"_s], 1);
    }
};

QTEST_GUILESS_MAIN(TestLan)
#include "tst_lan.moc"
