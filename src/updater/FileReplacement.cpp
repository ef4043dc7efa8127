// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/FileReplacement.h"

#include "common/PrivateFile.h"
#include "platform/Disk.h"
#include "updater/FileTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include <algorithm>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

struct Step
{
    QString file; // relative to the bundle
    bool hadOld = false;
};

QString recordPath(const QString &target)
{
    return besideBundle(target, "undo"_L1);
}

QString oldPath(const QString &dst)
{
    return dst + u".old"_s;
}

// A copy gets its name only when it is whole.
QString copyPath(const QString &dst)
{
    return dst + u".part"_s;
}

bool saveRecord(const QString &target, const QList<Step> &steps)
{
    QByteArray record;
    for (const Step &step : steps) {
        record += (step.hadOld ? '=' : '+') + step.file.toUtf8() + '\0';
    }
    return savePrivateFile(recordPath(target), record) &&
           platform::syncToDisk(QFileInfo(recordPath(target)).path());
}

std::optional<QList<Step>> loadRecord(const QString &target)
{
    QFile file(recordPath(target));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QList<Step> steps;
    const QByteArrayList lines = file.readAll().split('\0');
    for (const QByteArray &line : lines) {
        const QString path =
            QDir::cleanPath(QString::fromUtf8(line.sliced(line.isEmpty() ? 0 : 1)));
        if (!path.isEmpty() && QDir::isRelativePath(path) && !path.startsWith("../"_L1)) {
            steps.append({path, line.startsWith('=')});
        }
    }
    return steps;
}

bool moveOver(const QString &from, const QString &to)
{
    std::error_code error;
    fs::rename(nativePath(from), nativePath(to), error);
    return !error;
}

// The old file gets a second name, so that there is no moment without a file at the first.
bool setAside(const QString &dst)
{
    std::error_code error;
    fs::create_hard_link(nativePath(dst), nativePath(oldPath(dst)), error);
    return !error || moveOver(dst, oldPath(dst));
}

bool bring(const QString &src, const QString &dst)
{
    if (moveOver(src, dst)) {
        return true;
    }
    const QString copy = copyPath(dst);
    std::error_code error;
    fs::copy_file(nativePath(src), nativePath(copy), fs::copy_options::overwrite_existing, error);
    return !error && platform::syncToDisk(copy) && moveOver(copy, dst);
}

// May be cut off and done again at any point. The record goes last, and only if all is undone.
void undo(const QString &target, const QList<Step> &steps)
{
    const QDir bundle(target);
    bool undone = true;
    std::for_each(steps.crbegin(), steps.crend(), [&](const Step &step) {
        const QString dst = bundle.filePath(step.file);
        undone &= removeTree(copyPath(dst)).isEmpty();
        if (!step.hadOld) {
            undone &= removeTree(dst).isEmpty();
        } else if (isThere(oldPath(dst))) {
            // A folder can't be moved over a file. Two names of one file both stay.
            undone &= moveOver(oldPath(dst), dst) ||
                      (removeTree(dst).isEmpty() && moveOver(oldPath(dst), dst));
            QFile::remove(oldPath(dst));
        }
    });
    if (undone) {
        QFile::remove(recordPath(target));
    }
}

QList<Step> planReplacement(const QStringList &files, const QDir &bundle)
{
    QList<Step> steps;
    steps.reserve(files.size());
    for (const QString &file : files) {
        steps.append({file, isThere(bundle.filePath(file))});
    }
    return steps;
}

// What an earlier update has left must not be what an undo brings back.
bool removeEarlier(const Step &step, const QDir &bundle)
{
    const QString old = oldPath(bundle.filePath(step.file));
    return !step.hadOld || !isThere(old) || QFile::remove(old);
}

} // namespace

QString besideBundle(const QString &target, QLatin1StringView purpose)
{
    const QFileInfo bundle(QDir::cleanPath(target));
    return QDir(bundle.path()).filePath(u"."_s + bundle.fileName() + u'.' + purpose);
}

QString replaceFiles(const QString &source, const QString &target)
{
    const QStringList files = filesBelow(source);
    if (files.isEmpty()) {
        return QCoreApplication::translate("PluginUpdater", "the package is empty");
    }
    const QDir bundle(target);
    const QList<Step> steps = planReplacement(files, bundle);
    const QString inUse = QCoreApplication::translate("PluginUpdater", "%1 is in use");
    const QString notWritten = QCoreApplication::translate("PluginUpdater", "could not write %1");
    for (const Step &step : steps) {
        if (!removeEarlier(step, bundle)) {
            return inUse.arg(step.file);
        }
    }
    if (!saveRecord(target, steps)) {
        return notWritten.arg(recordPath(target));
    }
    for (const Step &step : steps) {
        const QString dst = bundle.filePath(step.file);
        QDir().mkpath(QFileInfo(dst).path());
        const bool ready = !step.hadOld || setAside(dst);
        if (!ready || !bring(QDir(source).filePath(step.file), dst)) {
            undo(target, steps);
            return (ready ? notWritten : inUse).arg(step.file);
        }
    }
    QFile::remove(recordPath(target));
    return {};
}

void undoInterruptedReplacement(const QString &target)
{
    if (const auto steps = loadRecord(target)) {
        undo(target, *steps);
    }
}

} // namespace tallyforge
