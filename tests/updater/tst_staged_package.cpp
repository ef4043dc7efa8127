// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/support/SkippedTime.h"
#include "tests/updater/BundleFixture.h"
#include "updater/ArchiveUnpacker.h"
#include "updater/FileTree.h"
#include "updater/StagedPackage.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <memory>
#include <sys/stat.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Result = ArchiveUnpacker::Result;

namespace {

const auto binaryPath = "bin/tallyforge.so"_L1;
constexpr ArchiveUnpacker::Limits limits{.time = 100s, .bytes = 2 << 20, .entries = 100};

mode_t mode(const QString &path)
{
    struct stat status{};
    return stat(qPrintable(path), &status) == 0 ? status.st_mode & 07777 : 0;
}

platform::Command shell(const QString &script)
{
    return {u"/bin/sh"_s, {u"-c"_s, script}};
}

Result unpack(const platform::Command &command, const QString &directory,
              const ArchiveUnpacker::Limits &within = limits)
{
    ArchiveUnpacker unpacker(within);
    QSignalSpy finished(&unpacker, &ArchiveUnpacker::finished);
    unpacker.run(command, directory);
    if (!finished.isEmpty() || !finished.wait(30s)) {
        qFatal("an answer during the call, or none");
    }
    return finished.constFirst().constFirst().value<Result>();
}

} // namespace

class TestStagedPackage : public QObject
{
    Q_OBJECT

    QTemporaryDir m_top;
    QDir m_packages{m_top.filePath(u"packages"_s)};
    QString m_extracted = m_top.filePath(u"packages/update/extracted"_s);

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_packages.mkpath(u"."_s));
        QCOMPARE(QProcess::execute(u"python3"_s, {QStringLiteral(MAKE_PACKAGES), m_packages.path()}), 0);
    }
    void init()
    {
        QCOMPARE(removeTree(m_extracted).error, QString());
        QVERIFY(QDir().mkpath(m_extracted));
    }

    // The programs treat such packages differently. In all of them an accepted package is fit to be installed, a
    // refused one comes with its reason, and no file comes to lie elsewhere.
    void packages_data()
    {
        QTest::addColumn<platform::Command>("command");
        QTest::addColumn<QStringList>("outcomes");
        const QMap<QString, QStringList> cases{
            {u"good"_s, {u"accepted"_s}},
            {u"mac-metadata"_s, {u"accepted"_s}},
            {u"hidden-inside"_s, {u"accepted"_s}},
            {u"two-cases"_s, {u"accepted"_s}},
            {u"odd-modes"_s, {u"accepted"_s}},
            {u"empty"_s, {u"shape"_s, u"unpack"_s}},
            {u"two-folders"_s, {u"shape"_s}},
            {u"file-beside"_s, {u"shape"_s}},
            {u"hidden-beside"_s, {u"shape"_s}},
            {u"file-alone"_s, {u"shape"_s}},
            {u"name-of-an-old-file"_s, {u"shape"_s}},
            {u"link-alone"_s, {u"shape"_s}},
            {u"no-binary"_s, {u"plugin"_s}},
            {u"binary-is-folder"_s, {u"plugin"_s}},
            {u"link-inside"_s, {u"link"_s}},
            {u"link-absolute"_s, {u"link"_s, u"unpack"_s}},
            {u"link-to-nothing"_s, {u"link"_s}},
            {u"link-out"_s, {u"link"_s, u"unpack"_s}},
            {u"link-to-folder"_s, {u"link"_s}},
            {u"binary-is-link"_s, {u"link"_s, u"unpack"_s}},
            {u"through-link"_s, {u"unpack"_s}},
            {u"through-relative-link"_s, {u"unpack"_s}},
            {u"dots"_s, {u"unpack"_s, u"shape"_s}},
            {u"dots-inside"_s, {u"unpack"_s, u"accepted"_s}},
            {u"absolute"_s, {u"unpack"_s, u"shape"_s}},
            {u"device"_s, {u"unpack"_s, u"shape"_s, u"accepted"_s}},
            {u"long-name"_s, {u"unpack"_s, u"accepted"_s}},
            {u"one-bomb"_s, {u"unpack"_s}},
            {u"many-bombs"_s, {u"unpack"_s}},
            {u"deep-bombs"_s, {u"unpack"_s}},
            {u"countless"_s, {u"unpack"_s}},
            {u"truncated"_s, {u"unpack"_s, u"accepted"_s}}, // only the directory is cut off
            {u"half"_s, {u"unpack"_s}},
            {u"junk"_s, {u"unpack"_s}},
            {u"nothing"_s, {u"unpack"_s, u"shape"_s}},
            {u"encrypted"_s, {u"unpack"_s}},
        };
        for (auto [package, outcomes] : cases.asKeyValueRange()) {
            const auto commands = platform::unpackCommands(m_packages.filePath(package + u".zip"), m_extracted);
            QVERIFY(!commands.isEmpty());
            for (const platform::Command &command : commands) {
                const QString row = package + u" by "_s + QFileInfo(command.program).fileName();
                QTest::newRow(qPrintable(row)) << command << outcomes;
            }
        }
    }
    void packages()
    {
        QFETCH(platform::Command, command);
        QFETCH(QStringList, outcomes);
        Tree before = readTree(m_top.path());
        QString outcome = u"unpack"_s;
        if (unpack(command, m_extracted) == Result::Unpacked) {
            const Outcome judged = inspectExtracted(m_extracted, binaryPath);
            QCOMPARE(judged.ok, judged.error.isEmpty());
            QVERIFY(!judged.ok || bundleIn(m_extracted) == m_extracted + u"/bundle"_s);
            const QMap<QString, QString> texts{
                {{}, u"accepted"_s},
                {u"The update package was not in the expected shape. Nothing was changed."_s, u"shape"_s},
                {u"The update package contained an unexpected link, so it was rejected. Nothing was changed."_s,
                 u"link"_s},
                {u"The update package did not contain the plugin for this computer. Nothing was changed."_s,
                 u"plugin"_s},
            };
            outcome = texts.value(judged.error, judged.error);
        }
        QVERIFY2(outcomes.contains(outcome), qPrintable(outcome));
        if (outcome == u"accepted") {
            const Tree bundle = readTree(m_extracted + u"/bundle"_s);
            QCOMPARE(bundle.value(binaryPath), "binary");
            QCOMPARE(bundle.value(u"data/text.ini"_s), "text");
        }
        QCOMPARE(removeTree(m_extracted).error, QString());
        QCOMPARE(readTree(m_top.path()).keys(), before.keys());
    }

    void modes()
    {
        writeTree(m_extracted, {{u"bundle/bin/tallyforge.so"_s, {}}, {u"bundle/data/text"_s, {}}});
        const QDir bundle(m_extracted + u"/bundle"_s);
        chmod(qPrintable(bundle.filePath(binaryPath)), 06777);
        chmod(qPrintable(bundle.filePath(u"data/text"_s)), 0);
        chmod(qPrintable(bundle.filePath(u"data"_s)), 0);
        chmod(qPrintable(bundle.path()), 03777);
        QCOMPARE(inspectExtracted(m_extracted, binaryPath).error, QString());
        QCOMPARE(mode(bundle.path()), 0755U);
        QCOMPARE(mode(bundle.filePath(u"data"_s)), 0700U);
        QCOMPARE(mode(bundle.filePath(u"data/text"_s)), 0600U);
        QCOMPARE(mode(bundle.filePath(binaryPath)), 0755U);
    }

    // As no zip archive can bring it, but another program for it might.
    void odd()
    {
        writeTree(m_extracted, {{u"bundle/bin/tallyforge.so"_s, {}}});
        const QString added = m_extracted + u"/bundle/x"_s;
        QCOMPARE(mkfifo(qPrintable(added), 0600), 0);
        QVERIFY(inspectExtracted(m_extracted, binaryPath).error.contains("expected shape"_L1));
        QVERIFY(QFile::remove(added));
        QCOMPARE(link(qPrintable(m_packages.filePath(u"good.zip"_s)), qPrintable(added)), 0);
        QVERIFY(inspectExtracted(m_extracted, binaryPath).error.contains("unexpected link"_L1));
    }

    void program_data()
    {
        QTest::addColumn<platform::Command>("command");
        QTest::addColumn<Result>("result");
        QTest::newRow("works") << shell(u":"_s) << Result::Unpacked;
        QTest::newRow("fails") << shell(u"exit 1"_s) << Result::Failed;
        QTest::newRow("crashes") << shell(u"kill -SEGV $$"_s) << Result::Failed;
        QTest::newRow("writes a large file")
            << shell(u"head -c 3M /dev/zero >"_s + m_extracted + u"/x"_s) << Result::Failed;
        QTest::newRow("none on this system") << platform::Command() << Result::NotStarted;
        QTest::newRow("gone") << platform::Command{u"/nonexistent"_s, {}} << Result::NotStarted;
    }
    void program()
    {
        QFETCH(platform::Command, command);
        QTEST(unpack(command, m_extracted), "result");
        QVERIFY(QFileInfo(m_extracted + u"/x"_s).size() <= limits.bytes);
    }

    // The program and its children end: when the time is up, when it writes too much, and with the unpacker.
    void ended_data()
    {
        QTest::addColumn<ArchiveUnpacker::Limits>("within");
        QTest::addColumn<QString>("script");
        QTest::newRow("time") << ArchiveUnpacker::Limits{.time = 200ms} << u":"_s;
        QTest::newRow("space") << limits << u"for i in 1 2 3; do head -c 1M /dev/zero >$i; done"_s;
        QTest::newRow("entries") << limits << u"mkdir $(seq 200)"_s;
        QTest::newRow("unpacker") << limits << u""_s;
    }
    void ended()
    {
        QFETCH(ArchiveUnpacker::Limits, within);
        QFETCH(QString, script);
        const auto command = shell(u"cd %1; sleep 600 & echo $! >pid; "_s.arg(m_extracted) + script +
                                   (script.isEmpty() ? u"wait"_s : u"; wait"_s));
        const auto child = [&] { return readTree(m_extracted).value(u"pid"_s).trimmed().toInt(); };
        if (script.isEmpty()) {
            auto unpacker = std::make_unique<ArchiveUnpacker>(within);
            unpacker->run(command, m_extracted);
            QTRY_VERIFY(child() != 0);
        } else {
            QCOMPARE(unpack(command, m_extracted, within), Result::Failed);
        }
        QVERIFY(child() != 0);
        QTRY_VERIFY(kill(child(), 0) != 0 && errno == ESRCH);
    }

    void twoMinutesToUnpack()
    {
        ArchiveUnpacker unpacker{ArchiveUnpacker::Limits()};
        QSignalSpy finished(&unpacker, &ArchiveUnpacker::finished);
        unpacker.run(shell(u"exec sleep 1000"_s), m_extracted);
        skip(119s);
        QVERIFY(finished.isEmpty());
        skip(2s);
        QTRY_COMPARE(finished.count(), 1);
    }

    void destroyedAtOnce()
    {
        QElapsedTimer timer;
        timer.start();
        ArchiveUnpacker().run(shell(u"sleep 600"_s), m_extracted);
        QVERIFY(timer.elapsed() < 10'000);
    }

    void diskFull()
    {
        const SmallDisk disk;
        const QString archive = m_packages.filePath(u"many-bombs.zip"_s);
        const auto commands = platform::unpackCommands(archive, disk.path());
        for (const platform::Command &command : commands) {
            QCOMPARE(unpack(command, disk.path(), {}), Result::Failed);
            QDir(disk.path() + u"/bundle"_s).removeRecursively();
        }
    }
};

QTEST_GUILESS_MAIN(TestStagedPackage)
#include "tst_staged_package.moc"
