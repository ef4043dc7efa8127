// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/setup/Carriers.h"

#include "device/ble/BleLink.h"
#include "device/http/HttpLink.h"
#include "device/usb/UsbLink.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

DeviceLink *makeLink(const DeviceChoice &choice)
{
    if (choice.carrier == "usb"_L1) {
        return new UsbLink(choice.address);
    }
    if (choice.carrier == "ble"_L1) {
        return new BleLink(choice.address, choice.label);
    }
    return new HttpLink(choice.address);
}

} // namespace

Carriers realCarriers()
{
    return {serial_platform::list,
            [](std::chrono::milliseconds duration, const BleBridge::ScanCallback &callback) {
                BleBridge::instance()->scan(duration, callback);
            },
            makeLink};
}

QString waitingText(const QString &carrier)
{
    if (carrier == "usb"_L1) {
        return QCoreApplication::translate(
            "Carriers", "Waiting for the device to answer. If it just powered on this can take up "
                        "to a minute.");
    }
    if (carrier == "ble"_L1) {
        return QCoreApplication::translate(
            "Carriers", "Connecting over Bluetooth. If your computer asks for a passkey, enter the "
                        "6-digit number from the device's label.");
    }
    return QCoreApplication::translate("Carriers", "Contacting the device on your network…");
}

QString failureText(const QString &code, const QString &message)
{
    if (code == "permission_denied"_L1) {
        return QCoreApplication::translate(
            "Carriers",
            "Bluetooth access was denied. Allow \"Tallyforge Bluetooth Helper\" in your "
            "system's Privacy & Security → Bluetooth settings, then scan again.");
    }
    if (code == "bluetooth_unavailable"_L1 && message.isEmpty()) {
        return QCoreApplication::translate(
            "Carriers", "Bluetooth is turned off or unavailable on this computer.");
    }
    return message;
}

} // namespace tallyforge
