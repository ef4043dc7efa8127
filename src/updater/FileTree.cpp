// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/FileTree.h"

#include "platform/Disk.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <system_error>

namespace fs = std::filesystem;

namespace tallyforge {

namespace {

// A package may have brought folders whose access modes keep even their owner out.
void letOwnerIn(const fs::path &root)
{
    std::error_code error;
    if (!fs::is_directory(fs::symlink_status(root, error))) {
        return;
    }
    fs::permissions(root, fs::perms::owner_all, fs::perm_options::add, error);
    for (fs::directory_iterator entry(root, error), end; !error && entry != end;
         entry.increment(error)) {
        letOwnerIn(entry->path());
    }
}

} // namespace

fs::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

bool isThere(const QString &path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(nativePath(path), error));
}

QStringList filesBelow(const QString &root)
{
    QStringList files;
    const QDir top(root);
    QDirIterator entries(root,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry = entries.nextFileInfo();
        if (entry.isSymLink() || !entry.isDir()) {
            files.append(top.relativeFilePath(entry.filePath()));
        }
    }
    return files;
}

bool copyTree(const QString &from, const QString &to)
{
    std::error_code error;
    fs::copy(nativePath(from), nativePath(to),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    return !error;
}

QString syncTree(const QString &root)
{
    const QDir top(root);
    QDirIterator entries(root,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry = entries.nextFileInfo();
        if (!entry.isSymLink() && !platform::syncToDisk(entry.filePath())) {
            return top.relativeFilePath(entry.filePath());
        }
    }
    return platform::syncToDisk(root) ? QString() : root;
}

QString removeTree(const QString &path)
{
    if (!isThere(path)) {
        return {};
    }
    // A link with a slash behind it would be taken for the folder that it points to.
    const fs::path root = nativePath(QDir::cleanPath(path));
    std::error_code error;
    fs::remove_all(root, error);
    if (error) {
        letOwnerIn(root);
        error.clear();
        fs::remove_all(root, error);
    }
    return error ? QCoreApplication::translate("PluginUpdater", "could not remove %1").arg(path)
                 : QString();
}

} // namespace tallyforge
