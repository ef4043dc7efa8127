// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/HeldSession.h"

#include "device/DeviceLink.h"
#include "device/RpcTransport.h"
#include "plugin/App.h"
#include "ui/setup/Carriers.h"

#include <utility>

namespace tallyforge {

namespace {

using State = DeviceSession::State;

// A device that sends its scores unasked does so on an open link whatever the session's state is.
bool bringsScores(const DeviceSession &session)
{
    const bool isSending = !session.link()->pollsState() && session.link()->transport()->isOpen() &&
                           session.state() != State::Connecting;
    return session.state() == State::Ready || isSending;
}

// Nobody can answer it once the dialog has gone.
bool waitsForUser(const DeviceSession &session)
{
    return session.state() == State::NeedsPassword || session.state() == State::NeedsNewPassword;
}

// Later, because it may be in the middle of a call of its own.
void end(const QPointer<DeviceSession> &session)
{
    if (session) {
        session->stop();
    }
    if (session) { // a callback of a call under way may have deleted it
        session->deleteLater();
    }
}

} // namespace

HeldSession::HeldSession(App &app, QObject *owner)
    : m_app(&app)
    , m_owner(owner)
{
}

bool HeldSession::isLive() const
{
    return m_app && m_session && m_app->sources()->session() == m_session;
}

DeviceSession *HeldSession::open(DeviceLink *link)
{
    m_session = new DeviceSession(link, m_owner);
    return m_session;
}

DeviceSession *HeldSession::borrow(const DeviceChoice &choice)
{
    DeviceSession *live = m_app ? m_app->sources()->session() : nullptr;
    if (live == nullptr || live->link()->kind() != choice.carrier ||
        live->link()->address() != choice.address) {
        return nullptr;
    }
    live->setParent(m_owner);
    m_session = live;
    return live;
}

QPointer<DeviceSession> HeldSession::take()
{
    QPointer<DeviceSession> session = std::exchange(m_session, nullptr);
    if (session) {
        QObject::disconnect(session, nullptr, m_owner, nullptr);
        QObject::disconnect(session->link(), nullptr, m_owner, nullptr);
    }
    return session;
}

void HeldSession::cancel()
{
    const bool wasLive = isLive();
    const QPointer<DeviceSession> session = take();
    if (!wasLive) {
        end(session);
        return;
    }
    giveBack(session);
}

void HeldSession::giveBack(const QPointer<DeviceSession> &session)
{
    session->setParent(m_app->sources());
    if (!bringsScores(*session)) {
        session->stop();
        if (m_app && session && m_app->sources()->session() == session) {
            m_app->sources()->sessionStopped();
        }
    }
}

void HeldSession::disconnect()
{
    const bool wasLive = isLive();
    const QPointer<DeviceSession> session = take();
    end(session);
    if (wasLive && m_app && session && m_app->sources()->session() == session) {
        m_app->sources()->sessionStopped();
    }
}

void HeldSession::leave()
{
    const bool wasLive = isLive();
    const QPointer<DeviceSession> session = take();
    if (wasLive && waitsForUser(*session)) {
        giveBack(session);
    } else if (wasLive) {
        session->setParent(m_app->sources());
    } else if (!m_app || !m_app->keepUsbRelay(session)) {
        end(session);
    }
}

void HeldSession::giveToLiveData(const QString &name)
{
    if (!m_app || !m_session) {
        return;
    }
    const bool isNamed = isLive() && m_app->sources()->label() == name;
    const QPointer<DeviceSession> session = take();
    if (!isNamed) {
        m_app->sources()->useSession(session, name);
    }
    if (session && m_app && m_app->sources()->session() == session) {
        session->setParent(m_app->sources());
    } else {
        end(session); // a slot has chosen another route at once
    }
}

} // namespace tallyforge
