// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/NetworkAccess.h"

#include "plugin/App.h"

#include <QPointer>

namespace tallyforge {

void storeNetworkAccess(App &app, const QString &id, const QString &host, const QString &token)
{
    if (!id.isEmpty() && !host.isEmpty() && !token.isEmpty()) {
        const LanDevice device{host, token, id};
        app.settings().setLanDevice(id, device);
        app.sources()->updateLan(id, device);
    }
}

void rememberNetworkAccess(App &app, DeviceSession *session)
{
    const QString id = session->deviceId();
    const QString host = session->wifiIp();
    if (id.isEmpty() || host.isEmpty()) {
        return;
    }
    session->ensureApiToken(
        [known = QPointer(&app), id, host](bool ok, const QString &token, const QString &) {
            if (ok && known) {
                storeNetworkAccess(*known, id, host, token);
            }
        });
}

} // namespace tallyforge
