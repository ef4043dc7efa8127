// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Disk.h"
#include "tests/updater/BundleFixture.h"
#include "updater/BundleInstaller.h"

#include <QTest>

#include <functional>
#include <optional>
#include <unistd.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

using Prepare = std::function<void(BundleFixture &)>;

void mountOver(const QString &path, unsigned long flags = 0)
{
    if (mount(qPrintable(path), qPrintable(path), nullptr, MS_BIND, nullptr) != 0 ||
        (flags != 0 && mount(nullptr, qPrintable(path), nullptr, MS_BIND | MS_REMOUNT | flags, nullptr) != 0)) {
        qFatal("can't mount over %s", qPrintable(path));
    }
}

} // namespace

class TestBundleInstaller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void installs_data()
    {
        QTest::addColumn<bool>("elsewhere");
        QTest::addColumn<bool>("allowSwap");
        QTest::newRow("swapped") << false << true;
        QTest::newRow("swapped, unpacked on another file system") << true << true;
        QTest::newRow("file by file") << false << false;
        QTest::newRow("file by file, unpacked on another file system") << true << false;
    }
    void installs()
    {
        QFETCH(bool, elsewhere);
        QFETCH(bool, allowSwap);
        BundleFixture bundle;
        if (elsewhere) {
            bundle.stageElsewhere();
        }
        bundle.reset();
        writeTree(bundle.backup(), {{u"older"_s, "previous"}});
        writeTree(bundle.target, {{bundle.binary + u".old"_s, "older"}});
        bundle.oldTree.insert(bundle.binary + u".old"_s, "older");
        QFile::setPermissions(QDir(bundle.source()).filePath(bundle.binary), QFile::ReadOwner | QFile::ExeOwner);

        const Outcome result = installTree(bundle.source(), bundle.target, bundle.backup(), allowSwap);
        QCOMPARE(result.error, QString());
        QVERIFY(result.ok);
        QVERIFY(bundle.isTidy());
        QCOMPARE(readTree(bundle.backup()), allowSwap ? bundle.oldTree : Tree({{u"older"_s, "previous"}}));
        QVERIFY(QFileInfo(QDir(bundle.target).filePath(bundle.binary)).isExecutable());
        Tree expected = bundle.newTree;
        if (!allowSwap) {
            expected = bundle.replacedTree();
            expected.insert(bundle.binary + u".old"_s, "old binary");
            expected.insert(u"data/locale/en-US.ini.old"_s, "old text");
            expected.insert(u"data/.hidden.old"_s, "old");
        }
        QCOMPARE(readTree(bundle.target), expected);
    }

    void fails_data()
    {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<bool>("allowSwap");
        QTest::addColumn<QString>("error");
        const auto removeSource = [](BundleFixture &bundle) { QDir(bundle.source()).removeRecursively(); };
        const auto emptySource = [removeSource](BundleFixture &bundle) {
            removeSource(bundle);
            QDir().mkpath(bundle.source() + u"/data"_s);
        };
        const auto largeSource = [](BundleFixture &bundle) {
            bundle.stageElsewhere();
            bundle.reset();
            writeTree(bundle.target, {{u"large"_s, QByteArray(800'000, 'o')}});
            writeTree(bundle.source(), {{u"larger"_s, QByteArray(900'000, 'n')}});
        };
        const auto readOnly = [](BundleFixture &bundle) { mountOver(bundle.plugins, MS_RDONLY); };
        // Nobody can rename a mount point.
        const auto pinBinary = [](BundleFixture &bundle) { mountOver(bundle.target + u'/' + bundle.binary); };
        const auto pinFolder = [](BundleFixture &bundle) {
            mountOver(bundle.target);
            QDir(bundle.target + u"/data"_s).removeRecursively();
            writeTree(bundle.target, {{u"data"_s, "a file where a folder comes"}});
        };
        QTest::newRow("no source") << Prepare(removeSource) << true << u"nothing to install"_s;
        QTest::newRow("no files") << Prepare(emptySource) << false << u"the package is empty"_s;
        QTest::newRow("disk full") << Prepare(largeSource) << true << u"could not write larger"_s;
        QTest::newRow("read-only") << Prepare(readOnly) << true << u"could not write "_s;
        QTest::newRow("binary can't be moved")
            << Prepare(pinBinary) << false << u"bin/64bit/tallyforge-obs.so is in use"_s;
        QTest::newRow("a file in the way") << Prepare(pinFolder) << true << u"could not write data/"_s;
    }
    void fails()
    {
        QFETCH(Prepare, prepare);
        QFETCH(bool, allowSwap);
        QFETCH(QString, error);
        BundleFixture bundle;
        bundle.reset();
        prepare(bundle);
        const Tree before = readTree(bundle.target);
        const Outcome result = installTree(bundle.source(), bundle.target, bundle.backup(), allowSwap);
        QVERIFY(!result.ok);
        QVERIFY2(result.error.startsWith(error), qPrintable(result.error));
        QCOMPARE(readTree(bundle.target), before);
        QVERIFY(bundle.isTidy());
        for (const QString &path : {bundle.target + u'/' + bundle.binary, bundle.target, bundle.plugins}) {
            umount2(qPrintable(path), MNT_DETACH);
        }
    }

    // Two OBS at once: one starts while the other installs, and must not take the new files for leftovers.
    void oneAtATime()
    {
        const BundleFixture bundle;
        bundle.reset();
        writeTree(bundle.target, {{u"data/x.old"_s, "of the other"}});
        const Tree before = readTree(bundle.target);
        {
            const platform::FolderLock other(bundle.plugins);
            QVERIFY(!other.isTaken());
            cleanupLeftovers(bundle.target);
            QCOMPARE(installTree(bundle.source(), bundle.target, bundle.backup(), true).error,
                     bundle.target + u" is in use"_s);
            QCOMPARE(readTree(bundle.target), before);
        }
        QVERIFY(installTree(bundle.source(), bundle.target, bundle.backup(), true).ok);
    }

    void cleanup()
    {
        const BundleFixture bundle;
        bundle.reset();
        writeTree(bundle.target, {{u"a.old"_s, {}}, {u"data/.b.old"_s, {}}, {u"dir.old/file"_s, {}}});
        writeTree(bundle.plugins, {{u"other/c.old"_s, {}}, {u"d.old"_s, {}}});
        QVERIFY(QFile::link(bundle.plugins + u"/other"_s, bundle.target + u"/link"_s));
        QVERIFY(QFile::link(bundle.plugins + u"/d.old"_s, bundle.target + u"/e.old"_s));
        cleanupLeftovers(bundle.target);
        Tree expected = bundle.oldTree;
        expected.insert(u"dir.old/file"_s, {});
        QCOMPARE(readTree(bundle.target), expected);
        QCOMPARE(readTree(bundle.plugins + u"/other"_s).size(), 1);
        QVERIFY(QFile::exists(bundle.plugins + u"/d.old"_s));
    }

    // A record that others have written leads nowhere else.
    void foreignRecord()
    {
        const BundleFixture bundle;
        bundle.reset();
        writeTree(bundle.plugins, {{u".tallyforge-obs.undo"_s, "+../other/x\0+..\0+.\0+data/..\0+/../x\0=\0\0+"_ba},
                                   {u"other/x"_s, "somebody's"},
                                   {u"x"_s, "somebody's"}});
        cleanupLeftovers(bundle.target);
        QCOMPARE(readTree(bundle.target), bundle.oldTree);
        QCOMPARE(readTree(bundle.plugins).size(), bundle.oldTree.size() + 2);
    }
};

QTEST_GUILESS_MAIN(TestBundleInstaller)
#include "tst_bundle_installer.moc"
