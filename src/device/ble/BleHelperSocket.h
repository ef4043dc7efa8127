// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleHelperLines.h"

#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace tallyforge {

/// One connection to the bridge's port. It begins as a stranger, with little memory and little time
/// to prove itself; trust() makes it the helper. It is good for one connection and deletes itself
/// some time after its end. Lines that take longer than a few milliseconds to handle go on in a
/// later turn of the event loop, and the connection isn't read meanwhile. Main thread.
class BleHelperSocket final : public QObject
{
    Q_OBJECT

public:
    /// Takes the socket over. A stranger's connection ends after five seconds.
    BleHelperSocket(QTcpSocket *socket, QObject *parent);

    /// Lifts the limits of a stranger.
    void trust();
    void send(const QJsonObject &object);
    /// Handles what has come by now, as far as one turn of the event loop allows.
    void readNow();
    /// Sends what can be sent at once and ends the connection. No signal is emitted any more.
    void close();

Q_SIGNALS:
    void received(const QJsonObject &object);
    /// The peer has ended the connection, has sent too long a line, or is a stranger whose time is
    /// over.
    void ended();

private:
    [[nodiscard]] bool isStranger() const { return m_helloTimer.isActive(); }
    void handle();
    [[nodiscard]] bool readMore();
    void onHelloLimit();
    void end();

    QTcpSocket *const m_socket; // child
    BleHelperLines m_lines;
    QTimer m_helloTimer; // runs while this is a stranger
    QTimer m_rest;       // runs until the lines that wait are handled
    bool m_peerGone = false;
    bool m_ended = false;
};

} // namespace tallyforge
