// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>

namespace tallyforge {

[[nodiscard]] std::filesystem::path nativePath(const QString &path);

/// Something lies at path, be it a link that leads nowhere.
[[nodiscard]] bool isThere(const QString &path);

/// All that isn't a folder below root, as relative paths, hidden files included. Links to folders
/// aren't followed.
[[nodiscard]] QStringList filesBelow(const QString &root);

/// Copies a folder with all that lies in it to a path where nothing is; links stay links. A failure
/// leaves what was copied so far.
[[nodiscard]] bool copyTree(const QString &from, const QString &to);

/// Waits until a whole folder would survive a power cut. Returns the relative path of what couldn't
/// be written, empty on success.
[[nodiscard]] QString syncTree(const QString &root);

/// Removes a file, a link (never what it points to) or a folder with all that lies in it. Empty on
/// success and when there is nothing, otherwise what went wrong.
[[nodiscard]] QString removeTree(const QString &path);

} // namespace tallyforge
