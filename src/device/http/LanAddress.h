// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

/// Where a device's web interface is.
struct LanAddress
{
    QString host;
    int port = 0; ///< 0: HTTP's own

    /// Reads "host" or "host:port". Anything else, an IPv6 address among it, is a host as a whole.
    [[nodiscard]] static LanAddress fromText(const QString &text);
};

/// The host that a user may have meant: a device's number or name is completed, a scheme and a path
/// around a host are dropped, a port stays. Empty for a text that can't be one.
[[nodiscard]] QString normalizeLanHost(const QString &text);

} // namespace tallyforge
