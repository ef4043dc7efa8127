// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/BundleInstaller.h"

#include "platform/Disk.h"
#include "platform/ExchangeFolders.h"
#include "updater/FileReplacement.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <tuple>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

using platform::Exchange;

QString newBundlePath(const QString &target)
{
    return besideBundle(target, "new"_L1);
}

// Nothing depends on an old version beside a new one that is in place, so keeping it may fail, and
// so may tidying up: the next start does it.
void keepOld(const QString &old, const QString &backup)
{
    if (!moveOver(old, backup) && !copyTree(old, backup)) {
        std::ignore = removeTree(backup);
    }
    std::ignore = removeTree(old);
}

// The staging folder lies on another file system: a copy beside the target can trade places with
// it.
bool exchangeCopy(const QString &source, const QString &target, const QString &backup)
{
    const QString copy = newBundlePath(target);
    if (!copyTree(source, copy) || !syncTree(copy).ok ||
        platform::exchangeFolders(copy, target) != Exchange::Done) {
        std::ignore = removeTree(copy);
        return false;
    }
    keepOld(copy, backup);
    return true;
}

// Between the two there is no plug-in: the way for a file system that can't do better.
bool renameBoth(const QString &source, const QString &target, const QString &backup)
{
    if (!moveOver(target, backup)) {
        return false;
    }
    if (moveOver(source, target)) {
        return true;
    }
    std::ignore =
        moveOver(backup, target); // if this fails too, replaceFiles() brings all new files
    return false;
}

bool swapBundles(const QString &source, const QString &target, const QString &backup)
{
    if (!removeTree(backup).ok) {
        return false;
    }
    QDir().mkpath(QFileInfo(backup).path());
    switch (platform::exchangeFolders(source, target)) {
    case Exchange::Done:
        keepOld(source, backup);
        return true;
    case Exchange::OtherFileSystem:
        return exchangeCopy(source, target, backup);
    case Exchange::NotPossible:
        return renameBoth(source, target, backup);
    }
    return false;
}

bool finishInterrupted(const QString &target)
{
    std::ignore = removeTree(newBundlePath(target));
    return undoInterruptedReplacement(target);
}

} // namespace

Outcome installTree(const QString &source, const QString &target, const QString &backup,
                    bool allowSwap)
{
    if (!QFileInfo(source).isDir()) {
        return Outcome::failure(QCoreApplication::translate("PluginUpdater", "nothing to install"));
    }
    const QString parent = QFileInfo(QDir::cleanPath(target)).path();
    const platform::FolderLock lock(parent);
    if (lock.isTaken()) {
        return Outcome::failure(
            QCoreApplication::translate("PluginUpdater", "%1 is in use").arg(target));
    }
    if (!finishInterrupted(target)) { // the next start would do that to the new bundle
        return Outcome::failure(
            QCoreApplication::translate("PluginUpdater", "could not write %1").arg(target));
    }
    // A file system may put a folder in its place long before the content of its files: without
    // this, a power cut would leave a plug-in of empty files.
    if (const Outcome synced = syncTree(source); !synced.ok) {
        return synced;
    }
    Outcome outcome;
    if (!allowSwap || !QFileInfo(target).isDir() || !swapBundles(source, target, backup)) {
        outcome = replaceFiles(source, target);
    }
    std::ignore = platform::syncToDisk(parent);
    return outcome;
}

void cleanupLeftovers(const QString &root)
{
    const platform::FolderLock lock(QFileInfo(QDir::cleanPath(root)).path());
    if (lock.isTaken() || !QFileInfo(root).isDir()) {
        return;
    }
    if (!finishInterrupted(root)) {
        return; // a later start may need the old files
    }
    const QStringList files = filesBelow(root);
    for (const QString &file : files) {
        if (file.endsWith(u".old")) {
            QFile::remove(QDir(root).filePath(file));
        }
    }
}

} // namespace tallyforge
