// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The graphics source in the real libobs, around a stand-in for OBS's browser source that records
// what reaches it.

#include "plugin/App.h"
#include "sources/sources.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "tests/support/ObsHost.h"
#include "tests/support/ObsSource.h"

#include <obs.hpp>

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <thread>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

constexpr const char *outputsPath = "/api/graphics/outputs";
constexpr const char *twoOutputs = R"({"outputs":[{"id":"a","name":"Bug","share_token":"ta","width":640,"height":360},
    {"id":"b","share_token":"tb"}]})";

void keepLog(int, const char *message, va_list arguments, void *log)
{
    *static_cast<QByteArray *>(log) += QString::vasprintf(message, arguments).toUtf8() + '\n';
}

// The properties as OBS gives them to its dialog.
struct Properties
{
    obs_properties_t *all;

    explicit Properties(obs_source_t *source)
        : all(obs_source_properties(source))
    {
    }
    ~Properties() { obs_properties_destroy(all); }
    obs_property_t *operator[](const char *name) const { return obs_properties_get(all, name); }

    [[nodiscard]] QString list() const
    {
        QStringList items;
        for (size_t i = 0; i < obs_property_list_item_count((*this)["output_id"]); ++i) {
            items.append(QString::fromUtf8(obs_property_list_item_name((*this)["output_id"], i)) + u'=' +
                         QString::fromUtf8(obs_property_list_item_string((*this)["output_id"], i)));
        }
        return items.join(u' ');
    }
    [[nodiscard]] QString status() const { return QString::fromUtf8(obs_property_description((*this)["status"])); }
    bool press(obs_source_t *source) const { return obs_property_button_clicked((*this)["refresh"], source); }
};

class Window : public QWidget
{
public:
    int closed = 0;

protected:
    void closeEvent(QCloseEvent *) override { ++closed; }
};

} // namespace

class TestGraphicsSource : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<ObsHost> m_host;
    std::unique_ptr<HttpStub> m_portal;
    QHash<QByteArray, HttpReply> m_answers; // by path

    // The record of the newest page: the names of the events, and the last of them as a whole.
    struct Record
    {
        QStringList events;
        QJsonObject last;
    };
    Record record()
    {
        static_cast<void>(m_host->settledPicture());
        QFile file(m_dir.filePath(u"record"_s));
        Record record;
        int newest = 0;
        for (bool open = file.open(QIODevice::ReadOnly); open && !file.atEnd();) {
            const QJsonObject line = QJsonDocument::fromJson(file.readLine()).object();
            const int page = line[u"page"_s].toInt();
            if (page < newest) {
                continue; // an older one goes in its own time
            }
            if (page > newest) {
                record = {};
                newest = page;
            }
            record.events.append(line[u"event"_s].toString());
            record.last = line;
        }
        record.events.removeAll(u"update"_s);
        return record;
    }
    QByteArray pictureOf(obs_source_t *source)
    {
        ObsHost::show(source);
        return m_host->settledPicture();
    }
    void startApp(const QByteArray &outputs = twoOutputs)
    {
        m_answers[outputsPath].body = outputs;
        App::init(m_portal->url());
        QTRY_VERIFY(m_portal->asked().contains(m_answers.contains("/auth/me") ? "GET /auth/me" : "GET /devices"));
        if (!m_answers.contains("/auth/me")) {
            QTRY_VERIFY(App::get()->outputs().size() == (outputs == "{}" ? 0 : 2) && App::get()->portal().signedIn());
        }
    }

public:
    static void initMain() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

private Q_SLOTS:
    void initTestCase()
    {
        QByteArray logged;
        base_set_log_handler(keepLog, &logged);
        qputenv("BROWSER_STANDIN_RECORD", m_dir.filePath(u"record"_s).toUtf8());
        setConfigFolder(m_dir.path());
        m_host = std::make_unique<ObsHost>();
        QVERIFY(m_host->isUp());
        sources_register();
        {
            const ObsSource source("tallyforge_graphics", "{}");
            QVERIFY(logged.contains("[tallyforge] this OBS has no browser source, so graphics cannot be shown"));
            QCOMPARE(obs_source_get_width(source), 0U);
        }
        base_set_log_handler([](int, const char *, va_list, void *) {}, nullptr);
        QVERIFY(ObsHost::load(BROWSER_STANDIN));
    }
    void init()
    {
        m_answers.clear();
        m_portal = std::make_unique<HttpStub>();
        m_portal->answer = [this](const HttpRequest &request) { return m_answers.value(request.path); };
    }
    void cleanup()
    {
        ObsHost::show(nullptr);
        App::shutdown();
    }
    void cleanupTestCase()
    {
        m_host.reset();
        QCOMPARE(ObsHost::shutdown(), 0);
    }

    void page_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QSize>("size");
        QTest::newRow("never set") << "{}"_ba << QSize(1920, 1080);
        QTest::newRow("as small as can be") << R"({"width":16,"height":16})"_ba << QSize(16, 16);
        QTest::newRow("only one is too small") << R"({"width":15,"height":300})"_ba << QSize(1920, 300);
        QTest::newRow("zero and negative") << R"({"width":0,"height":-5})"_ba << QSize(1920, 1080);
        QTest::newRow("more than 32 bits") << R"({"width":4294967316,"height":300})"_ba << QSize(8192, 300);
        QTest::newRow("no numbers") << R"({"width":"wide","height":true})"_ba << QSize(1920, 1080);
    }
    void page()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QSize, size);
        const ObsSource source("tallyforge_graphics", R"({"url":"x:first"})");
        obs_source_reset_settings(source, nullptr);
        source.set(settings);
        source.set(R"({"url":"x:y"})");
        const QByteArray picture = pictureOf(source);
        QCOMPARE(QSize(int(obs_source_get_width(source)), int(obs_source_get_height(source))), size);
        const QJsonObject expected{
            {u"url"_s, u"x:y"_s},
            {u"width"_s, size.width()},
            {u"height"_s, size.height()},
            {u"fps"_s, 30},
            {u"fps_custom"_s, true},
            {u"reroute_audio"_s, false},
            {u"shutdown"_s, false},
            {u"restart_when_active"_s, false},
            {u"css"_s, u"body { background-color: rgba(0, 0, 0, 0); margin: 0px auto; overflow: hidden; }"_s}};
        QCOMPARE(record().last[u"settings"_s].toObject(), expected);
        const ObsSource plain("browser_source", QJsonDocument(expected).toJson());
        QCOMPARE(picture, pictureOf(plain));
    }

    void choices_data()
    {
        QTest::addColumn<int>("me"); // the portal's answer to the stored sign-in, 0 for no plug-in
        QTest::addColumn<QByteArray>("outputs");
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("status");
        const QByteArray old = R"({"output_id":"old","output_name":"Last season"})";
        QTest::newRow("without the plug-in") << 0 << "{}"_ba << old << u"Last season=old"_s << QString();
        QTest::newRow("signed out") << 401 << "{}"_ba << "{}"_ba << u"GraphicsNone="_s << u"GraphicsSignIn"_s;
        QTest::newRow("signed out, stored") << 401 << "{}"_ba << old << u"Last season=old"_s << u"GraphicsSignIn"_s;
        QTest::newRow("account has none") << 200 << "{}"_ba << "{}"_ba << u"GraphicsNone="_s << u"Found: 0"_s;
        QTest::newRow("listed") << 200 << QByteArray(twoOutputs) << R"({"output_id":"b"})"_ba << u"Bug=a b=b"_s
                                << u"Found: 2"_s;
        QTest::newRow("stored one is gone")
            << 200 << QByteArray(twoOutputs) << old << u"Last season=old Bug=a b=b"_s << u"Found: 2"_s;
        QTest::newRow("gone, without a name")
            << 200 << QByteArray(twoOutputs) << R"({"output_id":"old"})"_ba << u"old=old Bug=a b=b"_s << u"Found: 2"_s;
    }
    void choices()
    {
        QFETCH(int, me);
        QFETCH(QByteArray, outputs);
        QFETCH(QByteArray, settings);
        if (me == 401) {
            m_answers["/auth/me"].status = 401;
        }
        if (me != 0) {
            startApp(outputs);
        }
        const ObsSource source("tallyforge_graphics", settings);
        const Properties properties(source);
        QTEST(properties.list(), "list");
        QTEST(properties.status(), "status");
        QCOMPARE(properties.press(source), me != 200); // without a wait the dialog redraws itself
        QTEST(properties.list(), "list");
        QTEST(properties.status(), "status");
        obs_properties_destroy(obs_get_source_properties("tallyforge_graphics")); // of the kind, without a source
    }

    void choosing()
    {
        startApp();
        const ObsSource source("tallyforge_graphics", R"({"output_id":"old","url":"x:old","width":300})");
        const auto choose = [&source](const char *id) {
            const Properties properties(source);
            const OBSDataAutoRelease settings = obs_source_get_settings(source);
            obs_data_set_string(settings, "output_id", id);
            return obs_property_modified(properties["output_id"], settings);
        };
        for (const char *none : {"", "old", "A"}) {
            QVERIFY(!choose(none));
            QCOMPARE(record().last[u"settings"_s][u"url"_s], u"x:old"_s);
        }
        QVERIFY(choose("a"));
        const QJsonObject page = record().last[u"settings"_s].toObject(); // without a further update by OBS
        QCOMPARE(page[u"url"_s], m_portal->url() + u"/graphics/o/ta"_s);
        QCOMPARE(QSize(page[u"width"_s].toInt(), page[u"height"_s].toInt()), QSize(640, 360));
        const OBSDataAutoRelease settings = obs_source_get_settings(source);
        QCOMPARE(obs_data_get_string(settings, "output_name"), "Bug");

        source.set(R"({"width":500})");
        const Properties opened(source);
        QCOMPARE(obs_data_get_int(settings, "width"), 500);
    }

    void listingFails()
    {
        startApp();
        const ObsSource source("tallyforge_graphics", R"({"output_id":"b","url":"x:b"})");
        const Properties properties(source);
        m_answers[outputsPath] = {500, R"({"detail":"Broken."})"};
        properties.press(source);
        QCOMPARE(properties.list() + properties.status(), u"Bug=a b=bBroken."_s);
        QCOMPARE(Properties(source).status(), u"Broken."_s);
    }

    void hangingPortal()
    {
        startApp();
        m_answers[outputsPath].how = HttpReply::How::Hang;
        const ObsSource source("tallyforge_graphics", R"({"output_id":"b"})");
        auto properties = std::make_unique<Properties>(source);
        bool second = true;
        QTimer::singleShot(20, this, [&] {
            second = properties->press(source);
            properties.reset();
            m_portal->release(R"({"outputs":[]})");
        });
        QVERIFY(!properties->press(source)); // the dialog has gone
        QVERIFY(!second);

        properties = std::make_unique<Properties>(source);
        const int asked = int(m_portal->asked().count("GET /api/graphics/outputs"));
        Window window;
        window.show();
        QWidget part(&window);
        QTimer::singleShot(20, this, [&] {
            QVERIFY(part.close()); // not a window
            QVERIFY(!window.close() && !window.close());
        });
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!properties->press(source)); // the dialog makes its rows anew
        QVERIFY(timer.elapsed() < 2000);
        QCOMPARE(window.closed, 0);
        QTRY_COMPARE(window.closed, 1);

        QTRY_COMPARE(int(m_portal->asked().count("GET /api/graphics/outputs")), asked + 1);
        m_portal->release(twoOutputs); // late: changes the list alone
        QTRY_COMPARE(App::get()->outputs().size(), 2);
        QCOMPARE(properties->list() + properties->status(), u"b=bFound: 0"_s);
        QCOMPARE(Properties(source).list(), u"Bug=a b=b"_s);
    }

    // As remote control does, while the list and the sign-in change and the plug-in ends.
    void otherThreads()
    {
        const ObsSource source("tallyforge_graphics", R"({"output_id":"b"})");
        std::atomic<bool> stop = false;
        std::thread remote([&] {
            while (!stop) {
                const Properties properties(source);
                properties.press(source);
                QThread::usleep(200);
            }
        });
        for (int round = 0; round < 10; ++round) {
            startApp();
            App::get()->portal().signOut();
            App::shutdown();
        }
        stop = true;
        remote.join();
        QCOMPARE(Properties(source).list(), u"b=b"_s);
    }

    // The page learns of each change once, wherever the source stands, and is let go of as unseen.
    void seenAndUnseen()
    {
        obs_sceneitem_t *item = nullptr; // of what was put into the newest scene
        const auto scene = [&item](obs_source_t *inside) {
            obs_scene_t *made = obs_scene_create_private("scene");
            item = inside ? obs_scene_add(made, inside) : nullptr;
            return obs_scene_get_source(made);
        };
        auto source = std::make_unique<ObsSource>("tallyforge_graphics", "{}");
        const OBSSourceAutoRelease inner = scene(*source);
        obs_sceneitem_t *const own = item;
        const OBSSourceAutoRelease outer = scene(inner);
        const OBSSourceAutoRelease other = scene(nullptr);
        const auto on = [&](obs_source_t *programme) {
            ObsHost::show(programme);
            return record().events.join(u' ');
        };
        const QString shown = u"create show activate"_s;
        QCOMPARE(on(other), u"create"_s);
        QCOMPARE(on(inner), shown);
        QCOMPARE(on(outer), shown);    // nested: still the same picture
        obs_source_inc_showing(inner); // as a preview does
        QCOMPARE(on(other), shown + u" deactivate"_s);
        QCOMPARE(on(outer), shown + u" deactivate activate"_s);
        QCOMPARE(on(other), shown + u" deactivate activate deactivate"_s);
        obs_source_dec_showing(inner);
        QCOMPARE(on(other), shown + u" deactivate activate deactivate hide"_s);
        QCOMPARE(on(outer), shown + u" deactivate activate deactivate hide show activate"_s);
        QVERIFY(record().last[u"active"_s].toBool());

        obs_sceneitem_remove(own);
        source.reset();
        QTRY_COMPARE(record().events.last(), u"destroy"_s);
        const QJsonObject end = record().last;
        QVERIFY(!end[u"showing"_s].toBool() && !end[u"active"_s].toBool());
    }
};

QTEST_MAIN(TestGraphicsSource)
#include "tst_graphics_source.moc"
