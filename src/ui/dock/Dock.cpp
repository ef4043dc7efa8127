// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/Dock.h"

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

#include <QDesktopServices>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOption>
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

Dock::Dock(App &app, const char *textTemplate, const DeviceDialogs &dialogs)
    : m_app(app)
{
    setObjectName(u"tallyforgeDock"_s);
    frame(buildHome(textTemplate, dialogs));
    connectServices();
    refreshAll();
    refreshUpdate();
}

// What lies below, OBS's part of the dock, costs more to draw than a new score: it is spared that
// by a background without gaps. A theme takes the attribute away with each polish.
bool Dock::event(QEvent *event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }
    return done;
}

void Dock::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().window());
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

QWidget *Dock::buildHome(const char *textTemplate, const DeviceDialogs &dialogs)
{
    auto *home = new QWidget;
    auto *column = new QVBoxLayout(home);
    column->setContentsMargins(pageMargin, pageMargin, pageMargin, pageMargin);
    const auto add = [column](auto *widget) {
        column->addWidget(widget);
        return widget;
    };
    m_banner = add(new UpdateBanner);
    m_signIn = add(new SignInForm(m_app.portal()));
    m_signedIn = add(new SignedInRow(m_app.portal()));
    m_scoreboard = add(new ScoreboardGroup(m_app));
    add(new SceneGroup(textTemplate));
    m_devices = add(new DevicesGroup(m_app, dialogs, this));
    m_server = add(new ServerGroup(m_app));
    m_footer = add(new UpdateFooter(m_app));
    column->addStretch();
    return home;
}

void Dock::frame(QWidget *home)
{
    auto *pages = new QStackedWidget;
    pages->addWidget(home);
    auto *page = new QWidget;
    auto *inner = new QVBoxLayout(page);
    inner->setContentsMargins({});
    inner->addWidget(pages);
    inner->addStretch();

    auto *scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setWidget(page);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(scrolled);
}

void Dock::connectServices()
{
    connect(&m_app.portal(), &PortalClient::signedInChanged, this, &Dock::refreshAll);
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
    connect(&updater, &PluginUpdater::stateChanged, this, &Dock::refreshUpdate);
    connect(m_banner, &UpdateBanner::installRequested, &updater, &PluginUpdater::install);
    connect(m_banner, &UpdateBanner::downloadPageRequested, this, &Dock::openDownloadPage);
}

void Dock::refreshAll()
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

void Dock::refreshUpdate()
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

void Dock::openDownloadPage() const
{
    QDesktopServices::openUrl(QUrl(build_config::downloadPageUrl()));
}

} // namespace tallyforge
