// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/TunnelQueue.h"

#include "device/usb/SerialPort.h"
#include "device/usb/UsbFrame.h"

#include <chrono>

namespace tallyforge {

namespace {

constexpr qsizetype pipeStretch = 512;
constexpr std::chrono::milliseconds frameInterval{40}; // between two frames
constexpr qsizetype maxFrames = 1024;

} // namespace

TunnelQueue::TunnelQueue(SerialPort *serial, QObject *parent)
    : QObject(parent)
    , m_serial(serial)
{
    m_timer.setInterval(frameInterval);
    m_timer.setTimerType(Qt::PreciseTimer); // a coarse one may lose five percent of the pace
    connect(&m_timer, &QTimer::timeout, this, &TunnelQueue::drain);
}

void TunnelQueue::queuePipe(const QByteArray &bytes)
{
    if (!hasRoomFor((bytes.size() + pipeStretch - 1) / pipeStretch)) {
        return;
    }
    for (qsizetype at = 0; at < bytes.size(); at += pipeStretch) {
        m_frames.append(buildFrame(UsbFrame::Pipe, bytes.mid(at, pipeStretch)));
    }
    pace();
}

void TunnelQueue::queueFrame(unsigned char type, const QByteArray &payload)
{
    if (hasRoomFor(1)) {
        m_frames.append(buildFrame(type, payload));
        pace();
    }
}

void TunnelQueue::clear()
{
    m_timer.stop();
    m_frames.clear();
}

bool TunnelQueue::hasRoomFor(qsizetype frames)
{
    if (!m_serial->isOpen()) {
        return false;
    }
    if (m_frames.size() + frames > maxFrames) {
        lose();
        return false;
    }
    return true;
}

void TunnelQueue::pace()
{
    const bool idle =
        !m_clock.isValid() || m_clock.durationElapsed() >= m_timer.intervalAsDuration();
    if (idle || !m_timer.isActive()) {
        m_timer.start(); // anew: a tick that is due already would send another frame at once
    }
    if (idle) {
        drain();
    }
}

void TunnelQueue::drain()
{
    if (m_frames.isEmpty() || !m_serial->isOpen()) {
        clear();
        return;
    }
    if (m_serial->isWriting()) {
        return; // the driver's buffer is full
    }
    const bool written = m_serial->write(m_frames.takeFirst());
    m_clock.start();
    if (m_frames.isEmpty()) {
        m_timer.stop();
    }
    if (!written) {
        lose();
    }
}

void TunnelQueue::lose()
{
    clear();
    Q_EMIT lost();
}

} // namespace tallyforge
