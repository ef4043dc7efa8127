// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QJsonObject;
class QString;

namespace tallyforge {

/// A device's report of itself for the user, one line for each value: the ones that people ask for
/// first, then the others by name. Lists and the token of its web pages are left out.
[[nodiscard]] QString statusText(const QJsonObject &status);
/// The sport and the values of a scoreboard's envelope, one line each.
[[nodiscard]] QString scoreboardText(const QJsonObject &envelope);

} // namespace tallyforge
