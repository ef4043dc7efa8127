// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/SourceManager.h"

#include "core/LiveData.h"
#include "core/SettingsStore.h"
#include "core/TlsFeed.h"
#include "portal/PortalClient.h"

#include <QSignalBlocker>

#include <chrono>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds poll{1000}; // between two polls of the portal
constexpr std::chrono::milliseconds slowPoll{5000};
constexpr int failuresUntilSlow = 6; // in a row

} // namespace

SourceManager::SourceManager(PortalClient *portal, LiveData *live, QObject *parent)
    : QObject(parent)
    , m_portal(portal)
    , m_live(live)
    , m_feed(new TlsFeed(this))
{
    m_pollTimer.setInterval(poll);
    connect(&m_pollTimer, &QTimer::timeout, this, &SourceManager::pollCloud);
    connect(m_portal, &PortalClient::signedInChanged, this, &SourceManager::onSignedInChanged);
    connect(m_feed, &TlsFeed::envelope, this, &SourceManager::onFeedEnvelope);
    connect(m_feed, &TlsFeed::connectedChanged, this, &SourceManager::onFeedConnectedChanged);
}

SourceManager::~SourceManager()
{
    // The feed says so when it ends a connection, and so does a session that is our child.
    m_feed->disconnect(this);
    if (m_session) {
        m_session->disconnect(this);
    }
}

void SourceManager::useCloud(const QString &deviceId)
{
    const Announcement news = beginRoute(Mode::Cloud, deviceId, deviceId);
    m_failCount = 0;
    m_pollTimer.start();
    announce(news, tr("Connecting to %1…").arg(deviceId));
    pollCloud();
}

void SourceManager::useLan(const QString &deviceId, const LanDevice &device)
{
    const QString label = device.name.isEmpty() ? deviceId : device.name;
    const Announcement news = beginRoute(Mode::Lan, deviceId, label);
    m_feed->connectTo(device.host, TlsFeed::defaultPort, device.token);
    announce(news, tr("Connecting to %1 on your network…").arg(label));
}

void SourceManager::updateLan(const QString &deviceId, const LanDevice &device)
{
    if (m_mode == Mode::Lan && m_deviceId == deviceId) {
        m_feed->setAccess(device.host, device.token);
    }
}

void SourceManager::useSession(DeviceSession *session, const QString &label)
{
    const Announcement news = beginRoute(Mode::Session, session->deviceId(), label, session);
    connect(session, &DeviceSession::envelope, this, &SourceManager::onSessionEnvelope);
    connect(session, &DeviceSession::stateChanged, this, &SourceManager::onSessionStateChanged);
    connect(session, &QObject::destroyed, this, [this] {
        if (m_sessionUp) { // it was deleted without a word about its end
            onSessionStateChanged(DeviceSession::State::Lost, {});
        }
    });
    const auto isSameRoute = m_generation.watch();
    announce(news, tr("Connected to %1, waiting for scoreboard data…").arg(label));
    const bool isDown = isSameRoute() && m_session &&
                        (m_session->state() == DeviceSession::State::Lost ||
                         m_session->state() == DeviceSession::State::Error ||
                         m_session->state() == DeviceSession::State::Restarting);
    if (isDown) { // it won't say so again
        onSessionStateChanged(m_session->state(), m_session->detail());
    }
}

void SourceManager::sessionStopped()
{
    m_sessionUp = false;
    setStatus(false, tr("Disconnected from %1. Its scores have stopped.").arg(m_label));
}

// Ends the old route and enters the new one without a signal, so that the caller can wire it before
// anybody hears of it.
SourceManager::Announcement SourceManager::beginRoute(Mode mode, const QString &deviceId,
                                                      const QString &label, DeviceSession *session)
{
    m_generation.next();
    m_pollTimer.stop();
    m_pollInFlight = false;
    {
        const QSignalBlocker silence(m_feed); // the end of the old route is no news any more
        m_feed->stop();
    }
    const QPointer<DeviceSession> old = std::exchange(m_session, session);
    if (old) {
        old->disconnect(this);
    }
    m_sessionUp = session != nullptr;
    const bool isOther =
        std::tie(mode, deviceId, label) != std::tie(m_mode, m_deviceId, m_label) || old != session;
    m_mode = mode;
    m_deviceId = deviceId;
    m_label = label;
    return {old, isOther};
}

// Tells of the route that stands. A slot may choose another route at any of these signals. That one
// has been announced by then, and the rest of this announcement may tell of it once more.
void SourceManager::announce(const Announcement &news, const QString &text)
{
    const bool isNews = news.isOtherRoute || m_isLive || text != m_statusText;
    m_isLive = false;
    m_statusText = text;
    m_live->clear();
    m_live->setSourceLabel(QString(m_label));
    if (isNews) {
        Q_EMIT statusChanged();
    }
    if (news.left && news.left != m_session && news.left->parent() == this) {
        Q_EMIT sessionLeft(news.left);
    }
}

void SourceManager::setStatus(bool live, const QString &text)
{
    if (live == m_isLive && text == m_statusText) {
        return;
    }
    m_isLive = live;
    m_statusText = text;
    Q_EMIT statusChanged();
}

void SourceManager::pollCloud()
{
    if (m_mode != Mode::Cloud || m_pollInFlight) {
        return;
    }
    if (!m_portal->signedIn()) {
        setStatus(false, tr("Sign in to see live scores."));
        return;
    }
    m_pollInFlight = true;
    m_portal->deviceState(m_deviceId, m_generation.guard([this](const PortalResult &result) {
        m_pollInFlight = false;
        if (!result.isOfEndedSession()) {
            onCloudReply(result);
        }
    }));
}

void SourceManager::onCloudReply(const PortalResult &result)
{
    if (!result.ok) {
        onCloudFailure(result);
        return;
    }
    m_failCount = 0;
    setPollInterval(poll);
    if (result.data.value("type"_L1).toString() == "pending"_L1) {
        setStatus(false, tr("%1 has not sent any scoreboard data yet.").arg(m_label));
        return;
    }
    const bool online = result.data.value("online"_L1).toBool(true);
    const auto isSameRoute = m_generation.watch();
    m_live->ingest(result.data);
    if (isSameRoute()) {
        setStatus(online, online ? tr("Live from %1").arg(m_label)
                                 : tr("%1 is offline. Showing its last scores.").arg(m_label));
    }
}

void SourceManager::onCloudFailure(const PortalResult &result)
{
    ++m_failCount;
    if (result.code == "device_not_found_or_not_owned"_L1) {
        m_pollTimer.stop();
    } else if (m_failCount >= failuresUntilSlow) {
        setPollInterval(slowPoll);
    }
    setStatus(false, result.message);
}

// Setting even the same interval starts the present one over, so a slow portal would stretch it.
void SourceManager::setPollInterval(std::chrono::milliseconds interval)
{
    if (m_pollTimer.intervalAsDuration() != interval) {
        m_pollTimer.setInterval(interval);
    }
}

void SourceManager::onSignedInChanged(bool signedIn)
{
    if (signedIn || m_mode != Mode::Cloud) {
        return;
    }
    m_pollTimer.stop();
    setStatus(false, tr("Signed out. Sign in to see live scores."));
}

void SourceManager::onFeedEnvelope(const QJsonObject &envelope)
{
    if (m_mode != Mode::Lan) {
        return;
    }
    const auto isSameRoute = m_generation.watch();
    if (m_live->ingest(envelope) && isSameRoute() && !m_isLive) {
        setStatus(true, tr("Live from %1 over your network").arg(m_label));
    }
}

void SourceManager::onFeedConnectedChanged(bool connected, const QString &reason)
{
    if (m_mode != Mode::Lan) {
        return;
    }
    if (connected) {
        setStatus(false, tr("Connected to %1, waiting for scoreboard data…").arg(m_label));
    } else {
        setStatus(false, reason.isEmpty() ? tr("Reconnecting to %1…").arg(m_label) : reason);
    }
}

void SourceManager::onSessionEnvelope(const QJsonObject &envelope)
{
    const auto isSameRoute = m_generation.watch();
    if (m_live->ingest(envelope) && isSameRoute() && !m_isLive) {
        setStatus(true, tr("Live from %1").arg(m_label));
    }
}

void SourceManager::onSessionStateChanged(DeviceSession::State state, const QString &message)
{
    m_sessionUp = state != DeviceSession::State::Lost && state != DeviceSession::State::Error &&
                  state != DeviceSession::State::Restarting;
    switch (state) {
    case DeviceSession::State::Ready:
        if (!m_isLive) {
            setStatus(false, tr("Connected to %1, waiting for scoreboard data…").arg(m_label));
        }
        break;
    case DeviceSession::State::Lost:
    case DeviceSession::State::Error:
        setStatus(false,
                  message.isEmpty() ? tr("Lost the connection to %1").arg(m_label) : message);
        break;
    case DeviceSession::State::Restarting:
        setStatus(false,
                  tr("%1 is restarting. Reopen the setup window to reconnect.").arg(m_label));
        break;
    default:
        break;
    }
}

} // namespace tallyforge
