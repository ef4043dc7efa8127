// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/FileTree.h"

#include "platform/Disk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <tuple>

namespace fs = std::filesystem;

namespace tallyforge {

fs::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

QString qtPath(const fs::path &path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

bool isThere(const QString &path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(nativePath(path), error));
}

std::error_code walkTree(const QString &root,
                         const std::function<bool(const fs::directory_entry &)> &visit,
                         fs::directory_options options)
{
    std::error_code error;
    for (fs::recursive_directory_iterator entry(nativePath(root), options, error), end;
         !error && entry != end; entry.increment(error)) {
        if (!visit(*entry)) {
            return {};
        }
    }
    return error;
}

QStringList filesBelow(const QString &root)
{
    QStringList files;
    std::ignore =
        walkTree(root, [&files, top = nativePath(root)](const fs::directory_entry &entry) {
            std::error_code error;
            if (!fs::is_directory(entry.symlink_status(error))) {
                files.append(qtPath(entry.path().lexically_relative(top)));
            }
            return true;
        });
    return files;
}

void letOwnerIn(const QString &root)
{
    const auto open = [](const fs::path &path, fs::file_status status) {
        std::error_code error;
        if (fs::is_directory(status)) {
            fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, error);
        }
        return true;
    };
    std::error_code error;
    const fs::path top = nativePath(root);
    const fs::file_status status = fs::symlink_status(top, error);
    open(top, status);
    if (fs::is_directory(status)) {
        std::ignore = walkTree(
            root,
            [&](const fs::directory_entry &entry) {
                return open(entry.path(), entry.symlink_status(error));
            },
            fs::directory_options::skip_permission_denied);
    }
}

bool moveOver(const QString &from, const QString &to)
{
    std::error_code error;
    fs::rename(nativePath(from), nativePath(to), error);
    return !error;
}

bool copyTree(const QString &from, const QString &to)
{
    std::error_code error;
    fs::copy(nativePath(from), nativePath(to),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    return !error;
}

Outcome syncTree(const QString &root)
{
    const fs::path top = nativePath(root);
    QString unwritten;
    const std::error_code broken = walkTree(root, [&](const fs::directory_entry &entry) {
        std::error_code error;
        if (!entry.is_symlink(error) && !platform::syncToDisk(qtPath(entry.path()))) {
            unwritten = qtPath(entry.path().lexically_relative(top));
        }
        return unwritten.isEmpty();
    });
    if (unwritten.isEmpty() && (broken || !platform::syncToDisk(root))) {
        unwritten = root;
    }
    return unwritten.isEmpty()
               ? Outcome()
               : Outcome::failure(QCoreApplication::translate("PluginUpdater", "could not write %1")
                                      .arg(unwritten));
}

Outcome removeTree(const QString &path)
{
    if (!isThere(path)) {
        return {};
    }
    // A link with a slash behind it would be taken for the folder that it points to.
    const QString root = QDir::cleanPath(path);
    std::error_code error;
    fs::remove_all(nativePath(root), error);
    if (error) {
        letOwnerIn(root);
        error.clear();
        fs::remove_all(nativePath(root), error);
    }
    return error
               ? Outcome::failure(
                     QCoreApplication::translate("PluginUpdater", "could not remove %1").arg(path))
               : Outcome();
}

} // namespace tallyforge
