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

/// One search for Bluetooth devices. It ends with one of the two signals, or silently when it is
/// stopped.
class DeviceScan final : public QObject
{
    Q_OBJECT

public:
    /// The adapter is this computer's; no address means the system's own choice.
    DeviceScan(const QBluetoothAddress &adapter, QObject *parent);

    void start(std::chrono::milliseconds duration);
    void stop() { m_agent.stop(); }

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
/// The device of such a name, whether a scan has seen it or not. Not valid when the text is no such
/// name.
[[nodiscard]] QBluetoothDeviceInfo deviceOf(const QString &id);

} // namespace tallyforge::helper
