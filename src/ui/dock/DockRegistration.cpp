// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/DockRegistration.h"

#include "plugin/App.h"
#include "plugin/Log.h"
#include "ui/dock/Dock.h"

#include <QApplication>
#include <QPointer>

#include <obs-frontend-api.h>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr const char *dockId = "tallyforge-dock";

QPointer<Dock> &dockInstance()
{
    static QPointer<Dock> instance;
    return instance;
}

void onFrontendEvent(obs_frontend_event event, void *)
{
    if (event == OBS_FRONTEND_EVENT_EXIT) {
        dock_unregister();
    }
}

} // namespace

void dock_register(const char *textTemplate)
{
    if (!App::ready() || dockInstance() || !qobject_cast<QApplication *>(qApp)) {
        return;
    }
    dockInstance() = new Dock(*App::get(), textTemplate);
    if (!obs_frontend_add_dock_by_id(dockId, "Tallyforge", dockInstance())) {
        log::warning(u"OBS has not taken the dock"_s);
        delete dockInstance();
        return;
    }
    obs_frontend_add_event_callback(onFrontendEvent, nullptr);
}

void dock_unregister()
{
    if (!dockInstance()) {
        return;
    }
    obs_frontend_remove_event_callback(onFrontendEvent, nullptr);
    obs_frontend_remove_dock(dockId); // and with it the widget
    delete dockInstance();            // which stays when there is no front end any more
}

} // namespace tallyforge
