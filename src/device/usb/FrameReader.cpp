// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/FrameReader.h"

#include "device/usb/SerialPort.h"

#include <QDeadlineTimer>

#include <chrono>

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds turnLimit{3}; // no further frame is handed on after it
constexpr std::chrono::milliseconds pause{5};     // in which OBS comes to its own work

} // namespace

FrameReader::FrameReader(SerialPort *serial, QObject *parent)
    : QObject(parent)
    , m_serial(serial)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(pause);
    connect(&m_rest, &QTimer::timeout, this, &FrameReader::handOn);
    connect(m_serial, &SerialPort::readyRead, this, &FrameReader::onBytes);
}

void FrameReader::reset()
{
    m_generation.next();
    m_rest.stop();
    m_waiting.clear();
    m_parser.reset();
}

void FrameReader::onBytes(const QByteArray &bytes)
{
    m_waiting.append(m_parser.feed(bytes));
    handOn();
}

void FrameReader::handOn()
{
    const auto isCurrent = m_generation.watch();
    const QDeadlineTimer turn(turnLimit, Qt::PreciseTimer);
    while (!m_waiting.isEmpty() && !turn.hasExpired()) {
        Q_EMIT frame(m_waiting.takeFirst());
        if (!isCurrent()) {
            return;
        }
    }
    m_serial->setReading(m_waiting.isEmpty());
    if (!m_waiting.isEmpty()) {
        m_rest.start();
    }
}

} // namespace tallyforge
