// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedServer.h"
#include "plugin/App.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "tests/support/SkippedTime.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

using Mode = SourceManager::Mode;

HttpReply answer(int status, const QByteArray &body)
{
    return {status, body, {}, HttpReply::How::Answer};
}

} // namespace

class TestApp : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HttpStub> m_portal;
    QHash<QByteArray, HttpReply> m_answers; // by path

    App &start(const QByteArray &settings = "{}")
    {
        QFile file(m_dir->filePath(u"settings.json"_s));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(settings);
            file.close();
        }
        App::init(m_portal->url());
        return *App::get();
    }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        setConfigFolder(m_dir->path());
        m_portal = std::make_unique<HttpStub>();
        m_answers = {{"/devices", answer(200, R"({"devices":[{"device_id":"d1"}]})")},
                     {"/api/graphics/outputs", answer(200, R"({"outputs":[{"id":"o","share_token":"t"}]})")}};
        m_portal->answer = [this](const HttpRequest &request) { return m_answers.value(request.path); };
    }
    void cleanup()
    {
        App::shutdown();
        QVERIFY(!App::ready() && App::get() == nullptr);
    }

    void startUpChoice_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QByteArray>("devices");
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("stored");
        const QByteArray one = R"({"devices":[{"device_id":"d1"}]})";
        const QByteArray two = R"({"devices":[{"device_id":"d1"},{"device_id":"d2"}]})";
        const QByteArray lan = R"("routes":{"d1":"lan"},"lan":{"d1":{"host":"127.0.0.1","token":"t"}})";
        QTest::newRow("the only one") << QByteArray("{}") << one << Mode::Cloud << u"d1"_s << u"d1"_s;
        QTest::newRow("the stored one of two")
            << QByteArray(R"({"selected_device":"d2"})") << two << Mode::Cloud << u"d2"_s << u"d2"_s;
        QTest::newRow("no choice among two") << QByteArray("{}") << two << Mode::None << QString() << QString();
        QTest::newRow("stored one has left the account")
            << QByteArray(R"({"selected_device":"D1"})") << two << Mode::None << QString() << u"D1"_s;
        QTest::newRow("no device") << QByteArray(R"({"selected_device":"d1"})") << QByteArray("{}") << Mode::None
                                   << QString() << u"d1"_s;
        QTest::newRow("stored route") << '{' + lan + '}' << one << Mode::Lan << u"d1"_s << u"d1"_s;
        QTest::newRow("route without a token") << QByteArray(R"({"routes":{"d1":"lan"},"lan":{"d1":{"host":"h"}}})")
                                               << one << Mode::Cloud << u"d1"_s << u"d1"_s;
        QTest::newRow("route in other case")
            << '{' + QByteArray(lan).replace(":\"lan\"", ":\"LAN\"") + '}' << one << Mode::Cloud << u"d1"_s << u"d1"_s;
    }
    void startUpChoice()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QByteArray, devices);
        m_answers["/devices"] = answer(200, devices);
        App &app = start(settings);
        QSignalSpy listed(&app, &App::devicesChanged);
        QTRY_COMPARE(listed.count(), 1);
        QTEST(app.sources()->mode(), "mode");
        QTEST(app.sources()->deviceId(), "device");
        QTEST(app.settings().selectedDevice(), "stored");
        QTRY_COMPARE(app.outputs().size(), 1);
    }

    void routeThatIsSetStays()
    {
        App &app = start();
        app.selectCloudDevice(u"mine"_s);
        QSignalSpy listed(&app, &App::devicesChanged);
        QTRY_COMPARE(listed.count(), 1);
        QCOMPARE(app.sources()->deviceId(), u"mine"_s);
    }

    void burstOfUseEndsWithItsLast()
    {
        m_answers["/devices"] = answer(200, R"({"devices":[{"device_id":"d1"},{"device_id":"d2"}]})");
        App &app = start();
        QTRY_COMPARE(app.devices().size(), 2);
        QVERIFY(app.server()->start(0, false, nullptr));
        QTcpSocket program;
        program.connectToHost(QHostAddress::LocalHost, app.server()->port());
        program.write(
            QByteArray("{\"op\":\"use\",\"device\":\"d2\"}\n{\"op\":\"use\",\"device\":\"d1\"}\n").repeated(200) +
            "status\n{\"op\":\"use\",\"device\":\"d2\"}\n");
        QByteArray replies;
        QObject::connect(&program, &QIODevice::readyRead, &program, [&] { replies += program.readAll(); });
        QTRY_COMPARE(replies.count("\"op\":\"use\""), 401);
        const qsizetype status = replies.indexOf("\"account\"");
        QVERIFY(replies.indexOf("\"device\":\"d1\"", status) < replies.indexOf("\"op\":\"status\"", status));
        QTRY_COMPARE(app.sources()->deviceId(), u"d2"_s);
        const auto polls = [this] {
            return m_portal->asked().count("GET /devices/d1/state") + m_portal->asked().count("GET /devices/d2/state");
        };
        QVERIFY2(polls() < 20, qPrintable(QString::number(polls())));

        // What the user chooses is the later word.
        replies.clear();
        program.write(
            QByteArray("{\"op\":\"use\",\"device\":\"d2\"}\n{\"op\":\"use\",\"device\":\"d1\"}\n").repeated(20));
        QTRY_COMPARE(replies.count("\"op\":\"use\""), 40);
        app.selectCloudDevice(u"d2"_s);
        skip(2s);
        QCOMPARE(app.sources()->deviceId(), u"d2"_s);
    }

    void failedListingKeepsTheLastList()
    {
        App &app = start();
        QTRY_COMPARE(app.devices().size(), 1);
        QTRY_COMPARE(app.outputs().size(), 1);
        m_answers["/devices"] = m_answers["/api/graphics/outputs"] = answer(500, R"({"detail":"Broken."})");
        QStringList messages;
        const auto keep = [&](bool ok, const QString &message) { messages.append((ok ? u"+"_s : u"-"_s) + message); };
        app.refreshDevices(keep);
        QTRY_COMPARE(messages, QStringList{u"-Broken."_s});
        app.refreshOutputs(keep);
        QTRY_COMPARE(messages.size(), 2);
        QCOMPARE(app.outputsError(), u"Broken."_s);
        QCOMPARE(app.devices().size() + app.outputs().size(), 2);

        bool isCleared = false;
        connect(&app, &App::devicesChanged, this, [&] { isCleared = app.devices().isEmpty(); });
        app.portal().signOut();
        QVERIFY(isCleared && app.devices().isEmpty() && app.outputs().isEmpty());
        QCOMPARE(app.sources()->mode(), Mode::Cloud);
    }

    void listOfAnEndedSessionIsDropped()
    {
        m_answers["/devices"].how = m_answers["/api/graphics/outputs"].how = HttpReply::How::Hang;
        App &app = start();
        QTRY_VERIFY(m_portal->asked().contains("GET /api/graphics/outputs"));
        QStringList messages;
        app.refreshDevices([&](bool ok, const QString &message) { messages.append((ok ? u"+"_s : u"-"_s) + message); });
        QTRY_COMPARE(m_portal->asked().count("GET /devices"), 2);
        app.portal().signOut();
        m_portal->release(R"({"devices":[{"device_id":"d1"}]})");
        QTRY_COMPARE(messages, QStringList{u"-You have been signed out. Sign in again."_s});
        QVERIFY(app.devices().isEmpty() && app.outputsError().isEmpty());
        QCOMPARE(app.sources()->mode(), Mode::None);
        QCOMPARE(app.settings().selectedDevice(), QString());
    }

    void blockingRefresh()
    {
        App &app = start();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!app.refreshOutputsBlocking(5000));
        QVERIFY(timer.elapsed() < 1000);
        QCOMPARE(app.outputsError(), u"Sign in from the Tallyforge dock to see your graphics."_s);
        QTRY_VERIFY(app.portal().signedIn());
        QVERIFY(app.refreshOutputsBlocking(5000));
        QCOMPARE(app.outputsError(), QString());

        // The reply comes when nobody waits for it any more: only the list may take note of it.
        m_answers["/api/graphics/outputs"].how = HttpReply::How::Hang;
        QVERIFY(!app.refreshOutputsBlocking(30));
        QSignalSpy changed(&app, &App::outputsChanged);
        m_answers["/api/graphics/outputs"].how = HttpReply::How::Answer;
        app.refreshOutputs({});
        QTRY_COMPARE(changed.count(), 1);

        // The plug-in may end while somebody waits.
        m_answers["/api/graphics/outputs"].how = HttpReply::How::Hang;
        QTimer::singleShot(20, this, [] { App::shutdown(); });
        timer.restart();
        QVERIFY(!app.refreshOutputsBlocking(5000));
        QVERIFY(timer.elapsed() < 1000);
    }

    // Sources read from OBS's threads while the plug-in starts, changes its data and ends.
    void readersAndShutdown()
    {
        std::atomic<bool> stop = false;
        std::atomic<int> reads = 0;
        std::vector<std::thread> readers;
        readers.reserve(3);
        for (int i = 0; i < 3; ++i) {
            readers.emplace_back([&] {
                while (!stop) {
                    reads += App::readLive(
                        [](const LiveData &live) { static_cast<void>(live.value(u"a"_s) + live.sport()); });
                    static_cast<void>(App::ready());
                }
            });
        }
        for (int round = 0; round < 50 || (reads == 0 && round < 5000); ++round) { // a busy machine may take more
            App &app = start();
            for (int i = 0; i < 20; ++i) {
                app.live().ingest({{u"a"_s, i}, {u"sport"_s, QString::number(i)}});
            }
            App::shutdown();
        }
        stop = true;
        for (std::thread &reader : readers) {
            reader.join();
        }
        QVERIFY(reads > 0);
    }
};

QTEST_GUILESS_MAIN(TestApp)
#include "tst_app.moc"
