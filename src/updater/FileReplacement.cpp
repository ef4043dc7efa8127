// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/FileReplacement.h"

#include "common/PrivateFile.h"
#include "platform/Disk.h"
#include "platform/Sha256.h"
#include "updater/FileTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include <algorithm>
#include <optional>
#include <system_error>
#include <tuple>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr auto oldSuffix = ".old"_L1;
constexpr auto partSuffix = ".part"_L1;
constexpr qint64 sumStretch = 65536;

struct Step
{
    QString file; // relative to the bundle
    bool hadOld = false;
    QByteArray newSum; // of the file's content, in hexadecimal digits
    QByteArray oldSum; // the same of the file that was there
};

QString recordPath(const QString &target)
{
    return besideBundle(target, "undo"_L1);
}

QString oldPath(const QString &dst)
{
    return dst + oldSuffix;
}

// A copy gets its name only when it is whole.
QString copyPath(const QString &dst)
{
    return dst + partSuffix;
}

// Empty when the file can't be read.
QByteArray sumOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    platform::Sha256 sum;
    for (QByteArray bytes = file.read(sumStretch); !bytes.isEmpty();
         bytes = file.read(sumStretch)) {
        sum.addData(bytes);
    }
    return file.error() == QFileDevice::NoError ? sum.result().toHex() : QByteArray();
}

bool saveRecord(const QString &target, const QList<Step> &steps)
{
    QByteArray record;
    for (const Step &step : steps) {
        record += (step.hadOld ? '=' : '+') + step.newSum + ' ' + step.oldSum + ' ' +
                  step.file.toUtf8() + '\0';
    }
    return savePrivateFile(recordPath(target), record) &&
           platform::syncToDisk(QFileInfo(recordPath(target)).path());
}

// A record that somebody else has written must not lead to the bundle itself, or out of it.
bool isBelowBundle(const QString &path)
{
    return !path.isEmpty() && QDir::isRelativePath(path) && QDir::cleanPath(path) == path &&
           path != "."_L1 && path != ".."_L1 && !path.startsWith("../"_L1);
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
        const qsizetype first = line.indexOf(' ');
        const qsizetype second = line.indexOf(' ', first + 1);
        const QString path = QString::fromUtf8(line.sliced(second + 1));
        if (first > 0 && second > 0 && isBelowBundle(path)) {
            steps.append({path, line.startsWith('='), line.sliced(1, first - 1),
                          line.sliced(first + 1, second - first - 1)});
        }
    }
    return steps;
}

enum class Found {
    Interrupted, // some files are new, others old or missing
    Complete,    // all files are new
    Foreign,     // somebody has put another version there since
    Unknown,     // a file can't be read now
};

Found compare(const QString &target, const QList<Step> &steps)
{
    const QDir bundle(target);
    bool allNew = true;
    for (const Step &step : steps) {
        const QString dst = bundle.filePath(step.file);
        const QByteArray sum = QFileInfo(dst).isFile() ? sumOf(dst) : QByteArray();
        if (sum.isEmpty() && QFileInfo(dst).isFile()) {
            return Found::Unknown;
        }
        if (sum != step.newSum) {
            allNew = false;
            const bool mayBe = step.hadOld ? sum == step.oldSum || !isThere(dst) : !isThere(dst);
            if (!mayBe) {
                return Found::Foreign;
            }
        }
    }
    return allNew ? Found::Complete : Found::Interrupted;
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
bool undo(const QString &target, const QList<Step> &steps)
{
    const QDir bundle(target);
    bool undone = true;
    std::for_each(steps.crbegin(), steps.crend(), [&](const Step &step) {
        const QString dst = bundle.filePath(step.file);
        undone &= removeTree(copyPath(dst)).ok;
        if (!step.hadOld) {
            undone &= removeTree(dst).ok;
        } else if (isThere(oldPath(dst))) {
            // A folder can't be moved over a file. Two names of one file both stay.
            undone &=
                moveOver(oldPath(dst), dst) || (removeTree(dst).ok && moveOver(oldPath(dst), dst));
            QFile::remove(oldPath(dst));
        }
    });
    return undone && QFile::remove(recordPath(target));
}

QList<Step> planReplacement(const QStringList &files, const QDir &source, const QDir &bundle)
{
    QList<Step> steps;
    steps.reserve(files.size());
    for (const QString &file : files) {
        const QString dst = bundle.filePath(file);
        const bool hadOld = isThere(dst);
        steps.append(
            {file, hadOld, sumOf(source.filePath(file)), hadOld ? sumOf(dst) : QByteArray()});
    }
    return steps;
}

// An undo must not bring back a file that an earlier update has left.
bool removeEarlier(const Step &step, const QDir &bundle)
{
    const QString old = oldPath(bundle.filePath(step.file));
    return !step.hadOld || !isThere(old) || QFile::remove(old);
}

} // namespace

bool isReservedName(const QString &name)
{
    return name.endsWith(oldSuffix) || name.endsWith(partSuffix);
}

QString besideBundle(const QString &target, QLatin1StringView purpose)
{
    const QFileInfo bundle(QDir::cleanPath(target));
    return QDir(bundle.path()).filePath(u"."_s + bundle.fileName() + u'.' + purpose);
}

Outcome replaceFiles(const QString &source, const QString &target)
{
    const QStringList files = filesBelow(source);
    if (files.isEmpty()) {
        return Outcome::failure(
            QCoreApplication::translate("PluginUpdater", "the package is empty"));
    }
    const QDir bundle(target);
    const QList<Step> steps = planReplacement(files, QDir(source), bundle);
    const QString inUse = QCoreApplication::translate("PluginUpdater", "%1 is in use");
    const QString notWritten = QCoreApplication::translate("PluginUpdater", "could not write %1");
    for (const Step &step : steps) {
        if (!removeEarlier(step, bundle)) {
            return Outcome::failure(inUse.arg(step.file));
        }
    }
    if (!saveRecord(target, steps)) {
        return Outcome::failure(notWritten.arg(recordPath(target)));
    }
    for (const Step &step : steps) {
        const QString dst = bundle.filePath(step.file);
        QDir().mkpath(QFileInfo(dst).path());
        const bool ready = !step.hadOld || setAside(dst);
        if (!ready || !bring(QDir(source).filePath(step.file), dst)) {
            std::ignore = undo(target, steps); // the next start does the rest
            return Outcome::failure((ready ? notWritten : inUse).arg(step.file));
        }
    }
    if (!QFile::remove(recordPath(target))) { // it would undo everything at the next start
        std::ignore = undo(target, steps);
        return Outcome::failure(notWritten.arg(recordPath(target)));
    }
    return {};
}

bool undoInterruptedReplacement(const QString &target)
{
    const auto steps = loadRecord(target);
    const Found found = steps ? compare(target, *steps) : Found::Foreign;
    if (steps && found == Found::Interrupted) {
        return undo(target, *steps);
    }
    if (found == Found::Unknown) {
        return false;
    }
    return removeTree(recordPath(target)).ok;
}

} // namespace tallyforge
