// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The text source in the real libobs, judged by its picture.

#include "plugin/App.h"
#include "sources/sources.h"
#include "tests/support/FakeModule.h"
#include "tests/support/ObsHost.h"
#include "tests/support/ObsSource.h"

#include <QTemporaryDir>
#include <QTest>

#include <thread>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

constexpr const char *style = R"("font":{"face":"DejaVu Sans","size":64,"style":"Bold","flags":1},
    "color1":4278255360,"color2":4294901760,"outline":true)";

ObsSource scoreText(const QByteArray &settings = "{" + QByteArray(style) + "}")
{
    return {"tallyforge_text", settings};
}

} // namespace

class TestTextSource : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<ObsHost> m_host;

    QByteArray pictureOf(obs_source_t *source)
    {
        ObsHost::show(source);
        return m_host->settledPicture();
    }
    QByteArray plainPicture(const QByteArray &text)
    {
        const ObsSource plain("text_ft2_source_v2", "{" + QByteArray(style) + ",\"text\":\"" + text + "\"}");
        QByteArray picture = pictureOf(plain);
        ObsHost::show(nullptr);
        return picture;
    }
    LiveData &live() { return App::get()->live(); }

private Q_SLOTS:
    void initTestCase()
    {
        setConfigFolder(m_dir.path());
        m_host = std::make_unique<ObsHost>();
        QVERIFY(m_host->isUp());
        sources_register();
    }
    void init()
    {
        App::init(u"http://127.0.0.1:9"_s);
        sources_connect_live_data();
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

    void showsValuesLikeOrdinaryText()
    {
        const ObsSource source = scoreText();
        QCOMPARE(pictureOf(source), plainPicture(" - "));
        live().ingest({{u"home_score"_s, 3}});
        QCOMPARE(pictureOf(source), plainPicture("3 - "));
        live().ingest({{u"away_score"_s, 12}, {u"sport"_s, u"soccer"_s}});
        const QByteArray both = plainPicture("3 - 12");
        QVERIFY(both != plainPicture("3 - "));
        QCOMPARE(pictureOf(source), both);
        QVERIFY(obs_source_get_width(source) > 0 && obs_source_get_height(source) > 0);

        source.set(R"({"template":"{sport} {home_score}"})");
        QCOMPARE(pictureOf(source), plainPicture("soccer 3"));
        live().ingest({{u"home_score"_s, 4}});
        QCOMPARE(pictureOf(source), plainPicture("soccer 4"));

        source.set(R"({"template":"Final"})"); // no field in it, and its style still as set
        live().ingest({{u"home_score"_s, 5}});
        QCOMPARE(pictureOf(source), plainPicture("Final"));
        live().clear();
        const ObsSource later = scoreText();
        QCOMPARE(pictureOf(later), plainPicture(" - "));
    }

    void worksWithoutApp()
    {
        App::shutdown();
        const ObsSource source = scoreText();
        QCOMPARE(pictureOf(source), plainPicture(" - "));
        App::init(u"http://127.0.0.1:9"_s);
        sources_connect_live_data();
        live().ingest({{u"home_score"_s, 1}});
        QCOMPARE(pictureOf(source), plainPicture("1 - "));
    }

    // The properties dialog at first, and after its button "Defaults".
    void defaultsAreThoseOfOrdinaryText()
    {
        const ObsSource untouched = scoreText("{}");
        const ObsSource ordinary("text_ft2_source_v2", "{\"text\":\" - \"}");
        const QByteArray expected = pictureOf(ordinary);
        QCOMPARE(pictureOf(untouched), expected);
        for (const char *key : {"color1", "log_lines", "antialiasing"}) {
            obs_data_t *ours = obs_source_get_settings(untouched);
            obs_data_t *theirs = obs_source_get_settings(ordinary);
            QCOMPARE(obs_data_get_int(ours, key), obs_data_get_int(theirs, key));
            QCOMPARE(obs_data_get_bool(ours, key), obs_data_get_bool(theirs, key));
            obs_data_release(ours);
            obs_data_release(theirs);
        }
        const ObsSource styled = scoreText();
        QVERIFY(pictureOf(styled) != expected);
        obs_source_reset_settings(styled, nullptr);
        QCOMPARE(pictureOf(styled), expected);
    }

    // OBS's threads update, draw, make and destroy sources while data come and the plug-in ends.
    void everythingAtOnce()
    {
        std::atomic<bool> stop = false;
        std::vector<ObsSource> sources;
        sources.reserve(8);
        for (int i = 0; i < 8; ++i) {
            sources.push_back(scoreText());
        }
        ObsHost::show(sources[0]);
        // Templates of one length: libobs moves a longer value, and has no lock against a reader.
        std::thread editor([&] {
            for (int i = 0; !stop; ++i) {
                sources[size_t(i) % 8].set(i % 2 ? R"({"template":"{a} and {sport}"})"
                                                 : R"({"template":"{sport} and {a}"})");
                QThread::usleep(300);
            }
        });
        std::thread maker([&] {
            while (!stop) {
                const ObsSource passing = scoreText();
                QThread::usleep(200);
            }
        });
        for (int round = 0; round < 15; ++round) {
            for (int i = 0; i < 40; ++i) {
                live().ingest({{u"a"_s, round * 1000 + i}, {u"sport"_s, QString(i, u's')}});
                QTest::qWait(1);
            }
            App::shutdown();
            App::init(u"http://127.0.0.1:9"_s);
            sources_connect_live_data();
        }
        stop = true;
        editor.join();
        maker.join();
        sources[0].set(R"({"template":"{a}"})");
        live().ingest({{u"a"_s, u"end"_s}});
        QCOMPARE(pictureOf(sources[0]), plainPicture("end"));
    }
};

QTEST_GUILESS_MAIN(TestTextSource)
#include "tst_text_source.moc"
