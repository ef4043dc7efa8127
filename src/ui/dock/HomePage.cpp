// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/HomePage.h"

#include "common/BuildConfig.h"
#include "plugin/App.h"
#include "ui/dock/DevicesGroup.h"
#include "ui/dock/SceneGroup.h"
#include "ui/dock/ScoreboardGroup.h"
#include "ui/dock/ServerGroup.h"
#include "ui/dock/SignInForm.h"
#include "ui/dock/SignedInRow.h"
#include "ui/dock/UpdateBanner.h"
#include "ui/dock/UpdateFooter.h"
#include "ui/widgets/PageStyle.h"

#include <QDesktopServices>
#include <QUrl>
#include <QVBoxLayout>

#include <obs-frontend-api.h>

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::seconds relayInterval{2}; // traffic that no signal tells of
constexpr int pageMargin = 4;                    // pixels, as in OBS's own docks

} // namespace

HomePage::HomePage(App &app, const char *textTemplate, QWidget *dialogParent, QWidget *parent)
    : QWidget(parent)
    , m_app(app)
{
    new PageStyle(this);
    addGroups(textTemplate, dialogParent);
    connectServices();
    refreshAll();
    refreshUpdate();
}

void HomePage::addGroups(const char *textTemplate, QWidget *dialogParent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(pageMargin, pageMargin, pageMargin, pageMargin);
    const auto add = [column](auto *widget) {
        column->addWidget(widget);
        return widget;
    };
    m_banner = add(new UpdateBanner(this));
    m_signIn = add(new SignInForm(m_app.portal(), this));
    m_signedIn = add(new SignedInRow(m_app.portal(), this));
    m_scoreboard = add(new ScoreboardGroup(m_app, this));
    add(new SceneGroup(textTemplate, this));
    m_devices = add(new DevicesGroup(m_app, dialogParent, this));
    m_server = add(new ServerGroup(m_app, this));
    m_footer = add(new UpdateFooter(m_app, this));
    column->addStretch();
}

void HomePage::connectServices()
{
    connect(&m_app.portal(), &PortalClient::signedInChanged, this, &HomePage::refreshAll);
    connect(&m_app, &App::devicesChanged, m_scoreboard, &ScoreboardGroup::refreshDevices);
    connect(m_app.sources(), &SourceManager::statusChanged, m_scoreboard,
            &ScoreboardGroup::refreshStatus);
    // Another program may have chosen another device.
    connect(m_app.sources(), &SourceManager::statusChanged, m_scoreboard,
            &ScoreboardGroup::refreshDevices);
    connect(&m_app.live(), &LiveData::changed, m_scoreboard, &ScoreboardGroup::refreshScore);
    connect(m_scoreboard, &ScoreboardGroup::deviceChanged, m_devices, &DevicesGroup::setDevice);
    connect(&m_app, &App::serverStateChanged, m_server, &ServerGroup::refresh);
    connect(&m_app, &App::usbRelaysChanged, m_devices, &DevicesGroup::refreshRelays);
    connect(&m_relayTimer, &QTimer::timeout, m_devices, &DevicesGroup::refreshRelays);
    m_relayTimer.start(relayInterval);

    const PluginUpdater &updater = m_app.updater();
    connect(&updater, &PluginUpdater::stateChanged, this, &HomePage::refreshUpdate);
    connect(m_banner, &UpdateBanner::installRequested, &updater, &PluginUpdater::install);
    connect(m_banner, &UpdateBanner::downloadPageRequested, this, &HomePage::openDownloadPage);
}

void HomePage::refreshAll()
{
    const bool signedIn = m_app.portal().signedIn();
    m_signIn->setVisible(!signedIn);
    m_signedIn->refresh();
    m_scoreboard->setSignedIn(signedIn);
    m_devices->setSignedIn(signedIn);
    m_scoreboard->refreshDevices();
    m_scoreboard->refreshStatus();
    m_scoreboard->refreshScore();
    m_server->refresh();
}

void HomePage::refreshUpdate()
{
    const PluginUpdater &updater = m_app.updater();
    UpdateView view;
    view.state = updater.state();
    view.message = updater.message();
    view.version = updater.info().version;
    view.notes = updater.info().notes;
    view.packageUrl = updater.info().url;
    view.progress = updater.progress();
    view.canInstallInPlace = updater.canInstallInPlace();
    view.outputActive = obs_frontend_streaming_active() || obs_frontend_recording_active();
    view.lastCheck = m_app.settings().lastUpdateCheck();
    m_banner->refresh(view);
    m_footer->refresh(view);
}

void HomePage::openDownloadPage() const
{
    QDesktopServices::openUrl(QUrl(build_config::downloadPageUrl()));
}

} // namespace tallyforge
