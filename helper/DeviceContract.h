// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QBluetoothUuid>
#include <QString>

/// What a device offers over Bluetooth Low Energy.
///
/// - It advertises the service; by that alone it is told from other Bluetooth devices.
/// - The service holds one characteristic, which takes writes with response and notifies.
/// - Each write is a request or a fragment of one, each notification the same of an answer; the
///   plug-in's BleFragments.h describes the fragments.
/// - It wants a paired computer: an unpaired one's writes, or its subscription, are refused.
/// - One computer is connected to it at a time.
///
/// The two numbers are CMake's TALLYFORGE_BLE_SERVICE and TALLYFORGE_BLE_CHARACTERISTIC.
namespace tallyforge::helper::device_contract {

[[nodiscard]] inline QBluetoothUuid service()
{
    return QBluetoothUuid(QStringLiteral(TALLYFORGE_BLE_SERVICE));
}

[[nodiscard]] inline QBluetoothUuid characteristic()
{
    return QBluetoothUuid(QStringLiteral(TALLYFORGE_BLE_CHARACTERISTIC));
}

/// What every connection carries in one write.
inline constexpr int leastWrite = 20;
/// Of a packet, what a write's own header takes.
inline constexpr int writeHeader = 3;

} // namespace tallyforge::helper::device_contract
