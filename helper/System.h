// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "helper/Failure.h"

#include <QBluetoothAddress>
#include <QCoreApplication>
#include <QList>

#include <functional>

class QBluetoothDeviceInfo;
class QObject;

/// What only the operating system itself can tell or do about Bluetooth. Nothing here blocks; an
/// answer comes unless its context has gone by then.
namespace tallyforge::helper::system {

/// Whether there is a Bluetooth that is switched on.
void check(QObject *context, const std::function<void(const Failure &)> &answer);

/// What check() answers when there is a Bluetooth that is switched off.
[[nodiscard]] inline Failure switchedOff()
{
    return {QStringLiteral("bluetooth_unavailable"),
            QCoreApplication::translate("System",
                                        "Bluetooth is switched off on this computer. Switch it on "
                                        "in the system's settings, then try again.")};
}

/// Calls when the system's Bluetooth service ends, which takes all connections along and says so to
/// nobody.
void watch(QObject *context, const std::function<void()> &gone);

/// The devices that the system is connected to, as far as it tells their addresses.
void connected(QObject *context,
               const std::function<void(const QList<QBluetoothAddress> &)> &answer);

/// Pairs with a connected device, with whatever dialog the system has for it, unless that was done
/// before. The answer says only that it is over.
void pair(const QBluetoothDeviceInfo &device, QObject *context,
          const std::function<void()> &answer);

/// Whether the system is known not to be paired with a device.
void isUnpaired(const QBluetoothDeviceInfo &device, QObject *context,
                const std::function<void(bool)> &answer);

/// How many bytes one write of the devices' characteristic takes. mtu is what Qt knows of the
/// connection's packet size, which is less than 1 when it knows nothing.
void writeSize(const QBluetoothDeviceInfo &device, int mtu, QObject *context,
               const std::function<void(int)> &answer);

} // namespace tallyforge::helper::system
