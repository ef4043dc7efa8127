// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/Helper.h"

#include "common/JsonText.h"
#include "helper/DeviceConnection.h"
#include "helper/DeviceScan.h"
#include "helper/System.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QPermissions>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge::helper {

namespace {

using namespace std::chrono_literals;

constexpr int shortestScan = 100;
constexpr int longestScan = 60000;
constexpr auto quitLimit = 4s;

Failure busy()
{
    return {u"busy"_s,
            QCoreApplication::translate("tallyforge::BluetoothHelper",
                                        "Bluetooth is still busy with the request before.")};
}

} // namespace

Helper::Helper(QObject *parent)
    : QObject(parent)
{
    connect(&m_plugin, &PluginSocket::operation, this, &Helper::onOperation);
    connect(&m_plugin, &PluginSocket::ended, this, &Helper::quit);
}

void Helper::start(quint16 port, const QString &token)
{
    m_plugin.open(port, token);
}

void Helper::onOperation(const QString &name, int id, const QJsonObject &parameters)
{
    if (name == "quit"_L1) {
        quit();
    } else {
        m_operations.append({name, id, parameters});
        beginNext();
    }
}

// A write goes to a device that is connected, so the answer about an adapter means nothing to it.
void Helper::beginNext()
{
    const auto mayBegin = [this] {
        return !m_asking || m_operations.constFirst().name == "write"_L1;
    };
    while (!m_quitting && !m_operations.isEmpty() && mayBegin()) {
        begin(m_operations.takeFirst());
    }
}

void Helper::begin(const Operation &operation)
{
    const auto &[name, id, parameters] = operation;
    if (name == "start"_L1) {
        bringUp(id);
    } else if (name == "scan"_L1) {
        withAdapter(id, [this, id, parameters](const QBluetoothAddress &adapter) {
            scan(id, parameters, adapter);
        });
    } else if (name == "connect"_L1) {
        withAdapter(id, [this, id, parameters](const QBluetoothAddress &adapter) {
            connectDevice(id, parameters, adapter);
        });
    } else if (name == "write"_L1) {
        write(id, parameters);
    } else if (name == "disconnect"_L1) {
        disconnectDevice(id);
    } else {
        m_plugin.replyFailed(
            id, {u"unknown_operation"_s,
                 QCoreApplication::translate("tallyforge::BluetoothHelper",
                                             "The Bluetooth helper does not know that request.")});
    }
}

void Helper::bringUp(int id)
{
    m_asking = true;
    qApp->requestPermission(QBluetoothPermission(), this, [this, id](const QPermission &answer) {
        m_asking = false;
        if (answer.status() == Qt::PermissionStatus::Granted) {
            withAdapter(id, [this, id](const QBluetoothAddress &) { m_plugin.replyOk(id); });
        } else {
            m_plugin.replyFailed(id, system::notAllowed());
            beginNext();
        }
    });
}

// Asked anew each time, because Qt looks for Bluetooth only once, and would not see it being
// switched on later.
void Helper::withAdapter(int id, const std::function<void(const QBluetoothAddress &)> &then)
{
    m_asking = true;
    system::check(this, [this, id, then](const Failure &failure, const QBluetoothAddress &adapter) {
        m_asking = false;
        if (m_quitting) {
            return;
        }
        if (failure.happened()) {
            m_plugin.replyFailed(id, failure);
        } else {
            then(adapter);
        }
        beginNext();
    });
}

void Helper::scan(int id, const QJsonObject &parameters, const QBluetoothAddress &adapter)
{
    DeviceScan *const before = std::exchange(m_scan, new DeviceScan(adapter, this));
    connect(m_scan, &DeviceScan::finished, this,
            [this, id](const QList<QBluetoothDeviceInfo> &devices, int seen) {
                endScan();
                onScanned(id, devices, seen);
            });
    connect(m_scan, &DeviceScan::failed, this, [this, id](const Failure &failure) {
        endScan();
        m_plugin.replyFailed(id, failure);
    });
    if (before != nullptr) {
        before->disconnect(this);
        m_plugin.replyFailed(m_scanId, {u"cancelled"_s, QCoreApplication::translate(
                                                            "tallyforge::BluetoothHelper",
                                                            "A newer search has taken the place of "
                                                            "this one.")});
    }
    m_scanId = id;
    const int ms = parameters.value("ms"_L1).toInt();
    m_scan->start(std::chrono::milliseconds(std::clamp(ms, shortestScan, longestScan)));
    if (before != nullptr) {
        // Not earlier: the system must not end its search between the two.
        before->stop();
        before->deleteLater();
    }
}

// Qt may report an error and an end of the same scan.
void Helper::endScan()
{
    m_scan->disconnect(this);
    std::exchange(m_scan, nullptr)->deleteLater();
}

void Helper::onScanned(int id, const QList<QBluetoothDeviceInfo> &devices, int seen)
{
    m_found.clear();
    QJsonArray listed;
    for (const QBluetoothDeviceInfo &device : devices) {
        m_found.insert(deviceId(device), device);
        listed.append(QJsonObject{
            {u"id"_s, deviceId(device)}, {u"name"_s, device.name()}, {u"rssi"_s, device.rssi()}});
    }
    m_plugin.replyOk(id, {{u"devices"_s, listed}, {u"seen"_s, seen}});
}

void Helper::connectDevice(int id, const QJsonObject &parameters, const QBluetoothAddress &adapter)
{
    const QString name = parameters.value("id"_L1).toString();
    const QBluetoothDeviceInfo device = m_found.value(name, deviceOf(name));
    if (!device.isValid()) {
        m_plugin.replyFailed(
            id, {u"not_found"_s, QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                             "That is not a Bluetooth device.")});
        return;
    }
    if (m_connection != nullptr && m_connection->isReady()) {
        m_plugin.sendEvent(
            u"disconnected"_s, u"reason"_s,
            QCoreApplication::translate("tallyforge::BluetoothHelper",
                                        "Another device was connected over Bluetooth."));
    }
    dropConnection([this, id, device, adapter] { openConnection(id, device, adapter); });
}

void Helper::openConnection(int id, const QBluetoothDeviceInfo &device,
                            const QBluetoothAddress &adapter)
{
    m_connection = new DeviceConnection(device, adapter, this);
    DeviceConnection *const connection = m_connection;
    connect(connection, &DeviceConnection::ready, this,
            [this, id](int writeSize) { m_plugin.replyOk(id, {{u"writePayload"_s, writeSize}}); });
    connect(connection, &DeviceConnection::failed, this,
            [this, id](const Failure &failure) { m_plugin.replyFailed(id, failure); });
    connect(connection, &DeviceConnection::written, this, [this](const Failure &failure) {
        failure.happened() ? m_plugin.replyFailed(m_writeId, failure) : m_plugin.replyOk(m_writeId);
    });
    connect(connection, &DeviceConnection::received, this, [this](const QByteArray &bytes) {
        m_plugin.sendEvent(u"data"_s, u"b64"_s, QString::fromLatin1(bytes.toBase64()));
    });
    connect(connection, &DeviceConnection::lost, this, [this](const QString &reason) {
        m_plugin.sendEvent(u"disconnected"_s, u"reason"_s, reason);
    });
    connect(connection, &DeviceConnection::closed, this,
            [this, connection] { onClosed(connection); });
    connection->open();
}

void Helper::write(int id, const QJsonObject &parameters)
{
    const std::optional<QByteArray> bytes = base64Bytes(parameters.value("b64"_L1));
    if (m_connection == nullptr || !m_connection->isReady()) {
        m_plugin.replyFailed(
            id, {u"disconnected"_s, QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                                "No device is connected.")});
    } else if (!bytes || bytes->isEmpty()) {
        m_plugin.replyFailed(
            id, {u"bad_request"_s, QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                               "There is nothing to write.")});
    } else if (m_connection->isWriting()) {
        m_plugin.replyFailed(id, busy());
    } else {
        m_writeId = id;
        m_connection->write(*bytes);
    }
}

void Helper::disconnectDevice(int id)
{
    dropConnection([this, id] { m_plugin.replyOk(id); });
}

void Helper::quit()
{
    if (!std::exchange(m_quitting, true)) {
        QTimer::singleShot(quitLimit, this, &Helper::finished);
        m_afterClose = {}; // it would begin something new
        dropConnection([this] { Q_EMIT finished(); });
    }
}

void Helper::dropConnection(const std::function<void()> &then)
{
    if (m_connection == nullptr) {
        then();
        return;
    }
    // Two may wait for the same end, such as two connects; the first then has to go as well.
    m_afterClose = [this, before = std::exchange(m_afterClose, {}), then] {
        if (before) {
            before();
        }
        dropConnection(then);
    };
    m_connection->close();
}

void Helper::onClosed(DeviceConnection *connection)
{
    m_connection = nullptr;
    connection->deleteLater();
    if (const auto then = std::exchange(m_afterClose, {})) {
        then();
    }
}

} // namespace tallyforge::helper
