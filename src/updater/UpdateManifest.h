// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "updater/UpdateTypes.h"

#include <QByteArray>
#include <QStringView>

class QUrl;

namespace tallyforge {

/// -1, 0 or 1. Parts count as numbers, missing ones and ones without a number as 0; a leading "v"
/// counts for nothing. A pre-release is lower than its version, and equal to every other one of it.
[[nodiscard]] int compareVersions(QStringView a, QStringView b);

/// Whether the updater may go to an address: HTTPS, or plain HTTP to this computer.
[[nodiscard]] bool urlAllowed(const QUrl &url);

/// Judges the bytes of a manifest for the computer and the version that config tells of. Needs no
/// thread of its own.
[[nodiscard]] ManifestResult parseManifest(const QByteArray &bytes, const UpdateConfig &config);

} // namespace tallyforge
