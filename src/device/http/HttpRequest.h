// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QNetworkRequest>
#include <QString>

#include <chrono>

class QNetworkReply;

namespace tallyforge {

struct LanAddress;

/// Bytes of an answer that are read; a device's own answers are a fraction of it.
inline constexpr qint64 maxHttpAnswer = 1 << 20;

/// A request to a path of the device, without a sign-in. transfer is how long it may stand still.
[[nodiscard]] QNetworkRequest httpRequest(const LanAddress &address, const QString &path,
                                          std::chrono::milliseconds transfer);

/// Holds an answer to maxHttpAnswer: more of it stands still until it runs out of time.
QNetworkReply *bounded(QNetworkReply *reply);

} // namespace tallyforge
