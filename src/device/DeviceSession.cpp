// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/DeviceSession.h"

#include "device/DeviceLink.h"

#include <QPointer>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int loginTimeoutMs = RpcClient::defaultTimeoutMs;
constexpr int loginViaReceiverTimeoutMs = 30000;

bool meansWrongPassword(const QString &code)
{
    static constexpr std::array codes{"unauthorized"_L1, "invalid_credentials"_L1, "forbidden"_L1,
                                      "bad_password"_L1, "rate_limited"_L1};
    return std::any_of(codes.begin(), codes.end(),
                       [&code](QLatin1StringView known) { return code == known; });
}

// The device's present text about itself, else its text from when the link opened.
QString firstText(const QString &now, const QString &atOpening)
{
    return now.isEmpty() ? atOpening : now;
}

} // namespace

DeviceSession::DeviceSession(DeviceLink *link, QObject *parent)
    : QObject(parent)
    , m_link(link)
    , m_rpc(link->transport(), nullptr)
    , m_poll(&m_rpc, nullptr)
{
    m_link->setParent(this);
    connect(m_link, &DeviceLink::opened, this, &DeviceSession::onLinkOpened);
    connect(m_link, &DeviceLink::closed, this, &DeviceSession::onLinkClosed);
    connect(m_link, &DeviceLink::envelope, this, &DeviceSession::envelope);
    connect(m_link, &DeviceLink::failed, this,
            [this](const QString &, const QString &message) { onLinkFailed(message); });
    connect(&m_poll, &StatePoll::envelope, this, &DeviceSession::envelope);
    connect(&m_poll, &StatePoll::unauthorized, this, &DeviceSession::onPollUnauthorized);
    connect(&m_poll, &StatePoll::silent, this, &DeviceSession::onPollSilent);
}

DeviceSession::~DeviceSession()
{
    stop();
    m_link->close(); // a callback may have started the session once more
    m_rpc.abortAll(u"disconnected"_s, tr("Disconnected"));
}

// The text is a copy, because a slot may start the session over, which clears the members.
void DeviceSession::setState(State state,
                             QString detail) // NOLINT(performance-unnecessary-value-param)
{
    m_state = state;
    if (state != State::Ready) {
        m_poll.stop();
    }
    Q_EMIT stateChanged(state, detail);
}

QString DeviceSession::deviceId() const
{
    return firstText(m_status.value("device_id"_L1).toString(),
                     m_linkInfo.value("device_id"_L1).toString());
}

QString DeviceSession::firmware() const
{
    return firstText(m_status.value("firmware_version"_L1).toString(),
                     m_linkInfo.value("fw"_L1).toString());
}

QString DeviceSession::wifiIp() const
{
    return m_status.value("wifi_sta_ip"_L1).toString();
}

void DeviceSession::endConnection()
{
    m_generation.next();
    m_poll.stop();
}

// Ends the connection in silence. False when a callback of a call under way has deleted the
// session, stopped it or started it anew.
bool DeviceSession::hangUp()
{
    endConnection();
    const auto isCurrent = m_generation.watch();
    m_rpc.abortAll(u"disconnected"_s, tr("Disconnected"));
    if (!isCurrent()) {
        return false;
    }
    m_link->close();
    // The callbacks may have made calls while the link was still open.
    m_rpc.abortAll(u"disconnected"_s, tr("Disconnected"));
    return isCurrent();
}

void DeviceSession::start(const QList<QString> &candidates)
{
    // The sign-in would wait for a reply that the new connection won't bring.
    if (m_rpc.pending() > 0 && !hangUp()) {
        return;
    }
    endConnection();
    m_candidates = candidates;
    m_mustChangePassword = false;
    m_receiverMode = false;
    m_viaReceiver = false;
    m_restarting = false;
    m_detail.clear();
    const auto isCurrent = m_generation.watch();
    setState(State::Connecting, {});
    if (isCurrent()) {
        m_link->open();
    }
}

void DeviceSession::manageViaReceiver(const QList<QString> &candidates)
{
    m_viaReceiver = true;
    m_mustChangePassword = false;
    m_receiverMode = false;
    m_detail.clear();
    m_candidates = candidates;
    signIn();
}

void DeviceSession::submitPassword(const QString &password)
{
    m_candidates = {password};
    signIn();
}

void DeviceSession::signIn()
{
    const auto isCurrent = m_generation.watch();
    setState(State::SigningIn, {});
    if (isCurrent() && m_state == State::SigningIn) {
        tryNextPassword();
    }
}

void DeviceSession::stop()
{
    m_password.clear();
    m_restarting = false;
    if (hangUp()) {
        m_state = State::Idle;
    }
}

void DeviceSession::onLinkOpened(const QJsonObject &info)
{
    m_linkInfo = info;
    m_receiverMode = !m_viaReceiver && info.value("receiver"_L1).toBool();
    if (m_receiverMode) {
        setState(State::Ready, {});
        return;
    }
    // A link that came back: the password that worked is all there is to try.
    if (!m_password.isEmpty()) {
        m_candidates = {m_password};
    }
    signIn();
}

void DeviceSession::onLinkFailed(const QString &message)
{
    m_detail = message;
    setState(State::Error, message);
}

void DeviceSession::onLinkClosed(const QString &reason)
{
    endConnection();
    const auto isCurrent = m_generation.watch();
    m_rpc.abortAll(u"disconnected"_s, tr("The connection to the device was lost"));
    if (!isCurrent()) {
        return; // a callback has deleted, stopped or restarted the session
    }
    if (m_restarting) {
        setState(State::Restarting, {});
    } else if (m_state != State::Idle) {
        setState(State::Lost, reason);
    }
}

void DeviceSession::tryNextPassword()
{
    if (m_candidates.isEmpty()) {
        setState(State::NeedsPassword, {});
        return;
    }
    const QString password = m_candidates.takeFirst();
    m_rpc.call(u"login"_s, {{u"password"_s, password}},
               m_generation.guard(
                   [this, password](const RpcResult &result) { onLoginReply(password, result); }),
               m_viaReceiver ? loginViaReceiverTimeoutMs : loginTimeoutMs);
}

void DeviceSession::onLoginReply(const QString &password, const RpcResult &result)
{
    if (result.ok) {
        m_password = password;
        afterLogin(result);
        return;
    }
    if (meansWrongPassword(result.errorCode)) {
        if (result.errorCode == "rate_limited"_L1) {
            m_detail = result.errorMessage;
            m_candidates.clear();
        }
        tryNextPassword();
        return;
    }
    // The carrier has failed, and no other password would fare better.
    m_detail =
        m_viaReceiver && result.errorCode == "timeout"_L1
            ? tr("The paired device did not answer through the receiver. Check that the device is "
                 "powered, in range of the receiver and linked to it, then try again.")
            : result.errorMessage;
    setState(State::Error, m_detail);
}

void DeviceSession::afterLogin(const RpcResult &result)
{
    m_mustChangePassword = result.result.value("must_change_password"_L1).toBool();
    refreshStatus(m_generation.guard([this](bool, const QString &) {
        if (m_mustChangePassword) {
            setState(State::NeedsNewPassword, {});
        } else {
            becomeReady();
        }
    }));
}

void DeviceSession::becomeReady()
{
    if (m_link->pollsState()) {
        m_poll.start();
    }
    setState(State::Ready, {});
}

void DeviceSession::refreshStatus(const Done &callback)
{
    m_rpc.call(u"getStatus"_s, {}, [this, callback](const RpcResult &result) {
        const QPointer<DeviceSession> self = this;
        if (result.ok) {
            m_status = result.result;
            Q_EMIT statusUpdated();
        }
        if (self && callback) {
            callback(result.ok, result.errorMessage);
        }
    });
}

// The sign-in may have expired. The state stays while the password that worked is tried again.
void DeviceSession::onPollUnauthorized()
{
    if (!m_password.isEmpty()) {
        m_candidates = {m_password};
        tryNextPassword();
    }
}

void DeviceSession::onPollSilent()
{
    m_link->close();
    onLinkClosed({}); // a link that is closed from here emits nothing
}

} // namespace tallyforge
