// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

namespace tallyforge {

/// Adds the dock to OBS's window, to be called after App::init(). Without a window, as in a host of
/// libobs alone, there is no dock. textTemplate is what a new text source shows; it is kept.
void dock_register(const char *textTemplate);
/// Removes the dock, unless it is gone already: it goes by itself when OBS ends, because the
/// front end ends before the modules are unloaded. To be called before App::shutdown().
void dock_unregister();

} // namespace tallyforge
