// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleBridge.h"
#include "device/usb/SerialPlatform.h"

#include <QList>
#include <QString>

#include <chrono>
#include <functional>

namespace tallyforge {

class DeviceLink;

/// A device that the user has chosen, and the way to it.
struct DeviceChoice
{
    QString carrier; ///< "usb", "ble" or "lan"
    QString address; ///< as in DeviceLink::address()
    QString label;   ///< how the user knows the device
};

/// What the setup dialog needs of the ways to a device.
struct Carriers
{
    std::function<QList<SerialPortInfo>()> listPorts;
    /// As BleBridge::scan().
    std::function<void(std::chrono::milliseconds duration, const BleBridge::ScanCallback &callback)>
        scanBluetooth;
    /// A link that isn't open yet; the caller owns it.
    std::function<DeviceLink *(const DeviceChoice &choice)> makeLink;
};

/// Those of this computer.
[[nodiscard]] Carriers realCarriers();

/// What the user may have to do while a device is being reached over a carrier.
[[nodiscard]] QString waitingText(const QString &carrier);

/// What to tell the user of a failure of a scan or a link; both come with a machine word and a
/// sentence.
[[nodiscard]] QString failureText(const QString &code, const QString &message);

} // namespace tallyforge
