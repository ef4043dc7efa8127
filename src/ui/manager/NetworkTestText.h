// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QJsonObject;
class QString;

namespace tallyforge {

/// How far a device's network test has got: a line for each check that it has made, and how it
/// stands as a whole.
[[nodiscard]] QString networkTestText(const QJsonObject &reply);
/// Whether the device has ended its test.
[[nodiscard]] bool isNetworkTestDone(const QJsonObject &reply);

} // namespace tallyforge
