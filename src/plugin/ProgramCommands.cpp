// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/ProgramCommands.h"

#include "core/HostedServer.h"
#include "plugin/App.h"

#include <QJsonArray>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds pause{50};

} // namespace

ProgramCommands::ProgramCommands(App &app)
    : m_app(app)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    connect(&m_pause, &QTimer::timeout, this, &ProgramCommands::followWaiting);
}

QJsonObject ProgramCommands::answer(const QString &op, const QJsonObject &request)
{
    if (op == "status"_L1) {
        return status();
    }
    if (op == "devices"_L1) {
        return devices();
    }
    if (op == "use"_L1) {
        return use(request.value("device"_L1).toString());
    }
    return HostedServer::failure(u"unknown_op"_s);
}

QJsonObject ProgramCommands::status()
{
    followWaiting(); // an earlier "use" shows in the answer
    return state();
}

QJsonObject ProgramCommands::state() const
{
    const PortalClient &portal = m_app.portal();
    const SourceManager &sources = *m_app.sources();
    return {
        {u"signed_in"_s, portal.signedIn()},
        {u"account"_s, portal.signedIn() ? portal.email() : QString()},
        {u"source"_s, sources.label()},
        {u"device"_s, sources.deviceId()},
        {u"live"_s, sources.isLive()},
        {u"message"_s, sources.statusText()},
        {u"sport"_s, m_app.live().sport()},
    };
}

QJsonObject ProgramCommands::devices() const
{
    QJsonArray list;
    for (const PortalDevice &device : m_app.devices()) {
        list.append(QJsonObject{{u"id"_s, device.deviceId}, {u"name"_s, device.displayName()}});
    }
    return {{u"devices"_s, list}};
}

QJsonObject ProgramCommands::use(const QString &id)
{
    if (!m_app.lists().hasDevice(id)) {
        return HostedServer::failure(u"unknown_device"_s);
    }
    if (m_pause.isActive() && !isSessionFollowed()) {
        m_waiting = id;
    } else {
        follow(id);
    }
    return {{u"device"_s, id}};
}

void ProgramCommands::follow(const QString &id)
{
    m_waiting.reset();
    m_pause.start();
    m_app.selectCloudDevice(id);
}

void ProgramCommands::followWaiting()
{
    const std::optional<QString> id = std::exchange(m_waiting, std::nullopt);
    if (id && m_app.lists().hasDevice(*id) && !isSessionFollowed()) {
        follow(*id);
    }
}

bool ProgramCommands::isSessionFollowed() const
{
    return m_app.sources()->mode() == SourceManager::Mode::Session;
}

} // namespace tallyforge
