// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::platform {

/// Makes two folders on one file system trade places, in one step that a crash can't divide. False,
/// with nothing changed, where the system or the file system doesn't offer that, or on an error.
[[nodiscard]] bool exchangeFolders(const QString &first, const QString &second);

} // namespace tallyforge::platform
