// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QLatin1StringView>
#include <QString>

namespace tallyforge {

/// The admin password of every new device.
inline constexpr QLatin1StringView factoryPassword{"quietmoose"};
inline constexpr qsizetype leastPasswordLength = 8;

/// Whether a device may be given this password.
[[nodiscard]] inline bool isGoodPassword(const QString &password)
{
    return password.size() >= leastPasswordLength && password.toLower() != factoryPassword;
}

} // namespace tallyforge
