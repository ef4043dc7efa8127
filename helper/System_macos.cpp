// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/DeviceContract.h"
#include "helper/System.h"

#include <QBluetoothAddress>
#include <QBluetoothLocalDevice>
#include <QTimer>

#include <algorithm>

namespace tallyforge::helper::system {

namespace {

template <typename Function> void later(QObject *context, Function function)
{
    QTimer::singleShot(0, context, std::move(function));
}

} // namespace

void check(QObject *context,
           const std::function<void(const Failure &, const QBluetoothAddress &)> &answer)
{
    const QBluetoothLocalDevice device;
    const bool on = device.isValid() && device.hostMode() != QBluetoothLocalDevice::HostPoweredOff;
    later(context, [answer, on] { answer(on ? Failure{} : switchedOff(), {}); });
}

// Its service doesn't end by itself.
void watch(QObject * /*context*/, const std::function<void()> & /*gone*/) {}

// It tells no addresses.
void connected(QObject *context,
               const std::function<void(const QList<QBluetoothAddress> &)> &answer)
{
    later(context, [answer] { answer({}); });
}

// macOS asks the user by itself when a device refuses something to an unpaired computer.
void pair(const QBluetoothDeviceInfo & /*device*/, QObject *context,
          const std::function<void()> &answer)
{
    later(context, answer);
}

// It doesn't tell which devices it is paired with.
void isUnpaired(const QBluetoothDeviceInfo & /*device*/, QObject *context,
                const std::function<void(bool)> &answer)
{
    later(context, [answer] { answer(false); });
}

void writeSize(const QBluetoothDeviceInfo & /*device*/, int mtu, QObject *context,
               const std::function<void(int)> &answer)
{
    later(context, [answer, mtu] {
        answer(std::max(mtu - device_contract::writeHeader, device_contract::leastWrite));
    });
}

} // namespace tallyforge::helper::system
