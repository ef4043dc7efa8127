// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "helper/DeviceConnection.h"

#include "helper/DeviceContract.h"
#include "helper/System.h"

#include <QCoreApplication>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge::helper {

namespace {

using namespace std::chrono_literals;

constexpr auto openLimit = 140s; // the plug-in gives up ten seconds later
constexpr auto writeLimit = 14s; // the plug-in gives up one second later
constexpr auto closeLimit = 3s;

Failure notPaired()
{
    return {u"not_paired"_s, QCoreApplication::translate(
                                 "tallyforge::BluetoothHelper",
                                 "This computer is not paired with the device. Pair it in the "
                                 "system's Bluetooth settings with the device's passkey, then "
                                 "connect again.")};
}

} // namespace

DeviceConnection::DeviceConnection(const QBluetoothDeviceInfo &device,
                                   const QBluetoothAddress &adapter, QObject *parent)
    : QObject(parent)
    , m_device(device)
    , m_controller(QLowEnergyController::createCentral(device, adapter, this))
{
    connect(m_controller, &QLowEnergyController::stateChanged, this,
            &DeviceConnection::onControllerState);
    connect(m_controller, &QLowEnergyController::errorOccurred, this,
            &DeviceConnection::onControllerError);
    connect(m_controller, &QLowEnergyController::discoveryFinished, this,
            &DeviceConnection::onServicesDiscovered);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &DeviceConnection::onLimit);
    system::watch(this, [this] {
        m_reason = QCoreApplication::translate("tallyforge::BluetoothHelper",
                                               "Bluetooth was stopped on this computer.");
        onGone();
    });
}

void DeviceConnection::open()
{
    m_limit.start(openLimit);
    m_controller->connectToDevice();
}

void DeviceConnection::close()
{
    if (m_state == State::Opening) {
        fail({u"cancelled"_s,
              QCoreApplication::translate("tallyforge::BluetoothHelper",
                                          "The connection to the device was given up.")});
    } else if (m_state == State::Ready) {
        end();
    }
}

void DeviceConnection::fail(const Failure &failure)
{
    if (m_state == State::Opening) {
        Q_EMIT failed(failure);
        end();
    }
}

void DeviceConnection::end()
{
    m_state = State::Closing;
    finishWrite({u"disconnected"_s,
                 QCoreApplication::translate("tallyforge::BluetoothHelper",
                                             "The connection to the device was closed.")});
    m_limit.start(closeLimit);
    m_controller->disconnectFromDevice();
    if (m_controller->state() == QLowEnergyController::UnconnectedState) {
        onGone();
    }
}

void DeviceConnection::onGone()
{
    const State before = std::exchange(m_state, State::Closed);
    if (before == State::Closed) {
        return;
    }
    m_limit.stop();
    finishWrite(
        {u"disconnected"_s, QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                        "The connection to the device was lost.")});
    if (before == State::Opening) {
        Q_EMIT failed({u"connect_failed"_s,
                       QCoreApplication::translate(
                           "tallyforge::BluetoothHelper",
                           "The device ended the Bluetooth connection before it was ready.")});
    } else if (before == State::Ready) {
        Q_EMIT lost(QString(m_reason));
    }
    Q_EMIT closed();
}

void DeviceConnection::onLimit()
{
    if (m_state == State::Opening) {
        fail({u"connect_failed"_s,
              QCoreApplication::translate("tallyforge::BluetoothHelper",
                                          "The device did not answer over Bluetooth in time.")});
    } else if (m_state == State::Ready) {
        // A confirmation that came still later would pass for the next write's.
        finishWrite({u"write_failed"_s, QCoreApplication::translate(
                                            "tallyforge::BluetoothHelper",
                                            "The device did not confirm the request in time.")});
        Q_EMIT lost(QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                "The device stopped answering over Bluetooth."));
        end();
    } else {
        onGone();
    }
}

void DeviceConnection::onControllerState(QLowEnergyController::ControllerState state)
{
    if (state == QLowEnergyController::UnconnectedState) {
        onGone();
    } else if (state == QLowEnergyController::ConnectedState && m_state == State::Opening) {
        system::pair(m_device, this, [this] {
            if (m_state == State::Opening) {
                m_controller->discoverServices();
            }
        });
    }
}

void DeviceConnection::onControllerError(QLowEnergyController::Error error)
{
    switch (error) {
    case QLowEnergyController::UnknownRemoteDeviceError:
        fail({u"not_found"_s,
              QCoreApplication::translate(
                  "tallyforge::BluetoothHelper",
                  "The device was not found over Bluetooth. Check that it is powered and near this "
                  "computer, then search again.")});
        break;
    case QLowEnergyController::InvalidBluetoothAdapterError:
        fail(system::adapterGone());
        break;
    case QLowEnergyController::MissingPermissionsError:
        fail(system::notAllowed());
        break;
    case QLowEnergyController::AuthorizationError:
        fail(notPaired());
        break;
    default:
        fail({u"connect_failed"_s,
              QCoreApplication::translate(
                  "tallyforge::BluetoothHelper",
                  "Could not connect to the device over Bluetooth. Check that it is powered, near "
                  "this computer and not connected to another one.")});
        break;
    }
}

void DeviceConnection::onServicesDiscovered()
{
    if (m_state != State::Opening) {
        return;
    }
    m_service = m_controller->createServiceObject(device_contract::service(), this);
    if (m_service == nullptr) {
        fail({u"unsupported_device"_s,
              QCoreApplication::translate("tallyforge::BluetoothHelper",
                                          "This device does not offer setup over Bluetooth.")});
        return;
    }
    connect(m_service, &QLowEnergyService::stateChanged, this, &DeviceConnection::onServiceState);
    connect(m_service, &QLowEnergyService::errorOccurred, this, &DeviceConnection::onServiceError);
    connect(m_service, &QLowEnergyService::descriptorWritten, this,
            &DeviceConnection::onSubscribed);
    connect(m_service, &QLowEnergyService::characteristicWritten, this,
            [this] { finishWrite({}); });
    connect(m_service, &QLowEnergyService::characteristicChanged, this,
            [this](const QLowEnergyCharacteristic &changed, const QByteArray &bytes) {
                if (isReady() && changed.uuid() == device_contract::characteristic()) {
                    Q_EMIT received(bytes);
                }
            });
    // Reading values would ask a device for what it may only give to a paired computer.
    m_service->discoverDetails(QLowEnergyService::SkipValueDiscovery);
}

void DeviceConnection::onServiceState(QLowEnergyService::ServiceState state)
{
    if (state != QLowEnergyService::RemoteServiceDiscovered || m_state != State::Opening) {
        return;
    }
    m_characteristic = m_service->characteristic(device_contract::characteristic());
    const QLowEnergyDescriptor subscription = m_characteristic.clientCharacteristicConfiguration();
    // A write without response is never confirmed.
    if (!m_characteristic.properties().testFlag(QLowEnergyCharacteristic::Write) ||
        !subscription.isValid()) {
        fail({u"unsupported_device"_s,
              QCoreApplication::translate("tallyforge::BluetoothHelper",
                                          "This device does not offer setup over Bluetooth.")});
        return;
    }
    m_service->writeDescriptor(subscription, QLowEnergyCharacteristic::CCCDEnableNotification);
}

void DeviceConnection::onSubscribed()
{
    system::writeSize(m_device, m_controller->mtu(), this, [this](int size) {
        if (m_state == State::Opening) {
            m_limit.stop();
            m_state = State::Ready;
            Q_EMIT ready(size);
        }
    });
}

void DeviceConnection::onServiceError()
{
    if (m_writing) {
        failForWantOfPairing({u"write_failed"_s,
                              QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                          "The device did not take the request.")});
    } else if (m_state == State::Opening) {
        failForWantOfPairing(
            {u"connect_failed"_s,
             QCoreApplication::translate("tallyforge::BluetoothHelper",
                                         "The device did not let this computer listen to it.")});
    }
}

// The system says only that the device refused; the reason is nearly always this one.
void DeviceConnection::failForWantOfPairing(const Failure &otherwise)
{
    system::isUnpaired(m_device, this, [this, otherwise](bool unpaired) {
        const Failure failure = unpaired ? notPaired() : otherwise;
        finishWrite(failure);
        fail(failure);
    });
}

void DeviceConnection::write(const QByteArray &bytes)
{
    m_writing = true;
    m_limit.start(writeLimit);
    m_service->writeCharacteristic(m_characteristic, bytes, QLowEnergyService::WriteWithResponse);
}

void DeviceConnection::finishWrite(const Failure &failure)
{
    if (std::exchange(m_writing, false)) {
        m_limit.stop();
        Q_EMIT written(failure);
    }
}

} // namespace tallyforge::helper
