// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Prints what the plug-in knows of itself and of its updates, from the code that the plug-in is
// made of, so that a package can't be made for another key, place or version than the plug-in looks
// for.

#include "common/BuildConfig.h"
#include "platform/PlatformKey.h"
#include "plugin/LibobsApi.h"
#include "updater/PluginUpdater.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

int main()
{
    using namespace tallyforge;
    // OBS loads what was built for another patch level of its API as well.
    const QString minObs = QStringLiteral("%1.%2.0").arg(libobsApi[0]).arg(libobsApi[1]);
    const ArchiveUnpacker::Limits unpacked;
    const QJsonObject facts{
        {QStringLiteral("version"), build_config::version()},
        {QStringLiteral("platform_key"), platform::platformKey()},
        {QStringLiteral("binary"), platform::binaryPath()},
        {QStringLiteral("min_obs"), minObs},
        {QStringLiteral("manifest_url"), build_config::updateManifestUrl()},
        {QStringLiteral("max_package_bytes"), PluginUpdater::Limits().package},
        {QStringLiteral("max_bytes"), unpacked.bytes},
        {QStringLiteral("max_entries"), unpacked.entries},
    };
    std::puts(QJsonDocument(facts).toJson(QJsonDocument::Compact).constData());
}
