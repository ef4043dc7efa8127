// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// What a change of the data costs inside OBS's process. Prints one object of JSON: each figure is
// an array of microseconds.
// Usage: bench-main_thread CONFIG_FOLDER

#include "bench/Stage.h"
#include "plugin/App.h"
#include "sources/sources.h"
#include "tests/support/FakeModule.h"
#include "tests/support/ObsHost.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <functional>
#include <mutex>
#include <random>
#include <utility>

using namespace tallyforge;
using namespace tallyforge::bench;
using namespace Qt::StringLiterals;

namespace {

constexpr int fieldCount = 64;
constexpr int repetitions = 5000;
constexpr size_t sourceCount = 100;
constexpr int changeCount = 80;
constexpr int fontSize = 24;

double microsecondsSince(long long begin)
{
    return double(now() - begin) / 1000;
}

QJsonObject unchangedFields()
{
    QJsonObject fields;
    for (int i = 0; i < fieldCount; ++i) {
        const QString name = u"field_%1"_s.arg(i);
        fields.insert(name, i % 2 ? QJsonValue(i * 7) : QJsonValue(u"text %1"_s.arg(i)));
    }
    const QJsonObject envelope{
        {u"type"_s, u"state"_s}, {u"sport"_s, u"basketball"_s}, {u"fields"_s, fields}};
    LiveData live;
    live.ingest(envelope);
    int signalCount = 0;
    QObject::connect(&live, &LiveData::changed, &live, [&signalCount] { ++signalCount; });
    QObject::connect(&live, &LiveData::fieldsChanged, &live, [&signalCount] { ++signalCount; });
    QJsonArray durations;
    for (int i = 0; i < repetitions; ++i) {
        const long long begin = now();
        live.ingest(envelope);
        durations.append(microsecondsSince(begin));
    }
    return {{u"fields"_s, live.fieldNames().size()},
            {u"signals"_s, signalCount},
            {u"ingest"_s, durations}};
}

// How long libobs's graphics thread takes from the begin of a frame until it draws: there all
// sources look for changes and lay out their texts. To be made before the sources follow
// the live data, so that it begins to count before they look.
class FrameCosts
{
public:
    FrameCosts()
    {
        obs_add_tick_callback(onBegin, this);
        obs_add_main_render_callback(onDraw, this);
    }
    ~FrameCosts()
    {
        obs_remove_main_render_callback(onDraw, this);
        obs_remove_tick_callback(onBegin, this);
    }
    FrameCosts(const FrameCosts &) = delete;
    FrameCosts &operator=(const FrameCosts &) = delete;

    /// Says that the next frame to begin carries a change.
    void markChange() { m_changed = true; }
    void waitForFrames(int count) const
    {
        for (const int wanted = m_frames + count; m_frames < wanted;) {
            QThread::usleep(200);
        }
    }
    /// The durations since the last call, of frames with and without a change.
    QJsonObject take()
    {
        const std::lock_guard lock(m_mutex);
        return {{u"changed"_s, std::exchange(m_durations[true], {})},
                {u"quiet"_s, std::exchange(m_durations[false], {})}};
    }

private:
    static void onBegin(void *param, float)
    {
        auto *self = static_cast<FrameCosts *>(param);
        self->m_isChanged = self->m_changed.exchange(false);
        self->m_begin = now();
    }
    static void onDraw(void *param, uint32_t, uint32_t)
    {
        auto *self = static_cast<FrameCosts *>(param);
        const std::lock_guard lock(self->m_mutex);
        self->m_durations[self->m_isChanged].append(microsecondsSince(self->m_begin));
        ++self->m_frames;
    }

    std::atomic<bool> m_changed = false;
    std::atomic<int> m_frames = 0;
    bool m_isChanged = false;  // graphics thread
    long long m_begin = 0;     // graphics thread
    std::mutex m_mutex;        // guards what follows
    QJsonArray m_durations[2]; // by whether the frame carried a change
};

// Makes changes at random phases of a frame, and gives how long each held this thread.
QJsonObject timedChanges(FrameCosts &frames, const std::function<void(int number)> &change)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<unsigned long> phase(0, 16667);
    frames.waitForFrames(30);
    frames.take();
    QJsonArray held;
    for (int i = 0; i < changeCount; ++i) {
        QThread::usleep(phase(random));
        const long long begin = now();
        change(i);
        held.append(microsecondsSince(begin));
        frames.waitForFrames(4);
    }
    QJsonObject result = frames.take();
    result.insert(u"held"_s, held);
    return result;
}

std::vector<obs_source_t *> fill(Stage &stage, const char *kind, const QByteArray &more)
{
    std::vector<obs_source_t *> sources(sourceCount);
    for (size_t i = 0; i < sources.size(); ++i) {
        const size_t column = i / 10;
        const size_t row = i % 10;
        sources[i] =
            stage.add(kind, textSettings(fontSize, more), float(column * 64), float(row * 36));
    }
    return sources;
}

QJsonObject manySources()
{
    QJsonObject result;
    FrameCosts frames;
    App::init();
    sources_connect_live_data();
    Stage stage;
    LiveData &live = App::get()->live();
    live.ingest({{u"clock"_s, u"0:00"_s}});
    // Connected after the sources, so that they know of the change when it is marked.
    QObject::connect(&live, &LiveData::changed, &live, [&frames] { frames.markChange(); });
    fill(stage, "tallyforge_text", R"("template":"{clock}")");
    result.insert(u"ours"_s, timedChanges(frames, [&live](int i) {
                      live.ingest({{u"clock"_s, QString::number(1000 + i)}});
                  }));
    stage.clear();
    const std::vector<obs_source_t *> plain = fill(stage, "text_ft2_source_v2", R"("text":"0:00")");
    result.insert(u"plain"_s, timedChanges(frames, [&plain, &frames](int i) {
                      const QByteArray settings =
                          "{\"text\":\"" + QByteArray::number(1000 + i) + "\"}";
                      for (obs_source_t *source : plain) {
                          update(source, settings);
                      }
                      frames.markChange();
                  }));
    App::shutdown();
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("Usage: bench-main_thread CONFIG_FOLDER\n", stderr);
        return 2;
    }
    logToStderr();
    test::setConfigFolder(QString::fromLocal8Bit(argv[1]));
    QJsonObject result{{u"unchanged"_s, unchangedFields()}};
    {
        const test::ObsHost host;
        if (!host.isUp()) {
            std::fputs("libobs did not start.\n", stderr);
            return 1;
        }
        sources_register();
        result.insert(u"many"_s, manySources());
    }
    if (test::ObsHost::shutdown() != 0) {
        std::fputs("libobs counts memory that was never freed.\n", stderr);
        return 1;
    }
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
