// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

/// What was found in an unpacked package: the path of the plug-in's bundle, or a message that says
/// to the user why the package is refused.
struct StagedPackage
{
    QString bundle;
    QString message;
};

/// Judges an unpacked package: it holds one bundle made of folders and ordinary files alone, with
/// the plug-in's binary at binaryPath below it. Such a bundle gets access modes with which OBS can
/// load it, and which give nobody but the owner a right to change it. May block on the disk; needs
/// no thread of its own.
[[nodiscard]] StagedPackage inspectExtracted(const QString &extracted, const QString &binaryPath);

} // namespace tallyforge
