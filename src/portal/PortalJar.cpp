// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "portal/PortalJar.h"

#include "common/PrivateFile.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkCookie>

namespace tallyforge {

void PortalClient::Jar::load()
{
    QFile file(m_sessionFile);
    if (m_sessionFile.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    QList<QNetworkCookie> cookies;
    const QJsonArray entries = QJsonDocument::fromJson(file.readAll()).array();
    for (const QJsonValueConstRef entry : entries) {
        cookies += QNetworkCookie::parseCookies(entry.toString().toUtf8());
    }
    setAllCookies(cookies);
}

void PortalClient::Jar::save() const
{
    if (m_sessionFile.isEmpty()) {
        return;
    }
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QJsonArray entries;
    const QList<QNetworkCookie> cookies = allCookies();
    for (const QNetworkCookie &cookie : cookies) {
        if (cookie.isSessionCookie() || cookie.expirationDate() > now) {
            entries.append(QString::fromUtf8(cookie.toRawForm(QNetworkCookie::Full)));
        }
    }
    savePrivateFile(m_sessionFile, QJsonDocument(entries).toJson(QJsonDocument::Compact));
}

void PortalClient::Jar::wipe()
{
    setAllCookies({});
    if (!m_sessionFile.isEmpty()) {
        QFile::remove(m_sessionFile);
    }
}

} // namespace tallyforge
