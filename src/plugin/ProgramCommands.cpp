// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/ProgramCommands.h"

#include "core/HostedServer.h"
#include "plugin/App.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QJsonObject statusReply(App &app)
{
    const PortalClient &portal = app.portal();
    const SourceManager &sources = *app.sources();
    return {
        {u"signed_in"_s, portal.signedIn()},
        {u"account"_s, portal.signedIn() ? portal.email() : QString()},
        {u"source"_s, sources.label()},
        {u"device"_s, sources.deviceId()},
        {u"live"_s, sources.isLive()},
        {u"message"_s, sources.statusText()},
        {u"sport"_s, app.live().sport()},
    };
}

QJsonObject devicesReply(const QList<PortalDevice> &devices)
{
    QJsonArray list;
    for (const PortalDevice &device : devices) {
        list.append(QJsonObject{{u"id"_s, device.deviceId}, {u"name"_s, device.displayName()}});
    }
    return {{u"devices"_s, list}};
}

QJsonObject useDevice(App &app, const QString &id)
{
    if (!app.lists().hasDevice(id)) {
        return HostedServer::failure(u"unknown_device"_s);
    }
    app.selectCloudDevice(id);
    return {{u"device"_s, id}};
}

} // namespace

QJsonObject answerCommand(App &app, const QString &op, const QJsonObject &request)
{
    if (op == "status"_L1) {
        return statusReply(app);
    }
    if (op == "devices"_L1) {
        return devicesReply(app.devices());
    }
    if (op == "use"_L1) {
        return useDevice(app, request.value("device"_L1).toString());
    }
    return HostedServer::failure(u"unknown_op"_s);
}

} // namespace tallyforge
