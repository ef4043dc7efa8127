// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/UsbAdminTransport.h"

#include "device/usb/AdminFragments.h"
#include "device/usb/SerialPort.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

UsbAdminTransport::UsbAdminTransport(SerialPort *serial, QObject *parent)
    : RpcTransport(parent)
    , m_serial(serial)
{
    connect(m_serial, &SerialPort::writeEnded, this, &UsbAdminTransport::onWriteEnded);
}

bool UsbAdminTransport::isOpen() const
{
    return m_serial->isOpen();
}

void UsbAdminTransport::send(const QByteArray &json)
{
    if (!isOpen()) {
        Q_EMIT sendFailed(u"disconnected"_s, tr("The USB device is not connected"));
        return;
    }
    const QList<QByteArray> frames = buildAdminFrames(json);
    if (frames.isEmpty()) {
        Q_EMIT sendFailed(u"request_too_large"_s, tr("That request is too large for the device"));
        return;
    }
    if (m_serial->write(frames.join())) {
        m_isWaiting = m_serial->isWriting();
    } else {
        m_isWaiting = false;
        Q_EMIT sendFailed(u"write_failed"_s, tr("Could not write to the USB device"));
    }
}

void UsbAdminTransport::onWriteEnded(bool written)
{
    if (std::exchange(m_isWaiting, false) && !written) {
        Q_EMIT sendFailed(u"write_failed"_s, tr("Could not write to the USB device"));
    }
}

} // namespace tallyforge
