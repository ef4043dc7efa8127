// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "portal/PortalClient.h"

#include <QNetworkCookieJar>

namespace tallyforge {

/// The portal's cookies, kept in a file of the owner's alone: a JSON array of strings, each a
/// cookie in the form of a "Set-Cookie" header. Without a file nothing is loaded or saved.
class PortalClient::Jar final : public QNetworkCookieJar
{
public:
    using QNetworkCookieJar::QNetworkCookieJar;

    void setSessionFile(const QString &path) { m_sessionFile = path; }

    /// Replaces all cookies by those of the file. A file that can't be read changes nothing, a
    /// corrupt one empties the jar.
    void load();
    /// Writes all cookies that haven't expired, session cookies included. Failures aren't reported.
    void save() const;
    /// Forgets all cookies and removes the file.
    void wipe();

private:
    QString m_sessionFile;
};

} // namespace tallyforge
