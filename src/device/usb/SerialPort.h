// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/usb/SerialPlatform.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

namespace tallyforge {

/// The serial ports that a device may be behind.
[[nodiscard]] QList<SerialPortInfo> listSerialPorts();

/// A serial port, read and written from a timer on the main thread. Nothing here blocks.
class SerialPort final : public QObject
{
    Q_OBJECT

public:
    explicit SerialPort(QObject *parent = nullptr);
    ~SerialPort() override;

    /// Opens a port, after closing the one before. False, with a sentence for the user in error
    /// (which may be null), when it can't.
    bool open(const QString &path, int baud, QString *error);
    void close();
    /// False when the port is closed or the write fails. Bytes that the driver has no room for go
    /// out later, and writeEnded() tells whether they did.
    bool write(const QByteArray &bytes);
    [[nodiscard]] bool isOpen() const { return m_handle != nullptr; }
    /// Whether bytes that were written wait for the driver.
    [[nodiscard]] bool isWriting() const;
    /// While reading is off, the system keeps the device's bytes. open() turns it on.
    void setReading(bool on) { m_reading = on; }

Q_SIGNALS:
    /// Bytes as they came. A slot may close the port.
    void readyRead(const QByteArray &bytes);
    /// All bytes that waited for the driver have gone out, or they are lost, because the port has
    /// failed or the driver has taken nothing for about three seconds.
    void writeEnded(bool written);
    /// The device has gone; the port is closed by then.
    void errorOccurred(const QString &message);

private:
    void poll();
    void readWhatIsThere();

    serial_platform::Handle *m_handle = nullptr; // owned
    Generation m_generation;                     // begins with open() and close()
    bool m_reading = true;
    QTimer m_pollTimer;
};

} // namespace tallyforge
