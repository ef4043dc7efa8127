// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

/// The decisions of the build: the version and the addresses of the deployment, each from CMake.
namespace tallyforge::build_config {

/// The plug-in's version, for example "1.0.1".
[[nodiscard]] QString version();

/// The portal's base address: an HTTPS origin without a trailing slash.
[[nodiscard]] QString portalUrl();

/// Where the update manifest lies (HTTPS).
[[nodiscard]] QString updateManifestUrl();

/// The page that a user downloads the plug-in from by hand.
[[nodiscard]] QString downloadPageUrl();

} // namespace tallyforge::build_config
