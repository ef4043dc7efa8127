// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>

#include <obs.h>

#include <chrono>
#include <vector>

namespace tallyforge::bench {

/// Nanoseconds of the clock that Python knows as time.monotonic_ns().
[[nodiscard]] inline long long now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Settings of a text source: the font that all series share, and what comes on top of it.
[[nodiscard]] QByteArray textSettings(int size, const QByteArray &more);

/// Merges settings into a source, as OBS does for its user.
void update(obs_source_t *source, const QByteArray &settingsJson);

/// Keeps libobs's log out of the standard output, which is for results.
void logToStderr();

/// A scene that is the whole picture. ObsHost must be up, and outlive it.
class Stage
{
public:
    Stage();
    ~Stage();
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    /// Makes a source and shows it at a place; null if there is no such kind. The stage owns it.
    obs_source_t *add(const char *kind, const QByteArray &settingsJson, float x, float y);
    /// Takes all sources off and ends them.
    void clear();

private:
    obs_scene_t *m_scene;
    std::vector<obs_source_t *> m_sources;
};

} // namespace tallyforge::bench
