// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QNetworkRequest>
#include <QString>

#include <chrono>

class QNetworkReply;

namespace tallyforge {

struct LanAddress;

/// Bytes of an answer that are read: room for a device's whole log, and read into JSON within a few
/// milliseconds.
inline constexpr qint64 maxHttpAnswer = qint64(1536) * 1024;

/// A request to a path of the device, without a sign-in. It follows redirects within the device
/// only. transfer is how long it may stand still.
[[nodiscard]] QNetworkRequest httpRequest(const LanAddress &address, const QString &path,
                                          std::chrono::milliseconds transfer);

/// Aborts the reply once it has taken longer than limit or is larger than maxHttpAnswer. Its status
/// stays known.
QNetworkReply *bounded(QNetworkReply *reply, std::chrono::milliseconds limit);

} // namespace tallyforge
