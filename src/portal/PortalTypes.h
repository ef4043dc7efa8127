// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QString>

namespace tallyforge {

/// The result of one call to the portal.
struct PortalResult
{
    bool ok = false;  ///< no network error, and an HTTP status from 200 to 299
    int status = 0;   ///< the HTTP status, 0 when there was no answer
    QJsonObject data; ///< the body if it was a JSON object, also of a failure
    QString code;     ///< the portal's machine word for a failure, may be empty
    QString message;  ///< a sentence for the user, empty on success

    /// The code of a call that was under way when its session ended, with the status 0.
    static constexpr QLatin1StringView sessionEndedCode{"session_ended"};
    /// Whether the call was ended with its session. It then says nothing about the present one.
    [[nodiscard]] bool isOfEndedSession() const { return code == sessionEndedCode; }
};

/// A device of the signed-in account.
struct PortalDevice
{
    QString deviceId; ///< never empty in a parsed list
    QString nickname;
    QString status;     ///< the portal's word for its state
    QString blePasskey; ///< the six digits for pairing over Bluetooth; a secret

    /// "nickname (id)", or the id alone when there is no nickname.
    [[nodiscard]] QString displayName() const
    {
        return nickname.isEmpty() ? deviceId : nickname + QLatin1StringView(" (") + deviceId + u')';
    }
};

/// A page of the signed-in account that draws a scoreboard.
struct GraphicsOutput
{
    QString id; ///< never empty in a parsed list
    QString name;
    QString shareToken; ///< never empty in a parsed list; a secret
    QString deviceId;
    int width = 1920;  ///< pixels
    int height = 1080; ///< pixels
    QString url;       ///< the page's address
};

} // namespace tallyforge
