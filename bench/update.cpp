// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// What an update takes and costs. Prints one object of JSON: the seconds from the user's wish to the
// hashed file, and, to the end of the installation, the longest that the event loop was held in
// milliseconds and how many kilobytes of memory came on top of those before it.
// Usage: bench-update MANIFEST_URL EMPTY_FOLDER

#include "platform/PlatformKey.h"
#include "updater/PluginUpdater.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

long long now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// What this process has of its own, in kilobytes: the libraries' code, of which more is loaded with
// each first use, is OBS's as well.
long memory()
{
    const QByteArray name = "RssAnon";
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray status = file.readAll();
    return status.mid(status.indexOf('\n' + name + ':') + name.size() + 2).simplified().split(' ').first().toLong();
}

UpdateConfig configuration(const QString &manifest, const QDir &folder)
{
    UpdateConfig config;
    config.manifestUrl = manifest;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = platform::platformKey();
    config.pluginRoot = folder.filePath(u"plugin"_s);
    config.stagingDir = folder.filePath(u"update"_s);
    config.binaryPath = platform::binaryPath();
    const QString binary = QDir(config.pluginRoot).filePath(config.binaryPath);
    QDir().mkpath(QFileInfo(binary).path());
    QFile file(binary);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("The folder can't be written.");
    }
    return config;
}

// How long the loop was held between two of its rests, at most.
struct Held
{
    long long awake = 0;
    long long longest = 0;

    void watch(QObject *context)
    {
        const auto *dispatcher = QAbstractEventDispatcher::instance();
        QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, context, [this] { awake = now(); });
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, context,
                         [this] { longest = std::max(longest, now() - awake); });
    }
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_NO_GLIB", "1"); // whose loop tells of its rests from the other side
    const QCoreApplication application(argc, argv);
    if (argc != 3) {
        qFatal("Usage: bench-update MANIFEST_URL EMPTY_FOLDER");
    }
    PluginUpdater updater;
    updater.setConfig(configuration(QString::fromLocal8Bit(argv[1]), QDir(QString::fromLocal8Bit(argv[2]))));
    Held held;
    long long begin = 0;
    double seconds = 0;
    long before = 0;
    long peak = 0;
    QObject::connect(&updater, &PluginUpdater::stateChanged, &updater, [&] {
        peak = std::max(peak, memory()); // a hundred times while it downloads
        switch (updater.state()) {
        case PluginUpdater::State::Available:
            before = peak = memory();
            held.watch(&updater);
            held.awake = begin = now();
            updater.install();
            break;
        case PluginUpdater::State::Installing:
            seconds = double(now() - begin) / 1e9;
            break;
        case PluginUpdater::State::Installed:
            std::printf("{\"seconds\": %.4f, \"held\": %.3f, \"kilobytes\": %ld}\n", seconds,
                        double(held.longest) / 1e6, peak - before);
            QCoreApplication::quit();
            break;
        case PluginUpdater::State::Failed:
            qFatal("%s", qUtf8Printable(updater.message()));
        default:
            break;
        }
    });
    updater.check(true);
    return QCoreApplication::exec();
}
