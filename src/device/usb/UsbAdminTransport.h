// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/RpcTransport.h"

namespace tallyforge {

class SerialPort;

/// Carries admin requests in frames of a USB device's serial stream.
class UsbAdminTransport final : public RpcTransport
{
    Q_OBJECT

public:
    /// The port isn't owned and must outlive the transport.
    UsbAdminTransport(SerialPort *serial, QObject *parent);

    [[nodiscard]] bool isOpen() const override;
    void send(const QByteArray &json) override;

private:
    void onWriteEnded(bool written);

    SerialPort *const m_serial;
    bool m_isWaiting = false; // a part of the last request waits for the driver
};

} // namespace tallyforge
