// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/App.h"

#include "core/HostedServer.h"
#include "plugin/Log.h"
#include "plugin/UpdateSchedule.h"
#include "plugin/UsbRelays.h"

#include <QPointer>
#include <QTimer>

#include <obs-module.h>

#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

struct Lifetime
{
    // Held shared while another thread reads, alone while app changes.
    std::shared_mutex mutex;
    std::unique_ptr<App> app;
};

Lifetime &lifetime()
{
    static Lifetime instance;
    return instance;
}

QString configPath(const char *file)
{
    char *path = obs_module_get_config_path(obs_current_module(), file);
    QString result = QString::fromUtf8(path);
    bfree(path);
    return result;
}

} // namespace

void App::init(const QString &portalUrl)
{
    if (lifetime().app) {
        return;
    }
    std::unique_ptr<App> app(new App(portalUrl));
    const std::unique_lock lock(lifetime().mutex);
    lifetime().app = std::move(app);
}

void App::shutdown()
{
    std::unique_lock lock(lifetime().mutex);
    const std::unique_ptr<App> app = std::move(lifetime().app);
    lock.unlock();
}

App *App::get()
{
    return lifetime().app.get();
}

bool App::ready()
{
    const std::shared_lock lock(lifetime().mutex);
    return lifetime().app != nullptr;
}

bool App::readLive(const std::function<void(const LiveData &)> &reader)
{
    const std::shared_lock lock(lifetime().mutex);
    const std::unique_ptr<App> &app = lifetime().app;
    if (!app) {
        return false;
    }
    reader(app->m_live);
    return true;
}

std::optional<AccountGraphics> App::graphics()
{
    const std::shared_lock lock(lifetime().mutex);
    const std::unique_ptr<App> &app = lifetime().app;
    return app ? std::optional(app->m_lists.graphics()) : std::nullopt;
}

void App::requestOutputs()
{
    const std::shared_lock lock(lifetime().mutex);
    if (App *app = get()) {
        QMetaObject::invokeMethod(
            app, [app] { app->m_lists.refreshOutputs({}); }, Qt::QueuedConnection);
    }
}

App::App(const QString &portalUrl)
    : m_portal(portalUrl)
{
    m_settings.setPath(configPath("settings.json"));
    m_settings.load();
    m_portal.setSessionFile(configPath("session.json"));

    m_relayOwner = new UsbRelays(this);
    connect(m_relayOwner, &UsbRelays::changed, this, &App::usbRelaysChanged);
    m_sources = new SourceManager(&m_portal, &m_live, this);
    connect(m_sources, &SourceManager::statusChanged, this, &App::logStatus);
    connect(m_sources, &SourceManager::sessionLeft, this, &App::onSessionLeft);
    m_server = new HostedServer(&m_live, this);
    m_server->setCommandHandler([this](const QString &op, const QJsonObject &request) {
        return handleCommand(op, request);
    });
    connect(m_server, &HostedServer::clientsChanged, this, &App::serverStateChanged);
    connect(&m_lists, &AccountLists::devicesChanged, this, &App::devicesChanged);
    connect(&m_lists, &AccountLists::outputsChanged, this, &App::outputsChanged);
    connect(&m_portal, &PortalClient::signedInChanged, this, &App::onSignedInChanged);
    applyServerSettings();
    m_updates = new UpdateSchedule(&m_updater, &m_settings, configPath("update"), this);

    // Once OBS has started: the first request of a process sets up TLS, which takes milliseconds.
    QTimer::singleShot(0, this, &App::restoreSession);
}

App::~App()
{
    // The server and the sources work with members, which a child would outlive. The tunnels end
    // here as well, and nobody needs to hear of it any more.
    delete std::exchange(m_server, nullptr);
    delete std::exchange(m_sources, nullptr);
    m_relayOwner->disconnect(this);
    delete std::exchange(m_relayOwner, nullptr);
}

void App::restoreSession()
{
    m_portal.restoreSession([](const PortalResult &result) {
        if (!result.ok && result.status != 0 && result.status != 401) {
            log::warning(u"could not restore sign-in: HTTP %1"_s.arg(result.status));
        }
    });
}

// Its lines are the only place that shows afterwards how the data came and went.
void App::logStatus() const
{
    log::info(u"live data: "_s + m_sources->statusText().simplified());
}

// A device may follow the change of route to the cloud over the very cable that brought its data.
void App::onSessionLeft(DeviceSession *session)
{
    // Callbacks of the sessions that end here may delete it.
    const QPointer<DeviceSession> left = session;
    if (keepUsbRelay(session)) {
        return;
    }
    if (left) {
        left->stop();
    }
    if (left) {
        left->deleteLater();
    }
}

void App::onSignedInChanged(bool signedIn)
{
    m_lists.setSignedIn(signedIn);
    if (!signedIn) {
        return;
    }
    m_lists.refreshDevices([this](bool ok, const QString &) {
        if (ok) {
            autoSelectSource();
        }
    });
    m_lists.refreshOutputs({});
}

void App::checkForUpdates(bool manual)
{
    m_updates->check(manual);
}

QJsonObject App::handleCommand(const QString &op, const QJsonObject &request)
{
    return m_commands.answer(op, request);
}

void App::autoSelectSource()
{
    if (m_sources->mode() != SourceManager::Mode::None) {
        return;
    }
    const QString stored = m_settings.selectedDevice();
    if (m_lists.hasDevice(stored)) {
        selectCloudDevice(stored);
    } else if (devices().size() == 1) {
        selectCloudDevice(QString(devices().first().deviceId));
    }
}

void App::selectCloudDevice(const QString &id)
{
    m_commands.forgetChoice();
    m_settings.setSelectedDevice(id);
    const LanDevice device = m_settings.lanDevice(id);
    if (m_settings.preferredRoute(id) == "lan"_L1 && !device.host.isEmpty() &&
        !device.token.isEmpty()) {
        m_sources->useLan(id, device);
    } else {
        m_sources->useCloud(id);
    }
}

void App::applyServerSettings()
{
    if (!m_settings.serverEnabled()) {
        m_server->stop();
    } else {
        const auto port = static_cast<quint16>(m_settings.serverPort());
        QString error;
        if (!m_server->start(port, m_settings.serverAllowNetwork(), &error)) {
            log::warning(error);
        }
    }
    Q_EMIT serverStateChanged();
}

bool App::keepUsbRelay(DeviceSession *session)
{
    return m_settings.shareConnection() && m_relayOwner->keep(session);
}

void App::releaseUsbRelay(const QString &portName)
{
    m_relayOwner->release(portName);
}

void App::stopUsbRelays()
{
    m_relayOwner->stopAll();
}

QStringList App::usbRelaySummaries() const
{
    return m_relayOwner->summaries();
}

} // namespace tallyforge
