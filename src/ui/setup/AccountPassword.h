// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"

#include <QPointer>
#include <QString>

#include <functional>

namespace tallyforge {

class App;
class DeviceSession;
struct PortalResult;

/// The conversation with the user's account about the passwords of its devices. Without an account,
/// and when the account doesn't answer, nothing happens: it is a convenience only.
class AccountPassword
{
public:
    explicit AccountPassword(App &app);

    /// A new connection: late answers count no more, and the account may be asked again.
    void begin();
    /// Asks once in a connection for the password of a device that needs one. The answer, called
    /// while the device still needs it, has the password.
    void fetch(DeviceSession *session, const std::function<void(const QString &password)> &answer);
    /// Has the account know a device's password.
    void save(const DeviceSession *session, const QString &password) const;

private:
    const QPointer<App> m_app;
    bool m_asked = false;
    Generation m_connection;
};

} // namespace tallyforge
