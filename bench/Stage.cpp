// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "bench/Stage.h"

#include "tests/support/ObsHost.h"

#include <cstdarg>
#include <cstdio>

namespace tallyforge::bench {

QByteArray textSettings(int size, const QByteArray &more)
{
    return R"({"font":{"face":"DejaVu Sans","style":"Bold","flags":1,"size":)" +
           QByteArray::number(size) + "}," + more + "}";
}

void update(obs_source_t *source, const QByteArray &settingsJson)
{
    obs_data_t *settings = obs_data_create_from_json(settingsJson.constData());
    obs_source_update(source, settings);
    obs_data_release(settings);
}

void logToStderr()
{
    base_set_log_handler(
        [](int, const char *message, va_list arguments, void *) {
            std::vfprintf(stderr, message, arguments);
            std::fputc('\n', stderr);
        },
        nullptr);
}

Stage::Stage()
    : m_scene(obs_scene_create_private("stage"))
{
    test::ObsHost::show(obs_scene_get_source(m_scene));
}

Stage::~Stage()
{
    clear();
    test::ObsHost::show(nullptr);
    obs_scene_release(m_scene);
}

obs_source_t *Stage::add(const char *kind, const QByteArray &settingsJson, float x, float y)
{
    if (obs_get_source_output_flags(kind) == 0) {
        return nullptr;
    }
    const QByteArray name = QByteArray(kind) + ' ' + QByteArray::number(m_sources.size());
    obs_data_t *settings = obs_data_create_from_json(settingsJson.constData());
    obs_source_t *source = obs_source_create(kind, name.constData(), settings, nullptr);
    obs_data_release(settings);
    const vec2 place{{{x, y}}};
    obs_sceneitem_set_pos(obs_scene_add(m_scene, source), &place);
    m_sources.push_back(source);
    return source;
}

void Stage::clear()
{
    obs_scene_enum_items(
        m_scene,
        [](obs_scene_t *, obs_sceneitem_t *item, void *) {
            obs_sceneitem_remove(item);
            return true;
        },
        nullptr);
    for (obs_source_t *source : m_sources) {
        obs_source_release(source);
    }
    m_sources.clear();
}

} // namespace tallyforge::bench
