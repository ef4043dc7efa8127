// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/GraphicsSource.h"

#include "plugin/Log.h"
#include "sources/GraphicsProperties.h"

#include <QString>

#include <obs-module.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr const char *innerKind = "browser_source";

constexpr int defaultWidth = 1920;
constexpr int defaultHeight = 1080;

// A page is drawn over the picture, so it must not paint a ground of its own.
constexpr const char *pageStyle =
    "body { background-color: rgba(0, 0, 0, 0); margin: 0px auto; overflow: hidden; }";

int sizeIn(obs_data_t *settings, const char *key, int fallBack)
{
    const long long size = obs_data_get_int(settings, key);
    return size < graphics::smallestSize ? fallBack
                                         : int(std::min<long long>(size, graphics::largestSize));
}

void setDefaults(obs_data_t *settings)
{
    obs_data_set_default_int(settings, graphics::widthKey, defaultWidth);
    obs_data_set_default_int(settings, graphics::heightKey, defaultHeight);
}

obs_data_t *browserSettings(const char *url, int width, int height)
{
    obs_data_t *settings = obs_data_create();
    obs_data_set_string(settings, "url", url);
    obs_data_set_int(settings, "width", width);
    obs_data_set_int(settings, "height", height);
    obs_data_set_int(settings, "fps", 30);
    obs_data_set_bool(settings, "fps_custom", true);
    obs_data_set_bool(settings, "reroute_audio", false);
    obs_data_set_bool(settings, "shutdown", false);
    obs_data_set_bool(settings, "restart_when_active", false);
    obs_data_set_string(settings, "css", pageStyle);
    return settings;
}

} // namespace

GraphicsSource::GraphicsSource(obs_source_t *owner)
    : WrapperSource(innerKind, "Tallyforge graphics")
    , m_owner(owner)
    , m_width(defaultWidth)
    , m_height(defaultHeight)
{
}

// OBS hides no source before it destroys it. Others may hold the inner one for a moment longer, and
// would take it for one that is on show.
GraphicsSource::~GraphicsSource()
{
    setActive(false);
    setShown(false);
}

void *GraphicsSource::create(obs_data_t *settings, obs_source_t *owner)
{
    if (obs_get_source_output_flags(innerKind) == 0) {
        log::error(u"this OBS has no browser source, so graphics cannot be shown"_s);
        return nullptr;
    }
    auto *source = new GraphicsSource(owner);
    source->update(settings);
    return source;
}

void GraphicsSource::destroy(void *data)
{
    delete self<GraphicsSource>(data);
}

void GraphicsSource::update(obs_data_t *settings)
{
    const int width = sizeIn(settings, graphics::widthKey, defaultWidth);
    const int height = sizeIn(settings, graphics::heightKey, defaultHeight);
    m_width = width;
    m_height = height;
    const OBSDataAutoRelease inside =
        browserSettings(obs_data_get_string(settings, graphics::urlKey), width, height);
    obs_source_update(inner(), inside);
}

void GraphicsSource::setShown(bool shown)
{
    if (shown != m_shown) {
        m_shown = shown;
        shown ? obs_source_inc_showing(inner()) : obs_source_dec_showing(inner());
    }
}

void GraphicsSource::setActive(bool active)
{
    if (active != m_active) {
        m_active = active;
        active ? obs_source_inc_active(inner()) : obs_source_dec_active(inner());
    }
}

obs_properties_t *GraphicsSource::properties(void *data)
{
    return graphicsProperties(data ? self<GraphicsSource>(data)->m_owner : nullptr);
}

void GraphicsSource::registerSource()
{
    obs_source_info info = describe<GraphicsSource>("tallyforge_graphics", OBS_ICON_TYPE_BROWSER);
    info.get_name = [](void *) { return obs_module_text("TallyforgeGraphics"); };
    info.get_defaults = setDefaults;
    info.get_width = [](void *data) { return uint32_t(self<GraphicsSource>(data)->m_width); };
    info.get_height = [](void *data) { return uint32_t(self<GraphicsSource>(data)->m_height); };
    info.show = [](void *data) { self<GraphicsSource>(data)->setShown(true); };
    info.hide = [](void *data) { self<GraphicsSource>(data)->setShown(false); };
    info.activate = [](void *data) { self<GraphicsSource>(data)->setActive(true); };
    info.deactivate = [](void *data) { self<GraphicsSource>(data)->setActive(false); };
    obs_register_source(&info);
}

} // namespace tallyforge
