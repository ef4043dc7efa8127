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

/// The parts of Bluetooth that differ between operating systems. Nothing here blocks. Each answer
/// comes exactly once, unless its context has gone by then.
namespace tallyforge::helper::system {

/// Looks for a Bluetooth adapter that is switched on. Answers with its address, which is null when
/// the system chooses by itself, or with the reason why there is none.
void check(QObject *context,
           const std::function<void(const Failure &, const QBluetoothAddress &adapter)> &answer);

/// Every adapter is switched off.
[[nodiscard]] inline Failure switchedOff()
{
    return {QStringLiteral("bluetooth_unavailable"),
            QCoreApplication::translate("tallyforge::BluetoothHelper",
                                        "Bluetooth is switched off on this computer. Switch it on "
                                        "in the system's settings, then try again.")};
}

/// The adapter that was in use can't be found any more.
[[nodiscard]] inline Failure adapterGone()
{
    return {QStringLiteral("bluetooth_unavailable"),
            QCoreApplication::translate("tallyforge::BluetoothHelper",
                                        "The Bluetooth adapter of this computer is gone.")};
}

/// The user hasn't allowed this program to use Bluetooth.
[[nodiscard]] inline Failure notAllowed()
{
    return {QStringLiteral("permission_denied"),
            QCoreApplication::translate("tallyforge::BluetoothHelper",
                                        "Bluetooth is not allowed for Tallyforge. Allow it in the "
                                        "system's privacy settings, then try again.")};
}

/// Calls when the system's Bluetooth service ends. All connections end with it, without a word from
/// the system.
void watch(QObject *context, const std::function<void()> &gone);

/// The devices that the system is connected to, as far as it tells their addresses.
void connected(QObject *context,
               const std::function<void(const QList<QBluetoothAddress> &)> &answer);

/// Pairs with a connected device, unless it is paired already. The system may show a dialog of its
/// own. The answer says only that the attempt is over.
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
