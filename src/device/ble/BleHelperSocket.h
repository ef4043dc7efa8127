// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleHelperLines.h"

#include <QObject>
#include <QTimer>

#include <chrono>

class QTcpSocket;

namespace tallyforge {

/// One connection to the bridge's port: a stranger that may hold little memory and has little time
/// to prove itself, and after that the helper. It is good for one connection and deletes itself
/// some time after its end.
class BleHelperSocket final : public QObject
{
    Q_OBJECT

public:
    /// Takes the socket over.
    BleHelperSocket(QTcpSocket *socket, std::chrono::milliseconds helloLimit, QObject *parent);

    /// Lifts the limits of a stranger.
    void trust();
    void send(const QJsonObject &object);
    /// Ends the connection with what can be sent of it at once, and in silence: nothing is emitted
    /// any more.
    void close();

Q_SIGNALS:
    void received(const QJsonObject &object);
    /// The connection has ended by itself.
    void ended();

private:
    void onDisconnected();
    void onHelloLimit();
    /// Handles what is there. Returns whether the connection goes on.
    bool read();
    void end();

    QTcpSocket *const m_socket; // child
    BleHelperLines m_lines;
    qsizetype m_lineLimit;
    QTimer m_helloTimer;
    bool m_ended = false;
};

} // namespace tallyforge
