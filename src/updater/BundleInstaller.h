// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

struct InstallResult
{
    bool ok = false;
    QString error; ///< why not, as part of a sentence
};

/// Puts the bundle at source in place of the one at target; on success the old one lies at backup,
/// whose earlier content goes, and source is gone. Where whole bundles can't be swapped, or
/// allowSwap is false, the files are replaced one by one, and each old one stays beside its
/// successor with
/// ".old" appended. On failure the target is as it was. Blocks on the disk; needs no thread of its
/// own.
[[nodiscard]] InstallResult installTree(const QString &source, const QString &target,
                                        const QString &backup, bool allowSwap);

/// At the start of OBS: brings back the old version where an installation was cut off half-way, and
/// removes what earlier installations have left in and beside the bundle at root.
void cleanupLeftovers(const QString &root);

/// Removes a file, a link (never what it points to) or a folder with all that lies in it. Empty on
/// success and when there is nothing, otherwise what went wrong.
[[nodiscard]] QString removeTree(const QString &path);

} // namespace tallyforge
