// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <obs.hpp>

namespace tallyforge {

/// A source of ours that a private source of OBS's own draws for it.
class WrapperSource
{
public:
    WrapperSource(const WrapperSource &) = delete;
    WrapperSource &operator=(const WrapperSource &) = delete;

protected:
    WrapperSource(const char *innerKind, const char *innerName)
        : m_inner(obs_source_create_private(innerKind, innerName, nullptr))
    {
    }
    ~WrapperSource() = default;

    [[nodiscard]] obs_source_t *inner() const { return m_inner; }

    template <class Source> static Source *self(void *data) { return static_cast<Source *>(data); }

    /// What OBS is told of a kind of source, but for its name, defaults and size.
    template <class Source> static obs_source_info describe(const char *id, obs_icon_type icon)
    {
        obs_source_info info{};
        info.id = id;
        info.type = OBS_SOURCE_TYPE_INPUT;
        info.output_flags = OBS_SOURCE_VIDEO | OBS_SOURCE_CUSTOM_DRAW;
        info.icon_type = icon;
        info.create = Source::create;
        info.destroy = Source::destroy;
        info.update = [](void *data, obs_data_t *settings) {
            self<Source>(data)->update(settings);
        };
        info.get_properties = Source::properties;
        info.video_render = [](void *data, gs_effect_t *) {
            obs_source_video_render(self<Source>(data)->inner());
        };
        return info;
    }

private:
    const OBSSourceAutoRelease m_inner;
};

} // namespace tallyforge
