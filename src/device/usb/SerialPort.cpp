// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/SerialPort.h"

#include <QPointer>

#include <array>
#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds pollInterval{15};
constexpr int maxReadsPerPoll = 8;
constexpr qint64 readSize = 4096;

} // namespace

QList<SerialPortInfo> listSerialPorts()
{
    return serial_platform::list();
}

SerialPort::SerialPort(QObject *parent)
    : QObject(parent)
{
    m_pollTimer.setInterval(pollInterval);
    connect(&m_pollTimer, &QTimer::timeout, this, &SerialPort::poll);
}

SerialPort::~SerialPort()
{
    close();
}

bool SerialPort::open(const QString &path, int baud, QString *error)
{
    close();
    ++m_openings;
    m_handle = serial_platform::openPort(path, baud, error);
    if (m_handle != nullptr) {
        m_pollTimer.start();
    }
    return m_handle != nullptr;
}

void SerialPort::close()
{
    m_pollTimer.stop();
    serial_platform::closePort(std::exchange(m_handle, nullptr));
}

bool SerialPort::write(const QByteArray &bytes)
{
    return m_handle != nullptr && serial_platform::writeAll(m_handle, bytes);
}

void SerialPort::poll()
{
    std::array<char, readSize> buffer; // NOLINT: filled by the read
    const QPointer<SerialPort> self = this;
    const unsigned opening = m_openings;
    for (int i = 0; i < maxReadsPerPoll && self && m_handle != nullptr && opening == m_openings;
         ++i) {
        const qint64 count = serial_platform::readSome(m_handle, buffer.data(), readSize);
        if (count < 0) {
            close();
            Q_EMIT errorOccurred(tr("The USB device was unplugged or stopped responding."));
            return;
        }
        if (count == 0) {
            return;
        }
        Q_EMIT readyRead(QByteArray(buffer.data(), count));
    }
}

} // namespace tallyforge
