// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/DeviceContract.h"
#include "helper/System.h"

#include <QBluetoothAddress>
#include <QBluetoothDeviceInfo>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QTimer>
#include <QVariantMap>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge::helper::system {

namespace {

using namespace std::chrono_literals;
using Interfaces = QMap<QString, QVariantMap>; // each with its properties
using Objects = QMap<QDBusObjectPath, Interfaces>;

constexpr auto askLimit = 5s;
constexpr auto pairLimit = 100s; // for a user who looks for the passkey
constexpr auto adapterInterface = "org.bluez.Adapter1"_L1;
constexpr auto deviceInterface = "org.bluez.Device1"_L1;
constexpr auto characteristicInterface = "org.bluez.GattCharacteristic1"_L1;

Failure failureOf(const QDBusError &error)
{
    if (error.type() == QDBusError::AccessDenied) {
        return {u"permission_denied"_s,
                QCoreApplication::translate(
                    "tallyforge::BluetoothHelper",
                    "This user may not use Bluetooth on this computer. Ask the computer's "
                    "administrator for access to it.")};
    }
    return {u"bluetooth_unavailable"_s,
            QCoreApplication::translate(
                "tallyforge::BluetoothHelper",
                "The Bluetooth service of this computer is not running. Install BlueZ or start "
                "its service \"bluetooth\", then try again.")};
}

/// The address of an adapter that is switched on, or the reason why there is none.
std::pair<Failure, QBluetoothAddress> adapterOf(const Objects &objects)
{
    bool switchedOff = false;
    for (const Interfaces &interfaces : objects) {
        const QVariantMap adapter = interfaces.value(adapterInterface);
        if (adapter.value(u"Powered"_s).toBool()) {
            return {{}, QBluetoothAddress(adapter.value(u"Address"_s).toString())};
        }
        switchedOff = switchedOff || !adapter.isEmpty();
    }
    return {switchedOff
                ? system::switchedOff()
                : Failure{u"bluetooth_unavailable"_s,
                          QCoreApplication::translate(
                              "tallyforge::BluetoothHelper",
                              "This computer has no Bluetooth adapter, or it is blocked. Plug one "
                              "in or unblock it, then try again.")},
            {}};
}

QString bluez()
{
    return u"org.bluez"_s;
}

QDBusMessage call(const QString &path, const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(bluez(), path, interface, method);
}

/// Sends a message and hands the answer over.
template <typename Answer>
void ask(const QDBusMessage &message, std::chrono::milliseconds limit, QObject *context,
         Answer answer)
{
    auto *const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::systemBus().asyncCall(message, static_cast<int>(limit.count())), context);
    const auto deliver = [watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        answer(*watcher);
    };
    if (watcher->isFinished()) { // there is no bus, and no signal will come
        QTimer::singleShot(0, context, deliver);
    } else {
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, deliver);
    }
}

/// Hands over all that BlueZ knows, or why it says nothing.
template <typename Answer> void askForObjects(QObject *context, Answer answer)
{
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<Objects>();
    ask(call(u"/"_s, u"org.freedesktop.DBus.ObjectManager"_s, u"GetManagedObjects"_s), askLimit,
        context, [answer = std::move(answer)](const QDBusPendingCall &done) {
            const QDBusPendingReply<Objects> reply = done;
            answer(reply.isError() ? Objects{} : reply.value(), reply.error());
        });
}

/// The path of a device, empty when BlueZ doesn't know it. Two adapters may know the same device;
/// the path is then that of the adapter which is connected to it.
QString pathOf(const QBluetoothDeviceInfo &device, const Objects &objects)
{
    const QString address = device.address().toString();
    QString found;
    for (const auto &[path, interfaces] : objects.asKeyValueRange()) {
        const QVariantMap properties = interfaces.value(deviceInterface);
        if (properties.value(u"Address"_s) == address) {
            if (properties.value(u"Connected"_s).toBool()) {
                return path.path();
            }
            found = path.path();
        }
    }
    return found;
}

bool paired(const QString &path, const Objects &objects)
{
    return objects.value(QDBusObjectPath(path)).value(deviceInterface).value(u"Paired"_s).toBool();
}

} // namespace

void check(QObject *context,
           const std::function<void(const Failure &, const QBluetoothAddress &)> &answer)
{
    askForObjects(context, [answer](const Objects &objects, const QDBusError &error) {
        if (error.isValid()) {
            answer(failureOf(error), {});
        } else {
            const auto [failure, adapter] = adapterOf(objects);
            answer(failure, adapter);
        }
    });
}

void watch(QObject *context, const std::function<void()> &gone)
{
    const auto *const watcher =
        new QDBusServiceWatcher(bluez(), QDBusConnection::systemBus(),
                                QDBusServiceWatcher::WatchForUnregistration, context);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceUnregistered, context, gone);
}

void connected(QObject *context,
               const std::function<void(const QList<QBluetoothAddress> &)> &answer)
{
    askForObjects(context, [answer](const Objects &objects, const QDBusError &) {
        QList<QBluetoothAddress> addresses;
        for (const Interfaces &interfaces : objects) {
            const QVariantMap device = interfaces.value(deviceInterface);
            if (device.value(u"Connected"_s).toBool()) {
                addresses.append(QBluetoothAddress(device.value(u"Address"_s).toString()));
            }
        }
        answer(addresses);
    });
}

void pair(const QBluetoothDeviceInfo &device, QObject *context, const std::function<void()> &answer)
{
    askForObjects(context, [=](const Objects &objects, const QDBusError &) {
        const QString path = pathOf(device, objects);
        if (path.isEmpty() || paired(path, objects)) {
            answer();
            return;
        }
        // How it ended shows when the device is asked for something.
        ask(call(path, deviceInterface, u"Pair"_s), pairLimit, context,
            [answer](const QDBusPendingCall &) { answer(); });
    });
}

void isUnpaired(const QBluetoothDeviceInfo &device, QObject *context,
                const std::function<void(bool)> &answer)
{
    askForObjects(context, [device, answer](const Objects &objects, const QDBusError &) {
        const QString path = pathOf(device, objects);
        answer(!path.isEmpty() && !paired(path, objects));
    });
}

// Qt has no packet size to tell over BlueZ, which keeps one at each characteristic.
void writeSize(const QBluetoothDeviceInfo &device, int mtu, QObject *context,
               const std::function<void(int)> &answer)
{
    askForObjects(context, [=](const Objects &objects, const QDBusError &) {
        const QString owner = pathOf(device, objects);
        int known = mtu;
        for (const auto &[path, interfaces] : objects.asKeyValueRange()) {
            const QVariantMap properties = interfaces.value(characteristicInterface);
            if (!owner.isEmpty() && path.path().startsWith(owner + u'/') &&
                QBluetoothUuid(properties.value(u"UUID"_s).toString()) ==
                    device_contract::characteristic()) {
                known = std::max(known, properties.value(u"MTU"_s).toInt());
            }
        }
        answer(std::max(known - device_contract::writeHeader, device_contract::leastWrite));
    });
}

} // namespace tallyforge::helper::system
