// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceLink.h"
#include "device/usb/AdminFragments.h"
#include "device/usb/CloudRelay.h"
#include "device/usb/FrameReader.h"
#include "device/usb/ReceiverRequest.h"
#include "device/usb/SerialPort.h"
#include "device/usb/StreamRelay.h"
#include "device/usb/TunnelQueue.h"
#include "device/usb/UsbAdminTransport.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QTimer>

namespace tallyforge {

/// A device, or a wireless receiver, on a USB cable. The link sends greetings until
/// it gets an answer, sorts the frames that come in, and lends the device this computer's internet
/// connection for as long as the link lives. For a receiver, the object of opened() has the member
/// "receiver": true.
class UsbLink final : public DeviceLink
{
    Q_OBJECT

public:
    using ReceiverCallback = ReceiverRequest::Callback;

    /// path is the port's, for example "/dev/ttyACM0".
    explicit UsbLink(const QString &path, QObject *parent = nullptr);
    ~UsbLink() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("usb"); }
    [[nodiscard]] QString address() const override { return m_path; }
    void open() override;
    void close() override;
    [[nodiscard]] RpcTransport *transport() override { return &m_adminTransport; }
    [[nodiscard]] bool pollsState() const override { return false; }

    [[nodiscard]] QString path() const { return m_path; }
    [[nodiscard]] CloudRelay *cloud() { return &m_cloud; }
    [[nodiscard]] StreamRelay *streams() { return &m_streams; }
    /// Where the device wants its tunnels to lead, as it said last.
    [[nodiscard]] QJsonObject tunnel() const { return m_tunnel; }
    /// A receiver's last report of itself.
    [[nodiscard]] QJsonObject receiverStatus() const { return m_receiverStatus; }

    /// Gives a receiver a key, has it make one, or sets its channel (from 1 on). One at a time.
    void receiverSet(const QString &key, bool generateKey, int channel,
                     const ReceiverCallback &callback)
    {
        m_receiverRequest.start(key, generateKey, channel, callback);
    }

Q_SIGNALS:
    /// A receiver has reported itself.
    void receiverUpdated(const QJsonObject &status);
    /// The state of one of the tunnels has changed. A slot may do anything but delete the link.
    void tunnelChanged();

private:
    void shut();
    void handleFrame(const UsbFrame &frame);
    void handleCtrl(const QByteArray &payload);
    void handleHello(const QJsonObject &message);
    void handleReceiverStatus(const QJsonObject &message);
    void sendHello();
    void sendCtrl(const QJsonObject &message);
    void onHelloTimer();
    void onPingTimer();
    void onWriteEnded(bool written);
    void onPortLost(const QString &message);
    void dropTunnels();

    const QString m_path;
    Generation m_generation; // begins with open() and close()
    SerialPort m_serial;
    UsbAdminTransport m_adminTransport;
    FrameReader m_reader;
    AdminReassembler m_reassembler;
    QTimer m_helloTimer;
    QTimer m_pingTimer;
    QElapsedTimer m_helloClock; // since open()
    bool m_helloSeen = false;
    bool m_hangs = false; // a write has failed, and the device has sent nothing since
    CloudRelay m_cloud;
    StreamRelay m_streams;
    TunnelQueue m_tunnelQueue;
    ReceiverRequest m_receiverRequest;
    QJsonObject m_tunnel;
    QJsonObject m_receiverStatus;
};

} // namespace tallyforge
