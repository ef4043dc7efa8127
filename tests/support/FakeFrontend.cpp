// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "tests/support/FakeFrontend.h"

using tallyforge::test::frontend;

tallyforge::test::FakeFrontend &tallyforge::test::frontend()
{
    static FakeFrontend instance;
    return instance;
}

namespace {

bool up()
{
    frontend().callsWhenDown += frontend().up ? 0 : 1;
    return frontend().up;
}

} // namespace

bool obs_frontend_add_dock_by_id(const char *id, const char *, void *widget)
{
    if (!up()) {
        return false;
    }
    frontend().dockId = QString::fromUtf8(id);
    frontend().dock.reset(static_cast<QWidget *>(widget));
    return true;
}

void obs_frontend_remove_dock(const char *id)
{
    if (up() && frontend().dockId == QString::fromUtf8(id)) {
        frontend().dock.reset();
    }
}

void obs_frontend_add_event_callback(obs_frontend_event_cb callback, void *)
{
    frontend().onEvent = up() ? callback : nullptr;
}

void obs_frontend_remove_event_callback(obs_frontend_event_cb callback, void *)
{
    if (up() && frontend().onEvent == callback) {
        frontend().onEvent = nullptr;
    }
}

obs_source_t *obs_frontend_get_current_scene(void)
{
    return obs_source_get_ref(frontend().scene);
}

void obs_frontend_open_source_properties(obs_source_t *source)
{
    frontend().opened.append(QString::fromUtf8(obs_source_get_name(source)));
}

bool obs_frontend_streaming_active(void)
{
    return frontend().streaming;
}

bool obs_frontend_recording_active(void)
{
    return frontend().recording;
}
