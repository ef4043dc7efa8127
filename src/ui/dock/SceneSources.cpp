// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/SceneSources.h"

#include <QString>

#include <obs-frontend-api.h>
#include <obs.hpp>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QString freeName(const QString &baseName)
{
    QString name = baseName;
    for (int number = 2;; ++number) {
        const OBSSourceAutoRelease taken = obs_get_source_by_name(name.toUtf8().constData());
        if (!taken) {
            return name;
        }
        name = u"%1 %2"_s.arg(baseName).arg(number);
    }
}

} // namespace

void addSourceToScene(const char *kind, const QString &baseName, const char *textTemplate)
{
    const OBSSourceAutoRelease current = obs_frontend_get_current_scene();
    obs_scene_t *scene = obs_scene_from_source(current);
    if (!scene) {
        return;
    }
    const OBSDataAutoRelease settings = obs_data_create();
    if (textTemplate) {
        obs_data_set_string(settings, "template", textTemplate);
    }
    const OBSSourceAutoRelease source =
        obs_source_create(kind, freeName(baseName).toUtf8().constData(), settings, nullptr);
    if (source) {
        obs_scene_add(scene, source);
        obs_frontend_open_source_properties(source);
    }
}

} // namespace tallyforge
