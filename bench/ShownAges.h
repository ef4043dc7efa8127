// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonArray>
#include <QMutex>
#include <QMutexLocker>

#include <obs.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tallyforge::bench {

/// OBS's only live text shows when it was sent: nanoseconds of the steady clock. Notes for each
/// frame in which it shows another time how long ago that was.
class ShownAges
{
public:
    ShownAges()
    {
        obs_enum_all_sources(findText, this);
        obs_add_main_rendered_callback(look, this);
    }
    ~ShownAges()
    {
        obs_remove_main_rendered_callback(look, this);
        obs_source_release(m_source);
    }
    ShownAges(const ShownAges &) = delete;
    ShownAges &operator=(const ShownAges &) = delete;

    /// Milliseconds.
    [[nodiscard]] QJsonArray found()
    {
        const QMutexLocker lock(&m_mutex);
        return m_found;
    }

private:
    // On the graphics thread, once it has drawn the frame.
    static void look(void *data)
    {
        auto *self = static_cast<ShownAges *>(data);
        const std::string before = self->m_text;
        obs_data_t *settings = obs_source_get_settings(self->m_source);
        self->m_text = obs_data_get_string(settings, "text");
        obs_data_release(settings);
        if (self->m_text != before && !before.empty()) {
            const auto now = std::chrono::steady_clock::now().time_since_epoch();
            const double age = double(std::chrono::nanoseconds(now).count() -
                                      std::strtoll(self->m_text.c_str(), nullptr, 10));
            const QMutexLocker lock(&self->m_mutex);
            self->m_found.append(age / 1e6);
        }
    }
    // The private source that draws the text for ours.
    static bool findText(void *data, obs_source_t *source)
    {
        auto *self = static_cast<ShownAges *>(data);
        if (obs_obj_is_private(source) &&
            std::string_view(obs_source_get_id(source)).starts_with("text_")) {
            self->m_source = obs_source_get_ref(source);
        }
        return self->m_source == nullptr;
    }

    obs_source_t *m_source = nullptr; // ours to release; null if OBS has no live text
    std::string m_text;               // of the graphics thread
    QMutex m_mutex;
    QJsonArray m_found;
};

} // namespace tallyforge::bench
