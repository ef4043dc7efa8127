// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

/// The system that a package is made for. Making and installing a package use the same functions.
namespace tallyforge::platform {

/// The key of this system's packages in the update manifest: the system and the processor that the
/// plug-in was built for, for example "linux-x86_64".
[[nodiscard]] QString platformKey();

/// The plug-in's binary, from the plug-in's own folder.
[[nodiscard]] QString binaryPath();

} // namespace tallyforge::platform
