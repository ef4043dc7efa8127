// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Prints what the plug-in knows of itself and of its updates, from the code that the plug-in is
// made of, so that a package can't be made for another key, place or version than the plug-in looks
// for.

#include "common/BuildConfig.h"
#include "platform/PlatformKey.h"
#include "plugin/LibobsApi.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

int main()
{
    using namespace tallyforge;
    const QString minObs =
        QStringLiteral("%1.%2.%3").arg(libobsApi[0]).arg(libobsApi[1]).arg(libobsApi[2]);
    const QJsonObject facts{
        {QStringLiteral("version"), build_config::version()},
        {QStringLiteral("platform_key"), platform::platformKey()},
        {QStringLiteral("binary"), platform::binaryPath()},
        {QStringLiteral("min_obs"), minObs},
        {QStringLiteral("manifest_url"), build_config::updateManifestUrl()},
    };
    std::puts(QJsonDocument(facts).toJson(QJsonDocument::Compact).constData());
}
