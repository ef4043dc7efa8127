// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/FileTree.h" // removeTree()

#include <QString>

namespace tallyforge {

/// Puts the bundle at source in place of the one at target; the old one then lies at backup, whose
/// earlier content goes. Where whole bundles can't be swapped, or allowSwap is false, the files are
/// replaced one by one, and each old one stays beside its successor with ".old" appended. On
/// failure the target is as it was, and the error is part of a sentence. Waits for the disk, so
/// that a power cut afterwards costs nothing; needs no thread of its own.
[[nodiscard]] Outcome installTree(const QString &source, const QString &target,
                                  const QString &backup, bool allowSwap);

/// At the start of OBS: brings the old files back where an installation was cut off half-way, and
/// removes the rests of installations in the bundle at root and beside it. Does nothing while
/// another OBS installs.
void cleanupLeftovers(const QString &root);

} // namespace tallyforge
