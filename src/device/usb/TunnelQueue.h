// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

namespace tallyforge {

class SerialPort;

/// The frames of both tunnels on their way to the device. They go out at a pace, so that requests
/// get through between them. Main thread.
class TunnelQueue final : public QObject
{
    Q_OBJECT

public:
    /// The port isn't owned and must outlive the queue.
    TunnelQueue(SerialPort *serial, QObject *parent);

    /// Queues bytes of the device's cloud connection, cut to frames. A closed port drops them.
    void queuePipe(const QByteArray &bytes);
    /// Queues a frame of that type. A closed port drops it.
    void queueFrame(unsigned char type, const QByteArray &payload);
    void clear();

Q_SIGNALS:
    /// Frames are lost: too many wait, or the port hasn't taken one. The queue is empty, and the
    /// connections in the tunnels lack bytes from now on.
    void lost();

private:
    [[nodiscard]] bool hasRoomFor(qsizetype frames);
    void pace();
    void drain();
    void lose();

    SerialPort *const m_serial;
    QList<QByteArray> m_frames; // whole ones
    QElapsedTimer m_clock;      // since the last one went out
    QTimer m_timer;
};

} // namespace tallyforge
