// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// One download of an update, to the point where it would be unpacked. Prints an object of JSON: how
// long it took, for how many milliseconds the event loop was held when somebody knocked at it, and
// the memory at its peak beyond that of its start.
// Usage: bench-update_download MANIFEST_URL EMPTY_FOLDER
//        bench-update_download: only knocks, until its input ends

#include "updater/PluginUpdater.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

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

// Knocks at the event loop a thousand times a second, as a user would, and notes how long each
// knock waits until the main thread comes to it.
class LoopWatch
{
public:
    LoopWatch()
    {
        if (pipe2(m_pipe, O_CLOEXEC) != 0) {
            qFatal("There is no pipe.");
        }
        QObject::connect(&m_notifier.emplace(m_pipe[0], QSocketNotifier::Read),
                         &QSocketNotifier::activated, &m_context, [this] {
                             qint64 knocked = 0;
                             if (read(m_pipe[0], &knocked, sizeof knocked) == sizeof knocked) {
                                 m_waited.append(double(now() - knocked) / 1e6);
                             }
                         });
        m_knocking = std::thread([this] {
            for (; !m_ending; std::this_thread::sleep_for(std::chrono::milliseconds(1))) {
                const qint64 knocks = now();
                if (write(m_pipe[1], &knocks, sizeof knocks) != sizeof knocks) {
                    qFatal("The pipe is full.");
                }
            }
        });
    }
    ~LoopWatch()
    {
        m_ending = true;
        m_knocking.join();
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
    Q_DISABLE_COPY_MOVE(LoopWatch)

    QJsonArray waited() const { return m_waited; }

private:
    static qint64 now()
    {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }

    int m_pipe[2] = {};
    std::optional<QSocketNotifier> m_notifier;
    QObject m_context;
    QJsonArray m_waited;
    std::atomic<bool> m_ending = false;
    std::thread m_knocking;
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
