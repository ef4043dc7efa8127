// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// How long the main thread is held by loads from outside: programs that flood the server, devices
// that flood or hang, long lists, an update of many files. The dock is open. Prints an object of
// JSON: for each load the milliseconds that knocks at the event loop have waited.
// Usage: bench-held EMPTY_FOLDER PACKAGE CERTIFICATE KEY

#include "bench/LoopWatch.h"
#include "core/HostedServer.h"
#include "core/TlsFeed.h"
#include "device/ble/BleBridge.h"
#include "device/ble/BleLink.h"
#include "device/usb/UsbLink.h"
#include "plugin/App.h"
#include "tests/support/BleHelperDouble.h"
#include "tests/support/FakeModule.h"
#include "tests/support/HttpStub.h"
#include "tests/support/Pty.h"
#include "ui/dock/Dock.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QThread>

#include <util/base.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include <arpa/inet.h>
#include <sys/resource.h>
#include <sys/socket.h>

using namespace tallyforge;
using namespace tallyforge::bench;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int gets = 16000;
constexpr int uses = 2000;
constexpr int readers = 1000;
constexpr int entries = 1000;
constexpr int rounds = 5; // of the short loads
constexpr std::chrono::milliseconds floodTime = 2s;
constexpr std::chrono::seconds patience = 60s;
const char *const binary = "bin/64bit/tallyforge-obs.so";

QJsonObject result;

void waitUntil(const std::function<bool()> &done, const char *what)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.durationElapsed() > patience) {
            qFatal("Waited in vain for %s.", what);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// All that stands outside of OBS's process has its place on this thread.
class Outside
{
public:
    Outside()
    {
        m_context.moveToThread(&m_thread);
        m_thread.start();
    }
    ~Outside()
    {
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(Outside)

    /// Does it there while this thread waits.
    void now(const std::function<void()> &work)
    {
        QMetaObject::invokeMethod(&m_context, work, Qt::BlockingQueuedConnection);
    }
    /// Does it there while this thread's event loop is watched.
    void watched(const QString &load, const std::function<void()> &work,
                 const std::function<bool()> &done)
    {
        std::atomic<bool> over = false;
        const LoopWatch watch;
        QMetaObject::invokeMethod(&m_context, [&] {
            work();
            over = true;
        });
        waitUntil([&] { return over && done(); }, qPrintable(load));
        const qsizetype before = watch.waited().size();
        waitUntil([&] { return watch.waited().size() > before; }, "the last knock");
        QJsonArray all = result.value(load).toArray();
        for (const QJsonValueConstRef waited : watch.waited()) {
            all.append(waited);
        }
        result.insert(load, all);
    }

private:
    QThread m_thread;
    QObject m_context;
};

bool nothingElse()
{
    return true;
}

// A program's connection to the server, which waits for whatever it does.
class Program
{
public:
    explicit Program(quint16 port)
        : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
            qFatal("The server isn't there.");
        }
    }
    ~Program() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(Program)

    void send(const QByteArray &bytes) const
    {
        if (::send(m_socket, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL) !=
            bytes.size()) {
            qFatal("The server has gone.");
        }
    }
    void awaitLines(int count, const QByteArray &part) const
    {
        QByteArray line;
        while (count > 0) {
            char buffer[65536];
            const ssize_t size = recv(m_socket, buffer, sizeof buffer, 0);
            if (size <= 0) {
                qFatal("The server has ended the connection.");
            }
            line.append(buffer, size);
            for (qsizetype end = 0; (end = line.indexOf('\n')) >= 0; line.remove(0, end + 1)) {
                count -= QByteArrayView(line).first(end).contains(part) ? 1 : 0;
            }
        }
    }

private:
    const int m_socket;
};

QByteArray manyDevices(int count)
{
    QByteArray list;
    for (int i = 0; i < count; ++i) {
        list += R"({"device_id":"TF-)" + QByteArray::number(i) + R"(","nickname":"Gym )" +
                QByteArray::number(i) + R"("},)";
    }
    list.chop(1);
    return R"({"devices":[)" + list + "]}";
}

QByteArray envelope(int i)
{
    return R"({"type":"state","sport":"basketball","fields":{"home_score":)" +
           QByteArray::number(i) + R"(,"away_score":)" + QByteArray::number(i * 2) +
           R"(,"clock":"12:34"}})";
}

void programs(Outside &outside)
{
    App &app = *App::get();
    QString error;
    if (!app.server()->start(0, false, &error)) {
        qFatal("%s", qPrintable(error));
    }
    const quint16 port = app.server()->port();
    outside.watched(
        u"programs: 16,000 get in one write"_s,
        [port] {
            const Program program(port);
            program.send(QByteArray("get\n").repeated(gets));
            program.awaitLines(gets + 1, "updated_at");
        },
        nothingElse);
    outside.watched(
        u"programs: 2,000 use in one write"_s,
        [port] {
            QByteArray all;
            for (int i = 0; i < uses; ++i) {
                all += R"({"op":"use","device":"TF-)" + QByteArray::number(i % 2) + "\"}\n";
            }
            const Program program(port);
            program.send(all);
            program.awaitLines(uses, R"("op":"use")");
        },
        [&app] { return app.sources()->deviceId() == u"TF-1"; });
    std::vector<std::unique_ptr<Program>> all;
    outside.watched(
        u"programs: 1,000 come at once"_s,
        [&] {
            for (int i = 0; i < readers; ++i) {
                all.push_back(std::make_unique<Program>(port));
            }
            for (const auto &program : all) {
                program->awaitLines(1, "updated_at");
            }
        },
        nothingElse);
    outside.watched(
        u"programs: 1,000 hear ten changes"_s,
        [&] {
            for (int i = 0; i < 10; ++i) {
                QMetaObject::invokeMethod(&app, [&app, i] {
                    app.live().ingest(QJsonDocument::fromJson(envelope(i)).object());
                });
            }
            for (const auto &program : all) {
                program->awaitLines(10, "updated_at");
            }
        },
        nothingElse);
    outside.watched(
        u"programs: 1,000 ask at once"_s,
        [&] {
            for (const auto &program : all) {
                program->send("get\n");
            }
            for (const auto &program : all) {
                program->awaitLines(1, "updated_at");
            }
        },
        nothingElse);
    outside.watched(
        u"programs: 1,000 leave at once"_s, [&] { all.clear(); },
        [&app] { return app.server()->clientCount() == 0; });
    app.server()->stop();
}

void lists(Outside &outside)
{
    App &app = *App::get();
    bool listed = false;
    outside.watched(
        u"portal: a list of 1,000 devices"_s,
        [&] {
            QMetaObject::invokeMethod(&app, [&] {
                app.refreshDevices([&listed](bool ok, const QString &) { listed = ok; });
            });
        },
        [&] { return listed && app.devices().size() == entries; });
}

void feed(Outside &outside, const QString &certificate, const QString &key)
{
    std::unique_ptr<QSslServer> server;
    QSslSocket *socket = nullptr;
    outside.now([&] {
        server = std::make_unique<QSslServer>();
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(QSslCertificate::fromPath(certificate).constFirst());
        QFile file(key);
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("There is no key.");
        }
        configuration.setPrivateKey(QSslKey(&file, QSsl::Ec));
        server->setSslConfiguration(configuration);
        server->listen(QHostAddress::LocalHost);
        QObject::connect(server.get(), &QTcpServer::pendingConnectionAvailable, server.get(), [&] {
            socket = qobject_cast<QSslSocket *>(server->nextPendingConnection());
            socket->write("{\"type\":\"auth_ok\"}\n");
        });
    });
    App &app = *App::get();
    TlsFeed feed;
    QObject::connect(&feed, &TlsFeed::envelope, &feed,
                     [&app](const QJsonObject &envelope) { app.live().ingest(envelope); });
    bool isUp = false;
    QObject::connect(&feed, &TlsFeed::connectedChanged, &feed, [&isUp](bool up) { isUp = up; });
    feed.connectTo(u"127.0.0.1"_s, server->serverPort(), u"t"_s);
    waitUntil([&isUp] { return isUp; }, "the feed");
    constexpr int changes = 3000;
    outside.watched(
        u"feed: 1,000 changes a second"_s,
        [&] {
            for (int i = 1; i <= changes; ++i) {
                socket->write(envelope(i) + '\n');
                socket->flush();
                QThread::usleep(1000);
            }
        },
        [&app] { return app.live().value(u"home_score"_s) == QString::number(changes); });
    outside.watched(
        u"feed: 20,000 changes in one write"_s,
        [&] {
            QByteArray flood;
            for (int i = 1; i <= 20000; ++i) {
                flood += envelope(i) + '\n';
            }
            socket->write(flood);
            while (socket->bytesToWrite() > 0 || socket->encryptedBytesToWrite() > 0) {
                socket->waitForBytesWritten();
            }
        },
        [&app] { return app.live().value(u"home_score"_s) == u"20000"; });
    feed.stop();
    outside.now([&] { server.reset(); });
}

// Writes as a cable takes it, for a time.
void flood(const Pty &pty, const std::function<QByteArray(int)> &bytes)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; timer.durationElapsed() < floodTime; ++i) {
        const QByteArray all = bytes(i);
        for (qsizetype sent = 0; sent < all.size() && timer.durationElapsed() < floodTime;) {
            const ssize_t count =
                write(pty.fd(), all.constData() + sent, size_t(all.size() - sent));
            if (count > 0) {
                sent += count;
            } else {
                QThread::usleep(50);
                static_cast<void>(pty.take());
            }
        }
    }
}

void cable(Outside &outside)
{
    App &app = *App::get();
    const Pty pty;
    UsbLink link(pty.path());
    bool isOpen = false;
    QObject::connect(&link, &DeviceLink::opened, &link, [&isOpen] { isOpen = true; });
    QObject::connect(&link, &DeviceLink::envelope, &link,
                     [&app](const QJsonObject &envelope) { app.live().ingest(envelope); });
    link.open();
    waitUntil(
        [&] {
            pty.send(buildFrame(UsbFrame::Ctrl, R"({"t":"hello","device_id":"A"})"));
            return isOpen;
        },
        "the cable");
    outside.watched(
        u"USB: a device that floods with changes"_s,
        [&] { flood(pty, [](int i) { return buildFrame(UsbFrame::Envelope, envelope(i)); }); },
        nothingElse);
    RpcClient rpc(link.transport(), nullptr);
    const QByteArray filler = QByteArray(2000, 'x');
    outside.watched(
        u"USB: replies of 64 KB"_s,
        [&] {
            flood(pty, [&filler](int) {
                QByteArray frames;
                for (int i = 0; i < 32; ++i) {
                    frames += buildFrame(UsbFrame::Admin, filler);
                }
                return frames + buildFrame(UsbFrame::Admin, "\n");
            });
        },
        nothingElse);
    const QJsonObject large{{u"fill"_s, QString(4000, u'x')}};
    int asked = 0;
    QTimer asking;
    QObject::connect(&asking, &QTimer::timeout, &asking, [&] {
        rpc.call(u"getState"_s, large, [&asked](const RpcResult &) { ++asked; });
    });
    asking.start(50);
    outside.watched(u"USB: a device that hangs"_s, [] { QThread::sleep(8s); }, nothingElse);
    asking.stop();
    link.close();
}

void bluetooth(Outside &outside)
{
    App &app = *App::get();
    std::unique_ptr<BleHelperDouble> helper;
    outside.now([&helper] { helper = std::make_unique<BleHelperDouble>(); });
    {
        BleBridge bridge;
        bridge.setHelperPath(helper->path());
        BleLink link(&bridge, u"id"_s, {}, nullptr);
        bool isOpen = false;
        QObject::connect(&link, &DeviceLink::opened, &link, [&isOpen] { isOpen = true; });
        QObject::connect(&link, &DeviceLink::envelope, &link,
                         [&app](const QJsonObject &envelope) { app.live().ingest(envelope); });
        link.open();
        waitUntil([&isOpen] { return isOpen; }, "the helper");
        outside.watched(
            u"Bluetooth: a helper that floods"_s,
            [&helper] {
                QElapsedTimer timer;
                timer.start();
                for (int i = 0; timer.durationElapsed() < floodTime; ++i) {
                    helper->notify(envelope(i));
                    while (helper->socket->bytesToWrite() > 100000) {
                        helper->socket->waitForBytesWritten();
                    }
                }
            },
            nothingElse);
        link.close();
        bridge.shutdown();
    }
    outside.now([&helper] { helper.reset(); });
}

void update(Outside &outside, const QDir &folder, const QString &package)
{
    QFile file(package);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("There is no package.");
    }
    const QByteArray bytes = file.readAll();
    const QString sum =
        QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    std::unique_ptr<HttpStub> server;
    outside.now([&] {
        server = std::make_unique<HttpStub>();
        const QJsonObject entry{{u"url"_s, server->url() + u"/package"_s},
                                {u"size"_s, bytes.size()},
                                {u"sha256"_s, sum}};
        const QJsonObject manifest{{u"version"_s, u"9.9.9"_s},
                                   {u"packages"_s, QJsonObject{{u"bench"_s, entry}}}};
        server->answer = [bytes, manifest](const HttpRequest &request) {
            HttpReply reply;
            reply.body = request.path == "/package" ? bytes : QJsonDocument(manifest).toJson();
            return reply;
        };
    });
    UpdateConfig config;
    config.manifestUrl = server->url() + u"/latest.json"_s;
    config.currentVersion = u"1.0.1"_s;
    config.platformKey = u"bench"_s;
    config.pluginRoot = folder.filePath(u"plugin"_s);
    config.stagingDir = folder.filePath(u"update/staging"_s);
    config.binaryPath = QLatin1StringView(binary);
    QFile installed(QDir(config.pluginRoot).filePath(config.binaryPath));
    if (!QDir().mkpath(QFileInfo(installed).path()) || !installed.open(QIODevice::WriteOnly)) {
        qFatal("The folder can't be written.");
    }
    PluginUpdater updater;
    updater.setConfig(config);
    updater.check(true);
    waitUntil([&] { return !updater.isBusy(); }, "the check");
    outside.watched(
        u"update: a package of 1,000 entries"_s,
        [&] { QMetaObject::invokeMethod(&updater, &PluginUpdater::install); },
        [&] {
            if (updater.state() == PluginUpdater::State::Failed) {
                qFatal("%s", qPrintable(updater.message()));
            }
            return updater.state() == PluginUpdater::State::Installed;
        });
    outside.now([&server] { server.reset(); });
}

void openManyFiles()
{
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
    // The kernel takes tens of milliseconds to make the table of a process with threads larger,
    // once for each size. Both ends of all connections lie in this process, so that is done before.
    constexpr int highest = 4000;
    close(dup2(STDOUT_FILENO, highest));
}

void run(const QDir &folder, const QString &package, const QString &certificate, const QString &key)
{
    Outside outside;
    std::unique_ptr<HttpStub> portal;
    QString url;
    outside.now([&] {
        portal = std::make_unique<HttpStub>();
        portal->answer = [](const HttpRequest &request) {
            HttpReply reply;
            if (request.path == "/devices") {
                reply.body = manyDevices(entries);
            } else if (request.path == "/auth/me") {
                reply.body = R"({"user":{"email":"a@b.example"}})";
            }
            return reply;
        };
        url = portal->url();
    });
    App::init(url);
    App &app = *App::get();
    {
        Dock dock(app, "");
        dock.resize(320, 900);
        dock.show();
        waitUntil([&app] { return !app.devices().isEmpty(); }, "the account's devices");
        // What a start brings about is over.
        QElapsedTimer timer;
        timer.start();
        waitUntil([&timer] { return timer.durationElapsed() > 300ms; }, "the start");
        outside.watched(
            u"nothing: what the machine itself does"_s, [] { QThread::sleep(2s); }, nothingElse);
        for (int round = 0; round < rounds; ++round) {
            programs(outside);
            lists(outside);
        }
        outside.now([&portal] {
            const auto isPoll = [](const HttpRequest &request) {
                return request.path.contains("state");
            };
            result.insert(
                u"requests of 2,000 use"_s,
                int(std::count_if(portal->requests.cbegin(), portal->requests.cend(), isPoll)) /
                    rounds);
        });
        feed(outside, certificate, key);
        cable(outside);
        bluetooth(outside);
        update(outside, folder, package);
    }
    App::shutdown();
    outside.now([&portal] { portal.reset(); });
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 5) {
        std::fputs("Usage: bench-held EMPTY_FOLDER PACKAGE CERTIFICATE KEY\n", stderr);
        return 2;
    }
    // The standard output is for results.
    base_set_log_handler([](int, const char *, va_list, void *) {}, nullptr);
    openManyFiles();
    const QDir folder(words[1]);
    setConfigFolder(folder.filePath(u"config"_s));
    QDir().mkpath(folder.filePath(u"config"_s));
    run(folder, words[2], words[3], words[4]);
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
