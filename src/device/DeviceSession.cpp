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
constexpr int pollTimeoutsUntilClose = 3;

bool meansWrongPassword(const QString &code)
{
    static constexpr std::array codes{"unauthorized"_L1, "invalid_credentials"_L1, "forbidden"_L1,
                                      "bad_password"_L1, "rate_limited"_L1};
    return std::any_of(codes.begin(), codes.end(),
                       [&code](QLatin1StringView known) { return code == known; });
}

// What the device says of itself now, else what it said when the link opened.
QString firstText(const QString &now, const QString &atOpening)
{
    return now.isEmpty() ? atOpening : now;
}

} // namespace

DeviceSession::DeviceSession(DeviceLink *link, QObject *parent)
    : DeviceSession(link, Timing{}, parent)
{
}

DeviceSession::DeviceSession(DeviceLink *link, const Timing &timing, QObject *parent)
    : QObject(parent)
    , m_timing(timing)
    , m_link(link)
    , m_rpc(link->transport(), nullptr)
{
    m_link->setParent(this);
    connect(m_link, &DeviceLink::opened, this, &DeviceSession::onLinkOpened);
    connect(m_link, &DeviceLink::closed, this, &DeviceSession::onLinkClosed);
    connect(m_link, &DeviceLink::envelope, this, &DeviceSession::envelope);
    connect(m_link, &DeviceLink::failed, this,
            [this](const QString &, const QString &message) { onLinkFailed(message); });
    m_pollTimer.setInterval(m_timing.poll);
    connect(&m_pollTimer, &QTimer::timeout, this, &DeviceSession::pollOnce);
}

DeviceSession::~DeviceSession()
{
    stop();
    // Should a callback have started it once more.
    m_link->close();
    m_rpc.abortAll(u"disconnected"_s, tr("Disconnected"));
}

// The text is a copy of its own, for a slot may start the session over, which clears the members.
void DeviceSession::setState(State state,
                             QString detail) // NOLINT(performance-unnecessary-value-param)
{
    m_state = state;
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

// What belongs to one connection is over; the number is the next one's.
unsigned DeviceSession::endConnection()
{
    m_pollTimer.stop();
    m_pollInFlight = false;
    return ++m_connection;
}

// Ends the connection in silence. False when a callback of a call under way has deleted the
// session, stopped it or started it anew.
bool DeviceSession::hangUp()
{
    const unsigned connection = endConnection();
    const QPointer<DeviceSession> self = this;
    const auto failCalls = [&] {
        m_rpc.abortAll(u"disconnected"_s, tr("Disconnected"));
        return self && connection == m_connection;
    };
    if (!failCalls()) {
        return false;
    }
    m_link->close();
    return failCalls(); // what the callbacks have asked for while the link was open
}

void DeviceSession::start(const QList<QString> &candidates)
{
    // The sign-in would wait for a reply that the new connection won't bring.
    if (m_rpc.pending() > 0 && !hangUp()) {
        return;
    }
    const unsigned connection = endConnection();
    m_pollTimeouts = 0;
    m_candidates = candidates;
    m_mustChangePassword = false;
    m_receiverMode = false;
    m_viaReceiver = false;
    m_restarting = false;
    m_detail.clear();
    const QPointer<DeviceSession> self = this;
    setState(State::Connecting, {});
    if (self && connection == m_connection) {
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
    const QPointer<DeviceSession> self = this;
    const unsigned connection = m_connection;
    setState(State::SigningIn, {});
    if (self && connection == m_connection && m_state == State::SigningIn) {
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
    const unsigned connection = endConnection();
    const QPointer<DeviceSession> self = this;
    m_rpc.abortAll(u"disconnected"_s, tr("The connection to the device was lost"));
    if (!self || connection != m_connection) {
        return; // a callback has deleted, stopped or restarted the session
    }
    if (m_restarting) {
        setState(State::Restarting, {});
    } else if (m_state != State::Idle) {
        setState(State::Lost, reason);
    }
}

// A step of the session's own that a lost link or a stop must not take any further.
RpcClient::Callback DeviceSession::whileConnected(const RpcClient::Callback &callback)
{
    return [this, connection = m_connection, callback](const RpcResult &result) {
        if (connection == m_connection) {
            callback(result);
        }
    };
}

void DeviceSession::tryNextPassword()
{
    if (m_candidates.isEmpty()) {
        setState(State::NeedsPassword, {});
        return;
    }
    const QString password = m_candidates.takeFirst();
    m_rpc.call(u"login"_s, {{u"password"_s, password}},
               whileConnected(
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
    refreshStatus([this, connection = m_connection](bool, const QString &) {
        if (connection != m_connection) {
            return;
        }
        if (m_mustChangePassword) {
            setState(State::NeedsNewPassword, {});
        } else {
            becomeReady();
        }
    });
}

void DeviceSession::becomeReady()
{
    if (m_link->pollsState()) {
        m_pollTimer.start();
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

void DeviceSession::pollOnce()
{
    // Never behind the user's own operations.
    if (m_state != State::Ready || m_pollInFlight || m_rpc.pending() > 0) {
        return;
    }
    m_pollInFlight = true;
    m_rpc.call(u"getState"_s, {},
               whileConnected([this](const RpcResult &result) { onPollReply(result); }),
               static_cast<int>(m_timing.pollAnswer.count()));
}

void DeviceSession::onPollReply(const RpcResult &result)
{
    m_pollInFlight = false;
    if (result.ok) {
        m_pollTimeouts = 0;
        Q_EMIT envelope(result.result);
    } else if (result.errorCode == "unauthorized"_L1 && !m_password.isEmpty()) {
        m_candidates = {m_password};
        tryNextPassword();
    } else if (result.errorCode == "timeout"_L1 && ++m_pollTimeouts >= pollTimeoutsUntilClose) {
        m_pollTimeouts = 0;
        m_link->close();
        onLinkClosed({}); // which a link that is closed from here doesn't say
    }
}

} // namespace tallyforge
