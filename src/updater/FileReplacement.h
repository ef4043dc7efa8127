// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateTypes.h"

#include <QString>

namespace tallyforge {

/// Replaces the files of the bundle at target by those of source one by one, and keeps each old one
/// beside its successor with ".old" appended. On failure the target is as it was. Until the last
/// file is there, a record beside the bundle says how to go back, so that an end of the process at
/// any moment can be undone at the next start. The record knows the sums of all old and new files,
/// so that it undoes nothing that somebody else has put there since.
[[nodiscard]] Outcome replaceFiles(const QString &source, const QString &target);

/// Brings the old files back if a replacement in the bundle at target was cut off. False if some of
/// that is still to be done. A record that can't be read, or doesn't fit the bundle, is removed.
[[nodiscard]] bool undoInterruptedReplacement(const QString &target);

/// Whether a replacement uses this name for its own purposes, so that a package must not hold it.
[[nodiscard]] bool isReservedName(const QString &name);

/// The path of something that an installation keeps beside the bundle at target for a while. The
/// name is hidden: OBS doesn't look for plug-ins there.
[[nodiscard]] QString besideBundle(const QString &target, QLatin1StringView purpose);

} // namespace tallyforge
