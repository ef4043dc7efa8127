// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

namespace tallyforge {

/// Registers the plug-in's OBS sources.
void sources_register();

/// Has every source follow the live data from now on, until App ends. To be called after
/// App::init().
void sources_connect_live_data();

/// The template that a new text source shows.
[[nodiscard]] const char *sources_default_text_template();

} // namespace tallyforge
