// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/App.h"

#include "core/HostedServer.h"
#include "platform/PlatformKey.h"
#include "platform/PluginFolder.h"
#include "plugin/HeldCloses.h"
#include "plugin/Log.h"
#include "plugin/UsbRelays.h"
#include "updater/BundleInstaller.h"

#include <QDateTime>
#include <QEventLoop>
#include <QJsonArray>
#include <QPointer>
#include <QTimer>

#include <obs-module.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::seconds firstUpdateCheck{20}; // OBS has started by then
constexpr std::chrono::hours updateCheckInterval{24};

struct Lifetime
{
    // Held shared while another thread reads, alone while app or what others read of it changes.
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

std::optional<App::Graphics> App::graphics()
{
    const std::shared_lock lock(lifetime().mutex);
    const std::unique_ptr<App> &app = lifetime().app;
    return app ? std::optional(app->m_graphics) : std::nullopt;
}

void App::requestOutputs()
{
    const std::shared_lock lock(lifetime().mutex);
    if (App *app = get()) {
        QMetaObject::invokeMethod(app, [app] { app->refreshOutputs({}); }, Qt::QueuedConnection);
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
    connect(&m_portal, &PortalClient::signedInChanged, this, &App::onSignedInChanged);
    applyServerSettings();
    startUpdater();

    // Once OBS has started: the first request of a process sets up TLS, which takes milliseconds.
    QTimer::singleShot(0, this, &App::restoreSession);
}

void App::startUpdater()
{
    char *data = obs_find_module_file(obs_current_module(), "");
    const QString dataFolder = QString::fromUtf8(data);
    bfree(data);
    UpdateConfig config;
    config.manifestUrl = build_config::updateManifestUrl();
    config.currentVersion = build_config::version();
    config.platformKey = platform::platformKey();
    config.obsVersion = QString::fromUtf8(obs_get_version_string());
    config.pluginRoot = platform::pluginRoot(dataFolder);
    config.stagingDir = configPath("update");
    config.downloadPage = build_config::downloadPageUrl();
    config.binaryPath = platform::binaryPath();
    m_updater.setConfig(config);
    if (!config.pluginRoot.isEmpty()) {
        cleanupLeftovers(config.pluginRoot);
    }
    connect(&m_updater, &PluginUpdater::stateChanged, this, &App::onUpdaterChanged);

    auto *first = new QTimer(this);
    first->setSingleShot(true);
    auto *daily = new QTimer(this);
    for (const QTimer *timer : {first, daily}) {
        connect(timer, &QTimer::timeout, this, [this] { checkForUpdates(false); });
    }
    first->start(firstUpdateCheck);
    daily->start(updateCheckInterval);
}

void App::checkForUpdates(bool manual)
{
    if (manual || m_settings.autoCheckUpdates()) {
        m_updater.check(manual);
    }
}

void App::onUpdaterChanged()
{
    switch (m_updater.state()) {
    case PluginUpdater::State::UpToDate:
    case PluginUpdater::State::Available:
        m_settings.setLastUpdateCheck(QDateTime::currentSecsSinceEpoch());
        break;
    case PluginUpdater::State::Installed:
        log::info(u"plugin %1 installed; takes effect on the next OBS start"_s.arg(
            m_updater.info().version));
        break;
    default:
        break;
    }
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

// The one place in which a user who asks for help can see afterwards how the data came and went.
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
    std::unique_lock lock(lifetime().mutex);
    m_graphics.signedIn = signedIn;
    if (!signedIn) {
        m_graphics.outputs.clear();
    }
    lock.unlock();
    if (signedIn) {
        refreshDevices([this](bool ok, const QString &) {
            if (ok) {
                autoSelectSource();
            }
        });
        refreshOutputs({});
        return;
    }
    m_devices.clear();
    Q_EMIT devicesChanged();
    Q_EMIT outputsChanged();
}

void App::refreshDevices(const Callback &callback)
{
    m_portal.listDevices([this, callback](const PortalResult &result) {
        if (result.ok) {
            m_devices = PortalClient::parseDevices(result.data);
            Q_EMIT devicesChanged();
        }
        if (callback) {
            callback(result.ok, result.message);
        }
    });
}

void App::refreshOutputs(const Callback &callback)
{
    if (!m_portal.signedIn()) {
        setOutputsError(tr("Sign in from the Tallyforge dock to see your graphics."));
        if (callback) {
            callback(false, m_graphics.error);
        }
        return;
    }
    m_portal.listGraphicsOutputs([this, callback](const PortalResult &result) {
        if (result.ok) {
            setOutputs(PortalClient::parseOutputs(result.data, m_portal.baseUrl()));
        } else if (!result.isOfEndedSession()) {
            setOutputsError(result.message);
        }
        if (callback) {
            callback(result.ok, m_graphics.error);
        }
    });
}

void App::setOutputs(const QList<GraphicsOutput> &outputs)
{
    std::unique_lock lock(lifetime().mutex);
    m_graphics.outputs = outputs;
    m_graphics.error.clear();
    lock.unlock();
    Q_EMIT outputsChanged();
}

void App::setOutputsError(const QString &error)
{
    const std::unique_lock lock(lifetime().mutex);
    m_graphics.error = error;
}

bool App::refreshOutputsBlocking(int timeoutMs)
{
    // Shared with the callback, which may run long after this function has returned.
    struct Wait
    {
        bool done = false;
        bool ok = false;
        QPointer<QEventLoop> loop;
    };
    const auto wait = std::make_shared<Wait>();
    QEventLoop loop;
    wait->loop = &loop;

    refreshOutputs([wait](bool ok, const QString &) {
        wait->done = true;
        wait->ok = ok;
        if (wait->loop) {
            wait->loop->quit();
        }
    });
    if (!wait->done) {
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer); // a coarse one may be late by a twentieth
        connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
        timer.start(timeoutMs);
        const HeldCloses held(&loop);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return wait->ok;
}

void App::autoSelectSource()
{
    if (m_sources->mode() != SourceManager::Mode::None) {
        return;
    }
    const QString stored = m_settings.selectedDevice();
    if (hasDevice(stored)) {
        selectCloudDevice(stored);
    } else if (m_devices.size() == 1) {
        selectCloudDevice(m_devices.first().deviceId);
    }
}

void App::selectCloudDevice(const QString &id)
{
    m_settings.setSelectedDevice(id);
    const LanDevice device = m_settings.lanDevice(id);
    if (m_settings.preferredRoute(id) == "lan"_L1 && !device.host.isEmpty() &&
        !device.token.isEmpty()) {
        m_sources->useLan(id, device);
    } else {
        m_sources->useCloud(id);
    }
}

bool App::hasDevice(const QString &id) const
{
    return std::any_of(m_devices.begin(), m_devices.end(),
                       [&id](const PortalDevice &device) { return device.deviceId == id; });
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

QJsonObject App::handleCommand(const QString &op, const QJsonObject &request)
{
    if (op == "status"_L1) {
        return statusReply();
    }
    if (op == "devices"_L1) {
        return devicesReply();
    }
    if (op == "use"_L1) {
        return useDevice(request.value("device"_L1).toString());
    }
    return HostedServer::failure(u"unknown_op"_s);
}

QJsonObject App::statusReply() const
{
    return {
        {u"signed_in"_s, m_portal.signedIn()},
        {u"account"_s, m_portal.signedIn() ? m_portal.email() : QString()},
        {u"source"_s, m_sources->label()},
        {u"device"_s, m_sources->deviceId()},
        {u"live"_s, m_sources->isLive()},
        {u"message"_s, m_sources->statusText()},
        {u"sport"_s, m_live.sport()},
    };
}

QJsonObject App::devicesReply() const
{
    QJsonArray devices;
    for (const PortalDevice &device : m_devices) {
        devices.append(QJsonObject{{u"id"_s, device.deviceId}, {u"name"_s, device.displayName()}});
    }
    return {{u"devices"_s, devices}};
}

QJsonObject App::useDevice(const QString &id)
{
    if (!hasDevice(id)) {
        return HostedServer::failure(u"unknown_device"_s);
    }
    selectCloudDevice(id);
    return {{u"device"_s, id}};
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
