// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/DeviceScan.h"

#include "helper/DeviceContract.h"
#include "helper/System.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tallyforge::helper {

DeviceScan::DeviceScan(const QBluetoothAddress &adapter, QObject *parent)
    : QObject(parent)
    , m_agent(adapter)
{
    connect(&m_agent, &QBluetoothDeviceDiscoveryAgent::finished, this, &DeviceScan::onFinished);
    connect(&m_agent, &QBluetoothDeviceDiscoveryAgent::errorOccurred, this, &DeviceScan::onError);
}

void DeviceScan::start(std::chrono::milliseconds duration)
{
    m_agent.setLowEnergyDiscoveryTimeout(static_cast<int>(duration.count()));
    m_agent.start(QBluetoothDeviceDiscoveryAgent::LowEnergyMethod);
}

void DeviceScan::onFinished()
{
    system::connected(this,
                      [this](const QList<QBluetoothAddress> &connected) { report(connected); });
}

// The system also names devices that it remembers. A device that was heard just now has a signal
// strength; one that is connected is there, but keeps silent.
void DeviceScan::report(const QList<QBluetoothAddress> &connected)
{
    const QList<QBluetoothDeviceInfo> all = m_agent.discoveredDevices();
    QList<QBluetoothDeviceInfo> devices;
    int seen = 0;
    for (const QBluetoothDeviceInfo &device : all) {
        if (device.rssi() == 0 && !connected.contains(device.address())) {
            continue;
        }
        ++seen;
        if (device.serviceUuids().contains(device_contract::service())) {
            devices.append(device);
        }
    }
    Q_EMIT finished(devices, seen);
}

void DeviceScan::onError(QBluetoothDeviceDiscoveryAgent::Error error)
{
    using Agent = QBluetoothDeviceDiscoveryAgent;
    // Qt has texts of its own for these, in English and for programmers.
    if (error == Agent::MissingPermissionsError) {
        Q_EMIT failed(system::notAllowed());
    } else if (error == Agent::PoweredOffError) {
        Q_EMIT failed(system::switchedOff());
    } else if (error == Agent::InvalidBluetoothAdapterError ||
               error == Agent::UnsupportedPlatformError) {
        Q_EMIT failed(system::adapterGone());
    } else {
        Q_EMIT failed({u"scan_failed"_s,
                       QCoreApplication::translate(
                           "tallyforge::BluetoothHelper",
                           "The search for Bluetooth devices failed. Try again; if it keeps "
                           "failing, switch Bluetooth off and on.")});
    }
}

QString deviceId(const QBluetoothDeviceInfo &device)
{
    return device.address().isNull() ? device.deviceUuid().toString(QUuid::WithoutBraces)
                                     : device.address().toString();
}

QBluetoothDeviceInfo deviceOf(const QString &id)
{
    QBluetoothDeviceInfo device;
    if (const QBluetoothAddress address(id); !address.isNull()) {
        device = QBluetoothDeviceInfo(address, {}, 0);
    } else if (const QBluetoothUuid uuid(id); !uuid.isNull()) {
        device = QBluetoothDeviceInfo(uuid, {}, 0);
    }
    device.setCoreConfigurations(QBluetoothDeviceInfo::LowEnergyCoreConfiguration);
    return device;
}

} // namespace tallyforge::helper
