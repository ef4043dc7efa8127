// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Sha256.h"
#include "tests/support/KillAtCall.h"
#include "tests/updater/BundleFixture.h"
#include "updater/BundleInstaller.h"

#include <QTest>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

enum class Way { Swap, Copy, Renames, Files, FilesFromElsewhere };

bool isByFile(Way way)
{
    return way == Way::Files || way == Way::FilesFromElsewhere;
}

// As on a file system that can't exchange folders.
void forbidExchange()
{
    constexpr auto flags = offsetof(seccomp_data, args) + 4 * sizeof(__u64);
    sock_filter code[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, flags),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, RENAME_EXCHANGE, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{std::size(code), code};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

bool install(const BundleFixture &bundle, Way way)
{
    if (way == Way::Renames) {
        forbidExchange();
    }
    return installTree(bundle.source(), bundle.target, bundle.backup(), !isByFile(way)).ok;
}

// Kills an installation when two files are new and others aren't yet. Returns at which system call.
int cutOffHalfWay(const BundleFixture &bundle)
{
    int call = 0;
    do {
        bundle.reset();
        static_cast<void>(killAtCall(++call, [&] { return install(bundle, Way::Files); }));
    } while (std::ranges::count_if(readTree(bundle.target),
                                   [](const QByteArray &content) { return content.startsWith("new"); }) < 2);
    return call;
}

// Every file that the old version had is there, and whole: OBS can load it.
bool isLoadable(const BundleFixture &bundle, const Tree &tree)
{
    return std::ranges::all_of(bundle.oldTree.asKeyValueRange(), [&](const auto &file) {
        const QByteArray seen = tree.value(file.first);
        return seen == file.second || (!seen.isEmpty() && seen == bundle.newTree.value(file.first));
    });
}

} // namespace

class TestInstallationCrash : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The library's first sum makes many system calls, so that later runs would be shorter by them.
    void initTestCase() { QVERIFY(!platform::Sha256().result().isEmpty()); }

    void installing_data()
    {
        QTest::addColumn<Way>("way");
        QTest::newRow("swapped") << Way::Swap;
        QTest::newRow("swapped, unpacked on another file system") << Way::Copy;
        QTest::newRow("renamed, where folders can't trade places") << Way::Renames;
        QTest::newRow("file by file") << Way::Files;
        QTest::newRow("file by file, unpacked on another file system") << Way::FilesFromElsewhere;
    }
    void installing()
    {
        QFETCH(Way, way);
        BundleFixture bundle;
        if (way == Way::Copy || way == Way::FilesFromElsewhere) {
            bundle.stageElsewhere();
        }
        const Tree done = isByFile(way) ? bundle.replacedTree() : bundle.newTree;
        int foundOld = 0;
        int foundNew = 0;
        int foundNothing = 0;
        for (End end = End::Killed; end == End::Killed;) {
            bundle.reset();
            if (isByFile(way)) { // the rest of an earlier update is no version to go back to
                writeTree(bundle.target, {{bundle.binary + u".old"_s, "older"}});
            }
            end = killAtCall(foundOld + foundNew + foundNothing, [&] { return install(bundle, way); });
            QVERIFY(end != End::Failed);
            Tree seen = readTree(bundle.target);
            if (way == Way::Renames && seen.isEmpty()) {
                ++foundNothing;
                QCOMPARE(readTree(bundle.backup()), bundle.oldTree);
                QCOMPARE(readTree(bundle.source()), bundle.newTree);
                continue;
            }
            QVERIFY(isByFile(way) ? isLoadable(bundle, seen) : seen == bundle.oldTree || seen == done);
            cleanupLeftovers(bundle.target);
            seen = readTree(bundle.target);
            QVERIFY(seen == bundle.oldTree || seen == done);
            QVERIFY(bundle.isTidy());
            ++(seen == done ? foundNew : foundOld);
        }
        qInfo("killed %d times: the old version %d times, the new one %d times, nothing %d times",
              foundOld + foundNew + foundNothing - 1, foundOld, foundNew, foundNothing);
        QVERIFY(foundOld > 10);
        QVERIFY(foundNew > 1);
        QCOMPARE(foundNothing, way == Way::Renames ? 1 : 0);
    }

    // A version that somebody has put there by hand after a crash stays as it is.
    void versionByHand_data()
    {
        QTest::addColumn<bool>("inPlace");
        QTest::newRow("file over file") << true;
        QTest::newRow("as a new folder") << false;
    }
    void versionByHand()
    {
        QFETCH(bool, inPlace);
        const BundleFixture bundle;
        cutOffHalfWay(bundle);
        const Tree byHand{{bundle.binary, "another binary"}, {u"data/added/it"_s, "new"}};
        Tree expected = inPlace ? readTree(bundle.target) : Tree();
        expected.insert(byHand);
        expected.removeIf([](const auto &file) { return file.key().endsWith(u".old"); });
        if (!inPlace) {
            QVERIFY(QDir(bundle.target).removeRecursively());
        }
        writeTree(bundle.target, byHand);
        cleanupLeftovers(bundle.target);
        QCOMPARE(readTree(bundle.target), expected);
        QVERIFY(bundle.isTidy());
        QVERIFY(install(bundle, Way::Files));
    }

    void goingBack()
    {
        const BundleFixture bundle;
        const int half = cutOffHalfWay(bundle);
        int calls = 0;
        for (End end = End::Killed; end == End::Killed; ++calls) {
            bundle.reset();
            QCOMPARE(killAtCall(half, [&] { return install(bundle, Way::Files); }), End::Killed);
            end = killAtCall(calls, [&] {
                cleanupLeftovers(bundle.target);
                return true;
            });
            QVERIFY(isLoadable(bundle, readTree(bundle.target)));
            cleanupLeftovers(bundle.target);
            QCOMPARE(readTree(bundle.target), bundle.oldTree);
            QVERIFY(bundle.isTidy());
        }
        QVERIFY(calls > 10);
    }
};

QTEST_GUILESS_MAIN(TestInstallationCrash)
#include "tst_installation_crash.moc"
