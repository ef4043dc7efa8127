// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "sources/WrapperSource.h"

#include <QString>

namespace tallyforge {

/// The OBS source "tallyforge_text": a template whose placeholders show live values, drawn by a
/// private instance of OBS's own text source, so that all its font and colour settings work.
///
/// Threads: a new instance is prepared by the thread that creates it and then published. From there
/// on the template and the inner source's settings are touched by OBS's graphics thread alone: OBS
/// calls update() on it, and a change of the data only raises a flag that this thread looks at
/// before the next frame. So neither needs a lock, and libobs's settings objects, which have none
/// of their own, are never written while they are read.
class TextSource final : public WrapperSource
{
public:
    static constexpr const char *defaultTemplate = "{home_score} - {away_score}";

    static void registerSource();
    /// Refreshes all instances whenever App's live data change.
    static void followLiveData();

private:
    friend class WrapperSource;

    explicit TextSource(const char *innerKind);
    ~TextSource() = default;

    static void *create(obs_data_t *settings, obs_source_t *owner);
    static void destroy(void *data);
    static obs_properties_t *properties(void *data);
    static void refreshChanged(void *param, float seconds);

    void update(obs_data_t *settings);
    void apply(obs_data_t *innerSettings);

    QString m_template;
};

} // namespace tallyforge
