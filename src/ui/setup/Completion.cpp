// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/Completion.h"

#include "device/DeviceLink.h"
#include "plugin/App.h"
#include "ui/setup/DonePage.h"
#include "ui/setup/HeldSession.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

Completion::Completion(App *app, const HeldSession &held, DonePage *page)
    : QObject(page)
    , m_app(app)
    , m_held(held)
    , m_page(page)
{
    connect(page, &DonePage::claimRequested, this, &Completion::claim);
}

void Completion::show(const QString &name)
{
    const DeviceSession *session = m_held.get();
    if (session == nullptr || !m_app) {
        return;
    }
    m_shown.next();
    const QString id = session->deviceId();
    QStringList lines{tr("Device: %1").arg(id.isEmpty() ? name : id)};
    if (const QString firmware = session->firmware(); !firmware.isEmpty()) {
        lines.append(tr("Firmware: %1").arg(firmware));
    }
    const QString ip = session->wifiIp();
    lines.append(ip.isEmpty() ? tr("Wi-Fi: not connected") : tr("Wi-Fi: connected (%1)").arg(ip));
    m_page->showSummary(lines.join(u'\n'), m_app->portal().signedIn() && !id.isEmpty() &&
                                               !m_app->lists().hasDevice(id));
}

void Completion::claim(const QString &code)
{
    const DeviceSession *session = m_held.get();
    if (session == nullptr || !m_app) {
        return;
    }
    m_page->showClaiming();
    const QString kind = session->link()->kind();
    auto onPage = m_shown.guard([this](const PortalResult &result) {
        if (result.ok) {
            m_page->showClaimed();
        } else {
            m_page->refuseClaim(result.message);
        }
    });
    m_app->portal().linkDevice(session->deviceId(), code, kind == "lan"_L1 ? u"manual"_s : kind,
                               [app = m_app, onPage](const PortalResult &result) mutable {
                                   onPage(result);
                                   if (result.ok && app) { // also when the dialog has closed
                                       app->refreshDevices({});
                                   }
                               });
}

} // namespace tallyforge
