// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::platform {

/// The folder that holds this plug-in and nothing else, found from its data folder (as libobs gives
/// it for the module file ""). On Linux the data folder lies one level inside it, in a macOS bundle
/// two. Empty when dataFolder is empty or doesn't lie in a folder of the plug-in's own, as in a
/// system-wide installation, whose upper folders hold other plug-ins.
[[nodiscard]] QString pluginRoot(const QString &dataFolder);

} // namespace tallyforge::platform
