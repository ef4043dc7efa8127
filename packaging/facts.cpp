// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// Prints the plug-in's knowledge of itself and of its updates, from the plug-in's own code, so that
// a package can't be made for another key, place or version than the plug-in looks for.

#include "common/BuildConfig.h"
#include "platform/PlatformKey.h"
#include "plugin/LibobsApi.h"
#include "updater/PluginUpdater.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;

int main()
{
    using namespace tallyforge;
    // OBS also loads a plug-in that was built for another patch level of its API.
    const QString minObs = u"%1.%2.0"_s.arg(libobsApi[0]).arg(libobsApi[1]);
    const ArchiveUnpacker::Limits unpacked;
    const QJsonObject facts{
        {u"version"_s, build_config::version()},
        {u"platform_key"_s, platform::platformKey()},
        {u"binary"_s, platform::binaryPath()},
        {u"min_obs"_s, minObs},
        {u"manifest_url"_s, build_config::updateManifestUrl()},
        {u"max_package_bytes"_s, PluginUpdater::Limits().package},
        {u"max_bytes"_s, unpacked.bytes},
        {u"max_entries"_s, unpacked.entries},
    };
    std::puts(QJsonDocument(facts).toJson(QJsonDocument::Compact).constData());
}
