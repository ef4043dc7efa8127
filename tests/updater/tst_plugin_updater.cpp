// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The updater over real sockets, with the system's archive program, in folders of its own.

#include "platform/Disk.h"
#include "tests/support/HttpStub.h"
#include "updater/PluginUpdater.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <sys/mount.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using How = HttpReply::How;
using State = PluginUpdater::State;

namespace {

const QString binary = u"bin/64bit/tallyforge-obs.so"_s;
const char *const unreachable =
    "Failed: Could not reach the Tallyforge update service. Check your internet connection.";
const char *const notFinished = "Failed: The download did not finish. Check your internet connection and try again.";
constexpr qint64 unknown = 1 << 30;
const char *const installed = "Installed: Version 1.1.0 is installed. Restart OBS to start using it.";
constexpr auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
const char *const available = "Available: Version 1.1.0 is available.";

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

QByteArray sumOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

// An installed plug-in, a server with a manifest and a package, and an updater between them.
struct Rig
{
    explicit Rig(const QByteArray &zip, const PluginUpdater::Limits &limits = {})
        : package{200, zip}
        , updater(std::make_unique<PluginUpdater>(limits))
    {
        writeFile(root() + u'/' + binary, "old");
        config = {server.url() + u"/latest.json"_s, u"1.0.1"_s, u"linux-x86_64"_s, {}, root(), staging(), {}, binary};
        QObject::connect(updater.get(), &PluginUpdater::stateChanged, updater.get(), [this] {
            seen.append(QVariant::fromValue(updater->state()).toString() + u": "_s + updater->message());
            if (onChange) {
                onChange();
            }
        });
        server.answer = [this](const HttpRequest &request) {
            return request.path == "/p.zip"_ba ? package : manifestReply ? *manifestReply : HttpReply{200, manifest()};
        };
        offer(zip.size(), sumOf(zip));
    }
    void offer(qint64 size, const QByteArray &sum)
    {
        const QJsonObject entry{
            {u"url"_s, server.url() + u"/p.zip"_s}, {u"size"_s, size}, {u"sha256"_s, QString::fromLatin1(sum)}};
        m_manifest = {{u"version"_s, u"1.1.0"_s}, {u"packages"_s, QJsonObject{{u"linux-x86_64"_s, entry}}}};
    }
    QByteArray manifest() const { return QJsonDocument(m_manifest).toJson(); }
    QString root() const { return dir.filePath(u"plugins/tallyforge-obs"_s); }
    QString staging() const { return dir.filePath(u"config/update"_s); }
    QByteArray installed() const { return contentOf(root() + u'/' + binary); }

    QStringList check(bool manual)
    {
        waitFor(manifestReply);
        updater->check(manual);
        return ended();
    }
    // Has the update installed, and gives the states that were seen from then on.
    QStringList install()
    {
        if (check(true) != QStringList{u"Checking: Checking for updates…"_s, QString::fromUtf8(available)}) {
            return {u"The check failed."_s};
        }
        waitFor(package);
        updater->install();
        return ended();
    }
    QStringList ended()
    {
        QTimer deadline;
        deadline.setSingleShot(true);
        deadline.start(30s);
        while (updater->isBusy() && deadline.isActive()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return updater->isBusy() ? QStringList{u"It hangs."_s} : std::exchange(seen, {});
    }

    QTemporaryDir dir;
    HttpStub server;
    HttpReply package;
    std::optional<HttpReply> manifestReply;
    UpdateConfig config;
    QStringList seen;
    std::function<void()> onChange;
    std::unique_ptr<PluginUpdater> updater;

private:
    // Only a reply that hangs is given up soon: a busy computer is silent for longer than that.
    void waitFor(const std::optional<HttpReply> &reply)
    {
        config.timeoutMs = reply && reply->how == How::Hang ? 400 : UpdateConfig().timeoutMs;
        updater->setConfig(config);
    }

    QJsonObject m_manifest;
};

} // namespace

class TestPluginUpdater : public QObject
{
    Q_OBJECT

    QByteArray m_zip;

private Q_SLOTS:
    void initTestCase()
    {
        const QTemporaryDir dir;
        QByteArray content(300'000, Qt::Uninitialized); // more than the loop reads at once
        QRandomGenerator random(1);
        std::generate(content.begin(), content.end(), [&random] { return char(random()); });
        writeFile(dir.filePath(u"tallyforge-obs/"_s + binary), "new" + content);
        const QString zip = dir.filePath(u"p.zip"_s);
        QCOMPARE(QProcess::execute(u"bsdtar"_s, {u"-a"_s, u"-cf"_s, zip, u"-C"_s, dir.path(), u"tallyforge-obs"_s}), 0);
        m_zip = contentOf(zip);
    }

    void checks_data()
    {
        QTest::addColumn<HttpReply>("reply");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const HttpReply &reply, const char *outcome) {
            QTest::newRow(name) << reply << QString::fromUtf8(outcome);
        };
        const Rig rig(m_zip);
        const QByteArray good = rig.manifest();
        const auto moved = [](const QByteArray &to) { return HttpReply{302, "", "Location: " + to + "\r\n"}; };
        const char *const unreadable = "Failed: The update information was not readable.";

        row("newer", {200, good}, available);
        row("present version", {200, R"({"version":"1.0.1"})"}, "UpToDate: Tallyforge 1.0.1 is up to date.");
        row("any status of success", {203, good}, available);
        row("a mebibyte", {200, QByteArray((1 << 20) - good.size(), ' ') + good}, available);
        row("endless, of which the first mebibyte counts", {200, good, "", How::Flood}, available);
        row("just over a mebibyte", {200, QByteArray(1 << 20, ' ') + good}, unreadable);
        row("endless nonsense", {200, "<html>", "", How::Flood}, unreadable);
        row("a byte now and then", {200, good, "", How::Drip}, unreachable);
        row("silent", {200, "", "", How::Hang}, unreachable);
        row("cut short", {200, good, "", How::CutShort}, unreachable);
        row("disconnected", {200, "", "", How::Drop}, unreachable);
        row("not found", {404, good}, unreachable);
        row("status without a body", {304, ""}, unreachable);
        row("server error, endless", {500, good, "", How::Flood}, unreachable);
        row("redirect to a file", moved("file:///etc/passwd"), unreachable);
        row("redirect to itself", moved("/latest.json"), unreachable);
        row("redirect to nothing", moved("https:"), unreachable);
        row("compressed against the request", {200, good, "Content-Encoding: gzip\r\n"}, available);
        row("for another computer", {200, QByteArray(good).replace("x86_64", "arm64")},
            "Failed: Version 1.1.0 is out, but not available for this computer yet.");
    }
    void checks()
    {
        QFETCH(HttpReply, reply);
        QFETCH(QString, outcome);
        for (const bool manual : {true, false}) {
            PluginUpdater::Limits limits;
            limits.manifest = reply.how == How::Drip ? 700ms : 30000ms;
            Rig rig(m_zip, limits);
            rig.manifestReply = reply;
            const QString last = !manual && outcome.startsWith(u"Failed") ? u"Idle: "_s : outcome;
            QCOMPARE(rig.check(manual), (QStringList{u"Checking: Checking for updates…"_s, last}));
            QCOMPARE_LT(rig.server.flooded, 20 << 20); // the system's buffers took that much
        }
    }

    void doesNotFollowFromTlsToPlain()
    {
        Rig rig(m_zip);
        QFile key(QStringLiteral(TEST_KEY));
        QVERIFY(key.open(QIODevice::ReadOnly));
        const auto certificates = QSslCertificate::fromPath(QStringLiteral(TEST_CERTIFICATE));
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        const QSslConfiguration before = trusting;
        trusting.setCaCertificates(certificates);
        QSslConfiguration::setDefaultConfiguration(trusting);
        trusting.setLocalCertificate(certificates.constFirst());
        trusting.setPrivateKey(QSslKey(&key, QSsl::Ec));
        QSslServer secure;
        secure.setSslConfiguration(trusting);
        secure.listen(QHostAddress::LocalHost);
        QByteArray answer = "HTTP/1.1 302 X\r\nContent-Length: 0\r\nLocation: " + rig.config.manifestUrl.toLatin1();
        connect(&secure, &QTcpServer::pendingConnectionAvailable, this, [&] {
            QTcpSocket *const socket = secure.nextPendingConnection();
            connect(socket, &QIODevice::readyRead, socket,
                    [socket, sent = &answer] { socket->write(*sent + "\r\n\r\n"); });
        });
        rig.config.manifestUrl = u"https://localhost:%1/latest.json"_s.arg(secure.serverPort());
        QCOMPARE(rig.check(true).constLast(), QString::fromUtf8(unreachable));
        QCOMPARE(rig.server.asked(), QList<QByteArray>());
        // The same server is trusted as long as it answers itself.
        answer = "HTTP/1.1 200 X\r\nContent-Length: 19\r\n\r\n{\"version\":\"1.0.1\"}";
        QCOMPARE(rig.check(true).constLast(), u"UpToDate: Tallyforge 1.0.1 is up to date."_s);
        QSslConfiguration::setDefaultConfiguration(before);
    }

    void keepsWhatItKnowsThroughFailures()
    {
        Rig rig(m_zip);
        rig.updater->install(); // nothing is known yet
        QVERIFY(!rig.updater->isBusy());
        rig.check(false);
        rig.manifestReply = HttpReply{500};
        QCOMPARE(rig.check(false).constLast(), u"Idle: "_s);
        rig.updater->install(); // there is something to install, but nothing is offered
        QCOMPARE(rig.ended(), QStringList());
        QCOMPARE(rig.check(true).constLast(), QString::fromUtf8(unreachable));
        QCOMPARE(rig.updater->info().version, u"1.1.0"_s);
        rig.updater->install();
        QCOMPARE(rig.ended().constLast(), QString::fromUtf8(installed));
        rig.manifestReply = HttpReply{200, R"({"version":"1.0.1"})"};
        rig.updater->check(true); // nothing more happens until OBS starts again
        rig.updater->install();
        QVERIFY(!rig.updater->isBusy());
        QCOMPARE(rig.server.requests.size(), 4);
    }

    void installs()
    {
        Rig rig(m_zip);
        rig.onChange = [&rig] { // nothing starts while it's busy
            if (rig.updater->isBusy()) {
                rig.updater->check(true);
                rig.updater->install();
            }
        };
        QStringList seen = rig.install();
        QCOMPARE(seen.takeFirst(), u"Downloading: Downloading version 1.1.0…"_s);
        QCOMPARE(seen.takeLast(), QString::fromUtf8(installed));
        QCOMPARE(seen.takeLast(), u"Installing: Installing version 1.1.0…"_s);
        QCOMPARE(seen.last(), u"Downloading: Downloading version 1.1.0… 100%"_s);
        for (int last = 0; const QString &line : std::as_const(seen)) {
            const int percent = line.sliced(39).chopped(1).toInt();
            QCOMPARE_GT(percent, std::exchange(last, percent));
            QCOMPARE(line, u"Downloading: Downloading version 1.1.0… %1%"_s.arg(percent));
        }
        QVERIFY(rig.installed().startsWith("new"));
        QCOMPARE(contentOf(rig.staging() + u"/previous/"_s + binary), "old");
        QCOMPARE(QDir(rig.staging()).entryList(everything), QStringList{u"previous"_s});

        QCOMPARE(rig.server.asked(), (QList<QByteArray>{"GET /latest.json", "GET /p.zip"}));
        QCOMPARE(rig.server.requests[0].headers["accept"], "application/json");
        QCOMPARE(rig.server.requests[0].headers["cache-control"], "no-cache");
        for (const HttpRequest &request : std::as_const(rig.server.requests)) {
            QCOMPARE(request.headers["user-agent"], "Tallyforge-OBS/1.0.1 (linux-x86_64)");
        }
    }

    void failures_data()
    {
        QTest::addColumn<HttpReply>("package");
        QTest::addColumn<qint64>("size"); // what the manifest says beyond the real one
        QTest::addColumn<QByteArray>("sum");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const HttpReply &package, qint64 size, const char *outcome,
                            const QByteArray &sum = {}) {
            QTest::newRow(name) << package << size << (sum.isEmpty() ? sumOf(package.body) : sum)
                                << QString::fromUtf8(outcome);
        };
        const char *const tooLarge = "Failed: The download was larger than expected, so it was discarded.";
        const char *const wrongSize = "Failed: The download was incomplete, so it was discarded. Try again.";
        const char *const notUnpacked = "Failed: The update could not be unpacked. Nothing was changed.";
        const HttpReply whole{200, m_zip};
        row("right", whole, 0, installed);
        row("no size", whole, unknown, installed);
        row("right sum, smaller than said", whole, 1, wrongSize);
        row("right sum, larger than said", whole, -4096, wrongSize);
        row("larger than said by more", whole, -4097, tooLarge);
        row("endless", {200, m_zip, "", How::Flood}, 0, tooLarge);
        row("endless of no size", {200, m_zip, "", How::Flood}, unknown, tooLarge);
        row("wrong sum", whole, 0,
            "Failed: The download did not match its checksum, so it was discarded. Nothing was changed.", sumOf("x"));
        row("not found", {404, m_zip}, 0, notFinished);
        row("cut short", {200, m_zip, "", How::CutShort}, 0, notFinished);
        row("disconnected", {200, "", "", How::Drop}, 0, notFinished);
        row("silent", {200, "", "", How::Hang}, 0, notFinished);
        row("redirect to a file", {302, "", "Location: file:///etc/passwd\r\n"}, unknown, notFinished);
        row("empty", {200, ""}, unknown,
            "Failed: The update package was not in the expected shape. Nothing was changed.");
        row("no archive", {200, QByteArray(100'000, 'x')}, 0, notUnpacked);
        row("half an archive", {200, m_zip.first(m_zip.size() / 2)}, 0, notUnpacked);
    }
    void failures()
    {
        QFETCH(HttpReply, package);
        QFETCH(qint64, size);
        QFETCH(QByteArray, sum);
        QFETCH(QString, outcome);
        PluginUpdater::Limits limits;
        limits.package = 1'000'000;
        Rig rig(m_zip, limits);
        rig.package = package;
        rig.offer(size == unknown ? 0 : package.body.size() + size, sum);
        QCOMPARE(rig.install().constLast(), outcome);
        QCOMPARE_LE(QFileInfo(rig.staging() + u"/package.zip"_s).size(), limits.package);
        if (outcome.startsWith(u"Failed")) {
            QCOMPARE(rig.installed(), "old");
            // The next attempt is as good as the first one.
            rig.package = {200, m_zip};
            rig.offer(m_zip.size(), sumOf(m_zip));
            rig.onChange = [&rig, isFirst = true]() mutable {
                if (rig.updater->state() == State::Downloading && std::exchange(isFirst, false)) {
                    QCOMPARE(rig.updater->progress(), 0);
                }
            };
            rig.install();
        }
        QVERIFY(rig.installed().startsWith("new"));
    }

    void stagingOnAnotherDisk()
    {
        const char *const notWritten = "Failed: Could not write the update to disk.";
        const QList<std::pair<const char *, const char *>> disks{
            {"size=128k", notWritten},
            {"size=400k", "Failed: The update could not be unpacked. Nothing was changed."},
            {"nr_inodes=2", notWritten},
            {"nr_inodes=1", "Failed: Could not prepare a download folder (%1)."},
            {"size=4m", installed}};
        for (const auto &[disk, outcome] : disks) {
            Rig rig(m_zip);
            const QString folder = rig.dir.filePath(u"config"_s);
            QDir().mkpath(folder);
            QCOMPARE(mount("none", qPrintable(folder), "tmpfs", 0, disk), 0);
            const QString last = rig.install().constLast();
            umount(qPrintable(folder));
            QCOMPARE(last, QString::fromUtf8(outcome).replace(u"%1"_s, rig.staging()));
            QCOMPARE(rig.installed().startsWith("new"), outcome == installed);
        }
    }

    void stagingFolderIsALink()
    {
        Rig rig(m_zip);
        writeFile(rig.dir.filePath(u"precious/file"_s), "kept");
        QDir().mkpath(rig.dir.filePath(u"config"_s));
        QVERIFY(QFile::link(rig.dir.filePath(u"precious"_s), rig.staging()));
        rig.config.stagingDir += u'/';
        QVERIFY(rig.install().constLast().startsWith(u"Installed"));
        QCOMPARE(QDir(rig.dir.filePath(u"precious"_s)).entryList(everything), QStringList{u"file"_s});
    }

    // Another OBS works in the folder. Nothing of its is touched, and ours lets go of the folder in the end.
    void stagingFolderInUse()
    {
        Rig rig(m_zip);
        const QString file = rig.staging() + u"/package.zip"_s;
        writeFile(file, "of the other");
        const QString parent = rig.dir.filePath(u"config"_s);
        {
            const platform::FolderLock other(parent);
            QVERIFY(rig.install().constLast().contains(u"is in use"_s));
            QCOMPARE(contentOf(file), "of the other");
        }
        rig.package = {404};
        QCOMPARE(rig.install().constLast(), QString::fromUtf8(notFinished));
        QVERIFY(!platform::FolderLock(parent).isTaken());
    }

    void foldersOfOthers()
    {
        for (const QString &readOnly : {u"plugins/tallyforge-obs"_s, u"plugins"_s, u"."_s}) {
            Rig rig(m_zip);
            rig.updater->setConfig(rig.config);
            QFile folder(rig.dir.filePath(readOnly));
            folder.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
            const bool possible = rig.updater->canInstallInPlace();
            folder.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            QCOMPARE(possible, readOnly == u".");
        }
    }

    void cannotInstallInPlace()
    {
        const QString text =
            u"Failed: This copy of the plugin was installed for all users, so it cannot update itself. "
            "Download and run the installer from %1."_s;
        Rig rig(m_zip);
        rig.config.binaryPath.clear(); // the one of a macOS bundle
        QCOMPARE(rig.install().constLast(), text.arg(u"the Tallyforge website"));
        rig.config.downloadPage = u"https://www.tallyforge.example/download"_s;
        rig.config.pluginRoot.clear();
        QCOMPARE(rig.install().constLast(), text.arg(rig.config.downloadPage));
        QVERIFY(!rig.updater->isBusy());
        rig.config.pluginRoot = rig.root() + u'/' + binary;
        QCOMPARE(rig.install().constLast(), text.arg(rig.config.downloadPage));
        QVERIFY(!QFile::exists(rig.staging()));
    }

    // In the slot of every change in turn, until an installation is through.
    void isDeletedWhileItTells()
    {
        bool through = false;
        for (int last = 1; !through; ++last) {
            Rig rig(m_zip);
            rig.onChange = [&rig, &through, last, changes = 0]() mutable {
                if (rig.updater->state() == State::Available) {
                    QMetaObject::invokeMethod(rig.updater.get(), &PluginUpdater::install, Qt::QueuedConnection);
                }
                through = rig.updater->state() == State::Installed;
                if (++changes == last || through) {
                    rig.updater.reset();
                }
            };
            rig.updater->setConfig(rig.config);
            rig.updater->check(true);
            QTRY_VERIFY(!rig.updater);
            QVERIFY(through ? rig.installed().startsWith("new") : rig.installed() == "old");
        }
    }
};

QTEST_GUILESS_MAIN(TestPluginUpdater)
#include "tst_plugin_updater.moc"
