// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "helper/Failure.h"

#include <QBluetoothAddress>
#include <QBluetoothDeviceInfo>
#include <QByteArray>
#include <QLowEnergyController>
#include <QLowEnergyService>
#include <QObject>
#include <QTimer>

namespace tallyforge::helper {

/// One connection to one device, from its making to its end. Either ready() or failed() tells how
/// open() went; closed() is the last signal in any case.
class DeviceConnection final : public QObject
{
    Q_OBJECT

public:
    /// The adapter is this computer's; no address means the system's own choice.
    DeviceConnection(const QBluetoothDeviceInfo &device, const QBluetoothAddress &adapter,
                     QObject *parent);

    void open();
    /// Hands bytes to the device as one write. Only when ready, and one write at a time.
    void write(const QByteArray &bytes);
    [[nodiscard]] bool isReady() const { return m_state == State::Ready; }
    [[nodiscard]] bool isWriting() const { return m_writing; }
    /// Ends the connection, whatever its state.
    void close();

Q_SIGNALS:
    /// The device can be written to, with so many bytes at a time.
    void ready(int writeSize);
    void failed(const tallyforge::helper::Failure &failure);
    /// The write is over: the device has confirmed it, or the failure tells why not.
    void written(const tallyforge::helper::Failure &failure);
    /// One notification of the device.
    void received(const QByteArray &bytes);
    /// A connection that was ready has ended by itself. The reason may be empty.
    void lost(const QString &reason);
    void closed();

private:
    enum class State { Opening, Ready, Closing, Closed };

    void onControllerState(QLowEnergyController::ControllerState state);
    void onControllerError(QLowEnergyController::Error error);
    void onServicesDiscovered();
    void onServiceState(QLowEnergyService::ServiceState state);
    void onServiceError();
    void onSubscribed();
    void onLimit();

    void fail(const Failure &failure);
    void failForWantOfPairing(const Failure &otherwise);
    void end();
    void finishWrite(const Failure &failure);
    void onGone();

    const QBluetoothDeviceInfo m_device;
    QLowEnergyController *const m_controller; // child
    QLowEnergyService *m_service = nullptr;   // child
    QLowEnergyCharacteristic m_characteristic;
    QTimer m_limit;   // of the present step: opening, a write, closing
    QString m_reason; // why the connection is ending by itself
    State m_state = State::Opening;
    bool m_writing = false;
};

} // namespace tallyforge::helper
