// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QNetworkRequest>

#include <chrono>

class QNetworkReply;

namespace tallyforge {

struct UpdateConfig;

/// A request of the updater, which follows redirects that are no less safe, past every cache.
/// silence is how long it may stand still.
[[nodiscard]] QNetworkRequest updateRequest(const QString &url, const UpdateConfig &config,
                                            std::chrono::milliseconds silence);

/// Whether a reply has come to its end, or so far, without an error and with a status of success.
[[nodiscard]] bool succeeded(const QNetworkReply &reply);

} // namespace tallyforge
