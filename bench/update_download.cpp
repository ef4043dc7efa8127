// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// One download of an update, to the point where it would be unpacked. Prints an object of JSON: how
// long it took, for how many milliseconds the event loop was held when somebody knocked at it, and
// the memory at its peak beyond that of its start.
// Usage: bench-update_download MANIFEST_URL EMPTY_FOLDER
//        bench-update_download: only knocks, until its input ends

#include "bench/LoopWatch.h"
#include "updater/PluginUpdater.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

using namespace tallyforge;
using namespace tallyforge::bench;
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

void waitFor(const PluginUpdater &updater, State from, State to)
{
    while (updater.state() != to) {
        if (!updater.isBusy() && updater.state() != from) {
            qFatal("%s", qPrintable(updater.message()));
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

QJsonObject idle()
{
    const LoopWatch watch;
    const QSocketNotifier end(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    QCoreApplication::exec();
    return {{u"waited"_s, watch.waited()}};
}

QJsonObject download(const QString &manifestUrl, const QDir &folder)
{
    PluginUpdater updater;
    updater.setConfig(install(manifestUrl, folder));
    updater.check(true);
    waitFor(updater, State::Checking, State::Available);

    forgetMemoryPeak();
    const qint64 before = memory("VmRSS");
    const LoopWatch watch;
    QElapsedTimer whole;
    whole.start();
    updater.install();
    waitFor(updater, State::Available, State::Installing);
    return {{u"seconds"_s, double(whole.nsecsElapsed()) / 1e9},
            {u"waited"_s, watch.waited()},
            {u"bytes"_s, memory("VmHWM") - before}};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 1 && argc != 3) {
        std::fputs("Usage: bench-update_download [MANIFEST_URL EMPTY_FOLDER]\n", stderr);
        return 2;
    }
    const QJsonObject result =
        argc == 1 ? idle()
                  : download(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
