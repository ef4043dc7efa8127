// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>

#include <obs.h>

#include <utility>

namespace tallyforge::test {

/// A source of OBS's that is released at the end of a scope.
class ObsSource
{
public:
    ObsSource(const char *kind, const QByteArray &settingsJson)
    {
        obs_data_t *settings = obs_data_create_from_json(settingsJson.constData());
        m_source = obs_source_create(kind, "source", settings, nullptr);
        obs_data_release(settings);
    }
    ObsSource(ObsSource &&other) noexcept
        : m_source(std::exchange(other.m_source, nullptr))
    {
    }
    ~ObsSource() { obs_source_release(m_source); }

    void set(const QByteArray &settingsJson) const
    {
        obs_data_t *settings = obs_data_create_from_json(settingsJson.constData());
        obs_source_update(m_source, settings);
        obs_data_release(settings);
    }
    operator obs_source_t *() const { return m_source; }

private:
    obs_source_t *m_source;
};

} // namespace tallyforge::test
