// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/AccountPassword.h"

#include "plugin/App.h"

using namespace Qt::StringLiterals;

namespace tallyforge {

AccountPassword::AccountPassword(App &app)
    : m_app(&app)
{
}

void AccountPassword::begin()
{
    m_connection.next();
    m_asked = false;
}

void AccountPassword::fetch(DeviceSession *session,
                            const std::function<void(const QString &password)> &answer)
{
    if (m_asked || !m_app || session == nullptr || !m_app->portal().signedIn()) {
        return;
    }
    m_asked = true;
    QString id = session->deviceId();
    if (id.isEmpty()) {
        id = m_app->settings().selectedDevice();
    }
    if (id.isEmpty()) {
        return;
    }
    const QPointer<DeviceSession> asked = session;
    m_app->portal().revealPairing(
        id, m_connection.guard([asked, answer](const PortalResult &result) {
            const QString password =
                result.data.value("pairing"_L1).toObject().value("admin_password"_L1).toString();
            if (asked && asked->state() == DeviceSession::State::NeedsPassword && result.ok &&
                !password.isEmpty()) {
                answer(password);
            }
        }));
}

void AccountPassword::save(const DeviceSession *session, const QString &password) const
{
    if (m_app && session != nullptr && !session->deviceId().isEmpty() &&
        m_app->portal().signedIn()) {
        m_app->portal().savePairing(session->deviceId(), password, {});
    }
}

} // namespace tallyforge
