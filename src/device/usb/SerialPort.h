// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/usb/SerialPlatform.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

namespace tallyforge {

/// The serial ports that a device may be behind.
[[nodiscard]] QList<SerialPortInfo> listSerialPorts();

/// A serial port, read from a timer on the main thread. Nothing here blocks but a write into a
/// driver's full buffer, for about three seconds at worst.
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
    /// False when the port is closed or the write fails.
    bool write(const QByteArray &bytes);
    [[nodiscard]] bool isOpen() const { return m_handle != nullptr; }

Q_SIGNALS:
    /// Bytes as they came. A slot may close the port.
    void readyRead(const QByteArray &bytes);
    /// The device has gone; the port is closed by then.
    void errorOccurred(const QString &message);

private:
    void poll();

    serial_platform::Handle *m_handle = nullptr; // owned
    unsigned m_openings = 0;
    QTimer m_pollTimer;
};

} // namespace tallyforge
