// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateTypes.h"

#include <QString>

namespace tallyforge {

/// The folder of the plug-in's bundle in an unpacked package, empty if the package doesn't hold
/// exactly one folder and nothing else.
[[nodiscard]] QString bundleIn(const QString &extracted);

/// Judges an unpacked package: it holds one bundle made of folders and ordinary files alone, with
/// the plug-in's binary at binaryPath below it. Such a bundle gets access modes with which OBS can
/// load it, and which give nobody but the owner a right to change it. The error is a sentence for
/// the user. May block on the disk; needs no thread of its own.
[[nodiscard]] Outcome inspectExtracted(const QString &extracted, const QString &binaryPath);

} // namespace tallyforge
