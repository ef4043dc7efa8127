// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/usb/UsbFrame.h"

#include <QList>
#include <QObject>
#include <QTimer>

namespace tallyforge {

class SerialPort;

/// Finds the frames in the bytes of a port and hands them on in order. A device that floods must
/// not hold OBS up: after a few milliseconds the rest waits for a later turn of the event loop, and
/// the port isn't read meanwhile. Main thread.
class FrameReader final : public QObject
{
    Q_OBJECT

public:
    /// The port isn't owned and must outlive the reader.
    FrameReader(SerialPort *serial, QObject *parent);

    /// Forgets all bytes and frames that have come so far.
    void reset();

Q_SIGNALS:
    /// A slot may reset or delete the reader.
    void frame(const tallyforge::UsbFrame &frame);

private:
    void onBytes(const QByteArray &bytes);
    void handOn();

    SerialPort *const m_serial;
    Generation m_generation; // begins with reset()
    UsbFrameParser m_parser;
    QList<UsbFrame> m_waiting;
    QTimer m_rest; // until the waiting frames are handed on
};

} // namespace tallyforge
