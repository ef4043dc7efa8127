// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceSession.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

namespace tallyforge {

class UsbLink;

/// The sessions that go on lending a USB device this computer's internet after the dialog that
/// opened them has closed; at most one for each port. It owns them, and lets go of one by itself
/// when its device is unplugged, fails or restarts.
class UsbRelays final : public QObject
{
    Q_OBJECT

public:
    explicit UsbRelays(QObject *parent);

    /// Takes a session over if there is something to go on with: a usable one with a receiver, or
    /// with a device that has said where its cloud is. It replaces another one on the same port.
    /// False leaves it with the caller.
    bool keep(DeviceSession *offered);
    /// Ends the session on a port, such as "/dev/ttyACM0", so that it can be opened anew.
    void release(const QString &portName);
    void stopAll();
    /// A line for the user about each session, in the order in which they came.
    [[nodiscard]] QStringList summaries() const;

Q_SIGNALS:
    /// Sessions have come or gone, or their summaries have changed.
    void changed();

private:
    void onStateChanged(DeviceSession *session, DeviceSession::State state);

    QList<QPointer<DeviceSession>> m_relays;
};

} // namespace tallyforge
