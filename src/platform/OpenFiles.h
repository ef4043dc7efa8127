// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QtTypes>

namespace tallyforge::platform {

/// Whether a descriptor that has just been opened is one of the last that this process may have.
[[nodiscard]] bool isNearlyTheLast(qintptr descriptor);

} // namespace tallyforge::platform
