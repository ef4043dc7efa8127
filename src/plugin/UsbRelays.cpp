// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/UsbRelays.h"

#include "device/usb/UsbLink.h"

#include <algorithm>
#include <utility>

namespace tallyforge {

namespace {

UsbLink *usbLinkOf(const DeviceSession *session)
{
    return session ? qobject_cast<UsbLink *>(session->link()) : nullptr;
}

bool hasEnded(DeviceSession::State state)
{
    return state == DeviceSession::State::Lost || state == DeviceSession::State::Error ||
           state == DeviceSession::State::Restarting;
}

// Deleted later, because they may be in the middle of a call of their own.
void end(const QList<QPointer<DeviceSession>> &sessions)
{
    for (const QPointer<DeviceSession> &session : sessions) {
        if (session) {
            session->stop();
        }
        if (session) {
            session->link()->close(); // a callback may have opened it anew
            session->deleteLater();
        }
    }
}

} // namespace

UsbRelays::UsbRelays(QObject *parent)
    : QObject(parent)
{
}

bool UsbRelays::keep(DeviceSession *offered)
{
    const QPointer<DeviceSession> session = offered;
    UsbLink *link = usbLinkOf(session);
    if (link == nullptr || session->state() == DeviceSession::State::Idle ||
        hasEnded(session->state()) ||
        (!session->receiverMode() && !link->cloud()->status().configured)) {
        return false;
    }
    if (m_relays.contains(session)) {
        session->setParent(this); // it may have been another one's meanwhile
        return true;
    }
    release(link->path());
    if (!session) {
        return false; // a callback of the one before has deleted it
    }
    session->setParent(this);
    m_relays.append(session);
    connect(link->cloud(), &CloudRelay::statusChanged, this, &UsbRelays::changed);
    connect(session, &DeviceSession::statusUpdated, this, &UsbRelays::changed); // perhaps its id
    connect(session, &QObject::destroyed, this, &UsbRelays::changed);
    connect(session, &DeviceSession::stateChanged, this,
            [this, offered](DeviceSession::State state) { onStateChanged(offered, state); });
    Q_EMIT changed();
    return true;
}

void UsbRelays::onStateChanged(DeviceSession *session, DeviceSession::State state)
{
    if (hasEnded(state) && m_relays.removeOne(session)) {
        session->deleteLater();
        Q_EMIT changed();
    }
}

void UsbRelays::release(const QString &portName)
{
    QList<QPointer<DeviceSession>> released;
    m_relays.removeIf([&](const QPointer<DeviceSession> &session) {
        const UsbLink *link = usbLinkOf(session);
        if (link != nullptr && link->path() == portName) {
            released.append(session);
        }
        return link == nullptr || link->path() == portName;
    });
    end(released);
    Q_EMIT changed();
}

void UsbRelays::stopAll()
{
    end(std::exchange(m_relays, {}));
    Q_EMIT changed();
}

QStringList UsbRelays::summaries() const
{
    QStringList lines;
    for (const QPointer<DeviceSession> &session : m_relays) {
        UsbLink *link = usbLinkOf(session);
        if (link == nullptr) {
            continue;
        }
        const QString id = session->deviceId();
        const QString name = session->receiverMode() ? tr("wireless receiver")
                             : id.isEmpty()          ? tr("USB device")
                                                     : id;
        const CloudRelayStatus cloud = link->cloud()->status();
        const QString condition =
            cloud.connected              ? tr("connected to the cloud through this computer")
            : !cloud.lastError.isEmpty() ? tr("cannot reach the cloud (%1)").arg(cloud.lastError)
            : cloud.configured           ? tr("ready, waiting for the device")
                                         : tr("waiting for the paired device");
        lines.append(tr("%1: %2").arg(name, condition));
    }
    return lines;
}

} // namespace tallyforge
