// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/SerialPort.h"

#include <QDeadlineTimer>

#include <array>
#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds pollInterval{15};
constexpr int maxReadsPerPoll = 8;
constexpr std::chrono::milliseconds readTurn{2}; // no further read begins after it
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
    m_handle = serial_platform::openPort(path, baud, error);
    if (m_handle != nullptr) {
        m_pollTimer.start();
    }
    return m_handle != nullptr;
}

void SerialPort::close()
{
    m_generation.next();
    m_pollTimer.stop();
    m_reading = true;
    serial_platform::closePort(std::exchange(m_handle, nullptr));
}

bool SerialPort::write(const QByteArray &bytes)
{
    return m_handle != nullptr && serial_platform::writeAll(m_handle, bytes);
}

bool SerialPort::isWriting() const
{
    return m_handle != nullptr && serial_platform::isWriting(m_handle);
}

void SerialPort::poll()
{
    const auto isCurrent = m_generation.watch();
    if (isWriting()) {
        const bool written = serial_platform::keepWriting(m_handle);
        if (!isWriting()) {
            Q_EMIT writeEnded(written);
        }
    }
    if (isCurrent()) {
        readWhatIsThere();
    }
}

void SerialPort::readWhatIsThere()
{
    std::array<char, readSize> buffer; // NOLINT: filled by the read
    const auto isCurrent = m_generation.watch();
    const QDeadlineTimer turn(readTurn, Qt::PreciseTimer);
    for (int i = 0; i < maxReadsPerPoll && isCurrent() && m_reading && !turn.hasExpired(); ++i) {
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
