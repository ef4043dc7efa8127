// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/BundleInstaller.h"

#include "platform/ExchangeFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QList>

namespace tallyforge {

namespace {

struct Step
{
    QString dst;
    QString old;
    bool hadOld = false;
};

QString text(const char *source)
{
    return QCoreApplication::translate("PluginUpdater", source);
}

bool swap(const QString &source, const QString &target, const QString &backup)
{
    if (!removeTree(backup).isEmpty()) {
        return false;
    }
    QDir().mkpath(QFileInfo(backup).path());
    if (platform::exchangeFolders(source, target)) {
        QDir().rename(source, backup);
        return true;
    }
    if (!QDir().rename(target, backup)) {
        return false;
    }
    if (QDir().rename(source, target)) {
        return true;
    }
    QDir().rename(backup, target);
    return false;
}

void undo(const QList<Step> &steps)
{
    for (auto step = steps.crbegin(); step != steps.crend(); ++step) {
        QFile::remove(step->dst);
        if (step->hadOld) {
            QFile::rename(step->old, step->dst);
        }
    }
}

InstallResult replaceFiles(const QString &source, const QString &target)
{
    QStringList files;
    QDirIterator entries(source, QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        files.append(QDir(source).relativeFilePath(entries.next()));
    }
    if (files.isEmpty()) {
        return {false, text(QT_TRANSLATE_NOOP("PluginUpdater", "the package is empty"))};
    }
    QList<Step> steps;
    for (const QString &file : std::as_const(files)) {
        const QString dst = QDir(target).filePath(file);
        const QString src = QDir(source).filePath(file);
        Step step{dst, dst + u".old", false};
        QDir().mkpath(QFileInfo(dst).path());
        if (QFileInfo::exists(dst)) {
            QFile::remove(step.old);
            if (!QFile::rename(dst, step.old)) {
                undo(steps);
                return {false, text(QT_TRANSLATE_NOOP("PluginUpdater", "%1 is in use")).arg(file)};
            }
            step.hadOld = true;
        }
        steps.append(step);
        if (!QFile::rename(src, dst) && !QFile::copy(src, dst)) {
            undo(steps);
            return {false,
                    text(QT_TRANSLATE_NOOP("PluginUpdater", "could not write %1")).arg(file)};
        }
    }
    return {true, {}};
}

} // namespace

InstallResult installTree(const QString &source, const QString &target, const QString &backup,
                          bool allowSwap)
{
    if (!QFileInfo(source).isDir()) {
        return {false, text(QT_TRANSLATE_NOOP("PluginUpdater", "nothing to install"))};
    }
    if (allowSwap && QFileInfo(target).isDir() && swap(source, target, backup)) {
        return {true, {}};
    }
    return replaceFiles(source, target);
}

void cleanupLeftovers(const QString &root)
{
    if (!QFileInfo(root).isDir()) {
        return;
    }
    QDirIterator entries(root, {QStringLiteral("*.old")}, QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        QFile::remove(entries.next());
    }
}

QString removeTree(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return {};
    }
    const bool removed =
        info.isDir() && !info.isSymLink() ? QDir(path).removeRecursively() : QFile::remove(path);
    return removed ? QString()
                   : text(QT_TRANSLATE_NOOP("PluginUpdater", "could not remove %1")).arg(path);
}

} // namespace tallyforge
