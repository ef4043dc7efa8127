// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "helper/Failure.h"

#include <QBluetoothAddress>
#include <QBluetoothDeviceDiscoveryAgent>
#include <QBluetoothDeviceInfo>
#include <QList>
#include <QObject>

#include <chrono>

namespace tallyforge::helper {

/// One look around for Bluetooth devices. It ends by one of the two signals.
class DeviceScan final : public QObject
{
    Q_OBJECT

public:
    explicit DeviceScan(QObject *parent);

    void start(std::chrono::milliseconds duration);

Q_SIGNALS:
    /// The devices of this system, and how many of any kind there were.
    void finished(const QList<QBluetoothDeviceInfo> &devices, int seen);
    void failed(const tallyforge::helper::Failure &failure);

private:
    void onFinished();
    void report(const QList<QBluetoothAddress> &connected);
    void onError(QBluetoothDeviceDiscoveryAgent::Error error);

    QBluetoothDeviceDiscoveryAgent m_agent;
};

/// A device's name on the wire: its address, or what macOS gives out instead.
[[nodiscard]] QString deviceId(const QBluetoothDeviceInfo &device);
/// The device behind such a name, which need not have been seen yet; not valid when it is none.
[[nodiscard]] QBluetoothDeviceInfo deviceOf(const QString &id);

} // namespace tallyforge::helper
