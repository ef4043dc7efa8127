// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/UpdateSchedule.h"

#include "common/BuildConfig.h"
#include "core/SettingsStore.h"
#include "platform/PlatformKey.h"
#include "platform/PluginFolder.h"
#include "plugin/Log.h"
#include "updater/BundleInstaller.h"

#include <QDateTime>
#include <QTimer>

#include <obs-module.h>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::seconds firstCheck{20}; // OBS has started by then
constexpr std::chrono::hours checkInterval{24};

QString dataFolder()
{
    char *found = obs_find_module_file(obs_current_module(), "");
    QString folder = QString::fromUtf8(found);
    bfree(found);
    return folder;
}

} // namespace

UpdateSchedule::UpdateSchedule(PluginUpdater *updater, SettingsStore *settings,
                               const QString &stagingDir, QObject *parent)
    : QObject(parent)
    , m_updater(updater)
    , m_settings(settings)
{
    configure(stagingDir);
    connect(m_updater, &PluginUpdater::stateChanged, this, &UpdateSchedule::onUpdaterChanged);

    auto *first = new QTimer(this);
    first->setSingleShot(true);
    auto *daily = new QTimer(this);
    for (const QTimer *timer : {first, daily}) {
        connect(timer, &QTimer::timeout, this, [this] { check(false); });
    }
    first->start(firstCheck);
    daily->start(checkInterval);
}

void UpdateSchedule::configure(const QString &stagingDir)
{
    UpdateConfig config;
    config.manifestUrl = build_config::updateManifestUrl();
    config.currentVersion = build_config::version();
    config.platformKey = platform::platformKey();
    config.obsVersion = QString::fromUtf8(obs_get_version_string());
    config.pluginRoot = platform::pluginRoot(dataFolder());
    config.stagingDir = stagingDir;
    config.downloadPage = build_config::downloadPageUrl();
    config.binaryPath = platform::binaryPath();
    m_updater->setConfig(config);
    if (!config.pluginRoot.isEmpty()) {
        cleanupLeftovers(config.pluginRoot);
    }
}

void UpdateSchedule::check(bool manual)
{
    if (manual || m_settings->autoCheckUpdates()) {
        m_updater->check(manual);
    }
}

void UpdateSchedule::onUpdaterChanged()
{
    switch (m_updater->state()) {
    case PluginUpdater::State::UpToDate:
    case PluginUpdater::State::Available:
        m_settings->setLastUpdateCheck(QDateTime::currentSecsSinceEpoch());
        break;
    case PluginUpdater::State::Installed:
        log::info(u"plugin %1 installed; takes effect on the next OBS start"_s.arg(
            m_updater->info().version));
        break;
    default:
        break;
    }
}

} // namespace tallyforge
