// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::platform {

enum class Exchange {
    Done,
    OtherFileSystem, ///< they lie on two file systems, so they can't trade places
    NotPossible,     ///< the system or the file system doesn't offer it, or an error came up
};

/// Makes two folders trade places, in one step that no crash can divide. Nothing is changed unless
/// it is done.
[[nodiscard]] Exchange exchangeFolders(const QString &first, const QString &second);

} // namespace tallyforge::platform
