// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateTypes.h"

#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <system_error>

namespace tallyforge {

/// A path as the standard library takes it, and as Qt does.
[[nodiscard]] std::filesystem::path nativePath(const QString &path);
[[nodiscard]] QString qtPath(const std::filesystem::path &path);

/// Something lies at path, be it a link that leads nowhere.
[[nodiscard]] bool isThere(const QString &path);

/// Visits all that lies below root, each folder before its content, hidden entries included; links
/// aren't followed, and a folder that may not be read is passed over if options say so. The walk
/// ends when visit returns false. Returns the error of the file system that has ended it, if any.
std::error_code
walkTree(const QString &root,
         const std::function<bool(const std::filesystem::directory_entry &)> &visit,
         std::filesystem::directory_options options = std::filesystem::directory_options::none);

/// All that isn't a folder below root, as relative paths, hidden files included. Links to folders
/// aren't followed.
[[nodiscard]] QStringList filesBelow(const QString &root);

/// Moves a file or a folder on one file system, in place of another if that can be.
[[nodiscard]] bool moveOver(const QString &from, const QString &to);

/// Copies a folder with all that lies in it to a path where nothing is; links stay links. A failure
/// leaves the part that was copied so far.
[[nodiscard]] bool copyTree(const QString &from, const QString &to);

/// Waits until a whole folder would survive a power cut. The error names the entry that could not
/// be written.
[[nodiscard]] Outcome syncTree(const QString &root);

/// Opens the folders at and below root for their owner: a package may have brought some whose
/// access modes keep even them out.
void letOwnerIn(const QString &root);

/// Removes a file, a link (never what it points to) or a folder with all that lies in it. Succeeds
/// when there is nothing.
[[nodiscard]] Outcome removeTree(const QString &path);

} // namespace tallyforge
