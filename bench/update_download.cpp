// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// One download of an update, to the point where it would be unpacked. Prints an object of JSON: how
// long it took, each span of time that the event loop was held in it, and the memory at its peak
// beyond that of its start.
// Usage: bench-update_download MANIFEST_URL EMPTY_FOLDER

#include "updater/PluginUpdater.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <optional>

using namespace tallyforge;
using namespace Qt::StringLiterals;
using State = PluginUpdater::State;

namespace {

const char *const binary = "bin/64bit/tallyforge-obs.so";

UpdateConfig install(const QString &manifestUrl, const QDir &folder)
{
    UpdateConfig config;
    config.manifestUrl = manifestUrl;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = u"bench"_s;
    config.pluginRoot = folder.filePath(u"plugin"_s);
    config.stagingDir = folder.filePath(u"update"_s);
    config.binaryPath = QLatin1StringView(binary);
    const QFileInfo file(QDir(config.pluginRoot).filePath(config.binaryPath));
    QFile installed(file.filePath());
    if (!QDir().mkpath(file.path()) || !installed.open(QIODevice::WriteOnly)) {
        qFatal("The folder can't be written.");
    }
    return config;
}

qint64 memory(const QByteArray &kind)
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("There is no /proc.");
    }
    const QByteArray status = file.readAll();
    const qsizetype begin = status.indexOf(kind + ':') + kind.size() + 1;
    return status.sliced(begin, status.indexOf("kB", begin) - begin).trimmed().toLongLong() * 1024;
}

void forgetMemoryPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write("5") != 1) {
        qFatal("The peak of the memory can't be told.");
    }
}

// Each span between two sleeps of the main thread's event loop.
class LoopWatch
{
public:
    LoopWatch()
    {
        const auto *dispatcher = QAbstractEventDispatcher::instance();
        QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &m_context, [this] {
            if (!m_awake) {
                m_awake.emplace().start();
            }
        });
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &m_context, [this] {
            if (m_awake) {
                m_held.append(double(m_awake->nsecsElapsed()) / 1e6);
                m_awake.reset();
            }
        });
    }
    QJsonArray held() const { return m_held; }

private:
    QObject m_context;
    std::optional<QElapsedTimer> m_awake;
    QJsonArray m_held;
};

void waitFor(const PluginUpdater &updater, State from, State to)
{
    while (updater.state() != to) {
        if (!updater.isBusy() && updater.state() != from) {
            qFatal("%s", qPrintable(updater.message()));
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("Usage: bench-update_download MANIFEST_URL EMPTY_FOLDER\n", stderr);
        return 2;
    }
    PluginUpdater updater;
    updater.setConfig(install(QString::fromLocal8Bit(argv[1]), QDir(QString::fromLocal8Bit(argv[2]))));
    updater.check(true);
    waitFor(updater, State::Checking, State::Available);

    forgetMemoryPeak();
    const qint64 before = memory("VmRSS");
    const LoopWatch watch;
    QElapsedTimer whole;
    whole.start();
    updater.install();
    waitFor(updater, State::Available, State::Installing);
    const QJsonObject result{{u"seconds"_s, double(whole.nsecsElapsed()) / 1e9},
                             {u"held"_s, watch.held()},
                             {u"bytes"_s, memory("VmHWM") - before}};
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
