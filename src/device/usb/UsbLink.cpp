// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/UsbLink.h"

#include <QJsonDocument>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int baud = 115200;
constexpr qsizetype pipeStretch = 512;
constexpr qsizetype maxQueuedFrames = 1024;

QString textOf(const QJsonObject &object, const char *key, const QString &otherwise = {})
{
    return object.value(QLatin1StringView(key)).toString(otherwise);
}

QJsonObject ctrl(const char *type)
{
    return {{u"t"_s, QLatin1StringView(type)}};
}

} // namespace

UsbLink::UsbLink(const QString &path, QObject *parent)
    : UsbLink(path, Timing{}, parent)
{
}

UsbLink::UsbLink(const QString &path, const Timing &timing, QObject *parent)
    : DeviceLink(parent)
    , m_timing(timing)
    , m_path(path)
    , m_adminTransport(&m_serial, nullptr)
{
    connect(&m_cloud, &CloudRelay::toDevice, this, &UsbLink::queuePipe);
    connect(&m_streams, &StreamRelay::toDevice, this,
            [this](const QByteArray &bytes) { queueFrame(UsbFrame::Stream, bytes); });
    connect(&m_cloud, &CloudRelay::statusChanged, this,
            [this] { m_streams.setEnabled(m_cloud.status().enabled); });
    connect(&m_pipeTimer, &QTimer::timeout, this, &UsbLink::drainPipe);
    connect(&m_cloud, &CloudRelay::statusChanged, this, &UsbLink::tunnelChanged);
    connect(&m_streams, &StreamRelay::statusChanged, this, &UsbLink::tunnelChanged);
    connect(&m_serial, &SerialPort::readyRead, this, &UsbLink::onBytes);
    connect(&m_serial, &SerialPort::errorOccurred, this, &UsbLink::onPortLost);
    connect(&m_helloTimer, &QTimer::timeout, this, &UsbLink::onHelloTimer);
    connect(&m_pingTimer, &QTimer::timeout, this, [this] { sendCtrl(ctrl("ping")); });
    connect(&m_receiverTimer, &QTimer::timeout, this,
            [this] { finishReceiver(false, {}, tr("The receiver did not answer")); });
    m_helloTimer.setInterval(m_timing.hello);
    m_pingTimer.setInterval(m_timing.ping);
    m_receiverTimer.setSingleShot(true);
    m_receiverTimer.setInterval(m_timing.receiver);
    m_pipeTimer.setInterval(m_timing.pace);
    m_pipeTimer.setTimerType(Qt::PreciseTimer); // a coarse one may lose five percent of the pace
}

UsbLink::~UsbLink()
{
    // The relays say so when they are reset, and nobody is to hear it any more.
    m_cloud.blockSignals(true);
    m_streams.blockSignals(true);
    close();
}

void UsbLink::open()
{
    const unsigned generation = m_generation + 1;
    close();
    if (generation != m_generation) {
        return; // a slot has opened or closed the link meanwhile: that is the later word
    }
    QString error;
    if (!m_serial.open(m_path, baud, &error)) {
        Q_EMIT failed(u"open_failed"_s, error);
        return;
    }
    m_parser.reset();
    m_reassembler.reset();
    m_tunnel = {};
    m_receiverStatus = {};
    m_cloud.clearTarget();
    m_streams.setDestinations({});
    if (generation != m_generation) {
        return;
    }
    m_helloClock.start();
    sendHello();
    m_helloTimer.start();
    m_pingTimer.start();
}

void UsbLink::close()
{
    ++m_generation;
    m_helloTimer.stop();
    m_pingTimer.stop();
    m_pipeTimer.stop();
    m_pipeQueue.clear();
    m_serial.close();
    m_helloSeen = false;
    m_cloud.reset();
    m_streams.reset();
}

void UsbLink::sendCtrl(const QJsonObject &message)
{
    // A port that is lost shows when it is read.
    m_serial.write(buildCtrlFrame(message));
}

void UsbLink::sendHello()
{
    QJsonObject hello = ctrl("hello");
    hello.insert(u"streams"_s, 1);
    sendCtrl(hello);
}

void UsbLink::onHelloTimer()
{
    if (m_helloSeen) {
        m_helloTimer.stop();
    } else if (m_helloClock.durationElapsed() <= m_timing.helloLimit) {
        sendHello();
    } else {
        m_helloTimer.stop();
        Q_EMIT failed(
            u"no_response"_s,
            tr("This USB port did not answer like a Tallyforge device. Check the cable and "
               "that the device has finished starting."));
    }
}

void UsbLink::onPortLost(const QString &message)
{
    m_helloTimer.stop();
    m_pingTimer.stop();
    Q_EMIT closed(message);
}

void UsbLink::onBytes(const QByteArray &bytes)
{
    const QPointer<UsbLink> self = this;
    const unsigned generation = m_generation;
    const QList<UsbFrame> frames = m_parser.feed(bytes);
    for (const UsbFrame &frame : frames) {
        handleFrame(frame);
        if (!self || generation != m_generation) {
            return; // a slot has closed the link
        }
    }
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
    const QString type = textOf(message, "t");
    if (type == "hello"_L1) {
        handleHello(message);
    } else if (type == "rx_status"_L1) {
        handleReceiverStatus(message);
    } else if (type == "rx_set"_L1 || type == "rx_reboot"_L1 || type == "rx_error"_L1) {
        handleReceiverReply(message, type == "rx_error"_L1);
    }
}

void UsbLink::handleHello(const QJsonObject &message)
{
    const QPointer<UsbLink> self = this;
    const unsigned generation = m_generation;
    m_tunnel = message.value("tunnel"_L1).toObject();
    const QString host = textOf(m_tunnel, "host");
    const int port = m_tunnel.value("port"_L1).toInt();
    m_streams.setDestinations(m_tunnel.value("streams"_L1).toObject());
    if (!self || generation != m_generation) {
        return;
    }
    if (!host.isEmpty() && port >= 1) {
        m_cloud.configure(host, port);
    } else {
        m_cloud.clearTarget();
    }
    if (self && generation == m_generation && !std::exchange(m_helloSeen, true)) {
        m_helloTimer.stop();
        Q_EMIT opened(message);
    }
}

void UsbLink::handleReceiverStatus(const QJsonObject &message)
{
    const QPointer<UsbLink> self = this;
    const unsigned generation = m_generation;
    m_receiverStatus = message;
    Q_EMIT receiverUpdated(message);
    if (self && generation == m_generation && !std::exchange(m_helloSeen, true)) {
        m_helloTimer.stop();
        QJsonObject info = message;
        info.insert(u"receiver"_s, true);
        Q_EMIT opened(info);
    }
}

void UsbLink::handleReceiverReply(const QJsonObject &message, bool failed)
{
    if (!failed && message.value("ok"_L1).toBool(true)) {
        finishReceiver(true, textOf(message, "key"), {});
    } else {
        finishReceiver(false, {},
                       textOf(message, "error", tr("The receiver refused the settings")));
    }
}

void UsbLink::finishReceiver(bool ok, const QString &key, const QString &error)
{
    m_receiverTimer.stop();
    if (const ReceiverCallback callback = std::exchange(m_receiverCallback, {})) {
        callback(ok, key, error);
    }
}

void UsbLink::receiverSet(const QString &key, bool generateKey, int channel,
                          const ReceiverCallback &wanted)
{
    // One that is empty stands for a pending request all the same.
    const ReceiverCallback callback =
        wanted ? wanted : [](bool, const QString &, const QString &) {};
    if (m_receiverCallback) {
        callback(false, {}, tr("Another receiver request is still in progress"));
        return;
    }
    QJsonObject message = ctrl("rx_set");
    if (generateKey) {
        message.insert(u"generate_key"_s, true);
    } else if (!key.isEmpty()) {
        message.insert(u"key"_s, key.trimmed());
    }
    if (channel >= 1) {
        message.insert(u"channel"_s, channel);
    }
    if (message.size() == 1) {
        callback(false, {}, tr("Give a key, ask for a new key, or choose a channel"));
        return;
    }
    m_receiverCallback = callback;
    m_receiverTimer.start();
    sendCtrl(message);
}

void UsbLink::queuePipe(const QByteArray &bytes)
{
    if (!m_serial.isOpen()) {
        return;
    }
    for (qsizetype at = 0; at < bytes.size(); at += pipeStretch) {
        m_pipeQueue.append(buildFrame(UsbFrame::Pipe, bytes.mid(at, pipeStretch)));
    }
    pacePipeQueue();
}

void UsbLink::queueFrame(unsigned char type, const QByteArray &payload)
{
    if (!m_serial.isOpen()) {
        return;
    }
    m_pipeQueue.append(buildFrame(type, payload));
    pacePipeQueue();
}

void UsbLink::pacePipeQueue()
{
    if (m_pipeQueue.size() > maxQueuedFrames) {
        // The tunnels have fallen too far behind for their connections to be of use to anyone.
        dropTunnels();
        return;
    }
    const bool idle = !m_pipeClock.isValid() || m_pipeClock.durationElapsed() >= m_timing.pace;
    if (idle || !m_pipeTimer.isActive()) {
        m_pipeTimer.start(); // anew, lest a tick that is due already send another frame at once
    }
    if (idle) {
        drainPipe();
    }
}

void UsbLink::dropTunnels()
{
    m_pipeQueue.clear();
    m_cloud.reset();
    m_streams.reset();
}

void UsbLink::drainPipe()
{
    if (m_pipeQueue.isEmpty() || !m_serial.isOpen()) {
        m_pipeTimer.stop();
        m_pipeQueue.clear();
        return;
    }
    const bool written = m_serial.write(m_pipeQueue.takeFirst());
    m_pipeClock.start();
    if (m_pipeQueue.isEmpty()) {
        m_pipeTimer.stop();
    }
    if (!written) {
        // It has held OBS up for seconds, and so would each of the others.
        dropTunnels();
    }
}

} // namespace tallyforge
