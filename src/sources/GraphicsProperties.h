// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <obs.h>

namespace tallyforge {

/// The settings of a graphics source.
namespace graphics {

inline constexpr const char *idKey = "output_id";
inline constexpr const char *nameKey = "output_name"; ///< as it was when the page was chosen
inline constexpr const char *urlKey = "url";
inline constexpr const char *widthKey = "width"; ///< pixels
inline constexpr const char *heightKey = "height";

inline constexpr int smallestSize = 16;
inline constexpr int largestSize = 8192;

} // namespace graphics

/// The rows of OBS's dialog for a graphics source: the list of the account's graphics with a button
/// that lists them anew, and the page's size. source is null for the properties of the kind. The
/// caller owns the result. Any thread.
[[nodiscard]] obs_properties_t *graphicsProperties(obs_source_t *source);

} // namespace tallyforge
