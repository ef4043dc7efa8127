// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "sources/WrapperSource.h"

#include <atomic>

namespace tallyforge {

/// The OBS source "tallyforge_graphics": a page of the account that draws the scoreboard, shown by
/// a private instance of OBS's browser source. Its address is part of the settings, so that it
/// shows without a sign-in as well.
///
/// Threads: OBS updates, shows and hides a source on its graphics thread. Its properties are made
/// and used on the main thread, or on any other by remote control.
class GraphicsSource final : public WrapperSource
{
public:
    static void registerSource();

private:
    friend class WrapperSource;

    explicit GraphicsSource(obs_source_t *owner);
    ~GraphicsSource();

    static void *create(obs_data_t *settings, obs_source_t *owner);
    static void destroy(void *data);
    static obs_properties_t *properties(void *data);

    void update(obs_data_t *settings);
    void setShown(bool shown);
    void setActive(bool active);

    obs_source_t *const m_owner; // the source that the user sees
    std::atomic<int> m_width;    // pixels, as all sizes here
    std::atomic<int> m_height;
    bool m_shown = false;
    bool m_active = false;
};

} // namespace tallyforge
