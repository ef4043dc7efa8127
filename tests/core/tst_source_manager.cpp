// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/LiveData.h"
#include "core/SettingsStore.h"
#include "core/SourceManager.h"
#include "core/TlsFeed.h"
#include "portal/PortalCall.h"
#include "portal/PortalClient.h"
#include "tests/support/FakeLink.h"
#include "tests/support/HttpStub.h"
#include "tests/support/SkippedTime.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QSslSocket>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

struct Rig
{
    explicit Rig(bool signIn = true)
    {
        if (signIn) {
            portal.restoreSession({});
            static_cast<void>(QTest::qWaitFor([this] { return portal.signedIn(); }));
        }
        portalSide.requests.clear();
        QObject::connect(&manager, &SourceManager::statusChanged, &manager,
                         [this] { texts.append((manager.isLive() ? u"+"_s : u"-"_s) + manager.statusText()); });
    }
    TlsFeed &feed() { return *manager.findChild<TlsFeed *>(); }
    // Whether the next poll comes so long after the one before, give or take a quarter.
    bool pollsAfter(std::chrono::milliseconds time)
    {
        const qsizetype polls = portalSide.requests.size();
        if (!QTest::qWaitFor([this] { return portal.findChildren<PortalCall *>().isEmpty(); })) {
            return false;
        }
        if (!sincePoll.isValid()) {
            sincePoll.start();
        }
        skip(std::max(0ms, time * 3 / 4 - std::chrono::milliseconds(sincePoll.elapsed())));
        const bool isEarly = portalSide.requests.size() != polls;
        while (portalSide.requests.size() == polls && sincePoll.durationElapsed() < 2 * time) {
            skip(5ms);
        }
        const bool isLate = sincePoll.durationElapsed() > time * 5 / 4;
        sincePoll.start();
        return !isEarly && !isLate;
    }
    // Whether no poll comes any more.
    bool isQuiet()
    {
        const qsizetype polls = portalSide.requests.size();
        skip(20s);
        QTest::qWait(20);
        return portalSide.requests.size() == polls;
    }

    HttpStub portalSide;
    PortalClient portal{portalSide.url(), nullptr};
    LiveData live;
    SourceManager manager{&portal, &live, nullptr};
    QStringList texts;
    QElapsedTimer sincePoll;
};

QJsonObject scores(int home)
{
    return {{u"fields"_s, QJsonObject{{u"home_score"_s, home}}}};
}

HttpReply answer(int status, const char *body)
{
    return {status, body, {}, HttpReply::How::Answer};
}

} // namespace

class TestSourceManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cloudReplies_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("home");
        QTest::newRow("online") << QByteArray(R"({"fields":{"home_score":7},"online":true})") << u"+Live from d/1"_s
                                << u"7"_s;
        QTest::newRow("says nothing of being online")
            << QByteArray(R"({"type":"state","home_score":7})") << u"+Live from d/1"_s << u"7"_s;
        QTest::newRow("offline still brings its values") << QByteArray(R"({"fields":{"home_score":7},"online":false})")
                                                         << u"-d/1 is offline. Showing its last scores."_s << u"7"_s;
        QTest::newRow("never reported") << QByteArray(R"({"type":"pending","home_score":7})")
                                        << u"-d/1 has not sent any scoreboard data yet."_s << QString();
    }
    void cloudReplies()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, status);
        QFETCH(QString, home);
        Rig b;
        b.portalSide.answer = [&](const HttpRequest &) { return answer(200, body); };
        b.manager.useCloud(u"d/1"_s);
        QTRY_COMPARE(b.texts, (QStringList{u"-Connecting to d/1…"_s, status}));
        QVERIFY(b.pollsAfter(1s) && b.pollsAfter(1s));
        QCOMPARE(b.portalSide.asked().constFirst(), "GET /devices/d%2F1/state");
        QCOMPARE(b.live.value(u"home_score"_s), home);
        QCOMPARE(b.texts.size(), 2);
        QCOMPARE(b.live.sourceLabel(), u"d/1"_s);
    }

    void slowsDownAfterSixFailures()
    {
        Rig b;
        bool fails = true;
        b.portalSide.answer = [&](const HttpRequest &) {
            return fails ? answer(503, R"({"detail":"Down for repair."})") : answer(200, R"({"a":1})");
        };
        for (const QString &device : {u"c"_s, u"d"_s}) { // another route doesn't inherit the failures
            b.manager.useCloud(device);
            b.sincePoll.invalidate();
            QTRY_VERIFY(b.portalSide.asked().endsWith("GET /devices/" + device.toUtf8() + "/state"));
            for (int failures = 1; failures <= 4; ++failures) {
                QVERIFY(b.pollsAfter(1s));
            }
        }
        QVERIFY(b.pollsAfter(1s));
        QVERIFY(b.pollsAfter(5s));
        fails = false;
        QVERIFY(b.pollsAfter(5s));
        QTRY_COMPARE(b.texts, (QStringList{u"-Connecting to c…"_s, u"-Down for repair."_s, u"-Connecting to d…"_s,
                                           u"-Down for repair."_s, u"+Live from d"_s}));
        QVERIFY(b.pollsAfter(1s));
    }

    void deviceThatIsNotOnTheAccountEndsThePolling()
    {
        Rig b;
        b.portalSide.answer = [](const HttpRequest &) {
            return answer(404, R"({"detail":{"error":"device_not_found_or_not_owned"}})");
        };
        b.manager.useCloud(u"d"_s);
        QTRY_COMPARE(b.texts.last(), u"-That device is not on this account."_s);
        QVERIFY(b.isQuiet());
        QCOMPARE(b.manager.mode(), SourceManager::Mode::Cloud);
    }

    void oneRequestAtATime()
    {
        Rig b;
        b.portalSide.answer = [](const HttpRequest &) { return HttpReply{200, {}, {}, HttpReply::How::Hang}; };
        b.manager.useCloud(u"d"_s);
        QTRY_COMPARE(b.portalSide.requests.size(), 1);
        skip(15s);
        QCOMPARE(b.texts.size(), 1);
        skip(6s);
        QTRY_COMPARE(b.texts.last(), u"-Could not reach Tallyforge. Check your internet connection."_s);
        QCOMPARE(b.portalSide.requests.size(), 1);
        QVERIFY(b.pollsAfter(1s));
    }

    void withoutASignIn()
    {
        Rig b(false);
        b.manager.useCloud(u"d"_s);
        QCOMPARE(b.texts.last(), u"-Sign in to see live scores."_s);
        b.portal.restoreSession({}); // the timer goes on, so that the sign-in is all it takes
        QVERIFY(skipUntil([&] { return b.texts.last() == u"+Live from d"_s; }));
    }

    void signOutConcernsTheCloudAlone()
    {
        Rig b;
        b.manager.useCloud(u"d"_s);
        QTRY_COMPARE(b.texts.last(), u"+Live from d"_s);
        b.portal.signOut();
        QCOMPARE(b.texts.last(), u"-Signed out. Sign in to see live scores."_s);
        b.portal.restoreSession({});
        QTRY_VERIFY(b.portal.signedIn());
        QVERIFY(b.isQuiet()); // polling doesn't start again by itself
        QCOMPARE(b.texts.last(), u"-Signed out. Sign in to see live scores."_s);

        b.manager.useLan(u"d"_s, {u"127.0.0.1"_s, u"t"_s, u"Gym"_s});
        const QString before = b.texts.last();
        b.portal.signOut();
        QCOMPARE(b.texts.last(), before);
    }

    // Nothing that was under way at a sign-out may speak up afterwards, not even in a new session.
    void pollUnderWayAtASignOut()
    {
        Rig b;
        b.portalSide.answer = [](const HttpRequest &request) {
            return request.path.endsWith("/state") ? HttpReply{200, {}, {}, HttpReply::How::Hang} : HttpReply{};
        };
        b.manager.useCloud(u"d"_s);
        QTRY_COMPARE(b.portalSide.requests.size(), 1);
        b.portal.signOut();
        b.portal.restoreSession({});
        QTRY_VERIFY(b.portal.signedIn());
        b.portalSide.release("{\"a\":1}");
        QVERIFY(b.isQuiet());
        QCOMPARE(b.texts.last(), u"-Signed out. Sign in to see live scores."_s);
        QCOMPARE(b.live.fieldNames(), QStringList());
    }

    void routeChosenInASlot_data()
    {
        QTest::addColumn<SourceManager::Mode>("first");
        QTest::addColumn<SourceManager::Mode>("second");
        const char *names[] = {"", "cloud", "lan", "session"};
        for (int first = 1; first <= 3; ++first) {
            for (int second = 1; second <= 3; ++second) {
                QTest::addRow("%s, then %s", names[first], names[second])
                    << SourceManager::Mode(first) << SourceManager::Mode(second);
            }
        }
    }
    void routeChosenInASlot()
    {
        QFETCH(SourceManager::Mode, first);
        QFETCH(SourceManager::Mode, second);
        Rig b;
        FakeLink *links[] = {new FakeLink, new FakeLink};
        DeviceSession sessions[] = {{links[0], nullptr}, {links[1], nullptr}};
        const auto use = [&](SourceManager::Mode mode, int number) {
            const QString name = number ? u"second"_s : u"first"_s;
            switch (mode) {
            case SourceManager::Mode::Cloud:
                return b.manager.useCloud(name);
            case SourceManager::Mode::Lan:
                return b.manager.useLan(name, {u"127.0.0.1"_s, u"t"_s, QString()});
            default:
                return b.manager.useSession(&sessions[number], name);
            }
        };
        connect(&b.manager, &SourceManager::statusChanged, this, [&] { use(second, 1); }, Qt::SingleShotConnection);
        use(first, 0);
        QCOMPARE(b.manager.mode(), second);
        QCOMPARE(b.manager.label() + b.live.sourceLabel(), u"secondsecond"_s);
        QVERIFY2(b.texts.last().contains(u"second"_s), qPrintable(b.texts.last()));
        Q_EMIT links[0]->envelope(scores(9));
        QCOMPARE(b.live.fieldNames(), QStringList());
        skip(1ms); // for a request that should not be sent, and the end of old sockets
        QCOMPARE(b.feed().findChildren<QSslSocket *>().size(), second == SourceManager::Mode::Lan ? 1 : 0);
        for (const QList<QByteArray> all = b.portalSide.asked(); const QByteArray &asked : all) {
            QVERIFY2(!asked.contains("first"), asked);
        }
    }

    // The values of the old route may lead to the new one, which the old one's status must not reach.
    void routeChosenByAValue()
    {
        for (const bool overCloud : {true, false}) {
            Rig b;
            b.portalSide.answer = [](const HttpRequest &) { return answer(200, R"({"home_score":99})"); };
            DeviceSession borrowed(new FakeLink, nullptr);
            QSignalSpy left(&b.manager, &SourceManager::sessionLeft);
            b.manager.useSession(&borrowed, u"Gym"_s);
            overCloud ? b.manager.useCloud(u"d"_s) : b.manager.useLan(u"d"_s, {u"127.0.0.1"_s, u"t"_s, u"Gym"_s});
            QCOMPARE(left.size(), 0); // only a session of its own is the manager's to leave
            connect(
                &b.live, &LiveData::fieldsChanged, this, [&] { b.manager.useLan(u"e"_s, {u"127.0.0.1"_s, {}, {}}); },
                Qt::SingleShotConnection);
            if (!overCloud) {
                Q_EMIT b.feed().envelope(scores(1));
            }
            QTRY_COMPARE(b.manager.deviceId(), u"e"_s);
            QVERIFY(b.isQuiet());
            QCOMPARE(b.texts.filter(u"Live"_s), QStringList());
        }
    }

    void lateReplyToAnOlderRouteIsDropped()
    {
        Rig b;
        b.portalSide.answer = [](const HttpRequest &) { return answer(200, R"({"home_score":99})"); };
        b.manager.useCloud(u"d"_s);
        b.manager.useLan(u"e"_s, {u"127.0.0.1"_s, u"t"_s, u"Gym"_s});
        b.feed().stop(); // its own attempts are no matter here
        Q_EMIT b.feed().envelope(scores(1));
        b.texts.clear();
        QTRY_COMPARE(b.portalSide.requests.size(), 1);
        QVERIFY(b.isQuiet());
        QCOMPARE(b.texts, QStringList());
        QCOMPARE(b.live.value(u"home_score"_s), u"1"_s);
        QCOMPARE(b.manager.deviceId(), u"e"_s);

        b.manager.useCloud(u"f"_s); // clears what the other device showed
        QCOMPARE(b.live.fieldNames(), QStringList());
        Q_EMIT b.feed().envelope(scores(5));
        QCOMPARE(b.live.fieldNames(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestSourceManager)
#include "tst_source_manager.moc"
