// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/UsbLink.h"

#include <QJsonDocument>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int baud = 115200;
constexpr std::chrono::milliseconds helloInterval{3000}; // between two greetings
constexpr std::chrono::milliseconds helloLimit{45000};   // until a silent port is given up
constexpr std::chrono::milliseconds pingInterval{5000};

} // namespace

UsbLink::UsbLink(const QString &path, QObject *parent)
    : DeviceLink(parent)
    , m_path(path)
    , m_adminTransport(&m_serial, nullptr)
    , m_reader(&m_serial, nullptr)
    , m_tunnelQueue(&m_serial, nullptr)
    , m_receiverRequest(nullptr)
{
    m_helloTimer.setInterval(helloInterval);
    m_pingTimer.setInterval(pingInterval);
    connect(&m_cloud, &CloudRelay::toDevice, &m_tunnelQueue, &TunnelQueue::queuePipe);
    connect(&m_streams, &StreamRelay::toDevice, &m_tunnelQueue,
            [this](const QByteArray &bytes) { m_tunnelQueue.queueFrame(UsbFrame::Stream, bytes); });
    connect(&m_tunnelQueue, &TunnelQueue::lost, this, &UsbLink::dropTunnels);
    connect(&m_cloud, &CloudRelay::statusChanged, this,
            [this] { m_streams.setEnabled(m_cloud.status().enabled); });
    connect(&m_cloud, &CloudRelay::statusChanged, this, &UsbLink::tunnelChanged);
    connect(&m_streams, &StreamRelay::statusChanged, this, &UsbLink::tunnelChanged);
    connect(&m_serial, &SerialPort::readyRead, this, [this] { m_hangs = false; });
    connect(&m_serial, &SerialPort::writeEnded, this, &UsbLink::onWriteEnded);
    connect(&m_serial, &SerialPort::errorOccurred, this, &UsbLink::onPortLost);
    connect(&m_reader, &FrameReader::frame, this, &UsbLink::handleFrame);
    connect(&m_receiverRequest, &ReceiverRequest::send, this, &UsbLink::sendCtrl);
    connect(&m_helloTimer, &QTimer::timeout, this, &UsbLink::onHelloTimer);
    connect(&m_pingTimer, &QTimer::timeout, this, &UsbLink::onPingTimer);
}

UsbLink::~UsbLink()
{
    // The relays emit signals when they are reset, and nobody is to hear them any more.
    m_cloud.blockSignals(true);
    m_streams.blockSignals(true);
    close();
}

void UsbLink::open()
{
    m_generation.next();
    const auto stillOpens = m_generation.watch();
    shut();
    if (!stillOpens()) {
        return; // a slot has opened or closed the link meanwhile: that is the later word
    }
    QString error;
    if (!m_serial.open(m_path, baud, &error)) {
        Q_EMIT failed(u"open_failed"_s, error);
        return;
    }
    m_reassembler.reset();
    m_tunnel = {};
    m_receiverStatus = {};
    m_cloud.clearTarget();
    m_streams.setDestinations({});
    if (!stillOpens()) {
        return;
    }
    m_helloTimer.start();
    m_pingTimer.start();
    m_helloClock.start();
    sendHello();
}

void UsbLink::close()
{
    m_generation.next();
    shut();
}

void UsbLink::shut()
{
    m_helloTimer.stop();
    m_pingTimer.stop();
    m_tunnelQueue.clear();
    m_reader.reset();
    m_serial.close();
    m_helloSeen = false;
    m_hangs = false;
    m_cloud.reset();
    m_streams.reset();
}

void UsbLink::sendCtrl(const QJsonObject &message)
{
    // The failure of a lost port shows when it is read.
    m_serial.write(buildCtrlFrame(message));
}

void UsbLink::sendHello()
{
    sendCtrl({{u"t"_s, u"hello"_s}, {u"streams"_s, 1}});
}

void UsbLink::onHelloTimer()
{
    if (m_helloSeen) {
        m_helloTimer.stop();
    } else if (m_helloClock.durationElapsed() > helloLimit) {
        m_helloTimer.stop();
        Q_EMIT failed(
            u"no_response"_s,
            tr("This USB port did not answer like a Tallyforge device. Check the cable and "
               "that the device has finished starting."));
    } else if (!m_serial.isWriting()) {
        sendHello();
    }
}

void UsbLink::onPingTimer()
{
    // A device that hangs reads nothing; further pings would only fill its buffer again.
    if (!m_hangs && !m_serial.isWriting()) {
        sendCtrl({{u"t"_s, u"ping"_s}});
    }
}

void UsbLink::onWriteEnded(bool written)
{
    if (!written) {
        m_hangs = true;
        dropTunnels(); // a frame of theirs may be among the lost bytes
    }
}

void UsbLink::onPortLost(const QString &message)
{
    m_helloTimer.stop();
    m_pingTimer.stop();
    Q_EMIT closed(message);
}

void UsbLink::dropTunnels()
{
    m_tunnelQueue.clear();
    m_cloud.reset();
    m_streams.reset();
}

void UsbLink::handleFrame(const UsbFrame &frame)
{
    switch (frame.type) {
    case UsbFrame::Envelope:
        if (const QJsonDocument document = QJsonDocument::fromJson(frame.payload);
            document.isObject()) {
            Q_EMIT envelope(document.object());
        }
        break;
    case UsbFrame::Pipe:
        m_cloud.fromDevice(frame.payload);
        break;
    case UsbFrame::Ctrl:
        handleCtrl(frame.payload);
        break;
    case UsbFrame::Admin:
        if (const QByteArray text = m_reassembler.feed(frame.payload); !text.isEmpty()) {
            Q_EMIT m_adminTransport.message(text);
        }
        break;
    case UsbFrame::Stream:
        m_streams.fromDevice(frame.payload);
        break;
    default:
        break;
    }
}

void UsbLink::handleCtrl(const QByteArray &payload)
{
    const QJsonObject message = QJsonDocument::fromJson(payload).object();
    const QString type = message.value("t"_L1).toString();
    if (type == "hello"_L1) {
        handleHello(message);
    } else if (type == "rx_status"_L1) {
        handleReceiverStatus(message);
    } else if (type == "rx_set"_L1 || type == "rx_reboot"_L1 || type == "rx_error"_L1) {
        m_receiverRequest.onReply(message);
    }
}

void UsbLink::handleHello(const QJsonObject &message)
{
    const auto isCurrent = m_generation.watch();
    const QJsonObject tunnel = message.value("tunnel"_L1).toObject();
    const QString host = tunnel.value("host"_L1).toString();
    const int port = tunnel.value("port"_L1).toInt();
    m_tunnel = tunnel;
    m_streams.setDestinations(tunnel.value("streams"_L1).toObject());
    if (!isCurrent()) {
        return;
    }
    if (!host.isEmpty() && port >= 1) {
        m_cloud.configure(host, port);
    } else {
        m_cloud.clearTarget();
    }
    if (isCurrent() && !std::exchange(m_helloSeen, true)) {
        m_helloTimer.stop();
        Q_EMIT opened(message);
    }
}

void UsbLink::handleReceiverStatus(const QJsonObject &message)
{
    const auto isCurrent = m_generation.watch();
    m_receiverStatus = message;
    Q_EMIT receiverUpdated(message);
    if (isCurrent() && !std::exchange(m_helloSeen, true)) {
        m_helloTimer.stop();
        QJsonObject info = message;
        info.insert(u"receiver"_s, true);
        Q_EMIT opened(info);
    }
}

} // namespace tallyforge
