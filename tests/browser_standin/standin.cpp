// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A stand-in for OBS's browser source: it draws a plain card with the address, and appends a line
// of JSON for all that reaches it to the file that BROWSER_STANDIN_RECORD names.

#include <obs-module.h>
#include <obs.hpp>

#include <atomic>
#include <cstdio>
#include <cstdlib>

OBS_DECLARE_MODULE()

namespace {

constexpr float margin = 40;
constexpr uint32_t cardColor = 0xFF704020; // alpha, blue, green, red

struct Page
{
    int number;
    obs_source_t *source;
    OBSSourceAutoRelease text;
    std::atomic<uint32_t> width;
    std::atomic<uint32_t> height;
};

void record(const Page &page, const char *event)
{
    const char *path = std::getenv("BROWSER_STANDIN_RECORD");
    std::FILE *file = path ? std::fopen(path, "a") : nullptr;
    if (!file) {
        return;
    }
    const OBSDataAutoRelease settings = obs_source_get_settings(page.source);
    const OBSDataAutoRelease line = obs_data_create();
    obs_data_set_int(line, "page", page.number);
    obs_data_set_string(line, "event", event);
    obs_data_set_bool(line, "showing", obs_source_showing(page.source));
    obs_data_set_bool(line, "active", obs_source_active(page.source));
    obs_data_set_obj(line, "settings", settings);
    std::fprintf(file, "%s\n", obs_data_get_json(line));
    std::fclose(file);
}

template <const char *event> void recordEvent(void *data)
{
    record(*static_cast<Page *>(data), event);
}

void update(void *data, obs_data_t *settings)
{
    auto *page = static_cast<Page *>(data);
    page->width = uint32_t(obs_data_get_int(settings, "width"));
    page->height = uint32_t(obs_data_get_int(settings, "height"));
    const OBSDataAutoRelease text = obs_data_create_from_json(R"({"font":{"face":"DejaVu Sans","size":32}})");
    obs_data_set_string(text, "text", obs_data_get_string(settings, "url"));
    obs_source_update(page->text, text);
    record(*page, "update");
}

void *create(obs_data_t *settings, obs_source_t *source)
{
    static std::atomic<int> count = 0;
    auto *page = new Page{++count, source, obs_source_create_private("text_ft2_source_v2", "address", nullptr), 0, 0};
    record(*page, "create");
    update(page, settings);
    return page;
}

void destroy(void *data)
{
    auto *page = static_cast<Page *>(data);
    record(*page, "destroy");
    delete page;
}

void setDefaults(obs_data_t *settings)
{
    obs_data_set_default_string(settings, "url", "about:blank");
    obs_data_set_default_int(settings, "width", 800);
    obs_data_set_default_int(settings, "height", 600);
}

void render(void *data, gs_effect_t *)
{
    const auto *page = static_cast<const Page *>(data);
    gs_effect_t *solid = obs_get_base_effect(OBS_EFFECT_SOLID);
    vec4 color{};
    vec4_from_rgba(&color, cardColor);
    gs_effect_set_vec4(gs_effect_get_param_by_name(solid, "color"), &color);
    while (gs_effect_loop(solid, "Solid")) {
        gs_draw_sprite(nullptr, 0, page->width, page->height);
    }
    gs_matrix_push();
    gs_matrix_translate3f(margin, margin, 0);
    obs_source_video_render(page->text);
    gs_matrix_pop();
}

obs_properties_t *properties(void *)
{
    obs_properties_t *properties = obs_properties_create();
    obs_properties_add_text(properties, "url", "URL", OBS_TEXT_DEFAULT);
    obs_properties_add_button2(
        properties, "refreshnocache", "Refresh",
        [](obs_properties_t *, obs_property_t *, void *page) {
            record(*static_cast<Page *>(page), "refresh");
            return false;
        },
        nullptr);
    return properties;
}

constexpr char show[] = "show";
constexpr char hide[] = "hide";
constexpr char activate[] = "activate";
constexpr char deactivate[] = "deactivate";

} // namespace

bool obs_module_load(void)
{
    obs_source_info info{};
    info.id = "browser_source";
    info.type = OBS_SOURCE_TYPE_INPUT;
    info.output_flags = OBS_SOURCE_VIDEO | OBS_SOURCE_CUSTOM_DRAW;
    info.icon_type = OBS_ICON_TYPE_BROWSER;
    info.get_name = [](void *) { return "Browser stand-in"; };
    info.create = create;
    info.destroy = destroy;
    info.update = update;
    info.get_defaults = setDefaults;
    info.get_properties = properties;
    info.video_render = render;
    info.get_width = [](void *data) { return static_cast<Page *>(data)->width.load(); };
    info.get_height = [](void *data) { return static_cast<Page *>(data)->height.load(); };
    info.show = recordEvent<show>;
    info.hide = recordEvent<hide>;
    info.activate = recordEvent<activate>;
    info.deactivate = recordEvent<deactivate>;
    obs_register_source(&info);
    return true;
}
