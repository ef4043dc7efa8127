// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceLink.h"
#include "device/usb/AdminFragments.h"
#include "device/usb/CloudRelay.h"
#include "device/usb/SerialPort.h"
#include "device/usb/StreamRelay.h"
#include "device/usb/UsbAdminTransport.h"
#include "device/usb/UsbFrame.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tallyforge {

/// A device, or a wireless receiver, on a USB cable. The link greets what is behind the port until
/// it answers, sorts what comes in, and lends the device this computer's internet connection for as
/// long as the link lives. A receiver is told by the member "receiver": true of what opened()
/// brings.
class UsbLink final : public DeviceLink
{
    Q_OBJECT

public:
    struct Timing
    {
        std::chrono::milliseconds hello{3000};       ///< between two greetings
        std::chrono::milliseconds helloLimit{45000}; ///< until a silent port is given up
        std::chrono::milliseconds ping{5000};
        std::chrono::milliseconds receiver{5000}; ///< for a receiver's answer
        std::chrono::milliseconds pace{40};       ///< between two frames of the tunnels
    };
    /// Exactly one call, or none if the link is deleted before: true and the key in use, or false
    /// and a sentence for the user.
    using ReceiverCallback = std::function<void(bool ok, const QString &key, const QString &error)>;

    /// path is the port's, for example "/dev/ttyACM0".
    explicit UsbLink(const QString &path, QObject *parent = nullptr);
    UsbLink(const QString &path, const Timing &timing, QObject *parent);
    ~UsbLink() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("usb"); }
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
                     const ReceiverCallback &callback);

Q_SIGNALS:
    /// A receiver has reported itself.
    void receiverUpdated(const QJsonObject &status);
    /// The state of one of the tunnels has changed. A slot may do anything but delete the link.
    void tunnelChanged();

private:
    void onBytes(const QByteArray &bytes);
    void handleFrame(const UsbFrame &frame);
    void handleCtrl(const QByteArray &payload);
    void handleHello(const QJsonObject &message);
    void handleReceiverStatus(const QJsonObject &message);
    void handleReceiverReply(const QJsonObject &message, bool failed);
    void finishReceiver(bool ok, const QString &key, const QString &error);
    void onHelloTimer();
    void sendHello();
    void sendCtrl(const QJsonObject &message);
    void onPortLost(const QString &message);

    void queuePipe(const QByteArray &bytes);
    void queueFrame(unsigned char type, const QByteArray &payload);
    void pacePipeQueue();
    void drainPipe();
    void dropTunnels();

    const Timing m_timing;
    const QString m_path;
    SerialPort m_serial;
    UsbAdminTransport m_adminTransport;
    UsbFrameParser m_parser;
    AdminReassembler m_reassembler;
    QTimer m_helloTimer;
    QTimer m_pingTimer;
    QElapsedTimer m_helloClock; // since open()
    bool m_helloSeen = false;
    CloudRelay m_cloud;
    StreamRelay m_streams;
    QJsonObject m_tunnel;
    QJsonObject m_receiverStatus;
    ReceiverCallback m_receiverCallback; // empty when no request waits
    QTimer m_receiverTimer;
    QList<QByteArray> m_pipeQueue; // whole frames of the tunnels
    QElapsedTimer m_pipeClock;     // since the last of them went out
    QTimer m_pipeTimer;
    unsigned m_generation = 0; // counts open() and close()
};

} // namespace tallyforge
