// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QtTypes>

class QByteArray;

namespace tallyforge::platform {

/// Hands bytes to a connected, non-blocking socket with one call to the system. Returns how many it
/// took: 0 too when the connection is broken, which shows when the socket is read.
[[nodiscard]] qsizetype sendNow(qintptr socketDescriptor, const QByteArray &bytes);

} // namespace tallyforge::platform
