// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <array>
#include <cstdint>

namespace tallyforge {

/// The oldest libobs that the plug-in works with (major, minor, patch): it and newer ones load it,
/// and an update is offered to no older one.
inline constexpr std::array<uint8_t, 3> libobsApi{32, 0, 4};

} // namespace tallyforge
